// What is inside files: reading and copying. Replacing is in file_replace.cpp.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/files.h"
#include "platform/posix/copy_content.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/file_errors.h"
#include "platform/posix/file_status.h"

namespace kalmora::files {

namespace {

// A pipe without a writer would make a plain open wait for ever; O_NONBLOCK has no effect on regular files.

bool IsRegular(int file) {
    struct stat status {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

FileResult CopyFile(const std::string& from, const std::string& to) {
    const Descriptor source(open(from.c_str(), kReadFlags));
    if (!source) return ResultOfError(errno);
    struct stat status {};
    if (fstat(source.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return FileResult::Failed;
    Descriptor copy(open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!copy) return ResultOfError(errno);
    const timespec times[2] = {status.st_atim, status.st_mtim};
    // Flushed, because callers remove or rewrite the original next.
    const bool isCopied = CopyContent(source.Get(), copy.Get()) && fdatasync(copy.Get()) == 0;
    int errorNumber = isCopied ? 0 : errno;
    if (isCopied) {
        // A card or a share that keeps no rights or times is no reason to refuse the copy.
        if (fchmod(copy.Get(), status.st_mode & 0777) != 0 || futimens(copy.Get(), times) != 0) errno = 0;
        if (!copy.Close()) errorNumber = errno;
    }
    if (errorNumber == 0) return FileResult::Done;
    copy.Close();
    unlink(to.c_str());
    return ResultOfError(errorNumber);
}

std::optional<std::string> ReadWholeFile(const std::string& path, std::size_t limit) {
    const Descriptor file(open(path.c_str(), kReadFlags));
    if (!file) return std::nullopt;
    struct stat status {};
    if (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    // The length is a hint only: the file may grow, and the system's own files claim to be empty. One byte
    // more than the length lets the end be seen without a look of its own.
    constexpr std::size_t kLeast = 4096;
    const auto claimed = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
    std::string content;
    std::size_t length = 0;
    std::size_t room = static_cast<std::size_t>(std::min<std::uint64_t>(claimed, limit)) + 1;
    while (length < limit) {
        content.resize(std::min(limit, std::max(room, kLeast)));
        const ssize_t count = read(file.Get(), content.data() + length, content.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
        if (length == content.size()) room = length * 2;
    }
    content.resize(length);
    return content;
}

InputFile::~InputFile() { Close(); }

InputFile::InputFile(InputFile&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

InputFile& InputFile::operator=(InputFile&& other) noexcept {
    if (this != &other) {
        Close();
        handle_ = std::exchange(other.handle_, -1);
    }
    return *this;
}

bool InputFile::Open(const std::string& path) {
    Close();
    Descriptor file(open(path.c_str(), kReadFlags));
    if (!file || !IsRegular(file.Get())) return false;
    handle_ = file.Release();
    return true;
}

std::optional<std::size_t> InputFile::OpenAndRead(const std::string& path, std::span<std::uint8_t> head) {
    Close();
    handle_ = open(path.c_str(), kReadFlags);
    if (handle_ < 0) return std::nullopt;
    const std::size_t length = ReadAt(0, head);
    // A folder, a pipe and a socket give none; asking each file what it is would cost a tenth of its reading.
    if (length == 0 && !IsRegular(static_cast<int>(handle_))) {
        Close();
        return std::nullopt;
    }
    return length;
}

std::size_t InputFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> into) const {
    if (handle_ < 0) return 0;
    std::size_t length = 0;
    while (length < into.size() && offset + length <= static_cast<std::uint64_t>(INT64_MAX)) {
        const ssize_t count = pread(static_cast<int>(handle_), into.data() + length, into.size() - length,
                                    static_cast<off_t>(offset + length));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        length += static_cast<std::size_t>(count);
    }
    return length;
}

std::uint64_t InputFile::Size() const {
    struct stat status {};
    if (handle_ < 0 || fstat(static_cast<int>(handle_), &status) != 0) return 0;
    return static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
}

std::optional<FileStatus> InputFile::Status() const {
    return handle_ < 0 ? std::nullopt : StatusOfDescriptor(static_cast<int>(handle_));
}

void InputFile::Close() {
    if (handle_ >= 0) close(static_cast<int>(std::exchange(handle_, -1)));
}

}  // namespace kalmora::files
