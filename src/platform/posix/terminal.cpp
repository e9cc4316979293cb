#include "platform/terminal.h"

#include <unistd.h>

namespace kalmora {

bool IsErrorOutputATerminal() { return isatty(STDERR_FILENO) != 0; }

bool IsOutputATerminal() { return isatty(STDOUT_FILENO) != 0; }

}  // namespace kalmora
