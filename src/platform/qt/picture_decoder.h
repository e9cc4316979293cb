// A picture decoded: format by content, thumbnail or picture, upright. Any thread; never throws.
#pragma once

#include <QImage>

#include "base/byte_source.h"
#include "platform/image.h"

namespace kalmora::qt {

// As images::Decode says, on bytes with what is known of their metadata. Null when nothing can be decoded.
QImage DecodePicture(const ByteSource& source, Size wanted, images::Preview preview,
                     const images::EmbeddedPreview& embedded);

}  // namespace kalmora::qt
