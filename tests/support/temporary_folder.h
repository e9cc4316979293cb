// A folder of its own for a test, gone when the test is over.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/files.h"

namespace kalmora::test {

class TemporaryFolder {
public:
    TemporaryFolder() : path_(files::MakeTemporaryFolder()) {}
    ~TemporaryFolder() {
        if (!path_.empty()) files::RemoveFolderTree(path_);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string operator/(std::string_view name) const { return files::Join(path_, name); }
    // Makes a file with the content; gives its path.
    std::string Add(std::string_view name, std::string_view content = "") const {
        std::string path = *this / name;
        EXPECT_EQ(files::WriteWholeFile(path, content), files::FileResult::Done) << path;
        return path;
    }
    std::string AddFolder(std::string_view name) const {
        std::string path = *this / name;
        EXPECT_EQ(files::MakeFolder(path), files::FileResult::Done) << path;
        return path;
    }

private:
    std::string path_;
};

}  // namespace kalmora::test
