#include "mdl/mdl_Model.h"

#include <gtest/gtest.h>

#include "omu/omu_CmdExceptions.h"

TEST(mdl_Model, EnumerationsHaveTheirNamesAndValues) {
    EXPECT_EQ(mdl_PrimModelType().TypeString(), "STANDARD_EXPLICIT, CFD or EMAG");
    EXPECT_EQ(mdl_PrimModelType::Value(2), mdl_EMAG);
    EXPECT_EQ(mdl_PrimModelType::Name(4), "EMAG");
    EXPECT_EQ(mdl_PrimModelType::Name(3), "");
    EXPECT_EQ(mdl_PrimFormulation().TypeString(), "NOT_SET, TOTAL or SCATTERED");
    EXPECT_EQ(mdl_PrimFormulation().Enumerator(), mdl_Model::NOT_SET);
}

TEST(mdl_Model, RestartIncrementIsNegative) {
    const mdl_PrimRestartInc end(mdl_Model::STEP_END);
    EXPECT_EQ(end.EnumValue(), 4294967294u);
    EXPECT_EQ(end.Enumerator(), mdl_Model::STEP_END);
    EXPECT_EQ(mdl_PrimRestartInc::Name(-2), "STEP_END");
    EXPECT_THROW(mdl_PrimRestartInc(static_cast<mdl_Model::RestartIncEnm>(5)),
                 omu_ValueErrorException);
}

TEST(mdl_Model_Kept, PrintSettingsBeginWithAnUnderscore) {
    EXPECT_STREQ(mdl_Model::contactPrintCmd().Characters(), "_contactPrint");
    EXPECT_STREQ(mdl_Model::echoPrintCmd().Characters(), "_echoPrint");
    EXPECT_STREQ(mdl_Model::historyPrintCmd().Characters(), "_historyPrint");
    EXPECT_STREQ(mdl_Model::modelPrintCmd().Characters(), "_modelPrint");
}

TEST(mdl_Model_Kept, SolverVersionIsNamedAfterTheInputFile) {
    EXPECT_STREQ(mdl_Model::solverVersionCmd().Characters(), "noPartsInputFile");
}
