// Names as they can be shown. A file name may hold control characters, and a terminal would obey them.
#pragma once

#include <string>
#include <string_view>

namespace kalmora {

// With "\n", "\t", "\x1b" and the like in place of control characters, those beyond ASCII and those that
// change the direction of writing among them.
std::string EscapeControls(std::string_view text);

// For standard output and standard error: escaped where a person reads it, and as it is for a program.
std::string ShownOnOutput(const std::string& name);
std::string ShownOnErrors(const std::string& name);

}  // namespace kalmora
