#include "cli/before_reading.h"

#include <cstdio>

#include "rewrite/safe_rewrite.h"
#include "state/app_state.h"

namespace kalmora {

std::vector<std::string> MakeWholeBeforeReading(const char* verb) {
    std::vector<std::string> torn = RecoverBeforeReading(State().settings.TempFolder);
    for (const std::string& path : torn)
        std::fprintf(stderr, "kalmora %s: %s: a change of this file was cut off and cannot be settled now\n",
                     verb, path.c_str());
    return torn;
}

}  // namespace kalmora
