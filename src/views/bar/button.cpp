#include "views/bar/button.h"

#include <algorithm>
#include <utility>

#include "pictures/res_pictures.h"

namespace kalmora {

namespace {
constexpr Color kBlackPen{0, 0, 0};
constexpr Color kRedPen = ColorFromBgr(0x0000FF);
constexpr Color kPressedVeil{43, 53, 73, 70};
constexpr Color kNothing{0, 0, 0, 0};
constexpr Color kShadow{27, 36, 54, 26};
constexpr Color kInnerLine{255, 255, 255, 150};
constexpr std::uint8_t kEdgeAlpha = 80;
constexpr int kTileInset = 2;
constexpr int kShortenedMargin = 6;  // right of a text that is shortened: a letter of it more
constexpr int kTileRadius = 10;
constexpr Color kRingOutside{255, 255, 255};
constexpr Color kRingInside{30, 90, 200};

void PaintRing(Canvas& canvas, const Rect& area, Color color) {
    const int right = area.Right() - 1, bottom = area.Bottom() - 1;
    canvas.Line({area.x, area.y}, {right, area.y}, color);
    canvas.Line({area.x, bottom}, {right, bottom}, color);
    canvas.Line({area.x, area.y}, {area.x, bottom}, color);
    canvas.Line({right, area.y}, {right, bottom}, color);
}

// The tile of a button: as the drawings of the picture buttons have it, two pixels inside the button.
Rect TileOf(const Rect& area) {
    return {area.x + kTileInset, area.y + kTileInset, area.width - 2 * kTileInset,
            area.height - 2 * kTileInset};
}

// A label looks like a picture button: a tile with round corners, a light line inside a soft edge in the
// colour of its pen, and a shadow below.
void PaintTile(Canvas& canvas, const Rect& area, Color brush, Color pen) {
    const Rect tile = TileOf(area);
    for (const int spread : {2, 1}) {
        const Rect shadow{tile.x - spread, tile.y - spread + 1, tile.width + 2 * spread,
                          tile.height + 2 * spread};
        canvas.RoundedRectangle(shadow, kTileRadius + spread, kShadow, kNothing);
    }
    pen.alpha = kEdgeAlpha;
    canvas.RoundedRectangle(tile, kTileRadius, brush, pen);
    const Rect inner{tile.x + 1, tile.y + 1, tile.width - 2, tile.height - 2};
    canvas.RoundedRectangle(inner, kTileRadius - 1, kNothing, kInnerLine);
}

}  // namespace

CButton::CButton(std::string caption, Font labelFont, Color normal, Color highlighted)
    : text(std::move(caption)), font(std::move(labelFont)), brush(normal), highlightBrush(highlighted) {
    height = kTextHeight;
    MeasureText();
}

CButton::CButton(const std::string& resource) : kind(Kind::Image) { SetImage(resource); }

bool CButton::HitTest(int px, int py) const {
    return px >= x && px <= x + width && py >= y && py <= y + height;
}

void CButton::Paint(Canvas& canvas) const {
    if (state == State::Hidden) return;
    if (kind == Kind::Image) {
        canvas.DrawImage(Area(), LoadResPicture(image, {width, height}, canvas.Scale()));
    } else {
        const bool highlighted = state == State::Highlighted;
        PaintTile(canvas, Area(), highlighted ? highlightBrush : brush, highlighted ? kRedPen : kBlackPen);
        canvas.Text({x + font.height / 2, y + font.height / 4}, shown, font, textColor);
    }
    if (pressed) canvas.RoundedRectangle(TileOf(Area()), kTileRadius, kPressedVeil, kNothing);
}

void CButton::PaintFocus(Canvas& canvas) const {
    // Dark inside light, so that it is seen on any background.
    PaintRing(canvas, {x - 3, y - 3, width + 6, height + 6}, kRingOutside);
    PaintRing(canvas, {x - 2, y - 2, width + 4, height + 4}, kRingInside);
    PaintRing(canvas, {x - 1, y - 1, width + 2, height + 2}, kRingInside);
}

void CButton::SetText(const std::string& caption) {
    if (text == caption) return;
    text = caption;
    MeasureText();
}

void CButton::SetImage(const std::string& resource) {
    if (image == resource && width > 0) return;
    image = resource;
    const Size size = MeasureResPicture(resource);
    width = size.width;
    height = size.height;
}

void CButton::LimitWidth(int widest) {
    const int wanted = std::min(fullWidth, std::max(0, widest));
    if (width == wanted) return;
    width = wanted;
    shown = width == fullWidth ? text : ElideText(text, font, width - font.height / 2 - kShortenedMargin);
}

void CButton::MeasureText() {
    width = fullWidth = kalmora::MeasureText(text, font).width + font.height;
    shown = text;
}

}  // namespace kalmora
