// The words for the period in view: the date label's text and the window's title. Pure.
#pragma once

#include <string>

#include "base/geometry.h"
#include "state/period.h"

namespace kalmora {

struct CaptionInput {
    Period period;
    bool japanese = true;
    bool showFolder = true;
    std::string folder;  // of the period
    bool searchMode = false;
    std::string query;
};
struct Caption {
    std::string label;
    Color labelColor;
    std::string title;
};
Caption MakeCaption(const CaptionInput& input);

}  // namespace kalmora
