#include "platform/posix/places.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

#include "platform/files.h"

namespace kalmora::files {

namespace {

struct Account {
    std::string name;
    std::string home;
};

// What the user data base says; the environment comes first where it is set.
Account ThisUser() {
    std::array<char, 4096> buffer;
    passwd record{};
    passwd* found = nullptr;
    Account account;
    if (getpwuid_r(geteuid(), &record, buffer.data(), buffer.size(), &found) == 0 && found) {
        account.name = found->pw_name ? found->pw_name : "";
        account.home = found->pw_dir ? found->pw_dir : "";
    }
    if (const std::string name = Environment("USER"); !name.empty()) account.name = name;
    if (const std::string home = Environment("HOME"); IsAbsolute(home)) account.home = home;
    return account;
}

bool IsProgram(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::string ExecutablePath() {
    std::array<char, 8192> buffer;
    const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size());
    if (length <= 0) return {};
    std::string path(buffer.data(), static_cast<std::size_t>(length));
    // An update replaced the file under the running program: the kernel says so behind the name.
    constexpr std::string_view kGone = " (deleted)";
    if (path.ends_with(kGone) && !Exists(path)) path.resize(path.size() - kGone.size());
    return path;
}

std::string ExecutableFolder() { return FolderOfPath(ExecutablePath()); }

std::string CurrentFolder() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    return error ? std::string() : folder.string();
}

std::string UserDataFolder() {
    // The rules of the desktop say that a relative path there counts as none.
    if (const std::string data = Environment("XDG_DATA_HOME"); IsAbsolute(data)) return Join(data, "kalmora");
    return Join(ThisUser().home, ".local/share/kalmora");
}

bool IsFolderWritable(const std::string& folder) {
    return IsFolder(folder) && access(folder.c_str(), W_OK | X_OK) == 0;
}

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string FindProgram(const std::string& name) {
    if (name.empty()) return {};
    if (name.find(kSeparator) != std::string::npos) return IsProgram(name) ? name : std::string();
    std::string path = Environment("PATH");
    if (path.empty()) path = "/usr/local/bin:/usr/bin:/bin";
    for (std::size_t at = 0; at <= path.size();) {
        std::size_t end = path.find(':', at);
        if (end == std::string::npos) end = path.size();
        std::string candidate = Join(end == at ? "." : std::string_view(path).substr(at, end - at), name);
        if (IsProgram(candidate)) return candidate;
        at = end + 1;
    }
    return {};
}

std::string FindCameraCardBelow(const std::vector<std::string>& mountFolders) {
    for (const std::string& folder : mountFolders)
        for (const FolderEntry& medium : ListFolder(folder)) {
            if (!medium.isFolder) continue;
            const std::string root = Join(folder, medium.name);
            // A card's names come in small letters under some mounts.
            for (const char* name : {"DCIM", "dcim"})
                if (std::string card = Join(root, name); IsFolder(card)) return card;
        }
    return {};
}

std::string AbsolutePath(const std::string& path) {
    if (IsAbsolute(path)) return path;
    const std::string current = CurrentFolder();
    return Join(current.empty() ? "/" : current, path);
}

std::string PhysicalPath(const std::string& path) {
    const std::string absolute = AbsolutePath(path);
    const std::string name = NameOfPath(absolute);
    const bool isName = !name.empty() && name != "." && name != "..";
    const std::unique_ptr<char, void (*)(void*)> resolved(
        realpath((isName ? FolderOfPath(absolute) : absolute).c_str(), nullptr), std::free);
    if (!resolved) return NormalizePath(absolute);
    return isName ? Join(resolved.get(), name) : std::string(resolved.get());
}

std::string FindCameraCard() {
    const std::string user = ThisUser().name;
    std::vector<std::string> folders;
    if (!user.empty()) folders = {Join("/run/media", user), Join("/media", user)};
    folders.push_back("/media");
    return FindCameraCardBelow(folders);
}

std::string MakeTemporaryFolder() {
    std::string parent = Environment("TMPDIR");
    if (!IsAbsolute(parent) || !IsFolderWritable(parent)) parent = "/tmp";
    std::string path = Join(parent, "kalmora-XXXXXX");
    return mkdtemp(path.data()) ? path : std::string();
}

}  // namespace kalmora::files
