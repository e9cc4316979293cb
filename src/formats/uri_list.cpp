#include "formats/uri_list.h"

#include <algorithm>
#include <optional>

#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::string_view kScheme = "file:";
constexpr std::string_view kUnreserved = "-._~/!$&'()*+,;=:@";
constexpr char kHex[] = "0123456789ABCDEF";

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Empty when a %HH is broken or means a zero byte, which no file name has.
std::optional<std::string> Unescape(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes += text[i];
            continue;
        }
        if (i + 2 >= text.size()) return std::nullopt;
        const int high = HexDigit(text[i + 1]), low = HexDigit(text[i + 2]);
        if (high < 0 || low < 0 || (high == 0 && low == 0)) return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return bytes;
}

bool IsThisMachine(std::string_view name, std::string_view host) {
    return name.empty() || text::EqualsNoCase(name, "localhost") || text::EqualsNoCase(name, host);
}

std::optional<std::string> LocalPath(std::string_view uri, std::string_view host) {
    if (!text::StartsWithNoCase(uri, kScheme)) return std::nullopt;
    uri.remove_prefix(kScheme.size());
    if (uri.starts_with("//")) {
        uri.remove_prefix(2);
        const std::size_t slash = std::min(uri.find('/'), uri.size());
        if (!IsThisMachine(uri.substr(0, slash), host)) return std::nullopt;
        uri.remove_prefix(slash);
    }
    if (!uri.starts_with('/')) return std::nullopt;
    return Unescape(uri.substr(0, uri.find_first_of("?#")));
}

// The next line that is no comment; false at the end.
bool TakeAddress(std::string_view& uriList, std::string_view& address) {
    while (!uriList.empty()) {
        const std::size_t end =
            std::min(uriList.find_first_of(std::string_view("\r\n\0", 3)), uriList.size());
        address = uriList.substr(0, end);
        uriList.remove_prefix(std::min(end + 1, uriList.size()));
        if (!address.empty() && address.front() != '#') return true;
    }
    return false;
}

}  // namespace

std::vector<std::string> LocalPaths(std::string_view uriList, std::string_view host) {
    std::vector<std::string> paths;
    for (std::string_view address; TakeAddress(uriList, address);)
        if (std::optional<std::string> path = LocalPath(address, host)) paths.push_back(std::move(*path));
    return paths;
}

bool AreAllLocalPaths(std::string_view uriList, std::string_view host) {
    for (std::string_view address; TakeAddress(uriList, address);)
        if (!LocalPath(address, host)) return false;
    return true;
}

std::string FileUri(std::string_view path) {
    std::string uri = "file://";
    for (const char c : path) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                             kUnreserved.find(c) != std::string_view::npos;
        if (isPlain) {
            uri += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            uri += {'%', kHex[byte >> 4], kHex[byte & 15]};
        }
    }
    return uri;
}

}  // namespace kalmora
