#include "media/exif_writer.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include "media/date_text.h"
#include "media/exif_growth.h"
#include "media/exif_reader.h"
#include "media/exif_tags.h"
#include "media/jpeg_markers.h"
#include "media/jpeg_segments.h"
#include "media/multi_picture_index.h"
#include "media/photo_metadata.h"
#include "media/places_behind.h"
#include "text/text.h"

namespace kalmora {

namespace {

using exif::Edit;
using exif::EditResult;
using exif::Home;

constexpr std::uint16_t kMake = 0x010F, kXResolution = 0x011A, kYResolution = 0x011B,
                        kResolutionUnit = 0x0128, kDateTime = 0x0132, kYCbCrPositioning = 0x0213,
                        kExifVersion = 0x9000, kDateTimeOriginal = 0x9003, kDateTimeDigitized = 0x9004,
                        kComponents = 0x9101, kUserComment = 0x9286, kXpComment = 0x9C9C,
                        kFlashpixVersion = 0xA000, kColorSpace = 0xA001;

constexpr std::uint32_t kMostPayload = 65533;
constexpr std::uint64_t kMostBetween = 16u << 20;  // bytes of segments between the block and an index
constexpr std::string_view kExifHead("Exif\0\0", 6);

// What the segments in front of the picture say, as far as editing needs it.
struct JpegLayout {
    std::optional<JpegSegment> exif;                  // the segment whose block is edited
    std::uint32_t blockAt = 0;                        // of the TIFF header in its payload
    std::uint64_t behindStart = 2;                    // where a new segment goes: behind JFIF's own
    std::optional<JpegSegment> pictures;              // an index of further pictures in the file
    std::array<std::uint32_t, 3> density{72, 72, 2};  // across, down, Exif's unit
    Size size;
};

// Of a block that continues in the next segment only the beginning can be followed.
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

// Where the Exif block is, by the reader's own rule, so that what is written is what is read. Written
// when the file can be edited.
RewriteResult ReadLayout(ByteWindow& file, JpegLayout& layout) {
    exif::Block block;
    const bool hasBlock = exif::ReadBlock(file, block);
    JpegSegmentWalk walk(file);
    JpegSegment segment;
    bool hasExifSegment = false, isHead = true;
    if (!walk.IsJpeg()) return RewriteResult::Unsupported;
    while (walk.Next(segment)) {
        if (!file.Has(segment.payload, segment.length)) return RewriteResult::NotWhole;
        const std::uint64_t end = segment.payload + segment.length;
        const bool isJfif = segment.marker == jpeg::kApp0 && StartsWith(file, segment, "JFIF");
        if (isJfif) ReadDensity(file, segment, layout);
        isHead = isHead && segment.marker == jpeg::kApp0 && (isJfif || StartsWith(file, segment, "JFXX"));
        if (isHead) layout.behindStart = end;
        if (segment.marker == jpeg::kApp1 && IsContinuation(file, segment)) return RewriteResult::ExifUnclear;
        if (segment.marker == jpeg::kApp1 && StartsWith(file, segment, {"Exif\0", 5})) hasExifSegment = true;
        if (segment.marker == jpeg::kApp2 && StartsWith(file, segment, {"MPF\0", 4}) && !layout.pictures)
            layout.pictures = segment;
        if (hasBlock && segment.marker == jpeg::kApp1 && block.start > segment.payload && block.start < end) {
            layout.exif = segment;
            layout.blockAt = static_cast<std::uint32_t>(block.start - segment.payload);
        }
    }
    if (!walk.ReachedScan()) return RewriteResult::NotWhole;
    const auto size = ReadJpegFrameSize(file);
    if (!size) return RewriteResult::NotWhole;
    layout.size = *size;
    // Readers differ in what they make of a broken head; a new segment in front of it would change that.
    if (!layout.exif && walk.MetStrayBytes()) return RewriteResult::NotWhole;
    // A block that the reader cannot make out is not to be hidden behind a second one.
    const bool isClear = layout.exif.has_value() == hasBlock && (hasBlock || !hasExifSegment);
    return isClear ? RewriteResult::Written : RewriteResult::ExifUnclear;
}

// What every reader expects of a new directory.
void AddExpected(std::string_view block, const JpegLayout& layout, ExifEdits& edits) {
    const auto& [across, down, unit] = layout.density;
    if (block.empty()) {
        edits.push_back({Home::Main, kXResolution, exif::kRationalType, {}, {across, 1}});
        edits.push_back({Home::Main, kYResolution, exif::kRationalType, {}, {down, 1}});
        edits.push_back({Home::Main, kResolutionUnit, exif::kShortType, {}, {unit}});
        edits.push_back({Home::Main, kYCbCrPositioning, exif::kShortType, {}, {1}});
    }
    const bool wantsExif =
        std::any_of(edits.begin(), edits.end(), [](const Edit& edit) { return edit.home == Home::Exif; });
    if (!wantsExif || exif::HasDirectory(block, Home::Exif)) return;
    constexpr std::uint32_t kUncalibrated = 0xFFFF;
    edits.push_back({Home::Exif, kExifVersion, exif::kUndefinedType, "0230"});
    edits.push_back({Home::Exif, kComponents, exif::kUndefinedType, std::string("\1\2\3\0", 4)});
    edits.push_back({Home::Exif, kFlashpixVersion, exif::kUndefinedType, "0100"});
    edits.push_back({Home::Exif, kColorSpace, exif::kShortType, {}, {kUncalibrated}});
    edits.push_back({Home::Exif,
                     exif::kPixelWidth,
                     exif::kLongType,
                     {},
                     {static_cast<std::uint32_t>(layout.size.width)}});
    edits.push_back({Home::Exif,
                     exif::kPixelHeight,
                     exif::kLongType,
                     {},
                     {static_cast<std::uint32_t>(layout.size.height)}});
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
            return RewriteResult::ExifFull;
        case EditResult::Unreadable:
            break;
    }
    return RewriteResult::ExifUnclear;
}

RewriteResult ResultOf(exif::GrowthRefusal refusal) {
    switch (refusal) {
        case exif::GrowthRefusal::None:
            return RewriteResult::Written;
        case exif::GrowthRefusal::Block:
            return RewriteResult::ExifUnclear;
        case exif::GrowthRefusal::Note:
            break;
    }
    return RewriteResult::MakerNoteUnclear;
}

// The segment's new bytes, marker and all.
std::string SegmentBytes(std::uint8_t marker, std::string_view payload) {
    return std::string{'\xFF', static_cast<char>(marker)} + BigEndian16(2 + payload.size()) +
           std::string(payload);
}

// The photo as it is, and what is to be made of its Exif block.
class Plan {
public:
    Plan(ByteWindow& file, const JpegLayout& layout, std::string payload)
        : file_(file),
          layout_(layout),
          payload_(std::move(payload)),
          before_(layout.exif ? payload_.substr(0, layout.blockAt) : std::string(kExifHead)),
          block_(layout.exif ? std::string_view(payload_).substr(layout.blockAt) : std::string_view()),
          place_(layout.exif ? layout.exif->offset : layout.behindStart),
          behind_(layout.exif ? layout.exif->payload + layout.exif->length : layout.behindStart) {}

    RewriteResult Run(std::span<const Edit> edits, FileChange& change) {
        ExifEdits all(edits.begin(), edits.end());
        AddExpected(block_, layout_, all);
        exif::Growth growth{.most = kMostPayload - before_.size(),
                            .step = kCheapGrowth,
                            .overhead = jpeg::kSegmentHead + before_.size(),
                            .pastEnd = exif::Growth::PastEnd::Handled};
        if (HasFilling()) growth.taken = exif::EndOfPicturesIn(block_, BlockStart());
        std::string edited;
        const EditResult result = exif::EditBlock(block_, all, growth, edited);
        if (result != EditResult::Edited) return ResultOf(result);
        if (edited.size() == block_.size()) return Put(edited, change);
        const RewriteResult grown = Grow(all, growth, change);
        if (grown == RewriteResult::Written) return grown;
        // Nothing moves when there is room in the block.
        growth.most = block_.size();
        if (!block_.empty() && exif::EditBlock(block_, all, growth, edited) == EditResult::Edited &&
            edited.size() == block_.size())
            return Put(edited, change);
        return grown;
    }

private:
    bool HasFilling() const {
        constexpr std::size_t kLeast = 256;
        if (block_.size() < kLeast) return false;
        const std::string_view end = block_.substr(block_.size() - kLeast);
        return (end.front() == '\0' || end.front() == '\xFF') &&
               end.find_first_not_of(end.front()) == std::string_view::npos;
    }
    std::uint64_t BlockStart() const { return layout_.exif ? layout_.exif->payload + layout_.blockAt : 0; }

    // Corrects every number that names a place that moves.
    RewriteResult Grow(const ExifEdits& edits, exif::Growth growth, FileChange& change) {
        if (HasCountingTrailer(file_)) return RewriteResult::TrailerUnclear;
        exif::BlockGrowth others;
        if (!block_.empty()) others = exif::PlanBlockGrowth(file_, block_, BlockStart());
        if (others.refusal != exif::GrowthRefusal::None) return ResultOf(others.refusal);
        std::string kept;
        if (others.kept > 0) {
            auto behind = file_.Copy(behind_, others.kept, others.kept);
            if (!behind) return RewriteResult::ExifUnclear;
            kept = std::move(*behind);
            growth.kept = kept;
        }
        std::string edited;
        EditResult result = exif::EditBlock(block_, edits, growth, edited);
        if (result == EditResult::Edited && !others.moved.empty()) {
            std::string moved(block_);
            const std::size_t by = edited.size() - block_.size(), length = edited.size();
            if (!exif::MoveNumbers(moved, others.moved, by)) return RewriteResult::MakerNoteUnclear;
            result = exif::EditBlock(moved, edits, growth, edited);
            if (edited.size() != length) return RewriteResult::MakerNoteUnclear;
        }
        if (result != EditResult::Edited) return ResultOf(result);
        return Put(edited, change);
    }

    // The stretch of the file that changes: the block's segment, and the index of further pictures.
    RewriteResult Put(const std::string& edited, FileChange& change) {
        const std::string segment = SegmentBytes(jpeg::kApp1, before_ + edited);
        const std::uint64_t oldLength = behind_ - place_;
        change.offset = place_;
        change.oldLength = oldLength;
        change.content = segment;
        if (segment.size() == oldLength || !layout_.pictures) return RewriteResult::Written;
        const JpegSegment& index = *layout_.pictures;
        const bool isInFront = index.offset < place_;
        auto payload = file_.Copy(index.payload, index.length, kMostPayload);
        if (!payload) return RewriteResult::IndexUnclear;
        const std::string old = *payload;
        const FileShift shift{
            behind_, static_cast<std::int64_t>(segment.size()) - static_cast<std::int64_t>(oldLength)};
        // An index behind the block moves with the pictures, so what it says of them stays true.
        if (!ShiftMultiPictureIndex(*payload, index.payload + kMultiPictureHead, shift))
            return isInFront ? RewriteResult::IndexUnclear : RewriteResult::Written;
        if (*payload == old) return RewriteResult::Written;
        const std::uint64_t indexEnd = index.payload + index.length;
        const std::uint64_t gap = isInFront ? indexEnd : behind_, gapEnd = isInFront ? place_ : index.offset;
        const auto between = file_.Copy(gap, gapEnd - gap, kMostBetween);
        if (!between) return RewriteResult::IndexUnclear;
        const std::string indexSegment = SegmentBytes(jpeg::kApp2, *payload);
        change.offset = isInFront ? index.offset : place_;
        change.oldLength = (isInFront ? behind_ : indexEnd) - change.offset;
        change.content = isInFront ? indexSegment + *between + segment : segment + *between + indexSegment;
        return RewriteResult::Written;
    }

    ByteWindow& file_;
    const JpegLayout& layout_;
    const std::string payload_, before_;
    const std::string_view block_;
    const std::uint64_t place_, behind_;  // of what is replaced in the file
};

// The last check of a plan: the values that no edit touches read as they did. In a broken block they can lie
// across what an edit changes.
bool ReadsAsBefore(ByteWindow& file, std::span<const Edit> edits, const FileChange& change) {
    constexpr std::uint64_t kLooked = 256u << 10;  // behind the change; what lies further moves as a whole
    constexpr int kMostAdded = 20;                 // properties; past the most, no value is read at all
    const std::uint64_t length = std::min(file.Size(), change.offset + change.oldLength + kLooked);
    const auto old = file.Copy(0, length, length);
    if (!old) return false;
    std::string edited = *old;
    edited.replace(static_cast<std::size_t>(change.offset), static_cast<std::size_t>(change.oldLength),
                   change.content);
    const auto read = [](const std::string& bytes) {
        ByteWindow window({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
        PhotoMetadata metadata;
        ReadPhotoMetadata(window, "planned change", metadata, StoredSize::Read);
        return metadata;
    };
    const auto isEdited = [&](std::uint16_t tag) {
        return std::any_of(edits.begin(), edits.end(), [tag](const Edit& edit) { return edit.tag == tag; });
    };
    const PhotoMetadata before = read(*old), after = read(edited);
    if (before.orientation != after.orientation || before.storedSize != after.storedSize) return false;
    if (!isEdited(kMake) && before.make != after.make) return false;
    if (!isEdited(kDateTime) && before.dateTime.Text() != after.dateTime.Text()) return false;
    if (!isEdited(kDateTimeOriginal) && before.dateTimeOriginal.Text() != after.dateTimeOriginal.Text())
        return false;
    if (!isEdited(kXpComment) && before.xpComment != after.xpComment) return false;
    return before.propertyCount + kMostAdded >= kMostProperties || before.camera == after.camera;
}

}  // namespace

Edit UserCommentEdit(std::string_view bytes) {
    constexpr std::string_view kCode("ASCII\0\0\0", 8);
    return {Home::Exif, kUserComment, exif::kUndefinedType, std::string(kCode) + std::string(bytes) + '\0'};
}

Edit XpCommentEdit(std::string_view utf8) {
    return {Home::Main, kXpComment, exif::kByteType, text::ToUtf16(utf8, false) + std::string(2, '\0')};
}

ExifEdits DateEdits(const SystemTime& date) {
    const std::string stamp = StampText(date) + '\0';
    return {{Home::Main, kDateTime, exif::kAsciiType, stamp},
            {Home::Exif, kDateTimeOriginal, exif::kAsciiType, stamp},
            {Home::Exif, kDateTimeDigitized, exif::kAsciiType, stamp}};
}

Edit TextTagEdit(std::uint16_t tag, std::string_view utf8) {
    return {Home::Main, tag, exif::kAsciiType, text::ToCp932(utf8)};
}

RewriteResult PlanExifChange(const std::string& path, std::span<const Edit> edits, FileChange& change) {
    ByteWindow file;
    return file.Open(path) ? PlanExifChange(file, edits, change) : RewriteResult::Unreadable;
}

RewriteResult PlanExifChange(ByteWindow& file, std::span<const Edit> edits, FileChange& change) {
    JpegLayout layout;
    if (const RewriteResult read = ReadLayout(file, layout); read != RewriteResult::Written) return read;
    std::string payload;
    if (layout.exif) {
        auto stored = file.Copy(layout.exif->payload, layout.exif->length, kMostPayload);
        if (!stored) return RewriteResult::Unreadable;
        payload = std::move(*stored);
    }
    const RewriteResult result = Plan(file, layout, std::move(payload)).Run(edits, change);
    if (result == RewriteResult::Written && !ReadsAsBefore(file, edits, change))
        return RewriteResult::ExifUnclear;
    return result;
}

RewriteResult WriteExif(const std::string& path, std::span<const Edit> edits) {
    return SafeRewrite(path, [&](FileChange& change) { return PlanExifChange(path, edits, change); });
}

}  // namespace kalmora
