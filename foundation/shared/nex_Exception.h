#pragma once

#include "foundation/shared/KTSBasException.h"

/// An exception with a message for the user.
class KTSBASSHARED_API nex_Exception : public KTSBasException {
  public:
    /// The message in the asked mode.
    [[nodiscard]] virtual cow_String JournalMessage(KTSBasStringMode mode) const = 0;
    [[nodiscard]] const char* what() const noexcept override;

  private:
    mutable cow_String whatText;
};

/// An exception that a scripting command raises toward the interpreter.
class KTSBASSHARED_API nex_CommandException : public nex_Exception {
  public:
    /// The name of the Python exception that it becomes.
    [[nodiscard]] virtual const char* PythonType() const = 0;
};

/// A violated assertion or an invalid model, told by a message that is translated when shown.
class KTSBASSHARED_API nex_PrimException : public nex_Exception {
  public:
    explicit nex_PrimException(const atr_String& text) : message(text) {}

    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;
    [[noreturn]] void Propagate() const override;

  private:
    atr_String message;
};
