// The mouse of a test that has no desktop.
#pragma once

#include "base/geometry.h"

namespace kalmora::test {

enum class LeftButton { Up, Down };

// From now on the cursor is at this place of the screen, over none of the program's windows. GUI thread.
void MovePointer(Point screen, LeftButton button);

}  // namespace kalmora::test
