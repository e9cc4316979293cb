#include <numbers>

#include "figures.h"
#include "nature.h"
#include "scenes.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

// A row of tall houses with lit windows, standing on `foot`. Nearer rows are darker, with more lamps.
void PaintTowers(Stage& stage, float foot, float low, float high, float width, Colour wall, float lamps) {
    Rng& rng = stage.rng;
    for (float x = -stage.U(width) * rng.Unit(); x < stage.w;) {
        const float w = stage.U(width * rng.Range(0.55f, 1.5f));
        const float tall = stage.U(rng.Range(low, high) * (rng.Chance(0.15f) ? 1.45f : 1.0f));
        const float top = foot - tall;
        stage.canvas.Fill(Box(x, top, x + w, foot + 2), [&, x, w](float px, float y) {
            return wall * (0.75f + 0.4f * (px - x) / w) * Lerp(1.0f, 1.5f, Clamp01((y - top) / tall));
        });
        if (rng.Chance(0.35f)) {
            stage.canvas.Fill(Box(x + w * 0.3f, top - stage.U(14), x + w * 0.6f, top + 1), wall);
            stage.canvas.Stroke({{x + w * 0.45f, top}, {x + w * 0.45f, top - stage.U(46)}}, stage.U(2.4f),
                                stage.U(1.2f), wall);
            stage.canvas.Glow({x + w * 0.45f, top - stage.U(46)}, stage.U(9), Hex(0xFF4030) * 1.2f);
        }
        const float pitchX = stage.U(rng.Range(7.5f, 12.0f));
        const float pitchY = stage.U(rng.Range(10.0f, 15.0f));
        const float lit = lamps * rng.Range(0.4f, 1.3f);
        const Colour tone = rng.Chance(0.7f) ? Hex(0xFFC978) : Hex(0xCFE2FF);
        const bool ribbons = rng.Chance(0.25f);
        for (float wy = top + pitchY * 0.7f; wy < foot - pitchY; wy += pitchY) {
            const bool wholeFloor = ribbons && rng.Chance(0.4f);
            for (float wx = x + pitchX * 0.6f; wx < x + w - pitchX; wx += pitchX) {
                if (wholeFloor || rng.Chance(lit)) {
                    stage.canvas.Fill(
                        Box(wx, wy, wx + pitchX * (ribbons ? 0.95f : 0.58f), wy + pitchY * 0.5f),
                        Mix(tone, Hex(0xFFFFFF), rng.Unit() * 0.3f) * rng.Range(0.35f, 1.25f));
                }
            }
        }
        x += w + stage.U(rng.Range(-4, 10));
    }
}

}  // namespace

void Fireworks(Stage& stage) {
    Rng& rng = stage.rng;
    const float shore = stage.Y(0.78f);
    Sky sky = SkyAt(stage, 20.2f, 0.3f, {-stage.w, 0});
    sky.dark = 0.5f;
    PaintSky(stage, sky, shore);
    const std::uint32_t seed = stage.Seed(141);
    const int bursts = rng.Pick(3, 6);
    struct Burst {
        Point c;
        float r;
        Colour tone, second;
        int kind;
    };
    std::vector<Burst> all;
    for (int i = 0; i < bursts; ++i) {
        const float hue = rng.Unit();
        all.push_back({stage.At(rng.Range(0.14f, 0.86f), rng.Range(0.12f, 0.46f)),
                       stage.U(i == 0 ? rng.Range(270, 350) : rng.Range(110, 240)), Hsv(hue, 0.6f, 1.0f),
                       Hsv(hue + rng.Range(0.1f, 0.5f), 0.65f, 1.0f), rng.Pick(0, 2)});
    }
    stage.canvas.Shade({0, 0, Whole(stage.w), Whole(shore)}, 6, [&](float x, float y) {
        Colour light;
        const float smoke = Smooth(0.35f, 0.8f, Fbm(x / stage.U(240), y / stage.U(150), 4, seed));
        for (const Burst& b : all) {
            const float d = std::hypot(x - b.c.x, y - b.c.y - b.r * 0.2f) / b.r;
            light = light + b.tone * (0.22f * std::exp(-d * d * 1.3f));
        }
        return Tint(light * 1.7f, 0.75f * smoke * Clamp01(Luminance(light) * 6.0f));
    });
    for (const Burst& b : all) {
        const int rays = b.kind == 2 ? 60 : 130;
        stage.canvas.Glow(b.c, b.r * 1.7f, b.tone * 0.16f);
        for (int i = 0; i < rays; ++i) {
            const float a = 2 * pi * Real(i) / Real(rays) + rng.Bell() * 0.05f;
            const float lift = std::asin(rng.Range(-1.0f, 1.0f));
            const float reach = b.r * std::cos(lift * 0.85f) * rng.Range(0.93f, 1.03f);
            const float drop = b.r * (b.kind == 2 ? 0.42f : 0.16f);
            Path line;
            for (int k = 0; k <= 10; ++k) {
                const float t = Lerp(b.kind == 1 ? 0.45f : 0.12f, 1.0f, Real(k) / 10.0f);
                const float out = 1.0f - std::pow(1.0f - t, 1.8f);
                line.push_back(
                    {b.c.x + std::cos(a) * reach * out, b.c.y + std::sin(a) * reach * out + drop * t * t});
            }
            const Colour tone = b.kind == 2 ? Hex(0xFFC860) : (reach < b.r * 0.55f ? b.second : b.tone);
            const float bright = rng.Range(0.7f, 1.5f);
            for (std::size_t k = 0; k + 1 < line.size(); ++k) {
                const float t = Real(static_cast<int>(k)) / 10.0f;
                stage.canvas.Stroke(
                    {line[k], line[k + 1]}, stage.U(1.0f + 1.6f * t), stage.U(1.2f + 1.8f * t),
                    Tint(Mix(Hex(0xFFF6E0), tone, Clamp01(0.25f + t)) * (bright * (0.8f + 1.0f * t)),
                         0.35f + 0.6f * t));
            }
            stage.canvas.Glow(line.back(), stage.U(b.kind == 1 ? 9.0f : 6.0f), tone * (1.2f * bright));
        }
        stage.canvas.Stroke(Curve({{b.c.x + stage.U(rng.Bell() * 30), shore},
                                   {b.c.x + stage.U(6), Lerp(shore, b.c.y, 0.5f)},
                                   b.c}),
                            stage.U(1.0f), stage.U(2.2f), Tint(Hex(0xFFB868), 0.25f), 0.8f);
    }
    PaintTowers(stage, shore, 14, 60, 60, Hex(0x080A14), 0.3f);
    Reflect(stage, shore, stage.h, 42.0f, Tint(Hex(0x04060E), 0.2f));
    const bool crowd = rng.Chance(0.6f);
    if (crowd) {
        stage.canvas.Fill(MakeSkyline(stage, stage.Y(0.98f), stage.Y(0.03f), 1, 0, 911).Outline(stage.h),
                          Hex(0x020308));
        for (float x = -0.02f; x < 1.03f; x += rng.Range(0.035f, 0.075f)) {
            if (rng.Chance(0.75f)) {
                PaintPerson(stage, stage.At(x, 1.12f), stage.U(rng.Range(210, 270)), Hex(0x020308), 0.1f);
            } else {
                PaintChild(stage, stage.At(x, 1.07f), stage.U(150), Hex(0x020308));
            }
        }
    }
    stage.develop.bloom = 0.3f;
    stage.develop.vignette = 0.3f;
    stage.develop.exposure = 1.15f;
}

void NightSkyline(Stage& stage) {
    Rng& rng = stage.rng;
    const float water = stage.Y(rng.Range(0.6f, 0.7f));
    const float hour = stage.moment.hour > 19.6f || stage.moment.hour < 4 ? 20.4f : 19.2f;
    PaintSky(stage, SkyAt(stage, hour, 0.4f, {stage.X(0.8f), water}), water);
    if (rng.Chance(0.5f)) {
        PaintMoon(stage, stage.At(rng.Range(0.15f, 0.85f), 0.16f), stage.U(30));
    }
    const Colour dusk = hour > 20 ? Hex(0x1A2238) : Hex(0x3A3E66);
    stage.canvas.Shade({0, Whole(water - stage.Y(0.3f)), Whole(stage.w), Whole(water)}, 8,
                       [&](float, float y) {
                           return Tint(Hex(0xE89858), 0.28f * Smooth(0.3f, 0.0f, (water - y) / stage.h));
                       });
    PaintTowers(stage, water, 120, 300, 70, Mix(dusk, Hex(0x6A5A60), 0.35f), 0.3f);
    PaintTowers(stage, water, 80, 240, 84, dusk * 0.6f, 0.4f);
    PaintTowers(stage, water, 40, 150, 100, dusk * 0.3f, 0.5f);
    if (rng.Chance(0.55f)) {  // a suspension bridge crosses the whole picture
        const float deck = water - stage.U(34);
        const Colour steel = Hex(0x90A0C0) * 0.35f;
        stage.canvas.Fill(Box(0, deck, stage.w, deck + stage.U(9)), steel);
        const float towers[2] = {stage.X(0.27f), stage.X(0.73f)};
        for (const float x : towers) {
            stage.canvas.Fill(Box(x - stage.U(9), deck - stage.U(210), x + stage.U(9), water + stage.U(2)),
                              steel);
        }
        for (int span = 0; span < 3; ++span) {
            const float from = span == 0 ? -stage.X(0.19f) : towers[span - 1];
            const float to = span == 2 ? stage.X(1.19f) : towers[span];
            Path cable;
            for (int k = 0; k <= 40; ++k) {
                const float t = Real(k) / 40.0f;
                const float sag = 4.0f * t * (1.0f - t);
                const Point p{Lerp(from, to, t), deck - stage.U(205) + stage.U(185) * sag};
                cable.push_back(p);
                if (k % 2 == 0) {
                    stage.canvas.Stroke({p, {p.x, deck}}, 1, 1, Tint(steel * 1.4f, 0.5f));
                    stage.canvas.Glow(p, stage.U(8), Hex(0xFFE0A0) * 1.0f);
                }
            }
            stage.canvas.Stroke(cable, stage.U(4), stage.U(4), steel * 1.3f);
        }
        for (float x = 0; x < stage.w; x += stage.U(26)) {
            stage.canvas.Glow({x, deck - stage.U(2)}, stage.U(7), Hex(0xFFC070) * 1.2f);
        }
    }
    for (float x = 0; x < stage.w; x += stage.U(rng.Range(14, 44))) {
        stage.canvas.Glow({x, water - stage.U(5)}, stage.U(rng.Range(7, 16)),
                          Hsv(rng.Chance(0.75f) ? 0.09f : rng.Unit(), 0.55f, 1.0f) * rng.Range(0.8f, 2.2f));
    }
    Reflect(stage, water, stage.h, 80.0f, Tint(Hex(0x060C20), 0.14f));
    stage.develop.bloom = 0.22f;
    stage.develop.exposure = 1.2f;
}

void Lanterns(Stage& stage) {
    Rng& rng = stage.rng;
    const std::uint32_t seed = stage.Seed(151);
    stage.Backdrop(6, [&](float x, float y) {
        const float t = y / stage.h;
        return Mix(Mix(Hex(0x141A40), Hex(0x4A2A40), t), Hex(0x8A4A20),
                   0.55f * std::exp(-std::pow((t - 0.72f) / 0.16f, 2.0f)) *
                       Fbm(x / stage.U(300), 1.0f, 2, seed) * 1.6f);
    });
    for (int i = 0; i < 90; ++i) {
        stage.canvas.Bokeh(
            {stage.X(rng.Unit()), stage.Y(0.66f + rng.Bell() * 0.2f)}, stage.U(rng.Range(8, 36)),
            Hsv(rng.Range(0.02f, 0.13f), rng.Range(0.4f, 0.85f), 1.0f) * rng.Range(0.08f, 0.5f));
    }
    // Stalls on both sides, and people between them.
    for (int side = 0; side < 2; ++side) {
        for (int i = 2; i >= 0; --i) {
            const float near = 1.0f - Real(i) * 0.33f;
            const float x0 = side ? 1.0f - 0.05f - 0.34f * (1.0f - near) : 0.05f + 0.34f * (1.0f - near);
            const float wide = 0.15f * near + 0.02f;
            const float top = Lerp(0.60f, 0.50f, near);
            const float foot = Lerp(0.74f, 0.98f, near);
            const Colour cloth = Hsv(rng.Chance(0.6f) ? 0.0f : 0.58f, 0.75f, 0.75f);
            const float counter = Lerp(top, foot, 0.52f);
            stage.canvas.Fill(
                Box(stage.X(x0 - wide), stage.Y(top), stage.X(x0 + wide), stage.Y(foot)),
                [&](float x, float y) {
                    const float t = (y / stage.h - top) / (foot - top);
                    const float middle = 1.0f - 0.6f * std::fabs((x / stage.w - x0) / wide);
                    return Mix(Hex(0xFFB860) * (1.1f * middle), Hex(0x3A1A10), Smooth(0.12f, 0.6f, t));
                },
                stage.U(4));
            for (int k = 0; k < 40; ++k) {  // what there is to buy
                const Point ware = stage.At(x0 + wide * rng.Range(-0.9f, 0.9f), counter - rng.Unit() * 0.05f);
                const float size = stage.U(rng.Range(6, 13) * near);
                stage.canvas.Dab(ware, size, size, 0,
                                 Hsv(rng.Chance(0.6f) ? 0.03f : rng.Unit(), 0.65f, 0.95f), 2 + size * 0.3f);
            }
            stage.canvas.Fill(Box(stage.X(x0 - wide), stage.Y(counter), stage.X(x0 + wide), stage.Y(foot)),
                              Mix(cloth, Hex(0x20100C), 0.72f), stage.U(3));
            const int stripes = 9;
            for (int k = 0; k < stripes; ++k) {
                const float l = Lerp(-1.12f, 1.12f, Real(k) / Real(stripes)) * wide;
                const float r = Lerp(-1.12f, 1.12f, Real(k + 1) / Real(stripes)) * wide;
                const Colour tone = (k % 2 ? Hex(0xFFE8CC) : cloth) * 0.62f;
                stage.canvas.Fill(
                    Curve(
                        {stage.At(x0 + l * 0.86f, top - 0.075f * near),
                         stage.At(x0 + r * 0.86f, top - 0.075f * near), stage.At(x0 + r, top + 0.02f * near),
                         stage.At(x0 + (l + r) * 0.5f, top + 0.036f * near),
                         stage.At(x0 + l, top + 0.02f * near), stage.At(x0 + l * 0.86f, top - 0.075f * near)},
                        3),
                    tone, stage.U(2));
            }
        }
    }
    for (int i = 0; i < 20; ++i) {
        const float t = std::sqrt(Real(i) / 19.0f);
        const float x = 0.5f + rng.Bell() * Lerp(0.25f, 0.42f, t);
        const float size = Lerp(110, 330, t);
        const Point foot = stage.At(x, Lerp(0.76f, 1.04f, t));
        const Colour cloth = Mix(Hsv(rng.Unit(), 0.5f, 0.3f), Hex(0x0C0810), 0.45f);
        if (rng.Chance(0.25f)) {
            PaintChild(stage, foot, stage.U(size * 0.6f), cloth);
        } else {
            PaintPerson(stage, foot, stage.U(size), cloth, 0.25f);
        }
    }
    const int rows = rng.Pick(3, 4);
    for (int row = 0; row < rows; ++row) {
        const float t = Real(row) / Real(rows - 1);
        const float y0 = Lerp(0.36f, 0.02f, t);
        const float size = stage.U(Lerp(52, 150, t));
        const float sag = Lerp(0.05f, 0.12f, t);
        const Colour paper = row % 2 ? Hex(0xFF5A28) : Mix(Hex(0xFFB860), Hex(0xFFF0D0), rng.Unit() * 0.6f);
        Path string;
        for (int k = 0; k <= 24; ++k) {
            const float x = -0.05f + 1.1f * Real(k) / 24.0f;
            string.push_back(stage.At(x, y0 + sag * (1.0f - std::pow(2.0f * x - 1.0f, 2.0f))));
        }
        stage.canvas.Stroke(string, stage.U(3), stage.U(3), Hex(0x100C10));
        const int lamps = Whole(Lerp(13, 7, t));
        for (int k = 0; k < lamps; ++k) {
            const float x = (Real(k) + 0.5f) / Real(lamps);
            PaintLantern(stage, stage.At(x, y0 + sag * (1.0f - std::pow(2.0f * x - 1.0f, 2.0f))), size, paper,
                         rng.Range(0.95f, 1.2f));
        }
    }
    stage.develop.bloom = 0.25f;
    stage.develop.warmth = 0.2f;
    stage.develop.vignette = 0.4f;
}

void Concert(Stage& stage) {
    Rng& rng = stage.rng;
    const float floor = stage.Y(0.66f);
    constexpr float hues[5] = {0.6f, 0.68f, 0.78f, 0.92f, 0.03f};
    const float hue = hues[rng.Pick(0, 4)];
    const std::uint32_t seed = stage.Seed(161);
    stage.Backdrop(6, [&](float x, float y) {
        const float d = std::hypot((x - stage.X(0.5f)) / stage.w, (y - floor) / stage.h);
        return Mix(Hsv(hue, 0.75f, 0.75f), Hex(0x05040C), Smooth(0.0f, 0.65f, d)) *
               (0.6f + 0.7f * Fbm(x / stage.U(260), y / stage.U(200), 4, seed));
    });
    const int lamps = rng.Pick(6, 9);
    for (int i = 0; i < lamps; ++i) {
        const float x = (Real(i) + 0.5f) / Real(lamps);
        const Point lamp = stage.At(x, 0.06f);
        const float aim = x + rng.Range(-0.35f, 0.35f);
        const float wide = rng.Range(0.05f, 0.12f);
        const Colour tone = Hsv(hue + (i % 3 == 0 ? 0.45f : i % 3 == 1 ? 0.08f : 0.0f), 0.65f, 1.0f);
        const Point to = stage.At(aim, 0.72f);
        const Point axis = to - lamp;
        const float length = std::hypot(axis.x, axis.y);
        stage.canvas.Shade({0, Whole(lamp.y), Whole(stage.w), Whole(to.y)}, 4, [&](float px, float py) {
            const Point d{px - lamp.x, py - lamp.y};
            const float along = (d.x * axis.x + d.y * axis.y) / (length * length);
            const float off =
                std::fabs(d.x * axis.y - d.y * axis.x) / length / (stage.w * wide * (0.15f + along));
            const float beam =
                along > 0 ? std::exp(-off * off * 2.2f) * (1.0f - 0.75f * Clamp01(along)) : 0.0f;
            return Tint(
                tone * 1.25f,
                Clamp01(beam * (0.45f + 0.4f * Fbm(px / stage.U(120), py / stage.U(80), 3, seed + 2))));
        });
        stage.canvas.Glow(lamp, stage.U(90), tone * 1.3f);
        stage.canvas.Glow(lamp, stage.U(22), Colour{2.5f, 2.5f, 2.5f});
    }
    stage.canvas.Fill(Box(0, stage.Y(0.045f), stage.w, stage.Y(0.06f)), Hex(0x08080C));
    stage.canvas.Fill(
        Box(0, floor, stage.w, stage.Y(0.76f)),
        [&](float x, float) {
            return Hsv(hue, 0.6f, 0.55f) * (0.35f + 0.9f * Noise(x / stage.U(120), 0.0f, seed + 6));
        },
        3);
    const int players = rng.Pick(3, 5);
    for (int i = 0; i < players; ++i) {
        const float x = 0.5f + (Real(i) - Real(players - 1) * 0.5f) * 0.15f;
        const Point foot = stage.At(x, 0.69f);
        const float s = stage.U(210);
        PaintPerson(stage, foot, s, Hex(0x06040A), 0.5f);
        if (i != players / 2) {  // an instrument across the body
            stage.canvas.Stroke(
                {{foot.x - s * 0.16f, foot.y - s * 0.46f}, {foot.x + s * 0.34f, foot.y - s * 0.66f}},
                s * 0.07f, s * 0.03f, Hex(0x06040A));
            stage.canvas.Dab({foot.x - s * 0.12f, foot.y - s * 0.47f}, s * 0.13f, s * 0.1f, -0.35f,
                             Hex(0x06040A));
        } else {
            stage.canvas.Stroke({{foot.x + s * 0.16f, foot.y}, {foot.x + s * 0.1f, foot.y - s * 0.82f}},
                                s * 0.016f, s * 0.016f, Hex(0x06040A));
        }
    }
    for (int row = 0; row < 3; ++row) {
        const float t = Real(row) / 2.0f;
        for (float x = -0.03f; x < 1.04f; x += Lerp(0.035f, 0.085f, t) * rng.Range(0.8f, 1.2f)) {
            const float r = stage.U(Lerp(19, 46, t));
            const Point head = stage.At(x, Lerp(0.78f, 0.95f, t) + rng.Bell() * 0.02f);
            const Colour dark = Hsv(hue, 0.6f, Lerp(0.16f, 0.02f, t));
            stage.canvas.Fill(Ellipse(head, r * 0.85f, r), dark);
            stage.canvas.Fill(Ellipse({head.x, head.y + r * 2.6f}, r * 2.0f, r * 1.9f), dark);
            if (rng.Chance(0.45f)) {
                const float side = rng.Chance(0.5f) ? 1.0f : -1.0f;
                const Point hand{head.x + side * r * rng.Range(0.8f, 1.8f),
                                 head.y - r * rng.Range(2.2f, 3.4f)};
                stage.canvas.Stroke(Curve({{head.x + side * r * 1.4f, head.y + r * 2.0f},
                                           {head.x + side * r * 1.9f, head.y - r * 0.4f},
                                           hand}),
                                    r * 0.62f, r * 0.4f, dark);
                stage.canvas.Fill(Ellipse(hand, r * 0.3f, r * 0.34f), dark);
            }
        }
    }
    stage.develop.bloom = 0.25f;
    stage.develop.vignette = 0.4f;
    stage.develop.grain = 0.02f;
}

void WinterLights(Stage& stage) {
    Rng& rng = stage.rng;
    const float ground = stage.Y(0.7f);
    const float vanish = rng.Range(0.42f, 0.58f);
    stage.Backdrop(
        6, [&](float, float y) { return Mix(Hex(0x060C2A), Hex(0x2C3A74), Smooth(0.0f, 1.0f, y / ground)); });
    const bool gold = rng.Chance(0.5f);
    const Colour lamp = gold ? Hex(0xFFC060) : Hex(0x6FA8FF);
    const Colour spark = gold ? Hex(0xFFE8B8) : Hex(0xE0EEFF);
    for (int i = 0; i < 150; ++i) {
        stage.canvas.Bokeh(
            {stage.X(vanish + rng.Bell() * 0.35f), ground - stage.Y(0.06f + rng.Unit() * 0.16f)},
            stage.U(rng.Range(5, 20)), lamp * rng.Range(0.1f, 0.45f));
    }
    stage.canvas.Shade({0, Whole(ground), Whole(stage.w), Whole(stage.h)}, 3, [&](float x, float y) {
        const float depth = (y - ground) / (stage.h - ground) + 0.02f;
        const float gleam = std::exp(-std::pow((x / stage.w - vanish) / (0.1f + depth * 0.5f), 2.0f));
        const float rough = Fbm(x / stage.U(160), y / stage.U(20), 4, stage.Seed(6));
        return Mix(Hex(0x0C1024), lamp, 0.55f * gleam * rough);
    });
    for (int i = 0; i < 7; ++i) {
        const float depth = 0.12f * std::pow(8.0f, Real(i) / 6.0f);
        for (int side = -1; side <= 1; side += 2) {
            const Point foot{stage.X(vanish) + Real(side) * stage.w * 0.5f * depth,
                             ground + (stage.h - ground) * depth * 0.85f};
            const float s = stage.U(1150) * depth;
            std::vector<Point> ends{foot};
            stage.canvas.Stroke({foot, {foot.x, foot.y - s * 0.4f}}, s * 0.05f, s * 0.03f, Hex(0x140E14));
            for (int k = 0; k < 22; ++k) {  // boughs, each wound with lamps
                const float a = -pi * 0.5f + rng.Bell() * 1.5f;
                const float reach = s * rng.Range(0.25f, 0.6f);
                const Point base{foot.x, foot.y - s * rng.Range(0.26f, 0.42f)};
                const Point tip{base.x + std::cos(a) * reach * 0.75f, base.y + std::sin(a) * reach};
                const Path bough =
                    Curve({base, {Lerp(base.x, tip.x, 0.6f), Lerp(base.y, tip.y, 0.45f)}, tip}, 14);
                stage.canvas.Stroke(bough, s * 0.016f, s * 0.004f, Hex(0x181018));
                for (const Point& p : bough) {
                    const Point at{p.x + rng.Bell() * s * 0.03f, p.y + rng.Bell() * s * 0.03f};
                    stage.canvas.Glow(at, std::max(2.5f, s * 0.018f), lamp * rng.Range(0.5f, 1.4f));
                    stage.canvas.Glow(at, std::max(1.4f, s * 0.006f), spark * 2.0f);
                }
            }
            for (int k = 0; k < 16; ++k) {
                const Point at{foot.x + rng.Bell() * s * 0.03f, foot.y - s * 0.4f * Real(k) / 16.0f};
                stage.canvas.Glow(at, std::max(2.5f, s * 0.016f), lamp * 1.2f);
            }
            stage.canvas.Glow({foot.x, foot.y - s * 0.5f}, s * 0.7f, lamp * 0.12f);
        }
    }
    PaintPerson(stage, {stage.X(vanish - 0.025f), ground + stage.Y(0.09f)}, stage.U(150), Hex(0x06060E),
                0.3f);
    PaintPerson(stage, {stage.X(vanish + 0.03f), ground + stage.Y(0.09f)}, stage.U(140), Hex(0x06060E), 0.2f);
    if (stage.moment.weather != Weather::Clear) {
        PaintSnowfall(stage, 160, Hex(0xE8EEFF));
    }
    stage.develop.bloom = 0.3f;
    stage.develop.vignette = 0.35f;
}

}  // namespace sample
