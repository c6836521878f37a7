#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/picture/pic_PictureFile.h"
#include "host/picture/pic_Raster.h"

typedef struct _cairo cairo_t;
typedef struct _cairo_surface cairo_surface_t;

/// A picture of a given size in pixels while it is painted.
class pic_Canvas {
  public:
    /// `background` is 0xRRGGBB. Throws `hst_Error` when the drawing library cannot paint.
    pic_Canvas(pic_Format format, int width, int height, std::uint32_t background);

    /// Paints the scene on the background, what is nearer in front: as pixels in a PNG, as paths in
    /// an SVG. Called first. In an SVG, ghosts stand behind all faces, lighter and opaque.
    void PaintScene(const pic_Scene& scene);
    /// What is painted next; x to the right and y down from the upper left corner, in pixels.
    [[nodiscard]] cairo_t* Painter() const noexcept { return context.get(); }

    /// Ends the picture and returns the bytes of its file. Throws `hst_Error` when the drawing
    /// library reports a failure.
    [[nodiscard]] std::string Finish();

  private:
    struct Release {
        void operator()(cairo_t* context) const noexcept;
        void operator()(cairo_surface_t* surface) const noexcept;
    };
    void PaintPixels(const std::vector<std::uint32_t>& pixels);
    void PaintPaths(const std::vector<pic_Face>& pieces);
    void SetColor(std::uint32_t rgb);

    pic_Format format;
    int width;
    int height;
    std::uint32_t background;
    std::string bytes;  ///< of an SVG, which is written while it is painted
    std::unique_ptr<cairo_surface_t, Release> surface;
    std::unique_ptr<cairo_t, Release> context;
};
