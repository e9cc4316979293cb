// A window that shows one picture after another: the slide show and the neighbor window, as commands and
// turning see them.
#pragma once

#include <string>

#include "media/estimation.h"

namespace kalmora {

// GUI thread, but where it says otherwise.
class PictureWindow {
public:
    virtual ~PictureWindow() = default;
    virtual bool IsShown() const = 0;  // any thread
    // Shows the window with this picture.
    virtual void Show(const std::string& path) = 0;
    virtual void Hide() = 0;               // any thread; nothing while it is hidden
    virtual std::string Path() const = 0;  // of the picture in it
    virtual void Next() = 0;
    virtual void Previous() = 0;
    // Writes the rating into the picture's file.
    virtual void Rate(EstimateType type) = 0;
    // Shows words over the picture. A window that changes pictures on a timer stays at the picture for
    // `ticks` more.
    virtual void Say(const std::string& words, int ticks) = 0;
    // The picture's file has changed: reads it again.
    virtual void Reload() = 0;
};

}  // namespace kalmora
