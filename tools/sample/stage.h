#pragma once

#include "canvas.h"
#include "develop.h"
#include "noise.h"

namespace sample {

enum class Season { Winter, Spring, Summer, Autumn };
enum class Weather { Clear, Fair, Cloudy, Rain };

// When and under which sky a picture was taken. Two pictures of the same moment and seed are the same.
struct Moment {
    int month = 6;
    float hour = 12;
    Weather weather = Weather::Fair;
    std::uint32_t seed = 1;
};

// What a scene works with: the canvas, its own random numbers, and measures. Lengths in a scene are
// given in thousandths of the shorter side (U), places in parts of width and height (X, Y), so that a
// scene can be taken in any format.
struct Stage {
    Stage(int width, int height, const Moment& when)
        : canvas(width, height),
          rng(when.seed),
          moment(when),
          w(Real(width)),
          h(Real(height)),
          u(std::min(w, h) / 1000.0f) {}

    Canvas canvas;
    Rng rng;
    Moment moment;
    Develop develop;
    float w;
    float h;
    float u;

    float X(float part) const { return part * w; }
    float Y(float part) const { return part * h; }
    float U(float thousandths) const { return thousandths * u; }
    Point At(float x, float y) const { return {x * w, y * h}; }
    std::uint32_t Seed(std::uint32_t salt) const { return moment.seed * 2654435761u + salt * 40503u; }
    Season TimeOfYear() const {
        const int m = moment.month;
        return m == 12 || m <= 2 ? Season::Winter
               : m <= 5          ? Season::Spring
               : m <= 9          ? Season::Summer
                                 : Season::Autumn;
    }
    // Shades the whole picture.
    template <class Paint>
    void Backdrop(int step, Paint paint) {
        canvas.Shade(canvas.Whole(), step, paint);
    }
};

}  // namespace sample
