// Writes the manual page: kalmora-manual FILE
#include <cstdio>

#include "cli/command_line.h"
#include "platform/files.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: kalmora-manual FILE\n", stderr);
        return 2;
    }
    return kalmora::files::WriteWholeFile(argv[1], kalmora::CommandLineManual()) ==
                   kalmora::files::FileResult::Done
               ? 0
               : 1;
}
