// The executable without the toolkit: the command line and every verb that does without pictures' pixels. The
// window, `shot`, which draws one, and `rotate`, which turns the small picture inside a photo, lie in a
// library of their own with the toolkit behind it (window_part.cpp): loading that takes several times as long
// as a search. What is defined here replaces start.cpp, shot.cpp and rotate.cpp.
#include <cstdio>
#include <string>

#include "app/start.h"
#include "cli/command_line.h"
#include "cli/rotate.h"
#include "cli/shot.h"
#include "platform/clock.h"
#include "platform/program_part.h"

namespace kalmora {

namespace {

int argumentCount = 0;
char** arguments = nullptr;

// The part reads the command line once more.
int RunWindowPart() {
    std::string reason;
    const auto status =
        RunProgramPart("libkalmora_window.so", "KalmoraWindowMain", argumentCount, arguments, reason);
    if (status) return *status;
    std::fprintf(stderr, "kalmora: the window's part of the program cannot be loaded: %s\n", reason.c_str());
    return 1;
}

}  // namespace

int RunDesktop(const StartOptions&) { return RunWindowPart(); }
int RunShot(const StartOptions&, const ShotOptions&) { return RunWindowPart(); }
int RunRotate(const StartOptions&, const RotateOptions&) { return RunWindowPart(); }

}  // namespace kalmora

int main(int argc, char** argv) {
    kalmora::UptimeMs();  // the program's time begins here
    kalmora::argumentCount = argc;
    kalmora::arguments = argv;
    return kalmora::RunCommandLine(argc, argv);
}
