// The data folder that is not there, as on a drive that is not mounted: the views say so until it is back.
#pragma once

#include "base/geometry.h"
#include "platform/canvas.h"

namespace kalmora {

enum class DataFolder { There, Away };

// Looks at the disk, remembers the answer and gives it. Any thread.
DataFolder LookForDataFolder();
// The answer of the last look; There before the first. Any thread.
DataFolder LastSeenDataFolder();

// A card in the middle of the window with the folder's path.
void DrawMissingFolder(Canvas& canvas, Size client);

}  // namespace kalmora
