#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace sample {

inline float Real(int value) { return static_cast<float>(value); }
inline int Whole(float value) { return static_cast<int>(std::floor(value)); }
inline float Lerp(float from, float to, float t) { return from + (to - from) * t; }
inline float Clamp01(float value) { return std::clamp(value, 0.0f, 1.0f); }

// 0 below `from`, 1 above `to`, a smooth curve between. `from` above `to` turns the curve round.
inline float Smooth(float from, float to, float value) {
    const float t = Clamp01((value - from) / (to - from));
    return t * t * (3.0f - 2.0f * t);
}

// A colour in linear light: 1 is paper white, lamps and the sun go far above it. The scenes mix light,
// not screen values, so that glow, haze and blur come out as a lens would give them.
struct Colour {
    float r = 0;
    float g = 0;
    float b = 0;
};

// A colour and how much of what lies below it is covered.
struct Tint {
    Colour colour;
    float alpha = 1;
    Tint(Colour c, float a = 1) : colour(c), alpha(a) {}
};

inline Colour operator+(Colour a, Colour b) { return {a.r + b.r, a.g + b.g, a.b + b.b}; }
inline Colour operator*(Colour a, float k) { return {a.r * k, a.g * k, a.b * k}; }
inline Colour operator*(Colour a, Colour b) { return {a.r * b.r, a.g * b.g, a.b * b.b}; }
inline Colour Mix(Colour a, Colour b, float t) {
    return {Lerp(a.r, b.r, t), Lerp(a.g, b.g, t), Lerp(a.b, b.b, t)};
}
inline float Luminance(Colour c) { return 0.2126f * c.r + 0.7152f * c.g + 0.0722f * c.b; }

// The linear colour of a screen colour 0xRRGGBB.
inline Colour Hex(std::uint32_t rgb) {
    auto linear = [](std::uint32_t byte) {
        const float v = static_cast<float>(byte & 0xFF) / 255.0f;
        return v <= 0.04045f ? v / 12.92f : std::pow((v + 0.055f) / 1.055f, 2.4f);
    };
    return {linear(rgb >> 16), linear(rgb >> 8), linear(rgb)};
}

// Hue in turns (0 red, 1/3 green, 2/3 blue), saturation and value of the screen colour; linear result.
inline Colour Hsv(float hue, float saturation, float value) {
    auto channel = [&](float shift) {
        const float k = std::fmod(shift + (hue - std::floor(hue)) * 6.0f, 6.0f);
        const float v = value - value * saturation * std::clamp(std::min(k, 4.0f - k), 0.0f, 1.0f);
        return std::pow(std::max(v, 0.0f), 2.2f);
    };
    return {channel(5.0f), channel(3.0f), channel(1.0f)};
}

}  // namespace sample
