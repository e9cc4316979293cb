#pragma once

#include "stage.h"

namespace sample {

// A table top of boards, seen from above, lit from one corner.
void PaintTable(Stage& stage, Colour tone, float boards, bool upright);
// A cloth or napkin with a woven check.
void PaintCloth(Stage& stage, Point centre, float size, float angle, Colour ground, Colour stripe);
// A round dish from above with its shadow, a raised rim and a glaze.
void PaintDish(Stage& stage, Point centre, float radius, Colour glaze);

enum class FruitKind { Apple, Orange, Lemon, Grape, Peach };
struct Fruit {
    Point centre;
    float radius = 1;
    Colour skin;
    Colour blush;
    FruitKind kind = FruitKind::Apple;
};
void PaintFruit(Stage& stage, const Fruit& fruit);

void PaintSteam(Stage& stage, Point from, float height, float strength);

}  // namespace sample
