// Adding to a file that grows line by line.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/files.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/file_errors.h"

namespace kalmora::files {

FileResult AppendToFile(const std::string& path, std::string_view content) {
    // Without O_NONBLOCK this would wait for a pipe that no program reads.
    Descriptor file(
        open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666));
    if (!file) return ResultOfError(errno);
    struct stat status {};
    if (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return FileResult::Failed;
    while (!content.empty()) {
        const ssize_t written = write(file.Get(), content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return ResultOfError(errno);
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return file.Close() ? FileResult::Done : ResultOfError(errno);
}

}  // namespace kalmora::files
