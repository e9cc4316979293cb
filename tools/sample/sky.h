#pragma once

#include "stage.h"

namespace sample {

// The sky of an hour and what it does to the land.
struct Sky {
    Colour zenith;
    Colour horizon;
    Colour cloudLit;
    Colour cloudShade;
    Colour light;     // colour and strength of the light on things
    Colour sunLight;  // the glow around the sun
    float cover = 0.4f;
    Point sun;       // pixels; may lie outside the picture
    float dark = 0;  // 0 day to 1 deep night
};

Sky SkyAt(const Stage& stage, float hour, float cover, Point sun);
// The cover that fits the moment's weather.
float CoverOf(const Stage& stage);

// Paints gradient, sun glow, clouds and, at night, stars from the top down to the horizon.
void PaintSky(Stage& stage, const Sky& sky, float horizonY);
void PaintStars(Stage& stage, float bottomY, int count, float strength);
void PaintMoon(Stage& stage, Point centre, float radius);

// What stands above the line at `waterY` again below it, broken by ripples. `ripple` is the strength in
// thousandths of the shorter side; `tint` the colour of the water and how much of it is seen.
void Reflect(Stage& stage, float waterY, float bottomY, float ripple, Tint tint);

// Rain or snow between the viewer and the scene.
void PaintRain(Stage& stage, int count, float slant, Tint tint);
void PaintSnowfall(Stage& stage, int count, Colour colour);

}  // namespace sample
