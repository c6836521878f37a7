#include "omu/omu_PrimArrayData.h"

#include <atomic>

#include "foundation/alloc/mem_Alloc.h"
#include "omu/detail/omu_TracePrimArray.h"

namespace {

constinit std::atomic<int> lastSerialNumber{0};

}  // namespace

omu_PrimArrayData::omu_PrimArrayData(int sizeBytes)
    : omu_PrimArrayData(sizeBytes > 0
                            ? static_cast<char*>(mem_Malloc(static_cast<std::size_t>(sizeBytes)))
                            : nullptr,
                        sizeBytes) {}

omu_PrimArrayData::omu_PrimArrayData(char* block, int sizeBytes) noexcept
    : bytes(block),
      size(sizeBytes),
      serialNumber(lastSerialNumber.fetch_add(1, std::memory_order_relaxed) + 1) {
    if (bytes) {
        omu_TracePrimArray("omu_PrimArrayData() ##%03d  sz:%d\n", serialNumber, size);
    } else {
        omu_TracePrimArray("omu_PrimArrayData() ##%03d  NULL\n", serialNumber);
    }
}

omu_PrimArrayData::~omu_PrimArrayData() {
    if (bytes && size > 0) {
        omu_TracePrimArray("omu_PrimArrayData() deleting ##%03d  sz:%d\n", serialNumber, size);
    } else if (!bytes && size == 0) {
        omu_TracePrimArray("omu_PrimArrayData() deleting ##%03d  NULL\n", serialNumber);
    } else {
        omu_TracePrimArray("omu_PrimArrayData() deleting ##%03d NOT sz or NULL!\n", serialNumber);
    }
    mem_Free(bytes);
}
