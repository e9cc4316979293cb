#include "figures.h"
#include "nature.h"
#include "scenes.h"

namespace sample {

void CarpStreamers(Stage& stage) {
    Rng& rng = stage.rng;
    const float horizon = stage.Y(0.84f);
    const Sky sky = SkyAt(stage, std::clamp(stage.moment.hour, 8.0f, 16.0f), CoverOf(stage),
                          {stage.X(0.9f), stage.Y(0.0f)});
    PaintSky(stage, sky, horizon);
    MountainLook look;
    look.rock = Hex(0x4A6858);
    look.forest = Hex(0x3E7038);
    look.haze = sky.horizon;
    look.hazeAmount = 0.35f;
    look.bottomY = stage.h;
    look.light = sky.light;
    PaintMountain(stage, MakeSkyline(stage, horizon + stage.Y(0.04f), stage.Y(0.16f), 1.8f, 0.4f, 951), look);
    PaintHill(stage, MakeSkyline(stage, stage.Y(0.94f), stage.Y(0.04f), 1.2f, 0.0f, 952), stage.h,
              Hex(0x86B048), Hex(0x3A6820), 0.3f);
    PaintGrass(stage, stage.Y(0.92f), stage.Y(1.04f), 900, stage.U(40), Hex(0x2E5A1C), Hex(0x9CC450));
    const float pole = stage.X(rng.Range(0.14f, 0.26f));
    stage.canvas.Stroke({{pole, stage.h}, {pole, stage.Y(0.03f)}}, stage.U(16), stage.U(9), Hex(0xC8B898));
    stage.canvas.Dab({pole, stage.Y(0.03f)}, stage.U(17), stage.U(17), 0, Hex(0xF0C040));
    const Colour tones[5] = {Hex(0x20262E), Hex(0xD8382C), Hex(0x2C6AC0), Hex(0x3E9A54), Hex(0xE88A28)};
    const int count = rng.Pick(3, 5);
    const float wind = rng.Range(-0.2f, 0.12f);
    for (int i = 0; i < count; ++i) {
        const float length = stage.U(Lerp(700, 420, Real(i) / 4.0f));
        const float girth = length * 0.2f;
        const Point mouth{pole + stage.U(14), stage.Y(0.12f) + Real(i) * stage.U(158)};
        const float phase = rng.Range(0, 6);
        Path upper;
        Path lower;
        for (int k = 0; k <= 30; ++k) {
            const float t = Real(k) / 30.0f;
            const float sway = std::sin(t * 4.4f + phase) * girth * 0.38f * t + wind * length * t;
            const float tail = Smooth(0.84f, 1.0f, t) * girth * 0.28f;
            const float half = girth * 0.5f * (1.0f - 0.55f * t) + tail;
            upper.push_back({mouth.x + length * t, mouth.y + sway - half});
            lower.push_back(
                {mouth.x + length * t - Smooth(0.84f, 1.0f, t) * girth * 0.1f, mouth.y + sway + half});
        }
        Path body = upper;
        body.push_back({mouth.x + length * 0.93f, (upper.back().y + lower.back().y) * 0.5f});
        body.insert(body.end(), lower.rbegin(), lower.rend());
        const Colour tone = tones[i];
        stage.canvas.Fill(body, [&](float x, float y) {
            const float t = Clamp01((x - mouth.x) / length);
            const auto k = static_cast<std::size_t>(t * 30.0f);
            const float half = std::max(1.0f, (lower[k].y - upper[k].y) * 0.5f);
            const float v = (y - (upper[k].y + lower[k].y) * 0.5f) / half;
            const float fold = 0.85f + 0.25f * std::sin(t * 9.0f + phase);
            Colour c = tone;
            if (t < 0.06f) {
                c = Hex(0xF4F0E4);
            } else if (t > 0.2f && t < 0.86f) {
                const float row = t * 22.0f;
                const float column = v * 3.2f + (Whole(row) % 2 ? 0.5f : 0.0f);
                const float d =
                    std::hypot(row - std::floor(row) - 0.2f, (column - std::floor(column) - 0.5f) * 1.3f);
                c = Mix(tone * 1.5f, Hex(0xFFF4DC), Smooth(0.32f, 0.42f, d) * Smooth(0.66f, 0.56f, d) * 0.9f);
            }
            if (v > 0.55f) {
                c = Mix(c, Hex(0xF8F4E8), 0.7f);
            }
            return c * fold * Clamp01(0.95f - 0.45f * v * v - 0.15f * v);
        });
        const Point eye{mouth.x + length * 0.125f, mouth.y - girth * 0.1f + wind * length * 0.12f};
        stage.canvas.Dab(eye, girth * 0.19f, girth * 0.19f, 0, Hex(0xFFFDF4));
        stage.canvas.Dab(eye, girth * 0.09f, girth * 0.09f, 0, Hex(0x101010));
    }
    stage.develop.saturation = 1.12f;
}

void DogWalk(Stage& stage) {
    Rng& rng = stage.rng;
    const float ground = stage.Y(rng.Range(0.7f, 0.78f));
    const float hour = stage.moment.hour < 12 ? rng.Range(5.7f, 6.6f) : rng.Range(17.4f, 18.7f);
    const Point sun{stage.X(rng.Range(0.25f, 0.75f)), ground - stage.Y(rng.Range(0.04f, 0.14f))};
    const Sky sky = SkyAt(stage, hour, std::min(0.6f, CoverOf(stage)), sun);
    PaintSky(stage, sky, ground + stage.Y(0.05f));
    stage.canvas.Glow(sun, stage.U(300), Hex(0xFFA850) * 0.45f);
    stage.canvas.Dab(sun, stage.U(40), stage.U(40), 0, Hex(0xFFF2C8) * 2.0f, 3);
    for (int i = 0; i < 2; ++i) {
        const Skyline line = MakeSkyline(stage, ground, stage.Y(0.12f - 0.05f * Real(i)), 1.6f + Real(i),
                                         0.4f, 961 + static_cast<std::uint32_t>(i));
        const Colour tone = Mix(Hex(0x3A2A40), sky.horizon, 0.5f - 0.25f * Real(i));
        stage.canvas.Fill(line.Outline(stage.h), tone);
    }
    const Skyline hill = MakeSkyline(stage, ground + stage.Y(0.05f), stage.Y(0.09f), 0.9f, 0.0f, 971);
    stage.canvas.Fill(hill.Outline(stage.h), [&](float, float y) {
        return Mix(Hex(0x2A1A22), Hex(0x08060A), Smooth(ground, stage.h, y));
    });
    for (int i = 0; i < 1300; ++i) {
        const float x = rng.Range(0, stage.w);
        const float y = hill.At(x) + std::pow(rng.Unit(), 2.0f) * stage.Y(0.2f);
        const float size = stage.U(rng.Range(12, 40));
        stage.canvas.Stroke(
            {{x, y + 2}, {x + size * rng.Bell(), y - size}}, stage.U(3), 0.4f,
            Mix(Hex(0x1A0E14), Hex(0xC87838), 0.22f * Smooth(stage.U(420), 0.0f, std::fabs(x - sun.x))));
    }
    if (rng.Chance(0.6f)) {
        TreeLook look;
        look.bark = Hex(0x0C080C);
        look.leaves = {Hex(0x0C080C), Hex(0x1A1014), Hex(0x4A2418)};
        const float x = sun.x > stage.X(0.5f) ? rng.Range(0.08f, 0.22f) : rng.Range(0.78f, 0.92f);
        PaintTree(stage, {stage.X(x), hill.At(stage.X(x)) + stage.U(12)}, stage.U(420), look);
    }
    const float x = sun.x / stage.w + rng.Range(-0.14f, 0.02f);
    auto stand = [&](float part) { return Point{stage.X(part), hill.At(stage.X(part)) + stage.U(10)}; };
    const Colour dark = Hex(0x0A070A);
    PaintPerson(stage, stand(x), stage.U(220), dark, 0.4f);
    if (rng.Chance(0.4f)) {
        PaintChild(stage, stand(x - 0.06f), stage.U(130), dark);
    }
    const Point dog = stand(x + 0.13f);
    PaintDog(stage, dog, stage.U(80), dark, 1.0f);
    const Point hand = stand(x) + Point{stage.U(28), -stage.U(106)};
    stage.canvas.Stroke(Curve({hand,
                               {Lerp(hand.x, dog.x, 0.55f), Lerp(hand.y, dog.y - stage.U(70), 0.75f)},
                               dog + Point{stage.U(40), -stage.U(72)}}),
                        stage.U(2.4f), stage.U(2.4f), dark);
    for (int i = rng.Pick(0, 6); i > 0; --i) {
        PaintBird(stage, stage.At(rng.Range(0.1f, 0.9f), rng.Range(0.1f, 0.4f)), stage.U(rng.Range(14, 34)),
                  Hex(0x2A1820));
    }
    stage.develop.bloom = 0.15f;
    stage.develop.warmth = 0.15f;
}

}  // namespace sample
