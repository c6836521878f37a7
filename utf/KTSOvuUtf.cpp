#include "utf/KTSOvuUtf.h"

#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/basicutils/KTSBasOmniSSELevel.h"

namespace {

constinit KTSBasUseCount useCount;

}  // namespace

void KTSOvuUtf_initialize(int& count) {
    if (useCount.Raise(count)) KTSBasOmniSetSSELevel();
}

void KTSOvuUtf_finalize(int& count) { useCount.Lower(count); }
