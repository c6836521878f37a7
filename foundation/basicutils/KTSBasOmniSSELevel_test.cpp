#include "foundation/basicutils/KTSBasOmniSSELevel.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <optional>
#include <string>

#include "foundation/coreutils/atr_String.h"

namespace {

constexpr char kLevel[] = "ZRX_SSE_LEVEL";
constexpr char kNotified[] = "ZRX_SSE_LEVEL_NOTIFIED";

void SetVariable(const char* name, const std::optional<std::string>& value) {
#if defined(_WIN32)
    _putenv((std::string(name) + "=" + value.value_or("")).c_str());
#else
    if (value) {
        setenv(name, value->c_str(), 1);
    } else {
        unsetenv(name);
    }
#endif
}

/// What the switch prints when the variables have these values.
std::string Printed(const std::optional<std::string>& level,
                    const std::optional<std::string>& notified) {
    SetVariable(kLevel, level);
    SetVariable(kNotified, notified);
    testing::internal::CaptureStderr();
    KTSBasOmniSetSSELevel();
    return testing::internal::GetCapturedStderr();
}

std::string IndicatorLine(const char* head, std::uint64_t indicator) {
    return std::string(atr("%s INTEL_CPU_FEATURE_INDICATOR : %llx\n", head, indicator).View());
}

class KTSBasOmniSSELevelTest : public testing::Test {
  protected:
    void TearDown() override {
        Printed("", {});
        SetVariable(kLevel, {});
    }
    /// The indicator as the processor gives it: an unknown level leaves it as read.
    std::uint64_t AsRead() {
        Printed("unknown", {});
        return KTSBasOmniFeatureIndicator();
    }
};

TEST_F(KTSBasOmniSSELevelTest, EveryLevelIsForcedUnderItsDisplayName) {
    const struct {
        const char *value, *displayName;
        std::uint64_t highest;
    } levels[] = {{"NONE", "NO SSE/GENERIC", KTSBAS_CPU_GENERIC},
                  {"SSE2", "SSE 2", KTSBAS_CPU_SSE2},
                  {"SSE3", "SSE 3", KTSBAS_CPU_SSE3},
                  {"SSSE3", "S-SSE 3", KTSBAS_CPU_SSSE3},
                  {"SSE41", "SSE 4.1", KTSBAS_CPU_SSE41},
                  {"SSE42", "SSE 4.2", KTSBAS_CPU_SSE42},
                  {"AVX", "AVX", KTSBAS_CPU_AVX},
                  {"AVX2", "AVX2", KTSBAS_CPU_AVX2},
                  {"AVX512PF", "AVX512PF", KTSBAS_CPU_AVX512PF},
                  {"AVX512VL", "AVX512VL", KTSBAS_CPU_AVX512VL},
                  {"AVX512DQ", "AVX512DQ", KTSBAS_CPU_AVX512DQ}};
    const std::uint64_t asRead = AsRead();
    for (const auto& level : levels) {
        const std::string printed = Printed(level.value, "0");
        EXPECT_EQ(printed, IndicatorLine("---", asRead) +
                               ">>> SSE LEVEL OVERRIDE! ENFORCED LEVEL: " + level.displayName +
                               "\n" + IndicatorLine(">>>", KTSBasOmniFeatureIndicator()));
        EXPECT_EQ(std::bit_floor(KTSBasOmniFeatureIndicator()), level.highest);
        EXPECT_STREQ(std::getenv(kNotified), "1");
    }
}

TEST_F(KTSBasOmniSSELevelTest, AnUnknownLevelKeepsTheIndicatorAsReadAndAnUnsetOneDoesNothing) {
    const std::uint64_t asRead = AsRead();
    Printed("NONE", {});
    EXPECT_EQ(Printed({}, "1"), "");
    EXPECT_EQ(KTSBasOmniFeatureIndicator(), KTSBAS_CPU_GENERIC);
    EXPECT_EQ(Printed("avx", "1"), IndicatorLine("---", asRead));
    EXPECT_EQ(KTSBasOmniFeatureIndicator(), asRead);
}

TEST(KTSBasOmniSSELevel_Kept, TheFirstOverrideIsSilentAndLeavesTheEnvironmentAlone) {
    EXPECT_EQ(Printed("SSE2", {}), "");
    EXPECT_EQ(std::getenv(kNotified), nullptr);
    EXPECT_EQ(std::bit_floor(KTSBasOmniFeatureIndicator()), KTSBAS_CPU_SSE2);
    SetVariable(kLevel, {});
}

}  // namespace
