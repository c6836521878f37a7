#pragma once

#include "foundation/shared/cls_FieldHandle.h"

/// The names of the fields of arrows and texts, by which archives and scripts know them, in the
/// order of both.

namespace annC_ArrowField {
inline constexpr cls_FieldHandle kStartPoint("startPoint");
inline constexpr cls_FieldHandle kEndPoint("endPoint");
inline constexpr cls_FieldHandle kStartAnchor("startAnchor");
inline constexpr cls_FieldHandle kEndAnchor("endAnchor");
inline constexpr cls_FieldHandle kStartHeadStyle("startHeadStyle");
inline constexpr cls_FieldHandle kEndHeadStyle("endHeadStyle");
inline constexpr cls_FieldHandle kStartGap("startGap");
inline constexpr cls_FieldHandle kEndGap("endGap");
inline constexpr cls_FieldHandle kColor("color");
inline constexpr cls_FieldHandle kLineStyle("lineStyle");
inline constexpr cls_FieldHandle kLineThickness("lineThickness");
}  // namespace annC_ArrowField

namespace annC_TextField {
inline constexpr cls_FieldHandle kText("text");
inline constexpr cls_FieldHandle kOffset("offset");
inline constexpr cls_FieldHandle kAnchor("anchor");
inline constexpr cls_FieldHandle kReferencePoint("referencePoint");
inline constexpr cls_FieldHandle kRotationAngle("rotationAngle");
inline constexpr cls_FieldHandle kFont("font");
inline constexpr cls_FieldHandle kColor("color");
inline constexpr cls_FieldHandle kBackgroundStyle("backgroundStyle");
inline constexpr cls_FieldHandle kBackgroundColor("backgroundColor");
inline constexpr cls_FieldHandle kBox("box");
inline constexpr cls_FieldHandle kJustification("justification");
}  // namespace annC_TextField
