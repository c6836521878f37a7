#pragma once

#include <cmath>

#include "g3d/g3d_Point.h"

/// Three doubles: the place or direction that the view layer computes with before it rounds to
/// single precision.
struct g3d_Double3 {
    double x = 0;
    double y = 0;
    double z = 0;

    constexpr g3d_Double3() noexcept = default;
    constexpr g3d_Double3(double cx, double cy, double cz) noexcept : x(cx), y(cy), z(cz) {}
    constexpr g3d_Double3(const g3d_Vector& v) noexcept : x(v.X()), y(v.Y()), z(v.Z()) {}
    /// The place of `p`: its coordinates, divided by w when that is neither 0 nor 1.
    constexpr g3d_Double3(const g3d_Point& p) noexcept : x(p.X()), y(p.Y()), z(p.Z()) {
        if (p.W() != 0 && p.W() != 1) {
            x /= p.W();
            y /= p.W();
            z /= p.W();
        }
    }

    friend constexpr bool operator==(const g3d_Double3&, const g3d_Double3&) noexcept = default;
    friend constexpr g3d_Double3 operator+(const g3d_Double3& a, const g3d_Double3& b) noexcept {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend constexpr g3d_Double3 operator-(const g3d_Double3& a, const g3d_Double3& b) noexcept {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend constexpr g3d_Double3 operator*(const g3d_Double3& a, double factor) noexcept {
        return {a.x * factor, a.y * factor, a.z * factor};
    }

    [[nodiscard]] constexpr double Dot(const g3d_Double3& b) const noexcept {
        return x * b.x + y * b.y + z * b.z;
    }
    [[nodiscard]] constexpr g3d_Double3 Cross(const g3d_Double3& b) const noexcept {
        return {y * b.z - z * b.y, z * b.x - x * b.z, x * b.y - y * b.x};
    }
    [[nodiscard]] double Length() const noexcept { return std::sqrt(Dot(*this)); }

    /// Scales to length 1; a zero or non-finite length leaves the value and answers false.
    bool Normalize() noexcept {
        const double length = Length();
        if (!(length > 0) || !std::isfinite(length)) return false;
        x /= length;
        y /= length;
        z /= length;
        return true;
    }

    [[nodiscard]] g3d_Vector AsVector() const noexcept {
        return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
    }
    [[nodiscard]] g3d_Point AsPoint() const noexcept {
        return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
    }
};
