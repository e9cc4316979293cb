#include <numbers>

#include "figures.h"
#include "nature.h"
#include "scenes.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

// A garden far out of focus: soft patches of two colours and the discs of light between the leaves.
void SoftBackground(Stage& stage, Colour dark, Colour light, Colour discs, int count) {
    const std::uint32_t seed = stage.Seed(101);
    stage.Backdrop(8, [&](float x, float y) {
        const float t = Fbm(x / stage.U(420), y / stage.U(420), 3, seed);
        const float down = y / stage.h;
        return Mix(dark, light, Smooth(0.25f, 0.75f, t + 0.22f * (0.5f - down)));
    });
    for (int i = 0; i < count; ++i) {
        const float r = stage.U(stage.rng.Range(14, 70));
        stage.canvas.Bokeh(stage.At(stage.rng.Unit(), stage.rng.Unit()), r,
                           discs * stage.rng.Range(0.05f, 0.34f));
    }
}

struct Petals {
    int count;
    float length;
    float width;
    Colour inner;
    Colour outer;
};

// A ring of petals around the centre, seen from a little to the side when `flat` is below 1.
void PaintPetalRing(Stage& stage, Point centre, const Petals& petals, float turn, float flat,
                    float softness) {
    for (int i = 0; i < petals.count; ++i) {
        const float a = turn + 2 * pi * Real(i) / Real(petals.count) + stage.rng.Bell() * 0.08f;
        Path shape = LeafShape({0, 0}, petals.length * stage.rng.Range(0.92f, 1.06f), petals.width, a,
                               stage.rng.Bell() * 0.06f);
        for (Point& p : shape) {
            p = {centre.x + p.x, centre.y + p.y * flat};
        }
        const float tone = 0.82f + 0.22f * std::cos(a + 2.2f) + stage.rng.Bell() * 0.06f;
        const Point across{-std::sin(a), std::cos(a)};
        Path shadow = shape;
        for (Point& p : shadow) {
            p = p + Point{petals.length * 0.03f, petals.length * 0.05f};
        }
        stage.canvas.Fill(shadow, Tint(petals.inner * 0.25f, 0.3f), softness + petals.length * 0.025f);
        stage.canvas.Fill(
            shape,
            [&](float x, float y) {
                const Point d{x - centre.x, (y - centre.y) / flat};
                const float along = std::hypot(d.x, d.y) / petals.length;
                const float side = (d.x * across.x + d.y * across.y) / petals.width;
                const float vein = 0.05f * std::sin(side * 46.0f);
                return Mix(petals.inner, petals.outer, Smooth(0.1f, 0.85f, along)) *
                       (tone + vein + 0.16f * std::fabs(side));
            },
            softness);
    }
}

void PaintFallingPetals(Stage& stage, int count, Colour colour) {
    for (int i = 0; i < count; ++i) {
        const float near = std::pow(stage.rng.Unit(), 3.0f);
        const float size = stage.U(4 + 14 * near);
        stage.canvas.Dab(stage.At(stage.rng.Unit(), stage.rng.Unit()), size,
                         size * stage.rng.Range(0.35f, 0.8f), stage.rng.Range(0, pi),
                         Tint(colour, 0.9f - 0.4f * near), 1.2f + size * 0.5f * near);
    }
}

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
    if (river) {
        Reflect(stage, horizon + stage.U(8), stage.h, 32.0f, Tint(Hex(0x3A6A78) * sky.light, 0.26f));
        for (int i = 0; i < 240; ++i) {  // a raft of petals drifts by
            const float t = rng.Unit();
            const float y = Lerp(horizon + stage.U(20), stage.h, t);
            stage.canvas.Dab({stage.X(0.5f + rng.Bell() * 0.6f * (1 + t)), y}, stage.U(2 + 5 * t),
                             stage.U(0.8f + 2 * t), 0, Tint(blossom.light, 0.8f));
        }
    }
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
