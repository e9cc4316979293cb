#include "index/index_progress.h"

#include <cstdarg>
#include <cstdio>

namespace kalmora {

std::function<void(double ratio, const std::string& text)> OnProgress;

std::function<void(double ratio)> OnUpdateProgress;

void TellUpdateProgress(double ratio) {
    if (OnUpdateProgress) OnUpdateProgress(ratio);
}

void TellProgress(double ratio, const char* format, ...) {
    if (!OnProgress) return;
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    OnProgress(ratio, text);
}

}  // namespace kalmora
