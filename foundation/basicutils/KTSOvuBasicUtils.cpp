#include "foundation/basicutils/KTSOvuBasicUtils.h"

#include "foundation/alloc/KTSBasUseCount.h"

namespace {
constinit KTSBasUseCount useCount;
}

void KTSOvuBasicUtils_initialize(int& count) { useCount.Raise(count); }

void KTSOvuBasicUtils_finalize(int& count) { useCount.Lower(count); }
