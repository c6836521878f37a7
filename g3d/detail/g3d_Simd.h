#pragma once

#include <cstdint>
#include <cstring>

/// Vectors of the compilers' own kind: element-wise arithmetic that rounds as the scalar operators
/// do, on whatever registers the function at hand may use.
using g3d_Float4 = float __attribute__((vector_size(16)));
using g3d_Double4 = double __attribute__((vector_size(32)));
struct g3d_FourLanes {
    using Float = float __attribute__((vector_size(16)));
    using Int = std::int32_t __attribute__((vector_size(16)));
};
struct g3d_EightLanes {
    using Float = float __attribute__((vector_size(32)));
    using Int = std::int32_t __attribute__((vector_size(32)));
};

/// A kernel's body is one inline function, compiled into a baseline and an AVX2 function. Neither
/// fuses or reorders operations, so both give the same bits.
#define G3D_KERNEL_BODY __attribute__((always_inline)) inline
#if defined(__x86_64__)
#define G3D_AVX2_KERNEL __attribute__((target("avx2")))
#else
#define G3D_AVX2_KERNEL
#endif

/// Unaligned load and store of a vector. Vectors pass by reference: by value, their place depends
/// on the registers that the caller may use.
template <class Vector>
G3D_KERNEL_BODY void g3d_Load(Vector& value, const void* from) noexcept {
    std::memcpy(&value, from, sizeof value);
}
template <class Vector>
G3D_KERNEL_BODY void g3d_Store(void* to, const Vector& value) noexcept {
    std::memcpy(to, &value, sizeof value);
}
