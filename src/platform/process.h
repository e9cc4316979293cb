// Outside programs, started without a window of their own.
#pragma once

#include <string>
#include <vector>

namespace kalmora {

struct ProcessResult {
    bool started = false;
    bool ended = false;  // false when the time ran out (the program is then killed)
    int exitCode = -1;   // 128 + the signal's number when a signal ended it
};

// Runs a program (found in PATH unless it has a separator) with its arguments, no shell between, input and
// output closed, and waits. timeoutMs below 0 waits without bound. Any thread.
ProcessResult RunProcess(const std::vector<std::string>& command, int timeoutMs);
// Starts it and does not wait; false when it cannot be started.
bool StartProcess(const std::vector<std::string>& command);

}  // namespace kalmora
