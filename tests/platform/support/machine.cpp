#include "support/machine.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace kalmora::test {

bool MakePipe(const std::string& path) { return mkfifo(path.c_str(), 0666) == 0; }

int OwnProcessId() { return getpid(); }

void SetVariable(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }

void ClearVariable(const char* name) { unsetenv(name); }

ChildProcess::ChildProcess(const std::vector<std::string>& words) {
    std::vector<std::string> copies = words;
    std::vector<char*> pointers;
    for (std::string& word : copies) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t process = -1;
    if (posix_spawn(&process, pointers[0], &actions, nullptr, pointers.data(), environ) == 0)
        process_ = process;
    posix_spawn_file_actions_destroy(&actions);
}

ChildProcess::ChildProcess(const std::function<int()>& work) {
    process_ = fork();
    if (process_ == 0) _exit(work());
}

ChildProcess::~ChildProcess() { Kill(); }

bool ChildProcess::IsRunning() {
    int status = 0;
    if (process_ < 0 || waitpid(process_, &status, WNOHANG) == 0) return process_ >= 0;
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    process_ = -1;
    return false;
}

void ChildProcess::Interrupt() const {
    if (process_ >= 0) kill(process_, SIGINT);
}

void ChildProcess::Kill() {
    if (process_ < 0) return;
    kill(process_, SIGKILL);
    WaitForEnd();
}

int ChildProcess::WaitForEnd() {
    int status = 0;
    if (process_ >= 0 && waitpid(process_, &status, 0) == process_)
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    process_ = -1;
    return status_;
}

}  // namespace kalmora::test
