// Any bytes as a photo: its metadata are read without a fault, and what was read stays inside the bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "media/byte_window.h"
#include "media/estimation.h"
#include "media/exif_reader.h"
#include "media/photo_metadata.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kalmora;
    ByteWindow file({data, size});
    PhotoMetadata metadata;
    ReadPhotoMetadata(file, "fuzz", metadata, StoredSize::Read);
    Require(metadata.propertyCount >= 0 && metadata.userComment.size() <= size);
    Require(metadata.orientation >= 1 && metadata.orientation <= 8);
    Require(metadata.propertyCount <= kMostProperties || metadata.camera == CameraValues{});
    SystemTime date;
    if (ShotDateOf(metadata, date)) Require(date.year != 0 || date.month != 0 || date.day != 0);
    if (const auto text = UserCommentText(metadata)) ParseEstimations(*text);
    exif::Block block;
    if (exif::ReadBlock(file, block)) {
        Require(block.start + block.length >= block.start);
        for (const exif::Item& item : block.items) Require(!item || file.Has(item.offset, item.length));
    }
    return 0;
}
