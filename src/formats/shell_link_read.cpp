// Reading .lnk files of any program.
#include <optional>
#include <string>

#include "base/byte_reader.h"
#include "formats/shell_link.h"
#include "formats/shell_link_layout.h"
#include "formats/wide_names.h"
#include "text/text.h"

namespace kalmora {

namespace {

// Longer than any path of either platform; what claims to be longer is no path.
constexpr std::size_t kLongestPath = 32768;

std::string_view AsText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// A text in code page 932 that ends with a zero byte. Empty when it does not end inside the reader.
std::string NarrowText(const ByteReader& reader, std::size_t offset) {
    for (std::size_t length = 0; length <= kLongestPath; ++length) {
        const std::optional<std::uint8_t> byte = reader.U8(offset + length);
        if (!byte) return {};
        if (*byte == 0) return text::FromCp932(AsText(reader.Bytes(offset, length)));
    }
    return {};
}

std::string WideText(const ByteReader& reader, std::size_t offset) {
    for (std::size_t length = 0; length <= kLongestPath; ++length) {
        const std::optional<std::uint16_t> unit = reader.U16(offset + length * 2);
        if (!unit) return {};
        if (*unit == 0) return FromWideName(reader.Bytes(offset, length * 2));
    }
    return {};
}

// The text that the number at `field` leads to; empty where that is 0 or leads outside.
template <std::string (*Read)(const ByteReader&, std::size_t)>
std::string TextAt(const ByteReader& block, std::size_t field) {
    const std::optional<std::uint32_t> offset = block.U32(field);
    return offset && *offset != 0 ? Read(block, *offset) : std::string();
}

std::string SharePath(const ByteReader& info) {
    const std::optional<std::uint32_t> offset = info.U32(lnk::kNetworkOffset);
    if (!offset || *offset == 0) return {};
    const ByteReader share = info.Sub(*offset);
    const std::optional<std::uint32_t> nameOffset = share.U32(lnk::kShareNameOffset);
    if (nameOffset && *nameOffset > lnk::kShareHeaderSize)
        if (std::string name = TextAt<WideText>(share, lnk::kShareNameUnicodeOffset); !name.empty())
            return name;
    return TextAt<NarrowText>(share, lnk::kShareNameOffset);
}

// The absolute path that the block stores; empty when there is none.
std::string AbsolutePath(const ByteReader& info) {
    const std::uint32_t flags = info.U32(lnk::kInfoFlagsOffset).value_or(0);
    const bool hasUnicode = info.U32(lnk::kInfoHeaderSizeOffset).value_or(0) >= lnk::kInfoHeaderSizeUnicode;
    std::string base, suffix;
    if (hasUnicode) suffix = TextAt<WideText>(info, lnk::kSuffixUnicodeOffset);
    if (suffix.empty()) suffix = TextAt<NarrowText>(info, lnk::kSuffixOffset);
    if (flags & lnk::kHasLocalPath) {
        if (hasUnicode) base = TextAt<WideText>(info, lnk::kLocalPathUnicodeOffset);
        if (base.empty()) base = TextAt<NarrowText>(info, lnk::kLocalPathOffset);
    } else if (flags & lnk::kHasNetworkPath) {
        base = SharePath(info);
    }
    if (base.empty() || suffix.empty()) return base;
    const char last = base.back();
    if (last != '\\' && last != '/') base.push_back(base.front() == '/' ? '/' : '\\');
    return base + suffix;
}

std::optional<ShellLinkPaths> ReadPaths(const ByteReader& file) {
    if (file.U32(0) != std::uint32_t{lnk::kHeaderSize} || !file.Has(0, lnk::kHeaderSize)) return std::nullopt;
    if (!file.StartsWith(lnk::kClassIdOffset, AsText(lnk::kClassId))) return std::nullopt;
    const std::uint32_t flags = file.U32(lnk::kFlagsOffset).value_or(0);
    std::size_t at = lnk::kHeaderSize;
    ShellLinkPaths paths;
    if (flags & lnk::kHasTargetIdList) {
        const std::optional<std::uint16_t> length = file.U16(at);
        if (!length) return paths;
        at += 2 + std::size_t{*length};
    }
    if ((flags & lnk::kHasLinkInfo) && !(flags & lnk::kForceNoLinkInfo)) {
        const std::optional<std::uint32_t> length = file.U32(at);
        if (!length || *length < lnk::kInfoHeaderSize) return paths;
        paths.absolute = AbsolutePath(file.Sub(at, *length));
        at += *length;
    }
    const bool isWide = flags & lnk::kIsUnicode;
    if (flags & lnk::kHasName) {
        const std::optional<std::uint16_t> count = file.U16(at);
        if (!count) return paths;
        at += 2 + std::size_t{*count} * (isWide ? 2 : 1);
    }
    if (flags & lnk::kHasRelativePath) {
        const std::optional<std::uint16_t> count = file.U16(at);
        if (!count) return paths;
        const auto bytes = file.Bytes(at + 2, std::size_t{*count} * (isWide ? 2 : 1));
        paths.relative = isWide ? FromWideName(bytes) : text::FromCp932(AsText(bytes));
    }
    return paths;
}

bool HasZero(const std::string& path) { return path.find('\0') != std::string::npos; }

}  // namespace

std::optional<ShellLinkPaths> ParseShellLink(std::string_view bytes) {
    const ByteReader file({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()},
                          ByteOrder::Little);
    std::optional<ShellLinkPaths> paths = ReadPaths(file);
    if (!paths) return std::nullopt;
    if (HasZero(paths->absolute)) paths->absolute.clear();
    if (HasZero(paths->relative)) paths->relative.clear();
    return paths;
}

}  // namespace kalmora
