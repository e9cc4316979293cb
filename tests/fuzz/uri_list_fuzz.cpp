// Lists of dropped files as any program may offer them. Every path is absolute, has no zero byte, and comes
// back from its own address.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "formats/uri_list.h"

using namespace kalmora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view list(reinterpret_cast<const char*>(data), size);
    for (const std::string& path : LocalPaths(list, "home")) {
        if (path.empty() || path.front() != '/' || path.find('\0') != std::string::npos) std::abort();
        if (LocalPaths(FileUri(path), "home") != std::vector<std::string>{path}) std::abort();
    }
    return 0;
}
