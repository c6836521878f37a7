// The frame alone, over libraries and modules that only write down who was called: the real ones
// are replaced at link time.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "ann/KTSOvuAnn.h"
#include "foundation/alloc/KTSBasAlloc.h"
#include "foundation/basicutils/KTSOvuBasicUtils.h"
#include "foundation/coreutils/KTSBasCoreUtils.h"
#include "foundation/shared/KTSBasShared.h"
#include "frame/KTSOvuGeom.h"
#include "frame/detail/KTSOvuGeomLoader.h"
#include "g3d/KTSOvuG3d.h"
#include "gsl/KTSOvuGsl.h"
#include "idb/KTSOvuIdb.h"
#include "mdl/KTSOvuMdl.h"
#include "omu/KTSOvuOmu.h"
#include "utf/KTSOvuUtf.h"
#include "wip/KTSOvuWip.h"

namespace {

// One letter a call: a capital for initialise, a small one for finalise. Plain storage, since the
// loader calls before the first and after the last static of this program lives.
constexpr char kUp[] = "BSCMWIVODGAU";
constexpr char kDown[] = "uagdoviwmcsb";
constinit char trace[64] = {};
constinit int calls = 0;
constinit char failing = '\0';
constinit bool printing = false;

void Record(char letter) {
    trace[calls++] = letter;
    if (printing) std::fputc(letter, stderr);
}

void Up(char letter, int& count) {
    if (letter == failing) throw std::runtime_error("no memory");
    Record(letter);
    ++count;
}

void Down(char letter, int& count) {
    Record(letter);
    --count;
}

std::string TakeTrace() {
    std::string taken(trace, static_cast<std::size_t>(calls));
    calls = 0;
    return taken;
}

const std::string kTraceOfLoad = TakeTrace();

}  // namespace

void KTSOvuBasicUtils_initialize(int& count) { Up('B', count); }
void KTSOvuBasicUtils_finalize(int& count) { Down('b', count); }
void KTSBasShared_initialize(int& count) { Up('S', count); }
void KTSBasShared_finalize(int& count) { Down('s', count); }
void KTSBasCoreUtils_initialize(int& count) { Up('C', count); }
void KTSBasCoreUtils_finalize(int& count) { Down('c', count); }
void KTSBasAlloc_initialize(int& count) { Up('M', count); }
void KTSBasAlloc_finalize(int& count) { Down('m', count); }
void KTSOvuWip_initialize(int& count) { Up('W', count); }
void KTSOvuWip_finalize(int& count) { Down('w', count); }
void KTSOvuIdb_initialize(int& count) { Up('I', count); }
void KTSOvuIdb_finalize(int& count) { Down('i', count); }
void KTSOvuG3d_initialize(int& count) { Up('V', count); }
void KTSOvuG3d_finalize(int& count) { Down('v', count); }
void KTSOvuOmu_initialize(int& count) { Up('O', count); }
void KTSOvuOmu_finalize(int& count) { Down('o', count); }
void KTSOvuMdl_initialize(int& count) { Up('D', count); }
void KTSOvuMdl_finalize(int& count) { Down('d', count); }
void KTSOvuGsl_initialize(int& count) { Up('G', count); }
void KTSOvuGsl_finalize(int& count) { Down('g', count); }
void KTSOvuAnn_initialize(int& count) { Up('A', count); }
void KTSOvuAnn_finalize(int& count) { Down('a', count); }
void KTSOvuUtf_initialize(int& count) { Up('U', count); }
void KTSOvuUtf_finalize(int& count) { Down('u', count); }

namespace {

void Attach() { KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason::ProcessAttach); }
void Detach() { KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason::ProcessDetach); }

/// Starts and ends in the state right after the load; `Unloaded` starts without the loader's use.
class KTSOvuGeomOrder : public testing::Test {
  protected:
    void SetUp() override { TakeTrace(); }
    void TearDown() override { failing = '\0'; }
};

class KTSOvuGeomUnloaded : public KTSOvuGeomOrder {
  protected:
    void SetUp() override {
        Detach();
        TakeTrace();
    }
    void TearDown() override {
        failing = '\0';
        Attach();
    }
};

TEST_F(KTSOvuGeomOrder, TheLoaderBringsEverythingUpAtLoadAndDownAtExit) {
    EXPECT_EQ(kTraceOfLoad, kUp);
    EXPECT_EXIT(
        {
            printing = true;
            std::exit(0);
        },
        testing::ExitedWithCode(0), kDown);
}

TEST_F(KTSOvuGeomOrder, MatchedPairsOfClientsOnlyCountWhileTheLoaderHoldsItsUse) {
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
    EXPECT_EQ(TakeTrace(), "");
}

TEST_F(KTSOvuGeomUnloaded, TheFirstUseCountsItselfEveryStageAndTheSpecificOne) {
    int first = 0;
    int second = 0;
    KTSOvuGeom_initialize(first);
    KTSOvuGeom_initialize(second);
    EXPECT_EQ(first, 14);
    EXPECT_EQ(second, 0);
    EXPECT_EQ(TakeTrace(), kUp);
    KTSOvuGeom_finalize(second);
    EXPECT_EQ(TakeTrace(), "");
    KTSOvuGeom_finalize(first);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(TakeTrace(), kDown);
}

TEST_F(KTSOvuGeomUnloaded, ThePlainEntryAnswersTheSpecificCountOfAFirstStart) {
    EXPECT_EQ(KTSOvuGeom_initializeC(), 1u);
    EXPECT_EQ(KTSOvuGeom_initializeC(), 2u);
    KTSOvuGeom_finalizeC();
    KTSOvuGeom_finalizeC();
    EXPECT_EQ(TakeTrace(), std::string(kUp) + kDown);
}

using KTSOvuGeomC_Kept = KTSOvuGeomUnloaded;

TEST_F(KTSOvuGeomC_Kept, FirstStartReturnsTheSpecificCountWithTheUsesOfClients) {
    int specific = 0;
    KTSOvuGeom_specific_initialize(specific);
    EXPECT_EQ(specific, 1);
    EXPECT_EQ(KTSOvuGeom_initializeC(), 2u);
    KTSOvuGeom_specific_finalize(specific);
    EXPECT_EQ(specific, 1);
    KTSOvuGeom_finalizeC();
    EXPECT_EQ(TakeTrace(), std::string(kUp) + kDown);
}

TEST_F(KTSOvuGeomUnloaded, AStartThatThrowsIsUndoneAndCanBeRepeated) {
    const std::string up = kUp;
    const std::string down = kDown;
    for (std::size_t stage = 0; stage < up.size(); ++stage) {
        failing = up[stage];
        int count = 0;
        EXPECT_THROW(KTSOvuGeom_initialize(count), std::runtime_error);
        EXPECT_EQ(count, 0);
        EXPECT_EQ(TakeTrace(), up.substr(0, stage) + down.substr(down.size() - stage));
        EXPECT_THROW((void)KTSOvuGeom_initializeC(), std::runtime_error);
        Attach();
        failing = '\0';
        TakeTrace();
        KTSOvuGeom_initialize(count);
        EXPECT_EQ(count, 14);
        KTSOvuGeom_finalize(count);
        EXPECT_EQ(TakeTrace(), up + down);
    }
}

TEST(KTSOvuGeom_Kept, FinalisesTooManyTearDownAndThenKeepTheNextStartFromHappening) {
    TakeTrace();
    int count = 0;
    KTSOvuGeom_finalize(count);
    EXPECT_EQ(count, -14);
    EXPECT_EQ(TakeTrace(), kDown);
    Detach();
    EXPECT_EQ(TakeTrace(), "");
    KTSOvuGeom_initialize(count);
    EXPECT_EQ(count, -14);
    EXPECT_EQ(TakeTrace(), "");
    Attach();
    EXPECT_EQ(TakeTrace(), kUp);
}

}  // namespace
