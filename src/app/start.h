// Bringing the program up and taking it down: the desktop program from the first step to the last.
#pragma once

#include <string>

#include "app/start_options.h"

namespace kalmora {

// Runs the program with its window until it is closed; gives the process's exit code. Main thread.
int RunDesktop(const StartOptions& options);

// Tells in a box of its own why the program does not start, where there is a display for it. Main thread.
void TellOnScreen(const std::string& words);

}  // namespace kalmora
