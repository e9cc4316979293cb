#include "media/user_comment.h"

#include <cstdint>
#include <span>
#include <string_view>

#include "media/exif_reader.h"
#include "media/exif_tags.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::size_t kCodeLength = 8;
constexpr std::string_view kUnicode("UNICODE\0", kCodeLength), kNoCode("\0\0\0\0\0\0\0\0", kCodeLength);

// How many units look like a character that people write in comments: no writer says which order it took.
int LikelyCharacters(std::string_view bytes, std::size_t highAt) {
    int likely = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const unsigned unit = static_cast<unsigned>(static_cast<std::uint8_t>(bytes[i + highAt])) << 8 |
                              static_cast<std::uint8_t>(bytes[i + 1 - highAt]);
        // Latin letters read the wrong way round look like rare Chinese ones.
        if (unit >= 0x09 && unit < 0x180) likely += 2;
        if ((unit >= 0x2000 && unit < 0x2070) || (unit >= 0x3000 && unit < 0x3100) ||
            (unit >= 0x4E00 && unit < 0xA000) || (unit >= 0xFF00 && unit < 0xFFF0))
            ++likely;
    }
    return likely;
}

std::string FromWide(std::string_view bytes) {
    bool bigEndian = LikelyCharacters(bytes, 0) > LikelyCharacters(bytes, 1);
    if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE")) {
        bigEndian = bytes.front() == '\xFE';
        bytes.remove_prefix(2);
    }
    bytes = bytes.substr(0, bytes.size() / 2 * 2);
    const std::string words =
        text::FromUtf16({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, bigEndian);
    return std::string(text::UpToZero(words));
}

}  // namespace

std::string UserCommentWords(const PhotoMetadata& metadata) {
    const std::string_view bytes = metadata.userComment;
    if (metadata.userCommentType == exif::kUndefinedType && bytes.size() > kCodeLength) {
        const std::string_view code = bytes.substr(0, kCodeLength), words = bytes.substr(kCodeLength);
        if (code == kUnicode) return FromWide(words);
        if (code == kNoCode) return std::string(text::UpToZero(words));
    }
    return std::string(text::UpToZero(UserCommentText(metadata).value_or("")));
}

}  // namespace kalmora
