// The three key files: read when the program starts, written when it ends.
#pragma once

#include "input/key_config.h"

namespace kalmora {

// Reads them in their order. A file that cannot be read leaves the default keys in force; that is
// reported inside the message loop. GUI thread.
void LoadKeyFiles(KeyConfig& keys);
// On failure the old file stays. Any thread, while no key is pressed.
void SaveKeyFiles(const KeyConfig& keys);

}  // namespace kalmora
