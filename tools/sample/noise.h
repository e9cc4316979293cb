#pragma once

#include <cstdint>

namespace sample {

// The same numbers for the same seed on every machine; the standard distributions do not promise that.
class Rng {
public:
    explicit Rng(std::uint64_t seed);

    std::uint32_t Next();
    float Unit();  // 0 up to, not including, 1
    float Range(float from, float to);
    int Pick(int from, int to);  // both ends included
    bool Chance(float probability);
    float Bell();  // about -1 to 1, mostly near 0

private:
    std::uint64_t state_;
};

// Whitened hash of a lattice point.
std::uint32_t Hash(std::int32_t x, std::int32_t y, std::uint32_t seed);
float HashUnit(std::int32_t x, std::int32_t y, std::uint32_t seed);

// Smooth random field, 0 to 1, one feature a unit.
float Noise(float x, float y, std::uint32_t seed);

// Layers of Noise, each of twice the frequency and half the weight, turned against each other so that
// the lattice does not show. 0 to 1, mostly around 0.5.
float Fbm(float x, float y, int octaves, std::uint32_t seed);

// Fbm folded at its middle: sharp crests. 0 to 1.
float Ridged(float x, float y, int octaves, std::uint32_t seed);

}  // namespace sample
