// Making the folder of a date below a data root.
#pragma once

#include <string>

namespace kalmora {

// Makes what is missing of a day's or a month's folder (MakeDayFolderPath). False when the root itself is not
// there: in the place of a drive that is away nothing is made. Any thread.
bool MakeDateFolder(const std::string& folder);

}  // namespace kalmora
