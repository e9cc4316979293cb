// A picture file decoded, without any cache: format by content, thumbnail or picture, upright.
#pragma once

#include <QImage>
#include <string>

#include "base/byte_source.h"
#include "platform/image.h"

namespace kalmora::qt {

enum class DecodeOutcome {
    Decoded,
    NoPicture,  // the file was read and holds no picture that can be decoded: it will not until it changes
    Unreadable  // it could not be read now
};

struct DecodedPicture {
    DecodeOutcome outcome = DecodeOutcome::Unreadable;
    Image image;
};

// As images::Load says. Any thread; never throws.
DecodedPicture DecodePictureFile(const std::string& path, Size wanted, images::Preview preview,
                                 images::PreviewReader readPreview);

// The same on bytes, with what is known of their metadata.
QImage DecodePicture(const ByteSource& source, Size wanted, images::Preview preview,
                     const images::EmbeddedPreview& embedded);

}  // namespace kalmora::qt
