#include "store/shortcuts.h"

#include <algorithm>

#include "base/path_names.h"
#include "formats/shell_link.h"
#include "platform/files.h"

namespace kalmora {

namespace {

constexpr std::size_t kLargestShortcut = 1u << 20;

// The place that a relative path names. The dots are taken out, unless a link on the way makes that another
// place.
std::string PlaceOf(const std::string& folder, const std::string& relative, bool& exists) {
    std::string asStored = files::Join(folder, files::WithPlatformSeparators(relative));
    std::string plain = NormalizePath(asStored);
    const auto stored = files::GetStatus(asStored);
    exists = stored.has_value();
    if (!exists || plain == asStored) return plain;
    const auto plainStatus = files::GetStatus(plain);
    const bool isSame =
        plainStatus && plainStatus->volume == stored->volume && plainStatus->identity == stored->identity;
    return isSame ? plain : asStored;
}

// With the separators of the format, which begins at ".\" for what lies in the same folder. Empty when there
// is no such way: a name that has such a separator inside would come back as two.
std::string StoredRelativePath(const std::string& folder, const std::string& target) {
    std::string way = RelativePath(folder, target);
    if (way.empty() || (files::kSeparator != '\\' && way.find('\\') != std::string::npos)) return {};
    std::replace(way.begin(), way.end(), files::kSeparator, '\\');
    if (!way.starts_with("..\\")) way.insert(0, ".\\");
    return way;
}

}  // namespace

std::optional<std::string> ReadShortcut(std::string_view bytes, const std::string& folder) {
    std::optional<ShellLinkPaths> paths = ParseShellLink(bytes);
    if (!paths) return std::nullopt;
    if (paths->relative.empty()) {
        if (paths->absolute.empty()) return std::nullopt;
        return paths->absolute;
    }
    bool exists = false;
    std::string place = PlaceOf(folder, paths->relative, exists);
    if (!exists && !paths->absolute.empty()) return paths->absolute;
    return place;
}

std::optional<std::string> ResolveShortcut(const std::string& linkPath) {
    const std::optional<std::string> bytes = files::ReadWholeFile(linkPath, kLargestShortcut);
    if (!bytes) return std::nullopt;
    return ReadShortcut(*bytes, FolderOfPath(linkPath));
}

std::string MakeShortcut(const std::string& targetPath, const std::string& linkFolder) {
    ShellLinkTarget target;
    target.path = NormalizePath(files::AbsolutePath(targetPath));
    // The way leads between the real places: ".." goes out of the real folder, not back over a link to it.
    const std::string folder = files::PhysicalPath(files::Join(linkFolder, "."));
    target.relative = StoredRelativePath(folder, files::PhysicalPath(target.path));
    if (const std::optional<files::FileStatus> status = files::GetStatus(target.path)) {
        target.isFolder = status->isFolder;
        target.size = status->size;
        target.created = status->created;
        target.accessed = status->accessed;
        target.written = status->written;
    }
    return MakeShellLink(target);
}

bool CreateShortcut(const std::string& linkPath, const std::string& targetPath) {
    if (targetPath.empty()) return false;
    return files::WriteWholeFile(linkPath, MakeShortcut(targetPath, FolderOfPath(linkPath))) ==
           files::FileResult::Done;
}

}  // namespace kalmora
