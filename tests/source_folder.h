// Where a test's source file lies, for the files beside it.
#pragma once

#include <filesystem>

namespace kalmora {

// The folder of a __FILE__. A compiler that was given a short name gives it from the build folder, which is
// above the folder of the test program.
inline std::filesystem::path SourceFolder(const std::filesystem::path& file) {
    if (file.is_absolute()) return file.parent_path();
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    return (program.parent_path().parent_path() / file).lexically_normal().parent_path();
}

}  // namespace kalmora
