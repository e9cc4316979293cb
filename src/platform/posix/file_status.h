// One look at a file, by its name or by a descriptor.
#pragma once

#include <sys/stat.h>

#include <optional>

#include "platform/files.h"

namespace kalmora::files {

// The bits of a mode that allow writing to somebody.
inline constexpr mode_t kWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

std::optional<FileStatus> StatusOfDescriptor(int descriptor);

}  // namespace kalmora::files
