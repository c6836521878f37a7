#include "frame/KTSOvuGeomStages_test.h"

#include <cstdio>
#include <stdexcept>

#include "ann/KTSOvuAnn.h"
#include "foundation/alloc/KTSBasAlloc.h"
#include "foundation/basicutils/KTSOvuBasicUtils.h"
#include "foundation/coreutils/KTSBasCoreUtils.h"
#include "foundation/shared/KTSBasShared.h"
#include "g3d/KTSOvuG3d.h"
#include "gsl/KTSOvuGsl.h"
#include "idb/KTSOvuIdb.h"
#include "mdl/KTSOvuMdl.h"
#include "omu/KTSOvuOmu.h"
#include "utf/KTSOvuUtf.h"
#include "wip/KTSOvuWip.h"

namespace {

// Plain storage, since the loader calls before the first and after the last static of this library
// lives.
constinit char trace[64] = {};
constinit int calls = 0;
constinit char failing = '\0';
constinit bool printing = false;

void Record(char letter) {
    trace[calls++] = letter;
    if (printing) std::fputc(letter, stderr);
}

void Up(char letter, int& count) {
    if (letter == failing) throw std::runtime_error("no memory");
    Record(letter);
    ++count;
}

void Down(char letter, int& count) {
    Record(letter);
    --count;
}

}  // namespace

std::string test_TakeTrace() {
    std::string taken(trace, static_cast<std::size_t>(calls));
    calls = 0;
    return taken;
}

void test_FailStage(char stage) { failing = stage; }

void test_PrintTrace() { printing = true; }

void KTSOvuBasicUtils_initialize(int& count) { Up('B', count); }
void KTSOvuBasicUtils_finalize(int& count) { Down('b', count); }
void KTSBasShared_initialize(int& count) { Up('S', count); }
void KTSBasShared_finalize(int& count) { Down('s', count); }
void KTSBasCoreUtils_initialize(int& count) { Up('C', count); }
void KTSBasCoreUtils_finalize(int& count) { Down('c', count); }
void KTSBasAlloc_initialize(int& count) { Up('M', count); }
void KTSBasAlloc_finalize(int& count) { Down('m', count); }
void KTSOvuWip_initialize(int& count) { Up('W', count); }
void KTSOvuWip_finalize(int& count) { Down('w', count); }
void KTSOvuIdb_initialize(int& count) { Up('I', count); }
void KTSOvuIdb_finalize(int& count) { Down('i', count); }
void KTSOvuG3d_initialize(int& count) { Up('V', count); }
void KTSOvuG3d_finalize(int& count) { Down('v', count); }
void KTSOvuOmu_initialize(int& count) { Up('O', count); }
void KTSOvuOmu_finalize(int& count) { Down('o', count); }
void KTSOvuMdl_initialize(int& count) { Up('D', count); }
void KTSOvuMdl_finalize(int& count) { Down('d', count); }
void KTSOvuGsl_initialize(int& count) { Up('G', count); }
void KTSOvuGsl_finalize(int& count) { Down('g', count); }
void KTSOvuAnn_initialize(int& count) { Up('A', count); }
void KTSOvuAnn_finalize(int& count) { Down('a', count); }
void KTSOvuUtf_initialize(int& count) { Up('U', count); }
void KTSOvuUtf_finalize(int& count) { Down('u', count); }
