// How the index tells what it does: one hook for loads, updates, searches and imports.
#pragma once

#include <functional>
#include <string>

#include "base/printf_format.h"

namespace kalmora {

// ratio 0 to 1. Set at start, before other threads run; called on the thread that works, any of them.
extern std::function<void(double ratio, const std::string& text)> OnProgress;

// How far the update of a month is, for a second sign beside the text: 0 to 1, where 1 is its end however it
// came. As OnProgress.
extern std::function<void(double ratio)> OnUpdateProgress;
void TellUpdateProgress(double ratio);  // does nothing while nobody listens

// printf-like; does nothing while nobody listens.
KALMORA_PRINTF(2, 3)
void TellProgress(double ratio, const char* format, ...);

}  // namespace kalmora
