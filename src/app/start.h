// Bringing the program up and taking it down: the desktop program from the first step to the last.
#pragma once

#include "app/start_options.h"

namespace kalmora {

// Runs the program with its window until it is closed; gives the process's exit code. What keeps it from
// starting is reported on standard error, and, where there is a display for it and the fault is none of the
// options, in a box. Main thread.
int RunDesktop(const StartOptions& options);

}  // namespace kalmora
