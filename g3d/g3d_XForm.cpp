#include "g3d/g3d_XForm.h"

#include <algorithm>
#include <cmath>

#include "foundation/basicutils/KTSBasOmniSSELevel.h"
#include "g3d/detail/g3d_Double3.h"
#include "g3d/detail/g3d_Simd.h"

namespace {

static_assert(sizeof(g3d_Point) == 4 * sizeof(float), "points are transformed as four floats");

/// Solves rows * p = right by Cramer's rule; false when the rows are dependent. Products of three
/// floats stay far inside the range of a double.
bool Solve(const g3d_Double3 (&rows)[3], const g3d_Double3& right, g3d_Point& solution) {
    const g3d_Double3 c0 = rows[1].Cross(rows[2]);
    const g3d_Double3 c1 = rows[2].Cross(rows[0]);
    const g3d_Double3 c2 = rows[0].Cross(rows[1]);
    const double determinant = rows[0].Dot(c0);
    if (determinant == 0) return false;
    const g3d_Double3 sum = c0 * right.x + c1 * right.y + c2 * right.z;
    const g3d_Double3 p{sum.x / determinant, sum.y / determinant, sum.z / determinant};
    if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) return false;
    solution = p.AsPoint();
    return true;
}

/// Products of two floats are exact in double; the three sums round in the order of the columns.
/// Points are widened a block at a time: coordinates are then broadcast by the load itself.
G3D_KERNEL_BODY void TransformAll(const float (*columns)[4], float* images, const float* points,
                                  std::size_t count) {
    g3d_Double4 c[4];
    for (int i = 0; i < 4; ++i) {
        g3d_Float4 column;
        g3d_Load(column, columns[i]);
        c[i] = __builtin_convertvector(column, g3d_Double4);
    }
    constexpr std::size_t kBlock = 4 * std::size_t{32};
    double wide[kBlock];
    for (std::size_t first = 0; first < 4 * count; first += kBlock) {
        const std::size_t size = std::min(kBlock, 4 * count - first);
        for (std::size_t i = 0; i < size; i += 4) {
            g3d_Float4 point;
            g3d_Load(point, points + first + i);
            g3d_Store(wide + i, __builtin_convertvector(point, g3d_Double4));
        }
        for (std::size_t i = 0; i < size; i += 4) {
            const g3d_Double4 sum =
                c[0] * wide[i] + c[1] * wide[i + 1] + c[2] * wide[i + 2] + c[3] * wide[i + 3];
            g3d_Store(images + first + i, __builtin_convertvector(sum, g3d_Float4));
        }
    }
}

void TransformBaseline(const float (*columns)[4], float* images, const float* points,
                       std::size_t count) {
    TransformAll(columns, images, points, count);
}

G3D_AVX2_KERNEL void TransformAvx2(const float (*columns)[4], float* images, const float* points,
                                   std::size_t count) {
    TransformAll(columns, images, points, count);
}

}  // namespace

g3d_XForm operator*(const g3d_XForm& left, const g3d_XForm& right) noexcept {
    g3d_XForm product;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            double sum = 0;
            for (std::size_t k = 0; k < 4; ++k)
                sum += static_cast<double>(left.entries[row][k]) * right.entries[k][column];
            product.entries[row][column] = static_cast<float>(sum);
        }
    }
    return product;
}

g3d_Point g3d_XForm::Transform(const g3d_Point& point) const noexcept {
    g3d_Point image;
    Transform(&image, &point, 1);
    return image;
}

void g3d_XForm::Transform(g3d_Point* images, const g3d_Point* points,
                          std::size_t count) const noexcept {
    float columns[4][4];
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            columns[column][row] = entries[row][column];
    const auto transform = KTSBasOmniMayUse(KTSBAS_CPU_AVX2) ? TransformAvx2 : TransformBaseline;
    transform(columns, reinterpret_cast<float*>(images), reinterpret_cast<const float*>(points),
              count);
}

bool g3d_XForm::UnProject(const g3d_Point& clip, g3d_Point& point) const noexcept {
    const auto row = [this](std::size_t r) {
        return g3d_Double3(entries[r][0], entries[r][1], entries[r][2]);
    };
    // The clip z of a perspective is its w up to a constant that vanishes beside it at a distance,
    // so w alone tells how far the point is.
    const bool distanceInW = row(3) != g3d_Double3();
    const std::size_t last = distanceInW ? 3 : 2;
    const g3d_Double3 rows[3] = {row(0), row(1), row(last)};
    const g3d_Double3 right(
        static_cast<double>(clip.X()) - entries[0][3],
        static_cast<double>(clip.Y()) - entries[1][3],
        static_cast<double>(distanceInW ? clip.W() : clip.Z()) - entries[last][3]);
    return Solve(rows, right, point);
}

bool g3d_XForm::UnProjectDivided(float x, float y, float depth, g3d_Point& point) const noexcept {
    const double divided[3] = {x, y, depth};
    g3d_Double3 rows[3];
    double right[3];
    for (std::size_t r = 0; r < 3; ++r) {
        const auto entry = [&](std::size_t column) {
            return entries[r][column] - divided[r] * entries[3][column];
        };
        rows[r] = {entry(0), entry(1), entry(2)};
        right[r] = -entry(3);
    }
    return Solve(rows, {right[0], right[1], right[2]}, point);
}

void g3d_XForm::SetIdentity() noexcept { *this = g3d_XForm(); }

void g3d_XForm::SetAxes(const g3d_Vector& x, const g3d_Vector& y, const g3d_Vector& z) noexcept {
    entries = {{{x.X(), y.X(), z.X(), 0},
                {x.Y(), y.Y(), z.Y(), 0},
                {x.Z(), y.Z(), z.Z(), 0},
                {0, 0, 0, 1}}};
}

void g3d_XForm::Transpose() noexcept {
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < row; ++column)
            std::swap(entries[row][column], entries[column][row]);
}

void g3d_XForm::Translate(double x, double y, double z) noexcept {
    for (auto& row : entries)
        row[3] = static_cast<float>(row[0] * x + row[1] * y + row[2] * z + row[3]);
}

void g3d_XForm::SetOrthographicProjection(float left, float right, float top, float bottom,
                                          float nearDistance, float farDistance) noexcept {
    const double l = left, r = right, t = top, b = bottom, n = nearDistance, f = farDistance;
    const auto entry = [](double value) { return static_cast<float>(value); };
    entries = {{{entry(2 / (r - l)), 0, 0, entry(-(r + l) / (r - l))},
                {0, entry(2 / (t - b)), 0, entry(-(t + b) / (t - b))},
                {0, 0, entry(-2 / (f - n)), entry(-(f + n) / (f - n))},
                {0, 0, 0, 1}}};
}

void g3d_XForm::SetPerspectiveProjection(float left, float right, float top, float bottom,
                                         float nearDistance, float farDistance) noexcept {
    const double l = left, r = right, t = top, b = bottom, n = nearDistance, f = farDistance;
    const auto entry = [](double value) { return static_cast<float>(value); };
    entries = {{{entry(2 * n / (r - l)), 0, entry((r + l) / (r - l)), 0},
                {0, entry(2 * n / (t - b)), entry((t + b) / (t - b)), 0},
                {0, 0, entry(-(f + n) / (f - n)), entry(-2 * f * n / (f - n))},
                {0, 0, -1, 0}}};
}
