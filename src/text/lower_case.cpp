#include "text/lower_case.h"

#include <algorithm>
#include <iterator>

namespace kalmora::text {

namespace {

// Letters first, first + step, ... last become small when `added` is added to each.
struct Run {
    char32_t first;
    char32_t last;
    int step;
    int added;
};

constexpr Run kRuns[] = {
#include "text/lower_case_table.inc"
};

}  // namespace

char32_t LowerCase(char32_t character) {
    const Run* run =
        std::lower_bound(std::begin(kRuns), std::end(kRuns), character,
                         [](const Run& before, char32_t letter) { return before.last < letter; });
    if (run == std::end(kRuns) || character < run->first) return character;
    if ((character - run->first) % static_cast<char32_t>(run->step) != 0) return character;
    return static_cast<char32_t>(static_cast<int>(character) + run->added);
}

}  // namespace kalmora::text
