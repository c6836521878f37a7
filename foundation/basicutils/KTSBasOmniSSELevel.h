#pragma once

#include <cstdint>

#include "foundation/basicutils/KTSOvuBasicUtilsExport.h"

/// The features of the processor that numeric code may use, as a set of bits. The order of the bits
/// follows the levels, so that a higher level has more of the low bits set.
enum KTSBasCpuFeatureEnm : std::uint64_t {
    KTSBAS_CPU_GENERIC = 1u << 0,
    KTSBAS_CPU_SSE2 = 1u << 1,
    KTSBAS_CPU_SSE3 = 1u << 2,
    KTSBAS_CPU_SSSE3 = 1u << 3,
    KTSBAS_CPU_SSE41 = 1u << 4,
    KTSBAS_CPU_SSE42 = 1u << 5,
    KTSBAS_CPU_AVX = 1u << 6,
    KTSBAS_CPU_AVX2 = 1u << 7,
    KTSBAS_CPU_AVX512PF = 1u << 8,
    KTSBAS_CPU_AVX512VL = 1u << 9,
    KTSBAS_CPU_AVX512DQ = 1u << 10,
};

/// The feature indicator of the numeric runtime: read from the processor on first use, replaced by
/// `KTSBasOmniSetSSELevel`.
[[nodiscard]] KTSOVUBASICUTILS_API std::uint64_t KTSBasOmniFeatureIndicator() noexcept;

/// The features of the indicator that the processor has, 0 before they are first asked for.
KTSOVUBASICUTILS_API extern std::uint64_t KTSBasOmniUsableFeatures;

/// Reads the processor when nobody has yet, and answers `KTSBasOmniUsableFeatures`.
KTSOVUBASICUTILS_API std::uint64_t KTSBasOmniReadUsableFeatures() noexcept;

/// True when numeric code may use `feature` now: the indicator allows it and the processor has it.
/// Costs a load and a test, so that a choice can be made in every call.
[[nodiscard]] inline bool KTSBasOmniMayUse(KTSBasCpuFeatureEnm feature) noexcept {
    const std::uint64_t usable =
        KTSBasOmniUsableFeatures != 0 ? KTSBasOmniUsableFeatures : KTSBasOmniReadUsableFeatures();
    return (usable & feature) != 0;
}

/// Forces the feature indicator to the level named by the environment variable ZRX_SSE_LEVEL;
/// nothing when it is unset.
///
/// The indicator is first read again from the processor. Levels: "AVX512DQ", "AVX512VL",
/// "AVX512PF", "AVX2", "AVX", "SSE3", "SSE2", "SSSE3", "SSE41", "SSE42", and "NONE" for generic
/// code; another value leaves the indicator as read. A level can be forced above what the processor
/// has: numeric code uses the smaller of both.
///
/// Kept: an override is told on standard error only when ZRX_SSE_LEVEL_NOTIFIED is already set (to
/// anything), and only then is that variable set to 1. One would expect the first override to be
/// told and later ones to be silent; start scripts rely on the quiet start.
KTSOVUBASICUTILS_API void KTSBasOmniSetSSELevel();
