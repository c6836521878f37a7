#include "ann/annC_Enumerations.h"

#include <gtest/gtest.h>

#include "ann/KTSOvuAnn.h"
#include "omu/omu_CmdExceptions.h"

TEST(annC_Enumerations, NamesAreListedInTheOrderOfTheMap) {
    EXPECT_EQ(annC_PrimJustification().TypeString(), "LEFT, RIGHT or CENTER");
    EXPECT_EQ(annC_PrimLineStyle().TypeString(), "SOLID, DASHED, DOTTED, DOT_DASH or NONE");
    EXPECT_EQ(annC_PrimRelativePosition().PermissibleValues().Size(), 9);
    EXPECT_EQ(annC_PrimArrowHeadStyle().PermissibleValues().Size(), 9);
    EXPECT_EQ(annC_PrimLineThickness().PermissibleValues().Size(), 4);
    EXPECT_EQ(annC_PrimBackgroundStyle().PermissibleValues().Size(), 3);
}

TEST(annC_Enumerations, ConvertByNameBetweenEnumerations) {
    const annC_PrimRelativePosition center(annC_POSITION_CENTER);
    EXPECT_EQ(center.EnumValue(), 4u);
    EXPECT_EQ(annC_PrimJustification(center).Enumerator(), annC_JUSTIFIED_CENTER);
    EXPECT_FALSE(annC_PrimArrowHeadStyle(annC_HEAD_ARROW) ==
                 annC_PrimRelativePosition(annC_POSITION_BOTTOM_LEFT))
        << "the same number is not the same name";
    try {
        annC_PrimJustification("FOO");
        FAIL();
    } catch (const omu_ValueErrorException& refused) {
        EXPECT_TRUE(refused.JournalMessage(KTSBasStringMode::Untranslated)
                        .View()
                        .ends_with("FOO  Permissible: LEFT, RIGHT or CENTER"));
    }
}

TEST(annC_Enumerations_Kept, DashedStandsBeforeDotted) {
    EXPECT_EQ(annC_PrimLineStyle::Value(1), annC_LINE_DASHED);
    EXPECT_EQ(static_cast<int>(annC_PrimLineStyle::Value(1)), 2);
    EXPECT_EQ(annC_PrimLineStyle::Name(1), "DOTTED");
}

TEST(annC_Enumerations, StartUpRegistersEachNameOnceAndSilently) {
    testing::internal::CaptureStderr();
    int count = 0;
    KTSOvuAnn_initialize(count);
    const omu_SymbolicConstantTable& table = omu_SymbolicConstantTable::Instance();
    EXPECT_NE(table.GetId("CENTER"), 0u);
    EXPECT_NE(table.GetId("FILLED_ARROW"), 0u);
    EXPECT_EQ(table.Size(), 31u) << "CENTER and NONE stand in two enumerations";
    EXPECT_EQ(annC_PrimJustification(omu_PrimEnumBase("CENTER")).Enumerator(),
              annC_JUSTIFIED_CENTER);
    KTSOvuAnn_finalize(count);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    omi_SingletonBase<omu_SymbolicConstantTable>::Finalize();
}
