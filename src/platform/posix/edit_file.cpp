#include "platform/edit_file.h"

#include <fcntl.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/posix/descriptor.h"
#include "platform/posix/file_errors.h"
#include "platform/posix/file_status.h"
#include "platform/posix/unix_time.h"

namespace kalmora::files {

namespace {

// A pipe must not make the open wait; reading must not move the time of last access.
constexpr int kEditFlags = O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

Descriptor OpenToEdit(const std::string& path, int more = 0) {
    // Only the owner may ask that reading leaves no trace.
    Descriptor file(open(path.c_str(), kEditFlags | O_NOATIME | more, 0666));
    if (!file && errno == EPERM) file = Descriptor(open(path.c_str(), kEditFlags | more, 0666));
    return file;
}

bool FitsOffset(std::uint64_t value) { return value <= static_cast<std::uint64_t>(INT64_MAX); }

}  // namespace

EditFile::~EditFile() { Close(); }

EditFile::EditFile(EditFile&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

EditFile& EditFile::operator=(EditFile&& other) noexcept {
    if (this != &other) {
        Close();
        handle_ = std::exchange(other.handle_, -1);
    }
    return *this;
}

void EditFile::Close() {
    if (handle_ >= 0) close(static_cast<int>(std::exchange(handle_, -1)));
}

FileResult EditFile::Open(const std::string& path) {
    Close();
    Descriptor file = OpenToEdit(path);
    if (!file) return ResultOfError(errno);
    struct stat status {};
    if (fstat(file.Get(), &status) != 0) return ResultOfError(errno);
    if (!S_ISREG(status.st_mode)) return FileResult::Failed;
    if ((status.st_mode & kWriteBits) == 0) return FileResult::Denied;
    handle_ = file.Release();
    return FileResult::Done;
}

FileResult EditFile::OpenOrMake(const std::string& path) {
    Close();
    Descriptor file = OpenToEdit(path, O_CREAT);
    if (!file) return ResultOfError(errno);
    struct stat status {};
    if (fstat(file.Get(), &status) != 0) return ResultOfError(errno);
    if (!S_ISREG(status.st_mode)) return FileResult::Failed;
    handle_ = file.Release();
    return FileResult::Done;
}

EditFile::Lock EditFile::TryLock() {
    const int file = static_cast<int>(handle_);
    // Two kinds of lock know nothing of each other: one is asked about, the other is taken.
    struct flock range {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    if (fcntl(file, F_OFD_GETLK, &range) == 0 && range.l_type != F_UNLCK) return Lock::HeldByAnother;
    if (flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return Lock::HeldByAnother;
    return Lock::Taken;
}

std::optional<FileStatus> EditFile::Status() const { return StatusOfDescriptor(static_cast<int>(handle_)); }

std::size_t EditFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> into) const {
    if (handle_ < 0) return 0;
    std::size_t length = 0;
    while (length < into.size() && FitsOffset(offset + length)) {
        const ssize_t count = pread(static_cast<int>(handle_), into.data() + length, into.size() - length,
                                    static_cast<off_t>(offset + length));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        length += static_cast<std::size_t>(count);
    }
    return length;
}

FileResult EditFile::WriteAt(std::uint64_t offset, std::string_view bytes) {
    while (!bytes.empty()) {
        if (!FitsOffset(offset)) return FileResult::Failed;
        const ssize_t count =
            pwrite(static_cast<int>(handle_), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return ResultOfError(errno);
        if (count == 0) return FileResult::Failed;
        bytes.remove_prefix(static_cast<std::size_t>(count));
        offset += static_cast<std::uint64_t>(count);
    }
    return FileResult::Done;
}

FileResult EditFile::Resize(std::uint64_t size) {
    if (!FitsOffset(size)) return FileResult::Failed;
    return ftruncate(static_cast<int>(handle_), static_cast<off_t>(size)) == 0 ? FileResult::Done
                                                                               : ResultOfError(errno);
}

FileResult EditFile::Reserve(std::uint64_t size) {
    if (!FitsOffset(size)) return FileResult::Failed;
    if (size == 0) return FileResult::Done;
    if (fallocate(static_cast<int>(handle_), FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) == 0)
        return FileResult::Done;
    return errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL ? FileResult::Done
                                                                     : ResultOfError(errno);
}

FileResult EditFile::Flush() {
    return fsync(static_cast<int>(handle_)) == 0 ? FileResult::Done : ResultOfError(errno);
}

FileResult EditFile::FlushContent() {
    return fdatasync(static_cast<int>(handle_)) == 0 ? FileResult::Done : ResultOfError(errno);
}

bool EditFile::SetTimes(FileTime accessed, FileTime written) {
    const timespec times[2] = {ToUnixTime(accessed), ToUnixTime(written)};
    return futimens(static_cast<int>(handle_), times) == 0;
}

std::size_t EditFile::InsertUnit() const {
    const int file = static_cast<int>(handle_);
    // Of the file systems that know the operation this one moves a few extents in a single transaction; the
    // others move piece by piece, and a power cut in between would tear the file.
    struct statfs system {};
    if (fstatfs(file, &system) != 0 || system.f_type != EXT4_SUPER_MAGIC) return 0;
    constexpr unsigned kMostExtents = 4;  // so many fit into the file's own record
    struct fiemap map {};
    map.fm_length = FIEMAP_MAX_OFFSET;
    map.fm_flags = FIEMAP_FLAG_SYNC;
    if (ioctl(file, FS_IOC_FIEMAP, &map) != 0 || map.fm_mapped_extents > kMostExtents) return 0;
    return system.f_bsize > 0 ? static_cast<std::size_t>(system.f_bsize) : 0;
}

bool EditFile::InsertSpace(std::uint64_t offset, std::uint64_t length) {
    return FitsOffset(offset) && FitsOffset(length) &&
           fallocate(static_cast<int>(handle_), FALLOC_FL_INSERT_RANGE, static_cast<off_t>(offset),
                     static_cast<off_t>(length)) == 0;
}

bool EditFile::RemoveSpace(std::uint64_t offset, std::uint64_t length) {
    return FitsOffset(offset) && FitsOffset(length) &&
           fallocate(static_cast<int>(handle_), FALLOC_FL_COLLAPSE_RANGE, static_cast<off_t>(offset),
                     static_cast<off_t>(length)) == 0;
}

std::vector<FileResult> FlushAll(std::span<EditFile* const> toFlush) {
    std::vector<FileResult> results(toFlush.size(), FileResult::Failed);
    // Flushes that wait at the same time share the disk's own flush.
    constexpr std::size_t kMostThreads = 16;
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t i = next++; i < toFlush.size(); i = next++) results[i] = toFlush[i]->Flush();
    };
    std::vector<std::thread> helpers;
    helpers.reserve(kMostThreads);
    try {
        while (helpers.size() + 1 < std::min(kMostThreads, toFlush.size())) helpers.emplace_back(work);
    } catch (const std::system_error&) {
        // Fewer threads do it as well, only later.
    }
    work();
    for (std::thread& helper : helpers) helper.join();
    return results;
}

bool IsOpenForWriting(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) return errno != ENOENT;
    // The system grants a reader's lease only while no program can write. One that opens the file in this
    // moment makes it send a signal: one whose default action is none.
    fcntl(file.Get(), F_SETSIG, SIGURG);
    if (fcntl(file.Get(), F_SETLEASE, F_RDLCK) == 0) {
        fcntl(file.Get(), F_SETLEASE, F_UNLCK);
        return false;
    }
    return true;
}

FileLock::FileLock(FileLock&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    if (this != &other) {
        Release();
        handle_ = std::exchange(other.handle_, -1);
    }
    return *this;
}

FileResult FileLock::Acquire(const std::string& path, int timeoutMs) {
    Release();
    Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOCTTY, 0666));
    if (!file) return ResultOfError(errno);
    using Steady = std::chrono::steady_clock;
    const auto end = Steady::now() + std::chrono::milliseconds(timeoutMs);
    // Polling, because a wait inside the system knows no end. Failed when the time ran out.
    const auto until = [&](const auto& tryOnce) {
        while (!tryOnce()) {
            if (errno != EWOULDBLOCK && errno != EACCES && errno != EINTR) return ResultOfError(errno);
            if (Steady::now() >= end) return FileResult::Failed;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return FileResult::Done;
    };
    // A place in the queue first, the lock itself after that: the two kinds of lock know nothing of each
    // other. A file system that has only one of them has no queue.
    struct flock queue {};
    queue.l_type = F_WRLCK;
    queue.l_whence = SEEK_SET;
    const FileResult queued = until([&] { return fcntl(file.Get(), F_OFD_SETLK, &queue) == 0; });
    const bool hasPlace = queued == FileResult::Done;
    if (!hasPlace && Steady::now() >= end) return FileResult::Failed;
    const FileResult locked = until([&] { return flock(file.Get(), LOCK_EX | LOCK_NB) == 0; });
    if (locked != FileResult::Done) return locked;
    if (hasPlace) {
        queue.l_type = F_UNLCK;
        fcntl(file.Get(), F_OFD_SETLK, &queue);
    }
    handle_ = file.Release();
    return FileResult::Done;
}

void FileLock::Release() {
    if (handle_ >= 0) close(static_cast<int>(std::exchange(handle_, -1)));
}

}  // namespace kalmora::files
