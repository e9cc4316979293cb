// What the command line says about a run of the program.
#pragma once

#include <string>

namespace kalmora {

struct StartOptions {
    std::string home;  // --home; empty: $KALMORA_HOME, or by the rule in environment.h
    std::string data;  // --data: DataDirectory for this run only, never saved; empty: not given
    std::string log;   // --log; empty: $KALMORA_LOG, or no log
};

}  // namespace kalmora
