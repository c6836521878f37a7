#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/atr_String.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/coreutils/omi_complex.h"

class omu_Primitive;

/// What the typed readers of arguments and sequences accept for a scalar. Each answers false, and
/// leaves `out` untouched, for any other primitive. The tag decides and not the value: 2.0 is no
/// integer, so that a reader which tries one type after the other does not depend on the data.

/// An integer of tag `i` within the range of the target; unsigned numbers by their number.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, signed char& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, short& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, int& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, unsigned int& out);
/// Any number (never a truth value); an integer is taken exactly, `float` is rounded.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, double& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, float& out);
/// A truth value; an enumeration by its current name (ON, TRUE, YES and OFF, FALSE, NO); the
/// integers 0 and 1.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, bool& out);
/// A complex number or any number.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, omi_complex& out);
/// A string, or the untranslated text of a translated one.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, cow_String& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, atr_String& out);
