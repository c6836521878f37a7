#include "foundation/coreutils/typ_ArchCompTable.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/coreutils/KTSBasCoreUtils.h"
#include "testing/test_FailingAllocator.h"

namespace {

constexpr std::uint32_t kBase = typ_TypeId(500, 1);
constexpr std::uint32_t kDerived = typ_TypeId(500, 2);
constexpr std::uint32_t kForeign = typ_TypeId(501, 1);

class typ_ArchCompTableTest : public testing::Test {
  protected:
    void SetUp() override {
        std::string base = "test_Base";
        const typ_ArchRow rows[] = {{},
                                    {typ_PERSISTENT_CLASS, typ_NO_PARENT, base.c_str()},
                                    {typ_PERSISTENT_CLASS, kBase, "test_Derived"},
                                    {typ_PERSISTENT_CLASS, typ_TypeId(500, 4), "test_A"},
                                    {typ_PERSISTENT_CLASS, typ_TypeId(500, 3), "test_B"}};
        const typ_ArchRow foreign[] = {{}, {typ_EXCEPTION_CLASS, kDerived, "test_Foreign"}};
        typ_ArchCompTable::InsertEntry(500, {rows, 5});
        typ_ArchCompTable::InsertEntry(501, {foreign, 2});
        base.assign("overwritten");
    }
    void TearDown() override {
        typ_ArchCompTable::WithdrawEntry(500);
        typ_ArchCompTable::WithdrawEntry(501);
    }
};

TEST_F(typ_ArchCompTableTest, AnswersFromItsOwnCopy) {
    EXPECT_EQ(typ_ArchCompTable::Name(kBase), "test_Base");
    EXPECT_EQ(typ_ArchCompTable::Kind(kForeign), typ_EXCEPTION_CLASS);
    EXPECT_EQ(typ_ArchCompTable::Parent(kDerived), kBase);
    EXPECT_EQ(typ_ArchCompTable::RowCount(500), 5);
    for (const std::uint32_t unknown :
         {typ_TypeId(500, 0), typ_TypeId(500, 5), typ_TypeId(502, 1)}) {
        EXPECT_EQ(typ_ArchCompTable::Name(unknown), "");
        EXPECT_EQ(typ_ArchCompTable::Kind(unknown), typ_EMPTY_ROW);
        EXPECT_EQ(typ_ArchCompTable::Parent(unknown), typ_NO_PARENT);
    }
}

TEST_F(typ_ArchCompTableTest, ParentsAreFollowedAcrossComponentsAndCirclesEnd) {
    EXPECT_TRUE(typ_ArchCompTable::IsParent(kBase, kForeign));
    EXPECT_TRUE(typ_ArchCompTable::IsParent(kForeign, kForeign));
    EXPECT_FALSE(typ_ArchCompTable::IsParent(kForeign, kBase));
    EXPECT_FALSE(typ_ArchCompTable::IsParent(kBase, typ_TypeId(500, 3)));
}

TEST_F(typ_ArchCompTableTest, SameIdReplacesAndAFailedInsertChangesNothing) {
    const typ_ArchRow rows[] = {{}, {typ_PERSISTENT_CLASS, typ_NO_PARENT, "test_New"}};
    {
        const test_FailingAllocator failing(1);
        EXPECT_THROW(typ_ArchCompTable::InsertEntry(500, {rows, 2}), std::bad_alloc);
    }
    EXPECT_EQ(typ_ArchCompTable::Name(kBase), "test_Base");
    typ_ArchCompTable::InsertEntry(500, {rows, 2});
    EXPECT_EQ(typ_ArchCompTable::Name(kBase), "test_New");
    EXPECT_EQ(typ_ArchCompTable::RowCount(500), 2);
}

TEST_F(typ_ArchCompTableTest, ShutDownForgetsComponentsAndTheTableServesOn) {
    int count = 0;
    KTSBasCoreUtils_initialize(count);
    KTSBasCoreUtils_finalize(count);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(typ_ArchCompTable::Name(kBase), "");
    SetUp();
    EXPECT_EQ(typ_ArchCompTable::Name(kForeign), "test_Foreign");
}

}  // namespace
