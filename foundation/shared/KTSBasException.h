#pragma once

#include <exception>
#include <source_location>
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

/// Throws `exception` by value with the source position of the caller.
template <class Exception>
[[noreturn]] void KTSBasThrow(Exception exception,
                              const std::source_location& where = std::source_location::current()) {
    exception.SetPosition(where.file_name(), static_cast<int>(where.line()));
    throw exception;
}
