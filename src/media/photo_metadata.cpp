#include "media/photo_metadata.h"

#include <algorithm>
#include <span>

#include "base/log.h"
#include "media/date_text.h"
#include "media/exif_reader.h"
#include "media/exif_tags.h"
#include "media/jpeg_segments.h"
#include "media/maker_note.h"
#include "text/text.h"

namespace kalmora {

namespace {

using exif::Block;
using exif::Tag;

constexpr std::uint32_t kShortestDate = 10;  // "2008:05:06"

CameraValues ReadCameraValues(ByteWindow& file, const Block& block) {
    // Type BYTE and UNDEFINED carry no number; only the maker note is looked at there.
    const auto number = [&](Tag tag) {
        const std::uint16_t type = block.Find(tag).type;
        return type == exif::kByteType || type == exif::kUndefinedType ? 0
                                                                       : exif::FirstNumber(file, block, tag);
    };
    CameraValues values;
    values.iso = number(Tag::IsoSpeedRatings);
    values.shutter = number(Tag::ShutterSpeedValue);
    values.brightness = number(Tag::BrightnessValue);
    values.flash = number(Tag::Flash);
    values.exposureBias = number(Tag::ExposureBiasValue);
    values.exposureTime = number(Tag::ExposureTime);
    values.exposureProgram = number(Tag::ExposureProgram);
    values.aperture = number(Tag::ApertureValue);
    const exif::Item& note = block.Find(Tag::MakerNote);
    if (note.type == exif::kByteType || note.type == exif::kUndefinedType) {
        const MakerNoteValues found = WalkMakerNote(file, note.offset, note.length);
        values.mode = found.mode;
        values.face = found.face;
    }
    return values;
}

void ReadDate(ByteWindow& file, const Block& block, Tag tag, DateItem& date) {
    const exif::Item& item = block.Find(tag);
    if (!item) return;
    const auto bytes = file.At(item.offset, std::min<std::size_t>(item.length, date.text.size() - 1));
    if (bytes.empty()) return;
    date.type = item.type;
    date.length = item.length;
    *std::copy(bytes.begin(), bytes.end(), date.text.begin()) = '\0';
}

// A value of UTF-16 up to its first zero word. Comments of this kind are little-endian bytes in either byte
// order of the block; a value of type SHORT follows the block.
std::string DecodeWide(std::string_view bytes, std::uint16_t type, ByteOrder order) {
    std::size_t length = 0;
    while (length + 1 < bytes.size() && (bytes[length] != '\0' || bytes[length + 1] != '\0')) length += 2;
    const std::span<const std::uint8_t> units(reinterpret_cast<const std::uint8_t*>(bytes.data()), length);
    return text::FromUtf16(units, type == exif::kShortType && order == ByteOrder::Big);
}

void ReadTexts(ByteWindow& file, const Block& block, PhotoMetadata& metadata) {
    if (const auto comment = exif::ReadValue(file, block, Tag::XpComment))
        metadata.xpComment = DecodeWide(*comment, block.Find(Tag::XpComment).type, block.order);
    if (auto comment = exif::ReadValue(file, block, Tag::UserComment)) {
        metadata.userCommentType = block.Find(Tag::UserComment).type;
        metadata.userComment = std::move(*comment);
    }
    if (const auto make = exif::ReadValue(file, block, Tag::Make)) {
        const std::uint16_t type = block.Find(Tag::Make).type;
        metadata.make = type == exif::kAsciiType ? text::FromCp932(text::UpToZero(*make))
                                                 : DecodeWide(*make, type, block.order);
    }
}

void Reset(PhotoMetadata& metadata) {
    metadata.propertyCount = 0;
    metadata.camera = {};
    metadata.dateTime.type = metadata.dateTimeOriginal.type = metadata.userCommentType = 0;
    metadata.dateTime.length = metadata.dateTimeOriginal.length = 0;
    metadata.xpComment.reset();
    metadata.userComment.clear();
    metadata.make.reset();
    metadata.orientation = 1;
    metadata.thumbnailOffset = 0;
    metadata.thumbnailLength = 0;
    metadata.storedSize = {};
    metadata.written = {};
}

}  // namespace

bool ReadPhotoMetadata(const std::string& path, PhotoMetadata& metadata, StoredSize size) {
    ByteWindow file;
    if (!file.Open(path)) {
        Reset(metadata);
        return false;
    }
    return ReadPhotoMetadata(file, path, metadata, size);
}

bool ReadPhotoMetadata(ByteWindow& file, const std::string& name, PhotoMetadata& metadata, StoredSize size) {
    Reset(metadata);
    if (size == StoredSize::Read) metadata.written = file.Written();
    Block block;
    const bool hasBlock = exif::ReadBlock(file, block);
    if (hasBlock) {
        metadata.propertyCount = block.propertyCount;
        ReadDate(file, block, Tag::DateTime, metadata.dateTime);
        ReadDate(file, block, Tag::DateTimeOriginal, metadata.dateTimeOriginal);
        ReadTexts(file, block, metadata);
        const std::int32_t orientation = exif::FirstNumber(file, block, Tag::Orientation);
        if (orientation >= 1 && orientation <= 8) metadata.orientation = orientation;
        metadata.thumbnailOffset = block.thumbnailOffset;
        metadata.thumbnailLength = block.thumbnailLength;
        if (block.propertyCount > kMostProperties)
            Log("Exif Error: %s", name.c_str());
        else
            metadata.camera = ReadCameraValues(file, block);
    }
    if (size == StoredSize::Read) metadata.storedSize = ReadJpegFrameSize(file).value_or(Size{});
    return hasBlock || JpegSegmentWalk(file).IsJpeg();
}

bool ShotDateOf(const PhotoMetadata& metadata, SystemTime& date) {
    const DateItem& item = metadata.dateTime.IsPresent() ? metadata.dateTime : metadata.dateTimeOriginal;
    if (item.type != exif::kAsciiType || item.length < kShortestDate) return false;
    return ParseExifDate(item.Text(), date);
}

std::optional<std::string> UserCommentText(const PhotoMetadata& metadata) {
    constexpr std::size_t kCodeLength = 8;
    static constexpr std::array<std::string_view, 3> kCodes{std::string_view("ASCII\0\0\0", kCodeLength),
                                                            std::string_view("JIS\0\0\0\0\0", kCodeLength),
                                                            std::string_view("UNICODE\0", kCodeLength)};
    const std::string& bytes = metadata.userComment;
    if (bytes.empty() || bytes.front() == '\0') return std::nullopt;
    if (metadata.userCommentType == exif::kAsciiType) return std::string(text::UpToZero(bytes));
    if (metadata.userCommentType != exif::kUndefinedType || bytes.size() < kCodeLength) return std::nullopt;
    const std::string_view head = std::string_view(bytes).substr(0, kCodeLength);
    const bool hasCode = std::find(kCodes.begin(), kCodes.end(), head) != kCodes.end();
    return bytes.substr(hasCode ? kCodeLength : 0);
}

}  // namespace kalmora
