// Sizes are whole-number divisions throughout, as the views' placement counts on them.
#include "media/photo.h"

#include "base/mul_div.h"
#include "pictures/picture_painter.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

constexpr int kLayoutScale = 2000;      // what a layout fraction counts to
constexpr int kSmallestEstimated = 40;  // the longer side where scale and setting leave none
constexpr Size kCard{1024, 768};        // the shape of a card, and the area of one that is drawn again

}  // namespace

CPhoto::CPhoto(const std::string& filePath, int x, int y, Measure measure) : PhotoFile(filePath) {
    layoutX = x;
    layoutY = y;
    if (measure == Measure::Now && !path.empty()) MeasureImage();
}

void CPhoto::MeasureImage() {
    if (kind != ObjectKind::Image) return;
    MeasurePicture(path);
    SetDisplaySize(ThumbnailSize({imageWidth, imageHeight}));
}

std::optional<CPhoto::Shown> CPhoto::FindShown() {
    if (kind != ObjectKind::Image && kind != ObjectKind::Movie) return Shown{kCard, {}};
    std::string picture = PictureFileOf(path, kind);
    if (!picture.empty() && MeasurePicture(picture))
        return Shown{{imageWidth, imageHeight}, std::move(picture)};
    SetDisplaySize({});
    return std::nullopt;
}

void CPhoto::Paint(const DrawContext& context, const Shown& shown, const PaintStyle& style) {
    const Rect area = Drawn();
    if (area.IsEmpty()) return;
    const PreparedPicture prepared = PreparePicture({path, kind, shown.picture, shown.shape},
                                                    {area.width, area.height}, context.Scale(), style);
    if (prepared.look == PreparedPicture::Look::Nothing) return SetDisplaySize({});
    context.With([&](Canvas& canvas) { DrawPicture(canvas, area, prepared, style); });
}

void CPhoto::StandAtLayout() {
    drawnX = layoutX;
    drawnY = layoutY;
}

void CPhoto::Draw(const DrawContext& context) {
    if (visible == 0) return;
    if (kind != ObjectKind::Image && kind != ObjectKind::Movie)
        return DrawInArea(context, kCard.width, kCard.height);
    const auto shown = FindShown();
    if (!shown) return;
    StandAtLayout();
    Paint(context, *shown);
}

void CPhoto::DrawScaledToWidth(const DrawContext& context, int width) {
    if (visible == 0) return;
    StandAtLayout();
    const auto shown = FindShown();
    if (!shown) return;
    SetDisplaySize({width, MulDiv(shown->shape.height, width, shown->shape.width)});
    Paint(context, *shown);
}

void CPhoto::DrawScaledToHeight(const DrawContext& context, int height) {
    if (visible == 0) return;
    StandAtLayout();
    const auto shown = FindShown();
    if (!shown) return;
    SetDisplaySize({MulDiv(shown->shape.width, height, shown->shape.height), height});
    Paint(context, *shown, kStrewnStyle);
}

void CPhoto::DrawStretched(const DrawContext& context, int width, int height) {
    if (visible == 0) return;
    StandAtLayout();
    const auto shown = FindShown();
    if (!shown) return;
    SetDisplaySize({width, height});
    Paint(context, *shown);
}

void CPhoto::DrawFitted(const DrawContext& context, int boxWidth, int boxHeight) {
    if (visible == 0) return;
    StandAtLayout();
    const auto shown = FindShown();
    if (!shown) return;
    if (shown->picture.empty()) {  // a card has no shape of its own to keep
        SetDisplaySize({boxWidth, boxHeight});
        return Paint(context, *shown);
    }
    if (boxWidth <= 0 || boxHeight <= 0) return;
    const bool centred = kind == ObjectKind::Image;  // a movie stays at its layout position: meant
    const auto [width, height] = shown->shape;
    if (static_cast<double>(width) / boxWidth <= static_cast<double>(height) / boxHeight) {
        SetDisplaySize({MulDiv(width, boxHeight, height), boxHeight});
        if (centred) drawnX = layoutX + (boxWidth - displayWidth) / 2;
    } else {
        SetDisplaySize({boxWidth, MulDiv(height, boxWidth, width)});
        if (centred) drawnY = layoutY + (boxHeight - displayHeight) / 2;
    }
    Paint(context, *shown);
}

void CPhoto::DrawInArea(const DrawContext& context, int areaWidth, int areaHeight) {
    if (visible == 0) return;
    const auto shown = FindShown();
    if (!shown) return;
    const Settings& settings = State().settings;
    int longerSide = settings.ThumbnailMaxSize;
    // A movie has no estimation of its own: it keeps the plain size, as cards do.
    if (kind == ObjectKind::Image && settings.UseEstimation) {
        longerSide = static_cast<int>(EstimateScale(GetEstimations().like) * longerSide);
        if (longerSide <= 0) longerSide = kSmallestEstimated;
    }
    SetDisplaySize(FitLongerSide(shown->shape, longerSide));
    drawnX = MulDiv(areaWidth - displayWidth, layoutX, kLayoutScale);
    drawnY = MulDiv(areaHeight - displayHeight, layoutY, kLayoutScale);
    Paint(context, *shown, kStrewnStyle);
}

bool CPhoto::IsVisibleUnderEstimate() {
    if (IsShownUnderEstimate()) return true;
    visible = 0;
    return false;
}

bool CPhoto::SkipIfSmall() {
    const Settings& settings = State().settings;
    if (!settings.SkipSmallImage) return true;
    if (imageWidth < 0 || imageHeight < 0) MeasureImage();
    // Only an image has a size that says something; what could not be measured at all is left as it is.
    if (kind != ObjectKind::Image) return true;
    if (imageWidth >= settings.SizeOfSmallImage || imageHeight >= settings.SizeOfSmallImage) return true;
    visible = 0;
    return false;
}

}  // namespace kalmora
