#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"

/// A set of byte values.
class rgx_ByteSet {
  public:
    [[nodiscard]] constexpr bool Contains(unsigned char byte) const noexcept {
        return (words[byte / 64] >> byte % 64 & 1) != 0;
    }
    constexpr void Add(unsigned char byte) noexcept {
        words[byte / 64] |= std::uint64_t{1} << byte % 64;
    }
    constexpr void Invert() noexcept {
        for (std::uint64_t& word : words) word = ~word;
    }
    /// True when a byte of `text` is in the set.
    [[nodiscard]] constexpr bool ContainsAnyOf(std::string_view text) const noexcept {
        for (const char c : text) {
            if (Contains(static_cast<unsigned char>(c))) return true;
        }
        return false;
    }

  private:
    std::uint64_t words[4] = {};
};

/// One item of a pattern and what is left of the pattern behind it.
struct rgx_Item {
    rgx_ByteSet bytes;
    std::string_view rest;
};

/// Reads the first item of `pattern`, which is not empty: a bracketed class, an escaped byte or a
/// byte that stands for itself. Usable at compile time, so that a class in constant use costs one
/// test of a bit.
[[nodiscard]] constexpr rgx_Item rgx_ReadItem(std::string_view pattern) noexcept;

/// The bytes that the pattern `brackets`, one bracketed class such as "[^0-9]", matches.
[[nodiscard]] constexpr rgx_ByteSet rgx_ClassOf(std::string_view brackets) noexcept {
    return rgx_ReadItem(brackets).bytes;
}

/// True when `pattern` matches somewhere in `text`.
///
/// A pattern is a sequence of items, each matching one byte: a class in brackets ("[abc]",
/// "[a-z]", "[^0-9]" for every other byte), or a byte itself. A backslash makes the byte after it
/// stand for itself, inside brackets too, so that "[\]]" holds the closing bracket. "*" after an
/// item repeats it any number of times. "^" in front binds the match to the start of the text, "$"
/// at the end to its end; line ends within the text mean nothing, and a class without the newline
/// in it matches none. Texts are counted, so zero bytes are matched as others are.
[[nodiscard]] KTSBASCOREUTILS_API bool rgx_match(std::string_view pattern, std::string_view text);

constexpr rgx_Item rgx_ReadItem(std::string_view pattern) noexcept {
    std::size_t at = 0;
    const auto take = [&]() noexcept {
        if (pattern[at] == '\\' && at + 1 < pattern.size()) ++at;
        return static_cast<unsigned char>(pattern[at++]);
    };
    rgx_Item item;
    if (pattern[0] != '[') {
        item.bytes.Add(take());
        item.rest = pattern.substr(at);
        return item;
    }
    at = 1;
    const bool inverted = at < pattern.size() && pattern[at] == '^';
    if (inverted) ++at;
    while (at < pattern.size() && pattern[at] != ']') {
        const unsigned first = take();
        unsigned last = first;
        if (at + 1 < pattern.size() && pattern[at] == '-' && pattern[at + 1] != ']') {
            ++at;
            last = take();
        }
        for (unsigned byte = first; byte <= last; ++byte) {
            item.bytes.Add(static_cast<unsigned char>(byte));
        }
    }
    if (inverted) item.bytes.Invert();
    item.rest = at < pattern.size() ? pattern.substr(at + 1) : std::string_view();
    return item;
}
