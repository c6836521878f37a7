#include "host/picture/pic_ModelPicture.h"

#include <cstddef>

#include "g3d/g3d_ColorMap.h"
#include "host/picture/pic_Canvas.h"
#include "host/picture/pic_PartColors.h"
#include "host/picture/pic_Projection.h"
#include "host/picture/pic_Shading.h"

namespace {

constexpr const char* kBackground = "White";

void AddFaces(const hst_Part& part, const g3d_Color& color, const pic_Projection& projection,
              std::vector<pic_Face>& faces) {
    std::vector<pic_Spot> spots;
    spots.reserve(static_cast<std::size_t>(part.VertexCount()));
    for (int i = 0; i < part.VertexCount(); ++i) {
        spots.push_back(projection.Project(part.PlacedVertex(i)));
    }
    for (int i = 0; i < part.TriangleCount(); ++i) {
        const auto [a, b, c] = part.Triangle(i);
        faces.push_back(
            pic_ShadedFace({spots[static_cast<std::size_t>(a)], spots[static_cast<std::size_t>(b)],
                            spots[static_cast<std::size_t>(c)]},
                           color));
    }
}

}  // namespace

std::string pic_DrawModel(const std::vector<hst_Part>& parts, g3d_SavedViewIdEnum view,
                          pic_Format format) {
    const g3d_Color& background = g3d_ColorMap::Instance().Lookup(kBackground);
    const pic_Projection projection(parts, view, pic_WIDTH, pic_HEIGHT);
    const std::vector<g3d_Color> colors =
        pic_PartColors(static_cast<int>(parts.size()), background);
    std::vector<pic_Face> faces;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        AddFaces(parts[i], colors[i], projection, faces);
    }
    pic_Canvas canvas(format, pic_WIDTH, pic_HEIGHT, pic_PackedColor(background));
    canvas.PaintFaces(faces);
    return canvas.Finish();
}
