#include "figures.h"

#include <numbers>

namespace sample {

constexpr float pi = std::numbers::pi_v<float>;

void PaintPerson(Stage& stage, Point foot, float height, Colour colour, float stride) {
    Canvas& canvas = stage.canvas;
    const float s = height;
    const Point hip{foot.x, foot.y - 0.48f * s};
    const Point neck{foot.x + 0.01f * s, foot.y - 0.82f * s};
    canvas.Stroke(
        Curve(
            {hip, {foot.x - stride * 0.10f * s, foot.y - 0.25f * s}, {foot.x - stride * 0.26f * s, foot.y}}),
        0.10f * s, 0.055f * s, colour);
    canvas.Stroke(
        Curve(
            {hip, {foot.x + stride * 0.20f * s, foot.y - 0.26f * s}, {foot.x + stride * 0.24f * s, foot.y}}),
        0.10f * s, 0.055f * s, colour);
    canvas.Fill({{hip.x - 0.085f * s, hip.y + 0.06f * s},
                 {neck.x - 0.105f * s, neck.y + 0.07f * s},
                 {neck.x - 0.03f * s, neck.y},
                 {neck.x + 0.03f * s, neck.y},
                 {neck.x + 0.105f * s, neck.y + 0.07f * s},
                 {hip.x + 0.085f * s, hip.y + 0.06f * s}},
                colour);
    canvas.Stroke(Curve({{neck.x - 0.09f * s, neck.y + 0.06f * s},
                         {neck.x - 0.13f * s, neck.y + 0.2f * s},
                         {hip.x - 0.10f * s, hip.y + 0.03f * s}}),
                  0.05f * s, 0.035f * s, colour);
    canvas.Stroke(Curve({{neck.x + 0.09f * s, neck.y + 0.06f * s},
                         {neck.x + 0.13f * s, neck.y + 0.2f * s},
                         {hip.x + 0.13f * s, hip.y + 0.0f * s}}),
                  0.05f * s, 0.035f * s, colour);
    canvas.Fill(Ellipse({neck.x, neck.y - 0.085f * s}, 0.062f * s, 0.078f * s), colour);
    canvas.Fill(Box(neck.x - 0.022f * s, neck.y - 0.03f * s, neck.x + 0.022f * s, neck.y + 0.02f * s),
                colour);
}

void PaintChild(Stage& stage, Point foot, float height, Colour colour) {
    Canvas& canvas = stage.canvas;
    const float s = height;
    const Point neck{foot.x, foot.y - 0.72f * s};
    canvas.Stroke({{foot.x - 0.05f * s, foot.y - 0.35f * s}, {foot.x - 0.06f * s, foot.y}}, 0.09f * s,
                  0.065f * s, colour);
    canvas.Stroke({{foot.x + 0.05f * s, foot.y - 0.35f * s}, {foot.x + 0.07f * s, foot.y}}, 0.09f * s,
                  0.065f * s, colour);
    canvas.Fill({{foot.x - 0.15f * s, foot.y - 0.26f * s},
                 {neck.x - 0.08f * s, neck.y + 0.04f * s},
                 {neck.x + 0.08f * s, neck.y + 0.04f * s},
                 {foot.x + 0.15f * s, foot.y - 0.26f * s}},
                colour);
    canvas.Stroke({{neck.x - 0.07f * s, neck.y + 0.07f * s}, {neck.x - 0.17f * s, neck.y + 0.26f * s}},
                  0.06f * s, 0.045f * s, colour);
    canvas.Stroke({{neck.x + 0.07f * s, neck.y + 0.07f * s}, {neck.x + 0.2f * s, neck.y - 0.08f * s}},
                  0.06f * s, 0.045f * s, colour);
    canvas.Fill(Ellipse({neck.x, neck.y - 0.11f * s}, 0.115f * s, 0.125f * s), colour);
}

void PaintUmbrella(Stage& stage, Point grip, float radius, Colour colour, float light) {
    const float top = grip.y - radius * 1.15f;
    stage.canvas.Stroke({{grip.x, top}, grip}, radius * 0.035f, radius * 0.035f, Hex(0x202020));
    const int panels = 5;
    for (int i = 0; i < panels; ++i) {
        const float from = -1.0f + 2.0f * Real(i) / Real(panels);
        const float to = from + 2.0f / Real(panels);
        Path panel;
        for (int k = 0; k <= 8; ++k) {
            const float t = Real(k) / 8.0f;
            const float a = pi * 0.5f * t;
            panel.push_back(
                {grip.x + std::sin(a) * from * radius, top + (1.0f - std::cos(a)) * radius * 0.62f});
        }
        const float rim = top + radius * 0.62f;
        panel.push_back({grip.x + (from + to) * 0.5f * radius, rim - radius * 0.07f});
        for (int k = 8; k >= 0; --k) {
            const float t = Real(k) / 8.0f;
            const float a = pi * 0.5f * t;
            panel.push_back(
                {grip.x + std::sin(a) * to * radius, top + (1.0f - std::cos(a)) * radius * 0.62f});
        }
        const float shade = (0.55f + 0.5f * std::cos((from + to) * 0.5f * 1.3f + 0.5f)) * light;
        stage.canvas.Fill(panel, [&, shade](float, float y) {
            return colour * (shade * Lerp(1.25f, 0.75f, Clamp01((y - top) / (radius * 0.62f))));
        });
    }
}

void PaintDog(Stage& stage, Point foot, float height, Colour colour, float facing) {
    Canvas& canvas = stage.canvas;
    const float s = height;
    const float f = facing;
    auto at = [&](float x, float y) { return Point{foot.x + f * x * s, foot.y - y * s}; };
    for (const float leg : {-0.42f, -0.32f, 0.30f, 0.40f}) {
        canvas.Stroke({at(leg, 0.42f), at(leg + 0.03f, 0.2f), at(leg, 0.0f)}, 0.13f * s, 0.07f * s, colour);
    }
    canvas.Fill(Curve({at(-0.50f, 0.58f), at(-0.3f, 0.70f), at(0.1f, 0.68f), at(0.36f, 0.76f), at(0.5f, 0.6f),
                       at(0.4f, 0.36f), at(0.0f, 0.38f), at(-0.4f, 0.36f), at(-0.50f, 0.58f)}),
                colour);
    canvas.Stroke(Curve({at(0.38f, 0.6f), at(0.5f, 0.82f), at(0.56f, 0.95f)}), 0.26f * s, 0.2f * s, colour);
    canvas.Fill(Ellipse(at(0.6f, 0.97f), 0.16f * s, 0.125f * s), colour);
    canvas.Fill(Ellipse(at(0.76f, 0.92f), 0.12f * s, 0.068f * s), colour);
    canvas.Fill({at(0.50f, 1.02f), at(0.47f, 1.2f), at(0.6f, 1.08f)}, colour);
    canvas.Stroke(Curve({at(-0.46f, 0.6f), at(-0.62f, 0.78f), at(-0.58f, 0.98f), at(-0.48f, 1.02f)}),
                  0.12f * s, 0.05f * s, colour);
}

void PaintSittingCat(Stage& stage, Point foot, float height, Colour colour, float facing) {
    Canvas& canvas = stage.canvas;
    const float s = height;
    auto at = [&](float x, float y) { return Point{foot.x + facing * x * s, foot.y - y * s}; };
    canvas.Fill(
        Curve({at(-0.30f, 0.0f), at(-0.37f, 0.18f), at(-0.30f, 0.40f), at(-0.16f, 0.58f), at(-0.05f, 0.68f),
               at(0.13f, 0.66f), at(0.2f, 0.45f), at(0.22f, 0.2f), at(0.24f, 0.0f), at(-0.30f, 0.0f)}),
        colour);
    canvas.Fill(Ellipse(at(0.06f, 0.78f), 0.17f * s, 0.145f * s), colour);
    canvas.Fill({at(-0.1f, 0.82f), at(-0.09f, 1.03f), at(0.05f, 0.9f)}, colour);
    canvas.Fill({at(0.08f, 0.9f), at(0.2f, 1.03f), at(0.22f, 0.82f)}, colour);
    canvas.Stroke(Curve({at(-0.24f, 0.04f), at(-0.5f, 0.03f), at(-0.62f, 0.1f), at(-0.58f, 0.2f)}), 0.1f * s,
                  0.06f * s, colour);
}

void PaintBird(Stage& stage, Point at, float span, Colour colour) {
    const float flap = stage.rng.Range(0.15f, 0.5f);
    for (int side = -1; side <= 1; side += 2) {
        const float s = Real(side) * span * 0.5f;
        stage.canvas.Stroke(
            Curve({at, {at.x + s * 0.5f, at.y - span * flap * 0.6f}, {at.x + s, at.y - span * flap * 0.25f}}),
            span * 0.09f, span * 0.015f, colour);
    }
}

void PaintSailingBoat(Stage& stage, Point waterline, float height, Colour hull, Colour sail) {
    const float s = height;
    auto at = [&](float x, float y) { return Point{waterline.x + x * s, waterline.y - y * s}; };
    stage.canvas.Fill({at(-0.30f, 0.12f), at(0.36f, 0.12f), at(0.24f, 0.0f), at(-0.22f, 0.0f)}, hull);
    stage.canvas.Stroke({at(0.0f, 0.1f), at(0.0f, 1.0f)}, 0.02f * s, 0.01f * s, hull);
    stage.canvas.Fill(Curve({at(0.02f, 0.97f), at(0.2f, 0.55f), at(0.33f, 0.17f), at(0.02f, 0.16f)}, 5),
                      sail);
    stage.canvas.Fill(Curve({at(-0.02f, 0.85f), at(-0.14f, 0.5f), at(-0.27f, 0.17f), at(-0.02f, 0.17f)}, 5),
                      sail * 0.82f);
}

void PaintHotAirBalloon(Stage& stage, Point top, float height, float hue, Colour light, float lightFrom) {
    const float r = height * 0.36f;
    const Point centre{top.x, top.y + r};
    const int gores = stage.rng.Pick(8, 12);
    const int pattern = stage.rng.Pick(0, 3);
    const float second = hue + stage.rng.Range(0.1f, 0.55f);
    Path skin;
    for (int i = 0; i <= 40; ++i) {
        const float a = -pi * 0.5f + 2.0f * pi * Real(i) / 40.0f;
        const float sy = std::sin(a);
        const float low = sy > 0 ? sy : 0.0f;
        // Below its middle the skin draws in to the mouth.
        const float half = std::cos(a) * (1.0f - 0.30f * low * low);
        skin.push_back({centre.x + half * r, centre.y + sy * r * (sy > 0 ? 1.22f : 1.0f)});
    }
    stage.canvas.Fill(skin, [&](float x, float y) {
        const float down = (y - centre.y) / r;
        const float half = std::max(
            0.12f,
            std::sqrt(std::max(
                0.0f, 1.0f - std::pow(std::min(std::fabs(down) * (down > 0 ? 0.82f : 1.0f), 1.0f), 2.0f))) *
                (down > 0 ? 1.0f - 0.2f * down * down : 1.0f));
        const float across = std::clamp((x - centre.x) / (half * r), -1.0f, 1.0f);
        const float gore = (std::asin(across) / pi + 0.5f) * Real(gores);
        const int index = Whole(gore);
        const bool odd = pattern == 0   ? index % 2 == 0
                         : pattern == 1 ? Whole((down + 1.0f) * 3.4f) % 2 == 0
                         : pattern == 2 ? (index + Whole((down + 1.0f) * 4.0f)) % 2 == 0
                                        : std::fabs(down - 0.05f + 0.12f * std::sin(gore * 3.0f)) < 0.3f;
        Colour c = odd ? Hsv(hue, 0.82f, 0.93f)
                       : Mix(Hsv(second, 0.5f, 0.98f), Hex(0xFFF4D8), pattern == 3 ? 0.7f : 0.3f);
        const float seam = std::fabs(gore - std::floor(gore) - 0.5f) * 2.0f;
        const float shade =
            0.62f + 0.45f * (across * lightFrom * 0.8f - down * 0.35f) + 0.12f * (1.0f - seam);
        return c * light * std::max(shade, 0.18f);
    });
    const float basketTop = top.y + height * 0.90f;
    const float mouth = centre.y + r * 1.22f;
    for (int side = -1; side <= 1; side += 2) {
        const float s = Real(side);
        stage.canvas.Stroke({{centre.x + s * r * 0.12f, mouth}, {centre.x + s * r * 0.10f, basketTop}},
                            std::max(0.8f, r * 0.012f), std::max(0.8f, r * 0.012f), Hex(0x403020));
    }
    stage.canvas.Fill(Box(centre.x - r * 0.12f, basketTop, centre.x + r * 0.12f, basketTop + r * 0.19f),
                      Hex(0x6E4422) * light);
    stage.canvas.Fill(Box(centre.x - r * 0.13f, basketTop, centre.x + r * 0.13f, basketTop + r * 0.035f),
                      Hex(0xA87844) * light);
}

void PaintLantern(Stage& stage, Point top, float height, Colour paper, float glow) {
    const float rx = height * 0.36f;
    const Point centre{top.x, top.y + height * 0.5f};
    stage.canvas.Glow(centre, height * 1.9f, paper * (0.30f * glow));
    stage.canvas.Fill(Ellipse(centre, rx, height * 0.46f), [&](float x, float y) {
        const float dx = (x - centre.x) / rx;
        const float dy = (y - centre.y) / (height * 0.46f);
        const float middle = std::sqrt(std::max(0.0f, 1.0f - dx * dx * 0.85f));
        const float rib = 0.86f + 0.14f * std::cos(dy * 28.0f);
        const Colour warm = Mix(paper, Hex(0xFFF0C0) * 1.4f,
                                0.5f * std::exp(-(dx * dx * 2.0f + (dy - 0.2f) * (dy - 0.2f) * 3.0f)));
        return warm * (glow * rib * (0.35f + 0.8f * middle));
    });
    stage.canvas.Fill(Box(top.x - rx * 0.5f, top.y, top.x + rx * 0.5f, top.y + height * 0.06f),
                      Hex(0x181010));
    stage.canvas.Fill(Box(top.x - rx * 0.5f, top.y + height * 0.94f, top.x + rx * 0.5f, top.y + height),
                      Hex(0x181010));
}

}  // namespace sample
