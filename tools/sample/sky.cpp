#include "sky.h"

#include <array>

namespace sample {

namespace {

struct HourOfSky {
    float hour;
    std::uint32_t zenith;
    std::uint32_t horizon;
    std::uint32_t cloudLit;
    std::uint32_t cloudShade;
    std::uint32_t light;
    std::uint32_t sun;
    float dark;
};

constexpr std::array<HourOfSky, 12> hours = {{
    {0.0f, 0x050A1E, 0x141C3A, 0x1E2746, 0x0E1430, 0x2A3560, 0x000000, 1.0f},
    {4.5f, 0x0B1538, 0x2B3566, 0x39406C, 0x1C2348, 0x39456F, 0x000000, 0.9f},
    {5.5f, 0x2B4478, 0xE8A88C, 0xF2B9A0, 0x6C6A92, 0x8F86A0, 0xC86A40, 0.4f},
    {6.5f, 0x4E7FBE, 0xFFD9A8, 0xFFE0BE, 0xA894A8, 0xE2C0A0, 0xF0A050, 0.1f},
    {8.0f, 0x3E86D2, 0xC8E2F2, 0xFFFAF0, 0xA9B8CC, 0xF6EEDF, 0xFFE0A0, 0.0f},
    {12.0f, 0x2F7BD0, 0xB8DDF4, 0xFFFFFF, 0xA6B9D0, 0xFFFCF4, 0xFFF4D8, 0.0f},
    {15.5f, 0x3D82CC, 0xCBE1EC, 0xFFF8EA, 0xA8B2C6, 0xFFF3DC, 0xFFE8B8, 0.0f},
    {17.0f, 0x4C7DBB, 0xFBE0B0, 0xFFE2B4, 0xA290A2, 0xFFD9A0, 0xFFB860, 0.0f},
    {18.0f, 0x45609E, 0xFFA860, 0xFFB478, 0x8A6A88, 0xE59A68, 0xFF7A30, 0.15f},
    {18.8f, 0x2C3A74, 0xE8705A, 0xD87468, 0x4E4370, 0x8A6478, 0xC04028, 0.45f},
    {19.6f, 0x121E4C, 0x4A4A84, 0x4A4878, 0x202850, 0x465078, 0x200818, 0.8f},
    {21.0f, 0x060C24, 0x172142, 0x222C4E, 0x0F1634, 0x2E3A66, 0x000000, 1.0f},
}};

}  // namespace

float CoverOf(const Stage& stage) {
    switch (stage.moment.weather) {
        case Weather::Clear:
            return 0.18f;
        case Weather::Fair:
            return 0.45f;
        case Weather::Cloudy:
            return 0.7f;
        case Weather::Rain:
            return 0.95f;
    }
    return 0.4f;
}

Sky SkyAt(const Stage& stage, float hour, float cover, Point sun) {
    std::size_t next = 0;
    while (next < hours.size() && hours[next].hour <= hour) {
        ++next;
    }
    const HourOfSky& a = hours[next - 1];
    const HourOfSky& b = next < hours.size() ? hours[next] : hours[0];
    const float end = next < hours.size() ? b.hour : 24.0f;
    const float t = (hour - a.hour) / (end - a.hour);
    auto between = [&](std::uint32_t from, std::uint32_t to) { return Mix(Hex(from), Hex(to), t); };
    Sky sky;
    sky.zenith = between(a.zenith, b.zenith);
    sky.horizon = between(a.horizon, b.horizon);
    sky.cloudLit = between(a.cloudLit, b.cloudLit);
    sky.cloudShade = between(a.cloudShade, b.cloudShade);
    sky.light = between(a.light, b.light);
    sky.sunLight = between(a.sun, b.sun);
    sky.dark = Lerp(a.dark, b.dark, t);
    sky.cover = cover;
    sky.sun = sun;
    if (stage.moment.weather == Weather::Cloudy || stage.moment.weather == Weather::Rain) {
        // Under a closed sky colours fade towards the grey of the clouds.
        const float grey = stage.moment.weather == Weather::Rain ? 0.75f : 0.35f;
        const Colour cloud = Mix(sky.cloudShade, sky.cloudLit, 0.35f);
        sky.zenith = Mix(sky.zenith, cloud * 0.8f, grey);
        sky.horizon = Mix(sky.horizon, cloud, grey * 0.8f);
        sky.cloudLit = Mix(sky.cloudLit, cloud, grey * 0.6f);
        sky.light = sky.light * (1.0f - 0.35f * grey);
        sky.sunLight = sky.sunLight * (1.0f - grey);
    }
    return sky;
}

void PaintSky(Stage& stage, const Sky& sky, float horizonY) {
    const float w = stage.w;
    const std::uint32_t seed = stage.Seed(11);
    const float toSunX = sky.sun.x;
    const float lift = 1.25f - sky.cover;  // the level of the field above which a cloud stands
    const float scale = stage.rng.Range(0.8f, 1.5f);
    const float drift = stage.rng.Range(0.0f, 60.0f);
    const int bottom = std::min(stage.canvas.Height(), Whole(horizonY) + 3);
    auto field = [&](float x, float y) {
        // Clouds lie on a plane overhead: towards the horizon they shrink and flatten.
        const float up = std::max(horizonY - y, 0.0f) / stage.h + 0.10f;
        const float px = (x / w - 0.5f) * 1.1f / (up * 1.3f + 0.18f) * scale + drift;
        const float py = 1.7f / (up * 1.4f + 0.12f) * scale;
        return 0.72f * Fbm(px * 1.5f, py * 1.8f, 5, seed) + 0.5f * Fbm(px * 0.6f, py * 0.8f, 2, seed + 7);
    };
    stage.canvas.Shade({0, 0, stage.canvas.Width(), bottom}, 3, [&](float x, float y) {
        const float t = std::pow(Clamp01(y / std::max(horizonY, 1.0f)), 1.35f);
        Colour c = Mix(sky.zenith, sky.horizon, t);
        const float sx = (x - sky.sun.x) / w;
        const float sy = (y - sky.sun.y) / w;
        const float distance = std::sqrt(sx * sx + sy * sy);
        c = c + sky.sunLight * (0.55f * std::exp(-distance * 5.0f) + 1.6f * std::exp(-distance * 26.0f));
        const float here = field(x, y);
        const float density = Smooth(lift - 0.38f, lift - 0.14f, here);
        if (density > 0.0f) {
            // Towards the sun; under it the light comes from above, or its column would show as a seam.
            const float step = 0.02f * w;
            const float toSun =
                field(x + step * std::clamp((toSunX - x) / (0.12f * w), -1.0f, 1.0f), y - step * 0.8f);
            const float lit = Clamp01(0.58f + (here - toSun) * 4.2f - (here - lift + 0.26f) * 0.9f);
            Colour cloud = Mix(sky.cloudShade, sky.cloudLit, lit);
            cloud = Mix(cloud, sky.horizon, 0.55f * t * t);
            cloud = cloud + sky.sunLight * (0.5f * std::exp(-distance * 7.0f));
            c = Mix(c, cloud, density * 0.94f);
        }
        return c;
    });
    if (sky.dark > 0.6f) {
        PaintStars(stage, horizonY, 500, (sky.dark - 0.5f) * 1.4f * (1.0f - 0.8f * sky.cover));
    }
}

void PaintStars(Stage& stage, float bottomY, int count, float strength) {
    for (int i = 0; i < count; ++i) {
        const Point at{stage.rng.Range(0, stage.w), stage.rng.Range(0, bottomY)};
        const float magnitude = std::pow(stage.rng.Unit(), 7.0f);
        const float fade = 1.0f - 0.7f * at.y / std::max(bottomY, 1.0f);
        const Colour tone = Mix(Hex(0xBFD0FF), Hex(0xFFE6C8), stage.rng.Unit());
        stage.canvas.Glow(at, stage.U(1.6f + 3.4f * magnitude),
                          tone * (strength * fade * (0.25f + 2.2f * magnitude)));
    }
}

void PaintMoon(Stage& stage, Point centre, float radius) {
    stage.canvas.Glow(centre, radius * 7.0f, Hex(0x8090B0) * 0.35f);
    stage.canvas.Glow(centre, radius * 2.4f, Hex(0xFFF0D0) * 0.35f);
    const std::uint32_t seed = stage.Seed(3);
    stage.canvas.Fill(Ellipse(centre, radius, radius), [&](float x, float y) {
        const float dx = (x - centre.x) / radius;
        const float dy = (y - centre.y) / radius;
        const float edge = std::sqrt(std::max(0.0f, 1.0f - dx * dx - dy * dy));
        const float sea = Smooth(0.46f, 0.62f, Fbm(dx * 1.7f + 9.0f, dy * 1.7f, 4, seed));
        return Mix(Hex(0xFFF6DC), Hex(0xC9BFA8), sea * 0.75f) * (0.9f + 0.5f * edge);
    });
}

void Reflect(Stage& stage, float waterY, float bottomY, float ripple, Tint tint) {
    const int top = Whole(waterY);
    const int bottom = std::min(stage.canvas.Height(), Whole(bottomY));
    const std::uint32_t seed = stage.Seed(21);
    for (int y = top; y < bottom; ++y) {
        const float depth = (Real(y) - waterY) / stage.h + 0.012f;  // near water has larger waves
        const float fine = 1.0f / (depth * 0.5f * stage.h * 0.12f + 1.2f);
        for (int x = 0; x < stage.canvas.Width(); ++x) {
            const float wave = Noise(Real(x) * fine * 0.22f, Real(y) * fine * 1.1f, seed) - 0.5f;
            const float swell = Noise(Real(x) * fine * 0.05f + 31.0f, Real(y) * fine * 0.4f, seed + 1) - 0.5f;
            const float shift = (wave + swell) * ripple * stage.u * (0.15f + 1.6f * depth);
            const float fromY =
                std::clamp(waterY - (Real(y) - waterY) * 1.02f + shift * 2.2f, 0.0f, waterY - 1.0f);
            const Colour mirrored = stage.canvas.Sample(Real(x) + shift * 0.5f, fromY);
            const float glance = Clamp01(tint.alpha * (0.55f + 1.3f * depth) + wave * 0.16f);
            stage.canvas.At(x, y) = Mix(mirrored, tint.colour, glance);
        }
    }
}

void PaintRain(Stage& stage, int count, float slant, Tint tint) {
    for (int i = 0; i < count; ++i) {
        const Point from{stage.rng.Range(-0.1f, 1.1f) * stage.w, stage.rng.Range(-0.1f, 1.0f) * stage.h};
        const float length = stage.U(stage.rng.Range(18.0f, 60.0f));
        const float near = stage.rng.Range(0.3f, 1.0f);
        stage.canvas.Stroke({from, {from.x + slant * length, from.y + length}}, stage.U(0.8f),
                            stage.U(1.9f) * near, Tint(tint.colour, tint.alpha * near));
    }
}

void PaintSnowfall(Stage& stage, int count, Colour colour) {
    for (int i = 0; i < count; ++i) {
        const float near = std::pow(stage.rng.Unit(), 4.0f);
        const float radius = stage.U(1.5f + 11.0f * near);
        stage.canvas.Dab({stage.rng.Range(0, stage.w), stage.rng.Range(0, stage.h)}, radius,
                         radius * stage.rng.Range(0.8f, 1.2f), 0, Tint(colour, 0.85f - 0.5f * near),
                         std::max(1.2f, radius * 0.7f));
    }
}

}  // namespace sample
