// The end of the program has a bound: however a disk answers, the process is gone 2.2 seconds after it began.
#pragma once

#include <functional>
#include <memory>

namespace kalmora {

// One for the run; it must go after all that could still hang has gone. Any thread.
class ProgramEnd {
public:
    struct Steps {
        std::function<void()> save;   // what the user has set; on a thread of its own, at most once
        std::function<void()> leave;  // ends the process, also when workers still run; on a thread of its own
        int longestMs = 2100;         // from Begin to `leave`; the system then needs a moment, too
    };
    explicit ProgramEnd(Steps steps);
    ~ProgramEnd();  // from now on `leave` is not called
    ProgramEnd(const ProgramEnd&) = delete;
    ProgramEnd& operator=(const ProgramEnd&) = delete;

    // The time runs from now on; also where the GUI thread itself hangs. When it is up and the object still
    // exists, `leave` is called; `save` shortly before that, unless Save was called. A second call does
    // nothing.
    void Begin();
    // Begins if need be, saves, and waits for it while there is time. False when it is not done then.
    bool Save();
    // Milliseconds until the time is up; all of them before Begin.
    int MsLeft() const;

private:
    struct State;
    std::shared_ptr<State> state_;  // the threads keep it
};

}  // namespace kalmora
