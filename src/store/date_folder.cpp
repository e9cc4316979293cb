#include "store/date_folder.h"

#include <string_view>

#include "platform/files.h"
#include "store/data_folder.h"

namespace kalmora {

bool MakeDateFolder(const std::string& folder) {
    if (files::IsFolder(folder)) return true;
    std::string_view root = folder;
    const bool isDay = root.substr(root.rfind(files::kSeparator) + 1).find('_') != std::string_view::npos;
    for (int level = isDay ? 3 : 2; level > 0; --level) {
        const std::size_t separator = root.rfind(files::kSeparator);
        if (separator == std::string_view::npos) return false;
        root = root.substr(0, separator);
    }
    return files::IsFolder(std::string(root)) && MakeDirectories(folder);
}

}  // namespace kalmora
