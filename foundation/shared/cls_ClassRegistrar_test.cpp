#include "foundation/shared/cls_ClassRegistrar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/KTSBasShared.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "foundation/shared/cls_ModuleRegistration.h"

namespace {

constexpr std::uint32_t kOuter = typ_TypeId(500, 1);
constexpr std::uint32_t kInner = typ_TypeId(500, 2);
int outerCalls = 0;
bool failOnce = false;

void DescribeOuter(cls_ClassRegistrar& registrar) {
    ++outerCalls;
    registrar.AddClass(cls_ClassMetadata("test_Outer", kOuter, nullptr, kInner)
                           .AddAttribute("_b", cls_KIND_EMBEDDED_OBJ, kInner)
                           .AddAttribute("_a", cls_KIND_INT)
                           .AddAttribute("_B", cls_KIND_DOUBLE)
                           .AddAttribute("_a", cls_KIND_STRING));
    if (failOnce) {
        failOnce = false;
        throw 1;
    }
}

void DescribeInner(cls_ClassRegistrar& registrar) {
    registrar.AddClass(cls_ClassMetadata("test_Inner", kInner).SetCowDtor([](void* object) {
        *static_cast<bool*>(object) = true;
    }));
}

/// Describes its own class and another's.
void DescribeBoth(cls_ClassRegistrar& registrar) {
    DescribeInner(registrar);
    registrar.AddClass(cls_ClassMetadata("test_Third", typ_TypeId(500, 3)));
}

class cls_MetadataRegistrarTest : public testing::Test {
  protected:
    cls_MetadataRegistrar& Registrar() { return omi_Singleton<cls_MetadataRegistrar>::Instance(); }
    void SetUp() override { outerCalls = 0; }
    void TearDown() override { omi_Singleton<cls_MetadataRegistrar>::Finalize(); }
};

TEST_F(cls_MetadataRegistrarTest, DescribesWhenNeededInAnyOrder) {
    Registrar().initClassMetadata(&DescribeOuter, 7);
    Registrar().initClassMetadata(&DescribeOuter, 7);
    EXPECT_EQ(outerCalls, 0);
    Registrar().initClassMetadata(&DescribeInner, 3);
    EXPECT_EQ(Registrar().Size(), 2);
    EXPECT_EQ(Registrar().Flags(&DescribeOuter), 7u);
    EXPECT_EQ(Registrar().Flags(&DescribeBoth), 0u);

    const cls_ClassRegistrar& classes = Registrar().ClassRegistrar();
    (void)Registrar().ClassRegistrar();
    EXPECT_EQ(outerCalls, 1);
    ASSERT_NE(classes.Find(kOuter), nullptr);
    EXPECT_EQ(classes.Find("test_Outer"), classes.Find(kOuter));
    EXPECT_TRUE(classes.Inherits(kOuter, kInner));
    EXPECT_FALSE(classes.Inherits(kInner, kOuter));

    std::vector<std::string_view> names;
    for (const auto& attribute : classes.Find(kOuter)->Attributes()) {
        names.push_back(attribute.name.View());
    }
    EXPECT_THAT(names, testing::ElementsAre("_B", "_a", "_b"));
    EXPECT_EQ(classes.Find(kOuter)->FindAttribute("_a")->kind, cls_KIND_STRING);
    EXPECT_EQ(classes.Find(kOuter)->FindAttribute("_c"), nullptr);
}

TEST_F(cls_MetadataRegistrarTest, AFunctionThatThrowsIsAskedAgain) {
    Registrar().initClassMetadata(&DescribeOuter, 1);
    failOnce = true;
    EXPECT_THROW((void)Registrar().ClassRegistrar(), int);
    EXPECT_NE(Registrar().ClassRegistrar().Find(kOuter), nullptr);
    EXPECT_EQ(outerCalls, 2);
}

TEST_F(cls_MetadataRegistrarTest, WithdrawalForgetsOnlyWhatNobodyElseDescribes) {
    Registrar().initClassMetadata(&DescribeInner, 1);
    Registrar().initClassMetadata(&DescribeBoth, 1);
    (void)Registrar().ClassRegistrar();
    Registrar().withdrawClassMetadata(&DescribeBoth);
    EXPECT_NE(Registrar().ClassRegistrar().Find("test_Inner"), nullptr);
    EXPECT_EQ(Registrar().ClassRegistrar().Find("test_Third"), nullptr);
}

TEST(cls_ClassRegistrar, ANameOfTwoClassesIsThatOfTheLater) {
    cls_ClassRegistrar registrar;
    registrar.AddClass(cls_ClassMetadata("test_Twice", kOuter));
    registrar.AddClass(cls_ClassMetadata("test_Twice", kInner));
    registrar.AddClass(cls_ClassMetadata("test_Renamed", kOuter));
    ASSERT_NE(registrar.Find("test_Twice"), nullptr);
    EXPECT_EQ(registrar.Find("test_Twice")->TypeId(), kInner);
    EXPECT_EQ(registrar.Find("test_Renamed")->TypeId(), kOuter);
}

// Third is a kind of Inner by the component table, Fourth of Third by its metadata.
TEST(cls_ClassRegistrar, TellsObjectsFromThoseThatAreKindsInRecordsOnly) {
    constexpr std::uint32_t third = typ_TypeId(500, 3);
    constexpr std::uint32_t fourth = typ_TypeId(500, 4);
    static constexpr typ_ArchRow rows[] = {{}, {}, {}, {typ_PERSISTENT_CLASS, kInner, "third"}};
    typ_ArchCompTable::InsertEntry(500, {rows, 4});
    for (const bool isRecordOnly : {false, true}) {
        cls_ClassRegistrar registrar;
        registrar.AddClass(cls_ClassMetadata("fourth", fourth, nullptr, third));
        cls_ClassMetadata metadata("third", third);
        if (isRecordOnly) metadata.SetParentInRecordsOnly();
        registrar.AddClass(metadata);
        EXPECT_TRUE(registrar.IsKindOf(third, kInner));
        EXPECT_EQ(registrar.IsObjectOf(third, kInner), !isRecordOnly);
        EXPECT_TRUE(registrar.IsObjectOf(third, third));
        EXPECT_TRUE(registrar.IsObjectOf(fourth, third));
        EXPECT_FALSE(registrar.IsObjectOf(kInner, third));
    }
    typ_ArchCompTable::WithdrawEntry(500);
}

TEST_F(cls_MetadataRegistrarTest, DeleteCowCallsTheClassOrWarns) {
    Registrar().initClassMetadata(&DescribeInner, 1);
    Registrar().initClassMetadata(&DescribeOuter, 1);
    const cls_ClassRegistrar& classes = Registrar().ClassRegistrar();
    bool destroyed = false;
    classes.DeleteCow(kInner, &destroyed);
    EXPECT_TRUE(destroyed);

    testing::internal::CaptureStderr();
    classes.DeleteCow(kOuter, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Warning: objectCOW dtor not defined in ddbAPI metadata for: test_Outer\n");
}

TEST_F(cls_MetadataRegistrarTest, ArraysOfTheFoundationAreAlwaysKnown) {
    const cls_ClassMetadata* array = Registrar().ClassRegistrar().Find(cls_2D_ARRAY_CLASS);
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(array->FindAttribute("values")->collectionType, cls_LIST_DOUBLE);
    int count = 0;
    KTSBasShared_initialize(count);
    EXPECT_EQ(typ_ArchCompTable::Name(cls_2D_ARRAY_CLASS), array->Name());
    EXPECT_EQ(typ_ArchCompTable::Name(cls_BASE_EXCEPTION_CLASS), "KTSBasException");
    KTSBasShared_finalize(count);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(typ_ArchCompTable::RowCount(35), 0);
}

TEST_F(cls_MetadataRegistrarTest, AModuleWithdrawsWhatItRegistered) {
    static constexpr typ_ArchRow rows[] = {{}, {typ_PERSISTENT_CLASS, kInner, "test_Outer"}};
    static constexpr cls_MetadataRow metadata[] = {{&DescribeOuter, 7}, {&DescribeInner, 3}};
    constexpr cls_ModuleRegistration module(500, {rows, 2}, metadata);
    module.InsertComponent();
    module.RegisterClasses();
    EXPECT_EQ(Registrar().Flags(&DescribeInner), 3u);
    EXPECT_TRUE(Registrar().ClassRegistrar().IsKindOf(kOuter, kInner));
    module.Withdraw();
    EXPECT_EQ(Registrar().Size(), 0);
    EXPECT_EQ(Registrar().ClassRegistrar().Find(kOuter), nullptr);
    EXPECT_EQ(typ_ArchCompTable::RowCount(500), 0);
    omi_Singleton<cls_MetadataRegistrar>::Finalize();
    module.Withdraw();
    EXPECT_FALSE(omi_Singleton<cls_MetadataRegistrar>::Exists());
}

}  // namespace
