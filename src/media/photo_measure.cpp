// How large a photo is and is shown. Apart from the painting, so that a program which only measures does not
// need it.
#include "base/mul_div.h"
#include "media/photo.h"
#include "platform/image.h"
#include "state/app_state.h"

namespace kalmora {

void CPhoto::EnsureImageSize(const std::string& picture) {
    if (imageWidth >= 0 && imageHeight >= 0) return;
    const Size size = images::Measure(picture);
    imageWidth = size.width;
    imageHeight = size.height;
}

void CPhoto::FitLongerSide(int longerSide) {
    if (imageHeight < imageWidth) {
        displayWidth = longerSide;
        displayHeight = MulDiv(longerSide, imageHeight, imageWidth);
    } else {
        displayWidth = MulDiv(imageWidth, longerSide, imageHeight);
        displayHeight = longerSide;
    }
}

void CPhoto::MeasureImage() {
    if (kind != kKindImage) return;
    EnsureImageSize(path);
    if (imageWidth <= 0 || imageHeight <= 0)
        displayWidth = displayHeight = 0;
    else
        FitLongerSide(State().settings.ThumbnailMaxSize);
}

}  // namespace kalmora
