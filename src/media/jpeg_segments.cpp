#include "media/jpeg_segments.h"

#include "base/byte_reader.h"
#include "media/jpeg_markers.h"

namespace kalmora {

namespace {

constexpr int kMostSegments = 2000;

bool StandsAlone(std::uint8_t marker) {
    return marker == jpeg::kTemporary || (marker >= 0xD0 && marker <= jpeg::kStartOfImage);
}

// SOF0 to SOF15 without the three neighbours that are tables.
bool IsFrameHeader(std::uint8_t marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

}  // namespace

JpegSegmentWalk::JpegSegmentWalk(ByteWindow& file) : file_(file) {
    const auto start = file.At(0, 2);
    isJpeg_ = start.size() == 2 && start[0] == 0xFF && start[1] == jpeg::kStartOfImage;
}

bool JpegSegmentWalk::Next(JpegSegment& segment) {
    if (!isJpeg_) return false;
    while (segments_ < kMostSegments) {
        const auto mark = file_.At(position_, 2);
        if (mark.size() < 2) return false;
        const std::uint8_t marker = mark[1];
        if (mark[0] != 0xFF || marker == 0xFF || marker == 0x00) {
            if (mark[0] != 0xFF || marker == 0x00) metStrayBytes_ = true;
            if (++strayBytes_ > jpeg::kMostStrayBytes) return false;
            ++position_;
            continue;
        }
        ++segments_;
        if (StandsAlone(marker)) {
            position_ += 2;
            continue;
        }
        if (marker == jpeg::kEndOfImage || marker == jpeg::kStartOfScan) {
            reachedScan_ = marker == jpeg::kStartOfScan;
            return false;
        }
        const auto length = ByteReader(file_.At(position_ + 2, 2), ByteOrder::Big).U16(0);
        if (!length || *length < 2) return false;
        segment.marker = marker;
        segment.offset = position_;
        segment.payload = position_ + 4;
        segment.length = static_cast<std::uint32_t>(*length - 2);
        position_ += 2u + *length;
        return true;
    }
    return false;
}

std::optional<Size> ReadJpegFrameSize(ByteWindow& file) {
    JpegSegmentWalk walk(file);
    JpegSegment segment;
    while (walk.Next(segment)) {
        if (!IsFrameHeader(segment.marker)) continue;
        // Precision, then height and width.
        const ByteReader frame(file.At(segment.payload, 5), ByteOrder::Big);
        const auto height = frame.U16(1), width = frame.U16(3);
        if (!height || !width) return std::nullopt;
        return Size{*width, *height};
    }
    return std::nullopt;
}

}  // namespace kalmora
