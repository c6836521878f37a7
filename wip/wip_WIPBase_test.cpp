#include "wip/wip_WIPBase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/shared/nex_Exception.h"
#include "wip/KTSOvuWip.h"
#include "wip/wip_InterruptedException.h"
#include "wip/wip_TestReporter_test.h"

namespace {

using testing::ElementsAre;

TEST(wip_WIPBase, HandsEveryMessageOnAsItIs) {
    wip_TestReporter reporter;
    wip_WIP& wip = wip_WIP::Instance();
    const cow_List<atr_String> two("a", "b");
    const KTSBasStringMode asItStands = KTSBasStringMode::Untranslated;
    omu_PrimTuple arguments(cow_List<omu_PrimHandle>(omu_PrimHandle(new omu_PrimTuple)));
    wip.Print("p");
    wip.Verbose("v", asItStands);
    wip.Warning("w");
    wip.WarningList(two);
    wip.Error("e", wip_ERROR_LEVEL_MEDIUM);
    wip.ErrorList(two, wip_ERROR_LEVEL_HIGH, asItStands);
    wip.Display("d");
    wip.Landmark("l");
    wip.Milestone("m", asItStands);
    wip.Milestone("m", 0);
    wip.Milestone("m", "n", 1, 2, asItStands);
    wip.FacilityMessage("f", 1, 2, 3, arguments);
    wip.CommandDone();
    EXPECT_THAT(
        reporter.Take(),
        ElementsAre("print p", "verbose v as it stands", "warning w", "warnings a", "warnings b",
                    "error1 e", "errors2 a as it stands", "errors2 b as it stands", "display d",
                    "landmark l", "milestone m as it stands", "m 0",
                    "milestone n 1/2 m as it stands", "facility 1 2 3 f", "done"));
    EXPECT_EQ(arguments.Length(), 0) << "handed on itself, not as a copy";
}

TEST(wip_WIPBase, IsInterruptedAsTheReporterSays) {
    wip_TestReporter reporter;
    wip_WIP& wip = wip_WIP::Instance();
    wip.InterruptedThrow();
    reporter.interrupted = true;
    EXPECT_THROW(wip.InterruptedThrow(), wip_InterruptedException);
    try {
        wip.InterruptedThrow();
    } catch (const KTSBasException& stopped) {
        EXPECT_GT(stopped.Line(), 0);
        EXPECT_THROW(stopped.Propagate(), wip_InterruptedException);
    }
}

TEST(wip_WIPBase, RaisesWithoutAReporter) {
    wip_WIP& wip = wip_WIP::Instance();
    ASSERT_EQ(wip.GetWipReporter(), nullptr);
    try {
        wip.Print("p");
        FAIL();
    } catch (const nex_Exception& failed) {
        EXPECT_EQ(failed.JournalMessage(KTSBasStringMode::Untranslated), "WipReporter != 0");
        EXPECT_STREQ(failed.PythonType(), "CorvixError");
        EXPECT_THAT(failed.File(), testing::EndsWith("wip_WIPBase.cpp"));
    }
    EXPECT_THROW(wip.Milestone("m", 1), nex_PrimException);
    wip.CommandDone();
    wip.InterruptedThrow();
}

TEST(wip_WIPBase, KeepsTheReporterUntilItselfGoes) {
    int count = 0;
    KTSOvuWip_initialize(count);
    {
        wip_TestReporter first;
        wip_TestReporter second;
        wip_WIP& wip = wip_WIP::Instance();
        wip.RemoveWipReporter(&first);
        EXPECT_EQ(wip.GetWipReporter(), &second);
        wip.RemoveWipReporter(&second);
        EXPECT_EQ(wip.GetWipReporter(), nullptr);
        wip.SetWipReporter(&first);
        { wip_TestReporter third; }
        EXPECT_EQ(wip.GetWipReporter(), nullptr) << "the last one took itself out";
        wip.SetWipReporter(&first);
        KTSOvuWip_finalize(count);
        EXPECT_FALSE(omi_Singleton<wip_WIP>::Exists());
    }
    EXPECT_FALSE(omi_Singleton<wip_WIP>::Exists()) << "a reporter created it anew";
}

}  // namespace
