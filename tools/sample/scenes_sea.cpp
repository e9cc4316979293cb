#include <numbers>

#include "figures.h"
#include "nature.h"
#include "scenes.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

// Open water from the horizon down: wave lines that widen as they come nearer.
void PaintSea(Stage& stage, const Sky& sky, float horizon, float bottom, Colour deep, Colour shallow) {
    const std::uint32_t seed = stage.Seed(81);
    stage.canvas.Shade({0, Whole(horizon), Whole(stage.w), Whole(bottom) + 1}, 1, [&](float x, float y) {
        const float depth = (y - horizon) / stage.h + 0.006f;
        const float scale = 1.0f / (depth * stage.w);
        const float px = (x - stage.w * 0.5f) * scale * 1.6f;
        const float py = 0.9f / depth;
        const float wave =
            Noise(px * 2.2f, py * 4.0f, seed) * 0.55f + Noise(px * 6.0f + 4.0f, py * 9.0f, seed + 1) * 0.45f;
        const float swell = Noise(px * 0.7f, py * 1.1f, seed + 2);
        Colour c = Mix(deep, shallow, Smooth(0.0f, 1.0f, (y - horizon) / std::max(bottom - horizon, 1.0f)));
        c = c * (0.72f + 0.42f * wave + 0.22f * swell);
        const float shine = Smooth(0.62f, 0.9f, wave * 0.75f + swell * 0.3f);
        c = Mix(c, sky.horizon, Clamp01(0.5f * std::exp(-depth * 13.0f) + 0.28f * shine));
        return c;
    });
}

// The broken image of a low sun on the water.
void PaintGlitter(Stage& stage, Point sun, float horizon, float bottom, Colour light, float width) {
    const std::uint32_t seed = stage.Seed(83);
    stage.canvas.Shade({0, Whole(horizon), Whole(stage.w), Whole(bottom)}, 1, [&](float x, float y) {
        const float depth = (y - horizon) / stage.h + 0.008f;
        const float px = (x - sun.x) / (depth * stage.w);
        const float py = 0.9f / depth;
        const float spread =
            std::exp(-std::pow((x - sun.x) / (stage.w * (width * 0.35f + depth * width * 1.6f)), 2.0f));
        const float sparkle =
            Noise(px * 5.0f, py * 10.0f, seed) * 0.6f + Noise(px * 13.0f, py * 22.0f, seed + 1) * 0.4f;
        const float hit = Smooth(0.78f - 0.36f * spread, 0.92f - 0.3f * spread, sparkle) * spread;
        return Tint(light, Clamp01(hit + 0.10f * spread));
    });
}

}  // namespace

void Beach(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(rng.Range(0.40f, 0.5f));
    const float hour = std::clamp(stage.moment.hour, 7.0f, 17.3f);
    const Sky sky = SkyAt(stage, hour, CoverOf(stage), {stage.X(rng.Range(0.7f, 1.1f)), stage.Y(0.05f)});
    PaintSky(stage, sky, horizon);
    if (rng.Chance(0.6f)) {
        MountainLook cape;
        cape.rock = Hex(0x4C6058);
        cape.forest = Hex(0x3C6044);
        cape.haze = sky.horizon;
        cape.hazeAmount = 0.45f;
        cape.bottomY = horizon + stage.U(3);
        cape.light = sky.light;
        Skyline line = MakeSkyline(stage, horizon, stage.Y(0.12f), 2.0f, 0.5f, 801);
        const bool left = rng.Chance(0.5f);
        for (std::size_t i = 0; i < line.top.size(); ++i) {
            const float x = static_cast<float>(i) / stage.w;
            line.top[i] = Lerp(horizon + stage.U(4), line.top[i], Smooth(0.5f, 0.12f, left ? x : 1.0f - x));
        }
        PaintMountain(stage, line, cape);
    }
    const float shore = stage.Y(rng.Range(0.66f, 0.74f));
    PaintSea(stage, sky, horizon, stage.Y(0.9f), Hex(0x14578E) * sky.light, Hex(0x4CC0BE) * sky.light);
    for (int i = 0; i < 3; ++i) {
        const float x = rng.Range(0.08f, 0.92f);
        PaintSailingBoat(stage, {stage.X(x), horizon + stage.Y(rng.Range(0.012f, 0.05f))},
                         stage.U(rng.Range(40, 80)), Hex(0xE8E8E8) * sky.light, Hex(0xFFFDF4) * sky.light);
    }
    const std::uint32_t seed = stage.Seed(85);
    const float slope = rng.Range(-0.12f, 0.12f);
    auto edge = [&](float x) {
        return shore + slope * (x - stage.w * 0.5f) +
               (Fbm(x / stage.U(330), 2.0f, 3, seed) - 0.5f) * stage.U(120);
    };
    const float breaker = stage.U(rng.Range(70, 110));
    for (int wave = 1; wave >= 0; --wave) {
        const float lift = breaker * Real(wave);
        stage.canvas.Shade(
            {0, Whole(horizon + stage.U(40)), Whole(stage.w), Whole(stage.h)}, 2, [&](float x, float y) {
                const float d = (y - (edge(x + Real(wave) * 300.0f) - lift)) / stage.u;
                const float lace =
                    Fbm(x / stage.U(34), y / stage.U(14), 4, seed + 3 + static_cast<std::uint32_t>(wave));
                const float foam = Smooth(-46.0f, -6.0f, d) * Smooth(wave ? 22.0f : 8.0f, 0.0f, d) *
                                   Smooth(0.36f, 0.58f, lace + 0.28f * Smooth(-20.0f, 0.0f, d));
                return Tint(Hex(0xFFFFFF) * Mix(sky.light, {1, 1, 1}, 0.5f), foam * (wave ? 0.75f : 0.96f));
            });
    }
    const Colour sand = Mix(Hex(0xEBD6A8), Hex(0xD9BE92), rng.Unit()) * sky.light;
    stage.canvas.Shade({0, Whole(shore - stage.U(160)), Whole(stage.w), Whole(stage.h)}, 2,
                       [&](float x, float y) {
                           const float d = (y - edge(x)) / stage.u;
                           const float ripple = Fbm(x / stage.U(70), y / stage.U(26), 3, seed + 9) - 0.5f;
                           const float speck = HashUnit(Whole(x), Whole(y), seed) - 0.5f;
                           const float wet = Smooth(110.0f, 30.0f, d);
                           Colour c = sand * (1.0f + ripple * 0.28f + speck * 0.10f);
                           c = Mix(c, Mix(c * 0.5f, sky.horizon * 0.7f, 0.35f), wet * 0.8f);
                           return Tint(c, Smooth(0.0f, 7.0f, d));
                       });
    switch (rng.Pick(0, 2)) {
        case 0: {  // a parasol with a towel
            const Point foot = stage.At(rng.Range(0.22f, 0.78f), 0.93f);
            const float r = stage.U(150);
            stage.canvas.Dab({foot.x + r * 0.5f, foot.y}, r * 1.0f, r * 0.16f, 0, Tint(Hex(0x6A5030), 0.5f),
                             r * 0.08f);
            stage.canvas.Fill({{foot.x - r * 0.3f, foot.y + r * 0.02f},
                               {foot.x + r * 0.9f, foot.y + r * 0.02f},
                               {foot.x + r * 1.1f, foot.y + r * 0.24f},
                               {foot.x - r * 0.3f, foot.y + r * 0.26f}},
                              Hsv(rng.Unit(), 0.5f, 0.95f) * sky.light);
            const float hue = rng.Unit();
            stage.canvas.Stroke({{foot.x, foot.y - r * 1.6f}, {foot.x + r * 0.05f, foot.y + r * 0.05f}},
                                r * 0.03f, r * 0.04f, Hex(0xE8E0D0));
            Path dome;
            for (int i = 0; i <= 24; ++i) {
                const float a = pi * Real(i) / 24.0f;
                dome.push_back({foot.x - std::cos(a) * r, foot.y - r * 1.05f - std::sin(a) * r * 0.62f});
            }
            stage.canvas.Fill(dome, [&](float x, float y) {
                const float up = Clamp01((foot.y - r * 1.05f - y) / (r * 0.62f));
                const float across =
                    std::clamp((x - foot.x) / (r * std::sqrt(std::max(0.02f, 1.0f - up * up))), -1.0f, 1.0f);
                const bool odd = Whole((std::asin(across) / pi + 0.5f) * 8.0f) % 2 == 0;
                return (odd ? Hsv(hue, 0.72f, 0.95f) : Hex(0xFFFAF0)) * sky.light *
                       (0.72f + 0.3f * across + 0.2f * up);
            });
            break;
        }
        case 1:  // two people at the water's edge
            PaintPerson(stage, stage.At(0.46f, 0.82f), stage.U(190), Hex(0x2E3440), 0.4f);
            PaintChild(stage, stage.At(0.56f, 0.83f), stage.U(112), Hsv(rng.Unit(), 0.45f, 0.5f));
            break;
        default:  // a shell and a starfish in the sand
            for (int i = 0; i < 2; ++i) {
                const Point c = stage.At(rng.Range(0.2f, 0.8f), rng.Range(0.88f, 0.94f));
                const float r = stage.U(44);
                stage.canvas.Dab(c + Point{r * 0.2f, r * 0.4f}, r * 1.0f, r * 0.4f, 0,
                                 Tint(Hex(0x7A5C38), 0.55f), r * 0.3f);
                Path star;
                const float turn = rng.Range(0, pi);
                for (int k = 0; k < 10; ++k) {
                    const float a = turn + pi * Real(k) / 5.0f;
                    const float q = k % 2 ? 0.42f : 1.0f;
                    star.push_back({c.x + std::cos(a) * r * q, c.y + std::sin(a) * r * q * 0.7f});
                }
                stage.canvas.Fill(star, (i ? Hex(0xE88A5A) : Hex(0xF4C8A8)) * sky.light, 1.5f);
            }
            break;
    }
    for (int i = rng.Pick(0, 5); i > 0; --i) {
        PaintBird(stage, stage.At(rng.Range(0.1f, 0.9f), rng.Range(0.1f, 0.34f)), stage.U(rng.Range(16, 40)),
                  Hex(0x505860));
    }
}

void SunsetSea(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(rng.Range(0.5f, 0.6f));
    const float hour = rng.Range(17.6f, 18.7f);
    const Point sun{stage.X(rng.Range(0.3f, 0.7f)), horizon - stage.Y(rng.Range(0.02f, 0.10f))};
    Sky sky = SkyAt(stage, hour, std::min(CoverOf(stage), 0.62f), sun);
    PaintSky(stage, sky, horizon);
    const float r = stage.U(rng.Range(34, 52));
    stage.canvas.Glow(sun, r * 6.0f, Hex(0xFF9040) * 0.5f);
    stage.canvas.Fill(
        Ellipse(sun, r, r),
        [&](float, float y) {
            return Mix(Hex(0xFFF3C0) * 2.4f, Hex(0xFF9A3C) * 1.9f, Clamp01((y - sun.y + r) / (2.0f * r)));
        },
        1.0f);
    Reflect(stage, horizon, stage.h, 30.0f, Tint(Hex(0x1C2A50), 0.34f));
    PaintSea(stage, sky, horizon, horizon + 1.0f, Hex(0x2A2A50), Hex(0x3A3A60));
    PaintGlitter(stage, sun, horizon, stage.h, Hex(0xFFC880) * 1.9f, 0.10f);
    if (rng.Chance(0.55f)) {
        Skyline head = MakeSkyline(stage, horizon, stage.Y(0.12f), 2.2f, 0.5f, 811);
        const bool left = sun.x > stage.w * 0.5f;
        for (std::size_t i = 0; i < head.top.size(); ++i) {
            const float x = static_cast<float>(i) / stage.w;
            head.top[i] = Lerp(horizon + stage.U(3), head.top[i], Smooth(0.42f, 0.05f, left ? x : 1.0f - x));
        }
        stage.canvas.Fill(head.Outline(horizon + stage.U(2)), Mix(Hex(0x2A1C38), sky.horizon, 0.25f));
    }
    switch (rng.Pick(0, 3)) {
        case 0:
            PaintSailingBoat(stage, {sun.x + stage.X(rng.Range(-0.18f, 0.18f)), horizon + stage.Y(0.06f)},
                             stage.U(190), Hex(0x180F1C), Hex(0x3A2030));
            break;
        case 1: {
            const float beach = stage.Y(0.88f);
            stage.canvas.Fill(
                MakeSkyline(stage, beach + stage.U(30), stage.U(60), 0.8f, 0.0f, 821).Outline(stage.h),
                [&](float, float y) {
                    return Mix(Hex(0x4A2C38), Hex(0x120A16), Clamp01((y - beach) / (stage.h - beach)));
                });
            const float x = rng.Range(0.3f, 0.6f);
            PaintPerson(stage, stage.At(x, 0.92f), stage.U(230), Hex(0x0C0810), 0.35f);
            PaintPerson(stage, stage.At(x + 0.075f, 0.92f), stage.U(210), Hex(0x0C0810), 0.2f);
            PaintDog(stage, stage.At(x + 0.17f, 0.925f), stage.U(66), Hex(0x0C0810),
                     rng.Chance(0.5f) ? 1.0f : -1.0f);
            break;
        }
        case 2: {
            const float deck = stage.Y(0.80f);
            const float x = rng.Chance(0.5f) ? 0.0f : 0.62f;
            stage.canvas.Fill(Box(stage.X(x - 0.02f), deck, stage.X(x + 0.40f), deck + stage.U(16)),
                              Hex(0x120A14));
            for (int i = 0; i < 6; ++i) {
                const float px = stage.X(x + 0.02f + 0.065f * Real(i));
                stage.canvas.Fill(Box(px - stage.U(6), deck - stage.U(i == 2 ? 10.0f : 44.0f),
                                      px + stage.U(6), stage.Y(0.93f)),
                                  Hex(0x120A14));
            }
            PaintPerson(stage, {stage.X(x + 0.2f), deck + stage.U(2)}, stage.U(170), Hex(0x0C0810), 0.1f);
            break;
        }
        default:
            break;
    }
    for (int i = rng.Pick(2, 9); i > 0; --i) {
        PaintBird(stage, {sun.x + stage.X(rng.Range(-0.3f, 0.3f)), stage.Y(rng.Range(0.14f, 0.42f))},
                  stage.U(rng.Range(14, 36)), Hex(0x2A1830));
    }
    stage.develop.warmth = 0.2f;
    stage.develop.bloom = 0.14f;
    stage.develop.saturation = 1.12f;
}

void Harbour(Stage& stage) {
    Rng& rng = stage.rng;
    const float quay = stage.Y(0.58f);
    const Sky sky = SkyAt(stage, std::clamp(stage.moment.hour, 7.0f, 17.6f), CoverOf(stage),
                          {stage.X(-0.1f), stage.Y(0.2f)});
    PaintSky(stage, sky, quay);
    PaintHill(stage, MakeSkyline(stage, quay, stage.Y(0.26f), 1.6f, 0.25f, 831), quay,
              Mix(Hex(0x4E7A48), sky.horizon, 0.35f) * sky.light, Hex(0x3E6238) * sky.light, 0.4f);
    // Houses climb the slope in rows, each with a lit wall, a roof and a few windows.
    const Colour walls[6] = {Hex(0xF4E2C0), Hex(0xE8B090), Hex(0xF2F0E8),
                             Hex(0xD88068), Hex(0xEAD080), Hex(0x9CB8C4)};
    for (int row = 0; row < 4; ++row) {
        const float foot = quay - stage.Y(0.045f) * Real(3 - row) * 1.05f;
        for (float x = -0.02f; x < 1.0f;) {
            const float width = rng.Range(0.045f, 0.09f);
            const float tall = stage.U(rng.Range(60, 120)) * (row == 3 ? 1.35f : 1.0f);
            if (row == 3 || rng.Chance(0.75f)) {
                const Colour wall = walls[rng.Pick(0, 5)] * sky.light * Lerp(0.8f, 1.0f, Real(row) / 3.0f);
                const float left = stage.X(x);
                const float right = stage.X(x + width);
                const float top = foot - tall;
                stage.canvas.Fill(Box(left, top, right, foot), [&](float px, float) {
                    return wall * Lerp(1.06f, 0.8f, (px - left) / (right - left));
                });
                const Colour roof = Mix(Hex(0xA8502E), Hex(0x6E4A3A), rng.Unit()) * sky.light;
                const float eave = stage.U(6);
                stage.canvas.Fill(
                    {{left - eave, top}, {Lerp(left, right, 0.5f), top - stage.U(34)}, {right + eave, top}},
                    roof);
                for (float wy = top + stage.U(16); wy < foot - stage.U(24); wy += stage.U(34)) {
                    for (float wx = left + stage.U(12); wx < right - stage.U(14); wx += stage.U(26)) {
                        stage.canvas.Fill(Box(wx, wy, wx + stage.U(11), wy + stage.U(18)),
                                          Mix(Hex(0x2C3A48), sky.horizon, rng.Range(0.0f, 0.4f)));
                    }
                }
            }
            x += width * rng.Range(1.0f, row == 3 ? 1.05f : 1.5f);
        }
    }
    stage.canvas.Fill(Box(0, quay - stage.U(10), stage.w, quay + stage.U(6)), Hex(0x8A8378) * sky.light);
    for (int i = 0; i < 7; ++i) {
        const Point at{stage.X(rng.Range(0.03f, 0.97f)), quay + stage.Y(0.012f)};
        const Colour hull = Hsv(rng.Unit(), rng.Chance(0.5f) ? 0.65f : 0.08f, 0.85f) * sky.light;
        const float s = stage.U(rng.Range(60, 100));
        stage.canvas.Fill({{at.x - s * 0.6f, at.y - s * 0.24f},
                           {at.x + s * 0.7f, at.y - s * 0.3f},
                           {at.x + s * 0.5f, at.y},
                           {at.x - s * 0.5f, at.y}},
                          hull);
        stage.canvas.Fill(Box(at.x - s * 0.25f, at.y - s * 0.48f, at.x + s * 0.1f, at.y - s * 0.24f),
                          Hex(0xF4F2EC) * sky.light);
        stage.canvas.Stroke({{at.x, at.y - s * 0.3f}, {at.x + s * 0.02f, at.y - s * 1.5f}}, s * 0.035f,
                            s * 0.02f, Hex(0xD8D0C0) * sky.light);
    }
    Reflect(stage, quay + stage.U(12), stage.h, 55.0f, Tint(Hex(0x1C5A70) * sky.light, 0.3f));
    stage.develop.warmth = 0.12f;
    stage.develop.saturation = 1.15f;
}

void Aquarium(Stage& stage) {
    Rng& rng = stage.rng;
    const std::uint32_t seed = stage.Seed(91);
    const float lamp = rng.Range(0.3f, 0.7f);
    stage.Backdrop(4, [&](float x, float y) {
        const float t = y / stage.h;
        const float dx = x / stage.w - lamp;
        Colour c = Mix(Hex(0x2C9CD0), Hex(0x04142E), Smooth(0.0f, 0.95f, t + dx * dx * 0.8f));
        const float angle = dx / (t + 0.25f);
        const float ray = Smooth(0.45f, 0.85f, Noise(angle * 9.0f, 0.3f, seed)) * (1.0f - t) * 0.55f;
        return c + Hex(0x9FE8FF) * (ray * std::exp(-dx * dx * 3.0f)) +
               Hex(0x1A6A90) * (0.25f * Fbm(x / stage.U(260), y / stage.U(180), 3, seed));
    });
    if (rng.Chance(0.45f)) {
        for (int i = rng.Pick(5, 9); i > 0; --i) {  // jellyfish
            const Point c = stage.At(rng.Range(0.08f, 0.92f), rng.Range(0.12f, 0.66f));
            const float r = stage.U(rng.Range(30, 110));
            const Colour tone = Mix(Hex(0xF8D8FF), Hex(0xA8D8FF), rng.Unit());
            for (int k = 0; k < 9; ++k) {
                const float x = c.x + (Real(k) / 8.0f - 0.5f) * r * 1.4f;
                const float sway = rng.Bell() * r * 0.5f;
                stage.canvas.Stroke(Curve({{x, c.y},
                                           {x + sway, c.y + r * 1.0f},
                                           {x - sway * 0.6f, c.y + r * rng.Range(1.6f, 2.6f)}}),
                                    r * 0.06f, r * 0.01f, Tint(tone, 0.4f), 1);
            }
            Path bell;
            for (int k = 0; k <= 30; ++k) {
                const float a = pi * Real(k) / 30.0f;
                bell.push_back({c.x - std::cos(a) * r, c.y - std::sin(a) * r * 0.8f});
            }
            bell.push_back({c.x + r * 0.5f, c.y + r * 0.14f});
            bell.push_back({c.x - r * 0.5f, c.y + r * 0.14f});
            stage.canvas.Fill(
                bell,
                [&](float x, float y) {
                    const float d = std::hypot((x - c.x) / r, (y - c.y) / (r * 0.8f));
                    return Tint(tone * (0.7f + 0.6f * d), 0.25f + 0.5f * d * d);
                },
                1.5f);
            stage.canvas.Glow(c, r * 2.2f, tone * 0.08f);
        }
    } else {
        const int schools = rng.Pick(2, 4);
        for (int k = 0; k < schools; ++k) {
            const Point centre = stage.At(rng.Range(0.15f, 0.85f), rng.Range(0.15f, 0.6f));
            const float way = rng.Chance(0.5f) ? 1.0f : -1.0f;
            const Colour body = k == 0 ? Hex(0xF0A030) : Hsv(rng.Unit(), 0.55f, 0.95f);
            const float size = rng.Range(18, 46);
            for (int i = rng.Pick(10, 34); i > 0; --i) {
                const Point c{centre.x + rng.Bell() * stage.X(0.34f), centre.y + rng.Bell() * stage.Y(0.2f)};
                const float s = stage.U(size * rng.Range(0.7f, 1.25f));
                const float far = rng.Unit();
                const Colour tone = Mix(body, Hex(0x1A6A98), far * 0.75f);
                stage.canvas.Fill({{c.x - way * s * 0.75f, c.y},
                                   {c.x - way * s * 1.35f, c.y - s * 0.42f},
                                   {c.x - way * s * 1.2f, c.y},
                                   {c.x - way * s * 1.35f, c.y + s * 0.42f}},
                                  tone * 0.85f);
                stage.canvas.Fill(LeafShape({c.x + way * s, c.y}, s * 2.0f, s * 0.95f, way > 0 ? pi : 0.0f),
                                  [&](float, float y) {
                                      const float t = (y - c.y) / (s * 0.5f);
                                      return Mix(tone * 1.35f, tone * 0.45f, Clamp01(t * 0.5f + 0.5f));
                                  });
                stage.canvas.Dab({c.x + way * s * 0.68f, c.y - s * 0.08f}, s * 0.09f, s * 0.09f, 0,
                                 Hex(0x0A1018));
            }
        }
    }
    for (int i = 0; i < 60; ++i) {
        stage.canvas.Bokeh(stage.At(rng.Unit(), rng.Unit()), stage.U(rng.Range(2, 10)),
                           Hex(0x8FD8F4) * rng.Range(0.02f, 0.14f));
    }
    // Corals and, before the glass, those who look.
    const Skyline rock = MakeSkyline(stage, stage.Y(0.96f), stage.Y(0.16f), 3.0f, 0.5f, 851);
    PaintHill(stage, rock, stage.h, Hex(0x1E4A62), Hex(0x06121E), 0.5f);
    for (int i = 0; i < 26; ++i) {
        const float x = rng.Range(0, stage.w);
        const Colour coral = Mix(Hsv(rng.Unit(), 0.6f, 0.75f), Hex(0x1E5A80), 0.45f);
        const float base = rock.At(x) + stage.U(20);
        for (int k = 0; k < 6; ++k) {
            stage.canvas.Stroke(Curve({{x, base},
                                       {x + stage.U(rng.Bell() * 40), base - stage.U(40)},
                                       {x + stage.U(rng.Bell() * 90), base - stage.U(rng.Range(50, 110))}}),
                                stage.U(11), stage.U(5), coral);
        }
    }
    if (rng.Chance(0.75f)) {
        const float x = rng.Range(0.25f, 0.7f);
        PaintChild(stage, stage.At(x, 1.06f), stage.U(360), Hex(0x02060C));
        if (rng.Chance(0.6f)) {
            PaintPerson(stage, stage.At(x + 0.2f, 1.22f), stage.U(640), Hex(0x02060C), 0.1f);
        }
    }
    stage.develop.vignette = 0.4f;
    stage.develop.bloom = 0.15f;
}

}  // namespace sample
