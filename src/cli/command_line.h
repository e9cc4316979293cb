// The command line: which verb, with which options; without a verb the desktop program.
#pragma once

#include <string>

namespace kalmora {

// Runs what the arguments ask for; gives the exit status: 0 done, 1 failed, 2 wrong use. Main thread.
int RunCommandLine(int argc, char** argv);

// The manual page of all of it, as text for man(1).
std::string CommandLineManual();

}  // namespace kalmora
