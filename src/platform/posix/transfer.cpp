#include "platform/transfer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <utility>

#include "platform/posix/copy_content.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/file_errors.h"
#include "platform/posix/file_status.h"
#include "platform/posix/scratch_names.h"

namespace kalmora::files {

namespace {

// A pipe without a writer would make a plain open wait for ever; O_NONBLOCK has no effect on regular files.

// What file systems answer that do not know a way of doing something.
bool IsUnknownHere(int errorNumber) {
    return errorNumber == EINVAL || errorNumber == ENOSYS || errorNumber == EOPNOTSUPP ||
           errorNumber == ENOTTY;
}

bool StandsAt(const char* path) {
    struct stat status {};
    return lstat(path, &status) == 0;
}

FileResult RenameWithoutHelp(const char* from, const char* to) {
    // A second name cannot replace anything either; it is how it was done before there was a call for it.
    if (link(from, to) == 0) return unlink(from) == 0 ? FileResult::Done : ResultOfError(errno);
    if (!IsUnknownHere(errno) && errno != EPERM && errno != EMLINK) return ResultOfError(errno);
    // No second names here, as on a card. What is left is to look first.
    if (StandsAt(to)) return FileResult::Exists;
    return std::rename(from, to) == 0 ? FileResult::Done : ResultOfError(errno);
}

// How many bytes were read, fewer at the end; more than `size` on an error.
std::size_t ReadBlock(int file, char* block, std::size_t size) {
    std::size_t length = 0;
    while (length < size) {
        const ssize_t count = read(file, block + length, size - length);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count == 0 ? length : size + 1;
        length += static_cast<std::size_t>(count);
    }
    return length;
}

bool IsSameFile(const FileStatus& a, const FileStatus& b) {
    return a.volume == b.volume && a.identity == b.identity && a.size == b.size && a.written == b.written;
}

}  // namespace

std::optional<std::uint64_t> FreeSpace(const std::string& path) {
    for (std::string at = path;; at = FolderOfPath(at)) {
        struct statvfs system {};
        if (statvfs(at.c_str(), &system) == 0) return std::uint64_t{system.f_bavail} * system.f_frsize;
        if ((errno != ENOENT && errno != ENOTDIR) || at.size() <= 1) return std::nullopt;
    }
}

bool IsLink(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool LiesIn(const std::string& path, const std::string& folder) {
    struct stat wanted {};
    if (stat(folder.c_str(), &wanted) != 0) return false;
    std::string at = files::AbsolutePath(path);
    for (;;) {
        // NOLINTNEXTLINE(concurrency-mt-unsafe): the buffer is its own
        if (char* const real = realpath(at.c_str(), nullptr)) {
            at = real;
            std::free(real);
            break;
        }
        if (at.size() <= 1) return false;
        at = FolderOfPath(at);
    }
    for (;; at = FolderOfPath(at)) {
        struct stat status {};
        if (stat(at.c_str(), &status) == 0 && status.st_dev == wanted.st_dev &&
            status.st_ino == wanted.st_ino)
            return true;
        if (at.size() <= 1) return false;
    }
}

FileResult RenameNew(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return FileResult::Done;
    return IsUnknownHere(errno) ? RenameWithoutHelp(from.c_str(), to.c_str()) : ResultOfError(errno);
}

FileResult RemoveEmptyFolder(const std::string& path) {
    if (rmdir(path.c_str()) == 0) return FileResult::Done;
    return errno == EEXIST ? FileResult::Failed : ResultOfError(errno);
}

FileResult FlushFolders(std::span<const std::string> folders) {
    constexpr std::size_t kFew = 4;
    std::vector<dev_t> flushed;
    FileResult result = FileResult::Done;
    for (const std::string& folder : folders) {
        const Descriptor handle(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        struct stat status {};
        if (!handle || fstat(handle.Get(), &status) != 0) {
            result = ResultOfError(errno);
            continue;
        }
        if (std::find(flushed.begin(), flushed.end(), status.st_dev) != flushed.end()) continue;
        if (folders.size() > kFew && syncfs(handle.Get()) == 0)
            flushed.push_back(status.st_dev);
        else if (fsync(handle.Get()) != 0 && !IsUnknownHere(errno) && errno != EROFS)
            result = ResultOfError(errno);
    }
    return result;
}

namespace {

// `listener` may be null, and may end it: false then.
bool CompareBytes(const std::string& a, const std::string& b, TransferListener* listener) {
    constexpr std::size_t kBlock = 1u << 18;
    constexpr std::uint64_t kWatchedStep = 16u << 20;
    std::uint64_t done = 0;
    const Descriptor first(open(a.c_str(), kReadFlags)), second(open(b.c_str(), kReadFlags));
    struct stat status {};
    for (const Descriptor* file : {&first, &second})
        if (!*file || fstat(file->Get(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    posix_fadvise(second.Get(), 0, 0, POSIX_FADV_DONTNEED);
    posix_fadvise(second.Get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    posix_fadvise(first.Get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    std::vector<char> blockA(kBlock), blockB(kBlock);
    for (;;) {
        const std::size_t lengthA = ReadBlock(first.Get(), blockA.data(), kBlock);
        const std::size_t lengthB = ReadBlock(second.Get(), blockB.data(), kBlock);
        if (lengthA != lengthB || lengthA > kBlock || std::memcmp(blockA.data(), blockB.data(), lengthA) != 0)
            return false;
        if (lengthA < kBlock) return true;
        done += lengthA;
        if (listener && done % kWatchedStep == 0 &&
            !listener->OnTransfer(static_cast<double>(done) / static_cast<double>(status.st_size)))
            return false;
    }
}

}  // namespace

bool HaveSameBytes(const std::string& a, const std::string& b) { return CompareBytes(a, b, nullptr); }

// ---- copies

NewCopy::~NewCopy() { Drop(); }

NewCopy::NewCopy(NewCopy&& other) noexcept
    : from_(std::exchange(other.from_, {})),
      scratch_(std::exchange(other.scratch_, {})),
      source_(other.source_),
      handle_(std::exchange(other.handle_, -1)) {}

NewCopy& NewCopy::operator=(NewCopy&& other) noexcept {
    if (this != &other) {
        Drop();
        from_ = std::exchange(other.from_, {});
        scratch_ = std::exchange(other.scratch_, {});
        source_ = other.source_;
        handle_ = std::exchange(other.handle_, -1);
    }
    return *this;
}

void NewCopy::Drop() {
    if (handle_ >= 0) close(static_cast<int>(std::exchange(handle_, -1)));
    if (!scratch_.empty()) unlink(scratch_.c_str());
    scratch_.clear();
}

FileResult NewCopy::Make(const std::string& from, const std::string& folder, TransferListener* listener) {
    Drop();
    const Descriptor source(open(from.c_str(), kReadFlags));
    if (!source) return ResultOfError(errno);
    const auto status = StatusOfDescriptor(source.Get());
    struct stat details {};
    if (!status || !status->isRegular || fstat(source.Get(), &details) != 0) return FileResult::Failed;
    from_ = from;
    source_ = *status;
    Descriptor copy = MakeScratchFile(folder, 0600, scratch_);
    if (!copy) {
        const int errorNumber = errno;
        scratch_.clear();
        return ResultOfError(errorNumber);
    }
    handle_ = copy.Release();
    const int file = static_cast<int>(handle_);
    struct stat made {};
    const timespec times[2] = {details.st_atim, details.st_mtim};
    std::function<bool(std::uint64_t)> goesOn;
    if (listener)
        goesOn = [&](std::uint64_t done) {
            return listener->OnTransfer(static_cast<double>(done) / static_cast<double>(source_.size));
        };
    if (!CopyContent(source.Get(), file, goesOn) || fstat(file, &made) != 0) {
        const int errorNumber = errno == 0 ? EIO : errno;
        Drop();
        return ResultOfError(errorNumber);
    }
    if (static_cast<std::uint64_t>(made.st_size) != source_.size) {
        Drop();
        return FileResult::Failed;
    }
    // A card or a share that keeps no rights or times is no reason to refuse the copy.
    if (fchmod(file, (details.st_mode & 0777) | S_IWUSR) != 0 || futimens(file, times) != 0) errno = 0;
    // The disk may begin now with what is worth a write of its own: the wait at the end is the shorter.
    constexpr std::uint64_t kWorthAWrite = 1u << 20;
    if (source_.size >= kWorthAWrite) sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE);
    return FileResult::Done;
}

bool NewCopy::IsSourceUntouched() const {
    const auto now = GetStatus(from_);
    return now && IsSameFile(*now, source_);
}

bool NewCopy::HoldsSameBytes(TransferListener* listener) const {
    // Looked at on both sides, so that it is the same file all the while.
    return IsSourceUntouched() && CompareBytes(from_, scratch_, listener) && IsSourceUntouched();
}

FileResult NewCopy::Appear(const std::string& path, Existing existing) {
    if (scratch_.empty()) return FileResult::Failed;
    if (handle_ >= 0 && close(static_cast<int>(std::exchange(handle_, -1))) != 0) return ResultOfError(errno);
    const FileResult result =
        existing == Existing::Replace ? Rename(scratch_, path) : RenameNew(scratch_, path);
    if (result == FileResult::Done) scratch_.clear();
    return result;
}

std::vector<FileResult> FlushCopies(std::span<NewCopy* const> copies) {
    // One by one where they are few: flushing a volume also waits for what other programs have written.
    constexpr std::size_t kFew = 2;
    std::vector<FileResult> results(copies.size(), FileResult::Failed);
    std::vector<dev_t> flushed;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        const int file = static_cast<int>(copies[i]->handle_);
        struct stat status {};
        if (file < 0 || fstat(file, &status) != 0) continue;
        const bool isFlushed = std::find(flushed.begin(), flushed.end(), status.st_dev) != flushed.end();
        // The first copy was opened before the others were written, so the call reports their errors too.
        if (!isFlushed && copies.size() > kFew && syncfs(file) == 0) flushed.push_back(status.st_dev);
        const bool isSafe = std::find(flushed.begin(), flushed.end(), status.st_dev) != flushed.end();
        results[i] = isSafe || fsync(file) == 0 ? FileResult::Done : ResultOfError(errno);
    }
    return results;
}

}  // namespace kalmora::files
