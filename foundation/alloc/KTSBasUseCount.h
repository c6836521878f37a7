#pragma once

/// The reference count behind an initialise and finalise pair: a plain 32-bit counter, zero at
/// load, used on one thread at a time and not guarded against a finalise too many (it wraps).
class KTSBasUseCount {
  public:
    /// Adds one use; true when it is the first, which also raises the caller's `count` by one.
    bool Raise(int& count) noexcept {
        if (uses++ != 0) return false;
        ++count;
        return true;
    }

    /// Takes one use away; true when it was the last, which also lowers the caller's `count`.
    bool Lower(int& count) noexcept {
        if (uses-- != 1) return false;
        --count;
        return true;
    }

    [[nodiscard]] unsigned Uses() const noexcept { return uses; }

  private:
    unsigned uses = 0;
};
