// What images::Measure shares with the decoder. It stands in a file of its own, without the toolkit, so that
// a program which only measures does not need the toolkit's libraries.
#pragma once

#include "platform/image.h"

namespace kalmora::qt {

// The hook that was set last; null when there is none. Any thread.
images::PreviewReader ThePreviewReader();

}  // namespace kalmora::qt
