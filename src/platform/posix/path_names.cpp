#include "platform/posix/path_names.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace kalmora {

namespace {

using files::kSeparator;

std::vector<std::string_view> Components(std::string_view path) {
    std::vector<std::string_view> components;
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find(kSeparator, at), path.size());
        const std::string_view name = path.substr(at, end - at);
        const bool isUp = name == "..";
        const bool canGoUp = !components.empty() && components.back() != "..";
        if (isUp && canGoUp)
            components.pop_back();
        else if (!name.empty() && name != "." && !(isUp && path.starts_with(kSeparator)))
            components.push_back(name);
        at = end + 1;
    }
    return components;
}

void Append(std::string& path, std::string_view name) {
    if (!path.empty() && path.back() != kSeparator) path.push_back(kSeparator);
    path += name;
}

}  // namespace

std::string FolderOfPath(const std::string& path) {
    const std::size_t separator = path.rfind(kSeparator);
    if (separator == std::string::npos) return ".";
    return separator == 0 ? std::string(1, kSeparator) : path.substr(0, separator);
}

std::string NameOfPath(const std::string& path) {
    const std::size_t separator = path.rfind(kSeparator);
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

std::string AbsolutePathOf(const std::string& path) {
    if (files::IsAbsolute(path)) return path;
    std::array<char, 8192> buffer;
    const char* current = getcwd(buffer.data(), buffer.size());
    return files::Join(current ? current : "/", path);
}

std::string NormalizePath(const std::string& path) {
    std::string result;
    if (files::IsAbsolute(path)) result.push_back(kSeparator);
    for (const std::string_view name : Components(path)) Append(result, name);
    return result.empty() ? "." : result;
}

std::string PhysicalPath(const std::string& path) {
    const std::string absolute = AbsolutePathOf(path);
    const std::string name = NameOfPath(absolute);
    const bool isName = !name.empty() && name != "." && name != "..";
    const std::unique_ptr<char, void (*)(void*)> resolved(
        realpath((isName ? FolderOfPath(absolute) : absolute).c_str(), nullptr), std::free);
    if (!resolved) return NormalizePath(absolute);
    return isName ? files::Join(resolved.get(), name) : std::string(resolved.get());
}

std::string RelativePath(const std::string& folder, const std::string& path) {
    const std::vector<std::string_view> from = Components(folder), to = Components(path);
    std::size_t same = 0;
    while (same < from.size() && same < to.size() && from[same] == to[same]) ++same;
    std::string result;
    for (std::size_t i = same; i < from.size(); ++i) Append(result, "..");
    for (std::size_t i = same; i < to.size(); ++i) Append(result, to[i]);
    return result;
}

}  // namespace kalmora
