// A Canvas that paints on the pixels of a surface or a window.
#pragma once

#include <QPainter>

#include "platform/canvas.h"

namespace kalmora::qt {

// Draws through a painter that it does not own and that stays as it was left: no clip, no transform of its
// own.
class PainterCanvas : public Canvas {
public:
    // size: the logical extent of what the painter paints on.
    PainterCanvas(QPainter& painter, Size size, double scale)
        : painter_(painter), size_(size), scale_(scale) {}

    Size GetSize() const override { return size_; }
    double Scale() const override { return scale_; }
    void FillRect(const Rect& area, Color color) override;
    void Rectangle(const Rect& area, Color fill, Color frame) override;
    void RoundedRectangle(const Rect& area, int radius, Color fill, Color frame) override;
    void Line(Point from, Point to, Color color) override;
    void Text(Point at, std::string_view utf8, const Font& font, Color color) override;
    void TextBlock(const Rect& area, std::string_view utf8, const Font& font, Color color,
                   Size corner) override;
    void DrawImage(const Rect& area, const Image& image) override;
    void Blit(const Rect& area, const Surface& surface, Point from) override;

protected:
    // The bounding box of all that was drawn so far, clipped to the surface.
    const QRectF& Touched() const { return touched_; }

private:
    QRectF Bounds() const { return QRectF(0, 0, size_.width, size_.height); }
    // Notes the part of the area that lies on the surface and gives it.
    QRectF Touch(const QRectF& area);
    void Fill(const QRectF& area, Color color);
    // The device pixels of an area, its edges rounded each to the nearest.
    QRect DevicePixels(const QRectF& area) const;
    void DrawPart(const QRect& target, const QImage& source, const QRectF& part);

    QPainter& painter_;
    Size size_;
    double scale_;
    QRectF touched_;
};

}  // namespace kalmora::qt
