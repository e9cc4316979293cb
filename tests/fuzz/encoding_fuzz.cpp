// Any bytes as a text file: the encoding is one of the known numbers, and what is decoded is kept by writing
// it.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "store/file_helpers.h"
#include "text/encoding.h"
#include "text/text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t length) {
    using namespace kalmora;
    const std::string_view text(reinterpret_cast<const char*>(bytes), length);
    const int encoding = DetectEncoding(text);
    if (encoding < 0 || encoding > 7 || encoding == 1 || encoding == 6) std::abort();
    const std::string decoded = DecodeText(text);
    if (text::IsValidUtf8(decoded) && DecodeText(EncodeText(decoded)) != decoded) std::abort();
    if (GetExtension(text).size() > 7 * 4) std::abort();
    return 0;
}
