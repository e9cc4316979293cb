// CPhoto: one file of the data folder as an object on the calendar, of any kind: the file, its place in
// the view, and the painting of it there.
#pragma once

#include <optional>
#include <string>

#include "media/photo_file.h"
#include "media/placement.h"
#include "pictures/draw_context.h"
#include "pictures/picture_painter.h"

namespace kalmora {

// As cheap to make as a PhotoFile. Sizes and positions are logical pixels. One thread at a time.
class CPhoto : public PhotoFile, public Placement {
public:
    enum class Measure { Later, Now };

    CPhoto() = default;
    using PhotoFile::PhotoFile;
    CPhoto(const std::string& filePath, int x, int y, Measure measure);

    // ---- size and painting, by the painter of pictures/picture_painter.h. Nothing is painted while
    // `visible` is 0, nor what cannot be read: a picture then gets the display size 0 by 0.
    // Images only: reads the size and fits the display size into ThumbnailMaxSize.
    void MeasureImage();
    void Draw(const DrawContext& context);  // at its place, in its size
    void DrawScaledToWidth(const DrawContext& context, int width);
    void DrawScaledToHeight(const DrawContext& context, int height);  // on a day's line
    void DrawFitted(const DrawContext& context, int boxWidth, int boxHeight);
    void DrawStretched(const DrawContext& context, int width, int height);
    void DrawInArea(const DrawContext& context, int areaWidth, int areaHeight);  // of the scatter

    // ---- filters
    // False, and `visible` 0, when GoodMode or PublicMode hides it; else true and `visible` as it was.
    bool IsVisibleUnderEstimate();
    // False, and `visible` 0, for a picture that SkipSmallImage leaves out: one below SizeOfSmallImage on
    // both sides. Else true.
    bool SkipIfSmall();

private:
    // What is drawn: its shape, and the file of its pixels, empty for a card.
    struct Shown {
        Size shape;
        std::string picture;
    };
    // Empty, and display size 0, for a picture that cannot be measured and for a movie without a still.
    std::optional<Shown> FindShown();
    void Paint(const DrawContext& context, const Shown& shown, const PaintStyle& style = kPhotoStyle);
    void StandAtLayout();
};

}  // namespace kalmora
