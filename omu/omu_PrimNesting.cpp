#include "omu/omu_PrimNesting.h"

#include "foundation/shared/nex_CmdException.h"

void omu_PrimNesting::RaiseExceeded() const {
    KTSBasThrow(nex_CmdException<atr_String, 1>(
        depth > kMaxDepth ? atr("values nested more than %d deep", kMaxDepth)
                          : atr("values with more than %d elements in all", kMaxNodes)));
}
