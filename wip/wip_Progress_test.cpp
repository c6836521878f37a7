#include "wip/wip_Progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "foundation/shared/nex_Exception.h"
#include "wip/wip_ProgressObj.h"
#include "wip/wip_TestReporter_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// A stack at "start" under a reporter, the stack of the process.
class wip_ProgressTest : public testing::Test {
  protected:
    wip_ProgressTest() { stack.Initialize("start"); }
    ~wip_ProgressTest() override { wip_WIP::Instance().Progress().Clear(); }

    wip_TestReporter reporter;
    wip_Progress& stack = wip_WIP::Instance().Progress();
};
using wip_Progress_Kept = wip_ProgressTest;
using wip_ProgressObjTest = wip_ProgressTest;

TEST_F(wip_ProgressTest, APushedLevelTakesItsShareOfTheWholeRange) {
    EXPECT_TRUE(stack.Push(0.5f) && stack.Push(0.5f));
    EXPECT_EQ(stack.Depth(), 2);
    EXPECT_TRUE(stack.Update(1.0f));
    EXPECT_TRUE(stack.Pop(2));
    EXPECT_THAT(reporter.Take(), ElementsAre("start 25", "start 50"))
        << "the end of the last one taken away";
    stack.Push(0.5f);
    stack.Update(1.0f);
    EXPECT_THAT(reporter.Take(), ElementsAre("start 100")) << "from 0.5 by half of the whole";
    stack.Initialize("again");
    stack.Update(0.75f);
    stack.Push(0.5f);
    stack.Update(1.0f);
    EXPECT_THAT(reporter.Take(), ElementsAre("again 75", "again 100")) << "not beyond the end";
    EXPECT_EQ(stack.CurrentProgress(), 1.0f);
    stack.Push(0.5f);
    EXPECT_EQ(stack.CurrentProgress(), 0.0f) << "an empty range";
}

TEST_F(wip_ProgressTest, RefusesWhatIsNoFractionOrCount) {
    stack.Push(0.25f, "b");
    for (const float refused : {-0.001f, 1.5f, kNaN}) {
        EXPECT_FALSE(stack.Push(refused) || stack.Push(refused, "x") || stack.Update(refused) ||
                     stack.Update(refused, "x"));
    }
    EXPECT_FALSE(stack.Update(-1, 3) || stack.Update(1, -3) || stack.Pop(0));
    EXPECT_TRUE(stack.Pop(std::numeric_limits<int>::max()));
    EXPECT_FALSE(stack.Pop(1)) << "only the bottom level is left";
    EXPECT_THAT(reporter.Take(), ElementsAre("start 25"));
    stack.Clear();
    EXPECT_EQ(stack.Depth(), -1);
    EXPECT_FALSE(stack.Pop(1) || stack.Push(1.5f) || stack.Push(kNaN, "x") || stack.Update(1.5f));
}

TEST_F(wip_ProgressTest, RoundsInSinglePrecision) {
    const int cases[][3] = {{2899, 10000, 29},  {28995, 100000, 29}, {2898, 10000, 28},
                            {9999, 10000, 100}, {0, 3, 0},           {3, 3, 100},
                            {5, 3, 100},        {0, 0, 100},         {16777217, 16777218, 100}};
    for (const auto& [done, total, percent] : cases) {
        ASSERT_TRUE(stack.Update(done, total));
        EXPECT_THAT(reporter.Take(), ElementsAre("start " + std::to_string(percent))) << done;
    }
}

TEST_F(wip_ProgressTest, MessagesStayWithTheirLevel) {
    stack.Push(0.25f, "b");
    stack.Update(1.0f);
    stack.Update("c");
    stack.Update(0.0f, "d", KTSBasStringMode::Untranslated);
    stack.Push(0.5f);
    EXPECT_EQ(stack.CurrentMessage(), "d");
    stack.Pop(2);
    EXPECT_THAT(reporter.Take(), ElementsAre("b 25", "c 25", "d 0", "start 25"));
    stack.Push(0.5f, "e");
    stack.Finish();
    EXPECT_FALSE(stack.HasProgress());
    stack.Finish();
    EXPECT_THAT(reporter.Take(), ElementsAre("start 100"));
}

TEST_F(wip_Progress_Kept, RaisesWithoutAReporterOnceItHasChanged) {
    wip_WIP::Instance().SetWipReporter(nullptr);
    stack.Push(0.5f);
    EXPECT_THROW(stack.Update(0.25f), nex_PrimException);
    EXPECT_EQ(stack.CurrentProgress(), 0.25f);
    EXPECT_THROW(stack.Pop(1), nex_PrimException);
    EXPECT_EQ(stack.CurrentProgress(), 0.5f);
}

TEST_F(wip_Progress_Kept, EndsTheProcessWhenAskedForTheTopOfNothing) {
    stack.Clear();
    EXPECT_DEATH(stack.Update(0.5f), "");
    EXPECT_DEATH(stack.Push(0.5f), "");
}

TEST_F(wip_Progress_Kept, PartsAddUpWithTheirRounding) {
    for (int i = 0; i < 1000; ++i) {
        stack.Push(0.001f);
        stack.Pop(1);
    }
    EXPECT_LT(stack.CurrentProgress(), 1.0f);
    EXPECT_EQ(reporter.Take().back(), "start 100");
}

TEST_F(wip_Progress_Kept, AHundredPercentBeforeTheLastSteps) {
    stack.Update(99991, 100000);
    EXPECT_THAT(reporter.Take(), ElementsAre("start 100"));
}

TEST_F(wip_Progress_Kept, PushReportsNothing) {
    stack.Push(0.5f, "new");
    EXPECT_THAT(reporter.Take(), IsEmpty());
}

TEST_F(wip_Progress_Kept, SetProgressOnlyReports) {
    stack.SetProgress({0.0f, 1.0f, 0.5f, "other"});
    EXPECT_THAT(reporter.Take(), ElementsAre("other 50"));
    EXPECT_EQ(stack.CurrentProgress(), 0.0f);
    EXPECT_EQ(stack.CurrentMessage(), "start");
}

/// An operation that knows nothing of its caller.
void Callee(bool fails) {
    wip_ProgressObj progress("callee");
    progress.Push(0.5f);
    progress.Update(1.0f);
    progress.Pop(1);
    if (fails) throw 0;
}

TEST_F(wip_ProgressObjTest, ACalleeFillsWhatItsCallerPushed) {
    stack.Clear();
    {
        wip_ProgressObj progress("caller");
        progress.Push(0.3f);
        Callee(false);
        EXPECT_EQ(progress.Depth(), 1);
        EXPECT_TRUE(progress.Pop(5)) << "its own level alone";
        EXPECT_FALSE(progress.Pop(1)) << "the bottom level stays";
        progress.Update(2, 4);
    }
    EXPECT_THAT(reporter.Take(),
                ElementsAre("callee 15", "callee 15", "caller 30", "caller 30", "caller 50"));
    EXPECT_FALSE(stack.HasProgress());
}

TEST_F(wip_ProgressObjTest, AnExceptionTakesTheLevelsWithoutAReport) {
    for (const bool reporterThrows : {false, true}) {
        stack.Clear();
        reporter.throwsOnProgress = false;
        try {
            wip_ProgressObj progress("caller");
            progress.Update(0.1f);
            progress.Push(0.5f);
            stack.Push(0.5f);
            reporter.throwsOnProgress = reporterThrows;
            Callee(true);
        } catch (...) {
        }
        const std::vector<std::string> lines = reporter.Take();
        EXPECT_EQ(lines.size(), reporterThrows ? 2u : 3u) << "of the caller's and the callee's own";
        EXPECT_EQ(lines.back(), "callee 22");
        EXPECT_FALSE(stack.HasProgress());
    }
}

TEST_F(wip_ProgressObjTest, NeedsNoReporterAndNoStack) {
    wip_WIP::Instance().SetWipReporter(nullptr);
    stack.Clear();
    {
        wip_ProgressObj none;
        EXPECT_FALSE(none.Push(0.5f) || none.Update(0.5f) || none.Update("x") ||
                     none.Update(1, 2) || none.Pop(1));
        wip_ProgressObj progress("p");
        EXPECT_TRUE(progress.Update(0.5f));
        EXPECT_EQ(stack.CurrentProgress(), 0.5f);
        Callee(false);
        progress.Finish();
        EXPECT_FALSE(stack.HasProgress());
    }
    const wip_ProgressObj outlives("p");
    omi_SingletonBase<wip_WIP>::Finalize();
}

TEST_F(wip_ProgressObjTest, TakesItsOwnLevelsOnly) {
    stack.Clear();
    wip_ProgressObj outer("outer");
    outer.Push(0.5f, "half");
    {
        wip_ProgressObj inner;
        EXPECT_FALSE(inner.Pop(1)) << "it has put nothing there";
        inner.Initialize();
        inner.Push(0.5f);
        EXPECT_EQ(inner.Depth(), 2);
        outer.Pop(3);
        EXPECT_EQ(inner.Depth(), 0);
        EXPECT_FALSE(inner.Pop(1));
    }
    outer.Push(0.5f);
    outer.Restart();
    EXPECT_EQ(stack.Depth(), 0);
    EXPECT_EQ(stack.CurrentProgress(), 0.0f);
    {
        wip_ProgressObj inner("inner");
        inner.Update(0.5f);
        inner.Restart();
        EXPECT_EQ(inner.Depth(), 1);
        EXPECT_EQ(stack.CurrentProgress(), 0.0f);
        inner.Finish();
    }
    outer.Finish();
    wip_ProgressObj late;
    late.Initialize();
    late.Restart();
    EXPECT_FALSE(stack.HasProgress()) << "as constructed";
    EXPECT_THAT(reporter.Take(), ElementsAre("outer 50", "inner 50", "outer 100", "outer 100"));
}

}  // namespace
