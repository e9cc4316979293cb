// Changes tags in an Exif block (the bytes from the TIFF header on) without touching anything else in it.
// Sources: TIFF 6.0 for the directories, Exif 2.3 for the tags.
//
// A value that fits in the place of the old one goes there. Everything else - longer values, directories that
// get a new entry - goes to an area of our own at the end of the block, in room that is left free for the
// next time. What the camera wrote stays where it is, above all the maker note, whose offsets mean places in
// the block. The area says by its last bytes that it is ours and where it begins:
//
//     ... the camera's block ... | directories and values | zeros | "KALMORA\0", u32 where it begins, u32
//     length
//                                                                  of the block
//
// A block without these bytes, or with anything foreign in the area, gets a new area: in the filling at its
// end (zeros or FF bytes) when there is enough of it and nothing is known to lie there, so that nothing in
// the file moves, or else behind its end.
//
// A directory at which something else points as well stays as it is; the edited one is a copy in the area.
//
// Plain functions on bytes; any thread. Nothing is guessed: a block that cannot be followed is refused.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kalmora::exif {

// The directories that are edited.
enum class Home { Main, Exif };

// One tag and what it becomes: `value` for types of single bytes (1, 2, 7), as it is in the file;
// `numbers` for SHORT (3) and LONG (4), and in pairs for RATIONAL (5).
struct Edit {
    Home home = Home::Main;
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::string value;
    std::vector<std::uint32_t> numbers{};
};

enum class EditResult { Edited, Unchanged, Unreadable, TooLarge };

// How long the block may become, and in which steps.
struct Growth {
    std::size_t most = 0;      // bytes
    std::size_t step = 1;      // what is added to the file is a multiple of it while that stays below `most`
    std::size_t spare = 1024;  // room to be left for later edits
    std::size_t overhead = 0;  // bytes that come into the file with a new block
    std::size_t taken = 0;     // up to here the block is in use, as far as the caller knows more than it says
    // Whether the caller handles what reaches past the end of the block (exif_growth.h). Else that is a
    // reason not to grow.
    enum class PastEnd { Refused, Handled } pastEnd = PastEnd::Refused;
    std::string_view kept{};  // what lies directly behind the old end of a block that has grown
};

// Gives the edited block. An empty `block` means none: a new little-endian one is made. It never gets
// shorter. An edit that has no bytes is no edit. Unreadable: a directory that had to be followed could not
// be, or growing would give meaning to an entry that points past the end of the block.
EditResult EditBlock(std::string_view block, std::span<const Edit> edits, const Growth& growth,
                     std::string& edited);

// True when the block has that directory, whole. The main one is always asked first.
bool HasDirectory(std::string_view block, Home home);

}  // namespace kalmora::exif
