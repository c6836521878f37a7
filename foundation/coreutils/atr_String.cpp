#include "foundation/coreutils/atr_String.h"

#include <charconv>
#include <set>
#include <string>
#include <utility>

#include "foundation/coreutils/aio_FormatDouble.h"

namespace {

constinit atr_Catalogue installedCatalogue = nullptr;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

/// Walks a template once and writes its text.
class atr_Formatter {
  public:
    atr_Formatter(std::string_view messageTemplate, const atr_Argument* values, int valueCount)
        : format(messageTemplate), arguments(values), count(valueCount) {}

    std::string Text() {
        while (position < format.size()) {
            if (format[position] == '%' && WritePlace()) continue;
            text += format[position++];
        }
        return std::move(text);
    }

    /// The places of the template: the index of each one's argument and its conversion.
    std::set<std::pair<int, char>> Places() {
        std::set<std::pair<int, char>> places;
        for (; position < format.size(); ++position) {
            if (format[position] != '%') continue;
            if (format.substr(position, 2) == "%%") {
                ++position;
                continue;
            }
            const Place place = ReadPlace();
            if (!IsConversion(place.conversion)) continue;
            places.emplace(place.numbered ? place.index : next++, place.conversion);
            position = place.end - 1;
        }
        return places;
    }

  private:
    /// What stands between the percent sign and the end of its conversion.
    struct Place {
        std::size_t end = 0;
        bool numbered = false;  ///< names its argument; else it takes the next one
        int index = -1;
        int width = 0;
        bool zeros = false;
        char conversion = '\0';
    };

    static constexpr int kMaxNumber = 9999;

    static bool IsConversion(char c) {
        return std::string_view("scdiuxXg").find(c) != std::string_view::npos;
    }

    int ReadNumber(std::size_t& at) const {
        int number = 0;
        while (at < format.size() && IsDigit(format[at])) {
            if (number <= kMaxNumber) number = number * 10 + (format[at] - '0');
            ++at;
        }
        return number;
    }

    Place ReadPlace() const {
        Place place;
        std::size_t at = position + 1;
        const std::size_t digits = at;
        const int number = ReadNumber(at);
        if (at < format.size() && at > digits && format[at] == '$') {
            place.numbered = true;
            place.index = number - 1;
            ++at;
        } else {
            at = digits;
        }
        if (at < format.size() && format[at] == '0') {
            place.zeros = true;
            ++at;
        }
        place.width = ReadNumber(at);
        while (at < format.size() && format[at] == 'l') ++at;
        if (at < format.size()) {
            place.conversion = format[at];
            place.end = at + 1;
        }
        return place;
    }

    /// Writes the value of the place at `position` and passes it; false when it is none or no
    /// argument fits.
    bool WritePlace() {
        if (format.substr(position, 2) == "%%") {
            text += '%';
            position += 2;
            return true;
        }
        const Place place = ReadPlace();
        if (place.conversion == '\0' || place.width > kMaxNumber) return false;
        const int index = place.numbered ? place.index : next;
        if (index < 0 || index >= count) return false;
        std::string value;
        if (!Convert(arguments[index], place.conversion, value)) return false;
        if (!place.numbered) ++next;
        Pad(value, place);
        text += value;
        position = place.end;
        return true;
    }

    static bool Convert(const atr_Argument& argument, char conversion, std::string& value) {
        using Kind = atr_Argument::Kind;
        const bool integer = argument.kind == Kind::Signed || argument.kind == Kind::Unsigned;
        switch (conversion) {
            case 's':
                if (argument.kind != Kind::Text) return false;
                value = argument.text;
                return true;
            case 'c':
                if (!integer) return false;
                value = static_cast<char>(argument.number);
                return true;
            case 'd':
            case 'i':
            case 'u':
                if (!integer) return false;
                value = argument.kind == Kind::Signed
                            ? std::to_string(argument.number)
                            : std::to_string(static_cast<unsigned long long>(argument.number));
                return true;
            case 'x':
            case 'X':
                if (!integer) return false;
                value = Hexadecimal(argument, conversion == 'X');
                return true;
            case 'g':
                if (argument.kind != Kind::Real) return false;
                value = aio_FormatDouble(argument.real, aio_PRECISION).View();
                return true;
            default:
                return false;
        }
    }

    static std::string Hexadecimal(const atr_Argument& argument, bool upperCase) {
        unsigned long long bits = static_cast<unsigned long long>(argument.number);
        if (argument.bytes < sizeof bits) bits &= (1ULL << 8 * argument.bytes) - 1;
        char buffer[16];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, bits, 16);
        std::string digits(buffer, end.ptr);
        for (char& c : digits) {
            if (upperCase && c >= 'a') c = static_cast<char>(c - 'a' + 'A');
        }
        return digits;
    }

    static void Pad(std::string& value, const Place& place) {
        const std::size_t width = static_cast<std::size_t>(place.width);
        if (value.size() >= width) return;
        const bool zeros = place.zeros && place.conversion != 's' && place.conversion != 'c';
        const std::size_t at = zeros && value[0] == '-' ? 1 : 0;
        value.insert(at, width - value.size(), zeros ? '0' : ' ');
    }

    std::string_view format;
    const atr_Argument* arguments;
    int count;
    std::size_t position = 0;
    int next = 0;
    std::string text;
};

atr_String::atr_String(double value) : text(aio_FormatDouble(value, aio_PRECISION)) {}

cow_String atr_String::Text(KTSBasStringMode mode) const {
    return mode == KTSBasStringMode::Translated ? atr_translate(text) : text;
}

cow_String atr_Format(std::string_view format, const atr_Argument* arguments, int count) {
    return cow_String(atr_Formatter(format, arguments, count).Text());
}

atr_Catalogue atr_SetCatalogue(atr_Catalogue catalogue) noexcept {
    return std::exchange(installedCatalogue, catalogue);
}

cow_String atr_translate(const cow_String& text) {
    if (!installedCatalogue) return text;
    const cow_String translation = installedCatalogue(text);
    const auto places = [](const cow_String& t) {
        return atr_Formatter(t.View(), nullptr, 0).Places();
    };
    return places(translation) == places(text) ? translation : text;
}
