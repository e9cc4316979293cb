#include "nature.h"

#include <numbers>

namespace sample {

constexpr float pi = std::numbers::pi_v<float>;

float Skyline::At(float x) const {
    const int column = std::clamp(Whole(x), 0, static_cast<int>(top.size()) - 1);
    return top[static_cast<std::size_t>(column)];
}

Path Skyline::Outline(float bottomY) const {
    Path path;
    path.reserve(top.size() / 2 + 4);
    path.push_back({-2.0f, bottomY});
    for (std::size_t x = 0; x < top.size(); x += 2) {
        path.push_back({static_cast<float>(x) - (x == 0 ? 2.0f : 0.0f), top[x]});
    }
    path.push_back({static_cast<float>(top.size()) + 2.0f, top.back()});
    path.push_back({static_cast<float>(top.size()) + 2.0f, bottomY});
    return path;
}

namespace {

struct Peak {
    float centre;
    float height;
    float slope;
};

// Steep summits side by side, the tallest anywhere; x and heights in parts of the picture.
std::vector<Peak> Summits(std::uint32_t seed, float waves) {
    Rng rng(seed);
    std::vector<Peak> peaks;
    const int count = std::max(3, Whole(waves * 3.0f));
    for (int i = -1; i <= count; ++i) {
        peaks.push_back({(Real(i) + rng.Range(0.15f, 0.85f)) / Real(count), rng.Range(0.45f, 1.0f),
                         rng.Range(1.6f, 3.0f) * waves * 0.5f});
    }
    return peaks;
}

}  // namespace

Skyline MakeSkyline(const Stage& stage, float baseY, float rise, float waves, float rough,
                    std::uint32_t salt) {
    Skyline line;
    line.top.resize(static_cast<std::size_t>(stage.canvas.Width()));
    const std::uint32_t seed = stage.Seed(salt);
    const std::vector<Peak> peaks = Summits(seed, waves);
    for (std::size_t i = 0; i < line.top.size(); ++i) {
        const float part = static_cast<float>(i) / stage.w;
        const float x = part * waves + static_cast<float>(salt) * 3.7f;
        const float soft = Fbm(x, 0.5f, 2, seed);
        float summit = 0;
        const float jag = (Fbm(x * 7.0f, 2.0f, 4, seed + 3) - 0.5f) * 0.05f;
        for (const Peak& peak : peaks) {
            summit = std::max(summit, peak.height - std::fabs(part + jag - peak.centre) * peak.slope);
        }
        const float sharp = 0.85f * summit + 0.22f * Ridged(x * 2.5f, 0.5f, 5, seed + 9);
        const float fine = Fbm(x * 24.0f, 3.0f, 3, seed + 5) - 0.5f;
        line.top[i] = baseY - rise * (Lerp(soft, sharp, rough) + fine * 0.05f * rough);
    }
    return line;
}

void PaintMountain(Stage& stage, const Skyline& line, const MountainLook& look) {
    const std::uint32_t seed = stage.Seed(41);
    const float scale = 1.0f / stage.U(190.0f);
    const float reach = stage.U(26.0f);
    // Asked at every other pixel: the relief is smooth, only the outline must be sharp.
    Canvas relief(stage.canvas.Width() / 2 + 2, stage.canvas.Height() / 2 + 2);
    const float highest = *std::min_element(line.top.begin(), line.top.end());
    relief.Shade(
        {0, Whole(highest) / 2 - 1, relief.Width(), Whole(look.bottomY) / 2 + 2}, 1,
        [&](float halfX, float halfY) {
            const float x = halfX * 2.0f;
            const float y = halfY * 2.0f;
            const float top = line.At(x);
            if (y < top - 6.0f) return Colour{};
            const float down = y - top;
            const float part = Clamp01(down / std::max(look.bottomY - top, 1.0f));
            // Spurs run down from the crest and lean away from it.
            const float warp = (Noise(x * scale * 0.8f, y * scale * 0.8f, seed + 8) - 0.5f) * 0.9f;
            const float px = x * scale + warp;
            const float py = y * scale * 0.62f - 0.25f * warp;
            const float here = Ridged(px, py, 5, seed);
            const float beside = Ridged(px + 0.07f * look.lightFrom, py - 0.04f, 5, seed);
            // Near the crest the slope of the skyline itself decides which side has the light.
            const float slope = (line.At(x + reach) - line.At(x - reach)) / (2.0f * reach);
            const float crest = std::exp(-down / stage.U(110.0f));
            const float face =
                Clamp01(0.5f + (here - beside) * 3.4f - slope * look.lightFrom * (0.25f + 0.5f * crest));
            Colour c = Mix(look.rock * 0.42f, look.rock * 1.2f, face);
            const float foot = Smooth(0.35f, 0.9f, part + here * 0.3f - 0.1f);
            const float woods = 0.75f + 0.5f * Noise(x * scale * 16.0f, y * scale * 22.0f, seed + 6);
            c = Mix(c, look.forest * (0.55f + 0.65f * face) * woods, foot);
            if (look.snowY > 0) {
                const float snow = Smooth(-0.03f, 0.04f, (look.snowY - y) / stage.h + (here - 0.5f) * 0.30f);
                c = Mix(c, Mix(Hex(0x7E9AC6), Hex(0xFFFFFF), Smooth(0.15f, 0.75f, face)), snow);
            }
            return Mix(c * look.light, look.haze, Clamp01(look.hazeAmount * (0.7f + 0.6f * part)));
        });
    stage.canvas.Fill(line.Outline(look.bottomY),
                      [&](float x, float y) { return relief.Sample(x * 0.5f, y * 0.5f); });
}

void PaintHill(Stage& stage, const Skyline& line, float bottomY, Colour upper, Colour lower, float mottle) {
    const std::uint32_t seed = stage.Seed(43);
    const float scale = 1.0f / stage.U(60.0f);
    stage.canvas.Fill(line.Outline(bottomY), [&](float x, float y) {
        const float t = Clamp01((y - line.At(x)) / std::max(bottomY - line.At(x), 1.0f));
        const float patch = 0.6f * Fbm(x * scale * 0.35f, y * scale * 2.6f, 3, seed) +
                            0.4f * Noise(x * scale * 9.0f, y * scale * 16.0f, seed + 4) - 0.5f;
        return Mix(upper, lower, t) * (1.0f + patch * mottle * 2.0f);
    });
}

LeafTones SummerLeaves() { return {Hex(0x1C3A18), Hex(0x47782B), Hex(0xA8C653)}; }

LeafTones AutumnLeaves(Rng& rng) {
    switch (rng.Pick(0, 3)) {
        case 0:
            return {Hex(0x6E1A10), Hex(0xC93A1C), Hex(0xFF8A40)};
        case 1:
            return {Hex(0x7A3A0C), Hex(0xD9801C), Hex(0xFFC75A)};
        case 2:
            return {Hex(0x7A5A10), Hex(0xE0B020), Hex(0xFFE77A)};
        default:
            return {Hex(0x5A1418), Hex(0xA82428), Hex(0xF06048)};
    }
}

LeafTones Blossom(Rng& rng) {
    const float warm = rng.Unit();
    return {Mix(Hex(0xB98098), Hex(0xC98A92), warm), Mix(Hex(0xF0BACB), Hex(0xF6C9CE), warm), Hex(0xFFF2F4)};
}

LeafTones Lit(const LeafTones& tones, Colour light) {
    return {tones.shade * light, tones.body * light, tones.light * light};
}

LeafTones LeavesOf(Stage& stage) {
    switch (stage.TimeOfYear()) {
        case Season::Autumn:
            return AutumnLeaves(stage.rng);
        case Season::Spring:
            return stage.moment.month <= 4 && stage.rng.Chance(0.6f)
                       ? Blossom(stage.rng)
                       : LeafTones{Hex(0x35591C), Hex(0x7BA53A), Hex(0xD0E082)};
        case Season::Winter:
            return {Hex(0x3A3228), Hex(0x6E5C44), Hex(0xA89070)};
        case Season::Summer:
            break;
    }
    return SummerLeaves();
}

void PaintFoliage(Stage& stage, Point centre, float rx, float ry, int dabs, float dabSize,
                  const LeafTones& tones, float lightFrom) {
    const std::uint32_t seed = stage.rng.Next();
    Rng& rng = stage.rng;
    for (int i = 0; i < dabs; ++i) {
        const float angle = rng.Range(0, 2 * pi);
        const float reach = std::sqrt(rng.Unit());
        const float ex = std::cos(angle) * reach;
        const float ey = std::sin(angle) * reach;
        const float ragged =
            0.82f + 0.36f * Noise(std::cos(angle) * 2.0f + 8.0f, std::sin(angle) * 2.0f, seed);
        const Point at{centre.x + ex * rx * ragged, centre.y + ey * ry * ragged};
        // Later dabs are lighter and keep to the side of the light.
        const float turn = Real(i) / Real(std::max(dabs, 1));
        const float clump = Fbm(ex * 2.6f + 5.0f, ey * 2.6f, 2, seed + 1);
        const float facing = 0.5f + 0.42f * (ex * lightFrom - ey) + (clump - 0.5f) * 1.1f;
        const float tone = Clamp01(facing * 0.75f + 0.25f * turn + rng.Bell() * 0.25f);
        if (turn > 0.45f && tone < 0.45f) {
            continue;
        }
        const Colour c = tone < 0.5f ? Mix(tones.shade, tones.body, tone * 2.0f)
                                     : Mix(tones.body, tones.light, tone * 2.0f - 1.0f);
        const float size = dabSize * rng.Range(0.6f, 1.3f);
        stage.canvas.Dab(at, size, size * rng.Range(0.5f, 0.9f), rng.Range(0, pi), Tint(c, 0.92f));
    }
}

namespace {

void GrowBranch(Stage& stage, Point from, float angle, float length, float width, int depth,
                const TreeLook& look, std::vector<Point>& tips) {
    Rng& rng = stage.rng;
    const float bend = rng.Bell() * 0.5f;
    const Point middle{from.x + std::cos(angle + bend) * length * 0.5f,
                       from.y + std::sin(angle + bend) * length * 0.5f};
    const Point end{from.x + std::cos(angle) * length, from.y + std::sin(angle) * length};
    const Path line = Curve({from, middle, end}, 5);
    stage.canvas.Stroke(line, width, width * 0.62f, look.bark);
    const Point side{-look.lightFrom * width * -0.2f, 0};
    Path lit;
    for (const Point& p : line) {
        lit.push_back(p + side);
    }
    stage.canvas.Stroke(lit, width * 0.35f, width * 0.2f, Tint(look.bark * 2.2f, 0.5f));
    if (depth == 0) {
        tips.push_back(end);
        return;
    }
    const int shoots = depth >= 3 ? 3 : rng.Pick(2, 3);
    for (int i = 0; i < shoots; ++i) {
        const float fan = (Real(i) - Real(shoots - 1) * 0.5f) * 0.62f * look.spread;
        GrowBranch(stage, end, angle + fan + rng.Bell() * 0.35f, length * rng.Range(0.62f, 0.82f),
                   width * 0.62f, depth - 1, look, tips);
    }
    if (depth <= 2) {
        tips.push_back(end);
    }
}

}  // namespace

void PaintTree(Stage& stage, Point foot, float height, const TreeLook& look) {
    std::vector<Point> tips;
    const float trunk = height * 0.27f;
    GrowBranch(stage, foot, -pi * 0.5f + stage.rng.Bell() * 0.12f, trunk, height * 0.065f, 4, look, tips);
    if (look.fullness <= 0) {
        return;
    }
    const float clump = height * 0.11f;
    std::sort(tips.begin(), tips.end(), [](Point a, Point b) { return a.y > b.y; });
    const float size = stage.U(look.dabSize);
    const int dabs =
        static_cast<int>(std::clamp(clump * clump * 2.6f / (size * size) * look.fullness, 12.0f, 220.0f));
    for (const Point& tip : tips) {
        PaintFoliage(stage, tip, clump * stage.rng.Range(0.9f, 1.35f), clump * stage.rng.Range(0.7f, 1.0f),
                     dabs, size, look.leaves, look.lightFrom);
    }
}

void PaintConifer(Stage& stage, Point foot, float height, Colour dark, Colour light, float snow) {
    Rng& rng = stage.rng;
    stage.canvas.Fill(
        Box(foot.x - height * 0.018f, foot.y - height * 0.15f, foot.x + height * 0.018f, foot.y),
        dark * 0.8f);
    const int tiers = std::clamp(Whole(height / stage.U(16.0f)), 7, 26);
    for (int tier = 0; tier < tiers; ++tier) {
        const float t = Real(tier) / Real(tiers - 1);  // from the foot upwards
        const float y = foot.y - height * (0.08f + 0.9f * t);
        const float reach =
            height * 0.26f * std::pow(1.0f - t, 0.85f) * rng.Range(0.85f, 1.15f) + height * 0.008f;
        // At least as tall as the step to the next tier, or the sky would show between them.
        const float drop = height * std::max(0.085f, 1.5f / Real(tiers)) * (1.0f - 0.5f * t);
        for (int side = -1; side <= 1; side += 2) {
            const float s = Real(side);
            Path bough{{foot.x - s * reach * 0.1f, y - drop * 0.9f}};
            const int teeth = 5;
            for (int i = 1; i <= teeth; ++i) {
                const float along = Real(i) / Real(teeth);
                bough.push_back(
                    {foot.x + s * reach * along, y - drop * 0.7f * (1.0f - along) + drop * 0.45f * along});
                bough.push_back({foot.x + s * reach * (along - 0.12f),
                                 y + drop * rng.Range(0.1f, 0.5f) * (1.1f - along * 0.4f)});
            }
            bough.push_back({foot.x - s * reach * 0.1f, y + drop * 0.2f});
            const Colour c = Mix(dark, light, (side < 0 ? 0.55f : 0.12f) + rng.Bell() * 0.2f);
            stage.canvas.Fill(bough, c);
            if (snow > 0) {
                Path cap{{foot.x, y - drop * 0.9f},
                         {foot.x + s * reach * 0.55f, y - drop * 0.35f},
                         {foot.x + s * reach * 1.0f, y + drop * 0.38f},
                         {foot.x + s * reach * 0.5f, y + drop * 0.05f * rng.Range(-1.0f, 1.5f)},
                         {foot.x, y - drop * 0.3f}};
                const Colour white = side < 0 ? Hex(0xFBFBFF) : Hex(0xB9C8E2);
                stage.canvas.Fill(cap, Tint(Mix(c, white, snow), 0.95f), stage.U(0.8f));
            }
        }
    }
}

void PaintGrass(Stage& stage, float topY, float bottomY, int blades, float length, Colour dark, Colour light,
                float softness) {
    Rng& rng = stage.rng;
    const std::uint32_t seed = stage.rng.Next();
    for (int i = 0; i < blades; ++i) {
        const float t = Real(i) / Real(std::max(blades - 1, 1));
        const Point foot{rng.Range(-0.02f, 1.02f) * stage.w,
                         Lerp(topY, bottomY, t) + rng.Bell() * stage.U(10)};
        const float size = length * Lerp(0.35f, 1.0f, t) * rng.Range(0.6f, 1.3f);
        const float lean = rng.Bell() * 0.7f + 0.12f;
        const Point tip{foot.x + size * lean, foot.y - size};
        const Point bow{foot.x + size * lean * 0.25f, foot.y - size * 0.6f};
        const float tone = Clamp01(Fbm(foot.x / stage.U(130), foot.y / stage.U(60), 2, seed) * 1.4f - 0.35f +
                                   rng.Bell() * 0.35f);
        stage.canvas.Fill(Ribbon({foot, bow, tip}, std::max(1.6f, size * 0.055f), 0.5f),
                          Tint(Mix(dark, light, tone), 0.9f), softness);
    }
}

Path LeafShape(Point base, float length, float width, float angle, float bend) {
    constexpr int steps = 10;
    Path path(2 * steps);
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    for (int i = 0; i < steps; ++i) {
        const float t = Real(i) / Real(steps - 1);
        const float half = 0.5f * width * std::pow(std::max(0.0f, std::sin(pi * std::pow(t, 0.85f))), 0.8f);
        const float curve = bend * length * t * t;
        auto place = [&](float side) {
            return Point{base.x + c * length * t - s * (side + curve),
                         base.y + s * length * t + c * (side + curve)};
        };
        path[static_cast<std::size_t>(i)] = place(half);
        path[static_cast<std::size_t>(2 * steps - 1 - i)] = place(-half);
    }
    return path;
}

Path MapleLeaf(Point centre, float size, float angle) {
    // Seven lobes; between two of them the edge runs far in.
    constexpr float lobes[7] = {0.42f, 0.78f, 0.95f, 1.08f, 0.95f, 0.78f, 0.42f};
    Path path;
    auto polar = [&](float a, float r) {
        path.push_back(
            {centre.x + size * r * std::cos(angle + a), centre.y + size * r * std::sin(angle + a)});
    };
    for (int i = 0; i < 7; ++i) {
        const float a = (Real(i) - 3.0f) * 0.72f;
        const float r = lobes[i];
        polar(a - 0.25f, r * 0.42f);
        polar(a - 0.12f, r * 0.74f);
        polar(a, r);
        polar(a + 0.12f, r * 0.74f);
        polar(a + 0.25f, r * 0.42f);
    }
    polar(pi, 0.12f);
    return path;
}

}  // namespace sample
