// `kalmora rotate`: a JPEG turned without loss.
#pragma once

#include <string>

#include "app/start_options.h"

namespace kalmora {

struct RotateOptions {
    std::string file;
    int degrees = 0;  // clockwise: 90, 180 or 270
    bool json = false;
};

// 0, or 1 when the photo stays as it is.
int RunRotate(const StartOptions& start, const RotateOptions& options);

}  // namespace kalmora
