// The system's error numbers in the words of files.h.
#pragma once

#include "platform/files.h"

namespace kalmora::files {

FileResult ResultOfError(int errorNumber);

}  // namespace kalmora::files
