// The form that dates have in what the verbs print as JSON.
#pragma once

#include <string>

#include "base/system_time.h"

namespace kalmora {

// "YYYY-MM-DDThh:mm:ss", as ISO 8601 writes a local time.
std::string IsoDate(const SystemTime& date);
// False for a date that no calendar has, as a broken clock or a broken file gives it.
bool IsRealDate(const SystemTime& date);

}  // namespace kalmora
