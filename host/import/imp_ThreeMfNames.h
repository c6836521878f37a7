#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

/// Names of the objects of a 3MF file by their id.
using imp_ObjectNames = std::unordered_map<int, std::string>;

/// The names that a 3MF file gives to its objects; the importer library drops them and numbers the
/// objects instead. Objects without a name are not in it, and a file that cannot be read has none.
[[nodiscard]] imp_ObjectNames imp_ReadThreeMfNames(const std::string& path);

/// The same out of the text of the model part of such a file.
[[nodiscard]] imp_ObjectNames imp_FindObjectNames(std::string_view modelXml);
