#pragma once

#include <type_traits>
#include <vector>

#include "colour.h"

namespace sample {

struct Point {
    float x = 0;
    float y = 0;
};
inline Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
inline Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
inline Point operator*(Point a, float k) { return {a.x * k, a.y * k}; }

// A closed outline; the last point joins the first.
using Path = std::vector<Point>;

// Pixels [left, right) x [top, bottom).
struct Area {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool Empty() const { return right <= left || bottom <= top; }
};

Path Ellipse(Point centre, float rx, float ry, float angle = 0);
Path Box(float left, float top, float right, float bottom);
// A ribbon along the line, `from` wide at its beginning and `to` wide at its end.
Path Ribbon(const Path& line, float from, float to);
// Points along a curve through the given ones.
Path Curve(const Path& knots, int stepsBetween = 8);

// How much of each pixel an outline covers, exact to the sub-pixel.
class Coverage {
public:
    // `softness` is the radius of a blur of the edge in pixels; 0 is a sharp edge.
    Coverage(const Path& outline, int width, int height, float softness);

    const Area& Bounds() const { return bounds_; }
    const float* Row(int y) const;

private:
    void AddEdge(Point a, Point b);
    void Soften(float radius);

    Area bounds_;
    int stride_ = 0;
    std::vector<float>& cells_;  // one buffer a thread: outlines are drawn by the ten thousand
};

// A picture in linear light, opaque. All coordinates are pixels, y downwards. One thread at a time.
class Canvas {
public:
    Canvas(int width, int height);

    int Width() const { return width_; }
    int Height() const { return height_; }
    Area Whole() const { return {0, 0, width_, height_}; }
    Colour& At(int x, int y) { return pixels_[Index(x, y)]; }
    const Colour& At(int x, int y) const { return pixels_[Index(x, y)]; }
    // Between pixels, edges repeated.
    Colour Sample(float x, float y) const;

    // Paints the area with paint(x, y), which is asked at every `step`th pixel only and drawn out between.
    template <class Paint>
    void Shade(Area area, int step, Paint paint);
    // Fills an outline with a Colour, a Tint or a paint(x, y).
    template <class Paint>
    void Fill(const Path& outline, Paint paint, float softness = 0);

    // A brush dab: an ellipse of an even colour; `feather` is the width of its soft edge in pixels.
    void Dab(Point centre, float rx, float ry, float angle, Tint tint, float feather = 1.2f);
    // Adds light that fades from the centre to nothing at the radius.
    void Glow(Point centre, float radius, Colour light);
    // Adds the disc that a lens makes of a lamp out of focus.
    void Bokeh(Point centre, float radius, Colour light);
    void Stroke(const Path& line, float from, float to, Tint tint, float softness = 0);

    // Out of focus by about `radius` pixels.
    void Blur(Area area, float radius);

private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }
    Area Clip(Area area) const;
    static void Blend(Colour& below, const Tint& tint, float coverage) {
        below = Mix(below, tint.colour, tint.alpha * coverage);
    }

    int width_;
    int height_;
    std::vector<Colour> pixels_;
};

template <class Paint>
void Canvas::Shade(Area area, int step, Paint paint) {
    area = Clip(area);
    if (area.Empty()) {
        return;
    }
    const int columns = (area.Width() + step - 1) / step + 1;
    std::vector<Tint> upper;
    std::vector<Tint> lower;
    auto ask = [&](std::vector<Tint>& row, int y) {
        row.clear();
        for (int i = 0; i < columns; ++i) {
            row.push_back(Tint(paint(Real(area.left + i * step), Real(y))));
        }
    };
    ask(lower, area.top);
    const float inverse = 1.0f / Real(step);
    for (int top = area.top; top < area.bottom; top += step) {
        std::swap(upper, lower);
        ask(lower, top + step);
        for (int y = top; y < std::min(top + step, area.bottom); ++y) {
            const float ty = Real(y - top) * inverse;
            int cell = 0;
            int within = 0;
            for (int x = area.left; x < area.right; ++x) {
                const auto i = static_cast<std::size_t>(cell);
                const float tx = Real(within) * inverse;
                const Colour above = Mix(upper[i].colour, upper[i + 1].colour, tx);
                const Colour below = Mix(lower[i].colour, lower[i + 1].colour, tx);
                const float alpha = Lerp(Lerp(upper[i].alpha, upper[i + 1].alpha, tx),
                                         Lerp(lower[i].alpha, lower[i + 1].alpha, tx), ty);
                Blend(At(x, y), Tint(Mix(above, below, ty), alpha), 1.0f);
                if (++within == step) {
                    within = 0;
                    ++cell;
                }
            }
        }
    }
}

template <class Paint>
void Canvas::Fill(const Path& outline, Paint paint, float softness) {
    const Coverage coverage(outline, width_, height_, softness);
    const Area& area = coverage.Bounds();
    for (int y = area.top; y < area.bottom; ++y) {
        const float* row = coverage.Row(y);
        for (int x = area.left; x < area.right; ++x) {
            const float covered = row[x - area.left];
            if (covered > 0.002f) {
                if constexpr (std::is_convertible_v<Paint, Tint>) {
                    Blend(At(x, y), Tint(paint), covered);
                } else {
                    Blend(At(x, y), Tint(paint(Real(x), Real(y))), covered);
                }
            }
        }
    }
}

}  // namespace sample
