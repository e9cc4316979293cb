// What the verbs do that read photos before they begin.
#pragma once

#include <string>
#include <vector>

namespace kalmora {

// Makes whole what a program that was killed left half-written; the folders must be prepared. Where that
// cannot be done now, says so on standard error, and gives the paths of those files.
std::vector<std::string> MakeWholeBeforeReading(const char* verb);

}  // namespace kalmora
