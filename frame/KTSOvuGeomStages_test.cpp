#include "frame/KTSOvuGeomStages_test.h"

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
using Receiver = void (*)(char);
constinit Receiver receive = nullptr;

void Record(char letter) {
    trace[calls++] = letter;
    if (receive) receive(letter);
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

void test_SendTrace(void (*receiver)(char)) {
    receive = receiver;
    for (int i = 0; receive && i < calls; ++i) receive(trace[i]);
}

/// The counted pair of one stage.
#define STAND_IN(stage, up, down)                          \
    void stage##_initialize(int& count) { Up(up, count); } \
    void stage##_finalize(int& count) { Down(down, count); }

STAND_IN(KTSOvuBasicUtils, 'B', 'b')
STAND_IN(KTSBasShared, 'S', 's')
STAND_IN(KTSBasCoreUtils, 'C', 'c')
STAND_IN(KTSBasAlloc, 'M', 'm')
STAND_IN(KTSOvuWip, 'W', 'w')
STAND_IN(KTSOvuIdb, 'I', 'i')
STAND_IN(KTSOvuG3d, 'V', 'v')
STAND_IN(KTSOvuOmu, 'O', 'o')
STAND_IN(KTSOvuMdl, 'D', 'd')
STAND_IN(KTSOvuGsl, 'G', 'g')
STAND_IN(KTSOvuAnn, 'A', 'a')
STAND_IN(KTSOvuUtf, 'U', 'u')
