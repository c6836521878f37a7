#include "mdl/mdl_Model.h"

#include <gtest/gtest.h>

#include "omu/omu_CmdExceptions.h"

TEST(mdl_Model, EnumerationsHaveTheirNamesAndValues) {
    EXPECT_EQ(mdl_PrimModelType().TypeString(), "STANDARD_EXPLICIT, CFD or EMAG");
    EXPECT_EQ(mdl_PrimModelType("EMAG").Enumerator(), mdl_EMAG);
    EXPECT_EQ(mdl_PrimModelType().Enumerator(), mdl_STANDARD_EXPLICIT);
    EXPECT_EQ(mdl_PrimFormulation::Name(2), "TOTAL");
    EXPECT_EQ(mdl_PrimFormulation().Enumerator(), mdl_Model::NOT_SET);
}

TEST(mdl_Model, RestartIncrementIsNegative) {
    const mdl_PrimRestartInc end(mdl_Model::STEP_END);
    EXPECT_EQ(end.EnumValue(), 4294967294u);
    EXPECT_EQ(end.PermissibleValues().ConstGet("STEP_END"), 4294967294u);
    EXPECT_EQ(static_cast<int>(mdl_PrimRestartInc().Enumerator()), -2);
    EXPECT_EQ(mdl_PrimRestartInc::Name(-2), "STEP_END");
    try {
        mdl_PrimRestartInc(static_cast<mdl_Model::RestartIncEnm>(5));
        FAIL();
    } catch (const omu_ValueErrorException& refused) {
        EXPECT_EQ(refused.JournalMessage(KTSBasStringMode::Untranslated),
                  "omu_PrimEnum(ENUMTYPE) - Enum value not allowed: 5  Permissible: STEP_END");
    }
}
