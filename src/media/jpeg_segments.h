// The walk over a JPEG's marker segments (ITU-T T.81, annex B) up to the picture's own data.
#pragma once

#include <cstdint>
#include <optional>

#include "base/geometry.h"
#include "media/byte_window.h"

namespace kalmora {

struct JpegSegment {
    std::uint8_t marker = 0;
    std::uint64_t offset = 0;   // of the marker's 0xFF in the file
    std::uint64_t payload = 0;  // of the bytes behind the length word
    std::uint32_t length = 0;   // of the payload; it may pass the end of a truncated file
};

// Steps from segment to segment by their lengths; what is stepped over is not read. Fill bytes, and a bounded
// number of stray bytes between segments, are passed over, as decoders do. Ends at the scan data, the end
// marker, a broken length, the end of the file or after 2000 segments. The window outlives the walk.
class JpegSegmentWalk {
public:
    explicit JpegSegmentWalk(ByteWindow& file);
    bool IsJpeg() const { return isJpeg_; }  // the file begins with the start marker
    bool Next(JpegSegment& segment);
    // After the last segment: whether what follows is the picture's scan data.
    bool ReachedScan() const { return reachedScan_; }
    // Whether bytes that belong to no segment, fill bytes apart, were passed over.
    bool MetStrayBytes() const { return metStrayBytes_; }

private:
    ByteWindow& file_;
    bool isJpeg_ = false;
    bool reachedScan_ = false;
    bool metStrayBytes_ = false;
    std::uint64_t position_ = 2;
    int segments_ = 0;
    int strayBytes_ = 0;
};

// The picture's stored width and height from its frame header; empty when none is found.
std::optional<Size> ReadJpegFrameSize(ByteWindow& file);

}  // namespace kalmora
