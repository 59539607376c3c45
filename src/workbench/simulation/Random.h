#pragma once
// Random numbers that are the same with every compiler and library.

#include <cstdint>

namespace kvx::simulation {

class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    // From low to high, both included; low <= high.
    std::int32_t Between(std::int32_t low, std::int32_t high) {
        const auto count = static_cast<std::uint64_t>(std::int64_t{high} - low) + 1;
        return static_cast<std::int32_t>(low +
                                         static_cast<std::int64_t>(((Next() >> 32) * count) >> 32));
    }
    // True once in times.
    bool Once(std::int32_t times) { return Between(1, times) == 1; }

  private:
    // SplitMix64.
    std::uint64_t Next() {
        state_ += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return mixed ^ (mixed >> 31);
    }

    std::uint64_t state_;
};

}  // namespace kvx::simulation
