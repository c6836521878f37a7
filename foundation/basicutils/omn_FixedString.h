#pragma once

#include <cstddef>
#include <string_view>

/// A text that is fixed in the code: a view of a string literal. Making one builds nothing and
/// leaves nothing to destroy, so it serves before start-up and after shut-down; it is valid as long
/// as the library that holds the literal.
class omn_FixedString {
  public:
    template <std::size_t size>
    constexpr omn_FixedString(const char (&literal)[size]) noexcept : text(literal, size - 1) {}

    /// The characters followed by a zero.
    [[nodiscard]] constexpr const char* Characters() const noexcept { return text.data(); }
    [[nodiscard]] constexpr int Length() const noexcept { return static_cast<int>(text.size()); }
    [[nodiscard]] constexpr std::string_view View() const noexcept { return text; }

    friend constexpr bool operator==(const omn_FixedString&,
                                     const omn_FixedString&) noexcept = default;

  private:
    std::string_view text;
};
