// The frame alone, over libraries and modules that only write down who was called.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "frame/KTSOvuGeom.h"
#include "frame/KTSOvuGeomStages_test.h"
#include "frame/detail/KTSOvuGeomLoader.h"

namespace {

constexpr char kUp[] = "BSCMWIVODGAU";
constexpr char kDown[] = "uagdoviwmcsb";

const std::string kTraceOfLoad = test_TakeTrace();

void Attach() { KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason::ProcessAttach); }
void Detach() { KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason::ProcessDetach); }

/// Takes the loader's use away for the test.
class KTSOvuGeomUnloaded : public testing::Test {
  protected:
    void SetUp() override {
        Detach();
        test_TakeTrace();
    }
    void TearDown() override { Attach(); }
};

TEST(KTSOvuGeomOrder, TheLoaderBringsEverythingUpAtLoadAndDownAtExit) {
    EXPECT_EQ(kTraceOfLoad, kUp);
    EXPECT_EXIT(
        {
            test_SendTrace([](char letter) { std::fputc(letter, stderr); });
            std::exit(0);
        },
        testing::ExitedWithCode(0), kDown);
}

TEST(KTSOvuGeomOrder, MatchedPairsOfClientsOnlyCountWhileTheLoaderHoldsItsUse) {
    test_TakeTrace();
    int count = 0;
    KTSOvuGeom_initialize(count);
    EXPECT_EQ(KTSOvuGeom_initializeC(), 3u);
    KTSOvuGeom_finalizeC();
    KTSOvuGeom_finalize(count);
    EXPECT_EQ(KTSOvuGeom_initializeC(), 2u);
    KTSOvuGeom_finalizeC();
    KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason::ThreadAttach);
    KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason::ThreadDetach);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(test_TakeTrace(), "");
}

TEST_F(KTSOvuGeomUnloaded, TheFirstUseCountsItselfEveryStageAndTheSpecificOne) {
    int first = 0;
    int second = 0;
    KTSOvuGeom_initialize(first);
    KTSOvuGeom_initialize(second);
    EXPECT_EQ(first, 14);
    EXPECT_EQ(second, 0);
    EXPECT_EQ(test_TakeTrace(), kUp);
    KTSOvuGeom_finalize(second);
    EXPECT_EQ(test_TakeTrace(), "");
    KTSOvuGeom_finalize(first);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(test_TakeTrace(), kDown);
}

using KTSOvuGeomC_Kept = KTSOvuGeomUnloaded;

TEST_F(KTSOvuGeomC_Kept, FirstStartReturnsTheSpecificCountWithTheUsesOfClients) {
    EXPECT_EQ(KTSOvuGeom_initializeC(), 1u);
    EXPECT_EQ(KTSOvuGeom_initializeC(), 2u);
    KTSOvuGeom_finalizeC();
    KTSOvuGeom_finalizeC();
    int specific = 0;
    KTSOvuGeom_specific_initialize(specific);
    EXPECT_EQ(specific, 1);
    EXPECT_EQ(KTSOvuGeom_initializeC(), 2u);
    KTSOvuGeom_specific_finalize(specific);
    EXPECT_EQ(specific, 1);
    KTSOvuGeom_finalizeC();
    EXPECT_EQ(test_TakeTrace(), std::string(kUp) + kDown + kUp + kDown);
}

TEST_F(KTSOvuGeomUnloaded, AStartThatThrowsIsUndoneAndCanBeRepeated) {
    const std::string up = kUp;
    const std::string down = kDown;
    for (std::size_t stage = 0; stage < up.size(); ++stage) {
        test_FailStage(up[stage]);
        int count = 0;
        EXPECT_THROW(KTSOvuGeom_initialize(count), std::runtime_error);
        EXPECT_EQ(count, 0);
        EXPECT_EQ(test_TakeTrace(), up.substr(0, stage) + down.substr(down.size() - stage));
        EXPECT_THROW((void)KTSOvuGeom_initializeC(), std::runtime_error);
        Attach();
        test_FailStage('\0');
        test_TakeTrace();
        KTSOvuGeom_initialize(count);
        EXPECT_EQ(count, 14);
        KTSOvuGeom_finalize(count);
        EXPECT_EQ(test_TakeTrace(), up + down);
    }
}

TEST(KTSOvuGeom_Kept, FinalisesTooManyTearDownAndThenKeepTheNextStartFromHappening) {
    test_TakeTrace();
    int count = 0;
    KTSOvuGeom_finalize(count);
    EXPECT_EQ(count, -14);
    EXPECT_EQ(test_TakeTrace(), kDown);
    Detach();
    EXPECT_EQ(test_TakeTrace(), "");
    KTSOvuGeom_initialize(count);
    EXPECT_EQ(count, -14);
    EXPECT_EQ(test_TakeTrace(), "");
    Attach();
    EXPECT_EQ(test_TakeTrace(), kUp);
}

}  // namespace
