#include "foundation/shared/cls_Uid.h"

constinit std::atomic<std::uint64_t> cls_Uid::lastAllocated = 0;
