#pragma once

#include <concepts>
#include <string_view>
#include <type_traits>

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"
#include "foundation/coreutils/cow_String.h"

/// How a string argument is to be interpreted, and how a message is to be produced.
enum class KTSBasStringMode : int {
    Untranslated = 0,  ///< the text as it stands in the code
    Translated = 1,    ///< the text of the message catalogue
};

/// The string of all messages: a text that the catalogue may replace when it is shown. It holds
/// the untranslated text; a copy costs an increment.
class KTSBASCOREUTILS_API atr_String {
  public:
    atr_String() noexcept = default;
    atr_String(const char* untranslated) : text(untranslated) {}
    atr_String(std::string_view untranslated) : text(untranslated) {}
    atr_String(const cow_String& untranslated) : text(untranslated) {}
    /// The shortest of fixed and scientific notation with up to 15 significant digits.
    explicit atr_String(double value);

    /// The text in the asked mode: as it stands, or looked up in the catalogue.
    [[nodiscard]] cow_String Text(KTSBasStringMode mode = KTSBasStringMode::Untranslated) const;
    [[nodiscard]] int Length() const noexcept { return text.Length(); }
    [[nodiscard]] bool IsEmpty() const noexcept { return text.IsEmpty(); }
    [[nodiscard]] std::string_view View() const noexcept { return text.View(); }

    /// Equality and order of the untranslated texts.
    friend bool operator==(const atr_String&, const atr_String&) noexcept = default;
    friend std::strong_ordering operator<=>(const atr_String& a, const atr_String& b) noexcept {
        return a.text <=> b.text;
    }

  private:
    cow_String text;
};

/// One value for a place of a message template.
class KTSBASCOREUTILS_API atr_Argument {
  public:
    template <std::integral Integer>
    atr_Argument(Integer value) noexcept
        : kind(std::is_signed_v<Integer> ? Kind::Signed : Kind::Unsigned),
          bytes(sizeof(Integer)),
          number(static_cast<long long>(value)) {}
    atr_Argument(double value) noexcept : kind(Kind::Real), real(value) {}
    atr_Argument(const char* value) noexcept : text(value ? value : "") {}
    atr_Argument(std::string_view value) noexcept : text(value) {}
    atr_Argument(const cow_String& value) noexcept : text(value.View()) {}
    atr_Argument(const atr_String& value) noexcept : text(value.View()) {}

  private:
    friend class atr_Formatter;
    enum class Kind { Text, Signed, Unsigned, Real };
    Kind kind = Kind::Text;
    unsigned bytes = 0;  ///< size of the integer that `number` was
    long long number = 0;
    double real = 0;
    std::string_view text;
};

/// Fills the places of `format` in one pass: %s text, %d and %u integers, %x and %X hexadecimal
/// integers, %c an integer as one byte, %g a double (15 significant digits), %% a percent sign. A
/// place may name its argument (%2$s counts from 1), a width (%5u), leading zeros (%03d) and
/// lengths (%llx, without effect). Arguments are data and never templates. A place without a
/// fitting argument and any other sequence stay as they are; surplus arguments are ignored. The
/// same on every platform and in every locale.
[[nodiscard]] KTSBASCOREUTILS_API cow_String atr_Format(std::string_view format,
                                                        const atr_Argument* arguments, int count);

/// `atr_Format` of the arguments in order.
template <class... Arguments>
[[nodiscard]] cow_String atr(std::string_view format, const Arguments&... arguments) {
    if constexpr (sizeof...(arguments) == 0) {
        return atr_Format(format, nullptr, 0);
    } else {
        const atr_Argument list[] = {atr_Argument(arguments)...};
        return atr_Format(format, list, static_cast<int>(sizeof...(arguments)));
    }
}

/// Looks a message up: answers the text to show for the untranslated `text`.
using atr_Catalogue = cow_String (*)(const cow_String& text);

/// Installs the message catalogue (null: texts are shown as they stand) and returns the one before.
/// The shut-down of the library removes it.
KTSBASCOREUTILS_API atr_Catalogue atr_SetCatalogue(atr_Catalogue catalogue) noexcept;

/// The translation of `text` by the catalogue; `text` itself without one, and when the catalogue's
/// text has other places than `text` (numbered ones may stand in another order): it could not be
/// filled.
[[nodiscard]] KTSBASCOREUTILS_API cow_String atr_translate(const cow_String& text);

/// Translates `format`, then fills its places with the arguments.
template <class... Arguments>
requires(sizeof...(Arguments) > 0) [[nodiscard]] cow_String
    atr_translate(const cow_String& format, const Arguments&... arguments) {
    return atr(atr_translate(format).View(), arguments...);
}
