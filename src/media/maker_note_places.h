// Which places outside itself a maker note names. Sources: the layouts of the makers' notes as the users
// of their cameras have written them down; a note of another layout gives none.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/byte_reader.h"
#include "media/exif_layout.h"

namespace kalmora::exif {

// A value or a directory that the note's first directory points at.
struct NotePlace {
    Range where;             // in the block; it may pass its end
    std::size_t number = 0;  // the four bytes in the block that say where it is
    ByteOrder order = ByteOrder::Little;
};

struct NotePlaces {
    std::vector<NotePlace> places;
    std::uint64_t base = 0;       // from where their numbers count, in the block
    std::uint64_t directory = 0;  // where the note's first directory begins, in the block
};

// What the note says. No places when its layout is not known. `note` lies in the block.
NotePlaces MakerNotePlaces(std::string_view block, const Range& note, ByteOrder blockOrder);

}  // namespace kalmora::exif
