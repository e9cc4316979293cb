// CPhoto's painting. Sizes are whole-number divisions throughout, as the views' placement counts on them.
#include <algorithm>

#include "base/mul_div.h"
#include "media/photo.h"
#include "pictures/text_card.h"
#include "platform/files.h"
#include "platform/image.h"
#include "state/app_state.h"
#include "store/resources.h"

namespace kalmora {

namespace {

constexpr int kMarkInset = 5;     // of the movie mark from the picture's lower right corner
constexpr int kSmallWidth = 160;  // below both, UseExifThumbnail takes the embedded thumbnail
constexpr int kSmallHeight = 120;
constexpr int kLayoutScale = 2000;                   // what a layout fraction counts to
constexpr int kSmallestEstimated = 40;               // the longer side where scale and setting leave none
constexpr int kCardWidth = 1024, kCardHeight = 768;  // the shape of a text card

// The device pixels that the decoder has to give so that the picture covers the area, whatever its shape; no
// more than it has.
Size WantedPixels(const Rect& area, Size picture, double scale) {
    const double factor = std::max(area.width * scale / picture.width, area.height * scale / picture.height);
    if (factor >= 1.0) return picture;
    return {std::max(1, static_cast<int>(picture.width * factor + 0.999)),
            std::max(1, static_cast<int>(picture.height * factor + 0.999))};
}

struct Mark {
    Image image;
    Size size;  // logical pixels
};

// The movie mark in its own size; the sharper drawing of it where the surface has the pixels for that.
Mark LoadMovieMark(double scale) {
    const std::string plain = FindResource("Res/movie.png");
    Mark mark;
    mark.size = images::Measure(plain);
    if (mark.size.IsEmpty()) return mark;
    if (scale > 1.0) {
        const std::string sharp = FindResource("Res/movie@2x.png");
        if (files::Exists(sharp)) mark.image = images::Load(sharp, {}, images::Preview::Never);
    }
    if (mark.image.IsEmpty()) mark.image = images::Load(plain, {}, images::Preview::Never);
    return mark;
}

}  // namespace

std::string CPhoto::PreparePicture() {
    std::string picture = kind == kKindMovie ? MovieFrame(path) : path;
    if (!picture.empty()) EnsureImageSize(picture);
    if (!picture.empty() && imageWidth > 0 && imageHeight > 0) return picture;
    displayWidth = displayHeight = 0;
    return {};
}

void CPhoto::PaintPicture(const DrawContext& context, const std::string& picture) {
    const Rect area{drawnX, drawnY, displayWidth, displayHeight};
    if (area.IsEmpty()) return;
    const bool small = area.width < kSmallWidth && area.height < kSmallHeight;
    const auto preview =
        State().settings.UseExifThumbnail && small ? images::Preview::Always : images::Preview::IfEnough;
    const double scale = context.Scale();
    const Image image = images::Load(picture, WantedPixels(area, {imageWidth, imageHeight}, scale), preview);
    if (image.IsEmpty()) {
        displayWidth = displayHeight = 0;
        return;
    }
    const Mark mark = kind == kKindMovie ? LoadMovieMark(scale) : Mark{};
    context.With([&](Canvas& canvas) {
        canvas.DrawImage(area, image);
        if (!mark.image.IsEmpty())
            canvas.DrawImage(
                {area.Right() - kMarkInset - mark.size.width, area.Bottom() - kMarkInset - mark.size.height,
                 mark.size.width, mark.size.height},
                mark.image);
    });
}

void CPhoto::PaintCard(const DrawContext& context) {
    const Rect area{drawnX, drawnY, displayWidth, displayHeight};
    if (area.IsEmpty()) return;
    const auto text = ReadTextHead(path, kCardTextBytes);
    if (!text) {
        displayWidth = displayHeight = 0;
        return;
    }
    const TextKind style = TextKindOf(*text, HeadMatch::IgnoreCase);
    context.With([&](Canvas& canvas) { DrawTextCard(canvas, area, *text, style); });
}

void CPhoto::Draw(const DrawContext& context) {
    if (visible == 0) return;
    if (!IsPicture()) {
        drawnX = drawnY = 0;
        DrawInArea(context, kCardWidth, kCardHeight);
        return;
    }
    const std::string picture = PreparePicture();
    if (picture.empty()) return;
    drawnX = layoutX;
    drawnY = layoutY;
    PaintPicture(context, picture);
}

void CPhoto::DrawScaledToWidth(const DrawContext& context, int width) {
    if (visible == 0) return;
    drawnX = layoutX;
    drawnY = layoutY;
    if (!IsPicture()) {
        displayWidth = width;
        displayHeight = MulDiv(width, kCardHeight, kCardWidth);
        return PaintCard(context);
    }
    const std::string picture = PreparePicture();
    if (picture.empty()) return;
    displayWidth = width;
    displayHeight = MulDiv(imageHeight, width, imageWidth);
    PaintPicture(context, picture);
}

void CPhoto::DrawScaledToHeight(const DrawContext& context, int height) {
    if (visible == 0) return;
    drawnX = layoutX;
    drawnY = layoutY;
    if (!IsPicture()) {
        displayWidth = MulDiv(height, kCardWidth, kCardHeight);
        displayHeight = height;
        return PaintCard(context);
    }
    const std::string picture = PreparePicture();
    if (picture.empty()) return;
    displayWidth = MulDiv(imageWidth, height, imageHeight);
    displayHeight = height;
    PaintPicture(context, picture);
}

void CPhoto::DrawStretched(const DrawContext& context, int width, int height) {
    if (visible == 0) return;
    drawnX = layoutX;
    drawnY = layoutY;
    const std::string picture = IsPicture() ? PreparePicture() : std::string();
    if (IsPicture() && picture.empty()) return;
    displayWidth = width;
    displayHeight = height;
    IsPicture() ? PaintPicture(context, picture) : PaintCard(context);
}

void CPhoto::DrawFitted(const DrawContext& context, int boxWidth, int boxHeight) {
    if (visible == 0) return;
    drawnX = layoutX;
    drawnY = layoutY;
    if (!IsPicture()) {
        displayWidth = boxWidth;
        displayHeight = boxHeight;
        return PaintCard(context);
    }
    const std::string picture = PreparePicture();
    if (picture.empty() || boxWidth <= 0 || boxHeight <= 0) return;
    const bool centred = kind == kKindImage;  // a movie stays at its layout position: meant
    if (static_cast<double>(imageWidth) / boxWidth <= static_cast<double>(imageHeight) / boxHeight) {
        displayHeight = boxHeight;
        displayWidth = MulDiv(imageWidth, boxHeight, imageHeight);
        if (centred) drawnX = layoutX + (boxWidth - displayWidth) / 2;
    } else {
        displayWidth = boxWidth;
        displayHeight = MulDiv(imageHeight, boxWidth, imageWidth);
        if (centred) drawnY = layoutY + (boxHeight - displayHeight) / 2;
    }
    PaintPicture(context, picture);
}

void CPhoto::DrawInArea(const DrawContext& context, int areaWidth, int areaHeight) {
    if (visible == 0) return;
    const int longerSide = State().settings.ThumbnailMaxSize;
    std::string picture;
    if (!IsPicture()) {
        displayWidth = longerSide;
        displayHeight = MulDiv(longerSide, 3, 4);
    } else {
        picture = PreparePicture();
        if (picture.empty()) return;
        // A movie has no estimation of its own: it keeps the plain size.
        if (kind == kKindImage && State().settings.UseEstimation) {
            const double factor = EstimateScale(GetEstimate(static_cast<int>(EstimateType::Like)));
            const int scaled = static_cast<int>(factor * longerSide);
            FitLongerSide(scaled > 0 ? scaled : kSmallestEstimated);
        } else {
            FitLongerSide(longerSide);
        }
    }
    drawnX = MulDiv(areaWidth - displayWidth, layoutX, kLayoutScale);
    drawnY = MulDiv(areaHeight - displayHeight, layoutY, kLayoutScale);
    IsPicture() ? PaintPicture(context, picture) : PaintCard(context);
}

}  // namespace kalmora
