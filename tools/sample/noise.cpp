#include "noise.h"

#include <cmath>

namespace sample {

Rng::Rng(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15ull + 0x632BE59BD9B4E019ull) {}

std::uint32_t Rng::Next() {
    state_ += 0x9E3779B97F4A7C15ull;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return static_cast<std::uint32_t>((z ^ (z >> 31)) >> 32);
}

float Rng::Unit() { return static_cast<float>(Next() >> 8) * (1.0f / 16777216.0f); }
float Rng::Range(float from, float to) { return from + (to - from) * Unit(); }

int Rng::Pick(int from, int to) {
    const auto span = static_cast<std::uint32_t>(to - from + 1);
    return from + static_cast<int>((static_cast<std::uint64_t>(Next()) * span) >> 32);
}

bool Rng::Chance(float probability) { return Unit() < probability; }
float Rng::Bell() { return (Unit() + Unit() + Unit() + Unit() - 2.0f) * 0.5f; }

std::uint32_t Hash(std::int32_t x, std::int32_t y, std::uint32_t seed) {
    std::uint32_t h = static_cast<std::uint32_t>(x) * 0x8DA6B343u +
                      static_cast<std::uint32_t>(y) * 0xD8163841u + seed * 0xCB1AB31Fu;
    h = (h ^ (h >> 15)) * 0x2C1B3C6Du;
    h = (h ^ (h >> 12)) * 0x297A2D39u;
    return h ^ (h >> 15);
}

float HashUnit(std::int32_t x, std::int32_t y, std::uint32_t seed) {
    return static_cast<float>(Hash(x, y, seed) >> 8) * (1.0f / 16777216.0f);
}

float Noise(float x, float y, std::uint32_t seed) {
    const float fx = std::floor(x);
    const float fy = std::floor(y);
    const auto ix = static_cast<std::int32_t>(fx);
    const auto iy = static_cast<std::int32_t>(fy);
    const float tx = x - fx;
    const float ty = y - fy;
    const float sx = tx * tx * tx * (tx * (tx * 6.0f - 15.0f) + 10.0f);
    const float sy = ty * ty * ty * (ty * (ty * 6.0f - 15.0f) + 10.0f);
    const float top = HashUnit(ix, iy, seed) * (1.0f - sx) + HashUnit(ix + 1, iy, seed) * sx;
    const float bottom = HashUnit(ix, iy + 1, seed) * (1.0f - sx) + HashUnit(ix + 1, iy + 1, seed) * sx;
    return top + (bottom - top) * sy;
}

namespace {

// The turn between two layers: a 3-4-5 triangle, doubled in size.
void Turn(float& x, float& y) {
    const float tx = 1.6f * x - 1.2f * y + 17.3f;
    y = 1.2f * x + 1.6f * y + 5.1f;
    x = tx;
}

}  // namespace

float Fbm(float x, float y, int octaves, std::uint32_t seed) {
    float sum = 0;
    float weight = 0.5f;
    float total = 0;
    for (int i = 0; i < octaves; ++i) {
        sum += weight * Noise(x, y, seed + static_cast<std::uint32_t>(i));
        total += weight;
        weight *= 0.5f;
        Turn(x, y);
    }
    return sum / total;
}

float Ridged(float x, float y, int octaves, std::uint32_t seed) {
    float sum = 0;
    float weight = 0.5f;
    float total = 0;
    for (int i = 0; i < octaves; ++i) {
        const float crest = 1.0f - std::fabs(2.0f * Noise(x, y, seed + static_cast<std::uint32_t>(i)) - 1.0f);
        sum += weight * crest * crest;
        total += weight;
        weight *= 0.5f;
        Turn(x, y);
    }
    return sum / total;
}

}  // namespace sample
