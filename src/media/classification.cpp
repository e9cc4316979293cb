#include "media/classification.h"

#include <algorithm>

#include "platform/files.h"

namespace kalmora {

bool IsCameraFileName(std::string_view path) {
    const std::string_view name =
        path.substr(path.rfind(files::kSeparator) + 1);  // npos + 1 is the beginning
    if (name.starts_with("IMG_") || name.starts_with("DSCF")) return true;
    constexpr std::size_t kDigits = 7;
    if (name.size() <= kDigits + 1 || name[0] != 'P' || name[kDigits + 1] != '.') return false;
    const std::string_view digits = name.substr(1, kDigits);
    return std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace kalmora
