// Disks that are slow, do not answer or cannot be listed, for one program: preloaded, it holds up or refuses
// calls that name a path below a folder.
//
//   SLOW_DISK=/folder SLOW_DISK_US=2000 DEAD_DISK=/other DEAD_DISK_WHILE=/a/file LD_PRELOAD=...so PROGRAM
//
// SLOW_DISK_US: how many microseconds each such call takes longer. DEAD_DISK_WHILE: while a file of this name
// is there, calls into the dead disk do not return; the name of each thread that is inside one goes into
// it. CLOSED_DISK: a folder whose names, and those of the folders below it, are denied.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace {

bool IsOn(const char* folder, const char* path) {
    return path && folder && std::strncmp(path, folder, std::strlen(folder)) == 0;
}

void TellWho(const char* into) {
    char name[32] = "";
    prctl(PR_GET_NAME, name);
    const auto file = static_cast<int>(syscall(SYS_openat, AT_FDCWD, into, O_WRONLY | O_APPEND));
    if (file < 0) return;
    std::strcat(name, "\n");
    [[maybe_unused]] const ssize_t written = write(file, name, std::strlen(name));
    close(file);
}

void Hold(const char* path) {
    static const char* const slow = std::getenv("SLOW_DISK");
    static const char* const delay = std::getenv("SLOW_DISK_US");
    static const char* const dead = std::getenv("DEAD_DISK");
    static const char* const deadWhile = std::getenv("DEAD_DISK_WHILE");
    const int error = errno;
    if (delay && IsOn(slow, path)) usleep(static_cast<useconds_t>(std::atoi(delay)));
    if (deadWhile && IsOn(dead, path) && syscall(SYS_access, deadWhile, F_OK) == 0) {
        TellWho(deadWhile);
        while (syscall(SYS_access, deadWhile, F_OK) == 0) usleep(10'000);
    }
    errno = error;
}

template <typename Function>
Function* Next(Function* /*of this type*/, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

mode_t ModeOf(int flags, std::va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

#pragma GCC diagnostic ignored "-Wmissing-declarations"
#pragma GCC diagnostic ignored "-Wnonnull-compare"

#define KALMORA_OPEN(name)                                  \
    extern "C" int name(const char* path, int flags, ...) { \
        static auto* const next = Next(&name, #name);       \
        std::va_list arguments;                             \
        va_start(arguments, flags);                         \
        const mode_t mode = ModeOf(flags, arguments);       \
        va_end(arguments);                                  \
        Hold(path);                                         \
        return next(path, flags, mode);                     \
    }
KALMORA_OPEN(open)
KALMORA_OPEN(open64)

#define KALMORA_STAT(name, buffer)                                          \
    extern "C" int name(const char* path, struct buffer* status) noexcept { \
        static auto* const next = Next(&name, #name);                       \
        Hold(path);                                                         \
        return next(path, status);                                          \
    }
KALMORA_STAT(stat, stat)
KALMORA_STAT(stat64, stat64)
KALMORA_STAT(lstat, stat)
KALMORA_STAT(lstat64, stat64)

extern "C" int statx(int folder, const char* path, int flags, unsigned mask, struct statx* status) noexcept {
    static auto* const next = Next(&statx, "statx");
    Hold(path);
    return next(folder, path, flags, mask, status);
}

extern "C" DIR* opendir(const char* path) {
    static auto* const next = Next(&opendir, "opendir");
    static const char* const closedDisk = std::getenv("CLOSED_DISK");
    Hold(path);
    if (IsOn(closedDisk, path)) {
        errno = EACCES;
        return nullptr;
    }
    return next(path);
}

extern "C" int access(const char* path, int mode) noexcept {
    static auto* const next = Next(&access, "access");
    Hold(path);
    return next(path, mode);
}
