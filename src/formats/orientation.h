// The eight ways in which a camera stores a picture (Exif orientation 1 to 8), and how each is undone.
#pragma once

namespace kalmora {

struct Turn {
    bool isMirrored = false;  // left to right, before it is turned
    int degrees = 0;          // clockwise
};

// What makes a stored picture upright: nothing for a value that is none of the 8.
constexpr Turn TurnUpright(int orientation) {
    constexpr Turn kTurns[8] = {{false, 0},  {true, 0},   {false, 180}, {true, 180},
                                {true, 270}, {false, 90}, {true, 90},   {false, 270}};
    return orientation >= 1 && orientation <= 8 ? kTurns[orientation - 1] : Turn{};
}

// True when the upright picture is as wide as the stored one is high. False for a value that is none of
// the 8.
constexpr bool SwapsSides(int orientation) { return TurnUpright(orientation).degrees % 180 != 0; }

}  // namespace kalmora
