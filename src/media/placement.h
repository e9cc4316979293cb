// Where an object is in its view, and where it was painted last. Logical pixels.
#pragma once

#include <cstdint>

#include "base/geometry.h"

namespace kalmora {

// The size in which a picture of that size is drawn when its longer side gets that length.
Size FitLongerSide(Size picture, int longerSide);
// The same for the setting ThumbnailMaxSize; 0 by 0 for a picture without a size.
Size ThumbnailSize(Size picture);

// One thread at a time.
class Placement {
public:
    std::int32_t visible = 1;        // 0: neither painted nor hit
    bool placed = false;             // it has a place in its view
    std::int32_t placementTag = -1;  // the view's cell or line for which it was placed
    std::int32_t layoutX = 0;        // pixels; in an area of its view a fraction of 0 to 2000
    std::int32_t layoutY = 0;
    std::int32_t drawnX = 0;  // upper left corner of the last paint
    std::int32_t drawnY = 0;
    std::int32_t displayWidth = -1;  // of the last paint; -1 unknown, 0 when the picture has no size
    std::int32_t displayHeight = -1;

    // The last paint.
    Rect Drawn() const { return {drawnX, drawnY, displayWidth, displayHeight}; }
    // Whether the point lies on the last paint, all four edges included.
    bool HitTest(int x, int y) const;
    // Moves the object by the way between the two points; gives the horizontal part of it.
    int Move(int fromX, int fromY, int toX, int toY);

protected:
    void SetDisplaySize(Size size);
};

}  // namespace kalmora
