// Index records that cannot be right: a program that was cut off may have left them, and TIME= does not tell.
#pragma once

#include "index/index_entry.h"

namespace kalmora {

// True for a photo with a size below zero or above 10,000 pixels, and for a date that no calendar has; where
// none is told, for a photo. A file that tells nonsense of itself has such a record for good. Any thread; no
// look at the disk.
bool IsNonsense(const IndexEntry& entry);

}  // namespace kalmora
