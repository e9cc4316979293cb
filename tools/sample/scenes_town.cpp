#include "figures.h"
#include "nature.h"
#include "scenes.h"

namespace sample {

namespace {

// One roof with turned-up eaves; `top` is the ridge, `reach` half the width of the eaves.
void PaintEaves(Stage& stage, Point top, float reach, float height, Colour tile) {
    const Path roof = Curve({{top.x - reach * 0.16f, top.y},
                             {top.x - reach * 0.5f, top.y + height * 0.62f},
                             {top.x - reach, top.y + height * 0.72f},
                             {top.x - reach * 0.94f, top.y + height * 0.96f},
                             {top.x, top.y + height * 1.04f},
                             {top.x + reach * 0.94f, top.y + height * 0.96f},
                             {top.x + reach, top.y + height * 0.72f},
                             {top.x + reach * 0.5f, top.y + height * 0.62f},
                             {top.x + reach * 0.16f, top.y}});
    stage.canvas.Fill(roof, [&](float x, float y) {
        const float ridge = 0.8f + 0.2f * std::sin((x - top.x) / reach * 60.0f);
        return tile * (ridge * Lerp(1.25f, 0.7f, Clamp01((y - top.y) / height)));
    });
    stage.canvas.Stroke(Curve({{top.x - reach, top.y + height * 0.73f},
                               {top.x - reach * 0.94f, top.y + height * 0.95f},
                               {top.x, top.y + height * 1.03f},
                               {top.x + reach * 0.94f, top.y + height * 0.95f},
                               {top.x + reach, top.y + height * 0.73f}}),
                        height * 0.06f, height * 0.06f, tile * 0.45f);
}

}  // namespace

void RainStreet(Stage& stage) {
    Rng& rng = stage.rng;
    const float ground = stage.Y(0.6f);
    const bool night = stage.moment.hour > 17.5f || stage.moment.hour < 6.0f;
    const float light = night ? 0.45f : 1.0f;
    stage.Backdrop(8, [&](float x, float y) {
        const Colour top = night ? Hex(0x0E1428) : Hex(0x8E9CA8);
        const Colour low = night ? Hex(0x4A3E50) : Hex(0xC4C8C4);
        return Mix(top, low, Smooth(0.0f, 1.0f, y / ground)) *
               (0.9f + 0.2f * Noise(x / stage.U(300), y / stage.U(200), 3));
    });
    for (int side = 0; side < 2; ++side) {
        for (int i = 4; i >= 0; --i) {
            const float near = std::pow(0.66f, Real(i));
            const float inner = 0.5f + (side ? 1.0f : -1.0f) * (0.05f + 0.27f * near);
            const float outer = inner + (side ? 1.0f : -1.0f) * 0.36f * near;
            const float top = 0.56f - 0.66f * near * rng.Range(0.75f, 1.1f);
            const Colour wall = Mix(Hsv(rng.Unit(), 0.2f, 0.5f), night ? Hex(0x14141E) : Hex(0xA8B0B4),
                                    0.45f + 0.1f * Real(i)) *
                                light;
            stage.canvas.Fill(Box(stage.X(std::min(inner, outer)), stage.Y(top),
                                  stage.X(std::max(inner, outer)), ground + stage.Y(0.1f * near)),
                              wall);
            for (int k = 0; k < 14; ++k) {
                const Point c =
                    stage.At(Lerp(inner, outer, rng.Range(0.1f, 0.9f)), Lerp(top + 0.04f, 0.58f, rng.Unit()));
                const float r = stage.U(14 + 34 * near);
                if (rng.Chance(0.65f)) {
                    stage.canvas.Fill(
                        Box(c.x - r * 0.6f, c.y - r * 0.7f, c.x + r * 0.6f, c.y + r * 0.7f),
                        Tint(Hex(0xFFD890) * (night ? rng.Range(0.5f, 1.3f) : rng.Range(0.3f, 0.7f)), 0.8f));
                }
            }
            const float awning = 0.58f - 0.06f * near;
            stage.canvas.Fill(Box(stage.X(std::min(inner, outer)), stage.Y(awning),
                                  stage.X(std::max(inner, outer)), ground + stage.Y(0.09f * near)),
                              [&](float x, float) {
                                  // Shop windows: bright and dim ones side by side.
                                  const float pane = Noise(x / stage.U(70), Real(i), stage.Seed(12));
                                  return Mix(Hex(0x6A3A18), Hex(0xFFD08A), Smooth(0.25f, 0.7f, pane)) *
                                         (night ? 1.0f : 0.6f);
                              });
            stage.canvas.Fill(Box(stage.X(std::min(inner, outer)), stage.Y(awning - 0.035f * near),
                                  stage.X(std::max(inner, outer)), stage.Y(awning + 0.012f)),
                              Hsv(rng.Unit(), 0.6f, 0.7f) * light);
        }
    }
    for (int i = 0; i < 26; ++i) {
        stage.canvas.Glow({stage.X(0.5f + rng.Bell() * 0.3f), ground - stage.Y(rng.Range(0.02f, 0.2f))},
                          stage.U(rng.Range(16, 44)),
                          Hsv(rng.Chance(0.6f) ? 0.1f : rng.Unit(), 0.6f, 1.0f) * rng.Range(0.4f, 1.2f));
    }
    stage.canvas.Blur(stage.canvas.Whole(), stage.U(7));
    for (int i = 0; i < 40; ++i) {
        stage.canvas.Bokeh(
            {stage.X(0.5f + rng.Bell() * 0.6f), ground - stage.Y(rng.Range(0.0f, 0.28f))},
            stage.U(rng.Range(10, 34)),
            Hsv(rng.Chance(0.55f) ? 0.1f : rng.Unit(), 0.6f, 1.0f) * rng.Range(0.06f, night ? 0.5f : 0.25f));
    }
    struct Walker {
        float x, y, size, hue;
        bool child;
    };
    std::vector<Walker> walkers;
    const int count = rng.Pick(4, 7);
    const float base = rng.Unit();
    for (int i = 0; i < count; ++i) {
        const float t = Real(i) / Real(count - 1);
        walkers.push_back({0.12f + 0.76f * std::fmod(0.38f * Real(i) + base, 1.0f), Lerp(0.66f, 0.9f, t * t),
                           Lerp(150, 460, t * t), base + Real(i) * 0.381966f, rng.Chance(0.2f)});
    }
    auto paintWalkers = [&](float mirror) {
        for (const Walker& walker : walkers) {
            const Colour coat = Mix(Hsv(walker.hue + 0.5f, 0.3f, 0.35f), Hex(0x14161C), 0.72f);
            const float size = stage.U(walker.size) * (walker.child ? 0.7f : 1.0f);
            const Point foot = stage.At(walker.x, walker.y);
            if (mirror > 0) {
                continue;
            }
            PaintPerson(stage, foot, size, coat * Lerp(0.6f, 1.0f, light), 0.35f);
            PaintUmbrella(stage, {foot.x + size * 0.12f, foot.y - size * 0.52f}, size * 0.46f,
                          Hsv(walker.hue, walker.child ? 0.8f : 0.55f, walker.child ? 0.9f : 0.72f),
                          night ? 0.7f : 1.0f);
        }
    };
    paintWalkers(0);
    Reflect(stage, ground + stage.Y(0.02f), stage.h, 60.0f,
            Tint((night ? Hex(0x10121C) : Hex(0x6A7078)), 0.42f));
    for (const Walker& walker : walkers) {  // each stands on a mirror of its own
        const float size = stage.U(walker.size) * (walker.child ? 0.7f : 1.0f);
        const Point foot = stage.At(walker.x, walker.y);
        stage.canvas.Dab({foot.x, foot.y + size * 0.28f}, size * 0.16f, size * 0.3f, 0,
                         Tint(Hsv(walker.hue + 0.5f, 0.3f, 0.2f), 0.5f), size * 0.12f);
        stage.canvas.Dab({foot.x + size * 0.1f, foot.y + size * 0.8f}, size * 0.42f, size * 0.18f, 0,
                         Tint(Hsv(walker.hue, 0.65f, 0.8f) * light, 0.4f), size * 0.16f);
    }
    paintWalkers(0);
    PaintRain(stage, 420, 0.12f, Tint(Hex(0xE0E8F0), 0.3f));
    stage.develop.bloom = 0.2f;
    stage.develop.warmth = night ? 0.12f : -0.05f;
}

void TrainWindow(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(0.46f);
    const Sky sky = SkyAt(stage, std::clamp(stage.moment.hour, 6.3f, 18.2f), CoverOf(stage),
                          {stage.X(0.75f), horizon - stage.Y(0.2f)});
    PaintSky(stage, sky, horizon);
    MountainLook far;
    far.rock = Hex(0x5C6878);
    far.forest = Hex(0x48604C);
    far.haze = sky.horizon;
    far.hazeAmount = 0.42f;
    far.snowY = stage.TimeOfYear() == Season::Winter || rng.Chance(0.4f) ? horizon - stage.Y(0.1f) : -1.0f;
    far.bottomY = horizon + stage.Y(0.05f);
    far.light = sky.light;
    if (rng.Chance(0.5f)) {  // one great cone
        const float peak = rng.Range(0.3f, 0.65f);
        Skyline cone = MakeSkyline(stage, horizon, stage.Y(0.05f), 2.0f, 0.6f, 921);
        for (std::size_t i = 0; i < cone.top.size(); ++i) {
            const float d = std::fabs(static_cast<float>(i) / stage.w - peak);
            cone.top[i] -= stage.Y(0.27f) * std::max(0.0f, 1.1f * std::exp(-d * 5.2f) - 0.12f) *
                           (d < 0.012f ? 0.985f : 1.0f);
        }
        far.rock = Hex(0x56688A);
        far.snowY = horizon - stage.Y(0.2f);
        PaintMountain(stage, cone, far);
    } else {
        PaintMountain(stage, MakeSkyline(stage, horizon, stage.Y(0.24f), 2.0f, 0.9f, 922), far);
    }
    // The near land runs past: long streaks, the nearer the longer.
    const std::uint32_t seed = stage.Seed(171);
    const Colour field = stage.TimeOfYear() == Season::Winter   ? Hex(0xB0A68C)
                         : stage.TimeOfYear() == Season::Autumn ? Hex(0xC8A44C)
                                                                : Hex(0x7CA448);
    stage.canvas.Shade({0, Whole(horizon), Whole(stage.w), Whole(stage.h)}, 2, [&](float x, float y) {
        const float depth = (y - horizon) / (stage.h - horizon) + 0.03f;
        const float streak = Noise(x / stage.w * (0.9f / depth), 22.0f / (depth + 0.1f), seed) * 0.6f +
                             Noise(x / stage.w * 2.0f, y / stage.U(9), seed + 1) * 0.4f;
        const Colour c = Mix(field * 0.45f, field * 1.1f, streak) * sky.light;
        return Mix(c, sky.horizon, 0.6f * std::exp(-depth * 9.0f));
    });
    for (int i = 0; i < 10; ++i) {
        const float depth = rng.Range(0.05f, 0.3f);
        const Point c{stage.X(rng.Unit()), horizon + (stage.h - horizon) * depth};
        const float s = stage.U(900) * depth * 0.3f;
        stage.canvas.Dab({c.x, c.y - s * 0.3f}, s * 1.6f, s * 0.45f, 0, Tint(Hex(0x2E4A22) * sky.light, 0.8f),
                         s * 0.3f);
    }
    const float pole = rng.Range(0.15f, 0.85f);
    stage.canvas.Fill(Box(stage.X(pole), 0, stage.X(pole + 0.012f), stage.h), Tint(Hex(0x4A4A48), 0.45f),
                      stage.U(12));
    // Inside: the frame, the sill with something to drink, a curtain.
    const float l = stage.X(0.07f);
    const float r = stage.X(0.93f);
    const float t = stage.Y(0.09f);
    const float b = stage.Y(0.74f);
    const float round = stage.U(70);
    const Colour frame = Hex(0x5A5450) * 0.7f;
    auto inside = [&](float x, float y) {
        const float dx = std::max({l + round - x, x - (r - round), 0.0f});
        const float dy = std::max({t + round - y, y - (b - round), 0.0f});
        const bool corner = dx > 0 && dy > 0;
        return corner ? round - std::hypot(dx, dy) : std::min(std::min(x - l, r - x), std::min(y - t, b - y));
    };
    stage.canvas.Shade(stage.canvas.Whole(), 1, [&](float x, float y) {
        const float d = inside(x, y);
        if (d > 8) {
            const float sheen =
                0.06f * Smooth(0.62f, 0.75f, Noise((x + y * 0.6f) / stage.U(260), 2.0f, seed + 8));
            return Tint({1, 1, 1}, sheen);
        }
        const float rim = Smooth(-stage.U(26), 0.0f, d);
        Colour c = Mix(frame, frame * 0.35f, rim * 0.9f);
        c = c * Lerp(1.25f, 0.7f, y / stage.h);
        if (y > b + stage.U(30)) {
            const float light = std::exp(-(y - b - stage.U(30)) / stage.U(120));
            c = Mix(Hex(0x8A7058) * 0.55f, sky.horizon, 0.25f * light) *
                (0.8f + 0.1f * Noise(x / stage.U(300), y / stage.U(6), seed + 5));
        }
        return Tint(c, Smooth(3.0f, -3.0f, d));
    });
    const Colour cloth = Hsv(rng.Range(0.0f, 0.12f) + (rng.Chance(0.3f) ? 0.5f : 0.0f), 0.4f, 0.45f);
    const bool left = rng.Chance(0.5f);
    stage.canvas.Fill(
        Box(left ? 0.0f : stage.X(0.85f), 0, left ? stage.X(0.15f) : stage.w, b + stage.U(10)),
        [&](float x, float y) {
            const float fold =
                std::sin(x / stage.U(16) + 2.2f * Noise(x / stage.U(60), y / stage.U(500), seed + 6));
            return cloth * (0.55f + 0.4f * fold) * Lerp(0.9f, 0.6f, y / stage.h);
        },
        2);
    const Point cup = stage.At(left ? rng.Range(0.62f, 0.8f) : rng.Range(0.22f, 0.4f), 0.83f);
    const float s = stage.U(150);
    stage.canvas.Dab({cup.x + s * 0.25f, cup.y}, s * 0.6f, s * 0.12f, 0, Tint(Hex(0x0C0806), 0.55f),
                     s * 0.1f);
    const Colour paper = rng.Chance(0.5f) ? Hex(0xF4EEE2) : Hex(0x3E7A5A);
    stage.canvas.Fill({{cup.x - s * 0.36f, cup.y - s},
                       {cup.x + s * 0.36f, cup.y - s},
                       {cup.x + s * 0.27f, cup.y},
                       {cup.x - s * 0.27f, cup.y}},
                      [&](float x, float y) {
                          const float a = (x - cup.x) / (s * 0.36f);
                          const bool sleeve = y > cup.y - s * 0.72f && y < cup.y - s * 0.25f;
                          return (sleeve ? Hex(0x8A6440) : paper) *
                                 Clamp01(0.62f + (left ? -0.35f : 0.35f) * a - 0.2f * a * a);
                      });
    stage.canvas.Fill(Box(cup.x - s * 0.39f, cup.y - s * 1.09f, cup.x + s * 0.39f, cup.y - s * 0.97f),
                      Hex(0xE8E4DC) * 0.75f);
    stage.develop.vignette = 0.35f;
}

void ShrineGate(Stage& stage) {
    Rng& rng = stage.rng;
    const float water = stage.Y(rng.Range(0.66f, 0.72f));
    const float hour =
        stage.moment.hour > 15.5f ? rng.Range(17.6f, 18.7f) : std::clamp(stage.moment.hour, 6.2f, 15.0f);
    const Sky sky =
        SkyAt(stage, hour, CoverOf(stage), {stage.X(rng.Range(0.2f, 0.8f)), water - stage.Y(0.12f)});
    PaintSky(stage, sky, water);
    MountainLook look;
    look.rock = Hex(0x4A5868);
    look.forest = Hex(0x3A4A48);
    look.haze = Mix(sky.horizon, sky.zenith, 0.3f);
    look.hazeAmount = 0.55f;
    look.bottomY = water + 2;
    look.light = sky.light;
    PaintMountain(stage, MakeSkyline(stage, water, stage.Y(0.18f), 1.5f, 0.55f, 931), look);
    look.hazeAmount = 0.25f;
    PaintMountain(stage, MakeSkyline(stage, water, stage.Y(0.07f), 2.2f, 0.4f, 932), look);
    const Point foot{stage.X(rng.Range(0.4f, 0.6f)), water + stage.Y(0.03f)};
    const float s = stage.U(rng.Range(480, 600));
    const bool against = hour > 17.0f;
    const Colour red = (against ? Hex(0x6A1C14) : Hex(0xE0482A)) * Mix(sky.light, {1, 1, 1}, 0.3f);
    const Colour black = Hex(0x14100E);
    for (int side = -1; side <= 1; side += 2) {
        const float d = Real(side);
        auto pillar = [&](float x, float top, float wide) {
            const float lean = -0.02f * d * s;
            stage.canvas.Fill({{foot.x + d * x * s - wide * s, foot.y},
                               {foot.x + d * x * s + lean - wide * s * 0.85f, foot.y - top * s},
                               {foot.x + d * x * s + lean + wide * s * 0.85f, foot.y - top * s},
                               {foot.x + d * x * s + wide * s, foot.y}},
                              [&](float px, float) {
                                  const float a = (px - foot.x - d * x * s) / (wide * s);
                                  return red * Clamp01(0.85f - 0.4f * a - 0.3f * a * a);
                              });
            stage.canvas.Fill(Box(foot.x + d * x * s - wide * s * 1.15f, foot.y - 0.05f * s,
                                  foot.x + d * x * s + wide * s * 1.15f, foot.y),
                              black);
        };
        pillar(0.30f, 0.86f, 0.038f);
        pillar(0.40f, 0.36f, 0.02f);
        pillar(0.22f, 0.36f, 0.016f);
    }
    stage.canvas.Fill(Box(foot.x - 0.42f * s, foot.y - 0.33f * s, foot.x + 0.42f * s, foot.y - 0.30f * s),
                      red * 0.85f);
    stage.canvas.Fill(Box(foot.x - 0.40f * s, foot.y - 0.70f * s, foot.x + 0.40f * s, foot.y - 0.64f * s),
                      red);
    stage.canvas.Fill(Box(foot.x - 0.04f * s, foot.y - 0.84f * s, foot.x + 0.04f * s, foot.y - 0.68f * s),
                      red * 0.7f);
    stage.canvas.Fill(Curve({{foot.x - 0.53f * s, foot.y - 0.97f * s},
                             {foot.x, foot.y - 0.90f * s},
                             {foot.x + 0.53f * s, foot.y - 0.97f * s},
                             {foot.x + 0.50f * s, foot.y - 0.87f * s},
                             {foot.x, foot.y - 0.83f * s},
                             {foot.x - 0.50f * s, foot.y - 0.87f * s},
                             {foot.x - 0.53f * s, foot.y - 0.97f * s}}),
                      red * 0.9f);
    stage.canvas.Fill(Curve({{foot.x - 0.56f * s, foot.y - 1.02f * s},
                             {foot.x, foot.y - 0.93f * s},
                             {foot.x + 0.56f * s, foot.y - 1.02f * s},
                             {foot.x + 0.54f * s, foot.y - 0.95f * s},
                             {foot.x, foot.y - 0.885f * s},
                             {foot.x - 0.54f * s, foot.y - 0.95f * s},
                             {foot.x - 0.56f * s, foot.y - 1.02f * s}}),
                      black);
    Reflect(stage, foot.y, stage.h, 30.0f, Tint(Mix(sky.zenith, Hex(0x103040), 0.4f) * 0.6f, 0.2f));
    for (int i = rng.Pick(0, 4); i > 0; --i) {
        PaintBird(stage, stage.At(rng.Range(0.1f, 0.9f), rng.Range(0.12f, 0.4f)), stage.U(rng.Range(18, 40)),
                  Hex(0x201A24));
    }
    stage.develop.warmth = 0.12f;
    stage.develop.bloom = 0.12f;
}

void Pagoda(Stage& stage) {
    Rng& rng = stage.rng;
    const float ground = stage.Y(0.8f);
    const float hour =
        stage.moment.hour > 16.5f ? rng.Range(17.7f, 18.8f) : std::clamp(stage.moment.hour, 7.0f, 16.5f);
    const bool against = hour > 17.5f;
    const Sky sky = SkyAt(stage, hour, CoverOf(stage),
                          {stage.X(rng.Chance(0.5f) ? 0.2f : 0.8f), ground - stage.Y(0.14f)});
    PaintSky(stage, sky, ground);
    MountainLook look;
    look.rock = Hex(0x4A5868);
    look.forest = Hex(0x3A4A48);
    look.haze = sky.horizon;
    look.hazeAmount = 0.5f;
    look.bottomY = stage.h;
    look.light = sky.light;
    PaintMountain(stage, MakeSkyline(stage, ground, stage.Y(0.22f), 1.6f, 0.5f, 941), look);
    const Colour tile = (against ? Hex(0x2A2030) : Hex(0x5A6470)) * sky.light;
    const Colour wood = (against ? Hex(0x301820) : Hex(0xA8452C)) * sky.light;
    const float x = stage.X(rng.Range(0.34f, 0.66f));
    const float unit = stage.U(rng.Range(116, 132));
    const int floors = rng.Chance(0.5f) ? 5 : 3;
    const float size = floors == 5 ? 1.0f : 1.35f;
    stage.canvas.Stroke(
        {{x, ground - unit * size * (Real(floors) + 1.7f)}, {x, ground - unit * size * Real(floors)}},
        unit * 0.03f, unit * 0.07f, tile * 0.8f);
    for (int k = 0; k < 7; ++k) {
        stage.canvas.Dab({x, ground - unit * size * (Real(floors) + 0.65f + 0.12f * Real(k))}, unit * 0.11f,
                         unit * 0.03f, 0, tile * 0.8f);
    }
    for (int i = 0; i < floors; ++i) {
        const float t = Real(i);
        const float y = ground - unit * size * t;
        const float body = unit * size * (1.02f - 0.085f * t);
        stage.canvas.Fill(Box(x - body, y - unit * size * 0.7f, x + body, y), [&](float px, float) {
            return wood *
                   (0.55f + 0.25f * Smooth(-body, body, px - x) + 0.18f * std::sin((px - x) / body * 22.0f));
        });
        stage.canvas.Fill(Box(x - body * 0.2f, y - unit * size * 0.5f, x + body * 0.2f, y), wood * 0.35f);
        if (against) {
            stage.canvas.Glow({x, y - unit * size * 0.3f}, body * 0.7f, Hex(0xFFB050) * 0.45f);
        }
        PaintEaves(stage, {x, y - unit * size * 1.08f}, body * 1.62f, unit * size * 0.52f, tile);
    }
    stage.canvas.Fill(Box(x - unit * 1.6f, ground - 2, x + unit * 1.6f, ground + unit * 0.2f),
                      Hex(0x8A8880) * sky.light * 0.7f);
    PaintHill(stage, MakeSkyline(stage, ground + stage.Y(0.06f), stage.Y(0.05f), 1.5f, 0.1f, 943), stage.h,
              Hex(0x4A5A30) * sky.light, Hex(0x1A2412) * sky.light, 0.4f);
    const LeafTones tones = stage.TimeOfYear() == Season::Winter
                                ? LeafTones{Hex(0x1A2C20), Hex(0x30503A), Hex(0x5A7A5A)}
                                : LeavesOf(stage);
    const LeafTones leaves = Lit(tones, against ? sky.light * 0.55f : sky.light);
    for (int i = 0; i < 14; ++i) {
        const float px = stage.X(rng.Range(-0.05f, 1.05f));
        const float r = stage.U(rng.Range(60, 120));
        PaintFoliage(stage, {px, ground + stage.U(rng.Range(10, 90))}, r * 1.2f, r * 0.8f, 360, stage.U(7),
                     leaves, -1);
    }
    for (int i = 0; i < 10; ++i) {  // a frame of leaves near the viewer
        PaintFoliage(stage,
                     stage.At(x > stage.X(0.5f) ? rng.Range(-0.02f, 0.26f) : rng.Range(0.74f, 1.02f),
                              rng.Range(-0.02f, 0.14f)),
                     stage.U(110), stage.U(60), 170, stage.U(10), leaves, 1);
    }
    stage.develop.warmth = 0.12f;
}

}  // namespace sample
