#pragma once

#include <signal.h>

/// Holds back the signals by which a user ends the program (Ctrl-C, hang-up, a request to end)
/// while it lives, so that files are written whole or not at all. One that came meanwhile ends the
/// program when the object goes. Signals that are ignored stay ignored.
class cli_HeldSignals {
  public:
    cli_HeldSignals();
    ~cli_HeldSignals();
    cli_HeldSignals(const cli_HeldSignals&) = delete;
    cli_HeldSignals& operator=(const cli_HeldSignals&) = delete;

    /// Throws when one has come: what is half written is undone on the way out.
    void Check() const;

  private:
    sigset_t held;
    sigset_t before;
};
