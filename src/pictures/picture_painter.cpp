#include "pictures/picture_painter.h"

#include <algorithm>
#include <utility>

#include "pictures/movie_stills.h"
#include "pictures/picture_cache.h"
#include "pictures/res_pictures.h"

namespace kalmora {

using Exactness = PictureCache::Exactness;

namespace {

using Look = PreparedPicture::Look;

constexpr char kMovieMark[] = "Res/movie.png";
constexpr int kMarkMargin = 5;    // from the picture's lower right corner
constexpr int kTightMargin = 1;   // of a mark that is smaller than itself
constexpr int kSmallWidth = 160;  // below both, UseExifThumbnail takes the embedded thumbnail
constexpr int kSmallHeight = 120;
constexpr Color kLightEdge{255, 255, 255, 150};

// The device pixels that the decoder has to give so that the picture covers the box in any shape; at
// most those that it has.
Size CoveringPixels(Size box, Size picture, double scale) {
    const double factor = std::max(box.width * scale / picture.width, box.height * scale / picture.height);
    if (factor >= 1.0) return picture;
    return {std::max(1, static_cast<int>(picture.width * factor + 0.999)),
            std::max(1, static_cast<int>(picture.height * factor + 0.999))};
}

Rect PlaceInBox(Size picture, const Rect& box, const PaintStyle& style) {
    return style.fit == PaintStyle::Fit::Fill ? box : FitInBox(picture, box);
}

// Where the movie mark lies on the picture; empty when there is no such drawing.
Rect MarkPlace(const Rect& picture, const PaintStyle& style) {
    const Size natural = MeasureResPicture(kMovieMark);
    if (natural.IsEmpty()) return {};
    double fit = 1.0;
    // At its own size where the picture has room for it; the small cells of a year get it smaller.
    if (style.mark == PaintStyle::Mark::FitsPicture)
        fit = std::min({1.0, picture.width * 0.5 / natural.width, picture.height * 0.5 / natural.height});
    const Size size{static_cast<int>(natural.width * fit), static_cast<int>(natural.height * fit)};
    const int margin = fit < 1.0 ? kTightMargin : kMarkMargin;
    return {picture.Right() - margin - size.width, picture.Bottom() - margin - size.height, size.width,
            size.height};
}

// One pixel inside the border; no pixel twice, since the colour is half-transparent.
void DrawEdge(Canvas& canvas, const Rect& picture) {
    if (picture.width < 2 || picture.height < 2) return;
    canvas.FillRect({picture.x, picture.y, picture.width, 1}, kLightEdge);
    canvas.FillRect({picture.x, picture.Bottom() - 1, picture.width, 1}, kLightEdge);
    canvas.FillRect({picture.x, picture.y + 1, 1, picture.height - 2}, kLightEdge);
    canvas.FillRect({picture.Right() - 1, picture.y + 1, 1, picture.height - 2}, kLightEdge);
}

images::Preview PreviewFor(Size box, const PaintStyle& style) {
    const bool small = box.width < kSmallWidth && box.height < kSmallHeight;
    const bool always = style.smallPreview == PaintStyle::SmallPreview::IfWanted && small &&
                        State().settings.UseExifThumbnail;
    return always ? images::Preview::Always : images::Preview::IfEnough;
}

void PreparePixels(const PictureSource& source, Size box, double scale, const PaintStyle& style,
                   Decode decode, PreparedPicture& prepared) {
    if (source.picture.empty()) return;
    const Size pixels =
        style.fit == PaintStyle::Fit::Fill ? CoveringPixels(box, source.size, scale) : BoxPixels(box, scale);
    const images::Preview preview = PreviewFor(box, style);
    if (decode == Decode::Now) {
        prepared.picture = Pictures().Load(source.picture, pixels, preview);
    } else {
        prepared.picture = Pictures().LoadCached(source.picture, pixels, Exactness::Exact, preview);
        prepared.complete = !prepared.picture.IsEmpty();
        if (!prepared.complete)
            prepared.picture = Pictures().LoadCached(source.picture, pixels, Exactness::Nearest, preview);
    }
    if (prepared.picture.IsEmpty()) return;
    prepared.look = source.kind == ObjectKind::Movie ? Look::Movie : Look::Picture;
    if (prepared.look != Look::Movie) return;
    const Rect picture = PlaceInBox(prepared.picture.GetSize(), {0, 0, box.width, box.height}, style);
    const Rect mark = MarkPlace(picture, style);
    prepared.mark = LoadResPicture(kMovieMark, {mark.width, mark.height}, scale);
}

void PrepareCard(const PictureSource& source, const PaintStyle& style, PreparedPicture& prepared) {
    auto head = ReadTextHead(source.path, style.textBytes);
    if (!head) return;
    prepared.text = std::move(*head);
    prepared.textKind = TextKindOf(prepared.text, style.head);
    prepared.look = Look::TextCard;
}

}  // namespace

std::string PictureFileOf(const std::string& path, ObjectKind kind) {
    if (kind == ObjectKind::Image) return path;
    return kind == ObjectKind::Movie ? MovieStill(path) : std::string();
}

Rect FitInBox(Size picture, const Rect& box) {
    if (picture.IsEmpty() || box.IsEmpty()) return {};
    const auto margin = [](int whole, double scaled) {
        const int value = static_cast<int>((whole - scaled) * 0.5);
        return value < 3 || value > whole / 2 ? 0 : value;
    };
    const double scale = std::min(static_cast<double>(box.width) / picture.width,
                                  static_cast<double>(box.height) / picture.height);
    const int marginX = margin(box.width, picture.width * scale);
    const int marginY = margin(box.height, picture.height * scale);
    return {box.x + marginX, box.y + marginY, box.width - 2 * marginX, box.height - 2 * marginY};
}

Size BoxPixels(Size box, double scale) {
    return {std::max(1, static_cast<int>(box.width * scale + 0.5)),
            std::max(1, static_cast<int>(box.height * scale + 0.5))};
}

PreparedPicture PreparePicture(const PictureSource& source, Size box, double scale, const PaintStyle& style,
                               Decode decode) {
    PreparedPicture prepared;
    if (source.kind == ObjectKind::Image || source.kind == ObjectKind::Movie) {
        PreparePixels(source, box, scale, style, decode, prepared);
    } else if (source.kind == ObjectKind::Text || style.otherKinds == PaintStyle::OtherKinds::CardOfText) {
        PrepareCard(source, style, prepared);
    } else {
        prepared.text = source.path;
        prepared.look = Look::PathCard;
    }
    return prepared;
}

Rect PictureArea(const Rect& box, const PreparedPicture& prepared, const PaintStyle& style) {
    return prepared.picture.IsEmpty() ? Rect{} : PlaceInBox(prepared.picture.GetSize(), box, style);
}

bool DrawPicture(Canvas& canvas, const Rect& box, const PreparedPicture& prepared, const PaintStyle& style) {
    switch (prepared.look) {
        case Look::Nothing:
            return false;
        case Look::Picture:
        case Look::Movie: {
            const Rect area = PictureArea(box, prepared, style);
            if (area.IsEmpty()) return false;
            canvas.DrawImage(area, prepared.picture);
            if (style.edge == PaintStyle::Edge::Light) DrawEdge(canvas, area);
            if (!prepared.mark.IsEmpty()) canvas.DrawImage(MarkPlace(area, style), prepared.mark);
            return true;
        }
        case Look::TextCard:
            DrawTextCard(canvas, box, prepared.text, prepared.textKind, style.corner);
            return true;
        case Look::PathCard:
            DrawPathCard(canvas, box, prepared.text, style.corner);
            return true;
    }
    return false;
}

}  // namespace kalmora
