#include "host/picture/pic_ModelPicture.h"

#include <algorithm>
#include <cstddef>

#include "g3d/g3d_ColorMap.h"
#include "host/picture/pic_AnnotationPainter.h"
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

constexpr const char* kGhost = "Grey70";

pic_Projection MarkedProjection(const std::vector<hst_Part>& parts, g3d_SavedViewIdEnum view) {
    return {parts, view, pic_WIDTH, pic_HEIGHT, 1.0 * pic_LABEL_MARGIN / pic_WIDTH};
}

}  // namespace

std::string pic_DrawModel(const std::vector<hst_Part>& parts, g3d_SavedViewIdEnum view,
                          pic_Format format) {
    const g3d_Color& background = g3d_ColorMap::Instance().Lookup(kBackground);
    const pic_Projection projection(parts, view, pic_WIDTH, pic_HEIGHT);
    const std::vector<g3d_Color> colors =
        pic_PartColors(static_cast<int>(parts.size()), {background});
    pic_Scene scene;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        AddFaces(parts[i], colors[i], projection, scene.faces);
    }
    pic_Canvas canvas(format, pic_WIDTH, pic_HEIGHT, pic_PackedColor(background));
    canvas.PaintScene(scene);
    return canvas.Finish();
}

std::string pic_DrawMarkedModel(const std::vector<hst_Part>& parts, const pic_Marking& marking,
                                g3d_SavedViewIdEnum view, pic_Format format) {
    const g3d_Color& background = g3d_ColorMap::Instance().Lookup(kBackground);
    const g3d_Color& ghost = g3d_ColorMap::Instance().Lookup(kGhost);
    const pic_Projection projection = MarkedProjection(parts, view);
    const std::vector<g3d_Color> colors = pic_PartColors(
        static_cast<int>(std::count(marking.marked.begin(), marking.marked.end(), true)),
        {background, ghost});
    pic_Scene scene;
    auto color = colors.begin();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (marking.marked[i]) {
            AddFaces(parts[i], *color++, projection, scene.faces);
        } else {
            AddFaces(parts[i], ghost, projection, scene.ghosts);
        }
    }
    pic_Canvas canvas(format, pic_WIDTH, pic_HEIGHT, pic_PackedColor(background));
    canvas.PaintScene(scene);
    pic_AnnotationPainter painter(
        canvas.Painter(),
        {pic_WIDTH, pic_HEIGHT, pic_PackedColor(background), pic_PlaceOf(parts, view)});
    painter.Paint(marking.annotations);
    painter.PaintLegend(marking.legend);
    return canvas.Finish();
}

std::function<annC_Point2D(const gsl_Point&)> pic_PlaceOf(const std::vector<hst_Part>& parts,
                                                          g3d_SavedViewIdEnum view) {
    return [projection = MarkedProjection(parts, view)](const gsl_Point& place) {
        const pic_Spot spot = projection.Project(place);
        return annC_Point2D{spot.x, pic_HEIGHT - spot.y};
    };
}
