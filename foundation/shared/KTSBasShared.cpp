#include "foundation/shared/KTSBasShared.h"

#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/shared/cls_ClassRegistrar.h"

namespace {
constinit KTSBasUseCount useCount;
}

void KTSBasShared_initialize(int& count) { useCount.Raise(count); }

void KTSBasShared_finalize(int& count) {
    if (useCount.Lower(count)) omi_Singleton<cls_MetadataRegistrar>::Finalize();
}
