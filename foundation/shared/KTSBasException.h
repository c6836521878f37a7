#pragma once

#include <exception>
#include <utility>

#include "foundation/coreutils/atr_String.h"
#include "foundation/shared/KTSBasSharedExport.h"

/// The base of the application's exceptions: knows where it was thrown. Thrown by value through
/// `KTSBasThrow`, caught by reference.
class KTSBASSHARED_API KTSBasException : public std::exception {
  public:
    KTSBasException() noexcept = default;
    KTSBasException(const KTSBasException&) noexcept = default;
    KTSBasException& operator=(const KTSBasException&) noexcept = default;
    ~KTSBasException() override;

    /// The source file and line of the throw; "" and 0 before it.
    [[nodiscard]] const char* File() const noexcept { return file; }
    [[nodiscard]] int Line() const noexcept { return line; }
    void SetPosition(const char* sourceFile, int sourceLine) noexcept {
        file = sourceFile;
        line = sourceLine;
    }

    /// Rethrows the object as its own most-derived type.
    [[noreturn]] virtual void Propagate() const = 0;
    /// The untranslated message, valid as long as the exception.
    [[nodiscard]] const char* what() const noexcept override = 0;

  private:
    const char* file = "";
    int line = 0;
};

/// Throws `exception` by value with the source position of the caller, or the one given.
template <class Exception>
[[noreturn]] void KTSBasThrow(Exception exception, const char* file = __builtin_FILE(),
                              int line = __builtin_LINE()) {
    exception.SetPosition(file, line);
    throw exception;
}
