#include "media/places_behind.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "base/byte_reader.h"
#include "media/jpeg_markers.h"
#include "media/multi_picture_index.h"

namespace kalmora {

namespace {

using namespace std::string_view_literals;

struct KnownSegment {
    std::uint8_t marker;
    std::string_view head;
};
// They name no place in the file, one that counts from its end, or one that is examined separately.
constexpr std::array kKnown{
    KnownSegment{0xE0, "JFIF\0"sv},
    KnownSegment{0xE0, "JFXX\0"sv},
    KnownSegment{0xE1, "Exif\0"sv},
    KnownSegment{0xE1, "http://ns.adobe.com/xap/1.0/\0"sv},
    KnownSegment{0xE1, "http://ns.adobe.com/xmp/extension/\0"sv},
    KnownSegment{0xE2, "ICC_PROFILE\0"sv},
    KnownSegment{0xE2, "MPF\0"sv},
    KnownSegment{0xED, "Photoshop 3.0\0"sv},
    KnownSegment{0xEE, "Adobe"sv},
};

bool StartsWith(ByteWindow& file, const JpegPart& part, std::string_view head) {
    if (part.length < jpeg::kSegmentHead + head.size()) return false;
    return ByteReader(file.At(part.offset + jpeg::kSegmentHead, head.size()), ByteOrder::Big)
        .StartsWith(0, head);
}

bool IsKnown(ByteWindow& file, const JpegPart& part) {
    return part.marker == jpeg::kComment ||
           std::any_of(kKnown.begin(), kKnown.end(), [&](const KnownSegment& known) {
               return known.marker == part.marker && StartsWith(file, part, known.head);
           });
}

// Where something begins or ends behind the picture, as far as it is known, ascending.
struct Edges {
    std::vector<std::uint64_t> begins, ends;
};

bool BeginsPicture(const ByteReader& bytes, std::size_t at) {
    // Some cameras leave the first byte of a preview out, or another in its place.
    return bytes.StartsWith(at + 1, "\xD8\xFF") || bytes.StartsWith(at, "II*\0"sv) ||
           bytes.StartsWith(at, "MM\0*"sv);
}

// Empty optional when there is too much of it to be looked at.
std::optional<Edges> FindEdges(ByteWindow& file, std::uint64_t from) {
    constexpr std::uint64_t kMostBytes = 256u << 20;
    constexpr std::size_t kGap = 16;  // so many zero bytes part two things
    const auto behind = file.Copy(from, file.Size() - from, kMostBytes);
    if (!behind) return std::nullopt;
    const ByteReader bytes({reinterpret_cast<const std::uint8_t*>(behind->data()), behind->size()},
                           ByteOrder::Big);
    Edges edges;
    std::size_t zeros = kGap;  // in front of this byte; the picture's end parts as well as a gap
    for (std::size_t at = 0; at < behind->size(); ++at) {
        const bool isZero = (*behind)[at] == '\0';
        if (at == 0 || (!isZero && zeros >= kGap) || BeginsPicture(bytes, at))
            edges.begins.push_back(from + at);
        zeros = isZero ? zeros + 1 : 0;
        if (zeros == kGap && at + 1 >= kGap) edges.ends.push_back(from + at + 1 - kGap);
    }
    edges.ends.push_back(file.Size());
    return edges;
}

// A maker note, and from where its numbers may count.
struct Note {
    std::string bytes;
    std::uint64_t at = 0;       // in the file
    std::uint64_t blockAt = 0;  // of the TIFF header
};

// Whether a number in the note is where something begins, or is one with a length beside it that ends where
// something does. Counted from the file's start, the block's, the note's or a head of the note.
bool MayPointBehind(const Note& note, std::uint64_t from, const Edges& edges) {
    constexpr std::uint64_t kLongestHead = 16;
    constexpr std::size_t kBeside = 64;
    const auto isOneOf = [](const std::vector<std::uint64_t>& places, std::uint64_t place) {
        return std::binary_search(places.begin(), places.end(), place);
    };
    std::vector<std::uint64_t> bases{0, note.blockAt};
    for (std::uint64_t head = 0; head <= kLongestHead; head += 2) bases.push_back(note.at + head);
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
        const ByteReader reader({reinterpret_cast<const std::uint8_t*>(note.bytes.data()), note.bytes.size()},
                                order);
        const auto hasLength = [&](std::size_t at, std::uint64_t place) {
            const std::size_t begin = at > kBeside ? at - kBeside : 0;
            for (std::size_t beside = begin; beside <= at + kBeside; ++beside) {
                const std::uint64_t length = reader.U32(beside).value_or(0);
                if (length != 0 && isOneOf(edges.ends, place + length)) return true;
            }
            return false;
        };
        for (std::size_t at = 0; at + 4 <= note.bytes.size(); ++at)
            for (const std::uint64_t base : bases) {
                const std::uint64_t place = base + *reader.U32(at);
                if (place < from || place >= edges.ends.back()) continue;
                if (isOneOf(edges.begins, place) || hasLength(at, place)) return true;
            }
    }
    return false;
}

}  // namespace

bool HasCountingTrailer(ByteWindow& file) {
    constexpr std::size_t kLength = 12;
    if (file.Size() < kLength) return false;
    const ByteReader tail(file.At(file.Size() - kLength, kLength), ByteOrder::Big);
    return tail.StartsWith(0, "AXS");
}

bool MayMoveBehind(ByteWindow& file, const JpegPicture& picture, const exif::Block* block) {
    if (HasCountingTrailer(file)) return false;
    for (const JpegPart& part : picture.parts)
        if (part.IsMetadata() && !IsKnown(file, part)) return false;
    if (!block) return true;
    if (block->thumbnailLength != 0 && block->thumbnailOffset + block->thumbnailLength > picture.end)
        return false;
    const exif::Item& note = block->Find(exif::Tag::MakerNote);
    if (!note) return true;
    const auto bytes = exif::ReadValue(file, *block, exif::Tag::MakerNote);
    const auto edges = FindEdges(file, picture.end);
    return bytes && edges && !MayPointBehind({*bytes, note.offset, block->start}, picture.end, *edges);
}

bool MovePlacesBehind(ByteWindow& file, const JpegPicture& picture, std::string& turned) {
    const FileShift shift{picture.end,
                          static_cast<std::int64_t>(turned.size()) - static_cast<std::int64_t>(picture.end)};
    bool isDone = true;
    for (const JpegPart& part : picture.parts) {
        if (part.IsScan()) break;
        if (part.marker != jpeg::kApp2 || !StartsWith(file, part, "MPF\0"sv)) continue;
        const auto begin = static_cast<std::size_t>(part.offset + jpeg::kSegmentHead);
        const std::size_t length = static_cast<std::size_t>(part.length) - jpeg::kSegmentHead;
        std::string payload = turned.substr(begin, length);
        if (ShiftMultiPictureIndex(payload, begin + kMultiPictureHead, shift))
            turned.replace(begin, length, payload);
        else
            isDone = false;
    }
    return isDone;
}

}  // namespace kalmora
