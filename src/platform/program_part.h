// A part of the program that lies in a library of its own, loaded when it is needed.
#pragma once

#include <optional>
#include <string>

namespace kalmora {

// Loads the library of that name from where the executable looks for its own, and runs the function
// `int entry(int, char**)` in it; gives what that returns. Empty when the library or the function cannot be
// found; `reason` says why then. The library stays loaded. Main thread.
std::optional<int> RunProgramPart(const char* library, const char* entry, int argc, char** argv,
                                  std::string& reason);

}  // namespace kalmora
