// Writing .lnk files: an absolute path in both alphabets, and the relative path beside it.
#include <string>

#include "formats/shell_link.h"
#include "formats/shell_link_layout.h"
#include "formats/wide_names.h"
#include "text/text.h"

namespace kalmora {

namespace {

class ByteWriter {
public:
    void U16(std::size_t value) { Little(value, 2); }
    void U32(std::size_t value) { Little(value, 4); }
    void U64(std::uint64_t value) { Little(value, 8); }
    void Text(std::string_view bytes) { bytes_ += bytes; }
    void Zeros(std::size_t count) { bytes_.append(count, '\0'); }
    std::size_t Length() const { return bytes_.size(); }
    const std::string& Bytes() const { return bytes_; }

private:
    void Little(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) bytes_.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
    }
    std::string bytes_;
};

std::string Header(std::uint32_t flags, const ShellLinkTarget& target) {
    ByteWriter header;
    header.U32(lnk::kHeaderSize);
    for (const std::uint8_t byte : lnk::kClassId) header.Text(std::string(1, static_cast<char>(byte)));
    header.U32(flags);
    header.U32(target.isFolder ? lnk::kAttributeFolder : lnk::kAttributeArchive);
    header.U64(target.created.ticks);
    header.U64(target.accessed.ticks);
    header.U64(target.written.ticks);
    header.U32(target.isFolder ? 0 : target.size & 0xFFFFFFFFu);
    header.U32(0);  // the icon's number
    header.U32(lnk::kShowNormal);
    header.Zeros(lnk::kHeaderSize - header.Length());
    return header.Bytes();
}

std::string Volume() {
    constexpr std::size_t kSize = 0x11, kLabelOffset = 0x10;
    ByteWriter volume;
    volume.U32(kSize);
    volume.U32(lnk::kFixedDrive);
    volume.U32(0);  // no serial number here
    volume.U32(kLabelOffset);
    volume.Zeros(1);  // an empty label
    return volume.Bytes();
}

std::string LinkInfo(const std::string& target) {
    const std::string volume = Volume();
    const std::string narrow = text::ToCp932(target);
    const std::string wide = ToWideName(target);
    const std::size_t volumeAt = lnk::kInfoHeaderSizeUnicode;
    const std::size_t narrowAt = volumeAt + volume.size();
    const std::size_t suffixAt = narrowAt + narrow.size() + 1;
    const std::size_t wideAt = suffixAt + 1;
    const std::size_t wideSuffixAt = wideAt + wide.size() + 2;
    const std::size_t size = wideSuffixAt + 2;

    ByteWriter info;
    info.U32(size);
    info.U32(lnk::kInfoHeaderSizeUnicode);
    info.U32(lnk::kHasLocalPath);
    info.U32(volumeAt);
    info.U32(narrowAt);
    info.U32(0);  // no network share
    info.U32(suffixAt);
    info.U32(wideAt);
    info.U32(wideSuffixAt);
    info.Text(volume);
    info.Text(narrow);
    info.Zeros(1);
    info.Zeros(1);  // the empty suffix
    info.Text(wide);
    info.Zeros(2);
    info.Zeros(2);  // the empty suffix again
    return info.Bytes();
}

}  // namespace

std::string MakeShellLink(const ShellLinkTarget& target) {
    constexpr std::size_t kMostUnits = 0xFFFF;
    const std::string relative = ToWideName(target.relative);
    const std::size_t relativeUnits = relative.size() / 2;
    const bool hasRelative = relativeUnits > 0 && relativeUnits <= kMostUnits;

    ByteWriter file;
    file.Text(
        Header(lnk::kHasLinkInfo | lnk::kIsUnicode | (hasRelative ? lnk::kHasRelativePath : 0u), target));
    file.Text(LinkInfo(target.path));
    if (hasRelative) {
        file.U16(relativeUnits);
        file.Text(relative);
    }
    file.U32(0);  // no further blocks
    return file.Bytes();
}

}  // namespace kalmora
