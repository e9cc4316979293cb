#include "platform/process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <ctime>
#include <system_error>
#include <thread>

#include "platform/posix/descriptor.h"

// The environment of this program, handed on as it is.
extern char** environ;  // NOLINT: the C library declares it under feature macros only

namespace kalmora {

namespace {

using Clock = std::chrono::steady_clock;

enum class Session { Shared, Own };

// Everything that is passed to posix_spawn, and its release.
class SpawnPlan {
public:
    explicit SpawnPlan(Session session) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        posix_spawnattr_init(&attributes_);
        // A group of its own, so that the program can be ended together with what it started; a session of
        // its own when it shall outlive us. Signals as a fresh program expects them.
        sigset_t none, pipe;
        sigemptyset(&none);
        sigemptyset(&pipe);
        sigaddset(&pipe, SIGPIPE);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &pipe);
        posix_spawnattr_setpgroup(&attributes_, 0);
        const int grouping = session == Session::Own ? POSIX_SPAWN_SETSID : POSIX_SPAWN_SETPGROUP;
        posix_spawnattr_setflags(
            &attributes_, static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | grouping));
    }
    ~SpawnPlan() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    // 0 when it cannot be started.
    pid_t Spawn(const std::vector<std::string>& command) const {
        if (command.empty() || command.front().empty()) return 0;
        std::vector<std::string> owned(command);
        std::vector<char*> arguments;
        arguments.reserve(owned.size() + 1);
        for (std::string& argument : owned) arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        pid_t child = 0;
        const int error =
            posix_spawnp(&child, arguments.front(), &actions_, &attributes_, arguments.data(), environ);
        return error == 0 ? child : 0;
    }

private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

int ExitCodeOf(int status) {
    if (WIFEXITED(status)) return WEXITSTATUS(status);
    constexpr int kSignalBase = 128;
    return WIFSIGNALED(status) ? kSignalBase + WTERMSIG(status) : -1;
}

int WaitFor(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

// True when the child has ended before the time was over. It is not yet taken back then.
bool EndsWithin(pid_t child, int timeoutMs) {
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(timeoutMs);
    const Descriptor handle(static_cast<int>(syscall(SYS_pidfd_open, child, 0u)));
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        const int wait = static_cast<int>(std::max<long long>(left, 0));
        if (handle) {
            pollfd watched{handle.Get(), POLLIN, 0};
            if (poll(&watched, 1, wait) > 0) return true;
        } else {
            // A kernel without handles for processes: look now and then.
            siginfo_t info{};
            if (waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
                info.si_pid != 0)
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(std::min(wait, 10)));
        }
        if (wait == 0) return false;
    }
}

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& command, int timeoutMs) {
    ProcessResult result;
    const pid_t child = SpawnPlan(Session::Shared).Spawn(command);
    if (child <= 0) return result;
    result.started = true;
    result.ended = timeoutMs < 0 || EndsWithin(child, timeoutMs);
    if (!result.ended) kill(-child, SIGKILL);
    const int status = WaitFor(child);
    if (result.ended) result.exitCode = ExitCodeOf(status);
    return result;
}

bool StartProcess(const std::vector<std::string>& command) {
    const pid_t child = SpawnPlan(Session::Own).Spawn(command);
    if (child <= 0) return false;
    try {
        // The ended child has to be waited for, however late it ends.
        std::thread([child] { WaitFor(child); }).detach();
    } catch (const std::system_error&) {
        // It runs all the same; it stays in the process table until this program ends.
    }
    return true;
}

}  // namespace kalmora
