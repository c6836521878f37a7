// The classes of the geometry kernel through the records of the archive, with the library as it is
// loaded.

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "foundation/shared/bio_Ofilter.h"
#include "gsl/gsl_BBox.h"
#include "gsl/gsl_Dot.h"
#include "gsl/gsl_ModelSegment.h"
#include "gsl/gsl_ObjArrays.h"
#include "gsl/gsl_PersistentMatrix.h"
#include "gsl/gsl_PersistentVector.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_Segment.h"
#include "gsl/gsl_StLine.h"
#include "idb/idb_Archive.h"

namespace {

using Bytes = std::vector<std::byte>;

template <class T>
Bytes Save(const T& object, const cls_Uid& uid = cls_Uid()) {
    bio_Ofilter out;
    idb_SaveObject(out, object, uid);
    return Bytes(out.Data(), out.Data() + out.Size());
}

template <class T>
std::unique_ptr<T> Load(const Bytes& bytes) {
    idb_LoadFault fault;
    auto object = idb_LoadObject<T>(bytes.data(), bytes.size(), T::TypeId(), fault);
    EXPECT_EQ(object == nullptr, fault.status != idb_LoadStatusEnm::Loaded);
    return object;
}

/// Saves, loads, and saves again: the bytes are the same.
template <class T>
std::unique_ptr<T> RoundTrip(const T& object, const cls_Uid& uid = cls_Uid()) {
    const Bytes bytes = Save(object, uid);
    std::unique_ptr<T> loaded = Load<T>(bytes);
    EXPECT_NE(loaded, nullptr);
    if (loaded) {
        EXPECT_EQ(Save(*loaded, uid), bytes);
    }
    return loaded;
}

/// Gathers the bytes of a record by hand, little-endian.
class Golden {
  public:
    Golden& Byte(int value) {
        bytes.push_back(static_cast<std::byte>(value));
        return *this;
    }
    Golden& Int(std::uint32_t value) { return Number(value, 4); }
    Golden& Double(double value) { return Number(std::bit_cast<std::uint64_t>(value), 8); }
    /// The head of a record: class id, has-value flag, reference number.
    Golden& Head(std::uint32_t classId, std::uint32_t reference) {
        return Int(classId).Byte(1).Int(reference);
    }
    Bytes bytes;

  private:
    Golden& Number(std::uint64_t value, int size) {
        for (int i = 0; i < size; ++i) Byte(static_cast<int>(value >> (8 * i) & 0xFF));
        return *this;
    }
};

TEST(gsl_Archive, RecordsArePinned) {
    const gsl_Point withUid(gsl_Point(1, -2, 0.5), gsl_Point(1, -2, 0.5));
    const Golden point = Golden().Head(0x030A0001, 0).Double(1).Double(-2).Double(0.5);
    EXPECT_EQ(Save(withUid), point.bytes);
    EXPECT_EQ(point.bytes.size(), 33u);
    const auto loadedPoint = RoundTrip(withUid);
    EXPECT_TRUE(*loadedPoint == withUid);
    EXPECT_FALSE(loadedPoint->GetUid().IsAllocated());

    // Fields lie in the order of their names.
    const Golden vector = Golden().Head(0x030A0003, 0).Double(-1).Double(3).Double(4).Double(0);
    EXPECT_EQ(Save(gsl_PersistentVector(gsl_Vector(3, 4, 0))), vector.bytes);
    EXPECT_EQ(vector.bytes.size(), 41u);

    const gsl_Dot dot(7, 8);
    Golden bound;
    bound.Head(0x030A0005, 1).Int(8).Int(7).Int(2).Byte('1').Byte('0');
    bound.Head(0x030A0001, 0).Double(0).Double(0).Double(0);
    EXPECT_EQ(Save(dot, dot.GetUid()), bound.bytes);
    const auto loadedDot = RoundTrip(dot, dot.GetUid());
    EXPECT_EQ(loadedDot->GetMethod(), gsl_DOT_BY_ENTITY);
    EXPECT_EQ(loadedDot->GetInstanceId(), 7);
    EXPECT_EQ(loadedDot->GetEntityId(), 8);
    EXPECT_TRUE(loadedDot->GetUid().IsAllocated());
    EXPECT_NE(loadedDot->GetUid(), dot.GetUid());
    EXPECT_EQ(Save(gsl_Dot(1, 2, 3)).size(), 55u);
}

TEST(gsl_Archive, CornersThatShareAnIdentityStayApart) {
    gsl_BBox box;
    box.Add(gsl_Point(gsl_Point(0, 0, 0), gsl_Point(2, 2, 2)));
    box.Add(gsl_Point(5, 6, 7));
    EXPECT_EQ(box.Low().GetUid(), box.High().GetUid());
    EXPECT_EQ(Save(box).size(), 75u);
    const auto loaded = RoundTrip(box);
    EXPECT_TRUE(*loaded == box);
    EXPECT_EQ(loaded->High()[2], 7);
}

TEST(gsl_Archive, LinesPlanesAndSegmentsComeBack) {
    const gsl_Point p(1, 2, 3), q(-4, 5, std::numeric_limits<double>::denorm_min());
    EXPECT_TRUE(*RoundTrip(gsl_Plane(p, gsl_Vector(0, 3, 4))) == gsl_Plane(p, gsl_Vector(0, 3, 4)));
    EXPECT_TRUE(*RoundTrip(gsl_StLine(p, q)) == gsl_StLine(p, q));
    EXPECT_TRUE(*RoundTrip(gsl_Segment(p, q)) == gsl_Segment(p, q));
    const auto model = RoundTrip(gsl_ModelSegment(gsl_Segment(p, q), 12, 34));
    EXPECT_TRUE(model->GetSegment() == gsl_Segment(p, q));
    EXPECT_EQ(model->GetInstanceId(), 12);
    EXPECT_EQ(model->GetEntityId(), 34);

    // The length cache is archived as it stands.
    gsl_Vector v(3, 4, 0);
    EXPECT_EQ(v.Length(), 5);
    EXPECT_EQ(Save(gsl_PersistentVector(v)),
              Golden().Head(0x030A0003, 0).Double(5).Double(3).Double(4).Double(0).bytes);
    RoundTrip(gsl_PersistentVector(v));
}

TEST(gsl_Archive, MatricesComeBackWithTheirFlag) {
    gsl_Matrix turned;
    turned.AxisRotation(gsl_Vector(0, 0, 1), 1);
    auto loaded = RoundTrip(gsl_PersistentMatrix(turned));
    EXPECT_TRUE(*loaded == turned);
    EXPECT_TRUE(loaded->IsIdentity()) << "the flag of a rotation by axis stays 1";
    turned.AxisRotation(gsl_Point(1, 2, 3), gsl_Vector(0, 0, 1), 1);
    loaded = RoundTrip(gsl_PersistentMatrix(turned));
    EXPECT_TRUE(*loaded == turned);
    EXPECT_FALSE(loaded->IsIdentity());

    // An array of another shape: 2 columns and 8 rows in place of 4 and 4.
    Bytes reshaped = Save(gsl_PersistentMatrix(turned));
    const std::size_t columns = 9 + 4 + 9;
    EXPECT_EQ(reshaped[columns], std::byte{4});
    EXPECT_EQ(reshaped[columns + 4], std::byte{4});
    reshaped[columns] = std::byte{2};
    reshaped[columns + 4] = std::byte{8};
    loaded = Load<gsl_PersistentMatrix>(reshaped);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(*loaded == gsl_Matrix());
    EXPECT_TRUE(loaded->IsIdentity());
}

TEST(gsl_Archive, ArraysComeBack) {
    gsl_PlaneArray planes;
    gsl_LineArray lines;
    gsl_DotArray dots;
    const gsl_Dot twice(1, 2, 3);
    for (int i = 0; i < 20; ++i) {
        planes.Append(gsl_Plane(gsl_Point(i, 0, 0), gsl_Vector(0, 0, i)));
        lines.Append(gsl_StLine(gsl_Point(0, i, 0), gsl_Vector(i, 0, 1)));
        dots.Append(i % 5 == 0 ? twice : gsl_Dot(i, -i));
    }
    EXPECT_TRUE(RoundTrip(planes)->List().IsEqual(planes.List()));
    EXPECT_TRUE(RoundTrip(lines)->List().IsEqual(lines.List()));
    const auto loadedPlanes = Load<gsl_PlaneArray>(Save(gsl_PlaneArray()));
    EXPECT_EQ(loadedPlanes->Length(), 0);

    const auto loaded = Load<gsl_DotArray>(Save(dots));
    ASSERT_EQ(loaded->Length(), 20);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ((*loaded)[i].GetEntityId(), dots[i].GetEntityId());
        EXPECT_TRUE((*loaded)[i].GetPoint() == dots[i].GetPoint());
    }
}

TEST(gsl_Archive, EveryCutRecordIsRefused) {
    gsl_DotArray dots;
    for (int i = 0; i < 3; ++i) dots.Append(gsl_Dot(i, 2, 3));
    testing::internal::CaptureStderr();
    for (const Bytes& whole : {Save(dots), Save(gsl_PersistentMatrix()), Save(gsl_Plane())}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            idb_LoadFault fault;
            EXPECT_EQ(idb_LoadAnyObject(whole.data(), size, 2, fault), nullptr) << size;
        }
        idb_LoadFault fault;
        EXPECT_NE(idb_LoadAnyObject(whole.data(), whole.size(), 2, fault), nullptr);
    }
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
