#pragma once

#include <functional>

#include "sky.h"
#include "stage.h"

namespace sample {

// The height of a skyline at x, in pixels from the top. Made once, asked for every column.
struct Skyline {
    std::vector<float> top;  // a value a column
    float At(float x) const;
    Path Outline(float bottomY) const;
};

// A skyline around `baseY`, reaching `rise` above it. `waves` is the number of large forms across the
// picture; `rough` from 0 (dunes) to 1 (peaks).
Skyline MakeSkyline(const Stage& stage, float baseY, float rise, float waves, float rough,
                    std::uint32_t salt);

struct MountainLook {
    Colour rock;
    Colour forest;  // the foot of the slope
    Colour haze;
    float hazeAmount = 0.3f;
    float snowY = -1;  // above this line snow lies; below 0 none
    float bottomY = 0;
    Colour light{1, 1, 1};
    float lightFrom = -1;  // -1 left, 1 right
};
void PaintMountain(Stage& stage, const Skyline& line, const MountainLook& look);

// A soft hill with a mottled cover of grass or woods.
void PaintHill(Stage& stage, const Skyline& line, float bottomY, Colour upper, Colour lower, float mottle);

// Colours of leaves from shade to light.
struct LeafTones {
    Colour shade;
    Colour body;
    Colour light;
};
LeafTones SummerLeaves();
LeafTones AutumnLeaves(Rng& rng);
LeafTones Blossom(Rng& rng);
LeafTones Lit(const LeafTones& tones, Colour light);
// The leaves of broad-leaved trees in the scene's season.
LeafTones LeavesOf(Stage& stage);

// A ball of leaves, dab by dab from its shade to its light side. `lightFrom` is -1 left to 1 right.
void PaintFoliage(Stage& stage, Point centre, float rx, float ry, int dabs, float dabSize,
                  const LeafTones& tones, float lightFrom);

struct TreeLook {
    LeafTones leaves;
    Colour bark;
    float lightFrom = -1;
    float fullness = 1;  // 0 bare
    float spread = 1;
    float dabSize = 6;  // thousandths
};
// A broad-leaved tree that stands at `foot` and is about `height` pixels high.
void PaintTree(Stage& stage, Point foot, float height, const TreeLook& look);
void PaintConifer(Stage& stage, Point foot, float height, Colour dark, Colour light, float snow);

// Blades of grass growing from the band between the two lines, farthest first.
void PaintGrass(Stage& stage, float topY, float bottomY, int blades, float length, Colour dark, Colour light,
                float softness = 0);

// A leaf or petal: an almond shape from `base` towards `angle`, `length` long.
Path LeafShape(Point base, float length, float width, float angle, float bend = 0);
Path MapleLeaf(Point centre, float size, float angle);

}  // namespace sample
