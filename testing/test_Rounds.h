#pragma once

/// How often a test repeats itself: a tenth under the sanitizers, whose runs take many times longer
/// and look at each step more closely.
[[nodiscard]] constexpr int test_Rounds(int rounds) {
#if defined(__SANITIZE_ADDRESS__)
    return rounds / 10;
#else
    return rounds;
#endif
}
