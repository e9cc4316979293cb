#include "views/paint/cell_picture.h"

#include <algorithm>

#include "media/my_object.h"
#include "media/photo.h"

namespace kalmora {

std::string CellPicturePath(const DayEntry& entry) {
    if (entry.kind == ObjectKind::Image) return entry.path;
    if (entry.kind == ObjectKind::Movie) return MovieFrame(entry.path);
    return {};
}

Size CellPicturePixels(Size cell, double scale) {
    return {std::max(1, static_cast<int>(cell.width * scale + 0.5)),
            std::max(1, static_cast<int>(cell.height * scale + 0.5))};
}

Rect FitInCell(Size picture, const Rect& cell) {
    if (picture.IsEmpty() || cell.IsEmpty()) return {};
    const auto margin = [](int whole, double scaled) {
        const int value = static_cast<int>((whole - scaled) * 0.5);
        return value < 3 || value > whole / 2 ? 0 : value;
    };
    const double scale = std::min(static_cast<double>(cell.width) / picture.width,
                                  static_cast<double>(cell.height) / picture.height);
    const int marginX = margin(cell.width, picture.width * scale);
    const int marginY = margin(cell.height, picture.height * scale);
    return {cell.x + marginX, cell.y + marginY, cell.width - 2 * marginX, cell.height - 2 * marginY};
}

}  // namespace kalmora
