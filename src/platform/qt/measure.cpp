#include "platform/qt/measure.h"

#include <atomic>

#include "platform/qt/byte_source.h"
#include "platform/qt/picture_heads.h"

namespace kalmora {

namespace {
std::atomic<images::PreviewReader> previewReader = nullptr;
}  // namespace

images::PreviewReader qt::ThePreviewReader() { return previewReader; }

void images::SetPreviewReader(PreviewReader reader) { previewReader = reader; }

Size images::Measure(const std::string& path) {
    qt::FileSource source;
    if (!source.Open(path)) return Size{};
    const qt::PictureHead head = qt::ReadPictureHead(source);
    const PreviewReader readPreview = previewReader;
    if (head.format != qt::PictureHead::Format::Jpeg || readPreview == nullptr) return head.size;
    const int orientation = readPreview(path, false).orientation;
    const bool liesOnItsSide = orientation >= 5 && orientation <= 8;
    return liesOnItsSide ? Size{head.size.height, head.size.width} : head.size;
}

}  // namespace kalmora
