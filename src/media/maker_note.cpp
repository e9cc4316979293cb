#include "media/maker_note.h"

#include "base/byte_reader.h"
#include "media/exif_layout.h"

namespace kalmora {

namespace {

constexpr std::uint32_t kFirstEntry = 14;
constexpr std::uint16_t kPictureMode = 0x1031;
constexpr std::uint16_t kFacesDetected = 0x4000;

}  // namespace

MakerNoteValues WalkMakerNote(ByteWindow& file, std::uint64_t offset, std::uint32_t length) {
    MakerNoteValues values;
    if (length <= kFirstEntry + exif::kEntryLength) return values;
    int zeroTags = 0;
    std::uint32_t position = kFirstEntry;
    for (;;) {
        // As many entries at a time as are in memory; one that is not complete there is fetched alone.
        auto bytes = file.Some(offset + position, length - position);
        if (bytes.size() < exif::kEntryLength) bytes = file.At(offset + position, exif::kEntryLength);
        if (bytes.empty()) return values;
        const ByteReader entries(bytes, ByteOrder::Little);
        for (std::size_t at = 0; entries.Has(at, exif::kEntryLength); at += exif::kEntryLength) {
            const std::uint16_t tag = *entries.U16(at);
            if (tag == 0 && ++zeroTags == 2) return values;
            if (tag == kPictureMode) values.mode = static_cast<std::int32_t>(*entries.U32(at + 8));
            if (tag == kFacesDetected) values.face = 1;  // the tag alone says so; its value does not matter
            position += exif::kEntryLength;
            // The first entry is read in any case, a later one only when it ends before the note's last byte.
            // That leaves out an entry that ends just at the end, which is meant.
            if (position + exif::kEntryLength >= length) return values;
        }
    }
}

}  // namespace kalmora
