// A photo turned, as one change of its file: the picture that begins it is turned by a tool, and everything
// else in the file stays as it is.
//
// What lies behind the picture (further pictures, previews, a phone's trailer, a movie) keeps not only its
// bytes but its place, so that what names it stays correct: the turned picture gets code tables made for
// it, which is nearly always enough for it not to be longer than the original, and fill bytes in front of its
// end marker up to the same length. Where it is longer, the index of further pictures is corrected, and the
// photo is refused when anything else in it may name a place there.
#pragma once

#include <string>

#include "rewrite/safe_rewrite.h"

namespace kalmora {

enum class TurnPlan {
    Ready,
    NotJpeg,
    Damaged,     // the picture has no end, or data that its decoder has to guess at
    ToolFailed,  // or it made something else than the turned picture
    WouldMove    // something behind the picture would lose its place, and something may name that place
};

// Degrees clockwise as it is seen: 90, 180 or 270; for a picture that is stored mirrored the tool gets the
// turn that looks like that. Fills `change` when the result is Ready. The caller holds the lock of the
// scratch folder. Waits for the tool, as long as that takes.
TurnPlan PlanTurn(const std::string& path, int degrees, const std::string& tool,
                  const std::string& scratchFolder, FileChange& change);

}  // namespace kalmora
