#pragma once

#include <compare>
#include <cstddef>
#include <string_view>

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"

/// A counted, immutable string of bytes (UTF-8 by convention; embedded zeros are kept and counted).
///
/// Copies share one representation and cost an increment; the count is plain, so copies of one
/// string stay on one thread. A string without a representation reads as the empty string, and the
/// empty string never has one. Comparison is by unsigned bytes over the counted length. Memory
/// comes from `mem_`; exhaustion throws `std::bad_alloc`, a text of 2 GiB or more
/// `std::length_error`.
class KTSBASCOREUTILS_API cow_String {
  public:
    /// The empty string; allocates nothing.
    cow_String() noexcept = default;
    /// A copy of the zero-terminated `text`; null is the empty string.
    cow_String(const char* text);
    cow_String(std::string_view text);
    inline cow_String(const cow_String& other) noexcept;
    inline cow_String(cow_String&& other) noexcept;
    inline ~cow_String();

    /// Number of bytes, the terminating zero not counted.
    [[nodiscard]] inline int Length() const noexcept;
    [[nodiscard]] bool IsEmpty() const noexcept { return rep == nullptr; }
    /// The bytes followed by a zero; never null, valid as long as this string is unchanged.
    [[nodiscard]] inline const char* Characters() const noexcept;
    [[nodiscard]] inline std::string_view View() const noexcept;
    /// True when both share one representation (or have none).
    [[nodiscard]] bool Identical(const cow_String& other) const noexcept {
        return rep == other.rep;
    }

    inline cow_String& operator=(const cow_String& other) noexcept;
    inline cow_String& operator=(cow_String&& other) noexcept;

    friend bool operator==(const cow_String& a, const cow_String& b) noexcept {
        return a.rep == b.rep || a.View() == b.View();
    }
    friend std::strong_ordering operator<=>(const cow_String& a, const cow_String& b) noexcept {
        return a.View() <=> b.View();
    }
    friend cow_String operator+(const cow_String& a, const cow_String& b) {
        return Concatenated(a.View(), b.View());
    }

  protected:
    /// The shared text: `characters` follow the representation in its block, or are an adopted
    /// block of their own.
    struct Rep {
        unsigned uses;
        int length;
        char* characters;
    };
    explicit cow_String(Rep* adopted) noexcept : rep(adopted) {}
    /// A representation that owns `buffer` (of `mem_Malloc`), which holds `length` bytes and a
    /// zero.
    static Rep* Adopt(char* buffer, int length);

  private:
    static Rep* NewRep(std::string_view a, std::string_view b);
    static cow_String Concatenated(std::string_view a, std::string_view b);
    static void Delete(Rep* unused) noexcept;
    void Release() noexcept {
        if (rep && --rep->uses == 0) Delete(rep);
    }

    Rep* rep = nullptr;
};

/// A string that takes over a buffer instead of copying it.
class KTSBASCOREUTILS_API cow_AdoptedString : public cow_String {
  public:
    /// Adopts `buffer`, a block of `mem_Malloc` with `length` bytes followed by a zero. Null or a
    /// length of zero or less gives the empty string; the buffer is freed then. When memory for the
    /// representation is exhausted the buffer stays the caller's.
    cow_AdoptedString(char* buffer, int length);
};

inline cow_String::cow_String(const cow_String& other) noexcept : rep(other.rep) {
    if (rep) ++rep->uses;
}

inline cow_String::cow_String(cow_String&& other) noexcept : rep(other.rep) { other.rep = nullptr; }

inline cow_String::~cow_String() { Release(); }

inline int cow_String::Length() const noexcept { return rep ? rep->length : 0; }

inline const char* cow_String::Characters() const noexcept { return rep ? rep->characters : ""; }

inline std::string_view cow_String::View() const noexcept {
    return rep ? std::string_view(rep->characters, static_cast<std::size_t>(rep->length))
               : std::string_view();
}

inline cow_String& cow_String::operator=(const cow_String& other) noexcept {
    if (other.rep) ++other.rep->uses;
    Release();
    rep = other.rep;
    return *this;
}

inline cow_String& cow_String::operator=(cow_String&& other) noexcept {
    if (this != &other) {
        Release();
        rep = other.rep;
        other.rep = nullptr;
    }
    return *this;
}
