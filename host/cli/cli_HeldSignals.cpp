#include "host/cli/cli_HeldSignals.h"

#include <stdexcept>

namespace {

constexpr int kEnding[] = {SIGINT, SIGTERM, SIGHUP};

bool EndsTheProgram(int signalNumber) {
    struct sigaction action {};
    return sigaction(signalNumber, nullptr, &action) == 0 && action.sa_handler == SIG_DFL;
}

}  // namespace

cli_HeldSignals::cli_HeldSignals() {
    sigemptyset(&held);
    for (const int signalNumber : kEnding) {
        // A blocked signal is kept even if it is ignored otherwise.
        if (EndsTheProgram(signalNumber)) sigaddset(&held, signalNumber);
    }
    pthread_sigmask(SIG_BLOCK, &held, &before);
}

cli_HeldSignals::~cli_HeldSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

void cli_HeldSignals::Check() const {
    sigset_t pending;
    sigpending(&pending);
    for (const int signalNumber : kEnding) {
        if (sigismember(&held, signalNumber) == 1 && sigismember(&pending, signalNumber) == 1) {
            throw std::runtime_error("interrupted");
        }
    }
}
