#include "cli/progress_bar.h"

#include <algorithm>
#include <cstdio>

#include "cli/shown_name.h"
#include "platform/clock.h"
#include "platform/terminal.h"

namespace kalmora {

namespace {
constexpr int kWidth = 32;          // characters
constexpr double kShortestMs = 50;  // between two paintings
constexpr char kWipeLine[] = "\r\x1b[K";
}  // namespace

ProgressBar::ProgressBar() : shown_(IsErrorOutputATerminal()) {}

ProgressBar::~ProgressBar() {
    if (shown_) std::fputs(kWipeLine, stderr);
}

void ProgressBar::OnProgress(double ratio, const std::string& text) {
    if (!shown_) return;
    std::lock_guard lock(mutex_);
    const double now = UptimeMs();
    if (now - paintedAt_ < kShortestMs) return;
    paintedAt_ = now;
    const double part = std::clamp(ratio, 0.0, 1.0);
    std::string bar(kWidth, ' ');
    std::fill_n(bar.begin(), static_cast<int>(part * kWidth), '#');
    std::fprintf(stderr, "%s[%s] %3d%% %s", kWipeLine, bar.c_str(), static_cast<int>(part * 100),
                 EscapeControls(text).c_str());
    std::fflush(stderr);
}

}  // namespace kalmora
