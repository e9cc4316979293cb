#include "drawings.h"

#include <numbers>

#include "figures.h"
#include "nature.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

Develop Plain() {
    Develop develop;
    develop.contrast = 1;
    develop.saturation = 1;
    develop.vignette = 0;
    develop.bloom = 0;
    develop.grain = 0;
    develop.paper = true;
    return develop;
}

// A line of a hand that is not a machine's.
void Scribble(Stage& stage, const Path& knots, float width, Colour colour, float shake = 2.0f) {
    Path line;
    for (const Point& p : Curve(knots, 6)) {
        line.push_back(p + Point{stage.U(stage.rng.Bell() * shake), stage.U(stage.rng.Bell() * shake)});
    }
    stage.canvas.Stroke(line, stage.U(width), stage.U(width * 0.8f), Tint(colour, 0.92f));
}

enum class Shape { Round, Square };

void Hatch(Stage& stage, Point centre, float rx, float ry, float angle, Colour colour, float width,
           Shape shape = Shape::Round) {
    const int lines = Whole(2.0f * ry / stage.U(width * 0.8f));
    for (int i = 0; i < lines; ++i) {
        const float v = -1.0f + 2.0f * (Real(i) + stage.rng.Unit()) / Real(lines);
        const float chord = shape == Shape::Round ? std::sqrt(std::max(0.0f, 1.0f - v * v)) : 1.0f;
        const float half = chord * rx * stage.rng.Range(0.97f, 1.02f);
        const Point across{-std::sin(angle) * v * ry, std::cos(angle) * v * ry};
        const Point along{std::cos(angle) * half, std::sin(angle) * half};
        Scribble(stage, {centre + across - along, centre + across, centre + across + along}, width,
                 Mix(colour, Hex(0xFFFFFF), stage.rng.Unit() * 0.3f), 3.0f);
    }
}

void DrawMap(Stage& stage) {
    stage.Backdrop(2, [&](float x, float y) {
        return Hex(0xF4EBD6) * (0.95f + 0.08f * Fbm(x / 90.0f, y / 90.0f, 4, 5));
    });
    const Colour ink = Hex(0x3A3028);
    stage.canvas.Stroke(Curve({stage.At(0.1f, -0.05f), stage.At(0.22f, 0.3f), stage.At(0.16f, 0.62f),
                               stage.At(0.34f, 1.05f)}),
                        stage.U(80), stage.U(120), Hex(0xA8CBDC));
    for (int i = 0; i < 26; ++i) {
        const Point p = stage.At(stage.rng.Range(0.5f, 0.92f), stage.rng.Range(0.08f, 0.42f));
        Scribble(stage, {p, {p.x, p.y - stage.U(34)}}, 4, ink, 1);
        Hatch(stage, {p.x, p.y - stage.U(50)}, stage.U(20), stage.U(24), 0.6f, Hex(0x6E9A5A), 4);
    }
    Scribble(stage,
             {stage.At(0.04f, 0.86f), stage.At(0.3f, 0.74f), stage.At(0.5f, 0.8f), stage.At(0.72f, 0.6f),
              stage.At(0.96f, 0.66f)},
             9, Hex(0x8A7860));
    Scribble(stage,
             {stage.At(0.72f, 0.6f), stage.At(0.66f, 0.44f), stage.At(0.5f, 0.34f), stage.At(0.4f, 0.2f)}, 6,
             Hex(0x8A7860));
    for (int i = 0; i < 13; ++i) {  // the way, dotted red
        const float t = Real(i) / 12.0f;
        const Path way = Curve({stage.At(0.12f, 0.83f), stage.At(0.4f, 0.76f), stage.At(0.66f, 0.62f),
                                stage.At(0.6f, 0.42f), stage.At(0.42f, 0.22f)},
                               20);
        const Point p = way[static_cast<std::size_t>(t * Real(static_cast<int>(way.size()) - 1))];
        stage.canvas.Dab(p, stage.U(9), stage.U(8), 0, Hex(0xC83A28));
    }
    const Point goal = stage.At(0.4f, 0.17f);
    for (const float s : {-1.0f, 1.0f}) {
        Scribble(
            stage,
            {goal + Point{-stage.U(28), -stage.U(28) * s}, goal, goal + Point{stage.U(28), stage.U(28) * s}},
            12, Hex(0xC83A28));
    }
    const Point house = stage.At(0.1f, 0.8f);
    Scribble(stage,
             {house, house + Point{0, -stage.U(60)}, house + Point{stage.U(42), -stage.U(104)},
              house + Point{stage.U(84), -stage.U(60)}, house + Point{stage.U(84), 0}, house},
             6, ink);
    const Point rose = stage.At(0.87f, 0.85f);
    for (int i = 0; i < 8; ++i) {
        const float a = pi * 0.25f * Real(i);
        const float r = stage.U(i % 2 ? 42 : i == 6 ? 108 : 80);
        stage.canvas.Fill({rose + Point{std::cos(a) * r, std::sin(a) * r},
                           rose + Point{std::cos(a + 0.4f) * r * 0.24f, std::sin(a + 0.4f) * r * 0.24f}, rose,
                           rose + Point{std::cos(a - 0.4f) * r * 0.24f, std::sin(a - 0.4f) * r * 0.24f}},
                          i == 6 ? Hex(0xC83A28) : ink);
    }
}

void DrawCrayons(Stage& stage) {
    stage.Backdrop(
        1, [&](float x, float y) { return Hex(0xFBF8F0) * (0.97f + 0.05f * Noise(x / 2.0f, y / 2.0f, 3)); });
    for (int i = 0; i < 24; ++i) {
        Hatch(stage, stage.At(stage.rng.Unit(), stage.rng.Range(0.02f, 0.4f)), stage.U(130), stage.U(26),
              0.05f, Hex(0xA8D4F0), 9);
    }
    Hatch(stage, stage.At(0.12f, 0.16f), stage.U(80), stage.U(80), 0.7f, Hex(0xF8C020), 9);
    for (int i = 0; i < 12; ++i) {
        const float a = pi * Real(i) / 6.0f;
        const Point c = stage.At(0.12f, 0.16f);
        Scribble(stage,
                 {c + Point{std::cos(a) * stage.U(98), std::sin(a) * stage.U(98)},
                  c + Point{std::cos(a) * stage.U(146), std::sin(a) * stage.U(146)}},
                 10, Hex(0xF0A010));
    }
    for (int i = 0; i < 60; ++i) {
        const Point p = stage.At(stage.rng.Unit(), stage.rng.Range(0.84f, 1.0f));
        Scribble(stage, {p, p + Point{stage.U(stage.rng.Bell() * 30), -stage.U(70)}}, 11,
                 Mix(Hex(0x4E9A38), Hex(0x8AC848), stage.rng.Unit()));
    }
    const Colour brick = Hsv(stage.rng.Range(0.0f, 0.12f), 0.6f, 0.85f);
    Hatch(stage, stage.At(0.5f, 0.69f), stage.X(0.195f), stage.Y(0.185f), 0.0f,
          Mix(brick, Hex(0xFFFFFF), 0.3f), 10, Shape::Square);
    const Point walls[4] = {stage.At(0.3f, 0.5f), stage.At(0.3f, 0.88f), stage.At(0.7f, 0.88f),
                            stage.At(0.7f, 0.5f)};
    for (int i = 0; i < 4; ++i) Scribble(stage, {walls[i], walls[(i + 1) % 4]}, 11, brick * 0.6f);
    Scribble(stage,
             {stage.At(0.25f, 0.52f), stage.At(0.375f, 0.38f), stage.At(0.49f, 0.25f), stage.At(0.5f, 0.235f),
              stage.At(0.51f, 0.25f), stage.At(0.625f, 0.38f), stage.At(0.75f, 0.52f)},
             14, Hex(0xB8302C));
    for (int i = 0; i < 11; ++i) {
        const float t = Real(i) / 11.0f;
        Scribble(stage,
                 {stage.At(Lerp(0.48f, 0.28f, t), Lerp(0.28f, 0.5f, t)),
                  stage.At(Lerp(0.52f, 0.72f, t), Lerp(0.28f, 0.5f, t))},
                 11, Hex(0xD84A3C));
    }
    Hatch(stage, stage.At(0.5f, 0.79f), stage.U(100), stage.U(58), pi * 0.5f, Hex(0x6A4428), 9,
          Shape::Square);
    for (const float x : {0.38f, 0.62f}) {
        Hatch(stage, stage.At(x, 0.62f), stage.U(54), stage.U(46), 0.0f, Hex(0xFFE070), 9, Shape::Square);
        Scribble(stage, {stage.At(x, 0.56f), stage.At(x, 0.68f)}, 7, Hex(0x4A3424));
        Scribble(stage, {stage.At(x - 0.04f, 0.62f), stage.At(x + 0.04f, 0.62f)}, 7, Hex(0x4A3424));
    }
    Hatch(stage, stage.At(0.6f, 0.27f), stage.U(60), stage.U(30), 0.1f, Hex(0x2A2A2A),
          9);  // the cat on the roof
    Hatch(stage, stage.At(0.655f, 0.22f), stage.U(28), stage.U(28), 0.4f, Hex(0x2A2A2A), 9);
    Scribble(stage,
             {stage.At(0.636f, 0.19f), stage.At(0.64f, 0.15f), stage.At(0.655f, 0.18f),
              stage.At(0.672f, 0.15f), stage.At(0.676f, 0.19f)},
             8, Hex(0x2A2A2A));
    Scribble(stage, {stage.At(0.555f, 0.27f), stage.At(0.52f, 0.22f), stage.At(0.54f, 0.16f)}, 9,
             Hex(0x2A2A2A));
    for (int i = 0; i < 3; ++i) {  // the family
        const Point c = stage.At(0.78f + 0.075f * Real(i), 0.74f + (i == 2 ? 0.06f : 0.0f));
        const Colour dress = Hsv(0.55f + 0.33f * Real(i), 0.65f, 0.85f);
        Hatch(stage, c + Point{0, -stage.U(66)}, stage.U(25), stage.U(27), 0.5f, Hex(0xF4C8A0), 7);
        Hatch(stage, c, stage.U(30), stage.U(46), pi * 0.5f, dress, 8);
        Scribble(stage, {c + Point{-stage.U(12), stage.U(40)}, c + Point{-stage.U(14), stage.U(90)}}, 8,
                 Hex(0x3A3A4A));
        Scribble(stage, {c + Point{stage.U(12), stage.U(40)}, c + Point{stage.U(14), stage.U(90)}}, 8,
                 Hex(0x3A3A4A));
        Scribble(stage,
                 {c + Point{-stage.U(52), stage.U(6)}, c + Point{0, -stage.U(22)},
                  c + Point{stage.U(52), stage.U(6)}},
                 7, dress * 0.7f);
        Scribble(stage,
                 {c + Point{-stage.U(10), -stage.U(58)}, c + Point{0, -stage.U(53)},
                  c + Point{stage.U(10), -stage.U(58)}},
                 4, Hex(0xB83020), 0.5f);
    }
}

void DrawGardenPlan(Stage& stage) {
    stage.Backdrop(1, [&](float x, float y) {
        const float step = stage.U(40);
        const bool line = std::fmod(x, step) < 1.5f || std::fmod(y, step) < 1.5f;
        return line ? Hex(0xD6E2EA) : Hex(0xFCFDFC);
    });
    const Colour pencil = Hex(0x50545C);
    const Colour crops[6] = {Hex(0x7AB84A), Hex(0xD8483C), Hex(0xE89A30),
                             Hex(0x5A8A3A), Hex(0x8A5AA8), Hex(0xC8C040)};
    for (int bed = 0; bed < 6; ++bed) {
        const float x = 0.1f + 0.28f * Real(bed % 3);
        const float y = bed < 3 ? 0.16f : 0.56f;
        Scribble(stage, {stage.At(x, y), stage.At(x + 0.22f, y)}, 5, pencil, 1);
        Scribble(stage, {stage.At(x + 0.22f, y), stage.At(x + 0.22f, y + 0.28f)}, 5, pencil, 1);
        Scribble(stage, {stage.At(x + 0.22f, y + 0.28f), stage.At(x, y + 0.28f)}, 5, pencil, 1);
        Scribble(stage, {stage.At(x, y + 0.28f), stage.At(x, y)}, 5, pencil, 1);
        for (int row = 0; row < 4; ++row) {
            for (int i = 0; i < 6; ++i) {
                const Point p = stage.At(x + 0.025f + 0.034f * Real(i), y + 0.045f + 0.063f * Real(row));
                Hatch(stage, p, stage.U(13 + 4.0f * stage.rng.Unit()), stage.U(13), 0.7f, crops[bed], 3.4f);
            }
        }
    }
    Scribble(stage, {stage.At(0.05f, 0.5f), stage.At(0.5f, 0.505f), stage.At(0.95f, 0.5f)}, 4, Hex(0x3A78C0));
    Hatch(stage, stage.At(0.93f, 0.12f), stage.U(44), stage.U(44), 0.4f, Hex(0x7AB8E0), 4);
    Scribble(stage, {stage.At(0.93f, 0.2f), stage.At(0.93f, 0.5f)}, 4, Hex(0x3A78C0));
}

void DrawChart(Stage& stage) {
    stage.Backdrop(4, [&](float, float) { return Hex(0xFAFBFD); });
    for (int i = 0; i <= 6; ++i) {
        const float y = 0.14f + 0.12f * Real(i);
        stage.canvas.Fill(Box(stage.X(0.08f), stage.Y(y), stage.X(0.95f), stage.Y(y) + 2), Hex(0xDCE2EA));
    }
    Path warm;
    Path cool;
    for (int i = 0; i < 12; ++i) {
        const float season = -std::cos((Real(i) + 0.3f) / 12.0f * 2.0f * pi);
        const float x = 0.12f + 0.072f * Real(i);
        warm.push_back(stage.At(x, 0.44f - 0.23f * season + stage.rng.Bell() * 0.02f));
        cool.push_back(stage.At(x, 0.58f - 0.2f * season + stage.rng.Bell() * 0.02f));
        const float rain = 0.04f + 0.12f * stage.rng.Unit();
        stage.canvas.Fill(Box(stage.X(x - 0.02f), stage.Y(0.86f - rain), stage.X(x + 0.02f), stage.Y(0.86f)),
                          Hex(0xA9CDEB));
    }
    const Path warmLine = Curve(warm);
    const Path coolLine = Curve(cool);
    Path band = warmLine;
    band.insert(band.end(), coolLine.rbegin(), coolLine.rend());
    stage.canvas.Fill(band, Tint(Hex(0xF8C8A0), 0.4f));
    stage.canvas.Stroke(warmLine, 6, 6, Hex(0xE0603C));
    stage.canvas.Stroke(coolLine, 6, 6, Hex(0x3C7CC4));
    for (std::size_t i = 0; i < warm.size(); ++i) {
        stage.canvas.Dab(warm[i], 9, 9, 0, Hex(0xE0603C));
        stage.canvas.Dab(cool[i], 9, 9, 0, Hex(0x3C7CC4));
    }
    stage.canvas.Fill(Box(stage.X(0.08f), stage.Y(0.08f), stage.X(0.08f) + 4, stage.Y(0.86f)), Hex(0x5A6270));
    stage.canvas.Fill(Box(stage.X(0.08f), stage.Y(0.86f), stage.X(0.95f), stage.Y(0.86f) + 4), Hex(0x5A6270));
}

}  // namespace

Image MakeDrawing(int subject, std::uint32_t seed) {
    Moment moment;
    moment.seed = seed;
    Stage stage(1024, 768, moment);
    void (*const drawers[])(Stage&) = {DrawMap, DrawCrayons, DrawGardenPlan, DrawChart};
    drawers[subject](stage);
    return DevelopPicture(stage.canvas, Plain(), seed);
}

Image MakeBackground(int month, std::uint32_t seed) {
    Moment moment;
    moment.month = month;
    moment.seed = seed;
    Stage stage(1600, 1000, moment);
    Rng& rng = stage.rng;
    const Season season = stage.TimeOfYear();
    const Colour tones[4][2] = {{Hex(0xE6EEF8), Hex(0xF6F4FA)},
                                {Hex(0xFBE6EC), Hex(0xF2F6E4)},
                                {Hex(0xDDF0F6), Hex(0xF8F6E2)},
                                {Hex(0xFBE8D2), Hex(0xF8F2DC)}};
    const auto& tone = tones[static_cast<int>(season)];
    stage.Backdrop(8, [&](float x, float y) {
        const float t = Clamp01(0.25f + 0.7f * y / stage.h +
                                0.5f * (Fbm(x / stage.U(600), y / stage.U(600), 3, stage.Seed(1)) - 0.5f));
        return Mix(tone[0], tone[1], t);
    });
    for (int i = 0; i < 46; ++i) {
        const Point p = stage.At(rng.Unit(), rng.Unit());
        const float size = stage.U(rng.Range(30, 120));
        const float soft = stage.U(rng.Range(2, 12));
        switch (season) {
            case Season::Autumn:
                stage.canvas.Fill(MapleLeaf(p, size, rng.Range(0, 2 * pi)),
                                  Tint(Mix(Hex(0xF0A870), Hex(0xF0C880), rng.Unit()), rng.Range(0.12f, 0.3f)),
                                  soft);
                break;
            case Season::Spring:
                for (int k = 0; k < 5; ++k) {
                    stage.canvas.Fill(LeafShape(p, size * 0.6f, size * 0.55f, 2 * pi * Real(k) / 5.0f),
                                      Tint(Hex(0xF6BCCC), 0.2f), soft);
                }
                break;
            case Season::Summer:
                stage.canvas.Dab(p, size, size, 0, Tint(Mix(Hex(0xB8E2EE), Hex(0xFFFFFF), rng.Unit()), 0.28f),
                                 soft * 2.0f);
                break;
            case Season::Winter:
                for (int k = 0; k < 6; ++k) {
                    const float a = pi * Real(k) / 3.0f;
                    const Point tip = p + Point{std::cos(a) * size * 0.6f, std::sin(a) * size * 0.6f};
                    stage.canvas.Stroke({p, tip}, size * 0.05f, size * 0.03f, Tint(Hex(0xC2D6EC), 0.45f),
                                        soft * 0.2f);
                    for (const float side : {-0.5f, 0.5f}) {
                        const Point from = p + (tip - p) * 0.6f;
                        stage.canvas.Stroke({from, from + Point{std::cos(a + side) * size * 0.2f,
                                                                std::sin(a + side) * size * 0.2f}},
                                            size * 0.04f, size * 0.02f, Tint(Hex(0xC2D6EC), 0.45f),
                                            soft * 0.2f);
                    }
                }
                break;
        }
    }
    stage.canvas.Shade(stage.canvas.Whole(), 8, [](float, float) { return Tint(Hex(0xFFFFFF), 0.3f); });
    Develop develop = Plain();
    develop.exposure = 0.97f;
    return DevelopPicture(stage.canvas, develop, seed);
}

Image MakeMovieFrame(int subject, float t, std::uint32_t seed) {
    Moment moment;
    moment.seed = seed;  // the same for all frames: only what moves may change
    Stage stage(320, 240, moment);
    stage.develop.grain = 0.006f;
    if (subject == 0) {
        const float horizon = stage.Y(0.55f);
        const Point sun{stage.X(0.62f), horizon - stage.Y(0.09f - 0.03f * t)};
        const Sky sky = SkyAt(stage, 18.0f + 0.25f * t, 0.5f, sun);
        PaintSky(stage, sky, horizon);
        stage.canvas.Dab(sun, stage.U(44), stage.U(44), 0, Hex(0xFFE8A8) * 2.0f, 2);
        Reflect(stage, horizon, stage.h, 24.0f, Tint(Hex(0x2A2A50), 0.3f));
        const float drift = t * 5.0f;
        stage.canvas.Shade({0, Whole(horizon), 320, 240}, 1, [&](float x, float y) {
            const float depth = (y - horizon) / stage.h + 0.02f;
            const float spread = std::exp(-std::pow((x - sun.x) / (stage.w * (0.04f + depth * 0.3f)), 2.0f));
            const float sparkle = Noise((x - sun.x) / (depth * 60.0f) + drift, 0.9f / depth + drift, 7);
            return Tint(Hex(0xFFD090) * 1.6f,
                        Clamp01(Smooth(0.62f, 0.85f, sparkle) * spread + 0.1f * spread));
        });
        PaintSailingBoat(
            stage, {stage.X(-0.05f + 0.75f * t), horizon + stage.Y(0.10f + 0.006f * std::sin(t * 25.0f))},
            stage.U(270), Hex(0x1A1018), Hex(0x4A2C38));
        for (int i = 0; i < 4; ++i) {
            PaintBird(stage,
                      stage.At(0.9f - 0.5f * t + 0.06f * Real(i),
                               0.2f + 0.05f * Real(i % 2) + 0.01f * std::sin(t * 30.0f + Real(i))),
                      stage.U(44), Hex(0x2A1830));
        }
        return DevelopPicture(stage.canvas, stage.develop, seed);
    }
    const float horizon = stage.Y(0.86f);
    const Sky sky = SkyAt(stage, 6.6f, 0.35f, {stage.X(0.1f), horizon});
    PaintSky(stage, sky, horizon);
    PaintHill(stage, MakeSkyline(stage, horizon, stage.Y(0.08f), 1.6f, 0.3f, 11), stage.h,
              Mix(Hex(0x5A7A48), sky.horizon, 0.35f), Hex(0x3A5A2A), 0.3f);
    for (int i = 0; i < 5; ++i) {
        const float size = 150.0f + 60.0f * Real((i * 3) % 5);
        const float start = 0.7f + 0.12f * Real((i * 2) % 5);
        PaintHotAirBalloon(stage, stage.At(0.14f + 0.18f * Real(i) + 0.03f * t, start - 0.75f * t),
                           stage.U(size), 0.11f + 0.381966f * Real(i), Mix(sky.light, {1, 1, 1}, 0.5f),
                           -1.0f);
    }
    return DevelopPicture(stage.canvas, stage.develop, seed);
}

}  // namespace sample
