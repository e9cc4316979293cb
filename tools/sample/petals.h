#pragma once

#include "stage.h"

namespace sample {

// A garden far out of focus: soft patches of two colours and the discs of light between the leaves.
void SoftBackground(Stage& stage, Colour dark, Colour light, Colour discs, int count);

struct Petals {
    int count;
    float length;
    float width;
    Colour inner;
    Colour outer;
};

// A ring of petals around the centre, seen from a little to the side when `flat` is below 1.
void PaintPetalRing(Stage& stage, Point centre, const Petals& petals, float turn, float flat, float softness);

void PaintFallingPetals(Stage& stage, int count, Colour colour);

}  // namespace sample
