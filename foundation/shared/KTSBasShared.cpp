#include "foundation/shared/KTSBasShared.h"

#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/detail/cls_DescribeFoundation.h"

namespace {
constinit KTSBasUseCount useCount;
}

void KTSBasShared_initialize(int& count) {
    if (!useCount.Raise(count)) return;
    try {
        cls_InsertFoundationComponents();
    } catch (...) {
        KTSBasShared_finalize(count);
        throw;
    }
}

void KTSBasShared_finalize(int& count) {
    if (!useCount.Lower(count)) return;
    cls_WithdrawFoundationComponents();
    omi_Singleton<cls_MetadataRegistrar>::Finalize();
}
