// The desktop's trash. A thrown-away file lies in a folder "files" and a text file in a folder "info" beside
// it says where it came from and when. The user's own trash takes what lies on the same volume; every other
// volume has a trash of its own at its top.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/posix/descriptor.h"
#include "platform/shell.h"
#include "text/text.h"

namespace kalmora::shell {

namespace {

constexpr mode_t kPrivate = 0700;

std::optional<struct stat> LookAt(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) return std::nullopt;
    return status;
}

// Makes the folder and those above it. False when it does not exist in the end.
bool MakeFolderChain(const std::string& path) {
    for (std::size_t at = 1; at <= path.size(); ++at)
        if (at == path.size() || path[at] == files::kSeparator) mkdir(path.substr(0, at).c_str(), kPrivate);
    return files::IsFolder(path);
}

// The volume that a path lies on or, when it does not exist yet, will lie on.
std::optional<dev_t> VolumeOf(std::string path) {
    for (;;) {
        struct stat status {};
        if (stat(path.c_str(), &status) == 0) return status.st_dev;
        if (path.size() <= 1) return std::nullopt;
        path = FolderOfPath(path);
    }
}

// The topmost folder on the volume that the folder lies on.
std::string TopOfVolume(std::string folder, dev_t volume) {
    while (folder.size() > 1) {
        const std::string above = FolderOfPath(folder);
        const auto status = LookAt(above);
        if (!status || status->st_dev != volume) break;
        folder = above;
    }
    return folder;
}

struct TrashPlace {
    std::string folder;  // holds "files" and "info"
    std::string origin;  // what the stored path is relative to; empty when it is stored absolute
};

// The trash of another volume: a folder inside the one that the administrator made for all, or one of our
// own.
std::optional<TrashPlace> TrashAtTop(const std::string& top) {
    const std::string user = std::to_string(geteuid());
    const std::string shared = files::Join(top, ".Trash");
    // Without the sticky mark anybody could take others' files out of it; a link could lead anywhere.
    if (const auto status = LookAt(shared);
        status && S_ISDIR(status->st_mode) && (status->st_mode & S_ISVTX)) {
        const std::string own = files::Join(shared, user);
        if (MakeFolderChain(own)) return TrashPlace{own, top};
    }
    const std::string own = files::Join(top, ".Trash-" + user);
    if (mkdir(own.c_str(), kPrivate) != 0 && errno != EEXIST) return std::nullopt;
    const auto status = LookAt(own);
    if (!status || !S_ISDIR(status->st_mode) || status->st_uid != geteuid()) return std::nullopt;
    return TrashPlace{own, top};
}

std::string PercentEncoded(const std::string& path) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    static constexpr std::string_view kPlain = "-._~/";
    std::string out;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isLetterOrDigit =
            (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (isLetterOrDigit || kPlain.find(c) != std::string_view::npos) {
            out.push_back(c);
        } else {
            out.push_back('%');
            out.push_back(kDigits[byte >> 4]);
            out.push_back(kDigits[byte & 0xF]);
        }
    }
    return out;
}

std::string InfoText(const std::string& path, const TrashPlace& place) {
    const SystemTime now = LocalTime();
    char date[64];
    std::snprintf(date, sizeof date, "%04d-%02d-%02dT%02d:%02d:%02d", now.year, now.month, now.day, now.hour,
                  now.minute, now.second);
    const std::string stored = place.origin.empty() ? path : RelativePath(place.origin, path);
    return "[Trash Info]\nPath=" + PercentEncoded(stored) + "\nDeletionDate=" + date + "\n";
}

bool WriteNewFile(const std::string& path, const std::string& content, int& errorNumber) {
    Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    errorNumber = errno;
    if (!file) return false;
    const ssize_t written = write(file.Get(), content.data(), content.size());
    errorNumber = errno;
    if (written == static_cast<ssize_t>(content.size()) && file.Close()) return true;
    unlink(path.c_str());
    return false;
}

// "a.jpg", "a.2.jpg", "a.3.jpg", ...; short enough that the record's longer name still fits.
std::string NumberedName(const std::string& name, int number) {
    constexpr std::size_t kLongestStem = 200, kLongestExtension = 20;
    std::size_t dot = name.rfind('.');
    if (dot == 0 || dot == std::string::npos || name.size() - dot > kLongestExtension) dot = name.size();
    std::string result = text::CutAtCharacter(std::string_view(name).substr(0, dot), kLongestStem);
    if (number > 1) result += "." + std::to_string(number);
    return result + name.substr(dot);
}

bool MoveInto(const TrashPlace& place, const std::string& path) {
    const std::string filesFolder = files::Join(place.folder, "files");
    const std::string infoFolder = files::Join(place.folder, "info");
    if (!MakeFolderChain(filesFolder) || !MakeFolderChain(infoFolder)) return false;
    const std::string content = InfoText(path, place);
    constexpr int kMostNames = 100000;
    for (int number = 1; number < kMostNames; ++number) {
        const std::string name = NumberedName(NameOfPath(path), number);
        const std::string info = files::Join(infoFolder, name + ".trashinfo");
        // The record comes first: making it is what reserves the name.
        int errorNumber = 0;
        if (!WriteNewFile(info, content, errorNumber)) {
            if (errorNumber == EEXIST) continue;
            return false;
        }
        const std::string trashed = files::Join(filesFolder, name);
        if (LookAt(trashed)) {
            unlink(info.c_str());  // a file whose record got lost keeps its name
            continue;
        }
        if (rename(path.c_str(), trashed.c_str()) == 0) return true;
        if (errno == EXDEV && files::CopyFile(path, trashed) == files::FileResult::Done) {
            if (unlink(path.c_str()) == 0) return true;
            unlink(trashed.c_str());
        }
        unlink(info.c_str());
        return false;
    }
    return false;
}

}  // namespace

bool MoveToTrash(const std::string& path) {
    if (NameOfPath(path).empty()) return false;
    const std::string whole = files::PhysicalPath(path);
    const auto status = LookAt(whole);
    if (!status) return false;
    const std::string home = files::Join(FolderOfPath(files::UserDataFolder()), "Trash");
    const TrashPlace ours{home, {}};
    if (VolumeOf(home) == status->st_dev && MakeFolderChain(home)) return MoveInto(ours, whole);
    const auto place = TrashAtTop(TopOfVolume(FolderOfPath(whole), status->st_dev));
    if (place && MoveInto(*place, whole)) return true;
    // A volume whose top is not ours to write to, such as the system's: the file travels to the user's trash.
    return S_ISREG(status->st_mode) && MakeFolderChain(home) && MoveInto(ours, whole);
}

}  // namespace kalmora::shell
