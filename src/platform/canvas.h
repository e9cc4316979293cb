// A 32-bit drawing surface with rectangles, lines, text and pictures. All coordinates are logical pixels; a
// surface knows its scale factor and draws text and pictures with all the pixels that it has.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/geometry.h"
#include "platform/image.h"

namespace kalmora {

// A face that is not installed falls to a good installed one with Japanese glyphs.
struct Font {
    std::string face;
    int height = 12;  // of a line, in logical pixels
    friend bool operator==(const Font&, const Font&) = default;
};

class Surface;

// Draws on one surface or window. Lives shortly, on one thread; a window's canvas holds that window's lock,
// so nothing slow may happen between getting it and letting it go. Nothing here fails visibly: what lies
// outside is clipped, an empty picture draws nothing.
class Canvas {
public:
    virtual ~Canvas() = default;

    virtual Size GetSize() const = 0;
    virtual double Scale() const = 0;

    virtual void FillRect(const Rect& area, Color color) = 0;
    // Filled with one colour, framed one pixel wide inside its edges with the other.
    virtual void Rectangle(const Rect& area, Color fill, Color frame) = 0;
    // The same with round corners of that radius and soft borders: what lies outside the corners stays.
    virtual void RoundedRectangle(const Rect& area, int radius, Color fill, Color frame) = 0;
    // One logical pixel wide, both ends included.
    virtual void Line(Point from, Point to, Color color) = 0;

    // One line; `at` is the upper left corner.
    virtual void Text(Point at, std::string_view utf8, const Font& font, Color color) = 0;
    // Words wrapped inside the area, line feeds kept, an ellipsis at the end of what does not fit; nothing
    // where no letter fits. `corner` is kept free at the upper left: lines beside it begin right of it, below
    // it where there is no room for a word.
    virtual void TextBlock(const Rect& area, std::string_view utf8, const Font& font, Color color,
                           Size corner) = 0;
    void TextBlock(const Rect& area, std::string_view utf8, const Font& font, Color color) {
        TextBlock(area, utf8, font, color, {});
    }

    // The whole picture, stretched over the area.
    virtual void DrawImage(const Rect& area, const Image& image) = 0;
    // The part of the surface that begins at `from` (its logical pixels) over the area; nothing is stretched,
    // and where the scales agree it is pixel for pixel.
    virtual void Blit(const Rect& area, const Surface& surface, Point from = {}) = 0;
};

// The extent of one line of text. Any thread.
Size MeasureText(std::string_view utf8, const Font& font);
// The line as it is when it is no wider than `width`, else its beginning with an ellipsis that together are;
// empty when not even one letter fits. Any thread.
std::string ElideText(std::string_view utf8, const Font& font, int width);
// The face that is really drawn for a wanted one.
std::string InstalledFace(const std::string& wanted);

// Memory to draw on. One thread at a time.
class Surface {
public:
    // scale: device pixels a logical pixel. Empty when the size is empty or past 32767 or the memory is
    // refused.
    static std::unique_ptr<Surface> Create(Size size, double scale);
    virtual ~Surface() = default;
    virtual std::unique_ptr<Canvas> Draw() = 0;
    virtual Size GetSize() const = 0;
    virtual double Scale() const = 0;
    // The device pixel at (x, y), for tests and for looking.
    virtual Color PixelAt(int x, int y) const = 0;
    // Writes it as PNG with all its device pixels.
    virtual bool SavePng(const std::string& path) const = 0;
};

}  // namespace kalmora
