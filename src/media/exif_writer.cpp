#include "media/exif_writer.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include "media/date_text.h"
#include "media/exif_block_map.h"
#include "media/exif_reader.h"
#include "media/jpeg_segments.h"
#include "media/maker_note_places.h"
#include "platform/text.h"

namespace kalmora {

namespace {

using exif::Edit;
using exif::EditResult;
using exif::Home;

constexpr std::uint16_t kByte = 1, kAscii = 2, kShort = 3, kLong = 4, kRational = 5, kUndefined = 7;
constexpr std::uint16_t kXResolution = 0x011A, kYResolution = 0x011B, kResolutionUnit = 0x0128,
                        kDateTime = 0x0132, kYCbCrPositioning = 0x0213, kExifVersion = 0x9000,
                        kDateTimeOriginal = 0x9003, kDateTimeDigitized = 0x9004, kComponents = 0x9101,
                        kMakerNote = 0x927C, kUserComment = 0x9286, kXpComment = 0x9C9C,
                        kFlashpixVersion = 0xA000, kColorSpace = 0xA001, kPixelWidth = 0xA002,
                        kPixelHeight = 0xA003;

constexpr std::uint8_t kApp0 = 0xE0, kApp1 = 0xE1, kApp2 = 0xE2;
constexpr std::uint32_t kMostPayload = 65533;
constexpr std::size_t kSegmentHead = 4;  // marker and length
constexpr std::string_view kExifHead("Exif\0\0", 6);

// What the segments in front of the picture say, as far as editing needs it.
struct JpegLayout {
    std::optional<JpegSegment> exif;                  // the segment whose block is edited
    std::uint32_t blockAt = 0;                        // of the TIFF header in its payload
    std::uint64_t behindStart = 2;                    // where a new segment goes: behind JFIF's own
    std::optional<std::uint64_t> pictures;            // of an index of further pictures in the file
    std::array<std::uint32_t, 3> density{72, 72, 2};  // across, down, Exif's unit
    Size size;
};

// Of a block that goes on in the next segment only the beginning can be followed.
bool IsContinuation(ByteWindow& file, const JpegSegment& segment) {
    const ByteReader head(file.At(segment.payload, std::min<std::size_t>(segment.length, 8)), ByteOrder::Big);
    return head.StartsWith(0, kExifHead) && !head.StartsWith(kExifHead.size(), "II") &&
           !head.StartsWith(kExifHead.size(), "MM");
}

bool StartsWith(ByteWindow& file, const JpegSegment& segment, std::string_view head) {
    if (segment.length < head.size()) return false;
    return ByteReader(file.At(segment.payload, head.size()), ByteOrder::Big).StartsWith(0, head);
}

void ReadDensity(ByteWindow& file, const JpegSegment& segment, JpegLayout& layout) {
    constexpr std::size_t kUnitAt = 7, kLength = 12;
    const ByteReader jfif(file.At(segment.payload, std::min<std::size_t>(segment.length, kLength)),
                          ByteOrder::Big);
    const auto unit = jfif.U8(kUnitAt);
    const auto across = jfif.U16(kUnitAt + 1), down = jfif.U16(kUnitAt + 3);
    // Unit 0 is a shape of pixels and no density.
    if (!unit || *unit == 0 || *unit > 2 || !across || !down || *across == 0 || *down == 0) return;
    layout.density = {*across, *down, *unit + 1u};
}

// Where the Exif block stands, by the reader's own rule, so that what is written is what is read. False when
// the file cannot be edited.
bool ReadLayout(ByteWindow& file, JpegLayout& layout) {
    exif::Block block;
    const bool hasBlock = exif::ReadBlock(file, block);
    JpegSegmentWalk walk(file);
    JpegSegment segment;
    bool hasExifSegment = false, isHead = true;
    while (walk.Next(segment)) {
        if (!file.Has(segment.payload, segment.length)) return false;
        const std::uint64_t end = segment.payload + segment.length;
        const bool isJfif = segment.marker == kApp0 && StartsWith(file, segment, "JFIF");
        if (isJfif) ReadDensity(file, segment, layout);
        isHead = isHead && segment.marker == kApp0 && (isJfif || StartsWith(file, segment, "JFXX"));
        if (isHead) layout.behindStart = end;
        if (segment.marker == kApp1 && IsContinuation(file, segment)) return false;
        if (segment.marker == kApp1 && StartsWith(file, segment, {"Exif\0", 5})) hasExifSegment = true;
        if (segment.marker == kApp2 && StartsWith(file, segment, {"MPF\0", 4}))
            layout.pictures = segment.offset;
        if (hasBlock && segment.marker == kApp1 && block.start > segment.payload && block.start < end) {
            layout.exif = segment;
            layout.blockAt = static_cast<std::uint32_t>(block.start - segment.payload);
        }
    }
    if (!walk.ReachedScan()) return false;
    const auto size = ReadJpegFrameSize(file);
    if (!size) return false;
    layout.size = *size;
    // Readers differ in what they make of a broken head; a new segment in front of it would change that.
    if (!layout.exif && walk.MetStrayBytes()) return false;
    // A block that the reader cannot make out is not to be hidden behind a second one.
    return layout.exif.has_value() == hasBlock && (hasBlock || !hasExifSegment);
}

// What every reader expects of a directory that is made anew.
void AddExpected(std::string_view block, const JpegLayout& layout, ExifEdits& edits) {
    const auto& [across, down, unit] = layout.density;
    if (block.empty()) {
        edits.push_back({Home::Main, kXResolution, kRational, {}, {across, 1}});
        edits.push_back({Home::Main, kYResolution, kRational, {}, {down, 1}});
        edits.push_back({Home::Main, kResolutionUnit, kShort, {}, {unit}});
        edits.push_back({Home::Main, kYCbCrPositioning, kShort, {}, {1}});
    }
    const bool wantsExif =
        std::any_of(edits.begin(), edits.end(), [](const Edit& edit) { return edit.home == Home::Exif; });
    if (!wantsExif || exif::HasDirectory(block, Home::Exif)) return;
    constexpr std::uint32_t kUncalibrated = 0xFFFF;
    edits.push_back({Home::Exif, kExifVersion, kUndefined, "0230"});
    edits.push_back({Home::Exif, kComponents, kUndefined, std::string("\1\2\3\0", 4)});
    edits.push_back({Home::Exif, kFlashpixVersion, kUndefined, "0100"});
    edits.push_back({Home::Exif, kColorSpace, kShort, {}, {kUncalibrated}});
    edits.push_back({Home::Exif, kPixelWidth, kLong, {}, {static_cast<std::uint32_t>(layout.size.width)}});
    edits.push_back({Home::Exif, kPixelHeight, kLong, {}, {static_cast<std::uint32_t>(layout.size.height)}});
}

// What stands behind the segment moves when it grows. False when something tells of a place there.
bool MayGrow(ByteWindow& file, const JpegLayout& layout, std::string_view block) {
    const std::uint64_t moved = layout.exif ? layout.exif->payload + layout.exif->length : layout.behindStart;
    // The index of further pictures counts from its own place, so it has to move with them.
    if (layout.pictures && *layout.pictures < moved) return false;
    exif::BlockMap map(block);
    if (block.empty() || !map.Follow() || !map.exif) return true;
    const exif::Entry* note = map.exif->Find(kMakerNote);
    if (!note || !note->IsFar()) return true;
    const exif::Range where = map.ValueOf(*note);
    if (where.end > block.size()) return true;
    return !exif::PointsBehind(file, block, where, layout.exif->payload + layout.blockAt, moved);
}

std::string BigEndian16(std::size_t value) {
    return {static_cast<char>(value >> 8 & 0xFF), static_cast<char>(value & 0xFF)};
}

RewriteResult ResultOf(EditResult result) {
    switch (result) {
        case EditResult::Edited:
            return RewriteResult::Written;
        case EditResult::Unchanged:
            return RewriteResult::Unchanged;
        case EditResult::TooLarge:
            return RewriteResult::TooLarge;
        case EditResult::Unreadable:
            break;
    }
    return RewriteResult::Unsupported;
}

}  // namespace

Edit UserCommentEdit(std::string_view bytes) {
    constexpr std::string_view kCode("ASCII\0\0\0", 8);
    return {Home::Exif, kUserComment, kUndefined, std::string(kCode) + std::string(bytes) + '\0'};
}

Edit XpCommentEdit(std::string_view utf8) {
    return {Home::Main, kXpComment, kByte, text::ToUtf16(utf8, false) + std::string(2, '\0')};
}

ExifEdits DateEdits(const SystemTime& date) {
    const std::string stamp = StampText(date) + '\0';
    return {{Home::Main, kDateTime, kAscii, stamp},
            {Home::Exif, kDateTimeOriginal, kAscii, stamp},
            {Home::Exif, kDateTimeDigitized, kAscii, stamp}};
}

Edit TextTagEdit(std::uint16_t tag, std::string_view utf8) {
    return {Home::Main, tag, kAscii, text::ToCp932(utf8)};
}

RewriteResult PlanExifChange(const std::string& path, std::span<const Edit> edits, FileChange& change) {
    ByteWindow file;
    return file.Open(path) ? PlanExifChange(file, edits, change) : RewriteResult::Unreadable;
}

RewriteResult PlanExifChange(ByteWindow& file, std::span<const Edit> edits, FileChange& change) {
    JpegLayout layout;
    if (!ReadLayout(file, layout)) return RewriteResult::Unsupported;
    std::string payload;
    std::uint64_t oldLength = 0;
    if (layout.exif) {
        auto stored = file.Copy(layout.exif->payload, layout.exif->length, kMostPayload);
        if (!stored) return RewriteResult::Unreadable;
        payload = std::move(*stored);
        oldLength = kSegmentHead + payload.size();
    }
    const std::string before = layout.exif ? payload.substr(0, layout.blockAt) : std::string(kExifHead);
    const std::string_view block =
        layout.exif ? std::string_view(payload).substr(layout.blockAt) : std::string_view();
    ExifEdits all(edits.begin(), edits.end());
    AddExpected(block, layout, all);
    const exif::Growth growth{
        .most = kMostPayload - before.size(), .step = kCheapGrowth, .overhead = kSegmentHead + before.size()};
    std::string edited;
    const EditResult result = exif::EditBlock(block, all, growth, edited);
    if (result != EditResult::Edited) return ResultOf(result);
    change.offset = layout.exif ? layout.exif->offset : layout.behindStart;
    if (edited.size() != block.size() && !MayGrow(file, layout, block)) return RewriteResult::Unsupported;
    change.oldLength = oldLength;
    change.content =
        std::string("\xFF\xE1") + BigEndian16(2 + before.size() + edited.size()) + before + edited;
    return RewriteResult::Written;
}

RewriteResult WriteExif(const std::string& path, std::span<const Edit> edits) {
    return SafeRewrite(path, [&](FileChange& change) { return PlanExifChange(path, edits, change); });
}

}  // namespace kalmora
