// Shortcuts from anywhere: whatever the bytes say, the reader gives a path or nothing.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "store/shortcuts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto target = kalmora::ReadShortcut(bytes, "/nowhere/2008/200811/2008_1113");
    if (!target) return 0;
    // A path is never empty, never has a zero in it, and comes back from a shortcut of our own.
    if (target->empty() || target->find('\0') != std::string::npos) std::abort();
    if (target->front() != '/' || target->find('\\') != std::string::npos) return 0;
    const std::string again = kalmora::MakeShortcut(*target, "/nowhere");
    if (!kalmora::ReadShortcut(again, "/elsewhere")) std::abort();
    return 0;
}
