// Points, sizes, rectangles and colours in logical pixels (the screen's scale factor is the seam's affair).
// Plain values; any thread.
#pragma once

#include <cstdint>

namespace kalmora {

struct Point {
    int x = 0;
    int y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    int width = 0;
    int height = 0;
    bool IsEmpty() const { return width <= 0 || height <= 0; }
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int Left() const { return x; }
    int Top() const { return y; }
    int Right() const { return x + width; }    // one past the last column
    int Bottom() const { return y + height; }  // one past the last row
    bool IsEmpty() const { return width <= 0 || height <= 0; }
    // Edges included on all four sides, as the calendar's hit tests want it.
    bool ContainsInclusive(Point p) const {
        return p.x >= x && p.x <= x + width && p.y >= y && p.y <= y + height;
    }
    friend bool operator==(const Rect&, const Rect&) = default;
};

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
    friend bool operator==(const Color&, const Color&) = default;
};

// 0xBBGGRR, blue in the high byte, as the calendar's fixed colours are written.
constexpr Color ColorFromBgr(std::uint32_t value) {
    return Color{static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>((value >> 8) & 0xFF),
                 static_cast<std::uint8_t>((value >> 16) & 0xFF), 255};
}

}  // namespace kalmora
