#include "host/model/hst_PartName.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "host/model/hst_Part.h"

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

struct Character {
    std::uint32_t code;
    std::size_t length;  ///< bytes; 0 for bytes that are no UTF-8 (RFC 3629)
};

/// The character at the head of `text`.
Character FirstCharacter(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) return {lead, 1};
    const std::size_t length = lead < 0xC2   ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || text.size() < length) return {0, 0};
    std::uint32_t code = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[i])) return {0, 0};
        code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3Fu);
    }
    const bool isOverlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return isOverlong || isSurrogate || code > 0x10FFFF ? Character{0, 0} : Character{code, length};
}

bool IsControl(std::uint32_t code) { return code < 0x20 || (code >= 0x7F && code < 0xA0); }

int ColumnsOf(std::uint32_t code) {
    struct Range {
        std::uint32_t first;
        std::uint32_t last;
        int columns;
    };
    static constexpr Range kRanges[] = {
        {0x0300, 0x036F, 0},   {0x1100, 0x115F, 2},   {0x2E80, 0xA4CF, 2}, {0xAC00, 0xD7A3, 2},
        {0xF900, 0xFAFF, 2},   {0xFE30, 0xFE6F, 2},   {0xFF00, 0xFF60, 2}, {0xFFE0, 0xFFE6, 2},
        {0x1F300, 0x1FAFF, 2}, {0x20000, 0x3FFFD, 2},
    };
    for (const Range& range : kRanges) {
        if (code >= range.first && code <= range.last) return range.columns;
    }
    return 1;
}

}  // namespace

std::string hst_CleanName(std::string_view text) {
    std::string clean;
    while (!text.empty()) {
        const Character character = FirstCharacter(text);
        if (character.length == 0) {
            clean += kReplacement;
        } else if (IsControl(character.code)) {
            clean += ' ';
        } else {
            clean += text.substr(0, character.length);
        }
        text.remove_prefix(std::max<std::size_t>(character.length, 1));
    }
    const std::size_t first = clean.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return clean.substr(first, clean.find_last_not_of(' ') - first + 1);
}

int hst_DisplayWidth(std::string_view text) {
    int width = 0;
    while (!text.empty()) {
        const Character character = FirstCharacter(text);
        width += ColumnsOf(character.code);
        text.remove_prefix(std::max<std::size_t>(character.length, 1));
    }
    return width;
}

int hst_MakeNamesUnique(std::vector<hst_Part>& parts) {
    std::unordered_set<std::string> taken;
    for (const hst_Part& part : parts) taken.insert(part.Name());
    std::unordered_map<std::string, int> lastNumber;
    int renamed = 0;
    for (hst_Part& part : parts) {
        const auto [entry, isFirst] = lastNumber.try_emplace(part.Name(), 1);
        if (isFirst) continue;
        std::string name;
        do {
            name = part.Name() + '#' + std::to_string(++entry->second);
        } while (!taken.insert(name).second);
        part.SetName(name);
        ++renamed;
    }
    return renamed;
}
