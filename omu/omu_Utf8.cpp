#include "omu/omu_Utf8.h"

namespace {

/// The lead bytes of one row of the table of well-formed sequences (Unicode, table 3-7): length of
/// the sequence and range of its second byte, which keeps out overlong forms, surrogates and what
/// lies beyond U+10FFFF.
struct Lead {
    unsigned char first, last;
    std::size_t size;
    unsigned char secondFirst, secondLast;
};
constexpr Lead kLeads[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

unsigned char ByteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

bool IsSequence(std::string_view text, const Lead& lead) {
    if (text.size() < lead.size) return false;
    if (ByteAt(text, 1) < lead.secondFirst || ByteAt(text, 1) > lead.secondLast) return false;
    for (std::size_t i = 2; i < lead.size; ++i) {
        if ((ByteAt(text, i) & 0xC0) != 0x80) return false;
    }
    return true;
}

}  // namespace

std::size_t omu_CharacterSize(std::string_view text) noexcept {
    if (text.empty()) return 0;
    const unsigned char first = ByteAt(text, 0);
    for (const Lead& lead : kLeads) {
        if (first >= lead.first && first <= lead.last)
            return IsSequence(text, lead) ? lead.size : 1;
    }
    return 1;
}

int omu_CountCharacters(std::string_view text) noexcept {
    int count = 0;
    for (; !text.empty(); ++count) text.remove_prefix(omu_CharacterSize(text));
    return count;
}
