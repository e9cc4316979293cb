// Writing until everything is written.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <string_view>

namespace kalmora {

// False on an error, which is in errno then; part of the content may be in the file.
inline bool WriteAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(file, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace kalmora
