#include <numbers>

#include "figures.h"
#include "nature.h"
#include "petals.h"
#include "scenes.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

}  // namespace

void CherryTrees(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(rng.Range(0.66f, 0.74f));
    const Sky sky = SkyAt(stage, std::clamp(stage.moment.hour, 7.0f, 17.4f), CoverOf(stage) * 0.8f,
                          {stage.X(0.05f), stage.Y(0.1f)});
    PaintSky(stage, sky, horizon);
    const LeafTones blossom = Lit(Blossom(rng), Mix(sky.light, {1, 1, 1}, 0.5f));
    PaintHill(stage, MakeSkyline(stage, horizon, stage.Y(0.08f), 2.0f, 0.3f, 861), horizon + stage.Y(0.1f),
              Mix(Hex(0x6A8C64), sky.horizon, 0.5f), Hex(0x5A8040) * sky.light, 0.3f);
    for (int i = 0; i < 26; ++i) {
        const float size = stage.U(rng.Range(26, 60));
        const LeafTones far{Mix(blossom.shade, sky.horizon, 0.35f), Mix(blossom.body, sky.horizon, 0.3f),
                            Mix(blossom.light, sky.horizon, 0.2f)};
        PaintFoliage(stage, {stage.X(rng.Range(-0.02f, 1.02f)), horizon - size * 0.2f}, size * 1.2f,
                     size * 0.8f, 110, stage.U(5), far, -1);
    }
    stage.canvas.Blur({0, 0, Whole(stage.w), Whole(stage.h)}, stage.U(2.2f));
    const bool river = rng.Chance(0.5f);
    stage.canvas.Shade({0, Whole(horizon), Whole(stage.w), Whole(stage.h)}, 2, [&](float x, float y) {
        const float t = (y - horizon) / (stage.h - horizon);
        const float patch = Fbm(x / stage.U(140), y / stage.U(30), 4, stage.Seed(4));
        Colour c = Mix(Hex(0x8CB850), Hex(0x3C6A24), t) * sky.light * (0.7f + 0.6f * patch);
        const float fallen = Smooth(0.55f, 0.75f, Fbm(x / stage.U(90), y / stage.U(26), 4, stage.Seed(5)));
        return Mix(c, blossom.body, fallen * 0.55f);
    });
    TreeLook look;
    look.leaves = blossom;
    look.bark = Hex(0x2E221E) * Mix(sky.light, {1, 1, 1}, 0.3f);
    look.dabSize = 7.5f;
    look.spread = 1.15f;
    const int trees = rng.Pick(2, 3);
    const bool fromLeft = rng.Chance(0.5f);
    for (int i = 0; i < trees; ++i) {
        float x = (Real(i) + rng.Range(0.1f, 0.35f)) / Real(trees);
        x = fromLeft ? 1.0f - x : x;
        PaintTree(stage, {stage.X(x), horizon + stage.Y(river ? 0.02f : 0.05f + 0.05f * Real(i))},
                  stage.U(rng.Range(560, 700) + 110.0f * Real(i)), look);
    }
    if (river) {
        Reflect(stage, horizon + stage.Y(0.035f), stage.h, 32.0f, Tint(Hex(0x3A6A78) * sky.light, 0.26f));
        for (int i = 0; i < 240; ++i) {  // a raft of petals drifts by
            const float t = rng.Unit();
            const float y = Lerp(horizon + stage.Y(0.06f), stage.h, t);
            stage.canvas.Dab({stage.X(0.5f + rng.Bell() * 0.6f * (1 + t)), y}, stage.U(2 + 5 * t),
                             stage.U(0.8f + 2 * t), 0, Tint(blossom.light, 0.8f));
        }
    }
    // A branch hangs into the picture close to the viewer.
    const float side = fromLeft ? 0.0f : 1.0f;
    const Path branch = Curve({stage.At(side, -0.02f), stage.At(Lerp(side, 0.5f, 0.4f), 0.08f),
                               stage.At(Lerp(side, 0.5f, 0.95f), 0.19f)});
    stage.canvas.Stroke(branch, stage.U(22), stage.U(5), look.bark, 1.0f);
    for (std::size_t i = 2; i < branch.size(); i += 2) {
        for (int k = 0; k < 5; ++k) {
            const Point c{branch[i].x + stage.U(rng.Bell() * 74),
                          branch[i].y + stage.U(rng.Bell() * 60 + 14)};
            const float r = stage.U(rng.Range(13, 22));
            PaintPetalRing(stage, c, {5, r, r * 0.95f, blossom.shade * 0.95f, blossom.light},
                           rng.Range(0, pi), rng.Range(0.6f, 1.0f), 0.8f);
            stage.canvas.Dab(c, r * 0.18f, r * 0.18f, 0, Hex(0xB84A6A));
        }
    }
    PaintFallingPetals(stage, 70, blossom.light);
    stage.develop.warmth = 0.05f;
}

void MapleBranch(Stage& stage) {
    Rng& rng = stage.rng;
    const LeafTones back = AutumnLeaves(rng);
    const bool late = stage.moment.month >= 10 || stage.moment.month <= 1;
    SoftBackground(stage, late ? Mix(Hex(0x2A2A14), back.shade, 0.4f) : Hex(0x1E3A12),
                   late ? Mix(back.body, Hex(0xE8C070), 0.4f) : Hex(0x9CC048), Hex(0xFFE8B0), 46);
    stage.canvas.Glow(stage.At(rng.Range(0.55f, 0.9f), rng.Range(0.0f, 0.25f)), stage.U(800),
                      Hex(0xFFE2A0) * 0.7f);
    for (int layer = 0; layer < 3; ++layer) {
        const float blur = layer == 0 ? 14.0f : layer == 1 ? 5.0f : 0.0f;
        const int count = layer == 2 ? 34 : 26;
        const float slope = rng.Range(0.12f, 0.4f);
        if (layer == 2) {
            const Path twig = Curve({stage.At(-0.02f, 0.02f), stage.At(0.3f, 0.14f + slope * 0.3f),
                                     stage.At(0.62f, 0.2f + slope), stage.At(0.92f, 0.34f + slope)});
            stage.canvas.Stroke(twig, stage.U(14), stage.U(3), Hex(0x2A1A12));
        }
        for (int i = 0; i < count; ++i) {
            const float t = rng.Unit();
            const Point c = layer == 2 ? stage.At(0.02f + 0.9f * t + rng.Bell() * 0.10f,
                                                  0.06f + (0.14f + slope) * t * 1.3f + rng.Bell() * 0.2f)
                                       : stage.At(rng.Unit(), rng.Range(-0.05f, 0.8f));
            const float size = stage.U(rng.Range(54, 104)) * (layer == 1 ? 0.8f : 1.0f);
            const float warm = rng.Unit();
            const Colour body = late ? Mix(Mix(Hex(0xD8331A), Hex(0xF08A20), warm), Hex(0xF2C030),
                                           Smooth(0.75f, 1.0f, rng.Unit()))
                                     : Mix(Hex(0x4E8A24), Hex(0x9CC040), warm);
            const float angle = pi * 0.5f + rng.Bell() * 1.3f;
            const float through = rng.Range(0.6f, 1.35f);  // the light shines through some leaves
            if (layer == 2) {
                stage.canvas.Fill(MapleLeaf(c + Point{stage.U(8), stage.U(12)}, size, angle),
                                  Tint(Hex(0x1A0A06), 0.22f), stage.U(7));
            }
            stage.canvas.Fill(
                MapleLeaf(c, size, angle),
                [&](float x, float y) {
                    const float dx = (x - c.x) / size;
                    const float dy = (y - c.y) / size;
                    const float d = std::hypot(dx, dy);
                    const float a = std::atan2(dy, dx) - angle;
                    const float vein =
                        Smooth(0.10f, 0.0f, std::fabs(a - 0.72f * std::round(a / 0.72f)) * d * 2.2f);
                    const float mottle = Fbm(dx * 5.0f + warm * 40.0f, dy * 5.0f, 3, stage.Seed(7)) - 0.5f;
                    return Tint(
                        Mix(body * (through * (0.8f + 0.3f * d + 0.5f * mottle)), body * 1.6f, vein * 0.45f),
                        layer == 0 ? 0.75f : 0.97f);
                },
                stage.U(blur));
        }
    }
    stage.develop.saturation = 1.12f;
    stage.develop.warmth = 0.2f;
    stage.develop.vignette = 0.35f;
}

void TreeAvenue(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(rng.Range(0.54f, 0.6f));
    const float vanish = rng.Range(0.42f, 0.58f);
    const Sky sky = SkyAt(stage, std::clamp(stage.moment.hour, 7.5f, 17.2f), 0.35f,
                          {stage.X(vanish), horizon - stage.Y(0.1f)});
    PaintSky(stage, sky, horizon);
    stage.canvas.Glow({stage.X(vanish), horizon - stage.Y(0.06f)}, stage.U(460), sky.sunLight * 0.55f);
    const bool autumn = stage.TimeOfYear() == Season::Autumn;
    const LeafTones leaves =
        autumn ? LeafTones{Hex(0x8A5A10), Hex(0xE2A81C), Hex(0xFFE678)} : LeavesOf(stage);
    const std::uint32_t seed = stage.Seed(111);
    stage.canvas.Shade({0, Whole(horizon), Whole(stage.w), Whole(stage.h)}, 1, [&](float x, float y) {
        const float depth = (y - horizon) / (stage.h - horizon) + 0.02f;
        const float across = (x / stage.w - vanish) / depth;
        const float road = Smooth(0.36f, 0.31f, std::fabs(across));
        const float px = across * 9.0f;
        const float py = 5.0f / depth;
        const float litter =
            Noise(px * 5.0f, py * 4.0f, seed) * 0.5f + Noise(x * 0.16f, y * 0.24f, seed + 1) * 0.5f;
        const float stripe =
            Smooth(0.4f, 0.62f, Noise(py * 0.55f, across * 0.6f, seed + 2));  // sun between the trunks
        Colour verge = Mix(leaves.shade * 0.75f, leaves.body * (autumn ? 1.0f : 0.6f), litter);
        if (!autumn) {
            verge = Mix(Hex(0x35601E), Hex(0x8CB048), litter);
        }
        Colour way = Mix(Hex(0x6E665C), Hex(0xA89C8A), litter * 0.6f + 0.2f);
        way = Mix(way, leaves.body,
                  (autumn ? 0.85f : 0.1f) * Smooth(0.6f, 0.75f, litter + 0.25f * std::fabs(across)));
        const Colour c = Mix(verge, way, road) * sky.light * Lerp(0.55f, 1.25f, stripe);
        return Mix(c, sky.horizon, 0.7f * std::exp(-depth * 12.0f));
    });
    for (int i = 0; i < 9; ++i) {
        const float t = Real(i) / 8.0f;
        const float depth = 0.07f * std::pow(15.0f, t);
        for (int side = -1; side <= 1; side += 2) {
            const Point foot{stage.X(vanish) + stage.w * depth * (0.46f + rng.Bell() * 0.04f) * Real(side),
                             horizon + (stage.h - horizon) * depth};
            const float haze = 0.65f * std::exp(-depth * 7.0f);
            const float scale = stage.U(900.0f) * depth;
            TreeLook look;
            look.bark = Mix(Hex(0x3A2A20) * sky.light, sky.horizon, haze);
            look.leaves = Lit(leaves, sky.light);
            look.leaves = {Mix(look.leaves.shade, sky.horizon, haze),
                           Mix(look.leaves.body, sky.horizon, haze),
                           Mix(look.leaves.light, sky.horizon, haze * 0.6f)};
            stage.canvas.Stroke(Curve({foot,
                                       {foot.x + scale * 0.01f, foot.y - scale * 0.35f},
                                       {foot.x - Real(side) * scale * 0.05f, foot.y - scale * 0.85f}}),
                                scale * 0.085f, scale * 0.04f, look.bark);
            for (int k = 0; k < 3; ++k) {
                stage.canvas.Stroke(
                    Curve({{foot.x, foot.y - scale * (0.45f + 0.12f * Real(k))},
                           {foot.x - Real(side) * scale * 0.16f, foot.y - scale * (0.72f + 0.1f * Real(k))},
                           {foot.x - Real(side) * scale * 0.34f, foot.y - scale * (0.8f + 0.12f * Real(k))}}),
                    scale * 0.035f, scale * 0.01f, look.bark);
            }
            const float dab = std::max(1.8f, scale * 0.022f);
            for (int k = 0; k < 12; ++k) {
                PaintFoliage(stage,
                             {foot.x + rng.Bell() * scale * 0.5f - Real(side) * scale * 0.05f,
                              foot.y - scale * rng.Range(0.62f, 1.18f)},
                             scale * rng.Range(0.2f, 0.3f), scale * rng.Range(0.14f, 0.22f), 70, dab,
                             look.leaves, -Real(side));
            }
        }
    }
    if (rng.Chance(0.55f)) {
        const Point foot{stage.X(vanish + 0.012f), horizon + (stage.h - horizon) * 0.2f};
        PaintPerson(stage, foot, stage.U(105), Hex(0x2A2428), 0.3f);
        if (rng.Chance(0.5f)) {
            PaintChild(stage, foot + Point{stage.U(42), stage.U(3)}, stage.U(66), Hex(0x7A2A2A));
        }
    }
    PaintFallingPetals(stage, autumn ? 46 : 8, leaves.light);
    stage.develop.warmth = autumn ? 0.2f : 0.05f;
}

void Bamboo(Stage& stage) {
    Rng& rng = stage.rng;
    const std::uint32_t seed = stage.Seed(121);
    const float glow = rng.Range(0.35f, 0.65f);
    stage.Backdrop(6, [&](float x, float y) {
        const float dx = x / stage.w - glow;
        const float t = y / stage.h;
        const Colour c = Mix(Hex(0xDCE88A), Hex(0x2C5A24),
                             Smooth(0.05f, 0.8f, std::fabs(dx) * 1.4f + std::fabs(t - 0.3f) * 0.7f));
        return c * (0.75f + 0.5f * Fbm(x / stage.U(160), y / stage.U(160), 3, seed));
    });
    for (int layer = 0; layer < 4; ++layer) {
        const float t = Real(layer) / 3.0f;
        const int stems = Whole(Lerp(46, 7, t));
        for (int i = 0; i < stems; ++i) {
            float x = (Real(i) + rng.Range(0.1f, 0.9f)) / Real(stems);
            if (t > 0.5f && std::fabs(x - 0.5f) < 0.12f) {
                x += x < 0.5f ? -0.15f : 0.15f;
            }
            const float width = stage.U(Lerp(9, 62, t * t) * rng.Range(0.75f, 1.2f));
            const float lean = rng.Bell() * 0.05f * stage.w;
            const Colour body =
                Mix(Mix(Hex(0x4E7E2C), Hex(0x86A83C), rng.Unit()), Hex(0xD0E090), 0.65f * (1 - t));
            const float node = stage.U(Lerp(70, 230, t));
            const float phase = rng.Unit();
            const float left = stage.X(x);
            stage.canvas.Fill(
                {{left - width * 0.5f, stage.h + 2},
                 {left + lean - width * 0.45f, -2},
                 {left + lean + width * 0.45f, -2},
                 {left + width * 0.5f, stage.h + 2}},
                [&](float px, float y) {
                    const float axis = left + lean * (1.0f - y / stage.h);
                    const float across = std::clamp((px - axis) / (width * 0.5f), -1.0f, 1.0f);
                    const float along = y / node + phase;
                    const float ring = std::fabs(along - std::round(along)) * node / width;
                    const float lit =
                        0.45f + 0.75f * std::exp(-std::pow((across + 0.35f) * 2.0f, 2.0f)) - 0.25f * across;
                    Colour c = body * lit * (0.9f + 0.25f * Noise(px * 0.05f, y * 0.006f, seed + 4));
                    c = Mix(c, Hex(0xE8E8C0) * lit, 0.5f * Smooth(0.09f, 0.03f, std::fabs(ring - 0.09f)));
                    return Mix(c, body * 0.25f, Smooth(0.06f, 0.0f, ring));
                });
        }
        for (int i = 0; i < 150; ++i) {
            const Point base = stage.At(rng.Unit(), std::pow(rng.Unit(), 1.6f) * Lerp(0.75f, 0.4f, t));
            stage.canvas.Fill(LeafShape(base, stage.U(Lerp(26, 90, t)), stage.U(Lerp(5, 13, t)),
                                        pi * 0.5f + rng.Bell() * 1.3f),
                              Tint(Mix(Hex(0x3A6A1E), Hex(0xD8EC7A), rng.Unit()), 0.85f),
                              t > 0.9f ? stage.U(3) : 0);
        }
        if (layer < 3) {
            stage.canvas.Shade(stage.canvas.Whole(), 8,
                               [&](float, float) { return Tint(Hex(0xDCEA9A), 0.13f); });
        }
    }
    stage.canvas.Shade({0, Whole(stage.Y(0.8f)), Whole(stage.w), Whole(stage.h)}, 2, [&](float x, float y) {
        const float dx = x / stage.w - 0.5f;
        const float depth = (y / stage.h - 0.8f) / 0.2f;
        const float path = Smooth(0.05f + 0.3f * depth, 0.02f + 0.2f * depth, std::fabs(dx));
        const float litter = Fbm(x / stage.U(40), y / stage.U(14), 4, seed + 8);
        return Tint(
            Mix(Mix(Hex(0x3A3A18), Hex(0x8A8038), litter), Mix(Hex(0x8A7E68), Hex(0xCFC4A8), litter), path),
            Smooth(0.0f, 0.25f, depth));
    });
    for (int i = 0; i < 7; ++i) {  // shafts of light
        const float x = rng.Range(-0.1f, 0.9f);
        const float wide = rng.Range(0.02f, 0.07f);
        stage.canvas.Fill({stage.At(x, -0.02f), stage.At(x + wide, -0.02f), stage.At(x + wide + 0.34f, 1.02f),
                           stage.At(x + 0.28f, 1.02f)},
                          Tint(Hex(0xFFFBD0), 0.07f), stage.U(14));
    }
    stage.develop.bloom = 0.12f;
}

}  // namespace sample
