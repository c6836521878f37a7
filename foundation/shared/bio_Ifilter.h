#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/bio_Buffer.h"
#include "foundation/shared/bio_FilterState.h"
#include "foundation/shared/bio_ReadObjectTable.h"

/// Object records that may be nested in one another. What the library builds nests 256 deep at
/// most; the rest is room for what holds the deepest of it and for its leaves.
inline constexpr int bio_MaxDepth = 256 + 8;

/// The input side of an archive stream: typed reads from bounded memory, which the filter neither
/// owns nor changes and which outlives it, and the table of the objects read.
///
/// The bytes are not trusted. A read past the end gives zeros and a length or count that the rest
/// cannot hold gives 0; the first of either prints one line on standard error and marks the filter
/// failed, and from then on nothing is left and every read gives zeros without another line. So no
/// stream makes a reader allocate more than a fixed multiple of its size. One thread at a time.
class KTSBASSHARED_API bio_Ifilter {
  public:
    /// Reads the `size` bytes at `bytes`.
    bio_Ifilter(const void* bytes, std::size_t size);
    ~bio_Ifilter();
    bio_Ifilter(const bio_Ifilter&) = delete;
    bio_Ifilter& operator=(const bio_Ifilter&) = delete;

    [[nodiscard]] bool ReadBool() { return *ReadFixed<1>() != std::byte{0}; }
    [[nodiscard]] int ReadInt() { return static_cast<int>(ReadUnsigned()); }
    [[nodiscard]] unsigned ReadUnsigned() { return bio_Buffer::Get32(ReadFixed<4>()); }
    [[nodiscard]] float ReadFloat() { return std::bit_cast<float>(ReadUnsigned()); }
    [[nodiscard]] double ReadDouble() {
        return std::bit_cast<double>(bio_Buffer::Get64(ReadFixed<8>()));
    }
    /// A string: its length and, when that is positive, its bytes. The view lies in the stream's
    /// memory.
    [[nodiscard]] std::string_view ReadStringView();
    [[nodiscard]] cow_String ReadString() { return cow_String(ReadStringView()); }
    /// Fills `out` with the next `count` bytes, or with zeros when fewer are left.
    void ReadBytes(void* out, std::size_t count);
    /// The next `count` bytes where they stand, consumed; null (and a failed filter) when fewer are
    /// left.
    [[nodiscard]] inline const std::byte* Take(std::size_t count);
    /// The number of elements to follow, each of `smallestElement` bytes or more, after
    /// `bytesBetween` others: 0 for a negative number and for one that the rest of the stream
    /// cannot hold.
    [[nodiscard]] int ReadCount(std::size_t smallestElement, std::size_t bytesBetween = 0);

    /// The byte at `offset` from the next one, the four bytes there as a number; 0 when the stream
    /// ends before. Nothing is consumed.
    [[nodiscard]] bool PeekBool(std::size_t offset) const noexcept;
    [[nodiscard]] unsigned PeekUnsigned(std::size_t offset) const noexcept;

    /// Bytes left to read, 0 for a failed filter.
    [[nodiscard]] std::size_t Remaining() const noexcept {
        return static_cast<std::size_t>(end - next);
    }
    /// True when the stream ended too soon or named more than it holds.
    [[nodiscard]] bool Failed() const noexcept { return failed; }
    /// Marks the filter failed: the stream cannot be read on.
    void Fail() noexcept;
    /// `Fail`, after printing `line` on standard error unless the filter failed before.
    void FailWith(const char* line);
    /// True when a reader came upon something that no writer writes, but went on.
    [[nodiscard]] bool Faulty() const noexcept { return faulty; }
    void MarkFaulty() noexcept { faulty = true; }

    [[nodiscard]] bio_ReadObjectTable& Objects() noexcept { return objects; }
    /// Counts the object records that are being read, one inside the other. `EnterRecord` answers
    /// false, and prints a line and fails the filter, beyond `bio_MaxDepth`; a record entered is
    /// left again.
    [[nodiscard]] bool EnterRecord();
    void LeaveRecord() noexcept { --depth; }

    /// What the readers keep with the stream; null at first.
    [[nodiscard]] std::unique_ptr<bio_FilterState>& State() noexcept { return state; }

  private:
    template <std::size_t count>
    [[nodiscard]] const std::byte* ReadFixed() {
        static constexpr std::byte zeros[count] = {};
        const std::byte* const taken = Take(count);
        return taken ? taken : zeros;
    }
    void FailFor(const char* what, std::int64_t wanted);

    const std::byte* next;
    const std::byte* end;
    bool failed = false;
    bool faulty = false;
    int depth = 0;
    bio_ReadObjectTable objects;
    std::unique_ptr<bio_FilterState> state;
};

inline const std::byte* bio_Ifilter::Take(std::size_t count) {
    if (Remaining() < count) [[unlikely]] {
        FailFor("bytes", static_cast<std::int64_t>(count));
        return nullptr;
    }
    const std::byte* const taken = next;
    next += count;
    return taken;
}
