#include "platform/qt/painter_canvas.h"

#include <QLineF>
#include <algorithm>
#include <cmath>

#include "platform/qt/fonts.h"
#include "platform/qt/pixels.h"
#include "platform/qt/text_block.h"
#include "platform/qt/values.h"

namespace kalmora::qt {

namespace {

// In device pixels; what would be larger is not drawn as large as that anyhow.
constexpr double kFarthest = 1e6;
// Line heights: what a word beside a corner needs.
constexpr int kLeastBesideCorner = 3;
// How far a round rectangle is drawn outside of the surface; its corners there cannot be seen.
constexpr double kFarRound = 4096;

// The part of a line that lies inside the box; false when none does. The painter's own arithmetic fails
// with coordinates far outside of what it paints on.
bool ClipLine(QPointF& from, QPointF& to, const QRectF& box) {
    double enter = 0, leave = 1;
    const QPointF way = to - from;
    const auto cut = [&](double along, double room) {
        if (along == 0) return room >= 0;
        const double at = room / along;
        if (along < 0) {
            enter = std::max(enter, at);
        } else {
            leave = std::min(leave, at);
        }
        return enter <= leave;
    };
    if (!cut(-way.x(), from.x() - box.left()) || !cut(way.x(), box.right() - from.x()) ||
        !cut(-way.y(), from.y() - box.top()) || !cut(way.y(), box.bottom() - from.y()))
        return false;
    const QPointF start = from;
    from = start + way * enter;
    to = start + way * leave;
    return true;
}

}  // namespace

QRectF PainterCanvas::Touch(const QRectF& area) {
    const QRectF seen = area.intersected(Bounds());
    if (!seen.isEmpty()) touched_ = touched_.united(seen);
    return seen;
}

void PainterCanvas::Fill(const QRectF& area, Color color) {
    const QRectF seen = Touch(area);
    if (!seen.isEmpty()) painter_.fillRect(seen, ToQt(color));
}

void PainterCanvas::FillRect(const Rect& area, Color color) {
    if (!area.IsEmpty()) Fill(ToQt(area), color);
}

void PainterCanvas::Rectangle(const Rect& area, Color fill, Color frame) {
    if (area.IsEmpty()) return;
    const QRectF outer = ToQt(area);
    Fill(outer.adjusted(1, 1, -1, -1), fill);
    Fill(QRectF(outer.left(), outer.top(), outer.width(), 1), frame);
    if (outer.height() <= 1) return;
    Fill(QRectF(outer.left(), outer.bottom() - 1, outer.width(), 1), frame);
    if (outer.height() <= 2) return;
    const QRectF side(outer.left(), outer.top() + 1, 1, outer.height() - 2);
    Fill(side, frame);
    if (outer.width() > 1) Fill(side.translated(outer.width() - 1, 0), frame);
}

void PainterCanvas::RoundedRectangle(const Rect& area, int radius, Color fill, Color frame) {
    if (area.IsEmpty() || Touch(ToQt(area)).isEmpty()) return;
    // Only what is near enough to be seen: the painter fails with coordinates far outside.
    const QRectF outer =
        ToQt(area).intersected(Bounds().adjusted(-kFarRound, -kFarRound, kFarRound, kFarRound));
    const double least = std::min(outer.width(), outer.height());
    if (least < 1) return;
    const double round = std::clamp<double>(radius, 0, least / 2);
    painter_.setRenderHint(QPainter::Antialiasing);
    // The frame's middle is half a pixel inside the edge, where the fill ends.
    const double half = frame.alpha > 0 ? 0.5 : 0;
    const QRectF middle = outer.adjusted(half, half, -half, -half);
    painter_.setPen(frame.alpha > 0 ? QPen(ToQt(frame), 1) : QPen(Qt::NoPen));
    painter_.setBrush(ToQt(fill));
    painter_.drawRoundedRect(middle, std::max(0.0, round - half), std::max(0.0, round - half));
    painter_.setBrush(Qt::NoBrush);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void PainterCanvas::Line(Point from, Point to, Color color) {
    const QPointF a(from.x, from.y), b(to.x, to.y);
    if (from.x == to.x || from.y == to.y) {
        // Straight lines as thin rectangles: sharp at every scale.
        Fill(QRectF(QPointF(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                    QPointF(std::max(a.x(), b.x()) + 1, std::max(a.y(), b.y()) + 1)),
             color);
        return;
    }
    QPointF start = a + QPointF(0.5, 0.5), end = b + QPointF(0.5, 0.5);
    if (!ClipLine(start, end, Bounds().adjusted(-2, -2, 2, 2))) return;
    Touch(QRectF(start, end).normalized().adjusted(-1, -1, 1, 1));
    // A hair wider than one pixel: at one exactly the painter takes a short cut that is half a pixel off.
    const QPen pen(ToQt(color), 1.01, Qt::SolidLine, Qt::SquareCap);
    painter_.setPen(pen);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.drawLine(QLineF(start, end));
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void PainterCanvas::Text(Point at, std::string_view utf8, const Font& font, Color color) {
    const QString line = ScreenLine(utf8);
    // What begins right of or below the surface cannot be seen; what begins far left of it neither.
    if (line.isEmpty() || at.x >= size_.width || at.y >= size_.height || at.x < -32000 || at.y < -32000)
        return;
    const DrawnFont drawn = ResolveFont(font);
    // Letters may lean out of the line on both sides; a whole line's height is more than any of them does.
    const double lean = drawn.lineHeight;
    const double width = QFontMetricsF(drawn.font).horizontalAdvance(line);
    if (Touch(QRectF(at.x - lean, at.y - lean / 2, width + 2 * lean, drawn.lineHeight + lean)).isEmpty())
        return;
    painter_.setFont(drawn.font);
    painter_.setPen(ToQt(color));
    painter_.drawText(QPointF(at.x, at.y + drawn.ascent), line);
}

void PainterCanvas::TextBlock(const Rect& area, std::string_view utf8, const Font& font, Color color,
                              Size corner) {
    if (area.IsEmpty()) return;
    const QRectF seen = ToQt(area).intersected(Bounds());
    if (seen.isEmpty() || area.x < -32000 || area.y < -32000) return;
    Touch(seen);
    const DrawnFont drawn = ResolveFont(font);
    LineIndent indent;
    int first = 0;  // line of the area in which the text begins
    if (!corner.IsEmpty()) {
        indent = {corner.width, (corner.height + drawn.lineHeight - 1) / drawn.lineHeight};
        if (area.width - corner.width < kLeastBesideCorner * drawn.lineHeight) {
            first = indent.lines;
            indent = {};
        }
    }
    const int maxLines = std::max(first == 0 ? 1 : 0, area.height / drawn.lineHeight - first);
    const std::vector<QString> lines =
        BreakIntoLines(ToDisplayText(utf8), drawn.font, std::min(area.width, 32767), maxLines, indent);
    painter_.save();
    painter_.setClipRect(seen);
    painter_.setFont(drawn.font);
    painter_.setPen(ToQt(color));
    double top = area.y + first * drawn.lineHeight;
    int indented = indent.lines;
    for (const QString& line : lines) {
        if (top >= seen.bottom()) break;
        const int left = area.x + (indented-- > 0 ? indent.width : 0);
        if (top + drawn.lineHeight > seen.top()) painter_.drawText(QPointF(left, top + drawn.ascent), line);
        top += drawn.lineHeight;
    }
    painter_.restore();
}

QRect PainterCanvas::DevicePixels(const QRectF& area) const {
    const auto edge = [this](double logical) {
        return static_cast<int>(std::lround(std::clamp(logical * scale_, -kFarthest, kFarthest)));
    };
    const QPoint upperLeft(edge(area.left()), edge(area.top()));
    return QRect(upperLeft, QSize(edge(area.right()) - upperLeft.x(), edge(area.bottom()) - upperLeft.y()));
}

void PainterCanvas::DrawImage(const Rect& area, const Image& image) {
    if (area.IsEmpty() || image.IsEmpty()) return;
    if (Touch(ToQt(area)).isEmpty()) return;
    const QImage& pixels = image.Get()->Get();
    const QRect target = DevicePixels(ToQt(area));
    if (target.isEmpty()) return;

    // Smooth painting looks at four neighbours only, so a picture to be reduced is averaged first; it then
    // goes pixel for pixel.
    QImage reduced;
    const bool isReduced = target.width() < pixels.width() || target.height() < pixels.height();
    if (isReduced)
        reduced = Reduced(pixels, Size{std::min(target.width(), pixels.width()),
                                       std::min(target.height(), pixels.height())});
    const QImage& source = isReduced ? reduced : pixels;
    DrawPart(target, source, QRectF(source.rect()));
}

void PainterCanvas::Blit(const Rect& area, const Surface& surface, Point from) {
    if (area.IsEmpty()) return;
    const Size size = surface.GetSize();
    const QPointF shift(double{1} * area.x - from.x, double{1} * area.y - from.y);
    const QRectF covered(shift, QSizeF(size.width, size.height));
    const QRectF seen = Touch(ToQt(area).intersected(covered));
    if (seen.isEmpty()) return;
    const QRect target = DevicePixels(seen), whole = DevicePixels(covered);
    const double scale = surface.Scale() / scale_;
    const QPointF begin = target.topLeft() - whole.topLeft();
    DrawPart(target, PixelsOf(surface), QRectF(begin * scale, QSizeF(target.size()) * scale));
}

void PainterCanvas::DrawPart(const QRect& target, const QImage& source, const QRectF& part) {
    // Only what is seen: the painter fails with coordinates far outside.
    const QRect seen = target.intersected(DevicePixels(Bounds()));
    if (seen.isEmpty()) return;
    const double acrossX = part.width() / target.width(), acrossY = part.height() / target.height();
    const QRectF seenPart(part.left() + (seen.left() - target.left()) * acrossX,
                          part.top() + (seen.top() - target.top()) * acrossY, seen.width() * acrossX,
                          seen.height() * acrossY);
    painter_.setRenderHint(QPainter::SmoothPixmapTransform, acrossX != 1 || acrossY != 1);
    painter_.drawImage(QRectF(QPointF(seen.topLeft()) / scale_, QSizeF(seen.size()) / scale_), source,
                       seenPart);
}

}  // namespace kalmora::qt
