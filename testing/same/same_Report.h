#pragma once

#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "foundation/coreutils/atr_String.h"
#include "g3d/g3d_Point.h"
#include "g3d/g3d_XForm.h"
#include "gsl/gsl_BBox.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_Point.h"
#include "gsl/gsl_Vector.h"
#include "testing/test_Random.h"
#include "utf/utf_EngineeringData.h"

/// Prints what the fixed set computes, one result a line, for the comparison of platforms:
///
///     exact NAME VALUE...        must be the same everywhere
///     near NAME SIZE VALUE...    passed through a function of the C library's mathematics: within
///                                4 units in the last place of the larger of SIZE and the value
///
/// Floating-point values are bit patterns in hexadecimal (8 digits for a float, 16 for a double;
/// "nan" for every NaN, whose bits mean nothing), so that no formatting of theirs takes part.
class same_Report {
  public:
    template <class... Values>
    void Exact(const char* name, const Values&... values) {
        line = std::string("exact ") + name;
        (Add(values), ...);
        std::puts(line.c_str());
    }
    /// `size` is the magnitude of the largest operand of the last rounding, 0 for the value itself.
    template <std::floating_point Real, class... Values>
    void Near(const char* name, Real size, const Values&... values) {
        line = std::string("near ") + name;
        Add(size);
        (Add(values), ...);
        std::puts(line.c_str());
    }

  private:
    void Add(double value) {
        AddBits(atr(" %016x", std::bit_cast<std::uint64_t>(value)), std::isnan(value));
    }
    void Add(float value) {
        AddBits(atr(" %08x", std::bit_cast<std::uint32_t>(value)), std::isnan(value));
    }
    void Add(std::integral auto value) { line += ' ' + std::to_string(value); }
    void Add(const cow_String& text) { AddText(text.View()); }
    void Add(const std::string& text) { AddText(text); }
    void Add(const gsl_Point& p) { AddAll(p.GetX(), p.GetY(), p.GetZ()); }
    void Add(const gsl_Vector& v) { AddAll(v.DeltaX(), v.DeltaY(), v.DeltaZ()); }
    void Add(const gsl_BBox& box) { AddAll(box.Low(), box.High()); }
    void Add(const g3d_Point& p) { AddAll(p.X(), p.Y(), p.Z(), p.W()); }
    void Add(const g3d_Vector& v) { AddAll(v.X(), v.Y(), v.Z()); }
    void Add(const gsl_Matrix& matrix) {
        double entries[4][4];
        matrix.AsArray(entries);
        Add(entries);
    }
    void Add(const g3d_XForm& form) {
        for (int i = 0; i < 16; ++i) Add(form(i / 4, i % 4));
    }
    template <class T>
    void Add(const utf_EngineeringData<T>& data) {
        for (int i = 0; i < data.numComponents(); ++i) Add(data.Components()[i]);
    }
    template <class T, std::size_t n>
    void Add(const T (&values)[n]) {
        for (const T& value : values) Add(value);
    }
    template <class... Values>
    void AddAll(const Values&... values) {
        (Add(values), ...);
    }

    void AddBits(const cow_String& hex, bool isNaN) { line += isNaN ? " nan" : hex.Characters(); }
    /// In quotes; what is not plain ASCII stands as \xx.
    void AddText(std::string_view text) {
        line += " \"";
        for (const char c : text) {
            const bool plain = c >= ' ' && c <= '~' && c != '\\';
            line += plain ? std::string(1, c)
                          : atr("\\%02x", static_cast<unsigned char>(c)).Characters();
        }
        line += '"';
    }

    std::string line;
};

/// A coordinate that often meets another one, a plane or a tolerance.
inline double same_Coordinate(test_Random& random) {
    switch (random.Below(4)) {
        case 0:
            return random.Below(5) - 2;
        case 1:
            return random.Between(-1, 1);
        case 2:
            return random.Between(-1000, 1000);
        default:
            return std::ldexp(random.Between(-1, 1), random.Below(41) - 20);
    }
}
inline gsl_Vector same_Vector(test_Random& random) {
    // Braces: their elements are evaluated in order, arguments in parentheses in any.
    return gsl_Vector{same_Coordinate(random), same_Coordinate(random), same_Coordinate(random)};
}
inline gsl_Point same_Point(test_Random& random) { return gsl_Point() + same_Vector(random); }

/// The parts of the fixed set. The texts come first: their traces are switched on by variables that
/// are read once.
void same_Texts(same_Report& report);
void same_Geometry(same_Report& report);
void same_Boxes(same_Report& report);
void same_Rotations(same_Report& report);
void same_View(same_Report& report);

/// Writes the mementos of the fixed set into `folder`, a file each, and reports what readers say of
/// each when it is cut short.
void same_WriteMementos(same_Report& report, const std::string& folder);
/// Reads those in `folder` and saves each anew; false when the bytes differ from those written
/// here.
bool same_ReadMementos(same_Report& report, const std::string& folder);
