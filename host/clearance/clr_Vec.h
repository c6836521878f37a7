#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

/// A point or vector of the clearance check: three doubles side by side and nothing else, since the
/// check walks over millions of them.
struct clr_Vec {
    double x = 0;
    double y = 0;
    double z = 0;

    friend clr_Vec operator+(const clr_Vec& a, const clr_Vec& b) noexcept {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend clr_Vec operator-(const clr_Vec& a, const clr_Vec& b) noexcept {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend clr_Vec operator*(double factor, const clr_Vec& v) noexcept {
        return {factor * v.x, factor * v.y, factor * v.z};
    }
};

[[nodiscard]] inline double clr_Dot(const clr_Vec& a, const clr_Vec& b) noexcept {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
[[nodiscard]] inline clr_Vec clr_Cross(const clr_Vec& a, const clr_Vec& b) noexcept {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
[[nodiscard]] inline double clr_LengthSq(const clr_Vec& v) noexcept { return clr_Dot(v, v); }
[[nodiscard]] inline double clr_Length(const clr_Vec& v) noexcept {
    return std::sqrt(clr_LengthSq(v));
}

/// The corners of a triangle; counter-clockwise as seen from outside the part.
using clr_Triangle = std::array<clr_Vec, 3>;

struct clr_Ball {
    clr_Vec center;
    double radius = 0;
};

/// An axis-aligned box; empty (low above high) until something is added.
struct clr_Box {
    clr_Vec low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                std::numeric_limits<double>::infinity()};
    clr_Vec high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                 -std::numeric_limits<double>::infinity()};

    void Add(const clr_Vec& p) noexcept {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    void Add(const clr_Box& box) noexcept {
        Add(box.low);
        Add(box.high);
    }
    [[nodiscard]] bool Contains(const clr_Vec& p) const noexcept {
        return p.x >= low.x && p.x <= high.x && p.y >= low.y && p.y <= high.y && p.z >= low.z &&
               p.z <= high.z;
    }
    [[nodiscard]] bool Contains(const clr_Ball& ball) const noexcept {
        const clr_Vec reach{ball.radius, ball.radius, ball.radius};
        return Contains(ball.center - reach) && Contains(ball.center + reach);
    }
    [[nodiscard]] double DiagonalSq() const noexcept { return clr_LengthSq(high - low); }

    /// The ball through the corners, with room for rounding, also of the middle of a small box far
    /// from the origin.
    [[nodiscard]] clr_Ball CircumscribedBall() const noexcept {
        constexpr double kRoom = 1 + 1e-12;
        const clr_Vec middle = 0.5 * (low + high);
        const clr_Vec up = high - middle;
        const clr_Vec down = middle - low;
        const clr_Vec reach{std::max(up.x, down.x), std::max(up.y, down.y), std::max(up.z, down.z)};
        return {middle, kRoom * clr_Length(reach)};
    }

    /// The squared distance of the nearest points of two boxes, 0 when they meet.
    [[nodiscard]] double DistanceSq(const clr_Box& other) const noexcept {
        return clr_LengthSq({Gap(low.x, high.x, other.low.x, other.high.x),
                             Gap(low.y, high.y, other.low.y, other.high.y),
                             Gap(low.z, high.z, other.low.z, other.high.z)});
    }
    /// The squared distance of `p` from the box, 0 inside.
    [[nodiscard]] double DistanceSq(const clr_Vec& p) const noexcept {
        return DistanceSq(clr_Box{p, p});
    }

  private:
    static double Gap(double lowA, double highA, double lowB, double highB) noexcept {
        return std::max(std::max(lowA - highB, lowB - highA), 0.0);
    }
};
