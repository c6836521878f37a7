#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "foundation/coreutils/cow_String.h"

/// The bits that lead a key down the trie of a `cow_Map`, one a level, and the comparison with the
/// keys met on the way. Defined for integers of at most 32 bits and enumerations of them, and for
/// `cow_String`.
template <class K>
class cow_KeyPath {
    static_assert((std::is_integral_v<K> || std::is_enum_v<K>)&&sizeof(K) <= 4,
                  "keys of a cow_Map are integers of at most 32 bits or cow_String");

  public:
    explicit cow_KeyPath(K sought) noexcept
        : key(sought), bits(static_cast<std::uint32_t>(sought)) {}

    [[nodiscard]] bool Matches(const K& other) const noexcept { return other == key; }
    /// The bit of the current level: bit d of the key's 32 bits at depth d, 0 below depth 31. Goes
    /// on to the next level.
    [[nodiscard]] int NextBit() noexcept {
        const int bit = static_cast<int>(bits & 1);
        bits >>= 1;
        return bit;
    }

  private:
    K key;
    std::uint32_t bits;
};

/// String keys count up to their first zero byte, for the path as well as for equality.
///
/// Kept: strings that differ only behind an embedded zero are one key, where one would have
/// expected two; the stored names and their readers rely on zero-terminated comparison.
template <>
class cow_KeyPath<cow_String> {
  public:
    explicit cow_KeyPath(const cow_String& key) noexcept
        : characters(key.Characters()), length(static_cast<int>(std::strlen(characters))) {}

    [[nodiscard]] bool Matches(const cow_String& other) const noexcept {
        const char* const others = other.Characters();
        return others == characters || std::strcmp(others, characters) == 0;
    }
    [[nodiscard]] int NextBit() noexcept { return BitAt(depth++); }

    /// The bit at depth d for a key of L characters: 0 below depth L; at even depths the lowest bit
    /// of character d / 2, at odd depths that of character L - d / 2 - 1 (rounded down), so that
    /// the characters of both ends alternate.
    [[nodiscard]] int BitAt(int d) const noexcept {
        if (d > length) return 0;
        const int index = (d & 1) == 0 ? d / 2 : length - (d >> 1) - 1;
        return static_cast<unsigned char>(characters[index]) & 1;
    }
    /// Number of characters: every bit at a greater depth is 0.
    [[nodiscard]] int Length() const noexcept { return length; }
    [[nodiscard]] std::string_view View() const noexcept {
        return {characters, static_cast<std::size_t>(length)};
    }

  private:
    const char* characters;
    int length;
    int depth = 0;
};
