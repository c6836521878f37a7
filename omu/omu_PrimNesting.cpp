#include "omu/omu_PrimNesting.h"

#include "omu/omu_CmdExceptions.h"

void omu_PrimNesting::RaiseExceeded() const {
    KTSBasThrow(omu_ValueErrorException(
        depth > kMaxDepth ? atr("values nested more than %d deep", kMaxDepth)
                          : atr("values with more than %d elements in all", kMaxNodes)));
}
