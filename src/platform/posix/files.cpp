// Names, looks, folders, moving and removing. File contents are in file_content.cpp, known places in
// places.cpp.
#include "platform/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "platform/posix/file_errors.h"
#include "platform/posix/file_status.h"
#include "platform/posix/unix_time.h"

namespace kalmora::files {

namespace {

FileTime FromStatx(const struct statx_timestamp& time) {
    return FromUnixTime(time.tv_sec, static_cast<long>(time.tv_nsec));
}

bool LooksHidden(std::string_view name) { return !name.empty() && name.front() == '.'; }

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; }

bool NameLess(const FolderEntry& a, const FolderEntry& b) {
    const std::size_t shorter = std::min(a.name.size(), b.name.size());
    for (std::size_t i = 0; i < shorter; ++i) {
        const auto x = static_cast<unsigned char>(LowerAscii(a.name[i]));
        const auto y = static_cast<unsigned char>(LowerAscii(b.name[i]));
        if (x != y) return x < y;
    }
    if (a.name.size() != b.name.size()) return a.name.size() < b.name.size();
    return a.name < b.name;
}

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

FolderEntry MakeEntry(int folder, const dirent& found) {
    FolderEntry entry;
    entry.name = found.d_name;
    entry.isHidden = LooksHidden(entry.name);
    unsigned char type = found.d_type;
    struct stat status {};
    if (type == DT_UNKNOWN && fstatat(folder, found.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
        type = S_ISLNK(status.st_mode) ? DT_LNK : S_ISDIR(status.st_mode) ? DT_DIR : DT_REG;
    entry.isLink = type == DT_LNK;
    entry.isFolder = type == DT_DIR;
    if (entry.isLink && fstatat(folder, found.d_name, &status, 0) == 0)
        entry.isFolder = S_ISDIR(status.st_mode);
    return entry;
}

std::optional<FileStatus> LookAt(int folder, const char* path, int flags) {
    struct statx found {};
    if (statx(folder, path, AT_STATX_SYNC_AS_STAT | flags, STATX_BASIC_STATS | STATX_BTIME, &found) != 0)
        return std::nullopt;
    FileStatus status;
    status.isFolder = S_ISDIR(found.stx_mode);
    status.isRegular = S_ISREG(found.stx_mode);
    status.isReadOnly =
        (found.stx_mode & kWriteBits) == 0 || (found.stx_attributes & STATX_ATTR_IMMUTABLE) != 0;
    status.size = found.stx_size;
    status.accessed = FromStatx(found.stx_atime);
    status.written = FromStatx(found.stx_mtime);
    // Some file systems claim to know the birth time and give 1970.
    const bool knowsBirth = (found.stx_mask & STATX_BTIME) != 0 && found.stx_btime.tv_sec != 0;
    status.created = knowsBirth ? FromStatx(found.stx_btime) : status.written;
    status.volume = static_cast<std::uint64_t>(found.stx_dev_major) << 32 | found.stx_dev_minor;
    status.identity = found.stx_ino;
    return status;
}

}  // namespace

FileResult ResultOfError(int errorNumber) {
    switch (errorNumber) {
        case 0:
            return FileResult::Done;
        case ENOENT:
        case ENOTDIR:
            return FileResult::NotFound;
        case EACCES:
        case EPERM:
        case EROFS:
            return FileResult::Denied;
        case ENOSPC:
        case EDQUOT:
            return FileResult::NoSpace;
        case EEXIST:
            return FileResult::Exists;
        default:
            return FileResult::Failed;
    }
}

std::optional<FileStatus> GetStatus(const std::string& path) { return LookAt(AT_FDCWD, path.c_str(), 0); }

std::optional<FileStatus> StatusOfDescriptor(int descriptor) { return LookAt(descriptor, "", AT_EMPTY_PATH); }

bool Exists(const std::string& path) { return !path.empty() && access(path.c_str(), F_OK) == 0; }

bool IsFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsAbsolute(std::string_view path) { return !path.empty() && path.front() == kSeparator; }

std::vector<FolderEntry> ListFolder(const std::string& folder, FileResult* result) {
    std::vector<FolderEntry> entries;
    const auto report = [result](int errorNumber) {
        if (result) *result = ResultOfError(errorNumber);
    };
    const std::unique_ptr<DIR, CloseFolder> open(opendir(folder.c_str()));
    if (!open) {
        report(errno);
        return entries;
    }
    for (;;) {
        errno = 0;
        const dirent* found = readdir(open.get());
        if (!found) break;
        if (std::strcmp(found->d_name, ".") == 0 || std::strcmp(found->d_name, "..") == 0) continue;
        entries.push_back(MakeEntry(dirfd(open.get()), *found));
    }
    const int errorNumber = errno;
    report(errorNumber);
    if (errorNumber != 0)
        return {};  // half a folder is worse than none: a caller would take the rest for gone
    std::sort(entries.begin(), entries.end(), NameLess);
    return entries;
}

FileResult MakeFolder(const std::string& path) {
    return mkdir(path.c_str(), 0777) == 0 ? FileResult::Done : ResultOfError(errno);
}

FileResult RemoveFile(const std::string& path) {
    if (unlink(path.c_str()) == 0) return FileResult::Done;
    return errno == EISDIR ? FileResult::Failed : ResultOfError(errno);
}

FileResult RemoveFolderTree(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) return ResultOfError(errno);
    if (S_ISLNK(status.st_mode)) return RemoveFile(path);  // the link goes, never what it points at
    if (!S_ISDIR(status.st_mode)) return FileResult::Failed;
    std::error_code error;
    std::filesystem::remove_all(path, error);
    return error ? ResultOfError(error.value()) : FileResult::Done;
}

FileResult Rename(const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str()) == 0 ? FileResult::Done : ResultOfError(errno);
}

bool SetTimes(const std::string& path, FileTime accessed, FileTime written) {
    timespec times[2] = {ToUnixTime(accessed), ToUnixTime(written)};
    if (accessed.ticks == 0) times[0].tv_nsec = UTIME_OMIT;
    if (written.ticks == 0) times[1].tv_nsec = UTIME_OMIT;
    return utimensat(AT_FDCWD, path.c_str(), times, 0) == 0;
}

bool SetHidden(const std::string&) { return true; }

bool IsHidden(const std::string& path) {
    const std::string name = NameOfPath(path);
    return LooksHidden(name) && name != "." && name != "..";
}

}  // namespace kalmora::files
