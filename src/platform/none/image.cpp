// The pictures of an executable that draws none: it is linked with this instead of a decoder, and so without
// the toolkit. What measures pictures does not decode (pictures/measure_picture.h).
#include "platform/image.h"

namespace kalmora {

images::DecodedPicture images::Decode(const std::string&, Size, Preview, const PreviewReader*) { return {}; }

Size Image::GetSize() const { return {}; }

std::size_t Image::ByteCount() const { return 0; }

}  // namespace kalmora
