#pragma once

#include <cstddef>
#include <string_view>

#include "cow/KTSOvuGeomExport.h"

/// Number of bytes of the first character of `text`, 1 to 4; 0 for an empty text. A byte that does
/// not begin a well-formed UTF-8 sequence is a character by itself.
[[nodiscard]] KTSOVUGEOM_API std::size_t omu_CharacterSize(std::string_view text) noexcept;

/// Number of characters of `text`, a byte outside a well-formed sequence counted as one.
[[nodiscard]] KTSOVUGEOM_API int omu_CountCharacters(std::string_view text) noexcept;
