// The whole program in one executable, as the sanitizers want it.
#include "cli/command_line.h"
#include "platform/clock.h"

int main(int argc, char** argv) {
    kalmora::UptimeMs();  // the program's time begins here
    return kalmora::RunCommandLine(argc, argv);
}
