#include "host/model/hst_PartName.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "host/model/hst_Part.h"

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// The bytes of the code point at the head of `text`, 0 when they are no UTF-8 (RFC 3629).
std::size_t SequenceLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) return 1;
    const std::size_t length = lead < 0xC2   ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || text.size() < length) return 0;
    std::uint32_t code = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[i])) return 0;
        code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3Fu);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return overlong || surrogate || code > 0x10FFFF ? 0 : length;
}

bool IsControl(std::string_view character) {
    const auto lead = static_cast<unsigned char>(character[0]);
    const bool c1 = lead == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
    return lead < 0x20 || lead == 0x7F || c1;
}

}  // namespace

std::string hst_CleanName(std::string_view text) {
    std::string clean;
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        if (length == 0) {
            clean += kReplacement;
        } else if (IsControl(text.substr(0, length))) {
            clean += ' ';
        } else {
            clean += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    const std::size_t first = clean.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return clean.substr(first, clean.find_last_not_of(' ') - first + 1);
}

int hst_CharacterCount(std::string_view text) {
    int count = 0;
    for (const char byte : text) count += IsContinuation(byte) ? 0 : 1;
    return count;
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
