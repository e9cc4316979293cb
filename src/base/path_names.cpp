#include "base/path_names.h"

#include <algorithm>
#include <vector>

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

constexpr char kOtherSeparator = kSeparator == '/' ? '\\' : '/';

bool IsAnySeparator(char c) { return c == kSeparator || c == kOtherSeparator; }

}  // namespace

namespace files {

std::string Join(std::string_view folder, std::string_view name) {
    if (folder.empty()) return std::string(name);
    while (!name.empty() && name.front() == kSeparator) name.remove_prefix(1);
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path = folder;
    if (path.back() != kSeparator && !name.empty()) path.push_back(kSeparator);
    path += name;
    return path;
}

std::string WithPlatformSeparators(std::string_view path) {
    std::string result(path);
    std::replace(result.begin(), result.end(), kOtherSeparator, kSeparator);
    return result;
}

}  // namespace files

std::string FolderOfPath(const std::string& path) {
    const std::size_t separator = path.rfind(kSeparator);
    if (separator == std::string::npos) return ".";
    return separator == 0 ? std::string(1, kSeparator) : path.substr(0, separator);
}

std::string NameOfPath(const std::string& path) {
    const std::size_t separator = path.rfind(kSeparator);
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

bool IsBelow(std::string_view path, std::string_view folder) {
    if (folder.empty() || path.size() <= folder.size() || !IsAnySeparator(path[folder.size()])) return false;
    return std::equal(folder.begin(), folder.end(), path.begin(),
                      [](char a, char b) { return a == b || (IsAnySeparator(a) && IsAnySeparator(b)); });
}

std::string NormalizePath(const std::string& path) {
    std::string result;
    if (path.starts_with(kSeparator)) result.push_back(kSeparator);
    for (const std::string_view name : Components(path)) Append(result, name);
    return result.empty() ? "." : result;
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
