// How scratch files are named: ".kalmora-<process>-<number>.cidx".
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "platform/posix/descriptor.h"

namespace kalmora {

inline constexpr std::string_view kScratchHead = ".kalmora-";
inline constexpr std::string_view kScratchTail = ".cidx";

// A new empty file in the folder, for writing. Hidden, and of a kind that the index passes over, in case a
// crash leaves it behind. Its path is in `madePath`. Not open, and errno set, when it cannot be made.
Descriptor MakeScratchFile(const std::string& folder, mode_t mode, std::string& madePath);

}  // namespace kalmora
