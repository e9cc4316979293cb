// What tests do with the machine and the program never does.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kalmora::test {

// A named pipe, which is no file of the user. False when it cannot be made.
bool MakePipe(const std::string& path);

int OwnProcessId();

void SetVariable(const char* name, const std::string& value);
void ClearVariable(const char* name);

// Another process; killed and waited for when the object goes.
class ChildProcess {
public:
    // Runs a program with these words, its path first; what it prints is lost.
    explicit ChildProcess(const std::vector<std::string>& words);
    // A copy of this process does the work and ends with its status.
    explicit ChildProcess(const std::function<int()>& work);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool IsRunning();
    void Interrupt() const;  // as Ctrl+C does
    void Kill();             // and waits for its end
    int WaitForEnd();        // its exit status; -1 when a signal ended it

private:
    int process_ = -1;  // -1: it could not be started, or its end has been seen
    int status_ = -1;
};

}  // namespace kalmora::test
