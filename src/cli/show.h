// `kalmora show`: everything that the program knows about files.
#pragma once

#include <string>
#include <vector>

#include "app/start_options.h"

namespace kalmora {

struct ShowOptions {
    std::vector<std::string> files;
    std::string listFile;  // more names, one a line; "-": standard input; empty: none
    bool json = false;
};

// 0; 1 when one of the files cannot be read (the others are printed all the same).
int RunShow(const StartOptions& start, const ShowOptions& options);

}  // namespace kalmora
