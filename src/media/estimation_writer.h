// The mark-up of estimations, one rating further. Plain functions on texts; any thread.
#pragma once

#include <string>
#include <string_view>

#include "base/dates.h"
#include "media/estimation.h"

namespace kalmora {

struct EstimateStep {
    std::string text;    // with the rating in it
    Estimations values;  // after it
};

// Adds a rating to the text of a photo, or takes all of them out (Clear). What is in front of the
// mark-up and behind it stays byte for byte, but Clear also removes what is in front: intended. `values` are
// those before; only the rated axis changes. A first rating is 128 up or down; each further one moves the
// value by about half of the last step, never by nothing. An element that cannot be read steps by 0.
// The text ends at its first zero byte. A type that is none leaves text and values as they are.
EstimateStep StepEstimate(std::string_view text, const Estimations& values, EstimateType type,
                          const CalendarDate& today);

}  // namespace kalmora
