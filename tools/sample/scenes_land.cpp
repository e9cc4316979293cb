#include <numbers>

#include "figures.h"
#include "nature.h"
#include "scenes.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

// Where the sun stands at an hour: from the left in the morning to the right in the evening.
Point SunPlace(Stage& stage, float horizon) {
    const float hour = stage.moment.hour;
    const float across = Clamp01((hour - 5.0f) / 14.0f);
    const float high = std::sin(across * pi);
    return {stage.X(0.12f + 0.76f * across), stage.Y(horizon - 0.04f - 0.75f * high * high)};
}

float LightSide(const Sky& sky, const Stage& stage) { return sky.sun.x < stage.w * 0.5f ? -1.0f : 1.0f; }

}  // namespace

void MountainLake(Stage& stage) {
    Rng& rng = stage.rng;
    const float water = stage.Y(rng.Range(0.56f, 0.64f));
    const Sky sky = SkyAt(stage, stage.moment.hour, CoverOf(stage), SunPlace(stage, 0.6f));
    PaintSky(stage, sky, water);
    const bool winter = stage.TimeOfYear() == Season::Winter;
    const bool autumn = stage.TimeOfYear() == Season::Autumn;
    const float side = LightSide(sky, stage);
    MountainLook far;
    far.rock = Hex(0x5E626E);
    far.forest = Hex(0x4A5A50);
    far.haze = Mix(sky.horizon, sky.zenith, 0.35f);
    far.hazeAmount = 0.36f;
    far.snowY = water - stage.Y(winter ? 0.02f : rng.Range(0.16f, 0.26f));
    far.bottomY = water;
    far.light = sky.light;
    far.lightFrom = side;
    PaintMountain(stage,
                  MakeSkyline(stage, water - stage.Y(0.05f), stage.Y(rng.Range(0.34f, 0.46f)),
                              rng.Range(1.6f, 2.6f), 1.0f, 101 + rng.Next() % 50),
                  far);
    MountainLook middle = far;
    middle.rock = Hex(0x4C5448);
    middle.forest = autumn ? Hex(0x8A5A28) : winter ? Hex(0x5A6258) : Hex(0x34562C);
    middle.hazeAmount = 0.2f;
    middle.snowY = winter ? water - stage.Y(0.05f) : -1.0f;
    PaintMountain(stage,
                  MakeSkyline(stage, water, stage.Y(rng.Range(0.14f, 0.24f)), rng.Range(1.5f, 3.0f), 0.6f,
                              201 + rng.Next() % 50),
                  middle);

    const float mist = rng.Range(0.0f, 0.4f);
    stage.canvas.Shade({0, Whole(water - stage.Y(0.12f)), Whole(stage.w), Whole(water)}, 4,
                       [&](float x, float y) {
                           const float band = Smooth(0.12f, 0.0f, (water - y) / stage.h) *
                                              Fbm(x / stage.U(300), y / stage.U(60), 4, stage.Seed(5));
                           return Tint(sky.horizon, Clamp01(band * mist * 1.6f));
                       });
    const Colour dark = (winter ? Hex(0x2C3A38) : Hex(0x16301E)) * sky.light;
    const Colour light = (autumn ? Hex(0xB87A2A) : winter ? Hex(0x5A6A62) : Hex(0x4A7038)) * sky.light;
    PaintHill(stage, MakeSkyline(stage, water + stage.U(2), stage.U(34), 9.0f, 0.2f, 251), water + stage.U(2),
              Mix(dark, light, 0.3f), dark * 0.7f, 0.3f);
    for (float x = -0.02f; x < 1.02f; x += rng.Range(0.004f, 0.012f)) {
        const float grove = Fbm(x * 4.0f, 1.0f, 3, stage.Seed(8));
        PaintConifer(stage, {stage.X(x), water + stage.U(2)},
                     stage.U(rng.Range(26.0f, 52.0f) + 60.0f * Smooth(0.45f, 0.75f, grove)), dark, light,
                     winter ? 0.7f : 0.0f);
    }
    Reflect(stage, water, stage.h, rng.Range(9.0f, 26.0f),
            Tint(Mix(sky.zenith, Hex(0x1C4A50), 0.5f) * 0.55f, 0.22f));

    if (rng.Chance(0.5f)) {
        // A landing stage leads out onto the water.
        const float x = rng.Range(0.35f, 0.65f);
        const float end = water / stage.h + 0.10f;
        const float near = 0.16f;
        const float far2 = 0.022f;
        stage.canvas.Fill({stage.At(x - near, 1.02f), stage.At(x - far2, end), stage.At(x + far2, end),
                           stage.At(x + near, 1.02f)},
                          [&](float px, float y) {
                              const float t = (stage.Y(1.02f) - y) / stage.Y(1.02f - end);
                              const float plank = std::pow(1.0f - t, 2.0f) * 14.0f + (1.0f - t) * 12.0f;
                              const float gap = Smooth(0.0f, 0.12f, plank - std::floor(plank));
                              const float vein = Fbm(px / stage.U(200), plank * 3.0f, 3, stage.Seed(6));
                              return Hex(0x7A6248) * sky.light * (0.45f + 0.7f * vein) *
                                     (0.35f + 0.65f * gap);
                          });
        for (int i = 0; i < 4; ++i) {
            const float t = 0.25f + Real(i) * 0.25f;
            for (int s = -1; s <= 1; s += 2) {
                const float px = x + Real(s) * Lerp(near, far2, std::pow(t, 0.6f));
                const float py = Lerp(1.02f, end, std::pow(t, 0.6f));
                const float size = Lerp(1.0f, 0.16f, std::pow(t, 0.6f));
                stage.canvas.Fill(Box(stage.X(px) - stage.U(9) * size, stage.Y(py) - stage.U(70) * size,
                                      stage.X(px) + stage.U(9) * size, stage.Y(py) + stage.U(20) * size),
                                  Hex(0x3A2E24) * sky.light);
            }
        }
    } else {
        const Colour grassDark = (winter   ? Hex(0x6A6450)
                                  : autumn ? Hex(0x5A4A20)
                                           : Hex(0x223A16)) *
                                 sky.light;
        const Colour grassLight = (winter   ? Hex(0xB8AC88)
                                   : autumn ? Hex(0xC8A050)
                                            : Hex(0x86A844)) *
                                  sky.light;
        const Skyline bank = MakeSkyline(stage, stage.Y(1.0f), stage.Y(0.16f), 1.3f, 0.1f, 301);
        PaintHill(stage, bank, stage.h, grassDark, grassDark * 0.5f, 0.4f);
        PaintGrass(stage, stage.Y(0.93f), stage.Y(1.04f), 1500, stage.U(70), grassDark, grassLight);
    }
    stage.develop.vignette = 0.3f;
}

void RainbowHills(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(rng.Range(0.58f, 0.68f));
    Sky sky = SkyAt(stage, stage.moment.hour, 0.78f, {stage.X(-0.3f), stage.Y(0.3f)});
    sky.zenith = Mix(sky.zenith, Hex(0x5A6A84), 0.6f);
    sky.cloudShade = sky.cloudShade * 0.75f;
    PaintSky(stage, sky, horizon);
    const Point centre{stage.X(rng.Range(0.35f, 0.7f)), horizon + stage.Y(0.12f)};
    const float radius = std::max(stage.w * 0.45f, stage.h * 0.5f) * rng.Range(0.9f, 1.1f);
    auto bow = [&](float y0, float strength) {
        stage.canvas.Shade({0, 0, Whole(stage.w), Whole(y0)}, 2, [&](float x, float y) {
            const float d = std::hypot(x - centre.x, y - centre.y) / radius;
            auto arc = [&](float at, float width, bool reversed, float power) {
                float t = (d - at) / width + 0.5f;
                if (t <= 0 || t >= 1) {
                    return Tint({}, 0);
                }
                if (reversed) {
                    t = 1.0f - t;
                }
                return Tint(Hsv(0.76f * (1.0f - t), 0.75f, 1.0f) * 1.3f, power * std::sin(pi * t));
            };
            const Tint inner = arc(1.0f, 0.085f, false, 0.62f * strength);
            if (inner.alpha > 0) {
                return inner;
            }
            if (d < 0.96f) {
                return Tint({1, 1, 1}, 0.09f * strength);  // the sky inside the bow is lighter
            }
            return arc(1.22f, 0.12f, true, 0.24f * strength);
        });
    };
    bow(horizon, 0.9f);
    const Colour sunny = Hex(0xFFEFC4);
    for (int i = 0; i < 4; ++i) {
        const float t = Real(i) / 3.0f;
        const Skyline line =
            MakeSkyline(stage, horizon + stage.Y(0.02f + 0.32f * t * t), stage.Y(0.09f + 0.09f * t), 1.2f + t,
                        0.15f, 400 + static_cast<std::uint32_t>(i) * 13 + rng.Next() % 7);
        const Colour upper =
            Mix(Mix(Hex(0x6F9A50), Hex(0xA9C45A), t), sky.horizon, 0.45f * (1.0f - t)) * sunny;
        PaintHill(stage, line, stage.h, upper, Mix(Hex(0x2A5A22), Hex(0x3E6E22), t) * sunny, 0.3f);
        const int trees = rng.Pick(4, 9);
        for (int k = 0; k < trees; ++k) {
            const float x = rng.Range(0, stage.w);
            const float size = stage.U(Lerp(18, 75, t) * rng.Range(0.7f, 1.3f));
            stage.canvas.Dab({x + size * 0.5f, line.At(x) + size * 0.16f}, size * 0.9f, size * 0.12f, 0,
                             Tint(Hex(0x1A3A14), 0.5f), size * 0.1f);
            PaintFoliage(stage, {x, line.At(x) - size * 0.35f}, size * 0.5f, size * 0.55f, 110,
                         std::max(2.0f, size * 0.08f), Lit(SummerLeaves(), sunny), -1);
        }
    }
    bow(horizon + stage.Y(0.1f), 0.25f);
    PaintGrass(stage, stage.Y(0.9f), stage.Y(1.05f), 1600, stage.U(60), Hex(0x2A4A18), Hex(0xB4CC58));
    stage.develop.saturation = 1.15f;
}

void Balloons(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(rng.Range(0.74f, 0.84f));
    const float hour = std::clamp(stage.moment.hour, 5.6f, 18.2f);
    const Sky sky = SkyAt(stage, hour, CoverOf(stage) * 0.7f,
                          {stage.X(hour < 12 ? 0.1f : 0.9f), horizon - stage.Y(0.03f)});
    PaintSky(stage, sky, horizon);
    for (int i = 0; i < 3; ++i) {
        const float t = Real(i) / 2.0f;
        const Skyline line = MakeSkyline(stage, horizon + stage.Y(0.10f * t), stage.Y(0.08f), 2.0f - 0.4f * t,
                                         0.25f, 500 + static_cast<std::uint32_t>(i) * 17);
        const Colour ground = stage.TimeOfYear() == Season::Autumn ? Hex(0x8A7A38) : Hex(0x55793A);
        PaintHill(stage, line, stage.h, Mix(ground * sky.light, sky.horizon, 0.6f - 0.45f * t),
                  ground * sky.light * Lerp(0.7f, 0.35f, t), 0.3f);
    }
    for (int i = 0; i < 70; ++i) {  // hedges and single trees between the fields
        const float t = std::pow(rng.Unit(), 1.5f);
        const Point at{stage.X(rng.Range(-0.02f, 1.02f)), Lerp(horizon + stage.Y(0.015f), stage.Y(0.98f), t)};
        const float size = stage.U(Lerp(9, 34, t));
        const LeafTones leaves =
            stage.TimeOfYear() == Season::Autumn && rng.Chance(0.6f) ? AutumnLeaves(rng) : SummerLeaves();
        const Colour light = Mix(sky.light, sky.horizon, 0.5f * (1.0f - t));
        stage.canvas.Dab(at + Point{0, size * 0.3f}, size * 1.5f, size * 0.3f, 0, Tint(Hex(0x1C2410), 0.4f),
                         size * 0.3f);
        PaintFoliage(stage, at, size * rng.Range(0.7f, 2.2f), size * 0.6f, 60, std::max(1.8f, size * 0.13f),
                     Lit(leaves, light), hour < 12 ? -1.0f : 1.0f);
    }
    struct Place {
        float x, y, size;
    };
    std::vector<Place> places;
    const int count = rng.Pick(5, 11);
    for (int tries = 0; tries < 300 && static_cast<int>(places.size()) < count; ++tries) {
        const bool first = places.empty();
        const Place p{rng.Range(0.1f, 0.9f), first ? rng.Range(0.05f, 0.15f) : rng.Range(0.06f, 0.62f),
                      first ? rng.Range(0.38f, 0.5f) : rng.Range(0.06f, 0.22f)};
        bool free = true;
        for (const Place& other : places) {
            const float dx = std::fabs(p.x - other.x) * stage.w / (stage.u * 1000.0f);
            const float dy =
                std::fabs((p.y - other.y) * stage.h / (stage.u * 1000.0f) + (p.size - other.size) * 0.5f);
            free = free && (dx > (p.size + other.size) * 0.44f || dy > (p.size + other.size) * 0.6f);
        }
        if (free) {
            places.push_back(p);
        }
    }
    std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.size < b.size; });
    float hue = rng.Unit();
    for (const Place& p : places) {
        hue += 0.381966f;  // the golden turn keeps neighbours apart
        const Colour light =
            Mix(Mix(sky.light, {1, 1, 1}, 0.4f), sky.horizon, 0.3f * (1.0f - Clamp01(p.size * 4.0f)));
        PaintHotAirBalloon(stage, stage.At(p.x, p.y), stage.U(p.size * 1000.0f), hue, light,
                           hour < 12 ? -1.0f : 1.0f);
    }
    stage.develop.warmth = 0.1f;
    stage.develop.saturation = 1.15f;
}

void FieldRows(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(rng.Range(0.36f, 0.46f));
    const Sky sky = SkyAt(stage, stage.moment.hour, CoverOf(stage), SunPlace(stage, 0.4f));
    PaintSky(stage, sky, horizon);
    MountainLook far;
    far.rock = Hex(0x5A6A78);
    far.forest = Hex(0x48684C);
    far.haze = Mix(sky.horizon, sky.zenith, 0.3f);
    far.hazeAmount = 0.5f;
    far.bottomY = horizon + stage.Y(0.03f);
    far.light = sky.light;
    PaintMountain(stage, MakeSkyline(stage, horizon, stage.Y(0.14f), 2.2f, 0.7f, 611), far);
    const bool lavender = stage.moment.month >= 6 && stage.moment.month <= 8;
    const Colour crownTop = lavender ? Hex(0xA88AE0) : Hex(0x9CC44A);
    const Colour crown = lavender ? Hex(0x6A48B0) : Hex(0x4F8A2C);
    const Colour furrow = lavender ? Hex(0x4A4A28) : Hex(0x1E4018);
    const float vanish = rng.Range(0.25f, 0.75f);
    const float rows = rng.Range(16.0f, 24.0f);
    const float bend = rng.Range(-0.7f, 0.7f);
    const std::uint32_t seed = stage.Seed(31);
    stage.canvas.Shade({0, Whole(horizon), Whole(stage.w), Whole(stage.h)}, 1, [&](float x, float y) {
        const float depth = (y - horizon) / (stage.h - horizon) + 0.018f;
        const float across = (x / stage.w - vanish) / depth + bend * std::log(depth) * 0.6f;
        const float row = across * rows * 0.16f;
        const float within = row - std::floor(row);
        const float round = std::sin(within * pi);
        const float tuft = Noise(across * rows * 1.6f, 6.0f / depth, seed) * 0.6f +
                           Noise(x * 0.11f, y * 0.16f, seed + 3) * 0.4f;
        const float top = Clamp01(round * 1.1f - 0.12f + (tuft - 0.5f) * 0.9f);
        Colour c = Mix(furrow, crown, Smooth(0.05f, 0.5f, top));
        c = Mix(c, crownTop, Smooth(0.5f, 1.0f, top) * (0.55f + 0.45f * (within < 0.5f ? 1.0f : 0.3f)));
        const float haze = 0.65f * std::exp(-depth * 9.0f);
        return Mix(c * sky.light * (0.8f + 0.35f * tuft), sky.horizon, haze);
    });
    for (int i = 0; i < 5; ++i) {
        const float x = rng.Unit();
        PaintFoliage(stage, {stage.X(x), horizon - stage.U(4)}, stage.U(rng.Range(20, 60)),
                     stage.U(rng.Range(10, 26)), 130, stage.U(3.5f),
                     Lit(SummerLeaves(), Mix(sky.light, sky.horizon, 0.3f)), -1);
    }
    if (rng.Chance(0.6f)) {
        const float x = vanish + rng.Range(-0.14f, 0.14f);
        TreeLook tree;
        tree.leaves = Lit(SummerLeaves(), sky.light);
        tree.bark = Hex(0x3A2C20) * sky.light;
        PaintTree(stage, {stage.X(x), horizon + stage.Y(0.05f)}, stage.U(190), tree);
    }
    stage.develop.saturation = 1.15f;
}

void SnowForest(Stage& stage) {
    Rng& rng = stage.rng;
    const float ground = stage.Y(rng.Range(0.62f, 0.72f));
    const float hour = stage.moment.hour;
    const Sky sky = SkyAt(stage, hour, 0.35f, {stage.X(rng.Range(0.3f, 0.7f)), ground - stage.Y(0.22f)});
    PaintSky(stage, sky, ground);
    stage.canvas.Glow(sky.sun, stage.U(420), sky.sunLight * 0.35f);
    const Colour mist = Mix(sky.horizon, Hex(0xE8EEF6), 0.4f);
    for (int layer = 0; layer < 5; ++layer) {
        const float t = Real(layer) / 4.0f;
        const float foot = Lerp(ground, ground + stage.Y(0.10f), t);
        for (float x = -0.05f; x < 1.05f;) {
            const float open = t > 0.6f ? Smooth(0.06f, 0.2f, std::fabs(x - 0.5f)) : 1.0f;
            const float height =
                stage.U(Lerp(120, 520, t * t) * rng.Range(0.65f, 1.2f)) * (0.4f + 0.6f * open);
            if (open > 0.3f) {
                const Colour dark =
                    Mix(Hex(0x203038), mist, 0.75f - 0.72f * t) * Mix({1, 1, 1}, sky.light, 0.6f);
                const Colour light =
                    Mix(Hex(0x50685E), mist, 0.75f - 0.7f * t) * Mix({1, 1, 1}, sky.light, 0.6f);
                PaintConifer(stage, {stage.X(x), foot + stage.U(rng.Range(-6, 12))}, height, dark, light,
                             Lerp(0.45f, 0.9f, t));
            }
            x += Lerp(0.016f, 0.10f, t) * rng.Range(0.6f, 1.5f);
        }
    }
    const std::uint32_t seed = stage.Seed(61);
    const Skyline snow = MakeSkyline(stage, ground + stage.Y(0.12f), stage.Y(0.06f), 1.4f, 0.0f, 71);
    stage.canvas.Fill(snow.Outline(stage.h), [&](float x, float y) {
        const float relief = Fbm(x / stage.U(260), y / stage.U(90), 4, seed) -
                             Fbm((x + stage.U(18)) / stage.U(260), y / stage.U(90), 4, seed);
        const float shadow =
            Smooth(0.52f, 0.64f, Fbm(x / stage.U(210) + y / stage.U(160), y / stage.U(70), 3, seed + 5));
        Colour c = Mix(Hex(0xFAFBFF), Hex(0xA8BCDF), Clamp01(0.32f - relief * 3.0f + shadow * 0.4f));
        c = c * Mix({1, 1, 1}, sky.light, 0.75f);
        const float sparkle = HashUnit(Whole(x / 2), Whole(y / 2), seed) > 0.9985f ? 0.6f : 0.0f;
        return c + Colour{sparkle, sparkle, sparkle};
    });
    // Footprints wander away between the trees.
    float x = rng.Range(0.4f, 0.6f);
    for (int i = 0; i < 22; ++i) {
        const float t = Real(i) / 22.0f;
        const float y = Lerp(1.0f, (ground + stage.Y(0.14f)) / stage.h, 1.0f - std::pow(1.0f - t, 1.6f));
        const float size = Lerp(16, 2.5f, t);
        x += rng.Bell() * 0.012f + std::sin(t * 5.0f) * 0.006f;
        const Point at{stage.X(x) + stage.U((i % 2 ? 1.0f : -1.0f) * size * 1.1f), stage.Y(y)};
        stage.canvas.Dab(at, stage.U(size), stage.U(size * 0.55f), 0, Tint(Hex(0x6F86B4) * sky.light, 0.75f),
                         stage.U(size * 0.25f));
        stage.canvas.Dab(at + Point{0, stage.U(size * 0.42f)}, stage.U(size), stage.U(size * 0.2f), 0,
                         Tint(Hex(0xFFFFFF), 0.6f), stage.U(3));
    }
    if (stage.moment.weather != Weather::Clear) {
        PaintSnowfall(stage, 420, Hex(0xFFFFFF));
    }
    stage.develop.warmth = hour < 9 || hour > 15 ? 0.05f : -0.15f;
    stage.develop.contrast = 1.1f;
}

void SnowMan(Stage& stage) {
    Rng& rng = stage.rng;
    const float ground = stage.Y(0.7f);
    const Sky sky =
        SkyAt(stage, std::clamp(stage.moment.hour, 8.0f, 16.0f), 0.7f, {stage.X(0.1f), stage.Y(0.1f)});
    PaintSky(stage, sky, ground);
    for (int i = 0; i < 16; ++i) {
        PaintConifer(stage, {stage.X(rng.Range(-0.05f, 1.05f)), ground + stage.U(10)},
                     stage.U(rng.Range(180, 420)), Hex(0x2A3C40), Hex(0x56706A), 0.85f);
    }
    stage.canvas.Blur({0, 0, Whole(stage.w), Whole(ground + stage.U(30))}, stage.U(9));
    const std::uint32_t seed = stage.Seed(63);
    stage.canvas.Fill(
        MakeSkyline(stage, ground + stage.Y(0.04f), stage.Y(0.05f), 1.1f, 0.0f, 77).Outline(stage.h),
        [&](float x, float y) {
            const float relief = Fbm(x / stage.U(200), y / stage.U(70), 4, seed) -
                                 Fbm((x - stage.U(14)) / stage.U(200), y / stage.U(70), 4, seed);
            return Mix(Hex(0xF8FAFF), Hex(0x9FB4DA),
                       Clamp01(0.25f + relief * 3.2f + 0.25f * (y - ground) / (stage.h - ground)));
        });
    const Point foot{stage.X(rng.Range(0.4f, 0.6f)), stage.Y(0.86f)};
    const float s = stage.U(rng.Range(520, 640));
    stage.canvas.Dab({foot.x + s * 0.28f, foot.y - s * 0.02f}, s * 0.45f, s * 0.09f, 0,
                     Tint(Hex(0x6E86B8), 0.7f), s * 0.07f);
    auto ball = [&](float up, float r) {
        const Point centre{foot.x, foot.y - up * s};
        stage.canvas.Fill(
            Ellipse(centre, r * s, r * s * 0.96f),
            [&](float x, float y) {
                const float dx = (x - centre.x) / (r * s);
                const float dy = (y - centre.y) / (r * s);
                const float dz = std::sqrt(std::max(0.0f, 1.0f - dx * dx - dy * dy));
                const float lit = Clamp01(0.28f - 0.45f * dx - 0.4f * dy + 0.55f * dz +
                                          (Fbm(x / stage.U(26), y / stage.U(26), 3, seed) - 0.5f) * 0.3f);
                return Mix(Hex(0x7E96C4), Hex(0xFFFFFF), lit);
            },
            1.0f);
    };
    ball(0.25f, 0.27f);
    ball(0.60f, 0.20f);
    ball(0.90f, 0.145f);
    const Colour scarf = Hsv(rng.Unit(), 0.75f, 0.85f);
    stage.canvas.Stroke(Curve({{foot.x - 0.15f * s, foot.y - 0.775f * s},
                               {foot.x, foot.y - 0.735f * s},
                               {foot.x + 0.15f * s, foot.y - 0.775f * s}}),
                        0.075f * s, 0.075f * s, scarf);
    stage.canvas.Stroke(Curve({{foot.x + 0.08f * s, foot.y - 0.75f * s},
                               {foot.x + 0.13f * s, foot.y - 0.62f * s},
                               {foot.x + 0.10f * s, foot.y - 0.5f * s}}),
                        0.07f * s, 0.08f * s, scarf * 0.75f);
    auto coal = [&](float x, float y, float r) {
        stage.canvas.Dab({foot.x + x * s, foot.y - y * s}, r * s, r * s, 0, Hex(0x1A1A20));
    };
    coal(-0.05f, 0.94f, 0.018f);
    coal(0.06f, 0.94f, 0.018f);
    for (int i = 0; i < 5; ++i) {
        const float t = Real(i) / 4.0f - 0.5f;
        coal(t * 0.13f, 0.838f + t * t * 0.09f, 0.009f);
    }
    coal(0.01f, 0.66f, 0.017f);
    coal(0.012f, 0.58f, 0.017f);
    stage.canvas.Fill({{foot.x, foot.y - 0.915f * s},
                       {foot.x + 0.15f * s, foot.y - 0.885f * s},
                       {foot.x, foot.y - 0.88f * s}},
                      Hex(0xE8782A));
    for (int side = -1; side <= 1; side += 2) {
        const float d = Real(side) * s;
        const Point shoulder{foot.x + 0.18f * d, foot.y - 0.64f * s};
        stage.canvas.Stroke(Curve({shoulder,
                                   {foot.x + 0.32f * d, foot.y - 0.72f * s},
                                   {foot.x + 0.42f * d, foot.y - 0.8f * s}}),
                            0.02f * s, 0.012f * s, Hex(0x4A3424));
        stage.canvas.Stroke(
            {{foot.x + 0.36f * d, foot.y - 0.75f * s}, {foot.x + 0.38f * d, foot.y - 0.84f * s}}, 0.012f * s,
            0.006f * s, Hex(0x4A3424));
    }
    const Colour hat = rng.Chance(0.5f) ? Hex(0x7A2430) : Hex(0x2A3A5A);
    stage.canvas.Fill(Curve({{foot.x - 0.14f * s, foot.y - 0.985f * s},
                             {foot.x - 0.11f * s, foot.y - 1.09f * s},
                             {foot.x, foot.y - 1.15f * s},
                             {foot.x + 0.11f * s, foot.y - 1.09f * s},
                             {foot.x + 0.14f * s, foot.y - 0.985f * s}}),
                      hat);
    stage.canvas.Stroke(Curve({{foot.x - 0.15f * s, foot.y - 0.98f * s},
                               {foot.x, foot.y - 0.965f * s},
                               {foot.x + 0.15f * s, foot.y - 0.98f * s}}),
                        0.05f * s, 0.05f * s, hat * 1.6f);
    stage.canvas.Dab({foot.x, foot.y - 1.16f * s}, 0.04f * s, 0.04f * s, 0, Hex(0xF4F0EA), 3);
    PaintSnowfall(stage, 260, Hex(0xFFFFFF));
}

}  // namespace sample
