// The buttons themselves, for the files of the button bar.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "platform/canvas.h"
#include "views/bar/button.h"
#include "views/bar/button_rows.h"

namespace kalmora {

struct ButtonParts {
    std::mutex mutex;  // guards everything below; never held while a press does its work
    std::unique_ptr<CButton> date, level, search;
    std::vector<std::unique_ptr<CButton>> images;  // by ImageButton; all of them, or none before the start
    std::unique_ptr<Surface> ground;  // the strip without its buttons; null before the first paint
    Size groundClient;                // of the window that the ground was painted for
    CButton* focused = nullptr;       // the one that Enter presses; one of the above
};
ButtonParts& TheButtonParts();

// Labels first, then pictures, as presses find them; visit(CButton&, std::size_t row), where the row of a
// label is kImageButtonCount. With the mutex held.
template <typename Visit>
void ForEachButton(ButtonParts& parts, Visit visit) {
    for (CButton* label : {parts.date.get(), parts.level.get(), parts.search.get()})
        if (label) visit(*label, std::size_t{kImageButtonCount});
    for (std::size_t i = 0; i < parts.images.size(); ++i) visit(*parts.images[i], i);
}

}  // namespace kalmora
