#include "pictures/measure_picture.h"

#include "formats/orientation.h"
#include "formats/picture_heads.h"
#include "platform/file_source.h"
#include "platform/image.h"

namespace kalmora {

Size MeasurePicture(const std::string& path, const images::PreviewReader* reader) {
    FileSource source;
    if (!source.Open(path)) return Size{};
    const PictureHead head = ReadPictureHead(source);
    if (head.format != PictureHead::Format::Jpeg || reader == nullptr) return head.size;
    const bool isSwapped = SwapsSides(reader->Read(path, images::WithThumbnail::No).orientation);
    return isSwapped ? Size{head.size.height, head.size.width} : head.size;
}

}  // namespace kalmora
