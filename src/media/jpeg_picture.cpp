#include "media/jpeg_picture.h"

#include <algorithm>

#include "base/byte_reader.h"
#include "media/jpeg_markers.h"

namespace kalmora {

namespace {

constexpr std::size_t kMostParts = 10'000;

bool IsRestart(std::uint8_t marker) { return marker >= jpeg::kFirstRestart && marker <= jpeg::kLastRestart; }

// The 0xFF of the first marker behind a scan's data. Empty optional at the end of the file.
std::optional<std::uint64_t> EndOfScan(ByteWindow& file, std::uint64_t at) {
    bool followsMark = false;  // the byte before is 0xFF
    for (;;) {
        const auto bytes = file.Some(at, ByteWindow::kStretch);
        if (bytes.empty()) return std::nullopt;
        for (auto it = bytes.begin(); it != bytes.end(); ++it) {
            if (!followsMark) it = std::find(it, bytes.end(), 0xFF);
            if (it == bytes.end()) break;
            if (followsMark && *it != 0x00 && *it != 0xFF && !IsRestart(*it))
                return at + static_cast<std::uint64_t>(it - bytes.begin()) - 1;
            followsMark = *it == 0xFF;
        }
        at += bytes.size();
    }
}

}  // namespace

std::optional<JpegPicture> FindJpegPicture(ByteWindow& file) {
    const auto start = file.At(0, 2);
    if (start.size() < 2 || start[0] != 0xFF || start[1] != jpeg::kStartOfImage) return std::nullopt;
    JpegPicture picture;
    int strayBytes = 0;
    for (std::uint64_t at = 2; picture.parts.size() < kMostParts;) {
        const auto mark = file.At(at, 2);
        if (mark.size() < 2) return std::nullopt;
        const std::uint8_t marker = mark[1];
        if (mark[0] != 0xFF || marker == 0xFF || marker == 0x00) {
            const bool isFill = mark[0] == 0xFF && marker == 0xFF;
            if (!isFill && ++strayBytes > jpeg::kMostStrayBytes) return std::nullopt;
            ++at;
            continue;
        }
        if (marker == jpeg::kEndOfImage) {
            picture.end = at + 2;
            return picture;
        }
        if (marker == jpeg::kTemporary || IsRestart(marker)) {
            at += 2;
            continue;
        }
        if (marker < jpeg::kFirstFrame || marker == jpeg::kStartOfImage) return std::nullopt;
        const auto length = ByteReader(file.At(at + 2, 2), ByteOrder::Big).U16(0);
        if (!length || *length < 2 || !file.Has(at, 2u + *length)) return std::nullopt;
        JpegPart part{marker, at, 2u + *length};
        if (part.IsScan()) {
            const auto end = EndOfScan(file, at + part.length);
            if (!end) return std::nullopt;
            part.length = *end - at;
        }
        picture.parts.push_back(part);
        at += part.length;
    }
    return std::nullopt;
}

}  // namespace kalmora
