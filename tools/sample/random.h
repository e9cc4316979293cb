#pragma once

#include <cstdint>

namespace sample {

// The same numbers for the same seed on every machine; the standard distributions do not promise that.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15ull + 0x632BE59BD9B4E019ull) {}

    std::uint32_t Next() {
        state_ += 0x9E3779B97F4A7C15ull;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return static_cast<std::uint32_t>((z ^ (z >> 31)) >> 32);
    }
    // 0 up to, not including, 1.
    float Unit() { return static_cast<float>(Next() >> 8) * (1.0f / 16777216.0f); }
    float Range(float from, float to) { return from + (to - from) * Unit(); }
    // Both ends included.
    int Pick(int from, int to) {
        const auto span = static_cast<std::uint32_t>(to - from + 1);
        return from + static_cast<int>((static_cast<std::uint64_t>(Next()) * span) >> 32);
    }
    bool Chance(float probability) { return Unit() < probability; }
    // About -1 to 1, mostly near 0.
    float Bell() { return (Unit() + Unit() + Unit() + Unit() - 2.0f) * 0.5f; }

private:
    std::uint64_t state_;
};

}  // namespace sample
