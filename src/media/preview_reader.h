// What the decoder of pictures needs to know from inside a photo: how it is to be turned, how large it is,
// and its embedded thumbnail.
#pragma once

#include <string>

#include "pictures/picture_cache.h"
#include "platform/image.h"

namespace kalmora {

// A thumbnail is handed out only when it begins as a JPEG and is at most 1 MB.
class ExifPreviewReader final : public images::PreviewReader {
public:
    images::EmbeddedPreview Read(const std::string& path, images::WithThumbnail withThumbnail) const override;
};

// One without state, for as long as the process lives. Any thread.
const ExifPreviewReader& ExifPreviews();

}  // namespace kalmora
