// Where there is room: a coarse count of what lies where, so that new objects go to empty places. Pure.
#pragma once

#include <array>
#include <vector>

#include "base/geometry.h"

namespace kalmora {

inline constexpr int kPlaneSize = 2000;  // the abstract width and height on which objects are strewn
inline constexpr int kPlaceTries = 10;

// 20 columns by up to 24 lines: the lines of a day. Not shared between threads.
class LineOccupancy {
public:
    void Clear();
    // Draws up to ten places on the line and takes the emptiest (the earlier on a tie): 0 to 1999.
    int Place(int line);
    int CountAt(int column, int line) const {
        return counts_[static_cast<std::size_t>(line)][static_cast<std::size_t>(column)];
    }

private:
    static constexpr int kColumns = 20;
    int Score(int column, int line) const;
    std::array<std::array<int, 20>, 24> counts_{};
};

// 20 by 20: the scatter of a whole period. Not shared between threads.
class ScatterOccupancy {
public:
    void Clear();
    // PlaceInScatter: both coordinates 0 to 1999.
    Point Place();
    int CountAt(int column, int row) const {
        return counts_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }

private:
    static constexpr int kSide = 20;
    int Score(int column, int row) const;
    std::array<std::array<int, 20>, 20> counts_{};
};

// From a place on the plane to the upper left corner of an object of that size in an area: it never leaves
// it.
constexpr Point PlaneToArea(Point plane, Size area, Size object) {
    return {(area.width - object.width) * plane.x / kPlaneSize,
            (area.height - object.height) * plane.y / kPlaneSize};
}

}  // namespace kalmora
