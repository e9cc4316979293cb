// What has to be corrected when an Exif block grows at its end, so that all that lies behind it in the file
// moves: the numbers in the block that name a place there, and what is read across the block's end.
//
// A number is moved along when the layout says that it is a place (TIFF, or a maker note whose base is sure),
// or when a picture lies there and its length is beside the number. A reader that follows it then reads the
// same bytes as before, from whatever base it counts. Anything else that names a place behind is a
// refusal.
//
// Plain functions on bytes; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_reader.h"
#include "media/byte_window.h"

namespace kalmora::exif {

// Four bytes in the block that become larger by what the block grows.
struct MovedNumber {
    std::size_t at = 0;
    ByteOrder order = ByteOrder::Little;
};

enum class GrowthRefusal {
    None,
    Block,  // a directory, or a value of one, reaches past the end and could be taken for something else then
    Note    // the maker note names something behind that is not known
};

struct BlockGrowth {
    GrowthRefusal refusal = GrowthRefusal::None;
    std::vector<MovedNumber> moved;
    // A thumbnail or a value of the maker note reaches so many bytes past the end: a reader takes
    // along what follows the block in the file. The same bytes have to follow it inside the longer block.
    std::size_t kept = 0;
};

// `block` lies in the file from `blockStart` on, and its segment ends with it.
BlockGrowth PlanBlockGrowth(ByteWindow& file, std::string_view block, std::uint64_t blockStart);

// Raises the numbers. False when one would not fit into its four bytes; the block is then not to be used.
bool MoveNumbers(std::string& block, const std::vector<MovedNumber>& moved, std::size_t by);

// Where the last picture ends that lies in the block and whose place and length are given anywhere in it;
// 0 when there is none.
std::size_t EndOfPicturesIn(std::string_view block, std::uint64_t blockStart);

}  // namespace kalmora::exif
