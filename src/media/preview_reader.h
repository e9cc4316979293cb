// What the decoder of pictures needs to know from inside a photo: how it is to be turned, how large it is,
// and its embedded thumbnail.
#pragma once

#include <string>

#include "platform/image.h"

namespace kalmora {

// The hook for images::SetPreviewReader; the program sets it at start. Any thread. A file without metadata
// gives orientation 1, no size and no thumbnail. A thumbnail is handed out only when it begins as a JPEG and
// is at most 1 MB.
images::EmbeddedPreview ReadEmbeddedPreview(const std::string& path, bool withThumbnail);

}  // namespace kalmora
