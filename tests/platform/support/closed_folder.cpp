// The test program's own opendir comes before that of the C library.
#include "support/closed_folder.h"

#include <dirent.h>
#include <dlfcn.h>

#include <cerrno>
#include <mutex>

namespace kalmora::test {

namespace {

std::mutex closedMutex;
std::string closed;  // guarded by closedMutex; empty: none

bool IsClosed(const char* path) {
    std::lock_guard lock(closedMutex);
    return !closed.empty() && closed == path;
}

void Close(const std::string& path) {
    std::lock_guard lock(closedMutex);
    closed = path;
}

}  // namespace

ClosedFolder::ClosedFolder(const std::string& path) { Close(path); }

ClosedFolder::~ClosedFolder() { Close({}); }

}  // namespace kalmora::test

extern "C" DIR* opendir(const char* path) {
    static auto* const next = reinterpret_cast<decltype(&opendir)>(dlsym(RTLD_NEXT, "opendir"));
    if (!kalmora::test::IsClosed(path)) return next(path);
    errno = EACCES;
    return nullptr;
}
