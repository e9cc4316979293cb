// The slide show, as the views see it, which feed its list, and the commands.
#pragma once

#include <string>

#include "base/geometry.h"
#include "media/picture_window.h"

namespace kalmora {

enum class SlideDirection { Forward, Backward };

// GUI thread, but where it says otherwise.
class SlideShow : public PictureWindow {
public:
    // ---- the list; any thread
    virtual void ClearSlides() = 0;
    virtual void AddSlide(const std::string& path) = 0;
    // The period's objects have changed under an open slide show.
    virtual void TakeNewSlides() = 0;
    virtual void Restart() = 0;

    // ---- the window
    virtual void Open() = 0;  // at the first slide
    virtual void FitToWindow() = 0;
    virtual void SetDirection(SlideDirection direction) = 0;
    virtual void FlipView() = 0;
    virtual void DeleteSlide() = 0;
    // The text of the clipboard joins the picture's comment.
    virtual void PasteComment() = 0;
    virtual bool IsOnPicture(Point screen) const = 0;
};

}  // namespace kalmora
