#include <numbers>

#include "nature.h"
#include "petals.h"
#include "scenes.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

}  // namespace

void FlowerMeadow(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(rng.Range(0.34f, 0.5f));
    const Sky sky = SkyAt(stage, std::clamp(stage.moment.hour, 6.2f, 17.8f), CoverOf(stage),
                          {stage.X(0.85f), stage.Y(0.08f)});
    PaintSky(stage, sky, horizon);
    PaintHill(stage, MakeSkyline(stage, horizon, stage.Y(0.11f), 1.7f, 0.4f, 871), stage.h,
              Mix(Hex(0x4E7858), sky.horizon, 0.45f), Hex(0x5E8A38) * sky.light, 0.3f);
    for (int i = 0; i < 16; ++i) {
        PaintFoliage(stage, {stage.X(rng.Range(-0.02f, 1.02f)), horizon + stage.U(6)},
                     stage.U(rng.Range(24, 60)), stage.U(rng.Range(16, 40)), 100, stage.U(5),
                     Lit(SummerLeaves(), Mix(sky.light, sky.horizon, 0.4f)), 1);
    }
    PaintHill(stage, MakeSkyline(stage, horizon + stage.Y(0.05f), stage.Y(0.03f), 1.0f, 0.0f, 872), stage.h,
              Hex(0x7AA444) * sky.light, Hex(0x28481A) * sky.light, 0.35f);
    stage.canvas.Blur(stage.canvas.Whole(), stage.U(3.0f));
    const int mode = stage.TimeOfYear() == Season::Autumn ? 0 : rng.Pick(0, 3);
    auto petalColour = [&]() -> Colour {
        switch (mode) {
            case 0:  // cosmos
                return Mix(Mix(Hex(0xE86AA8), Hex(0xFFFFFF), rng.Unit() > 0.6f ? 0.8f : 0.15f), Hex(0xB8206A),
                           rng.Chance(0.25f) ? 0.8f : 0.0f);
            case 1:  // poppies
                return Mix(Hex(0xE2281C), Hex(0xFF6A30), rng.Unit() * 0.6f);
            case 2:  // a mixed meadow
                return Hsv(rng.Unit(), 0.6f, 0.97f);
            default:  // nemophila: a blue sea
                return Mix(Hex(0x5A8AE8), Hex(0xB8D4FF), rng.Unit());
        }
    };
    const Colour dark = Hex(0x24421A) * sky.light;
    const Colour light = Hex(0x9CBC50) * sky.light;
    for (int band = 0; band < 9; ++band) {
        const float t = Real(band) / 8.0f;
        const float y = Lerp(horizon + stage.Y(0.06f), stage.Y(1.03f), t * t * 0.6f + t * 0.4f);
        const float size = stage.U(Lerp(5, 40, t * t));
        const float soft = t < 0.85f ? std::fabs(t - 0.65f) * stage.U(4) : stage.U(11);
        PaintGrass(stage, y - size, y + size, Whole(Lerp(900, 110, t)), stage.U(Lerp(26, 170, t)), dark,
                   light, soft * 0.5f);
        const int flowers = Whole(Lerp(340, 15, std::sqrt(t)));
        for (int i = 0; i < flowers; ++i) {
            const Point c{stage.X(rng.Range(-0.03f, 1.03f)), y - size * rng.Range(0.2f, 3.4f)};
            const Colour tone = petalColour() * Mix(sky.light, {1, 1, 1}, 0.35f);
            if (t < 0.45f) {
                stage.canvas.Dab(c, size * 0.85f, size * 0.6f, 0, Tint(tone * rng.Range(0.8f, 1.1f), 0.95f),
                                 1.5f + soft * 0.6f);
                continue;
            }
            stage.canvas.Stroke(Curve({c,
                                       {c.x + size * rng.Bell(), c.y + size * 2.0f},
                                       {c.x + size * rng.Bell() * 2.0f, c.y + size * 5.0f}}),
                                size * 0.09f, size * 0.14f, Mix(dark, light, 0.5f), soft);
            const float flat = rng.Range(0.5f, 0.95f);
            const int count = mode == 1 ? 5 : mode == 3 ? 5 : 8;
            PaintPetalRing(stage, c,
                           {count, size, size * (count == 5 ? 1.1f : 0.62f), tone * 0.7f, tone * 1.08f},
                           rng.Range(0, pi), flat, soft);
            stage.canvas.Dab(c, size * 0.26f, size * 0.24f * flat, 0,
                             mode == 1   ? Hex(0x1A1210)
                             : mode == 3 ? Hex(0xF4F8FF)
                                         : Hex(0xE8B420),
                             2.0f + soft);
        }
    }
    stage.develop.saturation = 1.14f;
    stage.develop.bloom = 0.12f;
}

void FlowerMacro(Stage& stage) {
    Rng& rng = stage.rng;
    constexpr float hues[7] = {0.93f, 0.97f, 0.02f, 0.08f, 0.13f, 0.62f, 0.78f};
    const float hue = hues[rng.Pick(0, 6)] + rng.Bell() * 0.03f;
    const bool winter = stage.TimeOfYear() == Season::Winter;
    SoftBackground(stage, winter ? Hex(0x2A3038) : Hex(0x14301A),
                   winter ? Hex(0x8A98A8) : Mix(Hex(0x7AA85A), Hsv(hue + 0.45f, 0.3f, 0.75f), 0.35f),
                   Hex(0xFFFBE0), 40);
    stage.canvas.Glow(stage.At(rng.Range(0.1f, 0.9f), 0.05f), stage.U(700), Hex(0xFFF0C0) * 0.4f);
    const Point centre = stage.At(rng.Range(0.36f, 0.64f), rng.Range(0.4f, 0.5f));
    const float size = stage.U(rng.Range(250, 340));
    const Colour stem = Hex(0x3E7030);
    for (int i = 0; i < 2; ++i) {  // companions behind, out of focus
        const Point c = stage.At(rng.Chance(0.5f) ? rng.Range(0.02f, 0.2f) : rng.Range(0.8f, 0.98f),
                                 rng.Range(0.3f, 0.75f));
        stage.canvas.Stroke({c, {c.x, stage.h * 1.05f}}, stage.U(16), stage.U(22), stem * 0.7f, stage.U(20));
        PaintPetalRing(stage, c, {9, size * 0.55f, size * 0.3f, Hsv(hue, 0.8f, 0.7f), Hsv(hue, 0.55f, 0.95f)},
                       rng.Range(0, pi), 0.8f, stage.U(24));
    }
    const Path stalk = Curve({centre,
                              {centre.x + stage.U(rng.Bell() * 60), Lerp(centre.y, stage.h, 0.5f)},
                              {centre.x + stage.U(rng.Bell() * 160), stage.h * 1.06f}});
    stage.canvas.Stroke(stalk, stage.U(20), stage.U(30), stem);
    stage.canvas.Stroke(stalk, stage.U(7), stage.U(9), Tint(Hex(0x9CCB6A), 0.6f), 2);
    for (int i = 0; i < 3; ++i) {
        const Point base = stalk[stalk.size() * 2 / 3 + static_cast<std::size_t>(i)];
        const float a = (i % 2 ? 0.35f : pi - 0.4f) - 0.5f * rng.Unit() * (i % 2 ? 1.0f : -1.0f);
        stage.canvas.Fill(
            LeafShape(base, stage.U(300), stage.U(100), a, 0.1f),
            [&](float x, float y) {
                return Mix(Hex(0x2C5A24), Hex(0x8CBC58),
                           Fbm(x / stage.U(60), y / stage.U(60), 3, stage.Seed(2)));
            },
            stage.U(4));
    }
    const int kind = rng.Pick(0, 2);
    const Colour inner = kind == 1 ? Hex(0xFFE9A0) : Hsv(hue + 0.03f, 0.85f, 0.72f);
    const Colour outer = kind == 1 ? Hex(0xFFFDF6) : Hsv(hue, kind == 2 ? 0.45f : 0.62f, 0.98f);
    if (kind == 2) {  // many rings, as of a dahlia
        for (int ring = 0; ring < 6; ++ring) {
            const float t = Real(ring) / 5.0f;
            PaintPetalRing(stage, centre,
                           {16 - ring, size * Lerp(1.0f, 0.3f, t), size * Lerp(0.34f, 0.17f, t),
                            inner * Lerp(0.8f, 1.0f, t), Mix(outer, inner, 0.35f * t)},
                           Real(ring) * 0.2f, 0.92f, 0.6f);
        }
    } else {
        PaintPetalRing(stage, centre,
                       {kind == 1 ? 21 : 12, size * 1.02f, size * (kind == 1 ? 0.2f : 0.38f), inner * 0.8f,
                        outer * 0.9f},
                       0.2f, 0.9f, 0.6f);
        PaintPetalRing(stage, centre,
                       {kind == 1 ? 21 : 11, size * 0.93f, size * (kind == 1 ? 0.19f : 0.36f), inner, outer},
                       0.5f, 0.9f, 0.6f);
        const float heart = size * 0.26f;
        stage.canvas.Dab(centre + Point{heart * 0.1f, heart * 0.2f}, heart * 1.15f, heart * 1.05f, 0,
                         Tint(Hex(0x2A1404), 0.5f), heart * 0.4f);
        for (int i = 0; i < 520; ++i) {  // the seeds of the heart stand in a spiral
            const float r = heart * std::sqrt(Real(i) / 520.0f);
            const float a = Real(i) * 2.399963f;
            const Point p{centre.x + std::cos(a) * r, centre.y + std::sin(a) * r * 0.92f};
            const float lit = 0.65f - 0.5f * (p.x - centre.x + p.y - centre.y) / (2 * heart);
            stage.canvas.Dab(p, heart * 0.055f, heart * 0.05f, 0,
                             Mix(Hex(0x9A5A08), Hex(0xFFD84A), Clamp01(lit + rng.Bell() * 0.3f)));
        }
    }
    for (int i = 0; i < 26; ++i) {  // dew
        const float a = rng.Range(0, 2 * pi);
        const float d = size * rng.Range(0.4f, 0.9f);
        const Point p{centre.x + std::cos(a) * d, centre.y + std::sin(a) * d * 0.9f};
        const float r = stage.U(rng.Range(3, 8));
        stage.canvas.Dab(p + Point{r * 0.2f, r * 0.3f}, r, r * 0.9f, 0, Tint(outer * 0.4f, 0.5f), 2);
        stage.canvas.Dab(p, r, r, 0, Tint(outer * 1.15f, 0.55f), 1.2f);
        stage.canvas.Dab(p - Point{r * 0.3f, r * 0.35f}, r * 0.28f, r * 0.28f, 0,
                         Tint({1.6f, 1.6f, 1.6f}, 0.95f));
    }
    stage.develop.vignette = 0.4f;
}

void Hydrangea(Stage& stage) {
    Rng& rng = stage.rng;
    SoftBackground(stage, Hex(0x0E2418), Hex(0x4A7A4A), Hex(0xD8F0F0), 30);
    for (int i = 0; i < 90; ++i) {
        const Point base = stage.At(rng.Unit(), rng.Range(0.1f, 1.1f));
        const float a = rng.Range(0, 2 * pi);
        const float far = Smooth(0.9f, 0.3f, base.y / stage.h);
        const Colour green = Mix(Hex(0x1E4A24), Hex(0x6AA04A), rng.Unit());
        const float length = stage.U(rng.Range(130, 220));
        const Point tip{base.x + std::cos(a) * length, base.y + std::sin(a) * length};
        stage.canvas.Fill(
            LeafShape(base, length, length * 0.62f, a),
            [&](float x, float y) {
                const float off = std::fabs((x - base.x) * std::sin(a) - (y - base.y) * std::cos(a)) / length;
                const float rib =
                    Smooth(0.012f, 0.0f, off) +
                    0.35f * Smooth(0.75f, 1.0f,
                                   std::sin(((x - base.x) * std::cos(a) + (y - base.y) * std::sin(a)) /
                                                length * 30.0f -
                                            off * 26.0f));
                return green * (0.7f + 0.9f * off + 0.35f * rib);
            },
            stage.U(1.0f + 9.0f * far));
        stage.canvas.Stroke({base, tip}, 1.5f, 0.5f, Tint(green * 1.6f, 0.25f), 1);
    }
    const float base = rng.Range(0.56f, 0.8f);
    const int heads = rng.Pick(4, 6);
    for (int i = 0; i < heads; ++i) {
        const float t = Real(i) / Real(heads - 1);
        const Point c = stage.At(0.1f + 0.8f * std::fmod(t * 1.9f + rng.Unit() * 0.12f, 1.0f),
                                 Lerp(0.2f, 0.78f, t) + rng.Bell() * 0.06f);
        const float r = stage.U(Lerp(105, 215, t));
        const float soft = stage.U(7.0f * (1.0f - t));
        const float hue = base + rng.Bell() * 0.12f;
        stage.canvas.Dab(c + Point{r * 0.1f, r * 0.25f}, r * 1.08f, r * 0.98f, 0, Tint(Hex(0x081410), 0.6f),
                         r * 0.3f);
        const int florets = 130;
        for (int k = 0; k < florets; ++k) {
            const float d = std::sqrt(1.0f - Real(k) / Real(florets));  // from the rim to the middle
            const float a = Real(k) * 2.399963f;
            const Point f{c.x + std::cos(a) * d * r * 0.95f, c.y + std::sin(a) * d * r * 0.85f};
            const float lit = 0.62f - 0.3f * (f.x - c.x) / r - 0.38f * (f.y - c.y) / r + 0.25f * (1 - d);
            const Colour petal =
                Hsv(hue + rng.Bell() * 0.03f, 0.42f - 0.14f * lit, Clamp01(0.52f + 0.46f * lit));
            const float s = r * 0.155f;
            const float turn = rng.Range(0, pi);
            for (int p = 0; p < 4; ++p) {
                const float b = turn + pi * 0.5f * Real(p);
                stage.canvas.Dab({f.x + std::cos(b) * s * 0.55f, f.y + std::sin(b) * s * 0.5f}, s * 0.6f,
                                 s * 0.5f, b, Tint(petal * rng.Range(0.85f, 1.1f), 0.95f), 1.3f + soft);
            }
            stage.canvas.Dab(f, s * 0.13f, s * 0.13f, 0, Tint(petal * 0.55f, 0.9f), 1.2f + soft);
        }
    }
    if (stage.moment.weather == Weather::Rain) {
        PaintRain(stage, 220, -0.12f, Tint(Hex(0xD8E8F0), 0.32f));
    }
    stage.develop.warmth = -0.08f;
}

void Sunflowers(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(rng.Range(0.38f, 0.48f));
    const Sky sky = SkyAt(stage, std::clamp(stage.moment.hour, 7.5f, 17.5f), CoverOf(stage) + 0.1f,
                          {stage.X(0.9f), stage.Y(0.05f)});
    PaintSky(stage, sky, horizon);
    PaintHill(stage, MakeSkyline(stage, horizon, stage.Y(0.08f), 2.0f, 0.5f, 881), stage.h,
              Mix(Hex(0x46705A), sky.horizon, 0.45f), Hex(0x24481A) * sky.light, 0.3f);
    for (int row = 0; row < 13; ++row) {
        const float t = Real(row) / 12.0f;
        const float size = stage.U(Lerp(5, 150, std::pow(t, 2.6f)));
        const float y = horizon + stage.Y(0.02f) + (stage.h * 1.0f - horizon) * std::pow(t, 1.7f);
        const float soft = t > 0.95f ? stage.U(8) : t < 0.4f ? stage.U(1.5f) : 0.0f;
        const float pitch = size * 1.7f;
        for (float x = -pitch * rng.Unit(); x < stage.w + pitch; x += pitch * rng.Range(0.8f, 1.25f)) {
            const Point c{x, y + rng.Bell() * size * 0.8f};
            stage.canvas.Stroke({c, {c.x + size * 0.1f * rng.Bell(), c.y + size * 3.2f}}, size * 0.12f,
                                size * 0.15f, Hex(0x3E6A22) * sky.light, soft);
            for (int k = 0; k < 3; ++k) {
                const float a = rng.Chance(0.5f) ? rng.Range(0.1f, 0.7f) : pi - rng.Range(0.1f, 0.7f);
                const Colour green = Mix(Hex(0x1E4416), Hex(0x6E9A34), rng.Unit()) * sky.light;
                stage.canvas.Fill(LeafShape({c.x, c.y + size * rng.Range(0.9f, 2.4f)}, size * 1.25f,
                                            size * 0.85f, a, 0.15f),
                                  green, soft);
            }
            const float flat = rng.Range(0.82f, 1.0f);
            if (size < stage.U(14)) {
                stage.canvas.Dab(c, size, size * flat, 0, Tint(Hex(0xF4B81C) * sky.light, 0.95f), 1.5f);
                stage.canvas.Dab(c, size * 0.42f, size * 0.4f, 0, Hex(0x5A3210) * sky.light);
                continue;
            }
            PaintPetalRing(stage, c,
                           {17, size, size * 0.3f, Hex(0xE08A08) * sky.light, Hex(0xFFCF28) * sky.light},
                           rng.Unit(), flat, soft);
            PaintPetalRing(
                stage, c,
                {15, size * 0.86f, size * 0.28f, Hex(0xE89A10) * sky.light, Hex(0xFFDC48) * sky.light},
                rng.Unit(), flat, soft);
            const float heart = size * 0.46f;
            stage.canvas.Fill(
                Ellipse(c, heart, heart * flat),
                [&](float px, float py) {
                    const float d = std::hypot(px - c.x, (py - c.y) / flat) / heart;
                    const float seedling = HashUnit(Whole(px / (1 + size * 0.03f)),
                                                    Whole(py / (1 + size * 0.03f)), stage.Seed(9));
                    return Mix(Hex(0x3A1E0A), Hex(0x9A5A18),
                               Smooth(0.35f, 0.95f, d) * 0.7f + 0.3f * seedling) *
                           (1.15f - 0.3f * d) * sky.light;
                },
                soft);
        }
    }
    stage.develop.saturation = 1.12f;
    stage.develop.warmth = 0.12f;
}

}  // namespace sample
