// Any bytes as a photo, and as an Exif block: words are written into them, and what was written is what is
// read, while every byte that was not to change stays as it was.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "media/byte_window.h"
#include "media/exif_block.h"
#include "media/exif_block_map.h"
#include "media/exif_writer.h"
#include "media/photo_metadata.h"

namespace {

using namespace kalmora;

void Require(bool condition) {
    if (!condition) std::abort();
}

std::string_view ValueIn(const exif::BlockMap& map, const exif::Entry& entry) {
    if (!entry.IsFar()) return {entry.field.data(), static_cast<std::size_t>(entry.length)};
    const exif::Range where = map.ValueOf(entry);
    Require(where.end <= map.Block().size());
    return map.Block().substr(static_cast<std::size_t>(where.begin), static_cast<std::size_t>(entry.length));
}

void RequireEdited(std::string_view block, const exif::Edit& edit) {
    exif::BlockMap map(block);
    Require(map.Follow() && (edit.home == exif::Home::Main || map.exif));
    const exif::Entry* entry = (edit.home == exif::Home::Main ? map.main : *map.exif).Find(edit.tag);
    Require(entry && entry->type == edit.type && ValueIn(map, *entry) == edit.value);
}

void EditAsBlock(std::string_view block, const std::array<exif::Edit, 2>& edits) {
    constexpr exif::Growth kGrowth{.most = 65'000, .step = 4096, .overhead = 10};
    std::string edited;
    if (exif::EditBlock(block, edits, kGrowth, edited) != exif::EditResult::Edited) return;
    Require(edited.size() >= block.size());
    Require(edited.size() <= kGrowth.most || edited.size() == block.size());
    for (const exif::Edit& edit : edits) RequireEdited(edited, edit);
    exif::BlockMap map(block);
    if (map.Follow())
        for (const exif::Range& range : map.foreign)
            if (range.end <= block.size())
                Require(block.substr(range.begin, range.end - range.begin) ==
                        std::string_view(edited).substr(range.begin, range.end - range.begin));
    std::string again;
    Require(exif::EditBlock(edited, edits, kGrowth, again) == exif::EditResult::Unchanged);
}

void EditAsPhoto(std::string_view photo, const std::array<exif::Edit, 2>& edits, const std::string& words) {
    ByteWindow file({reinterpret_cast<const std::uint8_t*>(photo.data()), photo.size()});
    FileChange change;
    if (PlanExifChange(file, edits, change) != RewriteResult::Written) return;
    Require(change.offset <= photo.size() && change.oldLength <= photo.size() - change.offset);
    Require(change.content.size() <= change.oldLength + 4 + 65'533);
    std::string written(photo);
    written.replace(change.offset, change.oldLength, change.content);
    ByteWindow after({reinterpret_cast<const std::uint8_t*>(written.data()), written.size()});
    PhotoMetadata before, now;
    ReadPhotoMetadata(file, "before", before, StoredSize::Read);
    ReadPhotoMetadata(after, "after", now, StoredSize::Read);
    Require(now.xpComment == words);
    Require(UserCommentText(now).has_value());
    Require(now.storedSize == before.storedSize && now.make == before.make);
    Require(now.orientation == before.orientation && now.dateTime.Text() == before.dateTime.Text());
    if (before.propertyCount + 20 < kMostProperties) Require(now.camera == before.camera);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::string words(data[0], 'w');
    const std::array<exif::Edit, 2> edits{XpCommentEdit(words),
                                          UserCommentEdit(std::string(data[1] * 16u, 'u'))};
    const std::string_view bytes(reinterpret_cast<const char*>(data + 2), size - 2);
    EditAsBlock(bytes, edits);
    EditAsPhoto(bytes, edits, words);
    return 0;
}
