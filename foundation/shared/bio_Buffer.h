#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "foundation/shared/KTSBasSharedExport.h"

/// A growing run of bytes in storage of the foundation allocator, with the encoding of archives:
/// little-endian integers of fixed width, one byte for a boolean, IEEE 754 numbers.
///
/// Growing is geometric. Exhaustion throws `std::bad_alloc` and leaves the content as it was. Moves
/// leave the source empty; there are no copies.
class KTSBASSHARED_API bio_Buffer {
  public:
    bio_Buffer() noexcept = default;
    bio_Buffer(bio_Buffer&& other) noexcept;
    bio_Buffer& operator=(bio_Buffer&& other) noexcept;
    ~bio_Buffer();

    [[nodiscard]] const std::byte* Data() const noexcept { return data; }
    [[nodiscard]] std::size_t Size() const noexcept { return size; }
    [[nodiscard]] std::size_t Capacity() const noexcept { return capacity; }

    /// Makes room for `more` bytes behind the content.
    void Reserve(std::size_t more) {
        if (capacity - size < more) Grow(more);
    }
    /// Appends `count` bytes of indeterminate value and returns the first.
    std::byte* Extend(std::size_t count) {
        Reserve(count);
        std::byte* const added = data + size;
        size += count;
        return added;
    }
    /// Cuts the content to its first `newSize` bytes. REQUIRES: `newSize` <= `Size()`.
    void Truncate(std::size_t newSize) noexcept { size = newSize; }

    void WriteBytes(const void* bytes, std::size_t count) {
        if (count > 0) std::memcpy(Extend(count), bytes, count);
    }
    void Write(bool value) { *Extend(1) = value ? std::byte{1} : std::byte{0}; }
    void Write(std::uint32_t value) { Put(Extend(sizeof value), value); }
    void Write(int value) { Write(static_cast<std::uint32_t>(value)); }
    void Write(float value) { Write(std::bit_cast<std::uint32_t>(value)); }
    void Write(double value) { Put(Extend(sizeof value), std::bit_cast<std::uint64_t>(value)); }
    template <class T>
    void Write(T) = delete;

    /// Puts the bytes of `value` at `place`, lowest first.
    static void Put(std::byte* place, std::uint32_t value) noexcept { PutBytes(place, value); }
    static void Put(std::byte* place, std::uint64_t value) noexcept { PutBytes(place, value); }
    /// The integer whose bytes stand at `place`, lowest first.
    [[nodiscard]] static std::uint32_t Get32(const std::byte* place) noexcept {
        return GetBytes<std::uint32_t>(place);
    }
    [[nodiscard]] static std::uint64_t Get64(const std::byte* place) noexcept {
        return GetBytes<std::uint64_t>(place);
    }

  private:
    void Grow(std::size_t more);

    template <class Word>
    static void PutBytes(std::byte* place, Word value) noexcept {
        if constexpr (std::endian::native == std::endian::little) {
            std::memcpy(place, &value, sizeof value);
        } else {
            for (std::size_t i = 0; i < sizeof value; ++i) {
                place[i] = static_cast<std::byte>(value >> (8 * i) & 0xFF);
            }
        }
    }
    template <class Word>
    static Word GetBytes(const std::byte* place) noexcept {
        Word value = 0;
        if constexpr (std::endian::native == std::endian::little) {
            std::memcpy(&value, place, sizeof value);
        } else {
            for (std::size_t i = sizeof value; i-- > 0;) {
                value = value << 8 | std::to_integer<Word>(place[i]);
            }
        }
        return value;
    }

    std::byte* data = nullptr;
    std::size_t size = 0;
    std::size_t capacity = 0;
};
