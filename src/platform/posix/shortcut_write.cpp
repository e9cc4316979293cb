// Writing .lnk files: an absolute path in both alphabets, and the relative path beside it.
#include <algorithm>
#include <string>

#include "platform/files.h"
#include "platform/posix/path_names.h"
#include "platform/posix/shortcut.h"
#include "platform/posix/wide_names.h"
#include "platform/shell.h"
#include "text/text.h"

namespace kalmora::shell {

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

std::string Header(std::uint32_t flags, const std::string& target) {
    const std::optional<files::FileStatus> status = files::GetStatus(target);
    ByteWriter header;
    header.U32(lnk::kHeaderSize);
    for (const std::uint8_t byte : lnk::kClassId) header.Text(std::string(1, static_cast<char>(byte)));
    header.U32(flags);
    header.U32(status && status->isFolder ? lnk::kAttributeFolder : lnk::kAttributeArchive);
    header.U64(status ? status->created.ticks : 0);
    header.U64(status ? status->accessed.ticks : 0);
    header.U64(status ? status->written.ticks : 0);
    header.U32(status && !status->isFolder ? status->size & 0xFFFFFFFFu : 0);
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

// With the separators of the format, which begins at ".\" for what lies in the same folder. Empty when the
// way cannot be told: a name that has such a separator inside would come back as two.
std::string StoredRelativePath(const std::string& folder, const std::string& target) {
    std::string way = RelativePath(folder, target);
    if (way.empty() || way.find('\\') != std::string::npos) return {};
    if (!way.starts_with("../")) way.insert(0, "./");
    std::replace(way.begin(), way.end(), files::kSeparator, '\\');
    return way;
}

}  // namespace

std::string MakeShortcut(const std::string& targetPath, const std::string& linkFolder) {
    const std::string target = NormalizePath(AbsolutePathOf(targetPath));
    // The way is told between the real places: ".." leads out of the real folder, not back over a link to it.
    const std::string folder = PhysicalPath(files::Join(linkFolder, "."));
    const std::string relative = ToWideName(StoredRelativePath(folder, PhysicalPath(target)));
    const std::size_t relativeUnits = relative.size() / 2;
    constexpr std::size_t kMostUnits = 0xFFFF;
    const bool hasRelative = relativeUnits > 0 && relativeUnits <= kMostUnits;

    ByteWriter file;
    file.Text(
        Header(lnk::kHasLinkInfo | lnk::kIsUnicode | (hasRelative ? lnk::kHasRelativePath : 0u), target));
    file.Text(LinkInfo(target));
    if (hasRelative) {
        file.U16(relativeUnits);
        file.Text(relative);
    }
    file.U32(0);  // no further blocks
    return file.Bytes();
}

bool CreateShortcut(const std::string& linkPath, const std::string& targetPath) {
    if (targetPath.empty()) return false;
    return files::WriteWholeFile(linkPath, MakeShortcut(targetPath, FolderOfPath(linkPath))) ==
           files::FileResult::Done;
}

}  // namespace kalmora::shell
