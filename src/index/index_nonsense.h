// Index records that cannot be right: a program that was cut off may have left them, and TIME= does not show
// it.
#pragma once

#include "index/index_entry.h"

namespace kalmora {

// True for a photo with a size below zero or above 10,000 pixels, and for a date that no calendar has; with
// none at all, for a photo. A file whose own values are nonsense has such a record for good. Any thread; no
// look at the disk.
bool IsNonsense(const IndexEntry& entry);

}  // namespace kalmora
