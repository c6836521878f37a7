#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "foundation/shared/bio_Ifilter.h"
#include "foundation/shared/bio_Ofilter.h"

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

TEST(bio_Ofilter, WritesTheSameBytesOnEveryPlatform) {
    bio_Ofilter out;
    out.Write(-2);
    out.Write(0x80000001u);
    out.Write(true);
    out.Write(0.5f);
    out.Write(-0.0);
    out.Write(cow_String(std::string_view("a\0b", 3)));
    out.Write(cow_String());
    out.WriteBytes("xy", 2);
    const unsigned char expected[] = {0xFE, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0x80, 1,    0,  0, 0,
                                      0x3F, 0,    0,    0,    0, 0, 0, 0,    0x80, 3,  0, 0,
                                      0,    'a',  0,    'b',  0, 0, 0, 0,    'x',  'y'};
    ASSERT_EQ(out.Size(), sizeof expected);
    EXPECT_EQ(std::memcmp(out.Data(), expected, sizeof expected), 0);

    bio_Ifilter in(out.Data(), out.Size());
    EXPECT_EQ(in.PeekUnsigned(4), 0x80000001u);
    EXPECT_TRUE(in.PeekBool(8));
    EXPECT_EQ(in.ReadInt(), -2);
    EXPECT_EQ(in.ReadUnsigned(), 0x80000001u);
    EXPECT_TRUE(in.ReadBool());
    EXPECT_EQ(in.ReadFloat(), 0.5f);
    EXPECT_TRUE(std::signbit(in.ReadDouble()));
    EXPECT_EQ(in.ReadString(), cow_String(std::string_view("a\0b", 3)));
    EXPECT_TRUE(in.ReadString().IsEmpty());
    char raw[2];
    in.ReadBytes(raw, 2);
    EXPECT_EQ(std::string(raw, 2), "xy");
    EXPECT_EQ(in.Remaining(), 0u);
    EXPECT_FALSE(in.Failed());
}

TEST(bio_Ofilter, NumbersIdentitiesAsTheyComeAndKeepsTheFirstFailure) {
    bio_Ofilter out;
    const cls_Uid a = cls_Uid::AllocateUid();
    const cls_Uid b = cls_Uid::AllocateUid();
    EXPECT_EQ(out.ReferenceNumber(b), 1);
    EXPECT_EQ(out.ReferenceNumber(cls_Uid()), 0);
    EXPECT_EQ(out.ReferenceNumber(a), 2);
    EXPECT_EQ(out.ReferenceNumber(b), 1);
    out.RethrowFailure();
    out.Fail(std::make_exception_ptr(std::bad_alloc()));
    out.Fail(std::make_exception_ptr(1));
    EXPECT_THROW(out.RethrowFailure(), std::bad_alloc);
    out.Write(1.0);
    out.Write(cow_String("later"));
    out.WriteBytes("later", 5);
    EXPECT_EQ(out.Size(), 0u);
    out.Clear();
    EXPECT_FALSE(out.Failed());
    EXPECT_EQ(out.ReferenceNumber(a), 1);
}

// The first read past the end prints one line; from then on everything is zero, in silence.
TEST(bio_Ifilter, GivesZerosPastTheEnd) {
    const unsigned char bytes[] = {1, 2, 3, 4, 5, 6};
    bio_Ifilter in(bytes, sizeof bytes);
    EXPECT_EQ(in.ReadUnsigned(), 0x04030201u);
    EXPECT_EQ(in.PeekUnsigned(0), 0u);
    EXPECT_FALSE(in.PeekBool(2));
    CaptureStderr();
    EXPECT_EQ(in.ReadDouble(), 0.0);
    EXPECT_EQ(in.ReadInt(), 0);
    EXPECT_FALSE(in.ReadBool());
    EXPECT_TRUE(in.ReadString().IsEmpty());
    EXPECT_EQ(in.ReadCount(1), 0);
    char raw[3] = {1, 1, 1};
    in.ReadBytes(raw, 3);
    EXPECT_EQ(std::string(raw, 3), std::string(3, '\0'));
    EXPECT_EQ(GetCapturedStderr(), "Error reading stream: 8 bytes expected, 2 bytes left\n");
    EXPECT_TRUE(in.Failed());
    EXPECT_EQ(in.Remaining(), 0u);
}

TEST(bio_Ifilter, RefusesLengthsAndCountsBeyondTheRest) {
    const auto stream = [](int length) {
        bio_Ofilter out;
        out.Write(length);
        out.Write(0);
        return out;
    };
    CaptureStderr();
    for (const int length : {5, std::numeric_limits<int>::max()}) {
        const bio_Ofilter out = stream(length);
        bio_Ifilter in(out.Data(), out.Size());
        EXPECT_TRUE(in.ReadString().IsEmpty());
        EXPECT_TRUE(in.Failed());
    }
    {
        const bio_Ofilter out = stream(3);
        bio_Ifilter in(out.Data(), out.Size());
        EXPECT_EQ(in.ReadCount(2), 0);
    }
    EXPECT_EQ(GetCapturedStderr(),
              "Error reading stream: 5 characters expected, 4 bytes left\n"
              "Error reading stream: 2147483647 characters expected, 4 bytes left\n"
              "Error reading stream: 3 elements expected, 4 bytes left\n");
    for (const int length : {-1, std::numeric_limits<int>::min()}) {
        const bio_Ofilter out = stream(length);
        bio_Ifilter in(out.Data(), out.Size());
        EXPECT_TRUE(in.ReadString().IsEmpty());
        EXPECT_FALSE(in.Failed());
        EXPECT_EQ(bio_Ifilter(out.Data(), out.Size()).ReadCount(1), 0);
    }
}

// Numbers are arbitrary; against a plain model of the table.
TEST(bio_ReadObjectTable, KeepsTheObjectsOfSparseNumbers) {
    bio_ReadObjectTable table;
    int objects[1000];
    const auto numberOf = [](int i) {
        return static_cast<int>(static_cast<unsigned>(i + 1) * 0x01010101u);
    };
    for (int i = 0; i < 1000; ++i) {
        table.BeginObject(numberOf(i), 7);
        if (i % 3 == 0) {
            table.EndObject(numberOf(i));
        } else {
            table.SetObject(numberOf(i), 8, &objects[i]);
        }
    }
    const std::size_t all = table.Mark();
    table.ForgetPointers(0, 10);
    for (int i = 0; i < 1000; ++i) {
        const bio_ReadObject* const found = table.Find(numberOf(i));
        const bool isKept = i % 3 != 0 && i > 14;
        ASSERT_EQ(found != nullptr, isKept) << i;
        EXPECT_TRUE(!found || found->object == &objects[i]);
    }
    EXPECT_EQ(table.Find(0), nullptr);
    EXPECT_EQ(table.Find(5), nullptr);
    EXPECT_EQ(all, 666u);
}

}  // namespace
