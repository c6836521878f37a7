#include "foundation/basicutils/KTSBasOmniSSELevel.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

/// Zero until first use.
constinit std::uint64_t featureIndicator = 0;

/// A level that can be forced: the value of the variable, its display name and its highest feature.
struct Level {
    std::string_view value;
    const char* displayName;
    std::uint64_t feature;
};

constexpr Level kLevels[] = {
    {"AVX512DQ", "AVX512DQ", KTSBAS_CPU_AVX512DQ},
    {"AVX512VL", "AVX512VL", KTSBAS_CPU_AVX512VL},
    {"AVX512PF", "AVX512PF", KTSBAS_CPU_AVX512PF},
    {"AVX2", "AVX2", KTSBAS_CPU_AVX2},
    {"AVX", "AVX", KTSBAS_CPU_AVX},
    {"SSE3", "SSE 3", KTSBAS_CPU_SSE3},
    {"SSE2", "SSE 2", KTSBAS_CPU_SSE2},
    {"SSSE3", "S-SSE 3", KTSBAS_CPU_SSSE3},
    {"SSE41", "SSE 4.1", KTSBAS_CPU_SSE41},
    {"SSE42", "SSE 4.2", KTSBAS_CPU_SSE42},
    {"NONE", "NO SSE/GENERIC", KTSBAS_CPU_GENERIC},
};

std::uint64_t ReadFeatures() noexcept {
    std::uint64_t features = KTSBAS_CPU_GENERIC;
#if defined(__x86_64__) || defined(__i386__)
    __builtin_cpu_init();
    if (__builtin_cpu_supports("sse2")) features |= KTSBAS_CPU_SSE2;
    if (__builtin_cpu_supports("sse3")) features |= KTSBAS_CPU_SSE3;
    if (__builtin_cpu_supports("ssse3")) features |= KTSBAS_CPU_SSSE3;
    if (__builtin_cpu_supports("sse4.1")) features |= KTSBAS_CPU_SSE41;
    if (__builtin_cpu_supports("sse4.2")) features |= KTSBAS_CPU_SSE42;
    if (__builtin_cpu_supports("avx")) features |= KTSBAS_CPU_AVX;
    if (__builtin_cpu_supports("avx2")) features |= KTSBAS_CPU_AVX2;
    if (__builtin_cpu_supports("avx512pf")) features |= KTSBAS_CPU_AVX512PF;
    if (__builtin_cpu_supports("avx512vl")) features |= KTSBAS_CPU_AVX512VL;
    if (__builtin_cpu_supports("avx512dq")) features |= KTSBAS_CPU_AVX512DQ;
#endif
    return features;
}

const Level* FindLevel(std::string_view value) noexcept {
    for (const Level& level : kLevels) {
        if (level.value == value) return &level;
    }
    return nullptr;
}

void PutNotifiedIntoEnvironment() {
#if defined(_WIN32)
    _putenv("ZRX_SSE_LEVEL_NOTIFIED=1");
#else
    setenv("ZRX_SSE_LEVEL_NOTIFIED", "1", 1);
#endif
}

}  // namespace

constinit std::uint64_t KTSBasOmniUsableFeatures = 0;

std::uint64_t KTSBasOmniFeatureIndicator() noexcept {
    if (featureIndicator == 0) featureIndicator = ReadFeatures();
    return featureIndicator;
}

std::uint64_t KTSBasOmniReadUsableFeatures() noexcept {
    if (KTSBasOmniUsableFeatures == 0) {
        KTSBasOmniUsableFeatures = KTSBasOmniFeatureIndicator() & ReadFeatures();
    }
    return KTSBasOmniUsableFeatures;
}

void KTSBasOmniSetSSELevel() {
    const char* const value = std::getenv("ZRX_SSE_LEVEL");
    if (!value) return;
    const bool notified = std::getenv("ZRX_SSE_LEVEL_NOTIFIED") != nullptr;
    featureIndicator = ReadFeatures();
    KTSBasOmniUsableFeatures = featureIndicator;
    if (notified) {
        std::fprintf(stderr, "--- INTEL_CPU_FEATURE_INDICATOR : %llx\n",
                     static_cast<unsigned long long>(featureIndicator));
    }
    const Level* const level = FindLevel(value);
    if (!level) return;
    // The level's own bit and all below it.
    featureIndicator = level->feature | (level->feature - 1);
    KTSBasOmniUsableFeatures &= featureIndicator;
    if (!notified) return;
    std::fprintf(stderr, ">>> SSE LEVEL OVERRIDE! ENFORCED LEVEL: %s\n", level->displayName);
    std::fprintf(stderr, ">>> INTEL_CPU_FEATURE_INDICATOR : %llx\n",
                 static_cast<unsigned long long>(featureIndicator));
    PutNotifiedIntoEnvironment();
}
