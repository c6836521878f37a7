#pragma once

/// A complex number in double precision: a real and an imaginary part, both 0 by default. Equality
/// compares both parts as doubles do, so a NaN equals nothing and -0.0 equals 0.0.
class omi_complex {
  public:
    constexpr omi_complex(double realPart = 0, double imaginaryPart = 0) noexcept
        : real(realPart), imaginary(imaginaryPart) {}

    [[nodiscard]] constexpr double Real() const noexcept { return real; }
    [[nodiscard]] constexpr double Imaginary() const noexcept { return imaginary; }

    friend constexpr bool operator==(const omi_complex&, const omi_complex&) noexcept = default;

  private:
    double real;
    double imaginary;
};
