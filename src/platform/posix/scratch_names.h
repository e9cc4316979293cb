// How scratch files are named: ".kalmora-<process>-<number>.cidx".
#pragma once

#include <string_view>

namespace kalmora {

inline constexpr std::string_view kScratchHead = ".kalmora-";
inline constexpr std::string_view kScratchTail = ".cidx";

}  // namespace kalmora
