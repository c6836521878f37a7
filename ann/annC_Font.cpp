#include "ann/annC_Font.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace {

constexpr int kFewestFields = 8;

/// Field `number`, from 1, of a description; empty when there is none or it is left open.
std::string_view FieldOf(std::string_view description, int number) {
    for (int i = 0; i < number; ++i) {
        const std::size_t hyphen = description.find('-');
        if (hyphen == std::string_view::npos) return {};
        description.remove_prefix(hyphen + 1);
    }
    const std::string_view field = description.substr(0, description.find('-'));
    return field == "*" ? std::string_view() : field;
}

void Take(cow_String& value, std::string_view field) {
    if (!field.empty()) value = field;
}

}  // namespace

bool annC_Font::IsValid(const cow_String& description) noexcept {
    const std::string_view text = description.View();
    return text.starts_with('-') && std::count(text.begin(), text.end(), '-') >= kFewestFields;
}

annC_Font::annC_Font(const cow_String& description) {
    if (!IsValid(description)) return;
    Take(family, FieldOf(description.View(), 2));
    Take(weight, FieldOf(description.View(), 3));
    Take(slant, FieldOf(description.View(), 4));
    const std::string_view size = FieldOf(description.View(), 8);
    int tenths = 0;
    std::from_chars(size.data(), size.data() + size.size(), tenths);
    if (tenths > 0) sizePt = tenths / 10.0;
}
