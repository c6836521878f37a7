#include "frame/KTSOvuGeom.h"

#include <cstddef>
#include <iterator>

#include "ann/KTSOvuAnn.h"
#include "foundation/alloc/KTSBasAlloc.h"
#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/basicutils/KTSOvuBasicUtils.h"
#include "foundation/coreutils/KTSBasCoreUtils.h"
#include "foundation/shared/KTSBasShared.h"
#include "frame/detail/KTSOvuGeomLoader.h"
#include "g3d/KTSOvuG3d.h"
#include "gsl/KTSOvuGsl.h"
#include "idb/KTSOvuIdb.h"
#include "mdl/KTSOvuMdl.h"
#include "omu/KTSOvuOmu.h"
#include "utf/KTSOvuUtf.h"
#include "wip/KTSOvuWip.h"

namespace {

/// The counted pair of one library or module.
struct Stage {
    void (*initialize)(int&);
    void (*finalize)(int&);
};

/// Walked forward at start-up and backward at shut-down.
constexpr Stage kStages[] = {
    {KTSOvuBasicUtils_initialize, KTSOvuBasicUtils_finalize},
    {KTSBasShared_initialize, KTSBasShared_finalize},
    {KTSBasCoreUtils_initialize, KTSBasCoreUtils_finalize},
    {KTSBasAlloc_initialize, KTSBasAlloc_finalize},
    {KTSOvuWip_initialize, KTSOvuWip_finalize},
    {KTSOvuIdb_initialize, KTSOvuIdb_finalize},
    {KTSOvuG3d_initialize, KTSOvuG3d_finalize},
    {KTSOvuOmu_initialize, KTSOvuOmu_finalize},
    {KTSOvuMdl_initialize, KTSOvuMdl_finalize},
    {KTSOvuGsl_initialize, KTSOvuGsl_finalize},
    {KTSOvuAnn_initialize, KTSOvuAnn_finalize},
    {KTSOvuUtf_initialize, KTSOvuUtf_finalize},
};

// Detach runs after the library's statics are dead on some ways out of a process, so every count is
// initialised by a constant and has nothing to destroy.
constinit KTSBasUseCount libraryUses;
constinit KTSBasUseCount specificUses;
constinit int loaderUserCount = 0;
constinit int plainUserCount = 0;

/// Finalises the first `stages` stages in reverse order.
void BringDown(std::size_t stages, int& userCount) {
    while (stages > 0) kStages[--stages].finalize(userCount);
}

/// Initialises every stage; one that throws has undone itself, those before it are undone here.
void BringUp(int& userCount) {
    std::size_t stages = 0;
    try {
        for (; stages < std::size(kStages); ++stages) kStages[stages].initialize(userCount);
    } catch (...) {
        BringDown(stages, userCount);
        throw;
    }
}

/// Adds a use of the library; true when it was the first, which brought everything up.
bool AddUse(int& userCount) {
    if (!libraryUses.Raise(userCount)) return false;
    try {
        BringUp(userCount);
    } catch (...) {
        libraryUses.Lower(userCount);
        throw;
    }
    specificUses.Raise(userCount);
    return true;
}

}  // namespace

void KTSOvuGeom_initialize(int& userCount) { AddUse(userCount); }

void KTSOvuGeom_finalize(int& userCount) {
    if (!libraryUses.Lower(userCount)) return;
    specificUses.Lower(userCount);
    BringDown(std::size(kStages), userCount);
}

void KTSOvuGeom_specific_initialize(int& userCount) { specificUses.Raise(userCount); }

void KTSOvuGeom_specific_finalize(int& userCount) { specificUses.Lower(userCount); }

unsigned KTSOvuGeom_initializeC() {
    return AddUse(plainUserCount) ? specificUses.Uses() : libraryUses.Uses();
}

void KTSOvuGeom_finalizeC() { KTSOvuGeom_finalize(plainUserCount); }

void KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason reason) noexcept {
    try {
        if (reason == KTSOvuGeomLoaderReason::ProcessAttach) {
            KTSOvuGeom_initialize(loaderUserCount);
        } else if (reason == KTSOvuGeomLoaderReason::ProcessDetach) {
            KTSOvuGeom_finalize(loaderUserCount);
        }
    } catch (...) {
        // The start-up undid itself; the loader is told of no failure.
        return;
    }
}
