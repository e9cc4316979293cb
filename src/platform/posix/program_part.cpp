#include "platform/program_part.h"

#include <dlfcn.h>

namespace kalmora {

std::optional<int> RunProgramPart(const char* library, const char* entry, int argc, char** argv,
                                  std::string& reason) {
    using Entry = int (*)(int, char**);
    void* const part = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* const found = part ? dlsym(part, entry) : nullptr;
    if (!found) {
        const char* const error = dlerror();
        reason = error ? error : "unknown";
        return std::nullopt;
    }
    return reinterpret_cast<Entry>(found)(argc, argv);
}

}  // namespace kalmora
