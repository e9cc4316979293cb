// Work on files that the user waits for, and that must not keep the window from being closed.
#pragma once

#include <functional>

namespace kalmora {

// Runs the work on a thread of its own. Comes back when it is done; work that takes longer than 200 ms lets
// the window's events be served meanwhile. False when the window was closed before it was done: the work then
// continues alone, and what it uses must outlive this call. GUI thread.
bool RunBeside(const char* threadName, std::function<void()> work);

// Runs the work on a thread of its own and waits for it, at most so long and without serving events; the work
// then continues alone, and what it uses must outlive this call. GUI thread.
void RunAtMost(const char* threadName, int milliseconds, std::function<void()> work);

// True while any such work runs. Any thread.
bool IsWorkBesideRunning();

}  // namespace kalmora
