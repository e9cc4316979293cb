#include "media/maker_note.h"

#include "base/byte_reader.h"

namespace kalmora {

namespace {

constexpr std::uint32_t kFirstEntry = 14;
constexpr std::uint32_t kEntryLength = 12;
constexpr std::uint16_t kPictureMode = 0x1031;
constexpr std::uint16_t kFacesDetected = 0x4000;

}  // namespace

MakerNoteValues WalkMakerNote(ByteWindow& file, std::uint64_t offset, std::uint32_t length) {
    MakerNoteValues values;
    if (length <= kFirstEntry + kEntryLength) return values;
    int zeroTags = 0;
    // The first entry is read in any case; a later one only when it ends before the note's last byte. That
    // leaves out an entry that ends just at the end, which is meant.
    std::uint32_t position = kFirstEntry;
    do {
        const ByteReader entry(file.At(offset + position, kEntryLength), ByteOrder::Little);
        const auto tag = entry.U16(0);
        const auto value = entry.U32(8);
        if (!tag || !value) break;
        if (*tag == 0 && ++zeroTags == 2) break;
        if (*tag == kPictureMode) values.mode = static_cast<std::int32_t>(*value);
        if (*tag == kFacesDetected) values.face = 1;  // the tag tells it, whatever its value
        position += kEntryLength;
    } while (position + kEntryLength < length);
    return values;
}

}  // namespace kalmora
