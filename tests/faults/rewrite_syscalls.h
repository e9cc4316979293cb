// Intercepts the system calls that change files: the test program's own functions of these names come before
// those of the C library, count their calls and can kill the process at one of them or let it fail. The
// flushes do nothing, since what a killed process has written stays in the system's memory without them.
#pragma once

#include <functional>

namespace kalmora::test {

enum class Fault {
    None,        // counts only
    KillBefore,  // ends the process in front of the call
    KillAfter,   // ends it behind the call
    KillHalf,    // writes half of what was to be written and ends it; KillBefore for calls that write nothing
    Fail,        // the call does nothing and gives `error`; so do all that follow while `lasting`
    Meddle       // another program does `meddle` before the call
};

struct FaultPlan {
    Fault fault = Fault::None;
    int atCall = 0;  // the first is 1
    int error = 0;
    bool lasting = false;
    bool withoutInsertion = false;   // the file system cannot insert space
    bool withoutNoReplace = false;   // nor rename without replacing
    std::function<void()> meddle{};  // its own calls are not counted
};

// In place of the file system's own insertion of space, bytes are moved by hand, in one step as far as a kill
// can show: for a folder in memory, where thousands of runs cost nothing.
void EmulateInsertion(bool on);

// Puts the plan in force and counts from 0 again.
void SetFaultPlan(const FaultPlan& plan);
// Calls that were counted since.
int CountedCalls();

enum class ChildEnd { Finished, Killed, Broken };
// Runs the work in a child process under the plan.
ChildEnd RunInChild(const FaultPlan& plan, const std::function<void()>& work);

}  // namespace kalmora::test
