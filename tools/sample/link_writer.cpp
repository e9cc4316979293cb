#include "link_writer.h"

#include "bytes.h"

namespace sample {

std::vector<std::uint8_t> LinkBytes(const std::string& target, const std::string& relative) {
    constexpr std::uint32_t hasLinkInfo = 0x02;
    constexpr std::uint32_t hasRelativePath = 0x08;
    constexpr std::uint32_t isUnicode = 0x80;
    ByteWriter file;
    file.U32(0x4C);
    // The class of shell links, 00021401-0000-0000-C000-000000000046.
    file.U32(0x00021401);
    file.U32(0);
    file.U32(0x000000C0);
    file.U32(0x46000000);
    file.U32(hasLinkInfo | hasRelativePath | isUnicode);
    file.U32(0x80);  // the target is a plain file
    file.Zeros(24);  // its times: not kept
    file.U32(0);     // its size: not kept
    file.U32(0);     // icon
    file.U32(1);     // show as an ordinary window
    file.Zeros(12);

    constexpr std::uint32_t headerSize = 0x24;
    constexpr std::uint32_t volumeSize = 0x11;
    const std::u16string wide = Utf16(target);
    const auto pathOffset = headerSize + volumeSize;
    const auto suffixOffset = static_cast<std::uint32_t>(pathOffset + target.size() + 1);
    const std::uint32_t widePathOffset = (suffixOffset + 1 + 1) / 2 * 2;
    const auto wideSuffixOffset = static_cast<std::uint32_t>(widePathOffset + 2 * wide.size() + 2);
    const std::uint32_t infoSize = wideSuffixOffset + 2;
    file.U32(infoSize);
    file.U32(headerSize);
    file.U32(1);  // volume and local path
    file.U32(headerSize);
    file.U32(pathOffset);
    file.U32(0);  // no network path
    file.U32(suffixOffset);
    file.U32(widePathOffset);
    file.U32(wideSuffixOffset);
    file.U32(volumeSize);
    file.U32(3);  // a fixed disk
    file.U32(0);
    file.U32(0x10);
    file.U8(0);  // without a label
    file.Text(target);
    file.U8(0);
    file.U8(0);  // empty suffix
    file.Zeros(widePathOffset - suffixOffset - 1);
    for (const char16_t unit : wide) {
        file.U16(unit);
    }
    file.U16(0);
    file.U16(0);

    const std::u16string wideRelative = Utf16(relative);
    file.U16(static_cast<std::uint32_t>(wideRelative.size()));
    for (const char16_t unit : wideRelative) {
        file.U16(unit);
    }
    file.U32(0);  // no further blocks
    return file.Bytes();
}

}  // namespace sample
