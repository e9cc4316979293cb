// What separates the names of a path on this machine.
#pragma once

namespace kalmora::files {

#if defined(_WIN32)
inline constexpr char kSeparator = '\\';
#else
inline constexpr char kSeparator = '/';
#endif

}  // namespace kalmora::files
