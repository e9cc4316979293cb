#include "platform/qt/measure.h"

#include <atomic>

#include "formats/picture_heads.h"
#include "platform/file_source.h"

namespace kalmora {

namespace {
std::atomic<images::PreviewReader> previewReader = nullptr;
}  // namespace

images::PreviewReader qt::ThePreviewReader() { return previewReader; }

void images::SetPreviewReader(PreviewReader reader) { previewReader = reader; }

Size images::Measure(const std::string& path) {
    FileSource source;
    if (!source.Open(path)) return Size{};
    const PictureHead head = ReadPictureHead(source);
    const PreviewReader readPreview = previewReader;
    if (head.format != PictureHead::Format::Jpeg || readPreview == nullptr) return head.size;
    const int orientation = readPreview(path, false).orientation;
    const bool liesOnItsSide = orientation >= 5 && orientation <= 8;
    return liesOnItsSide ? Size{head.size.height, head.size.width} : head.size;
}

}  // namespace kalmora
