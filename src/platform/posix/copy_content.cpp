#include "platform/posix/copy_content.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

#include "platform/posix/write_all.h"

namespace kalmora {

namespace {

constexpr std::size_t kWatchedStep = 16u << 20;  // between two questions

// Asks after each step, and keeps what is not on the disk yet to two steps: a flush at the end is short then.
class Course {
public:
    Course(int to, const std::function<bool(std::uint64_t)>& goesOn) : to_(to), goesOn_(goesOn) {}

    // False, with errno set, when the copy is to end here.
    bool Pass(std::size_t count) {
        done_ += count;
        sinceAsked_ += count;
        if (!goesOn_ || sinceAsked_ < kWatchedStep) return true;
        const auto length = static_cast<off64_t>(sinceAsked_);
        const auto begin = static_cast<off64_t>(done_) - length;
        sync_file_range(to_, begin, length, SYNC_FILE_RANGE_WRITE);
        if (begin > 0)
            sync_file_range(to_, 0, begin,
                            SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER);
        sinceAsked_ = 0;
        if (goesOn_(done_)) return true;
        errno = ECANCELED;
        return false;
    }

private:
    const int to_;
    const std::function<bool(std::uint64_t)>& goesOn_;
    std::uint64_t done_ = 0;
    std::size_t sinceAsked_ = 0;
};

bool CopyByHand(int from, int to, Course& course) {
    std::array<char, 1 << 16> buffer;
    for (;;) {
        const ssize_t count = read(from, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        if (count == 0) return true;
        if (!WriteAll(to, std::string_view(buffer.data(), static_cast<std::size_t>(count)))) return false;
        if (!course.Pass(static_cast<std::size_t>(count))) return false;
    }
}

}  // namespace

// The kernel shares the blocks of the two where the file system can. Where it refuses the pair of file
// systems, or ends early as it does with files that only seem to have a length, the rest goes by hand: both
// descriptors have moved on by then.
bool CopyContent(int from, int to, const std::function<bool(std::uint64_t)>& goesOn) {
    const std::size_t step = goesOn ? kWatchedStep : std::size_t{1} << 30;
    Course course(to, goesOn);
    for (;;) {
        const ssize_t count = copy_file_range(from, nullptr, to, nullptr, step, 0);
        if (count < 0 && errno == EINTR) continue;
        if (count > 0 && !course.Pass(static_cast<std::size_t>(count))) return false;
        if (count > 0) continue;
        if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EIO)) return false;
        return CopyByHand(from, to, course);
    }
}

}  // namespace kalmora
