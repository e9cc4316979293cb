// The picture that begins a JPEG file, from its start marker to its end marker (ITU-T T.81, annex B). What
// cameras, phones and programs put behind it is not part of it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "media/byte_window.h"

namespace kalmora {

struct JpegPart {
    std::uint8_t marker = 0;
    std::uint64_t offset = 0;  // of the marker's 0xFF in the file
    std::uint64_t length = 0;  // with its marker; that of a scan with the scan's data

    // An application's segment or a comment: what decoding the picture does not need, but for a few that say
    // what its colours mean.
    bool IsMetadata() const { return (marker >= 0xE0 && marker <= 0xEF) || marker == 0xFE; }
    bool IsScan() const { return marker == 0xDA; }
    bool IsFrameHeader() const {
        return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    }
    bool IsProgressive() const { return IsFrameHeader() && marker % 4 == 2; }
};

struct JpegPicture {
    std::vector<JpegPart> parts;  // between the two markers, in order; fill bytes and strays between them
    std::uint64_t end = 0;        // behind the end marker, which is two bytes long
};

// Walks segments by their lengths and scans by their data: stuffed bytes, restart markers and fill bytes are
// data. Empty optional when the file is no JPEG, when it ends first, when another picture begins in it, or
// past bounds that no camera reaches. Reads the whole picture.
std::optional<JpegPicture> FindJpegPicture(ByteWindow& file);

}  // namespace kalmora
