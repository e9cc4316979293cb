#include "tableware.h"

namespace sample {

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

void PaintFruit(Stage& stage, const Fruit& fruit) {
    const std::uint32_t seed = stage.rng.Next();
    const float rx = fruit.radius * (fruit.kind == FruitKind::Lemon ? 1.22f : 1.0f);
    const float ry = fruit.radius * (fruit.kind == FruitKind::Apple ? 0.94f : 0.97f);
    stage.canvas.Dab(fruit.centre + Point{fruit.radius * 0.2f, fruit.radius * 0.75f}, rx * 1.05f, ry * 0.42f,
                     0, Tint(Hex(0x0A0504), 0.5f), ry * 0.3f);
    stage.canvas.Fill(Ellipse(fruit.centre, rx, ry), [&](float x, float y) {
        const float dx = (x - fruit.centre.x) / rx;
        const float dy = (y - fruit.centre.y) / ry;
        const float dz = std::sqrt(std::max(0.0f, 1.0f - dx * dx - dy * dy));
        const float pore = fruit.kind == FruitKind::Orange || fruit.kind == FruitKind::Lemon
                               ? (Noise(x / stage.U(5), y / stage.U(5), seed) - 0.5f) * 0.14f
                               : 0.0f;
        const float lambert = Clamp01(-0.52f * dx - 0.55f * dy + 0.66f * dz + pore);
        const float streak = fruit.kind == FruitKind::Apple ? Noise(dx * 9.0f, dy * 2.0f, seed + 1)
                                                            : Fbm(dx * 2.0f, dy * 2.0f, 3, seed + 1);
        const Colour base = Mix(fruit.skin, fruit.blush, Smooth(0.35f, 0.75f, streak + 0.25f * dx));
        Colour c = base * (0.10f + 1.05f * lambert);
        c = c + base * (0.16f * Smooth(0.2f, 1.0f, dy) * (1.0f - dz));  // light thrown back by the table
        const float shine = Clamp01(-0.46f * dx - 0.52f * dy + 0.72f * dz);
        c = c + Colour{1, 1, 1} * (std::pow(shine, fruit.kind == FruitKind::Peach ? 8.0f : 46.0f) *
                                   (fruit.kind == FruitKind::Peach ? 0.08f : 0.75f));
        return c;
    });
    if (fruit.kind == FruitKind::Apple) {
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

}  // namespace sample
