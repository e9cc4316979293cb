// A folder of real files for one test.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace kalmora::test {

class TemporaryFolder {
public:
    TemporaryFolder() : path_(files::MakeTemporaryFolder()) {}
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string PathOf(const std::string& name) const { return path_ + "/" + name; }
    // Writes the file and gives its path.
    std::string Put(const std::string& name, std::string_view content) const {
        std::ofstream(PathOf(name), std::ios::binary) << content;
        return PathOf(name);
    }

private:
    std::string path_;
};

}  // namespace kalmora::test
