#include "mdl/mdl_Model.h"

#include <gtest/gtest.h>

#include <string>

#include "omu/omu_CmdExceptions.h"

TEST(mdl_Model, EnumerationsHaveTheirNamesAndValues) {
    EXPECT_EQ(mdl_PrimModelType().TypeString(), "STANDARD_EXPLICIT, CFD or EMAG");
    EXPECT_EQ(mdl_PrimModelType("EMAG").Enumerator(), mdl_EMAG);
    EXPECT_EQ(mdl_PrimModelType().Enumerator(), mdl_STANDARD_EXPLICIT);
    EXPECT_EQ(mdl_PrimModelType::Value(2), mdl_EMAG);
    EXPECT_EQ(mdl_PrimModelType::Name(2), "CFD");
    EXPECT_EQ(mdl_PrimModelType::Name(3), "");
    EXPECT_EQ(mdl_PrimFormulation().TypeString(), "NOT_SET, TOTAL or SCATTERED");
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

TEST(mdl_Model, CommandsAnswerTheirNames) {
    using M = mdl_Model;
    static_assert(M::nameCmd() == omn_FixedString("name"));
    std::string names;
    for (const omn_FixedString name : {M::absoluteZeroCmd(),     M::aquaAnalysisCmd(),
                                       M::copyConnectorsCmd(),   M::copyConstraintsCmd(),
                                       M::copyInteractionsCmd(), M::descriptionCmd(),
                                       M::endRestartStepCmd(),   M::fluidMassDensityCmd(),
                                       M::globalJobCmd(),        M::gravitationalConstantCmd(),
                                       M::keywordBlockCmd(),     M::lastChangedCountCmd(),
                                       M::modelTypeCmd(),        M::nameCmd(),
                                       M::restartIncrementCmd(), M::restartJobCmd(),
                                       M::restartStepCmd(),      M::seabedElevationCmd(),
                                       M::shellToSolidCmd(),     M::steadyCurrentDataCmd(),
                                       M::stefanBoltzmannCmd(),  M::stillFluidSurfaceElevationCmd(),
                                       M::universalGasCmd(),     M::waveFormulationCmd()}) {
        names.append(name.Characters()).append(" ");
    }
    EXPECT_EQ(names,
              "absoluteZero aquaAnalysis copyConnectors copyConstraints copyInteractions "
              "description endRestartStep fluidMassDensity globalJob gravitationalConstant "
              "keywordBlock lastChangedCount modelType name restartIncrement restartJob "
              "restartStep seabedElevation shellToSolid steadyCurrentData stefanBoltzmann "
              "stillFluidSurfaceElevation universalGas waveFormulation ");
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
