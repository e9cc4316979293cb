// The terminal behind the command line. Any thread.
#pragma once

namespace kalmora {

// True when a person reads what goes to standard error: only then is progress shown there.
bool IsErrorOutputATerminal();

// The same of standard output.
bool IsOutputATerminal();

}  // namespace kalmora
