#include <numbers>

#include "figures.h"
#include "nature.h"
#include "scenes.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

// A table top of boards, seen from above, lit from one corner.
void PaintTable(Stage& stage, Colour tone, float boards, bool upright) {
    const std::uint32_t seed = stage.Seed(181);
    stage.Backdrop(2, [&](float x, float y) {
        const float u = upright ? y : x;
        const float v = (upright ? x : y) / stage.U(1000.0f / boards);
        const float board = std::floor(v);
        const auto b = static_cast<std::uint32_t>(static_cast<int>(board) + 40);
        const float within = v - board;
        const float length = u / stage.U(900) + HashUnit(static_cast<int>(board), 3, seed) * 9.0f;
        const float warp = Noise(length * 2.0f, within * 1.2f, seed + b) * 3.0f;
        const float grain = 0.5f + 0.5f * std::sin((within * 9.0f + warp * 4.0f) * 2.4f +
                                                   Noise(length * 30.0f, within * 50.0f, seed + b) * 2.2f);
        const float fibre = Noise(length * 40.0f, within * 90.0f, seed + 2 * b);
        const float seam = Smooth(0.0f, 0.016f, std::min(within, 1.0f - within));
        const float lit = 1.16f - 0.45f * (x / stage.w * 0.6f + y / stage.h * 0.4f);
        const float shade = 0.72f + 0.30f * HashUnit(static_cast<int>(board), 9, seed);
        return tone * (shade * (0.74f + 0.2f * grain + 0.18f * fibre) * (0.35f + 0.65f * seam) * lit);
    });
}

// A cloth or napkin with a woven pattern.
void PaintCloth(Stage& stage, Point centre, float size, float angle, Colour ground, Colour stripe) {
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    auto corner = [&](float x, float y) {
        return Point{centre.x + (x * c - y * s) * size, centre.y + (x * s + y * c) * size};
    };
    const Path path{corner(-1, -0.8f), corner(1, -0.8f), corner(1, 0.8f), corner(-1, 0.8f)};
    Path shadow = path;
    for (Point& p : shadow) {
        p = p + Point{stage.U(10), stage.U(14)};
    }
    stage.canvas.Fill(shadow, Tint(Hex(0x100804), 0.5f), stage.U(10));
    const std::uint32_t seed = stage.Seed(183);
    stage.canvas.Fill(path, [&](float x, float y) {
        const float u = ((x - centre.x) * c + (y - centre.y) * s) / size;
        const float v = ((y - centre.y) * c - (x - centre.x) * s) / size;
        const float weave = 0.93f + 0.05f * std::sin(u * 500.0f) + 0.05f * std::sin(v * 500.0f);
        const float fold = 0.9f + 0.25f * Fbm(u * 2.0f, v * 2.0f, 3, seed);
        const float check = (std::fabs(std::sin(u * 9.0f)) > 0.86f ? 0.5f : 0.0f) +
                            (std::fabs(std::sin(v * 9.0f)) > 0.86f ? 0.5f : 0.0f);
        return Mix(ground, stripe, check) * weave * fold;
    });
}

// A round dish from above with its shadow, a raised rim and a glaze.
void PaintDish(Stage& stage, Point centre, float radius, Colour glaze) {
    stage.canvas.Fill(Ellipse(centre + Point{radius * 0.09f, radius * 0.12f}, radius * 1.02f, radius * 1.02f),
                      Tint(Hex(0x0C0604), 0.62f), radius * 0.06f);
    stage.canvas.Fill(Ellipse(centre, radius, radius), [&](float x, float y) {
        const float dx = (x - centre.x) / radius;
        const float dy = (y - centre.y) / radius;
        const float d = std::hypot(dx, dy);
        const float slope = Smooth(0.58f, 0.70f, d) * Smooth(1.0f, 0.72f, d);
        const float facing = -(dx + dy) / std::max(d, 0.01f) * 0.7f;
        float lit = 0.86f - 0.12f * (dx + dy) - slope * facing * 0.28f;
        lit += 0.18f * Smooth(0.955f, 0.985f, d) * (0.5f + 0.5f * facing) - 0.22f * Smooth(0.985f, 1.0f, d);
        return glaze * lit;
    });
}

struct Fruit {
    Point centre;
    float radius;
    Colour skin;
    Colour blush;
    int kind;  // 0 apple, 1 orange, 2 lemon, 3 grape, 4 peach
};

void PaintFruit(Stage& stage, const Fruit& fruit) {
    const std::uint32_t seed = stage.rng.Next();
    const float rx = fruit.radius * (fruit.kind == 2 ? 1.22f : 1.0f);
    const float ry = fruit.radius * (fruit.kind == 0 ? 0.94f : 0.97f);
    stage.canvas.Dab(fruit.centre + Point{fruit.radius * 0.2f, fruit.radius * 0.75f}, rx * 1.05f, ry * 0.42f,
                     0, Tint(Hex(0x0A0504), 0.5f), ry * 0.3f);
    stage.canvas.Fill(Ellipse(fruit.centre, rx, ry), [&](float x, float y) {
        const float dx = (x - fruit.centre.x) / rx;
        const float dy = (y - fruit.centre.y) / ry;
        const float dz = std::sqrt(std::max(0.0f, 1.0f - dx * dx - dy * dy));
        const float pore = fruit.kind == 1 || fruit.kind == 2
                               ? (Noise(x / stage.U(5), y / stage.U(5), seed) - 0.5f) * 0.14f
                               : 0.0f;
        const float lambert = Clamp01(-0.52f * dx - 0.55f * dy + 0.66f * dz + pore);
        const float streak =
            fruit.kind == 0 ? Noise(dx * 9.0f, dy * 2.0f, seed + 1) : Fbm(dx * 2.0f, dy * 2.0f, 3, seed + 1);
        const Colour base = Mix(fruit.skin, fruit.blush, Smooth(0.35f, 0.75f, streak + 0.25f * dx));
        Colour c = base * (0.10f + 1.05f * lambert);
        c = c + base * (0.16f * Smooth(0.2f, 1.0f, dy) * (1.0f - dz));  // light thrown back by the table
        const float shine = Clamp01(-0.46f * dx - 0.52f * dy + 0.72f * dz);
        c = c + Colour{1, 1, 1} *
                    (std::pow(shine, fruit.kind == 4 ? 8.0f : 46.0f) * (fruit.kind == 4 ? 0.08f : 0.75f));
        return c;
    });
    if (fruit.kind == 0) {
        const Point top = fruit.centre + Point{fruit.radius * 0.05f, -fruit.radius * 0.74f};
        stage.canvas.Dab(top, fruit.radius * 0.26f, fruit.radius * 0.1f, 0, Tint(fruit.skin * 0.2f, 0.8f),
                         fruit.radius * 0.08f);
        stage.canvas.Stroke(Curve({top, top + Point{fruit.radius * 0.05f, -fruit.radius * 0.2f},
                                   top + Point{fruit.radius * 0.16f, -fruit.radius * 0.36f}}),
                            fruit.radius * 0.05f, fruit.radius * 0.08f, Hex(0x3A2414));
    }
}

void PaintSteam(Stage& stage, Point from, float height, float strength) {
    for (int i = 0; i < 5; ++i) {
        Path line;
        float x = from.x + stage.rng.Bell() * height * 0.25f;
        for (int k = 0; k <= 8; ++k) {
            line.push_back({x, from.y - height * Real(k) / 8.0f});
            x += stage.rng.Bell() * height * 0.10f;
        }
        stage.canvas.Stroke(Curve(line, 5), height * 0.05f, height * 0.16f, Tint({1, 1, 1}, strength),
                            height * 0.045f);
    }
}

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
        int kind;
    };
    const Kind kinds[5] = {{Hex(0xC8201C), Hex(0xE8A040), 0},
                           {Hex(0xF08A18), Hex(0xF8A030), 1},
                           {Hex(0xF4D028), Hex(0xE8C828), 2},
                           {Hex(0x8AB83C), Hex(0xC8D060), 0},
                           {Hex(0xF0B080), Hex(0xE06850), 4}};
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
        PaintFruit(stage, {p, r * 0.075f, Hex(0x4A2060), Hex(0x7A3A80), 3});
    }
    PaintFruit(stage, {{c.x - r * 1.12f, c.y + r * 0.36f}, r * 0.26f, kinds[1].skin, kinds[1].blush, 1});
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
        PaintFruit(stage, {p, r * 0.085f, Hex(0xD8281C), Hex(0xE84A28), 0});
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
