// The picture mode and the detected face from a camera's maker note.
#pragma once

#include <cstdint>

#include "media/byte_window.h"

namespace kalmora {

struct MakerNoteValues {
    std::int32_t mode = 0;  // the picture mode; 5 is the night scene
    std::int32_t face = 0;  // 1 when the note has the tag of detected faces
};

// Walks the note at `offset` as a list of 12-byte little-endian entries that begins 14 bytes into it: the
// layout of one family of cameras. No header is looked at, so the note of any camera gets the same walk; the
// search dialog says to the user that the two values mean something for that family only. A note of 26 bytes
// or less has no entry. Ends at the second entry with tag 0.
MakerNoteValues WalkMakerNote(ByteWindow& file, std::uint64_t offset, std::uint32_t length);

}  // namespace kalmora
