#pragma once

#include <string>
#include <string_view>
#include <vector>

class hst_Part;

/// `text` as a name that prints on one line: control characters become blanks, bytes that are no
/// UTF-8 become U+FFFD, blanks at both ends go. Cleaning a clean name changes nothing.
[[nodiscard]] std::string hst_CleanName(std::string_view text);

/// The columns that clean text takes on a terminal: two for an East Asian wide character, none for
/// a combining mark, one for any other.
[[nodiscard]] int hst_DisplayWidth(std::string_view text);

/// Gives every part a name of its own: the first part of a name keeps it, later ones get "#2", "#3"
/// and so on behind it, skipping what another part is named from the start. Returns the number of
/// parts that got a new name.
int hst_MakeNamesUnique(std::vector<hst_Part>& parts);
