// The program's diagnostics. Off until a file is given; then one line a call, with the uptime in front.
#pragma once

#include <string>

namespace kalmora {

// Opens the file for appending and turns logging on; an empty path turns it off. False when it cannot be
// opened (logging is then off). Call before other threads run.
bool OpenLog(const std::string& path);
bool IsLogOpen();

// printf-like; UTF-8; a line feed is added. Costs one atomic read while the log is off. Any thread.
[[gnu::format(printf, 1, 2)]] void Log(const char* format, ...);

}  // namespace kalmora
