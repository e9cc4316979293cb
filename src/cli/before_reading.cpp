#include "cli/before_reading.h"

#include <cstdio>

#include "app/app_state.h"
#include "store/safe_rewrite.h"

namespace kalmora {

std::vector<std::string> MakeWholeBeforeReading(const char* verb) {
    std::vector<std::string> torn = SettleBeforeReading(State().TempFolder);
    for (const std::string& path : torn)
        std::fprintf(stderr, "kalmora %s: %s: a change of this file was cut off and cannot be settled now\n",
                     verb, path.c_str());
    return torn;
}

}  // namespace kalmora
