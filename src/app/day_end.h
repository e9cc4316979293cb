// The hour at which a day ends, as the import asks for it.
#pragma once

#include <string_view>

namespace kalmora {

// The end of the day as it is typed: hours after the midnight that begins it, or the hour of the clock up to
// noon ("2" is 26). Any other text, and anything beyond two days, leaves the one that there was.
int ParseDayEnd(std::string_view text, int before);

}  // namespace kalmora
