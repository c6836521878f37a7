#include "foundation/coreutils/rgx_match.h"

namespace {

bool IsIn(const rgx_ByteSet& bytes, std::string_view text) {
    return !text.empty() && bytes.Contains(static_cast<unsigned char>(text.front()));
}

/// True when the pattern, without its "^", matches at the start of `text`. Recursion is as deep as
/// the pattern has items that repeat.
bool MatchesHere(std::string_view pattern, std::string_view text) {
    while (!pattern.empty()) {
        if (pattern == "$") return text.empty();
        const rgx_Item item = rgx_ReadItem(pattern);
        pattern = item.rest;
        if (!pattern.empty() && pattern.front() == '*') {
            pattern.remove_prefix(1);
            for (; IsIn(item.bytes, text); text.remove_prefix(1)) {
                if (MatchesHere(pattern, text)) return true;
            }
        } else {
            if (!IsIn(item.bytes, text)) return false;
            text.remove_prefix(1);
        }
    }
    return true;
}

}  // namespace

bool rgx_match(std::string_view pattern, std::string_view text) {
    if (!pattern.empty() && pattern.front() == '^') return MatchesHere(pattern.substr(1), text);
    for (;; text.remove_prefix(1)) {
        if (MatchesHere(pattern, text)) return true;
        if (text.empty()) return false;
    }
}
