#include <numbers>

#include "figures.h"
#include "nature.h"
#include "scenes.h"
#include "tableware.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

}  // namespace

void CatWindow(Stage& stage) {
    Rng& rng = stage.rng;
    const std::uint32_t seed = stage.Seed(221);
    const float hour = std::clamp(stage.moment.hour, 6.4f, 18.2f);
    const Sky sky = SkyAt(stage, hour, 0.4f, {stage.X(0.7f), stage.Y(0.2f)});
    const Season season = stage.TimeOfYear();
    const Colour leaf = season == Season::Autumn   ? Hex(0xD88A30)
                        : season == Season::Winter ? Hex(0xC8D4E0)
                        : season == Season::Spring ? Hex(0xE8A8C0)
                                                   : Hex(0x7AB04A);
    stage.Backdrop(6, [&](float x, float y) {
        const float t = y / stage.h;
        const Colour c =
            Mix(Mix(sky.zenith, sky.horizon, 0.6f), leaf * sky.light,
                Smooth(0.25f, 0.7f, t + 0.5f * (Fbm(x / stage.U(260), y / stage.U(260), 3, seed) - 0.5f)));
        return c * 1.25f;
    });
    for (int i = 0; i < 70; ++i) {
        stage.canvas.Bokeh(stage.At(rng.Unit(), rng.Range(0.05f, 0.8f)), stage.U(rng.Range(18, 60)),
                           Mix(leaf, Hex(0xFFFFFF), rng.Unit() * 0.6f) * rng.Range(0.05f, 0.28f));
    }
    const float sill = stage.Y(0.78f);
    const Colour frame = Hex(0x5A4636) * 0.6f;
    auto bar = [&](float l, float t, float r, float b) {
        stage.canvas.Fill(Box(stage.X(l), stage.Y(t), stage.X(r), stage.Y(b)), [&](float x, float) {
            return frame * (0.75f + 0.4f * Clamp01((x - stage.X(l)) / (stage.X(r - l) + 1)));
        });
    };
    bar(0.0f, 0.0f, 0.09f, 0.8f);
    bar(0.91f, 0.0f, 1.0f, 0.8f);
    bar(0.0f, 0.0f, 1.0f, 0.06f);
    bar(0.485f, 0.0f, 0.515f, 0.8f);
    bar(0.0f, 0.36f, 1.0f, 0.38f);
    for (int side = 0; side < 2; ++side) {
        const float l = side ? 0.8f : -0.02f;
        stage.canvas.Fill(
            Box(stage.X(l), 0, stage.X(l + 0.22f), stage.Y(0.86f)),
            [&](float x, float y) {
                const float fold =
                    std::sin(x / stage.U(13) + 2.5f * Noise(x / stage.U(70), y / stage.U(600), seed + 3));
                const float lit = side ? Smooth(stage.X(1.0f), stage.X(0.78f), x)
                                       : Smooth(stage.X(0.0f), stage.X(0.22f), x);
                return Tint(Hex(0xF4E8D4) * (0.35f + 0.55f * lit + 0.16f * fold), 0.82f);
            },
            3);
    }
    stage.canvas.Fill(Box(0, sill, stage.w, stage.h), [&](float x, float y) {
        const float t = (y - sill) / (stage.h - sill);
        const float grain = Noise(x / stage.U(360), y / stage.U(7), seed + 4);
        const float shine = std::exp(-t * 3.0f) * (0.5f + 0.5f * Noise(x / stage.U(280), 1.0f, seed + 5));
        return Mix(Hex(0x6A4A30) * (0.45f + 0.5f * grain), sky.horizon, 0.42f * shine) * (1.0f - 0.55f * t);
    });
    const float x = rng.Range(0.32f, 0.66f);
    const Colour fur[4] = {Hex(0x14100E), Hex(0x2A1E16), Hex(0x3A2A1A), Hex(0x1E2024)};
    const Colour coat = fur[rng.Pick(0, 3)];
    const float s = stage.U(rng.Range(400, 480));
    const Point foot = stage.At(x, 0.84f);
    const float facing = rng.Chance(0.5f) ? 1.0f : -1.0f;
    stage.canvas.Dab({foot.x, foot.y + s * 0.03f}, s * 0.5f, s * 0.07f, 0, Tint(Hex(0x0A0604), 0.6f),
                     s * 0.05f);
    PaintSittingCat(stage, foot + Point{0, -stage.U(3)}, s * 1.012f, Mix(coat, sky.horizon, 0.55f),
                    facing);  // light around the fur
    PaintSittingCat(stage, foot, s, coat, facing);
    const float potX = x < 0.5f ? rng.Range(0.72f, 0.78f) : rng.Range(0.2f, 0.26f);
    const Point pot = stage.At(potX, 0.85f);
    const float q = stage.U(120);
    for (int i = 0; i < 26; ++i) {
        stage.canvas.Fill(
            LeafShape({pot.x + rng.Bell() * q * 0.4f, pot.y - q * 0.95f}, q * rng.Range(0.8f, 1.9f), q * 0.3f,
                      -pi * 0.5f + rng.Bell() * 1.5f, rng.Bell() * 0.3f),
            Mix(Hex(0x12240E), Hex(0x6AA03C), rng.Unit() * rng.Unit()));
    }
    stage.canvas.Fill(
        {{pot.x - q * 0.5f, pot.y - q},
         {pot.x + q * 0.5f, pot.y - q},
         {pot.x + q * 0.38f, pot.y},
         {pot.x - q * 0.38f, pot.y}},
        [&](float px, float) { return Hex(0xA85A38) * (0.28f + 0.25f * std::fabs(px - pot.x) / q); });
    stage.canvas.Fill(Box(pot.x - q * 0.55f, pot.y - q * 1.04f, pot.x + q * 0.55f, pot.y - q * 0.86f),
                      Hex(0xA85A38) * 0.42f);
    stage.develop.bloom = 0.22f;
    stage.develop.warmth = 0.15f;
    stage.develop.vignette = 0.35f;
}

void BookLamp(Stage& stage) {
    Rng& rng = stage.rng;
    PaintTable(stage, Hex(0x6A4228), 4.0f, false);
    const Point light = stage.At(rng.Range(0.1f, 0.3f), rng.Range(0.02f, 0.2f));
    const std::uint32_t seed = stage.Seed(231);
    const float angle = rng.Range(-0.25f, 0.25f);
    const Point c = stage.At(0.52f, 0.52f);
    auto at = [&](float x, float y) {
        const float px = stage.U(x * 420.0f);
        const float py = stage.U(y * 420.0f);
        return Point{c.x + px * std::cos(angle) - py * std::sin(angle),
                     c.y + px * std::sin(angle) + py * std::cos(angle)};
    };
    Path shadow{at(-1.08f, -0.66f), at(1.12f, -0.66f), at(1.12f, 0.80f), at(-1.02f, 0.80f)};
    stage.canvas.Fill(shadow, Tint(Hex(0x0A0402), 0.7f), stage.U(18));
    stage.canvas.Fill({at(-1.05f, -0.70f), at(1.05f, -0.70f), at(1.05f, 0.73f), at(-1.05f, 0.73f)},
                      Hsv(rng.Unit(), 0.5f, 0.4f));
    for (int side = -1; side <= 1; side += 2) {
        const float s = Real(side);
        const Path page =
            Curve({at(0, -0.64f), at(0.3f * s, -0.70f), at(1.0f * s, -0.66f), at(1.01f * s, 0.0f),
                   at(1.0f * s, 0.67f), at(0.3f * s, 0.63f), at(0, 0.70f), at(0, 0.0f), at(0, -0.64f)});
        stage.canvas.Fill(page, [&](float x, float y) {
            const float u = ((x - c.x) * std::cos(angle) + (y - c.y) * std::sin(angle)) / stage.U(420) * s;
            const float v = ((y - c.y) * std::cos(angle) - (x - c.x) * std::sin(angle)) / stage.U(420);
            const float bow = 0.62f + 0.42f * Smooth(0.0f, 0.3f, u) - 0.12f * u * (s > 0 ? 1.3f : 0.4f);
            Colour paper = Hex(0xF8EED8) * bow;
            // Lines of print, words of unequal length; here and there a paragraph ends.
            const float row = (v + 0.55f) / 0.052f;
            const int index = Whole(row);
            const float within = row - std::floor(row);
            if (u > 0.12f && u < 0.9f && index >= 0 && index < 21 && within > 0.25f && within < 0.62f) {
                const float end =
                    HashUnit(index, side, seed) > 0.82f ? 0.35f + 0.4f * HashUnit(index, 7, seed) : 0.9f;
                const float word = Noise(u * 34.0f, Real(index) * 3.7f + s, seed + 2);
                const float stroke = Noise(u * 190.0f, row * 9.0f, seed + 3);
                if (u < end && word > 0.28f) {
                    paper = Mix(paper, Hex(0x2A2018), 0.35f + 0.5f * stroke);
                }
            }
            return paper;
        });
    }
    stage.canvas.Stroke({at(0.02f, -0.64f), at(0.02f, 0.9f)}, stage.U(12), stage.U(12),
                        Hsv(rng.Unit(), 0.7f, 0.7f));
    // Spectacles lie on the page; a cup steams behind.
    const Point g = at(0.45f, 0.35f);
    for (int side = -1; side <= 1; side += 2) {
        const Point lens = g + Point{stage.U(74) * Real(side), 0};
        Path ring = Ellipse(lens, stage.U(58), stage.U(46));
        ring.push_back(ring.front());
        Path cast = ring;
        for (Point& p : cast) {
            p = p + Point{stage.U(9), stage.U(13)};
        }
        stage.canvas.Stroke(cast, stage.U(7), stage.U(7), Tint(Hex(0x1A0E06), 0.35f), 3);
        stage.canvas.Fill(Ellipse(lens, stage.U(58), stage.U(46)), Tint(Hex(0xFFFFFF), 0.10f));
        stage.canvas.Stroke(ring, stage.U(8), stage.U(8), Hex(0x241610));
    }
    stage.canvas.Stroke(
        Curve({g + Point{-stage.U(18), 0}, g + Point{0, -stage.U(12)}, g + Point{stage.U(18), 0}}),
        stage.U(7), stage.U(7), Hex(0x241610));
    const Point cup = stage.At(0.87f, 0.2f);
    PaintDish(stage, cup, stage.U(150), Hex(0xD8E0E4));
    stage.canvas.Fill(Ellipse(cup, stage.U(98), stage.U(98)), Hex(0xEEF2F4));
    stage.canvas.Fill(Ellipse(cup, stage.U(86), stage.U(86)), [&](float x, float y) {
        return Mix(Hex(0xB8641C), Hex(0x7A3408), std::hypot(x - cup.x, y - cup.y) / stage.U(86));
    });
    PaintSteam(stage, cup, stage.U(190), 0.06f);
    // The lamp: warm near, dark far.
    stage.canvas.Shade(stage.canvas.Whole(), 8, [&](float x, float y) {
        const float d = std::hypot(x - light.x, y - light.y) / stage.U(1000);
        return Tint(Mix(Hex(0x2A1204), Hex(0x0A0608), Clamp01(d - 0.5f)), 0.82f * Smooth(0.25f, 1.5f, d));
    });
    stage.canvas.Glow(light, stage.U(950), Hex(0xFFB860) * 0.45f);
    stage.develop.warmth = 0.35f;
    stage.develop.vignette = 0.45f;
    stage.develop.exposure = 1.3f;
}

}  // namespace sample
