#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <utility>

#include "utf/utf_ArrayC.h"

namespace {

std::size_t Count(const int* n) { return *n > 0 ? static_cast<std::size_t>(*n) : 0; }

struct SymmetricTensor {
    double entry[3][3] = {};
    double direction[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};  // column k: direction of value k
};

SymmetricTensor Unpack(const double* tensor, int ndi, int nshr) {
    constexpr int shearRow[] = {0, 0, 1};
    constexpr int shearColumn[] = {1, 2, 2};
    SymmetricTensor s;
    for (int i = 0; i < ndi; ++i) s.entry[i][i] = tensor[i];
    for (int i = 0; i < nshr; ++i) {
        s.entry[shearRow[i]][shearColumn[i]] = tensor[ndi + i];
        s.entry[shearColumn[i]][shearRow[i]] = tensor[ndi + i];
    }
    return s;
}

/// Zeroes entry (p, q) by the smaller of the two rotations that do.
void Rotate(SymmetricTensor& s, int p, int q) {
    const double apq = s.entry[p][q];
    if (apq == 0) return;
    const double theta = (s.entry[q][q] - s.entry[p][p]) / (2 * apq);
    // From here on theta * theta swallows the 1, and far beyond it overflows.
    constexpr double kLarge = 0x1p27;
    const double size = std::fabs(theta);
    const double root = size < kLarge ? std::sqrt(theta * theta + 1) : size;
    const double t = std::copysign(1 / (size + root), theta);
    const double c = 1 / std::sqrt(t * t + 1);
    const double sine = t * c;
    s.entry[p][p] -= t * apq;
    s.entry[q][q] += t * apq;
    s.entry[p][q] = s.entry[q][p] = 0;
    const int r = 3 - p - q;
    const double arp = s.entry[r][p];
    const double arq = s.entry[r][q];
    s.entry[r][p] = s.entry[p][r] = c * arp - sine * arq;
    s.entry[r][q] = s.entry[q][r] = sine * arp + c * arq;
    for (auto& row : s.direction) {
        const double vp = row[p];
        const double vq = row[q];
        row[p] = c * vp - sine * vq;
        row[q] = sine * vp + c * vq;
    }
}

/// A few sweeps do (convergence is quadratic); the bound only excludes an endless loop.
void Diagonalise(SymmetricTensor& s) {
    constexpr int maxSweeps = 32;
    for (int sweep = 0; sweep < maxSweeps; ++sweep) {
        if (s.entry[0][1] == 0 && s.entry[0][2] == 0 && s.entry[1][2] == 0) return;
        Rotate(s, 0, 1);
        Rotate(s, 0, 2);
        Rotate(s, 1, 2);
    }
}

}  // namespace

void utf_copy(const double* source, double* target, const int* n) {
    if (*n > 0) std::memmove(target, source, Count(n) * sizeof(double));
}

void utf_aset(double* a, const double* value, const int* n) { std::fill_n(a, Count(n), *value); }

void utf_aprd(const double* a, const double* b, double* c, const int* l, const int* m,
              const int* n) {
    const std::size_t rows = Count(l);
    const std::size_t inner = Count(m);
    const std::size_t columns = Count(n);
    std::fill_n(c, rows * columns, 0.0);
    for (std::size_t j = 0; j < columns; ++j) {
        for (std::size_t k = 0; k < inner; ++k) {
            const double factor = b[k + inner * j];
            for (std::size_t i = 0; i < rows; ++i) c[i + rows * j] += a[i + rows * k] * factor;
        }
    }
}

void utf_atra(const double* a, double* b, const int* m, const int* n) {
    const std::size_t rows = Count(m);
    const std::size_t columns = Count(n);
    for (std::size_t j = 0; j < columns; ++j) {
        for (std::size_t i = 0; i < rows; ++i) b[j + columns * i] = a[i + rows * j];
    }
}

void utf_axprd(const double* a, const double* b, double* c) {
    const double x = a[1] * b[2] - a[2] * b[1];
    const double y = a[2] * b[0] - a[0] * b[2];
    const double z = a[0] * b[1] - a[1] * b[0];
    c[0] = x;
    c[1] = y;
    c[2] = z;
}

void utf_asortd(double* values, double* directions, const int* n) {
    const int count = std::clamp(*n, 0, 3);
    for (int last = count - 1; last > 0; --last) {
        for (int k = 0; k < last; ++k) {
            if (!(values[k] < values[k + 1])) continue;
            std::swap(values[k], values[k + 1]);
            std::swap_ranges(directions + 3 * k, directions + 3 * k + 3, directions + 3 * k + 3);
        }
    }
}

void utf_sprind(const double* tensor, double* values, double* directions, const int* /*selector*/,
                const int* ndi, const int* nshr) {
    SymmetricTensor s = Unpack(tensor, std::clamp(*ndi, 0, 3), std::clamp(*nshr, 0, 3));
    double largest = 0;
    bool finite = true;
    for (const auto& row : s.entry) {
        for (const double entry : row) {
            largest = std::max(largest, std::fabs(entry));
            finite = finite && std::isfinite(entry);
        }
    }
    int exponent = 0;
    if (finite && largest > 0) {
        std::frexp(largest, &exponent);
        for (auto& row : s.entry) {
            for (double& entry : row) entry = std::ldexp(entry, -exponent);
        }
        Diagonalise(s);
    }
    for (int k = 0; k < 3; ++k) {
        values[k] =
            finite ? std::ldexp(s.entry[k][k], exponent) : std::numeric_limits<double>::quiet_NaN();
        for (int i = 0; i < 3; ++i) directions[k + 3 * i] = s.direction[i][k];
    }
}
