#pragma once

#include "omu/omu_PrimEnum.h"

/// The enumerations of annotations, each with its names in scripts. The names stand in their stored
/// order, in which menus and archives know them.

/// Where a named anchor lies in its viewport, or a point in the box of a text.
enum annC_RelativePositionEnm : int {
    annC_POSITION_BOTTOM_LEFT = 0,
    annC_POSITION_BOTTOM_CENTER = 1,
    annC_POSITION_BOTTOM_RIGHT = 2,
    annC_POSITION_CENTER_LEFT = 3,
    annC_POSITION_CENTER = 4,
    annC_POSITION_CENTER_RIGHT = 5,
    annC_POSITION_TOP_LEFT = 6,
    annC_POSITION_TOP_CENTER = 7,
    annC_POSITION_TOP_RIGHT = 8,
};

/// The head at an end of an arrow.
enum annC_ArrowHeadStyleEnm : int {
    annC_HEAD_ARROW = 0,
    annC_HEAD_FILLED_ARROW = 1,
    annC_HEAD_HOLLOW_CIRCLE = 2,
    annC_HEAD_FILLED_CIRCLE = 3,
    annC_HEAD_HOLLOW_DIAMOND = 4,
    annC_HEAD_FILLED_DIAMOND = 5,
    annC_HEAD_HOLLOW_SQUARE = 6,
    annC_HEAD_FILLED_SQUARE = 7,
    annC_HEAD_NONE = 8,
};

/// The thickness of an arrow's line.
enum annC_LineThicknessEnm : int {
    annC_THICKNESS_VERY_THIN = 0,
    annC_THICKNESS_THIN = 1,
    annC_THICKNESS_MEDIUM = 2,
    annC_THICKNESS_THICK = 3
};

/// The pattern of an arrow's line.
///
/// Kept: the name "DASHED" (2) stands before "DOTTED" (1), so index 1 is value 2, where one would
/// expect the order of the values; menus and the permissible names in messages rely on it.
enum annC_LineStyleEnm : int {
    annC_LINE_SOLID = 0,
    annC_LINE_DOTTED = 1,
    annC_LINE_DASHED = 2,
    annC_LINE_DOT_DASH = 3,
    annC_LINE_NONE = 4
};

/// What lies behind a text.
enum annC_BackgroundStyleEnm : int {
    annC_BACKGROUND_TRANSPARENT = 0,
    annC_BACKGROUND_MATCH = 1,
    annC_BACKGROUND_OTHER = 2
};

/// How the lines of a text stand to each other.
enum annC_JustificationEnm : int {
    annC_JUSTIFIED_LEFT = 0,
    annC_JUSTIFIED_CENTER = 1,
    annC_JUSTIFIED_RIGHT = 2
};

template <>
struct omu_PrimEnumNames<annC_RelativePositionEnm, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{"BOTTOM_LEFT", 0},  {"BOTTOM_CENTER", 1},
                                                 {"BOTTOM_RIGHT", 2}, {"CENTER_LEFT", 3},
                                                 {"CENTER", 4},       {"CENTER_RIGHT", 5},
                                                 {"TOP_LEFT", 6},     {"TOP_CENTER", 7},
                                                 {"TOP_RIGHT", 8},    {}};
};

template <>
struct omu_PrimEnumNames<annC_ArrowHeadStyleEnm, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{"ARROW", 0},          {"FILLED_ARROW", 1},
                                                 {"HOLLOW_CIRCLE", 2},  {"FILLED_CIRCLE", 3},
                                                 {"HOLLOW_DIAMOND", 4}, {"FILLED_DIAMOND", 5},
                                                 {"HOLLOW_SQUARE", 6},  {"FILLED_SQUARE", 7},
                                                 {"NONE", 8},           {}};
};

template <>
struct omu_PrimEnumNames<annC_LineThicknessEnm, 1> {
    static constexpr omu_EnumEntry kEntries[] = {
        {"VERY_THIN", 0}, {"THIN", 1}, {"MEDIUM", 2}, {"THICK", 3}, {}};
};

template <>
struct omu_PrimEnumNames<annC_LineStyleEnm, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{"SOLID", 0},    {"DASHED", 2}, {"DOTTED", 1},
                                                 {"DOT_DASH", 3}, {"NONE", 4},   {}};
};

template <>
struct omu_PrimEnumNames<annC_BackgroundStyleEnm, 1> {
    static constexpr omu_EnumEntry kEntries[] = {
        {"TRANSPARENT", 0}, {"MATCH", 1}, {"OTHER", 2}, {}};
};

template <>
struct omu_PrimEnumNames<annC_JustificationEnm, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{"LEFT", 0}, {"CENTER", 1}, {"RIGHT", 2}, {}};
};

using annC_PrimRelativePosition = omu_PrimEnum<annC_RelativePositionEnm, 1>;
using annC_PrimArrowHeadStyle = omu_PrimEnum<annC_ArrowHeadStyleEnm, 1>;
using annC_PrimLineThickness = omu_PrimEnum<annC_LineThicknessEnm, 1>;
using annC_PrimLineStyle = omu_PrimEnum<annC_LineStyleEnm, 1>;
using annC_PrimBackgroundStyle = omu_PrimEnum<annC_BackgroundStyleEnm, 1>;
using annC_PrimJustification = omu_PrimEnum<annC_JustificationEnm, 1>;
