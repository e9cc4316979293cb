#include <numbers>

#include "nature.h"
#include "scenes.h"
#include "tableware.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

}  // namespace

void CoffeeCup(Stage& stage) {
    Rng& rng = stage.rng;
    const Colour woods[4] = {Hex(0x8A5A34), Hex(0x5A3A24), Hex(0xC0986C), Hex(0x4A4440)};
    PaintTable(stage, woods[rng.Pick(0, 3)], rng.Range(3.0f, 6.0f), rng.Chance(0.3f));
    const Point c = stage.At(rng.Range(0.42f, 0.58f), rng.Range(0.45f, 0.55f));
    if (rng.Chance(0.6f)) {
        PaintCloth(stage, c + Point{stage.U(rng.Bell() * 260), stage.U(rng.Bell() * 200)}, stage.U(470),
                   rng.Range(-0.5f, 0.5f), Hex(0xEDE4D4), Hsv(rng.Unit(), 0.45f, 0.65f));
    }
    const float r = stage.U(330);
    const Colour china =
        rng.Chance(0.6f) ? Hex(0xF6F2EA) : Mix(Hsv(rng.Unit(), 0.35f, 0.8f), Hex(0xF0ECE4), 0.3f);
    PaintDish(stage, c, r, china);
    const float turn = rng.Range(-0.6f, 0.9f);
    const Point grip{c.x + std::cos(turn) * r * 0.72f, c.y + std::sin(turn) * r * 0.72f};
    const float cup = r * 0.58f;
    stage.canvas.Fill(Ellipse(c + Point{r * 0.08f, r * 0.11f}, cup * 1.03f, cup * 1.03f),
                      Tint(Hex(0x1A0E08), 0.5f), r * 0.05f);
    stage.canvas.Fill(Ellipse(grip, r * 0.2f, r * 0.1f, turn), china * 0.9f);
    stage.canvas.Fill(Ellipse(grip, r * 0.12f, r * 0.045f, turn), china * 0.45f);
    stage.canvas.Fill(Ellipse(c, cup, cup), [&](float x, float y) {
        const float d = std::hypot(x - c.x, y - c.y) / cup;
        const float facing = -((x - c.x) + (y - c.y)) / cup * 0.5f;
        return china * (0.95f + 0.2f * facing - 0.3f * Smooth(0.96f, 0.9f, d));
    });
    const float drink = cup * 0.89f;
    const float art = rng.Range(0, pi * 2);
    const int pattern = rng.Pick(0, 2);
    stage.canvas.Fill(Ellipse(c, drink, drink), [&](float x, float y) {
        const float ux = (x - c.x) / drink;
        const float uy = (y - c.y) / drink;
        const float px = ux * std::cos(art) + uy * std::sin(art);
        const float py = -ux * std::sin(art) + uy * std::cos(art);
        const float d = std::hypot(px, py);
        float milk = 0;
        if (pattern == 0) {  // a fern
            const float leaf =
                std::fabs(px) /
                std::max(0.02f, 0.62f * std::sqrt(std::max(0.0f, 1.0f - std::pow(py / 0.78f, 2.0f))));
            const float rib = 0.5f + 0.5f * std::sin((py * 1.0f + std::fabs(px) * 0.9f) * 26.0f);
            milk = leaf < 1.0f ? Smooth(0.25f, 0.55f, rib) * Smooth(1.0f, 0.9f, leaf) *
                                     Smooth(0.0f, 0.03f, std::fabs(px))
                               : 0.0f;
        } else if (pattern == 1) {  // a heart
            const float hx = px * 1.5f;
            const float hy = -py * 1.5f + 0.1f;
            const float v = std::pow(hx * hx + hy * hy - 0.6f, 3.0f) - hx * hx * hy * hy * hy;
            milk = Smooth(0.02f, -0.03f, v);
            milk *= 0.75f + 0.25f * std::sin(d * 26.0f);
        } else {  // black coffee with a bright rim
            milk = 0.0f;
        }
        const float crema = Fbm(ux * 7.0f, uy * 7.0f, 3, stage.Seed(3));
        Colour c0 = Mix(Hex(pattern == 2 ? 0x2A1408 : 0x7A4420), Hex(pattern == 2 ? 0x4A2810 : 0xB87A40),
                        0.55f * crema + 0.45f * d);
        c0 = Mix(c0, Hex(0xFBF0DC), milk * 0.94f);
        const float rim = Smooth(0.9f, 0.99f, d);
        c0 = Mix(c0, Hex(0xC89058), rim * 0.6f);
        const float shadow = Smooth(0.25f, 0.0f, 1.0f - std::hypot(ux + 0.10f, uy + 0.13f));
        const float gleam =
            std::exp(-std::pow((std::hypot(ux + 0.36f, uy + 0.42f) - 0.16f) / 0.12f, 2.0f)) * 0.10f;
        return c0 * (1.0f - 0.05f * shadow) + Colour{1, 1, 1} * gleam;
    });
    // A spoon on the saucer and something sweet beside it.
    const float lay = turn + rng.Range(1.4f, 2.4f);
    const Point along{std::cos(lay), std::sin(lay)};
    const Point bowl = c + along * (r * 0.8f);
    const Point side{-along.y, along.x};
    const Point from = bowl + side * (r * 0.36f);
    const Point to = bowl - side * (r * 0.66f);
    stage.canvas.Stroke({from + Point{5, 8}, to + Point{5, 8}}, r * 0.05f, r * 0.05f,
                        Tint(Hex(0x1A100A), 0.4f), 5);
    stage.canvas.Stroke({from, to}, r * 0.028f, r * 0.05f, Hex(0xC8C4BC));
    stage.canvas.Stroke({from, to}, r * 0.01f, r * 0.018f, Hex(0xFFFFFF));
    const float spoonAngle = std::atan2(side.y, side.x);
    stage.canvas.Fill(Ellipse(from, r * 0.15f, r * 0.085f, spoonAngle), [&](float x, float y) {
        const float v = ((x - from.x) * along.x + (y - from.y) * along.y) / (r * 0.085f);
        return Mix(Hex(0x6A665E), Hex(0xF8F6F0), 0.5f + 0.5f * v);
    });
    const int sweets = rng.Pick(1, 3);
    for (int i = 0; i < sweets; ++i) {
        const float a = art + 2.2f * Real(i) + 0.5f;
        const Point p{c.x + std::cos(a) * stage.U(470), c.y + std::sin(a) * stage.U(400)};
        const float q = stage.U(82);
        stage.canvas.Dab(p + Point{q * 0.12f, q * 0.18f}, q * 1.04f, q * 1.0f, 0, Tint(Hex(0x0C0604), 0.6f),
                         q * 0.2f);
        const std::uint32_t seed = stage.Seed(40 + static_cast<std::uint32_t>(i));
        stage.canvas.Fill(Ellipse(p, q, q * 0.97f), [&](float x, float y) {
            const float d = std::hypot(x - p.x, y - p.y) / q;
            const float crumb = Fbm(x / stage.U(12), y / stage.U(12), 3, seed);
            return Mix(Hex(0xE0AC68), Hex(0x9A5E28), Smooth(0.5f, 1.0f, d)) * (0.72f + 0.55f * crumb) *
                   (1.05f - 0.2f * ((x - p.x) + (y - p.y)) / q);
        });
        for (int k = 0; k < 9; ++k) {
            const float d = q * 0.75f * std::sqrt(rng.Unit());
            const float b = rng.Range(0, 2 * pi);
            stage.canvas.Dab({p.x + std::cos(b) * d, p.y + std::sin(b) * d}, q * 0.1f, q * 0.085f, b,
                             Hex(0x3A1C0C), 1.5f);
        }
    }
    stage.develop.vignette = 0.4f;
    stage.develop.warmth = 0.15f;
}

void FruitBowl(Stage& stage) {
    Rng& rng = stage.rng;
    const float table = stage.Y(0.66f);
    const Colour wall = Mix(Hsv(rng.Unit(), 0.22f, 0.62f), Hex(0xB0A490), 0.4f);
    const std::uint32_t seed = stage.Seed(191);
    stage.Backdrop(4, [&](float x, float y) {
        const float d = std::hypot((x - stage.X(0.1f)) / stage.w, (y - stage.Y(0.1f)) / stage.h);
        return wall * (1.15f - 0.85f * d) * (0.9f + 0.2f * Fbm(x / stage.U(200), y / stage.U(200), 4, seed));
    });
    // A window throws its light across the wall.
    for (int i = 0; i < 4; ++i) {
        const float x = 0.08f + 0.14f * Real(i % 2);
        const float y = 0.06f + 0.25f * Real(i / 2);
        stage.canvas.Fill({stage.At(x, y), stage.At(x + 0.12f, y + 0.03f), stage.At(x + 0.17f, y + 0.25f),
                           stage.At(x + 0.05f, y + 0.22f)},
                          Tint(Hex(0xFFF0CC), 0.3f), stage.U(9));
    }
    const Colour wood = Hex(0x7A4E2C);
    stage.canvas.Shade({0, Whole(table), Whole(stage.w), Whole(stage.h)}, 1, [&](float x, float y) {
        const float t = (y - table) / (stage.h - table);
        const float grain = Noise(x / stage.U(340), y / stage.U(7), seed + 1) * 0.6f +
                            Noise(x / stage.U(90), y / stage.U(2.5f), seed + 2) * 0.4f;
        return wood * (0.55f + 0.6f * grain) * (1.2f - 0.5f * x / stage.w - 0.2f * t);
    });
    const Point c = stage.At(rng.Range(0.45f, 0.55f), 0.74f);
    const float r = stage.U(330);
    stage.canvas.Dab({c.x + r * 0.35f, c.y + r * 0.34f}, r * 1.25f, r * 0.22f, 0, Tint(Hex(0x0A0604), 0.7f),
                     r * 0.14f);
    const Colour china = rng.Chance(0.5f) ? Hex(0xE8EAF0) : Hex(0x5A82A8);
    const float rim = c.y - r * 0.14f;
    stage.canvas.Fill(Ellipse({c.x, rim}, r, r * 0.24f), china * 0.4f);
    struct Kind {
        Colour skin, blush;
        FruitKind kind;
    };
    const Kind kinds[5] = {{Hex(0xC8201C), Hex(0xE8A040), FruitKind::Apple},
                           {Hex(0xF08A18), Hex(0xF8A030), FruitKind::Orange},
                           {Hex(0xF4D028), Hex(0xE8C828), FruitKind::Lemon},
                           {Hex(0x8AB83C), Hex(0xC8D060), FruitKind::Apple},
                           {Hex(0xF0B080), Hex(0xE06850), FruitKind::Peach}};
    const float places[7][3] = {{-0.55f, -0.20f, 0.27f}, {0.0f, -0.28f, 0.28f},  {0.54f, -0.20f, 0.27f},
                                {-0.28f, -0.52f, 0.26f}, {0.30f, -0.50f, 0.26f}, {-0.28f, -0.12f, 0.26f},
                                {0.30f, -0.10f, 0.27f}};
    int last = -1;
    for (const auto& p : places) {
        int k = rng.Pick(0, 4);
        if (k == last) {
            k = (k + 1) % 5;
        }
        last = k;
        PaintFruit(stage, {{c.x + p[0] * r, rim + p[1] * r},
                           r * p[2] * rng.Range(0.94f, 1.06f),
                           kinds[k].skin,
                           kinds[k].blush,
                           kinds[k].kind});
    }
    Path bowl;
    for (int i = 0; i <= 40; ++i) {
        const float a = pi * Real(i) / 40.0f;
        bowl.push_back({c.x - std::cos(a) * r, rim + std::sin(a) * r * 0.24f});
    }
    for (int i = 0; i <= 30; ++i) {
        const float a = pi * Real(i) / 30.0f;
        bowl.push_back({c.x + std::cos(a) * r * (1.0f - 0.35f * std::sin(a)), rim + std::sin(a) * r * 0.52f});
    }
    stage.canvas.Fill(bowl, [&](float x, float y) {
        const float dx = (x - c.x) / r;
        const float dy = (y - rim) / (r * 0.52f);
        const float lit = Clamp01(0.78f - 0.55f * dx - 0.5f * dy);
        const float band = std::fabs(dy - 0.55f + 0.25f * dx * dx) < 0.05f ? 0.5f : 1.0f;
        Colour col = Mix(Hex(0x2A4A78), china, band) * (0.15f + lit);
        return col + Colour{1, 1, 1} * (0.5f * std::exp(-std::pow((dx + 0.55f) / 0.08f, 2.0f) -
                                                        std::pow((dy - 0.5f) / 0.25f, 2.0f)));
    });
    for (int i = 0; i < 34; ++i) {  // grapes spill over the edge
        const float t = Real(i) / 33.0f;
        const Point p{c.x + r * (0.80f + 0.25f * t) + rng.Bell() * r * 0.2f,
                      rim + r * (0.02f + 0.52f * t) + rng.Bell() * r * 0.08f};
        PaintFruit(stage, {p, r * 0.075f, Hex(0x4A2060), Hex(0x7A3A80), FruitKind::Grape});
    }
    PaintFruit(
        stage,
        {{c.x - r * 1.12f, c.y + r * 0.36f}, r * 0.26f, kinds[1].skin, kinds[1].blush, FruitKind::Orange});
    stage.develop.vignette = 0.45f;
    stage.develop.warmth = 0.2f;
    stage.develop.contrast = 1.12f;
}

void BirthdayCake(Stage& stage) {
    Rng& rng = stage.rng;
    const std::uint32_t seed = stage.Seed(201);
    stage.Backdrop(8, [&](float x, float y) {
        const float d = std::hypot((x - stage.X(0.5f)) / stage.w, (y - stage.Y(0.45f)) / stage.h);
        return Mix(Hex(0x8A4A1C), Hex(0x140806), Smooth(0.05f, 0.7f, d)) *
               (0.8f + 0.4f * Fbm(x / stage.U(300), y / stage.U(300), 2, seed));
    });
    for (int i = 0; i < 46; ++i) {
        stage.canvas.Bokeh(stage.At(rng.Unit(), rng.Range(0.0f, 0.5f)), stage.U(rng.Range(16, 56)),
                           Hsv(rng.Chance(0.6f) ? 0.1f : rng.Unit(), 0.6f, 1.0f) * rng.Range(0.04f, 0.3f));
    }
    const float table = stage.Y(0.74f);
    stage.canvas.Shade({0, Whole(table), Whole(stage.w), Whole(stage.h)}, 2, [&](float x, float y) {
        const float glow = std::exp(-std::pow((x / stage.w - 0.5f) / 0.38f, 2.0f));
        return Mix(Hex(0x1A0A06), Hex(0xA05A28),
                   glow * (0.35f + 0.4f * Noise(x / stage.U(400), y / stage.U(8), seed)));
    });
    const Point c = stage.At(rng.Range(0.46f, 0.54f), 0.80f);
    const float r = stage.U(310);
    const float tall = r * 0.66f;
    const float flat = 0.26f;
    const bool chocolate = rng.Chance(0.35f);
    const Colour cream = chocolate ? Hex(0x5A2E18) : Mix(Hex(0xFFF4E4), Hsv(rng.Unit(), 0.2f, 1.0f), 0.3f);
    stage.canvas.Fill(Ellipse({c.x, c.y + r * 0.03f}, r * 1.32f, r * 0.36f), [&](float x, float) {
        return Hex(0xE8D8C0) * (0.75f - 0.35f * std::fabs(x - c.x) / r);
    });
    stage.canvas.Dab({c.x, c.y + r * 0.05f}, r * 1.1f, r * 0.3f, 0, Tint(Hex(0x2A1208), 0.6f), r * 0.1f);
    Path side;
    for (int i = 0; i <= 40; ++i) {
        const float a = pi * Real(i) / 40.0f;
        side.push_back({c.x + std::cos(a) * r, c.y + std::sin(a) * r * flat});
    }
    side.push_back({c.x - r, c.y - tall});
    side.push_back({c.x + r, c.y - tall});
    stage.canvas.Fill(side, [&](float x, float y) {
        const float a = (x - c.x) / r;
        const float round = std::sqrt(std::max(0.0f, 1.0f - a * a));
        const float level = (y - (c.y - tall) - round * r * flat) / tall;
        Colour col = cream;
        if (std::fabs(level - 0.5f) < 0.05f) {
            col = Mix(cream, Hex(0xE04850), 0.75f);
        }
        return col * (0.28f + 0.6f * round + 0.15f * (1.0f - level)) *
               (0.96f + 0.08f * Noise(x / stage.U(30), y / stage.U(14), seed + 2));
    });
    const Point top{c.x, c.y - tall};
    stage.canvas.Fill(Ellipse(top, r, r * flat), [&](float x, float y) {
        const float d = std::hypot((x - top.x) / r, (y - top.y) / (r * flat));
        return cream * (1.2f - 0.3f * d);
    });
    for (int ring = 0; ring < 2; ++ring) {  // rosettes at the foot and around the rim
        const Point base = ring ? top : c;
        const int n = 26;
        for (int i = 0; i < n; ++i) {
            const float a = 2 * pi * Real(i) / Real(n) + (ring ? 0.0f : 0.1f);
            if (!ring && std::sin(a) < -0.02f) {
                continue;
            }
            const Point p{base.x + std::cos(a) * r * (ring ? 0.9f : 1.0f),
                          base.y + std::sin(a) * r * flat * (ring ? 0.9f : 1.0f)};
            const float q = r * 0.085f;
            for (int k = 0; k < 3; ++k) {
                stage.canvas.Dab(
                    {p.x, p.y - q * 0.35f * Real(k)}, q * (1.0f - 0.25f * Real(k)),
                    q * (0.75f - 0.15f * Real(k)), 0,
                    Tint(Mix(cream, Hex(0xFFFFFF), chocolate ? 0.15f : 0.5f) * (0.72f + 0.2f * Real(k)), 1),
                    q * 0.4f);
            }
        }
    }
    struct Place {
        Point at;
        bool candle;
    };
    std::vector<Place> places;
    const int candles = rng.Pick(4, 9);
    for (int i = 0; i < candles; ++i) {
        const float a = 2 * pi * Real(i) / Real(candles) + 0.3f;
        places.push_back({{top.x + std::cos(a) * r * 0.52f, top.y + std::sin(a) * r * flat * 0.55f}, true});
    }
    for (int i = 0; i < 9; ++i) {
        const float a = 2 * pi * Real(i) / 9.0f;
        places.push_back({{top.x + std::cos(a) * r * 0.72f, top.y + std::sin(a) * r * flat * 0.74f}, false});
    }
    std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.at.y < b.at.y; });
    const float hue = rng.Unit();
    int index = 0;
    for (const Place& p : places) {
        if (!p.candle) {
            const float q = r * 0.10f;
            stage.canvas.Fill(
                Curve({{p.at.x, p.at.y - q * 1.5f},
                       {p.at.x + q * 0.85f, p.at.y - q * 0.7f},
                       {p.at.x + q * 0.5f, p.at.y + q * 0.1f},
                       {p.at.x - q * 0.5f, p.at.y + q * 0.1f},
                       {p.at.x - q * 0.85f, p.at.y - q * 0.7f},
                       {p.at.x, p.at.y - q * 1.5f}}),
                [&](float x, float y) {
                    const float lit =
                        Clamp01(0.75f - 0.4f * (x - p.at.x) / q - 0.3f * (y - p.at.y + q * 0.7f) / q);
                    const float seedling =
                        HashUnit(Whole(x / stage.U(6)), Whole(y / stage.U(6)), seed) > 0.86f ? 0.5f : 0.0f;
                    return Mix(Hex(0xD81C24), Hex(0xF8D060), seedling) * (0.3f + lit);
                });
            continue;
        }
        const float tallCandle = r * 0.5f;
        const Colour wax = Hsv(hue + 0.381966f * Real(index++), 0.45f, 0.98f);
        stage.canvas.Fill(Box(p.at.x - r * 0.022f, p.at.y - tallCandle, p.at.x + r * 0.022f, p.at.y),
                          [&](float x, float y) {
                              const bool stripe = Whole((y + (x - p.at.x) * 1.4f) / (r * 0.05f)) % 2 == 0;
                              return (stripe ? wax : Hex(0xFFFDF6)) *
                                     Lerp(1.1f, 0.6f, (y - p.at.y + tallCandle) / tallCandle);
                          });
        const Point wick{p.at.x, p.at.y - tallCandle - r * 0.025f};
        stage.canvas.Stroke({{wick.x, wick.y + r * 0.03f}, wick}, 2, 2, Hex(0x1A100A));
        stage.canvas.Glow({wick.x, wick.y - r * 0.06f}, r * 0.75f, Hex(0xFF9A3C) * 0.22f);
        stage.canvas.Fill(
            Curve({{wick.x, wick.y - r * 0.17f},
                   {wick.x + r * 0.032f, wick.y - r * 0.06f},
                   {wick.x, wick.y + r * 0.005f},
                   {wick.x - r * 0.032f, wick.y - r * 0.06f},
                   {wick.x, wick.y - r * 0.17f}}),
            [&](float, float y) {
                const float t = Clamp01((wick.y - y) / (r * 0.17f));
                return Mix(Hex(0xFFF4C0) * 2.6f, Hex(0xFF9020) * 1.8f, Smooth(0.3f, 1.0f, t));
            },
            1.0f);
    }
    stage.develop.bloom = 0.3f;
    stage.develop.vignette = 0.45f;
    stage.develop.warmth = 0.2f;
    stage.develop.grain = 0.018f;
}

void Breakfast(Stage& stage) {
    Rng& rng = stage.rng;
    const Colour woods[3] = {Hex(0xC8A070), Hex(0x8A5A34), Hex(0xE0D4C0)};
    PaintTable(stage, woods[rng.Pick(0, 2)], rng.Range(3.0f, 5.0f), rng.Chance(0.5f));
    const Point c = stage.At(0.46f, 0.53f);
    PaintCloth(stage, stage.At(0.84f, 0.42f), stage.U(300), 1.35f, Hex(0xF0EADC),
               Hsv(rng.Unit(), 0.5f, 0.6f));
    const float r = stage.U(400);
    PaintDish(stage, c, r, rng.Chance(0.6f) ? Hex(0xF6F4EE) : Hex(0x8AA4B4));
    const std::uint32_t seed = stage.Seed(211);
    auto shadow = [&](Point p, float rx, float ry) {
        stage.canvas.Dab(p + Point{rx * 0.12f, ry * 0.2f}, rx * 1.05f, ry * 1.05f, 0,
                         Tint(Hex(0x1A0C06), 0.5f), std::min(rx, ry) * 0.3f);
    };
    for (int i = 0; i < 2; ++i) {  // two slices of toast
        const float s = r * 0.34f;
        const Point p = c + Point{-r * 0.28f + r * 0.14f * Real(i), -r * 0.30f + r * 0.16f * Real(i)};
        const float a = -0.4f + 0.3f * Real(i);
        Path slice = Curve({{-1, 0.9f},
                            {-0.95f, -0.3f},
                            {-1.1f, -0.75f},
                            {-0.6f, -1.05f},
                            {0.6f, -1.05f},
                            {1.1f, -0.75f},
                            {0.95f, -0.3f},
                            {1, 0.9f},
                            {0, 0.98f},
                            {-1, 0.9f}});
        for (Point& q : slice) {
            q = {p.x + (q.x * std::cos(a) - q.y * std::sin(a)) * s,
                 p.y + (q.x * std::sin(a) + q.y * std::cos(a)) * s};
        }
        Path drop = slice;
        for (Point& q : drop) {
            q = q + Point{s * 0.1f, s * 0.14f};
        }
        stage.canvas.Fill(drop, Tint(Hex(0x1A0C06), 0.5f), s * 0.07f);
        stage.canvas.Fill(slice, Hex(0x8A4E20));
        for (Point& q : slice) {
            q = p + (q - p) * 0.93f;
        }
        stage.canvas.Fill(slice, [&](float x, float y) {
            const float brown = Fbm(x / stage.U(46), y / stage.U(46), 4, seed) * 0.7f +
                                0.5f * std::hypot(x - p.x, y - p.y) / s * 0.5f;
            return Mix(Hex(0xF2CE88), Hex(0xB0682A), Smooth(0.3f, 0.85f, brown)) *
                   (0.9f + 0.2f * Noise(x / stage.U(5), y / stage.U(5), seed + 1));
        });
        if (i == 1) {  // butter, melting
            stage.canvas.Fill(Box(p.x - s * 0.26f, p.y - s * 0.22f, p.x + s * 0.2f, p.y + s * 0.2f),
                              Tint(Hex(0xFFE680), 0.95f), 3);
            stage.canvas.Dab(p + Point{s * 0.05f, s * 0.1f}, s * 0.5f, s * 0.4f, 0.3f,
                             Tint(Hex(0xFFE070), 0.35f), s * 0.2f);
        }
    }
    {  // a fried egg
        const Point p = c + Point{r * 0.24f, r * 0.22f};
        const float s = r * 0.36f;
        Path white;
        for (int i = 0; i < 60; ++i) {
            const float a = 2 * pi * Real(i) / 60.0f;
            const float q =
                s * (0.82f + 0.42f * Noise(std::cos(a) * 1.4f + 3.0f, std::sin(a) * 1.4f, seed + 5));
            white.push_back({p.x + std::cos(a) * q, p.y + std::sin(a) * q});
        }
        Path drop = white;
        for (Point& q : drop) {
            q = q + Point{s * 0.05f, s * 0.08f};
        }
        stage.canvas.Fill(drop, Tint(Hex(0x2A1808), 0.45f), s * 0.05f);
        stage.canvas.Fill(
            white,
            [&](float x, float y) {
                const float d = std::hypot(x - p.x, y - p.y) / s;
                return Mix(Hex(0xFFFEFA) * 1.05f, Hex(0xE8C88C),
                           Smooth(0.78f, 1.12f, d + 0.2f * Noise(x / stage.U(12), y / stage.U(12), seed))) *
                       (1.0f - 0.1f * Smooth(0.4f, 0.7f, d));
            },
            1);
        const Point y0 = p + Point{-s * 0.05f, -s * 0.02f};
        const float q = s * 0.4f;
        stage.canvas.Dab(y0 + Point{q * 0.1f, q * 0.15f}, q * 1.08f, q * 1.06f, 0, Tint(Hex(0xB87820), 0.4f),
                         q * 0.25f);
        stage.canvas.Fill(Ellipse(y0, q, q * 0.96f), [&](float x, float y) {
            const float dx = (x - y0.x) / q;
            const float dy = (y - y0.y) / q;
            const float dz = std::sqrt(std::max(0.0f, 1.0f - dx * dx - dy * dy));
            const float shine = std::pow(Clamp01(-0.45f * dx - 0.5f * dy + 0.74f * dz), 40.0f);
            return Mix(Hex(0xE87A08), Hex(0xFFC028), Clamp01(0.35f + 0.6f * dz - 0.25f * (dx + dy))) +
                   Colour{1, 1, 1} * (shine * 0.8f);
        });
    }
    for (int i = 0; i < 46; ++i) {  // salad
        const Point p = c + Point{-r * 0.30f + rng.Bell() * r * 0.34f, r * 0.36f + rng.Bell() * r * 0.26f};
        const float a = rng.Range(0, 2 * pi);
        const Colour green = Mix(Hex(0x2E6A1C), Hex(0xB0D460), rng.Unit());
        stage.canvas.Fill(LeafShape(p, r * 0.2f, r * 0.12f, a, 0.2f), Tint(Hex(0x0C1A06), 0.35f), 6);
        stage.canvas.Fill(LeafShape(p, r * 0.19f, r * 0.11f, a, 0.2f), [&](float x, float y) {
            return green * (0.65f + 0.75f * Fbm(x / stage.U(16), y / stage.U(16), 3, seed + 8));
        });
    }
    for (int i = 0; i < 4; ++i) {
        const Point p = c + Point{-r * (0.48f - 0.13f * Real(i)), r * (0.34f + 0.10f * Real(i % 2))};
        shadow(p, r * 0.085f, r * 0.085f);
        PaintFruit(stage, {p, r * 0.085f, Hex(0xD8281C), Hex(0xE84A28), FruitKind::Apple});
    }
    // A glass of juice and the fork.
    const Point g = stage.At(0.83f, 0.24f);
    const float q = stage.U(120);
    stage.canvas.Dab(g + Point{q * 0.35f, q * 0.45f}, q * 1.15f, q * 1.1f, 0, Tint(Hex(0x3A1A04), 0.5f),
                     q * 0.35f);
    stage.canvas.Fill(Ellipse(g, q, q), Hex(0xE8F0F0));
    stage.canvas.Fill(Ellipse(g, q * 0.9f, q * 0.9f), [&](float x, float y) {
        const float d = std::hypot(x - g.x, y - g.y) / q;
        return Mix(Hex(0xFFB030), Hex(0xF08410), Smooth(0.3f, 0.9f, d)) +
               Colour{1, 1, 1} *
                   (0.35f * std::exp(-std::pow(
                                (std::hypot(x - g.x + q * 0.35f, y - g.y + q * 0.4f)) / (q * 0.16f), 2.0f)));
    });
    const float fx = c.x + r * 1.18f;
    stage.canvas.Stroke({{fx + 8, c.y - r * 0.2f}, {fx + 10, c.y + r * 0.75f}}, stage.U(16), stage.U(26),
                        Tint(Hex(0x1A0C06), 0.4f), 6);
    stage.canvas.Stroke({{fx, c.y - r * 0.2f}, {fx, c.y + r * 0.75f}}, stage.U(14), stage.U(26),
                        Hex(0xD0D0CC));
    stage.canvas.Stroke({{fx, c.y - r * 0.2f}, {fx, c.y + r * 0.75f}}, stage.U(4), stage.U(8), Hex(0xFFFFFF));
    stage.canvas.Fill(Curve({{fx - stage.U(34), c.y - r * 0.34f},
                             {fx - stage.U(26), c.y - r * 0.2f},
                             {fx, c.y - r * 0.14f},
                             {fx + stage.U(26), c.y - r * 0.2f},
                             {fx + stage.U(34), c.y - r * 0.34f}}),
                      Hex(0xC8C8C4));
    for (int i = 0; i < 4; ++i) {
        const float tx = fx + stage.U((Real(i) - 1.5f) * 20.0f);
        stage.canvas.Stroke({{tx, c.y - r * 0.3f}, {tx, c.y - r * 0.56f}}, stage.U(9), stage.U(6),
                            Hex(0xD8D8D4));
    }
    stage.develop.warmth = 0.15f;
    stage.develop.vignette = 0.3f;
}

}  // namespace sample
