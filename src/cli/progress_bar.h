// A bar on the last line of the terminal while a verb works; nothing where standard error is no terminal.
#pragma once

#include <mutex>
#include <string>

#include "base/progress_listener.h"

namespace kalmora {

// Any thread.
class ProgressBar final : public ProgressListener {
public:
    ProgressBar();
    ~ProgressBar() override;  // wipes the line
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // ratio 0 to 1. Painted at most every 50 ms.
    void OnProgress(double ratio, const std::string& text) override;

private:
    std::mutex mutex_;
    const bool shown_;
    double paintedAt_ = -1000;  // guarded by mutex_, uptime in ms
};

}  // namespace kalmora
