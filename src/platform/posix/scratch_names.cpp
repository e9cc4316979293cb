#include "platform/posix/scratch_names.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

#include "platform/files.h"

namespace kalmora {

Descriptor MakeScratchFile(const std::string& folder, mode_t mode, std::string& madePath) {
    static std::atomic<unsigned> counter{0};
    const std::string head = files::Join(folder, std::string(kScratchHead) + std::to_string(getpid()) + "-");
    constexpr int kAttempts = 1000;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        madePath = head + std::to_string(counter.fetch_add(1)) + std::string(kScratchTail);
        Descriptor file(open(madePath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (file || errno != EEXIST) return file;
    }
    return {};
}

}  // namespace kalmora
