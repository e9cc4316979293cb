// The picture of a day cell: which size it wants, and its place in the cell.
#pragma once

#include <string>

#include "base/geometry.h"
#include "platform/image.h"
#include "views/model/year_view.h"

namespace kalmora {

// The file whose picture stands for the entry: the image itself, a movie's still frame, empty for the rest.
std::string CellPicturePath(const DayEntry& entry);
// Device pixels that a cell of that logical size has.
Size CellPicturePixels(Size cell, double scale);

// Where a picture of that shape lies in the cell: its shape kept, centred; a margin below 3 pixels, or above
// half the cell, counts as none.
Rect FitInCell(Size picture, const Rect& cell);

}  // namespace kalmora
