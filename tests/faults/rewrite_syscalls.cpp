#include "rewrite_syscalls.h"

#include <fcntl.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <string>

namespace kalmora::test {

namespace {

FaultPlan plan;
std::atomic<int> calls{0};
bool emulates = false;

constexpr int kInsert = FALLOC_FL_INSERT_RANGE, kCollapse = FALLOC_FL_COLLAPSE_RANGE;

// Both move the rest of the file.
int MoveRest(int file, int mode, off_t offset, off_t length) {
    struct stat status {};
    if (fstat(file, &status) != 0) return -1;
    const off_t from = mode == kInsert ? offset : offset + length;
    std::string rest(static_cast<size_t>(status.st_size - from), '\0');
    if (pread(file, rest.data(), rest.size(), from) != static_cast<ssize_t>(rest.size())) return -1;
    if (mode == kInsert) rest.insert(0, static_cast<size_t>(length), '\0');
    if (syscall(SYS_pwrite64, file, rest.data(), rest.size(), offset) != static_cast<ssize_t>(rest.size()))
        return -1;
    return static_cast<int>(syscall(SYS_ftruncate, file, offset + static_cast<off_t>(rest.size())));
}

[[noreturn]] void Die() {
    kill(getpid(), SIGKILL);
    for (;;) pause();
}

// What one call has to do.
enum class Turn { Pass, Fail, Half, DieAfter };

Turn Count() {
    static thread_local bool isMeddling = false;
    if (isMeddling) return Turn::Pass;
    const int call = ++calls;
    if (plan.fault == Fault::None) return Turn::Pass;
    const bool isIt =
        call == plan.atCall || (plan.fault == Fault::Fail && plan.lasting && call > plan.atCall);
    if (!isIt) return Turn::Pass;
    switch (plan.fault) {
        case Fault::KillBefore:
            Die();
        case Fault::KillAfter:
            return Turn::DieAfter;
        case Fault::KillHalf:
            return Turn::Half;
        case Fault::Fail:
            errno = plan.error;
            return Turn::Fail;
        case Fault::Meddle:
            isMeddling = true;
            plan.meddle();
            isMeddling = false;
            break;
        case Fault::None:
            break;
    }
    return Turn::Pass;
}

// For calls that write nothing themselves.
template <typename Call>
auto Counted(const Call& call) -> decltype(call()) {
    const Turn turn = Count();
    if (turn == Turn::Fail) return -1;
    if (turn == Turn::Half) Die();
    const auto result = call();
    if (turn == Turn::DieAfter) Die();
    return result;
}

// For calls that move `length` bytes.
template <typename Call>
ssize_t CountedBytes(size_t length, const Call& call) {
    const Turn turn = Count();
    if (turn == Turn::Fail) return -1;
    const ssize_t result = call(turn == Turn::Half ? length / 2 : length);
    if (turn != Turn::Pass) Die();
    return result;
}

}  // namespace

void SetFaultPlan(const FaultPlan& newPlan) {
    plan = newPlan;
    calls = 0;
}

int CountedCalls() { return calls; }

void EmulateInsertion(bool on) { emulates = on; }

ChildEnd RunInChild(const FaultPlan& childPlan, const std::function<void()>& work) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        SetFaultPlan(childPlan);
        work();
        _exit(0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return ChildEnd::Broken;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return ChildEnd::Finished;
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL ? ChildEnd::Killed : ChildEnd::Broken;
}

}  // namespace kalmora::test

// The names of the C library, so that ours are taken in their place.
using kalmora::test::Counted;
using kalmora::test::CountedBytes;

extern "C" {

ssize_t pwrite(int file, const void* bytes, size_t length, off_t offset) {
    return CountedBytes(length,
                        [&](size_t count) { return syscall(SYS_pwrite64, file, bytes, count, offset); });
}

ssize_t write(int file, const void* bytes, size_t length) {
    if (file <= STDERR_FILENO) return syscall(SYS_write, file, bytes, length);
    return CountedBytes(length, [&](size_t count) { return syscall(SYS_write, file, bytes, count); });
}

ssize_t copy_file_range(int from, off64_t* fromAt, int to, off64_t* toAt, size_t length, unsigned flags) {
    // Half of a large step would be the whole file.
    struct stat status {};
    const size_t whole = fstat(from, &status) == 0 ? static_cast<size_t>(status.st_size) : length;
    return CountedBytes(whole < length ? whole : length, [&](size_t count) {
        return syscall(SYS_copy_file_range, from, fromAt, to, toAt, count, flags);
    });
}

int ftruncate(int file, off_t size) noexcept {
    return Counted([&] { return static_cast<int>(syscall(SYS_ftruncate, file, size)); });
}

int fallocate(int file, int mode, off_t offset, off_t length) {
    using kalmora::test::MoveRest;
    const bool moves = mode == kalmora::test::kInsert || mode == kalmora::test::kCollapse;
    if (moves && kalmora::test::plan.withoutInsertion) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return Counted([&] {
        if (moves && kalmora::test::emulates) return MoveRest(file, mode, offset, length);
        return static_cast<int>(syscall(SYS_fallocate, file, mode, offset, length));
    });
}

int fstatfs(int file, struct statfs* system) noexcept {
    const auto result = static_cast<int>(syscall(SYS_fstatfs, file, system));
    if (kalmora::test::emulates) system->f_type = EXT4_SUPER_MAGIC;
    return result;
}

int ioctl(int file, unsigned long request, ...) noexcept {
    va_list more;
    va_start(more, request);
    void* argument = va_arg(more, void*);
    va_end(more);
    if (request == FS_IOC_FIEMAP && kalmora::test::emulates) {
        static_cast<struct fiemap*>(argument)->fm_mapped_extents = 1;
        return 0;
    }
    return static_cast<int>(syscall(SYS_ioctl, file, request, argument));
}

int fsync(int) {
    return Counted([] { return 0; });
}

int fdatasync(int) {
    return Counted([] { return 0; });
}

int rename(const char* from, const char* to) noexcept {
    return Counted([&] { return static_cast<int>(syscall(SYS_rename, from, to)); });
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    if (flags != 0 && kalmora::test::plan.withoutNoReplace) {
        errno = EINVAL;
        return -1;
    }
    return Counted(
        [&] { return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags)); });
}

int link(const char* from, const char* to) noexcept {
    return Counted([&] { return static_cast<int>(syscall(SYS_link, from, to)); });
}

int mkdir(const char* path, mode_t mode) noexcept {
    return Counted([&] { return static_cast<int>(syscall(SYS_mkdir, path, mode)); });
}

int rmdir(const char* path) noexcept {
    return Counted([&] { return static_cast<int>(syscall(SYS_rmdir, path)); });
}

int syncfs(int) noexcept {
    return Counted([] { return 0; });
}

int unlink(const char* path) noexcept {
    return Counted([&] { return static_cast<int>(syscall(SYS_unlink, path)); });
}

int futimens(int file, const struct timespec times[2]) noexcept {
    return Counted([&] { return static_cast<int>(syscall(SYS_utimensat, file, nullptr, times, 0)); });
}

int utimensat(int folder, const char* path, const struct timespec times[2], int flags) noexcept {
    return Counted([&] { return static_cast<int>(syscall(SYS_utimensat, folder, path, times, flags)); });
}

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    const auto call = [&] { return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode)); };
    return (flags & (O_CREAT | O_WRONLY | O_RDWR)) != 0 ? Counted(call) : call();
}

}  // extern "C"
