// What has to be put right when an Exif block grows at its end, so that all that stands behind it in the file
// moves: the numbers in the block that tell of a place there, and what is read across the block's end.
//
// A number is moved along when the layout says that it is a place (TIFF, or a maker note whose base is sure),
// or when a picture stands there and its length stands beside the number. Whoever follows it then reads the
// bytes that he read before, from wherever he counts. Anything else that tells of a place behind is a
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
    Note    // the maker note tells of something behind that is not known
};

struct BlockGrowth {
    GrowthRefusal refusal = GrowthRefusal::None;
    std::vector<MovedNumber> moved;
    // A thumbnail or a value of the maker note reaches so many bytes past the end: whoever reads it takes
    // along what follows the block in the file. The same bytes have to follow it inside the longer block.
    std::size_t kept = 0;
};

// `block` stands in the file from `blockStart` on, and its segment ends with it.
BlockGrowth PlanBlockGrowth(ByteWindow& file, std::string_view block, std::uint64_t blockStart);

// Raises the numbers. False when one would not fit into its four bytes; the block is then not to be used.
bool MoveNumbers(std::string& block, const std::vector<MovedNumber>& moved, std::size_t by);

// Where the last picture ends that stands in the block and of which place and length are told anywhere in it;
// 0 when there is none.
std::size_t EndOfPicturesIn(std::string_view block, std::uint64_t blockStart);

}  // namespace kalmora::exif
