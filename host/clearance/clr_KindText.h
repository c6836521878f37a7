#pragma once

#include <array>

#include "host/clearance/clr_Pair.h"

/// How a kind of pair is called, and shown.
struct clr_KindText {
    clr_Kind kind;
    const char* label;    ///< for a reader
    const char* jsonKey;  ///< for programs
    const char* color;    ///< of its labels and arrows, by its name in the colour map
};

/// Every kind that a report holds, in its order.
inline constexpr std::array<clr_KindText, 4> clr_KIND_TEXTS = {
    {{clr_Kind::Crossing, "crossing", "crossing", "Red"},
     {clr_Kind::Enclosed, "enclosed", "enclosed", "Magenta"},
     {clr_Kind::Touching, "touching", "touching", "Green"},
     {clr_Kind::TooClose, "too close", "tooClose", "Blue"}}};

/// The texts of a kind that a report holds.
[[nodiscard]] constexpr const clr_KindText& clr_TextOf(clr_Kind kind) {
    return clr_KIND_TEXTS[static_cast<std::size_t>(kind)];
}
