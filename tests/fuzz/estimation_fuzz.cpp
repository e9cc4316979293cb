// Any text as a photo's mark-up: ratings are added to it one after the other, and what was rated is what
// is read.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "media/estimation.h"
#include "media/estimation_writer.h"

namespace {

using namespace kalmora;

void Require(bool condition) {
    if (!condition) std::abort();
}

struct Axis {
    std::string_view head;
    std::int32_t Estimations::*value;
};
constexpr std::array<Axis, 3> kAxes{{{"<estimation type='like'", &Estimations::like},
                                     {"<estimation type='privacy'", &Estimations::privacy},
                                     {"<estimation type='good'", &Estimations::good}}};

void Rate(std::string& text, Estimations& values, int type) {
    const bool hadBlock = text.find("<estimations>") != std::string::npos;
    const EstimateStep step = StepEstimate(text, values, static_cast<EstimateType>(type), {2008, 5, 6});
    Require(step.text.find('\0') == std::string::npos);
    Require(step.text.size() <= text.size() + 250);
    const Estimations read = ParseEstimations(step.text);
    if (type >= 1 && type <= 6) {
        const Axis& axis = kAxes[static_cast<std::size_t>((type - 1) % 3)];
        const std::size_t at = text.find(axis.head);
        // An element outside a block, or at the very beginning, hides what comes behind it.
        if (at == std::string::npos || (hadBlock && at > 0))
            Require(read.*axis.value == step.values.*axis.value);
        if (hadBlock)
            for (const Axis& other : kAxes)
                if (&other != &axis) Require(read.*other.value == ParseEstimations(text).*other.value);
    } else {
        Require(step.text.size() <= text.size());
    }
    text = step.text;
    values = step.values;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kSteps = 4;
    if (size < kSteps) return 0;
    std::string text(reinterpret_cast<const char*>(data + kSteps), size - kSteps);
    text = text.substr(0, text.find('\0'));
    Estimations values = ParseEstimations(text);
    for (std::size_t i = 0; i < kSteps; ++i) Rate(text, values, data[i] % 9);
    return 0;
}
