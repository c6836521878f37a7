#include <cairo.h>
#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "ann/annC_NamedAnchor.h"
#include "ann/annC_Point3DAnchor.h"
#include "ann/annC_ViewportAnchor.h"
#include "host/model/hst_Error.h"
#include "host/picture/pic_AnnotationPainter.h"
#include "host/picture/pic_DepthBuffer.h"
#include "host/picture/pic_ModelPicture.h"
#include "host/picture/pic_PartColors.h"
#include "host/picture/pic_Projection.h"
#include "host/picture/pic_Raster.h"
#include "host/picture/pic_VisiblePieces.h"
#include "host/tests/host_TestModels.h"

namespace {

const g3d_Color kWhite(1, 1, 1);
constexpr g3d_SavedViewIdEnum kSides[] = {g3d_VIEW_FRONT,  g3d_VIEW_BACK,  g3d_VIEW_TOP,
                                          g3d_VIEW_BOTTOM, g3d_VIEW_RIGHT, g3d_VIEW_LEFT};

/// A square with the middle `at` and the half sides u and v, and a triangle without area, scaled
/// and moved along the diagonal.
hst_Part Square(const gsl_Vector& at, const gsl_Vector& u, const gsl_Vector& v, double scale = 1,
                double offset = 0) {
    std::vector<float> positions;
    for (const auto& [a, b] : {std::pair(-1, -1), {1, -1}, {1, 1}, {-1, 1}}) {
        for (int axis = 0; axis < 3; ++axis) {
            positions.push_back(static_cast<float>(at[axis] + a * u[axis] + b * v[axis]));
        }
    }
    gsl_Matrix placement;
    for (int axis = 0; axis < 3; ++axis) {
        const auto only = [axis](double value, int i) { return i == axis ? value : 0; };
        placement.SetColumn(axis, {only(scale, 0), only(scale, 1), only(scale, 2)});
    }
    placement.SetTranslation({offset, offset, offset});
    return {"square", placement, positions, {0, 1, 2, 0, 2, 3, 0, 0, 1}};
}

hst_Part Level(float z) { return Square({0, 0, z}, {1, 0, 0}, {0, 1, 0}); }

/// The sides of a cube from -1 to 1, each a part, in the order of `kSides`.
std::vector<hst_Part> Cube(double scale = 1, double offset = 0) {
    const gsl_Vector x(1, 0, 0);
    const gsl_Vector y(0, 1, 0);
    const gsl_Vector z(0, 0, 1);
    std::vector<hst_Part> sides;
    for (const auto& [out, u, v] :
         {std::array{z, x, y}, std::array{y, z, x}, std::array{x, y, z}}) {
        sides.push_back(Square(out, u, v, scale, offset));
        sides.push_back(Square(out * -1, u, v, scale, offset));
    }
    return sides;
}

class Pixels {
  public:
    explicit Pixels(std::string png) : bytes(std::move(png)) {
        image = cairo_image_surface_create_from_png_stream(
            [](void* self, unsigned char* data, unsigned int length) {
                auto& from = *static_cast<Pixels*>(self);
                if (from.bytes.size() - from.place < length) return CAIRO_STATUS_READ_ERROR;
                from.bytes.copy(reinterpret_cast<char*>(data), length, from.place);
                from.place += length;
                return CAIRO_STATUS_SUCCESS;
            },
            this);
    }
    ~Pixels() { cairo_surface_destroy(image); }
    Pixels(const Pixels&) = delete;
    Pixels& operator=(const Pixels&) = delete;

    [[nodiscard]] int Width() const { return cairo_image_surface_get_width(image); }
    [[nodiscard]] int Height() const { return cairo_image_surface_get_height(image); }
    [[nodiscard]] g3d_Color At(int x, int y) const {
        const unsigned char* pixel =
            cairo_image_surface_get_data(image) + y * cairo_image_surface_get_stride(image) + x * 4;
        return {static_cast<float>(pixel[2]) / 255, static_cast<float>(pixel[1]) / 255,
                static_cast<float>(pixel[0]) / 255};
    }

  private:
    std::string bytes;
    std::size_t place = 0;
    cairo_surface_t* image;
};

TEST(pic_Projection, PutsPointsWhereTheViewsShowThem) {
    constexpr double kUnit = 0.92 * 1200 / 2;  // the cube fills the height but for the margins
    const std::array<gsl_Vector, 2> directions[] = {
        {gsl_Vector(1, 0, 0), gsl_Vector(0, 1, 0)},  {gsl_Vector(-1, 0, 0), gsl_Vector(0, 1, 0)},
        {gsl_Vector(1, 0, 0), gsl_Vector(0, 0, -1)}, {gsl_Vector(1, 0, 0), gsl_Vector(0, 0, 1)},
        {gsl_Vector(0, 0, -1), gsl_Vector(0, 1, 0)}, {gsl_Vector(0, 0, 1), gsl_Vector(0, 1, 0)}};
    for (const double scale : {1.0, 1e-30, 1e30}) {
        const double offset = 1e6 * scale;
        for (std::size_t i = 0; i < std::size(kSides); ++i) {
            SCOPED_TRACE(kSides[i]);
            const pic_Projection projection(Cube(scale, offset), kSides[i], 1600, 1200);
            const auto expectAt = [&](const gsl_Vector& place, double x, double y, double depth) {
                const pic_Spot spot = projection.Project({offset + scale * place.DeltaX(),
                                                          offset + scale * place.DeltaY(),
                                                          offset + scale * place.DeltaZ()});
                EXPECT_NEAR(spot.x, 800 + kUnit * x, 0.01);
                EXPECT_NEAR(spot.y, 600 - kUnit * y, 0.01);
                EXPECT_NEAR(spot.depth, kUnit * depth, 0.01);
            };
            const auto& [right, up] = directions[i];
            expectAt({0, 0, 0}, 0, 0, 0);
            expectAt(right, 1, 0, 0);
            expectAt(up, 0, 1, 0);
            expectAt(right.CrossProduct(up), 0, 0, -1);
        }
    }
}

TEST(pic_Projection, TakesDegenerateModels) {
    const hst_Part point("point", gsl_Matrix(), {3, 4, 5}, {0, 0, 0});
    for (const std::vector<hst_Part>& parts : {std::vector<hst_Part>{}, {point}}) {
        const pic_Projection projection(parts, g3d_VIEW_ISOMETRIC, 1600, 1200);
        const pic_Spot spot = projection.Project({3, 4, 5});
        EXPECT_TRUE(parts.empty() ||
                    (std::abs(spot.x - 800) < 0.1 && std::abs(spot.y - 600) < 0.1));
        const Pixels pixels(pic_DrawModel(parts, g3d_VIEW_ISOMETRIC, pic_Format::Png));
        EXPECT_EQ(pixels.At(800, 600), kWhite);
    }
    const std::vector<hst_Part> tooLarge{Square({1e38, 0, 0}, {1, 0, 0}, {0, 1, 0}, 1e300)};
    EXPECT_THROW(pic_Projection(tooLarge, g3d_VIEW_TOP, 1600, 1200), hst_Error);
}

TEST(pic_DrawModel, ShowsTheSidesOfACubeInTheirColoursWithinTheMargins) {
    const std::vector<hst_Part> cube = Cube();
    const std::vector<g3d_Color> colors = pic_PartColors(6, {kWhite});
    const auto hue = [](const g3d_Color& color) {
        float hsv[3];
        return color.HSV(hsv)[0];
    };
    int seenInIso = 0;
    for (const g3d_SavedViewIdEnum view :
         {g3d_VIEW_FRONT, g3d_VIEW_BACK, g3d_VIEW_TOP, g3d_VIEW_BOTTOM, g3d_VIEW_RIGHT,
          g3d_VIEW_LEFT, g3d_VIEW_ISOMETRIC}) {
        SCOPED_TRACE(view);
        const Pixels pixels(pic_DrawModel(cube, view, pic_Format::Png));
        ASSERT_EQ(pixels.Width(), 1600);
        ASSERT_EQ(pixels.Height(), 1200);
        const pic_Projection projection(cube, view, 1600, 1200);
        for (std::size_t i = 0; i < cube.size(); ++i) {
            const pic_Spot spot = projection.Project(cube[i].PlacedBox().Center());
            if (spot.depth > -1) continue;  // faces away
            seenInIso += view == g3d_VIEW_ISOMETRIC ? 1 : 0;
            const g3d_Color seen = pixels.At(static_cast<int>(spot.x), static_cast<int>(spot.y));
            EXPECT_NEAR(hue(seen), hue(colors[i]), 0.02) << i;
        }
        const auto isFree = [&](int x, int y) { return pixels.At(x, y) == kWhite; };
        for (int x = 0; x < 1600; ++x) {
            ASSERT_TRUE(isFree(x, 47) && isFree(x, 1152)) << x;
        }
        EXPECT_FALSE(isFree(800, 49) || isFree(800, 1150));
    }
    EXPECT_EQ(seenInIso, 3);
}

TEST(pic_DrawModel, ShowsTheNearerPartInEitherOrderAndFromBothSides) {
    const std::vector<g3d_Color> colors = pic_PartColors(2, {kWhite});
    const std::vector<hst_Part> upward{Level(0), Level(1)};
    const std::vector<hst_Part> downward{Level(1), Level(0)};
    for (const auto& [parts, view, nearer] :
         {std::tuple(upward, g3d_VIEW_FRONT, 1), std::tuple(upward, g3d_VIEW_BACK, 0),
          std::tuple(downward, g3d_VIEW_FRONT, 0), std::tuple(downward, g3d_VIEW_BACK, 1)}) {
        const Pixels pixels(pic_DrawModel(parts, view, pic_Format::Png));
        // The square faces the viewer: the light stands in front, at a cosine of 0.8.
        const g3d_Color& color = colors[static_cast<std::size_t>(nearer)];
        const float brightness = 0.15f + 0.85f * (1 + 0.8f) / 2;
        const g3d_Color lit(color.Red() * brightness, color.Green() * brightness,
                            color.Blue() * brightness);
        for (const int x : {700, 800, 900}) {  // across the seam of the two triangles
            EXPECT_LT(pixels.At(x, 600).Distance(lit), 0.03f) << x;
        }
    }
}

constexpr int kSize = 200;  // of the pictures below

/// Large faces that pierce each other, each in a colour of its own, and degenerate ones.
std::vector<pic_Face> PiercingFaces() {
    std::mt19937 random(4);
    std::uniform_real_distribution<double> place(20, kSize - 20);
    std::uniform_real_distribution<double> depth(-100, 100);
    std::vector<pic_Face> faces;
    for (std::uint32_t i = 0; i < 60; ++i) {
        pic_Face face;
        for (pic_Spot& corner : face.corners)
            corner = {place(random), place(random), depth(random)};
        face.rgb = i + 1;
        faces.push_back(face);
    }
    faces.push_back({{{{0, 0, -200}, {100, 100, -200}, {200, 200, -200}}}, 61});
    faces.push_back({{{{-1e3, 0, 150}, {1e3, 0, 150}, {0, 1e3, 150}}}, 62});
    return faces;
}

/// The colour of the nearest face at a point, by barycentric coordinates.
std::uint32_t NearestAt(const std::vector<pic_Face>& faces, double x, double y) {
    double nearest = std::numeric_limits<double>::infinity();
    std::uint32_t rgb = 0;
    for (const pic_Face& face : faces) {
        const auto& [a, b, c] = face.corners;
        const auto twiceArea = [](double x0, double y0, double x1, double y1, double x2,
                                  double y2) {
            return (x1 - x0) * (y2 - y0) - (y1 - y0) * (x2 - x0);
        };
        const double area = twiceArea(a.x, a.y, b.x, b.y, c.x, c.y);
        const double ofA = twiceArea(x, y, b.x, b.y, c.x, c.y) / area;
        const double ofB = twiceArea(a.x, a.y, x, y, c.x, c.y) / area;
        const double ofC = 1 - ofA - ofB;
        if (!(ofA >= 0 && ofB >= 0 && ofC >= 0)) continue;
        const double depth = ofA * a.depth + ofB * b.depth + ofC * c.depth;
        if (depth >= nearest) continue;
        nearest = depth;
        rgb = face.rgb;
    }
    return rgb;
}

TEST(pic_Raster, MixesTheNearestFacesOfEachPixel) {
    const std::vector<pic_Face> faces = PiercingFaces();
    const std::vector<std::uint32_t> pixels = pic_Rasterise({faces, {}}, 0, kSize, kSize);
    int wrong = 0;
    for (int i = 0; i < kSize * kSize; ++i) {
        std::uint32_t sum = 0;
        for (int k = 0; k < 16; ++k) {
            sum += NearestAt(faces, i % kSize + (k % 4 + 0.5) / 4, i / kSize + (k / 4 + 0.5) / 4);
        }
        wrong += pixels[static_cast<std::size_t>(i)] != (sum + 8) / 16 ? 1 : 0;
    }
    EXPECT_LE(wrong, 2);  // rounding may decide where two faces cross
}

TEST(pic_VisiblePieces, PaintWhatIsNearestUpToTwoPixelsAtBorders) {
    const std::vector<pic_Face> faces = PiercingFaces();
    const pic_DepthBuffer grid(kSize, 0, kSize, 1);
    std::vector<std::uint32_t> painted(kSize * kSize);
    for (const pic_Face& piece : pic_VisiblePieces(faces, kSize, kSize)) {
        grid.ForEachSample(piece, [&](std::size_t i, float) { painted[i] = piece.rgb; });
    }
    int wrong = 0;
    int farOff = 0;
    int holes = 0;
    for (int i = 0; i < kSize * kSize; ++i) {
        const std::uint32_t rgb = painted[static_cast<std::size_t>(i)];
        const auto isNearestAt = [&](double dx, double dy) {
            return NearestAt(faces, i % kSize + dx, i / kSize + dy) == rgb;
        };
        if (isNearestAt(0.5, 0.5)) continue;
        ++wrong;
        if (rgb == 0) {
            ++holes;
            continue;
        }
        bool isClose = false;
        for (int k = 0; k < 81 && !isClose; ++k) {
            isClose = isNearestAt(0.5 + (k % 9 - 4) / 2.0, 0.5 + (k / 9 - 4) / 2.0);
        }
        farOff += isClose ? 0 : 1;
    }
    EXPECT_LT(wrong, kSize * kSize / 50);
    EXPECT_EQ(farOff, 0);
    EXPECT_LT(holes, kSize * kSize / 100);  // slits that hairlines close
}

/// A sheet of grey pixels with a painter whose model space is the sheet.
class Sheet {
  public:
    static constexpr int kSize = 120;
    static constexpr std::uint32_t kGrey = 0x808080;

    Sheet() {
        cairo_set_source_rgb(context, 128 / 255.0, 128 / 255.0, 128 / 255.0);
        cairo_paint(context);
    }
    ~Sheet() {
        cairo_destroy(context);
        cairo_surface_destroy(surface);
    }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    pic_AnnotationPainter Painter() {
        return {context, {kSize, kSize, kGrey, [](const gsl_Point& p) {
                              return annC_Point2D{p.GetX(), p.GetY()};
                          }}};
    }
    void Paint(const annC_Annotation& annotation) {
        annC_AnnotationContainer one;
        one.Insert(cow_String("a"), annotation);
        Painter().Paint(one);
    }
    /// The colour of the pixel above and right of a corner, counted from the bottom left one.
    [[nodiscard]] std::uint32_t At(int x, int y) const {
        const unsigned char* pixel = cairo_image_surface_get_data(surface) +
                                     (kSize - 1 - y) * cairo_image_surface_get_stride(surface) +
                                     x * 4;
        return static_cast<std::uint32_t>(pixel[2] << 16 | pixel[1] << 8 | pixel[0]);
    }
    /// How many pixels of a rectangle are not grey any more.
    [[nodiscard]] int Ink(int left, int bottom, int right, int top) const {
        int count = 0;
        for (int y = bottom; y < top; ++y) {
            for (int x = left; x < right; ++x) count += At(x, y) != kGrey;
        }
        return count;
    }
    [[nodiscard]] int Ink() const { return Ink(0, 0, kSize, kSize); }
    [[nodiscard]] bool Has(std::uint32_t color) const {
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) {
                if (At(x, y) == color) return true;
            }
        }
        return false;
    }

  private:
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, kSize, kSize);
    cairo_t* context = cairo_create(surface);
};

annC_Arrow ArrowTo(double x, double y) {
    annC_Arrow arrow;
    arrow.SetStartAnchor(annC_ViewportAnchor(20, 30));
    arrow.SetEndAnchor(annC_Point3DAnchor(x, y, 5));
    arrow.SetColor("Red");
    arrow.SetLineThickness(annC_THICKNESS_MEDIUM);
    return arrow;
}

TEST(pic_AnnotationPainter, DrawsArrowsBetweenTheirGapsInTheirColour) {
    Sheet plain;
    plain.Paint(ArrowTo(100, 30));
    EXPECT_EQ(plain.At(22, 30), 0xff0000u);
    EXPECT_EQ(plain.At(95, 30), 0xff0000u);
    EXPECT_EQ(plain.Ink(18, 20, 102, 40), plain.Ink()) << "ink beyond the ends";
    Sheet withGaps;
    annC_Arrow gaps = ArrowTo(20, 110);
    gaps.SetStartGap(10);
    gaps.SetEndGap(20);
    gaps.SetColor("no colour");
    withGaps.Paint(gaps);
    EXPECT_EQ(withGaps.At(20, 60), 0xffffffu);
    EXPECT_EQ(withGaps.Ink(10, 39, 30, 91), withGaps.Ink());
    Sheet nowhere;
    nowhere.Paint(ArrowTo(20, 30));
    nowhere.Paint(ArrowTo(std::numeric_limits<double>::quiet_NaN(), 30));
    EXPECT_EQ(nowhere.Ink(), 0);
}

TEST(pic_AnnotationPainter, DrawsEveryHeadAtTheEndOfItsArrowAndEveryLine) {
    for (int style = annC_HEAD_ARROW; style <= annC_HEAD_NONE; ++style) {
        Sheet sheet;
        annC_Arrow arrow = ArrowTo(80, 80);
        arrow.SetLineStyle(annC_LINE_NONE);
        arrow.SetEndHeadStyle(static_cast<annC_ArrowHeadStyleEnm>(style));
        sheet.Paint(arrow);
        EXPECT_EQ(sheet.Ink() > 30, style != annC_HEAD_NONE) << style;
        if (style < annC_HEAD_HOLLOW_CIRCLE || style == annC_HEAD_NONE) continue;
        EXPECT_EQ(sheet.At(80, 80) != Sheet::kGrey, style % 2 == 1) << "filled ones are odd";
        EXPECT_EQ(sheet.Ink(62, 62, 98, 98), sheet.Ink()) << style;
    }
    int solid = 0;
    for (int style = annC_LINE_SOLID; style <= annC_LINE_DOT_DASH; ++style) {
        Sheet sheet;
        annC_Arrow arrow = ArrowTo(100, 30);
        arrow.SetLineStyle(static_cast<annC_LineStyleEnm>(style));
        arrow.SetEndHeadStyle(annC_HEAD_NONE);
        sheet.Paint(arrow);
        if (style == annC_LINE_SOLID) solid = sheet.Ink();
        EXPECT_GT(sheet.Ink(), 0) << style;
        EXPECT_LE(sheet.Ink(), style == annC_LINE_SOLID ? solid : solid * 9 / 10) << style;
    }
}

TEST(pic_AnnotationPainter, DrawsTextsAtTheirAnchorsInTheirColours) {
    annC_Text text;
    text.SetText("HH\nH");
    text.SetAnchor(annC_ViewportAnchor(60, 60));
    text.SetColor("Blue");
    const struct {
        annC_RelativePositionEnm reference;
        int left, bottom, right, top;
    } cases[] = {{annC_POSITION_BOTTOM_LEFT, 60, 60, 120, 120},
                 {annC_POSITION_TOP_RIGHT, 0, 0, 60, 60},
                 {annC_POSITION_CENTER_LEFT, 60, 30, 120, 90}};
    for (const auto& c : cases) {
        Sheet sheet;
        text.SetReferencePoint(annC_NamedAnchor(c.reference));
        sheet.Paint(text);
        EXPECT_GT(sheet.Ink(), 50) << c.reference;
        EXPECT_EQ(sheet.Ink(c.left, c.bottom, c.right, c.top), sheet.Ink()) << c.reference;
        EXPECT_TRUE(sheet.Has(0x0000ffu)) << c.reference;
    }
    Sheet unknown;
    text.SetColor("no colour");
    text.SetBackgroundStyle(annC_BACKGROUND_OTHER);
    text.SetBackgroundColor("no colour either");
    unknown.Paint(text);
    EXPECT_TRUE(unknown.Has(0xffffffu));
    EXPECT_TRUE(unknown.Has(0x000000u));
}

TEST(pic_AnnotationPainter, DrawsALegendInTheMiddleOfTheLowerEdge) {
    Sheet sheet;
    sheet.Painter().PaintLegend({{"Red", "H"}, {"", "H"}});
    EXPECT_TRUE(sheet.Has(0xff0000u));
    EXPECT_TRUE(sheet.Has(0x000000u));
    EXPECT_EQ(sheet.Ink(10, 10, 110, 40), sheet.Ink());
}

TEST(pic_PartColors, DifferFromEachOtherAndFromTheBackground) {
    const std::vector<g3d_Color> colors = pic_PartColors(200, {kWhite});
    for (std::size_t i = 0; i < colors.size(); ++i) {
        EXPECT_GT(colors[i].Distance(kWhite), 0.5f) << i;
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_GT(colors[i].Distance(colors[k]), i < 10 ? 0.3f : 0.0f) << i << ' ' << k;
        }
    }
}

}  // namespace
