#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

#include "foundation/coreutils/atr_String.h"
#include "g3d/g3d_Point.h"
#include "g3d/g3d_XForm.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_Point.h"
#include "testing/test_Random.h"
#include "utf/utf_EngineeringData.h"

/// Prints what the fixed set computes, one result a line, for the comparison of platforms:
///
///     exact NAME VALUE...        must be the same everywhere
///     near NAME SIZE VALUE...    passed through a function of the C library's mathematics: within
///                                4 units in the last place of the larger of SIZE and the value
///
/// SIZE is the magnitude of the largest operand of the last rounding, 0 for the value itself. A
/// NAME of "near" is one word. Floating-point values are bit patterns in hexadecimal (8 digits for
/// a float, 16 for a double; "nan" for every NaN), so that no formatting of theirs takes part.
class same_Report {
  public:
    /// `kindAndName` is one of the above, such as "exact gsl_Vector".
    template <class... Values>
    void Print(const char* kindAndName, const Values&... values) {
        line = kindAndName;
        (Add(values), ...);
        std::puts(line.c_str());
    }

  private:
    void Add(double x) { AddBits(atr(" %016x", std::bit_cast<std::uint64_t>(x)), std::isnan(x)); }
    void Add(float x) { AddBits(atr(" %08x", std::bit_cast<std::uint32_t>(x)), std::isnan(x)); }
    void AddBits(const cow_String& hex, bool isNaN) { line += isNaN ? " nan" : hex.Characters(); }
    void Add(std::integral auto value) { line += ' ' + std::to_string(value); }
    void Add(const gsl_Point& p) { Add({p[0], p[1], p[2]}); }
    void Add(const gsl_Vector& v) { Add({v[0], v[1], v[2]}); }
    void Add(const g3d_Point& p) { Add({p.X(), p.Y(), p.Z(), p.W()}); }
    void Add(const g3d_Vector& v) { Add({v.X(), v.Y(), v.Z()}); }
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
    void Add(const cow_String& text) {
        line += ' ';
        for (const unsigned char c : text.View()) {
            line += atr(c >= ' ' && c <= '~' ? "%c" : "\\%02x", c).Characters();
        }
    }

    std::string line;
};

/// A coordinate that often meets another one, a plane or a tolerance.
inline double same_Coordinate(test_Random& random) {
    const int kind = random.Below(4);
    if (kind == 0) return random.Below(5) - 2;
    if (kind == 1) return random.Between(-1000, 1000);
    return std::ldexp(random.Between(-1, 1), kind == 2 ? 0 : random.Below(41) - 20);
}
inline gsl_Vector same_Vector(test_Random& random) {
    // Braces: their elements are evaluated in order, arguments in parentheses in any.
    return gsl_Vector{same_Coordinate(random), same_Coordinate(random), same_Coordinate(random)};
}
inline gsl_Point same_Point(test_Random& random) { return gsl_Point() + same_Vector(random); }

// The parts of the fixed set.

void same_Texts(same_Report& report);
void same_Geometry(same_Report& report);
void same_View(same_Report& report);
/// Mementos in `folder`, a file each, written here or by another platform: reports what readers say
/// of each when it is cut short. False when one has not the bytes that are written here, or has
/// others when it is read and saved anew.
bool same_Mementos(same_Report& report, const std::string& folder, bool areWrittenHere);
