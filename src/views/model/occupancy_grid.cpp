#include "views/model/occupancy_grid.h"

#include "base/random.h"

namespace kalmora {

void LineOccupancy::Clear() { counts_ = {}; }

int LineOccupancy::Score(int column, int line) const {
    int score = 3 * CountAt(column, line);
    if (column > 0) score += CountAt(column - 1, line);
    if (column + 1 < kColumns) score += CountAt(column + 1, line);
    return score;
}

int LineOccupancy::Place(int line) {
    int best = 0;
    int bestScore = -1;
    for (int draw = 0; draw < kPlaceTries; ++draw) {
        const int x = Random() % kPlaneSize;
        const int score = Score(x / 100, line);
        if (bestScore >= 0 && score >= bestScore) continue;
        best = x;
        bestScore = score;
        if (score == 0) break;
    }
    ++counts_[static_cast<std::size_t>(line)][static_cast<std::size_t>(best / 100)];
    return best;
}

void ScatterOccupancy::Clear() { counts_ = {}; }

int ScatterOccupancy::Score(int column, int row) const {
    int score = 5 * CountAt(column, row);
    if (column > 0) score += CountAt(column - 1, row);
    if (column + 1 < kSide) score += CountAt(column + 1, row);
    if (row > 0) score += CountAt(column, row - 1);
    if (row + 1 < kSide) score += CountAt(column, row + 1);
    return score;
}

Point ScatterOccupancy::Place() {
    Point best;
    int bestScore = -1;
    for (int draw = 0; draw < kPlaceTries; ++draw) {
        const int x = Random() % kPlaneSize;
        const int y = Random() % kPlaneSize;
        const int score = Score(x / 100, y / 100);
        if (bestScore >= 0 && score >= bestScore) continue;
        best = {x, y};
        bestScore = score;
        if (score == 0) break;
    }
    ++counts_[static_cast<std::size_t>(best.y / 100)][static_cast<std::size_t>(best.x / 100)];
    return best;
}

}  // namespace kalmora
