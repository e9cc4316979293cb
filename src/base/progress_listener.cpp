#include "base/progress_listener.h"

#include <cstdarg>
#include <cstdio>

namespace kalmora {

namespace {

class NullProgress final : public ProgressListener {
public:
    void OnProgress(double, const std::string&) override {}
};

}  // namespace

ProgressListener& NoProgress() {
    static auto* const listener = new NullProgress;  // workers may outlive main
    return *listener;
}

void ReportProgress(ProgressListener& listener, double ratio, const char* format, ...) {
    if (&listener == &NoProgress()) return;
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    listener.OnProgress(ratio, text);
}

}  // namespace kalmora
