#pragma once

#include <string>
#include <vector>

#include "ann/annC_AnnotationContainer.h"

/// An entry of a legend: a square in a colour, by its name in the colour map, and what it stands
/// for.
struct pic_LegendEntry {
    std::string color;  ///< "" no square
    std::string text;
};

/// What a picture points out.
struct pic_Marking {
    std::vector<bool> marked;  ///< one a part
    std::vector<pic_LegendEntry> legend;
    annC_AnnotationContainer annotations;
};
