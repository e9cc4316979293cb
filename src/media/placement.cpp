#include "media/placement.h"

#include "base/mul_div.h"
#include "state/app_state.h"

namespace kalmora {

Size FitLongerSide(Size picture, int longerSide) {
    if (picture.height < picture.width)
        return {longerSide, MulDiv(longerSide, picture.height, picture.width)};
    return {MulDiv(picture.width, longerSide, picture.height), longerSide};
}

Size ThumbnailSize(Size picture) {
    return picture.IsEmpty() ? Size{} : FitLongerSide(picture, State().settings.ThumbnailMaxSize);
}

bool Placement::HitTest(int x, int y) const { return visible != 0 && Drawn().ContainsInclusive({x, y}); }

int Placement::Move(int fromX, int fromY, int toX, int toY) {
    layoutX += toX - fromX;
    layoutY += toY - fromY;
    return toX - fromX;
}

void Placement::SetDisplaySize(Size size) {
    displayWidth = size.width;
    displayHeight = size.height;
}

}  // namespace kalmora
