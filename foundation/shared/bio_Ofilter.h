#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <unordered_map>

#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/bio_Buffer.h"
#include "foundation/shared/bio_FilterState.h"
#include "foundation/shared/cls_Uid.h"

/// The output side of an archive stream: typed writes into memory that grows, and the table from
/// object identity to reference number.
///
/// Integers are little-endian with fixed width, a boolean is one byte, floating-point numbers are
/// IEEE 754, a string is its 32-bit length and its bytes: the same bytes on every platform. Writers
/// that finish in a destructor cannot throw; what fails there is kept here (`Fail`), later writes
/// do nothing, and `RethrowFailure` raises it again, so that nothing half written is taken for a
/// whole stream. One thread at a time.
class KTSBASSHARED_API bio_Ofilter {
  public:
    /// An empty stream with room for `capacity` bytes.
    explicit bio_Ofilter(std::size_t capacity = 0);
    ~bio_Ofilter();
    bio_Ofilter(bio_Ofilter&&) noexcept;
    bio_Ofilter& operator=(bio_Ofilter&&) noexcept;

    void Write(bool value) { WriteNumber(value); }
    void Write(int value) { WriteNumber(value); }
    void Write(unsigned value) { WriteNumber(value); }
    void Write(float value) { WriteNumber(value); }
    void Write(double value) { WriteNumber(value); }
    void Write(const cow_String& value);
    template <class T>
    void Write(T) = delete;
    void WriteBytes(const void* bytes, std::size_t count) {
        if (!Failed()) sink.WriteBytes(bytes, count);
    }

    /// The bytes written so far, valid until the next write.
    [[nodiscard]] const std::byte* Data() const noexcept { return sink.Data(); }
    [[nodiscard]] std::size_t Size() const noexcept { return sink.Size(); }
    /// The memory written to.
    [[nodiscard]] bio_Buffer& Sink() noexcept { return sink; }
    /// Forgets the bytes, the identities and a failure; keeps the memory.
    void Clear() noexcept;

    /// The number of the identity in this stream: 0 for an unallocated one, else 1, 2, ... in the
    /// order in which identities are first asked for.
    [[nodiscard]] int ReferenceNumber(const cls_Uid& uid);

    /// Keeps the first failure of a writer that could not throw.
    void Fail(std::exception_ptr cause) noexcept;
    [[nodiscard]] bool Failed() const noexcept { return failure != nullptr; }
    /// Throws the kept failure; nothing without one. The stream stays failed.
    void RethrowFailure() const;

    /// What the writers keep with the stream; null at first.
    [[nodiscard]] std::unique_ptr<bio_FilterState>& State() noexcept { return state; }

  private:
    template <class T>
    void WriteNumber(T value) {
        if (!Failed()) sink.Write(value);
    }

    bio_Buffer sink;
    std::unordered_map<cls_Uid, int> numbers;
    std::exception_ptr failure;
    std::unique_ptr<bio_FilterState> state;
};
