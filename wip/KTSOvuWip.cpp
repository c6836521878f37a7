#include "wip/KTSOvuWip.h"

#include "foundation/alloc/KTSBasUseCount.h"
#include "wip/wip_WIP.h"

namespace {

constinit KTSBasUseCount useCount;

}  // namespace

void KTSOvuWip_initialize(int& count) { useCount.Raise(count); }

void KTSOvuWip_finalize(int& count) {
    if (useCount.Lower(count)) omi_SingletonBase<wip_WIP>::Finalize();
}
