#pragma once

#include <cstdint>
#include <random>

/// Random numbers that repeat exactly on every platform: the standard engine with a fixed seed and
/// mappings of its own (the standard distributions differ between vendors).
class test_Random {
  public:
    explicit test_Random(std::uint64_t seed) : engine(seed) {}

    [[nodiscard]] std::uint64_t Next() { return engine(); }
    /// An integer in [0, n). REQUIRES: n > 0.
    [[nodiscard]] int Below(int n) {
        return static_cast<int>(engine() % static_cast<std::uint64_t>(n));
    }
    /// A double in [low, high).
    [[nodiscard]] double Between(double low, double high) {
        return low + (high - low) * (static_cast<double>(engine() >> 11) * 0x1p-53);
    }

  private:
    std::mt19937_64 engine;
};
