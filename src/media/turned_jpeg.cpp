#include "media/turned_jpeg.h"

#include <algorithm>
#include <span>

#include "media/jpeg_segments.h"

namespace kalmora {

namespace {

constexpr std::size_t kMostHeadBytes = 64u << 20, kMostSegmentBytes = 2 + 65535;
constexpr std::size_t kStartLength = 2;
constexpr char kFill = '\xFF';
constexpr std::string_view kEndMarker = "\xFF\xD9";

}  // namespace

std::string HeadOf(ByteWindow& original, const JpegPicture& picture) {
    const auto& parts = picture.parts;
    const auto scan =
        std::find_if(parts.begin(), parts.end(), [](const JpegPart& part) { return part.IsScan(); });
    std::uint64_t end = kStartLength;
    for (auto part = parts.begin(); part != scan; ++part)
        if (part->IsMetadata()) end = part->offset + part->length;
    auto head = original.Copy(0, end, kMostHeadBytes);
    if (!head) return {};
    for (auto part = parts.begin(); part != scan && part->offset < end; ++part)
        if (!part->IsMetadata())
            std::fill_n(head->begin() + static_cast<std::ptrdiff_t>(part->offset), part->length, kFill);
    for (auto part = scan; part != parts.end(); ++part) {
        if (!part->IsMetadata()) continue;
        const auto segment = original.Copy(part->offset, part->length, kMostSegmentBytes);
        if (!segment) return {};
        *head += *segment;
    }
    return *head;
}

std::string DataOf(std::string_view turned, Size size) {
    ByteWindow window(std::span(reinterpret_cast<const std::uint8_t*>(turned.data()), turned.size()));
    const auto picture = FindJpegPicture(window);
    if (!picture || picture->end != turned.size() || ReadJpegFrameSize(window) != size) return {};
    std::string data;
    data.reserve(turned.size());
    bool hasScan = false;
    for (const JpegPart& part : picture->parts) {
        if (part.IsMetadata()) continue;
        hasScan = hasScan || part.IsScan();
        data += turned.substr(static_cast<std::size_t>(part.offset), static_cast<std::size_t>(part.length));
    }
    return hasScan ? data : std::string();
}

std::string WholeJpeg(std::string_view head, std::string_view data, std::string_view strays) {
    std::string jpeg;
    jpeg.reserve(head.size() + data.size() + strays.size() + kEndMarker.size());
    return jpeg.append(head).append(data).append(strays).append(kEndMarker);
}

void FillUp(std::string& jpeg, std::size_t length) {
    if (jpeg.size() < kEndMarker.size() || jpeg.size() >= length) return;
    jpeg.insert(jpeg.size() - kEndMarker.size(), length - jpeg.size(), kFill);
}

}  // namespace kalmora
