// JPEGs as the codec sees them: whether the data of one are sound, and one turned by way of its pixels. No
// window system is needed. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kalmora::jpeg {

enum class Health {
    Sound,
    StrayBytes,  // bytes that belong to nothing lie between its parts; the picture itself is whole
    Damaged      // or no JPEG, or one that no memory could hold
};

struct Examination {
    Health health = Health::Damaged;
    // How many stray bytes lie in front of the end marker, its fill bytes not counted, and neither up to
    // eight that the decoder had read ahead.
    std::uint64_t strayBeforeEnd = 0;
};

// Reads the picture's data as a decoder does, without making pixels of them.
Examination Examine(std::string_view jpeg);

// The picture turned clockwise by 90, 180 or 270 degrees and encoded again, in the best quality of a few that
// takes at most `most` bytes. Empty when it cannot be decoded or does not fit. For small pictures.
std::string TurnByPixels(std::string_view jpeg, int degrees, std::size_t most);

}  // namespace kalmora::jpeg
