#include "petals.h"

#include <numbers>

#include "nature.h"

namespace sample {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

}  // namespace

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

}  // namespace sample
