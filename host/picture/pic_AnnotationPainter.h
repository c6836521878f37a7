#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "ann/annC_AnnotationContainer.h"
#include "ann/annC_Arrow.h"
#include "ann/annC_Text.h"
#include "gsl/gsl_Point.h"
#include "host/picture/pic_Marking.h"

typedef struct _cairo cairo_t;

/// The viewport that annotations are painted in; a viewport unit is a pixel.
struct pic_Viewport {
    double width;
    double height;
    std::uint32_t background;  ///< 0xRRGGBB
    /// Where a point in model space appears, from the bottom left corner.
    std::function<annC_Point2D(const gsl_Point&)> project;
};

/// Paints annotations and a legend over a picture. Arrows are one to four pixels thick; a colour
/// that the colour map does not name is white, black behind a text; a font that is not installed is
/// replaced by what the system has.
class pic_AnnotationPainter {
  public:
    /// `painter` outlives the object.
    pic_AnnotationPainter(cairo_t* painter, pic_Viewport pictureViewport);

    /// Paints the annotations, the front one last.
    void Paint(const annC_AnnotationContainer& annotations);
    /// Paints the entries side by side, in the middle of the lower edge.
    void PaintLegend(const std::vector<pic_LegendEntry>& legend);

  private:
    void Paint(const annC_Arrow& arrow);
    void Paint(const annC_Text& text);
    void PaintHead(annC_ArrowHeadStyleEnm style, const annC_Point2D& tip, double angleRad,
                   double size);
    [[nodiscard]] annC_Point2D PlaceOf(const annC_Anchor& anchor,
                                       const annC_Point2D& displacement) const;
    void SetColor(std::uint32_t rgb);
    /// The colour of this name, or `fallback` when the colour map has none.
    void SetColor(const cow_String& name, std::uint32_t fallback);

    cairo_t* context;
    pic_Viewport viewport;
};

/// The width and height in pixels of the box of a text as it is painted, before it is turned.
[[nodiscard]] annC_Point2D pic_TextSize(const annC_Text& text);
