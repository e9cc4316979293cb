// ProgressListener: who is shown how far a scan, an index update, a search or an import has come.
#pragma once

#include <string>

namespace kalmora {

// Called on the thread that works; several may call at the same time. Outlives the work.
class ProgressListener {
public:
    virtual ~ProgressListener() = default;
    // ratio: 0 to 1. The text is UTF-8.
    virtual void OnProgress(double ratio, const std::string& text) = 0;
    // How far the update of a month is, for a second sign beside the text: 0 to 1, where 1 is its end, also
    // when it was stopped.
    virtual void OnUpdateProgress(double /*ratio*/) {}
};

// Shows nothing.
ProgressListener& NoProgress();

// printf-like; at most 511 bytes.
[[gnu::format(printf, 3, 4)]] void ReportProgress(ProgressListener& listener, double ratio,
                                                  const char* format, ...);

}  // namespace kalmora
