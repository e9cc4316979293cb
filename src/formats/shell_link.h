// Shortcuts in the shell link file format (.lnk), as bytes: those of any program, and as this program writes
// them. Nothing here looks at the disk. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/system_time.h"

namespace kalmora {

// The places that a shortcut stores. A path without a zero byte, or empty when it stores none.
struct ShellLinkPaths {
    std::string absolute;  // with the separators it was stored with
    std::string relative;  // to the folder of the shortcut, likewise
};

// Empty when the bytes are no shortcut. A shortcut that is cut short gives what can be read of it.
std::optional<ShellLinkPaths> ParseShellLink(std::string_view bytes);

// What a shortcut that is written says about its target.
struct ShellLinkTarget {
    std::string path;      // absolute
    std::string relative;  // to the folder of the shortcut, with the separators of the format; may be empty
    bool isFolder = false;
    std::uint64_t size = 0;  // of a file, in bytes
    FileTime created;        // 0 where they are not known
    FileTime accessed;
    FileTime written;
};

// The absolute path goes in in both alphabets of the format. A relative path that is too long for it is left
// out.
std::string MakeShellLink(const ShellLinkTarget& target);

}  // namespace kalmora
