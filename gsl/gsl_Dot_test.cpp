#include "gsl/gsl_Dot.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

#include "foundation/shared/cls_ClassRegistrar.h"
#include "gsl/KTSOvuGsl.h"
#include "gsl/gsl_BBox.h"
#include "gsl/gsl_ModelSegment.h"
#include "gsl/gsl_ObjArrays.h"
#include "gsl/gsl_PersistentMatrix.h"
#include "gsl/gsl_PersistentVector.h"
#include "gsl/gsl_Segment.h"
#include "gsl/gsl_Util.h"

namespace {

/// A dot of another module, with two parent features.
struct FeatureDot : gsl_Dot {
    int NmrParents() const override { return 2; }
    int GetNthParentId(int n) const override { return 40 + n; }
    std::uint32_t DynTypeId() const override { return typ_TypeId(999, 1); }
};

/// The module, brought up for one test.
class Module {
  public:
    Module() { KTSOvuGsl_initialize(count); }
    ~Module() { KTSOvuGsl_finalize(count); }
    int count = 0;
};

/// Name and kind of each field, with the row of the class of an object field.
std::string FieldsOf(const cls_ClassMetadata& metadata) {
    std::string fields;
    for (const cls_AttributeMetadata& field : metadata.Attributes()) {
        fields.append(field.name.View()).append(" ").append(std::to_string(field.kind));
        if (field.classId) fields.append(":").append(std::to_string(field.classId & 0xFFFF));
        fields.append(" ");
    }
    return fields;
}

/// The method, the instance and the entity.
std::array<int, 3> SourceOf(const gsl_Dot& dot) {
    return {dot.GetMethod(), dot.GetInstanceId(), dot.GetEntityId()};
}

cls_MetadataRegistrar& Registrar() { return omi_Singleton<cls_MetadataRegistrar>::Instance(); }

TEST(gsl_Dot, IsBuiltAndCopied) {
    const gsl_Point position(gsl_Point(1, 2, 3), gsl_Point(1, 2, 3));
    const gsl_Dot placed(position);
    EXPECT_EQ(placed.GetPoint().GetUid(), position.GetUid());
    EXPECT_TRUE(placed.GetUid().IsAllocated());
    EXPECT_NE(placed.GetUid(), position.GetUid());
    EXPECT_EQ(SourceOf(placed), (std::array<int, 3>{gsl_DOT_BY_POSITION, 0, -1}));
    EXPECT_EQ(SourceOf(gsl_Dot(7, 8)), (std::array{10, 7, 8}));
    EXPECT_TRUE(gsl_Dot(7, 8).GetPoint() == gsl_Point());

    const std::unique_ptr<gsl_Dot> copy(placed.Copy());
    EXPECT_EQ(copy->GetUid(), placed.GetUid());
    copy->SetValues(4, 5, 6);
    EXPECT_EQ(copy->GetPoint().GetUid(), position.GetUid());
    EXPECT_EQ(copy->GetPoint()[0], 4);
}

TEST(gsl_Dot, AsksItsDerivedClass) {
    EXPECT_EQ(gsl_Dot().OwnerFeatID(), 0);
    EXPECT_EQ(FeatureDot().OwnerFeatID(), 40);

    const auto describe = +[](cls_ClassRegistrar& registrar) {
        registrar.AddClass({"FeatureDot", typ_TypeId(999, 1), nullptr, gsl_Dot::TypeId()});
    };
    const Module module;
    Registrar().initClassMetadata(describe, 2);
    EXPECT_TRUE(FeatureDot().IsA(gsl_Dot::TypeId()));
    EXPECT_FALSE(gsl_Dot().IsA(typ_TypeId(999, 1)));
    EXPECT_FALSE(gsl_Dot().IsA(gsl_Point::TypeId()));
    Registrar().withdrawClassMetadata(describe);
}

TEST(KTSOvuGsl, RegistersItsClassesAndWithdrawsThem) {
    const struct {
        cls_InitializeMetadataFunction function;
        unsigned flags;
        std::uint32_t row;
        const char* fields;
    } classes[] = {
        {&gsl_BBox::InitializeMetadata, 3, 7, "_high 15:1 _low 15:1 "},
        {&gsl_ModelSegment::InitializeMetadata, 7, 11, "_entityId 5 _instanceId 5 _segment 15:8 "},
        {&gsl_Plane::InitializeMetadata, 3, 4, "_normal 15:3 _origin 15:1 "},
        {&gsl_PlaneArray::InitializeMetadata, 3, 13, "_objects 8 "},
        {&gsl_Point::InitializeMetadata, 7, 1, "_x 10 _y 10 _z 10 "},
        {&gsl_Segment::InitializeMetadata, 3, 8, "_end 15:1 _start 15:1 "},
        {&gsl_StLine::InitializeMetadata, 3, 6, "_direction 15:3 _origin 15:1 "},
        {&gsl_LineArray::InitializeMetadata, 3, 10, "_objects 8 "},
        {&gsl_PersistentVector::InitializeMetadata, 7, 3, "_magnitude 10 _x 10 _y 10 _z 10 "},
        {&gsl_Dot::InitializeMetadata, 7, 5, "_entityId 5 _instanceId 5 _method 14 _point 15:1 "},
        {&gsl_DotArray::InitializeMetadata, 3, 14, "_objects 8 "},
        {&gsl_PersistentMatrix::InitializeMetadata, 7, 2, "DDBmatrix 15:1 _is_identity 5 "},
    };
    const int before = Registrar().Size();
    {
        const Module module;
        EXPECT_EQ(module.count, 1);
        EXPECT_EQ(Registrar().Size(), before + 12);
        EXPECT_TRUE(omi_Singleton<gsl_Util>::Exists());
        for (const auto& c : classes) {
            EXPECT_EQ(Registrar().Flags(c.function), c.flags) << c.row;
            const std::uint32_t typeId = typ_TypeId(778, c.row);
            const cls_ClassMetadata* metadata = Registrar().ClassRegistrar().Find(typeId);
            ASSERT_NE(metadata, nullptr) << c.row;
            EXPECT_EQ(metadata->Name(), typ_ArchCompTable::Name(typeId));
            EXPECT_NE(metadata->Ctor(), nullptr) << c.row;
            EXPECT_NE(metadata->CowDtor(), nullptr) << c.row;
            EXPECT_EQ(FieldsOf(*metadata), c.fields);
        }
        EXPECT_EQ(typ_ArchCompTable::Parent(gsl_PersistentVector::TypeId()), gsl_Point::TypeId());
        EXPECT_EQ(gsl_ArchEntry().rowCount, 15);
    }
    EXPECT_EQ(Registrar().Size(), before);
    EXPECT_EQ(Registrar().ClassRegistrar().Find(gsl_Point::TypeId()), nullptr);
    EXPECT_EQ(typ_ArchCompTable::RowCount(778), 0);
    EXPECT_FALSE(omi_Singleton<gsl_Util>::Exists());
}

}  // namespace
