// The manual page, made from the parser that reads the command line, so that the two say the same.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace kalmora {

// Text for man(1), section 1: the name, the forms of use, each option and each verb in the order of the
// parser, then what a parser does not know (environment, files, exit status).
std::string ManualPage(const CLI::App& app);

}  // namespace kalmora
