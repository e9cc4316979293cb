// The entry of the library that holds the window: the whole program once more, with the toolkit.
// main_without_window.cpp loads it for what needs that.
#include "cli/command_line.h"
#include "platform/clock.h"

extern "C" __attribute__((visibility("default"))) int KalmoraWindowMain(int argc, char** argv) {
    kalmora::UptimeMs();  // this part's time begins here
    return kalmora::RunCommandLine(argc, argv);
}
