// Which places outside itself a maker note tells of. Sources: the layouts of the makers' notes as the users
// of their cameras have written them down; a note of another layout tells nothing.
#pragma once

#include <string_view>
#include <vector>

#include "base/byte_reader.h"
#include "media/byte_window.h"
#include "media/exif_block_map.h"

namespace kalmora::exif {

// The values and directories that the note's first directory points at, as places in the block; they may pass
// its end. `note` lies in the block.
std::vector<Range> MakerNotePlaces(std::string_view block, const Range& note, ByteOrder blockOrder);

// True when a number in the note is the place of a picture in the file behind `segmentEnd`: a preview that
// stands behind the photo. Moving it would part the two. `block` begins at `blockStart` in the file.
bool PointsBehind(ByteWindow& file, std::string_view block, const Range& note, std::uint64_t blockStart,
                  std::uint64_t segmentEnd);

}  // namespace kalmora::exif
