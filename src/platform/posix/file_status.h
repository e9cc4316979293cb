// One look at a file, by its name or by a descriptor.
#pragma once

#include <optional>

#include "platform/files.h"

namespace kalmora::files {

std::optional<FileStatus> StatusOfDescriptor(int descriptor);

}  // namespace kalmora::files
