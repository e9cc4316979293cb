// The index of the pictures in a file that holds several of them (CIPA DC-007, "MPF"): an APP2 segment of the
// first picture that says where the others are. Later pictures may have such a segment as well, which
// counts from its own place and so never needs a change when its picture moves as a whole.
//
// Plain functions on bytes; any thread. Nothing is guessed: an index that cannot be followed is none.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kalmora {

struct IndexedPicture {
    std::uint32_t length = 0;  // in bytes
    std::uint32_t offset = 0;  // from the index' header on; 0: the picture that holds the index
};

// Everything in the file from `place` on moves by `by` bytes.
struct FileShift {
    std::uint64_t place = 0;
    std::int64_t by = 0;
};

// What the header's place is counted from: the header lies this many bytes behind the start of the payload.
inline constexpr std::size_t kMultiPictureHead = 4;

// True for the payload of an APP2 segment that holds such an index, readable or not.
bool IsMultiPictureIndex(std::string_view payload);

// The pictures in the order of the index. Empty optional when it cannot be followed whole.
std::optional<std::vector<IndexedPicture>> ReadMultiPictureIndex(std::string_view payload);

// Corrects the offsets and the length of the first picture for the file after the shift. `headerAt` is the
// header's place in the file before it. The picture that holds the index begins the file; it becomes
// longer or shorter when the place lies in it or at its end. False when the index cannot be followed, when
// what it would have to say does not fit, or when the place lies inside another picture; the payload is then
// as it was.
bool ShiftMultiPictureIndex(std::string& payload, std::uint64_t headerAt, const FileShift& shift);

}  // namespace kalmora
