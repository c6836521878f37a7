#include "wip/KTSOvuWip.h"

#include "foundation/alloc/KTSBasUseCount.h"

namespace {

constinit KTSBasUseCount useCount;

}  // namespace

void KTSOvuWip_initialize(int& count) { useCount.Raise(count); }

void KTSOvuWip_finalize(int& count) { useCount.Lower(count); }
