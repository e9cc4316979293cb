#pragma once

#include "stage.h"

namespace sample {

// Silhouettes; `foot` is where the figure stands, `height` its height in pixels.
void PaintPerson(Stage& stage, Point foot, float height, Colour colour, float stride = 0.3f);
void PaintChild(Stage& stage, Point foot, float height, Colour colour);
void PaintUmbrella(Stage& stage, Point grip, float radius, Colour colour, float light);
void PaintDog(Stage& stage, Point foot, float height, Colour colour, float facing);
void PaintSittingCat(Stage& stage, Point foot, float height, Colour colour, float facing);
void PaintBird(Stage& stage, Point at, float span, Colour colour);
void PaintSailingBoat(Stage& stage, Point waterline, float height, Colour hull, Colour sail);
void PaintHotAirBalloon(Stage& stage, Point top, float height, float hue, Colour light, float lightFrom);
// A lit lamp of paper, `height` high from its upper rim.
void PaintLantern(Stage& stage, Point top, float height, Colour paper, float glow);

}  // namespace sample
