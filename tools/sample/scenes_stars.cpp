#include "figures.h"
#include "nature.h"
#include "scenes.h"

namespace sample {

void MilkyWay(Stage& stage) {
    Rng& rng = stage.rng;
    const std::uint32_t seed = stage.Seed(131);
    const float lean = rng.Range(-0.9f, 0.9f) + (rng.Chance(0.5f) ? 0.5f : -0.5f);
    const float passes = rng.Range(0.4f, 0.6f);
    const float ground = stage.Y(rng.Range(0.8f, 0.88f));
    auto band = [&](float x, float y) {
        const float d =
            ((x / stage.w - passes) - lean * (0.45f - y / stage.h)) / std::sqrt(1.0f + lean * lean);
        return d * stage.w / (stage.u * 1000.0f);
    };
    stage.Backdrop(3, [&](float x, float y) {
        const float t = y / ground;
        Colour c = Mix(Hex(0x060A1C), Hex(0x1E2C54), Smooth(0.2f, 1.0f, t));
        c = c + Hex(0x6A5A28) * (0.35f * Smooth(0.7f, 1.05f, t));  // the last light of towns
        const float d = band(x, y);
        const float warp = Fbm(x / stage.U(260), y / stage.U(260), 4, seed) - 0.5f;
        const float core = std::exp(-std::pow((d + warp * 0.16f) / 0.15f, 2.0f));
        const float dust = Smooth(0.42f, 0.68f, Fbm(x / stage.U(150) + 7.0f, y / stage.U(150), 5, seed + 3)) *
                           std::exp(-std::pow((d + warp * 0.1f) / 0.075f, 2.0f));
        const float cloud = Fbm(x / stage.U(90), y / stage.U(90), 4, seed + 5);
        c = c + Mix(Hex(0x5A6AA8), Hex(0xE0A890), core * cloud) * (core * (0.25f + 0.75f * cloud) * 0.62f);
        return c * (1.0f - 0.72f * dust);
    });
    for (int i = 0; i < 3600; ++i) {
        const Point p{rng.Range(0, stage.w), rng.Range(0, ground)};
        const float d = band(p.x, p.y);
        if (rng.Unit() < 0.35f + 0.65f * std::exp(-d * d * 40.0f)) {
            const float m = std::pow(rng.Unit(), 9.0f);
            stage.canvas.Glow(p, stage.U(1.5f + 4.0f * m),
                              Mix(Hex(0xBFD0FF), Hex(0xFFE0C0), rng.Unit()) * (0.22f + 2.6f * m));
        }
    }
    if (rng.Chance(0.5f)) {
        const Point from = stage.At(rng.Range(0.15f, 0.7f), rng.Range(0.08f, 0.3f));
        stage.canvas.Stroke({from, {from.x + stage.U(150), from.y + stage.U(64)}}, stage.U(0.6f),
                            stage.U(3.2f), Tint({1.4f, 1.4f, 1.5f}, 0.8f), 0.6f);
    }
    const Skyline far = MakeSkyline(stage, ground + stage.Y(0.03f), stage.Y(0.16f), 1.8f, 0.9f, 891);
    stage.canvas.Fill(far.Outline(stage.h), [&](float, float y) {
        return Mix(Hex(0x101830), Hex(0x0A0E1C), Clamp01((y - ground) / stage.Y(0.1f)));
    });
    const Skyline near = MakeSkyline(stage, stage.Y(0.97f), stage.Y(0.08f), 1.2f, 0.2f, 893);
    stage.canvas.Fill(near.Outline(stage.h), Hex(0x04060C));
    const Point tent{stage.X(rng.Range(0.2f, 0.8f)), 0};
    const Point foot{tent.x, near.At(tent.x) + stage.U(14)};
    if (rng.Chance(0.65f)) {
        const float s = stage.U(64);
        stage.canvas.Glow({foot.x, foot.y - s * 0.3f}, s * 3.4f, Hex(0xFF9A40) * 0.28f);
        stage.canvas.Fill(Curve({{foot.x - s * 1.1f, foot.y},
                                 {foot.x - s * 0.62f, foot.y - s * 0.62f},
                                 {foot.x, foot.y - s * 0.9f},
                                 {foot.x + s * 0.62f, foot.y - s * 0.62f},
                                 {foot.x + s * 1.1f, foot.y}}),
                          [&](float x, float y) {
                              const float d = std::hypot((x - foot.x) / s, (y - foot.y + s * 0.25f) / s);
                              return Mix(Hex(0xFFD080) * 1.5f, Hex(0xC04A10), Smooth(0.1f, 1.0f, d));
                          });
        stage.canvas.Stroke({{foot.x, foot.y - s * 0.9f}, {foot.x - s * 0.2f, foot.y}}, s * 0.03f, s * 0.04f,
                            Hex(0x5A2A0A));
    } else {
        PaintPerson(stage, foot, stage.U(120), Hex(0x020308), 0.2f);
    }
    for (int i = 0; i < 14; ++i) {
        const float x = rng.Chance(0.5f) ? rng.Range(-0.02f, 0.2f) : rng.Range(0.8f, 1.02f);
        PaintConifer(stage, {stage.X(x), near.At(stage.X(x)) + stage.U(20)}, stage.U(rng.Range(90, 240)),
                     Hex(0x03050A), Hex(0x060A14), 0);
    }
    stage.develop.exposure = 1.25f;
    stage.develop.vignette = 0.45f;
    stage.develop.grain = 0.022f;
}

void MoonPampas(Stage& stage) {
    Rng& rng = stage.rng;
    const float ground = stage.Y(0.8f);
    Sky sky = SkyAt(stage, rng.Range(19.0f, 19.9f), 0.4f, {stage.X(-1), 0});
    sky.dark = 0.5f;
    PaintSky(stage, sky, ground);
    const Point moon = stage.At(rng.Range(0.28f, 0.72f), rng.Range(0.24f, 0.4f));
    PaintMoon(stage, moon, stage.U(rng.Range(62, 110)));
    MountainLook look;
    look.rock = Hex(0x28304C);
    look.forest = Hex(0x202840);
    look.haze = sky.horizon;
    look.hazeAmount = 0.35f;
    look.bottomY = stage.h;
    PaintMountain(stage, MakeSkyline(stage, ground, stage.Y(0.12f), 1.6f, 0.6f, 901), look);
    PaintHill(stage, MakeSkyline(stage, ground + stage.Y(0.1f), stage.Y(0.06f), 1.0f, 0.0f, 902), stage.h,
              Hex(0x3A3A40), Hex(0x100E14), 0.4f);
    PaintGrass(stage, stage.Y(0.84f), stage.Y(1.06f), 900, stage.U(150), Hex(0x14141C), Hex(0x6A6258));
    for (int layer = 0; layer < 3; ++layer) {
        const float t = Real(layer) / 2.0f;
        const int plumes = Whole(Lerp(34, 9, t));
        for (int i = 0; i < plumes; ++i) {
            const float size = stage.U(Lerp(130, 420, t) * rng.Range(0.8f, 1.15f));
            const float soft = layer == 2 ? stage.U(3.5f) : 0.0f;
            const float x =
                t > 0.9f ? (rng.Chance(0.5f) ? rng.Range(0.0f, 0.32f) : rng.Range(0.68f, 1.0f)) : rng.Unit();
            const Point foot = stage.At(x, 1.02f);
            const float lean = rng.Range(0.12f, 0.42f);
            const float stalkTop = foot.y - size * Lerp(1.5f, 1.25f, t);
            const Point top{foot.x + size * lean, stalkTop};
            stage.canvas.Stroke(Curve({foot, {foot.x + size * lean * 0.2f, Lerp(foot.y, top.y, 0.6f)}, top}),
                                size * 0.014f, size * 0.008f, Hex(0x4A4438), soft * 0.5f);
            for (int k = 0; k < 90; ++k) {
                const float along = rng.Unit();
                const Point from{top.x + size * lean * 0.5f * along * along, top.y - size * 0.42f * along};
                const float hang = size * rng.Range(0.05f, 0.16f) * (1.15f - along * 0.75f);
                const float side = rng.Bell() * 1.2f + 0.55f;
                const float lit =
                    Smooth(stage.U(900), stage.U(100), std::hypot(from.x - moon.x, from.y - moon.y));
                stage.canvas.Stroke(
                    Curve({from,
                           {from.x + hang * side * 0.7f, from.y - hang * 0.15f},
                           {from.x + hang * side * 1.3f, from.y + hang * 0.55f}}),
                    size * 0.012f, size * 0.003f,
                    Tint(Mix(Hex(0x6E6258), Hex(0xF6E8C8), Clamp01(0.2f + 0.6f * lit + rng.Bell() * 0.4f)),
                         0.7f),
                    soft);
            }
        }
    }
    stage.develop.bloom = 0.16f;
    stage.develop.vignette = 0.38f;
    stage.develop.exposure = 1.15f;
}

}  // namespace sample
