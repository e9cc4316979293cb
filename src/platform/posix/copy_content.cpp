#include "platform/posix/copy_content.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

#include "platform/posix/write_all.h"

namespace kalmora {

namespace {

bool CopyByHand(int from, int to) {
    std::array<char, 1 << 16> buffer;
    for (;;) {
        const ssize_t count = read(from, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        if (count == 0) return true;
        if (!WriteAll(to, std::string_view(buffer.data(), static_cast<std::size_t>(count)))) return false;
    }
}

}  // namespace

// The kernel shares the blocks of the two where the file system can. Where it refuses the pair of file
// systems, or ends early as it does with files that only seem to have a length, the rest goes by hand: both
// descriptors have moved on by then.
bool CopyContent(int from, int to) {
    constexpr std::size_t kStep = 1u << 30;
    for (;;) {
        const ssize_t count = copy_file_range(from, nullptr, to, nullptr, kStep, 0);
        if (count < 0 && errno == EINTR) continue;
        if (count > 0) continue;
        if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EIO)) return false;
        return CopyByHand(from, to);
    }
}

}  // namespace kalmora
