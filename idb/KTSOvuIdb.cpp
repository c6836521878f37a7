#include "idb/KTSOvuIdb.h"

#include "foundation/alloc/KTSBasUseCount.h"

namespace {

constinit KTSBasUseCount useCount;

}  // namespace

void KTSOvuIdb_initialize(int& count) { useCount.Raise(count); }

void KTSOvuIdb_finalize(int& count) { useCount.Lower(count); }
