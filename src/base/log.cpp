#include "base/log.h"

#include <atomic>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <mutex>

namespace kalmora {

namespace {
std::atomic<bool> logOpen{false};
std::mutex logMutex;
std::FILE* logFile = nullptr;  // guarded by logMutex

double SecondsSinceStart() {
    static const auto start = std::chrono::steady_clock::now();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}
}  // namespace

bool OpenLog(const std::string& path) {
    std::lock_guard lock(logMutex);
    if (logFile) std::fclose(logFile);
    logFile = path.empty() ? nullptr : std::fopen(path.c_str(), "ab");
    logOpen = logFile != nullptr;
    SecondsSinceStart();
    return path.empty() || logFile;
}

bool IsLogOpen() { return logOpen.load(std::memory_order_relaxed); }

void Log(const char* format, ...) {
    if (!IsLogOpen()) return;
    char text[4096];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    std::lock_guard lock(logMutex);
    if (!logFile) return;
    std::fprintf(logFile, "%10.3f %s\n", SecondsSinceStart(), text);
    std::fflush(logFile);
}

}  // namespace kalmora
