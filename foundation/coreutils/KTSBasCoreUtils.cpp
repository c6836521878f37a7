#include "foundation/coreutils/KTSBasCoreUtils.h"

#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/coreutils/atr_String.h"
#include "foundation/coreutils/detail/typ_Clear.h"

namespace {
constinit KTSBasUseCount useCount;
}

void KTSBasCoreUtils_initialize(int& count) { useCount.Raise(count); }

void KTSBasCoreUtils_finalize(int& count) {
    if (!useCount.Lower(count)) return;
    atr_SetCatalogue(nullptr);
    typ_ClearArchCompTable();
}
