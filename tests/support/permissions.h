// Who may do what with a file of a test.
#pragma once

#include <filesystem>
#include <string>

namespace kalmora::test {

inline void MakeReadOnly(const std::string& path) {
    std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0444));
}

inline void MakeWritable(const std::string& path) {
    std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0644));
}

inline void MakeExecutable(const std::string& path) {
    std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0755));
}

}  // namespace kalmora::test
