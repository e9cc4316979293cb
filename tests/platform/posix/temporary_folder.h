// A folder of its own for a test, gone when the test is over.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
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

// An environment variable with another value for a scope.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const std::string& value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        setenv(name, value.c_str(), 1);
    }
    ~ScopedVariable() {
        if (old_)
            setenv(name_, old_->c_str(), 1);
        else
            unsetenv(name_);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    const char* name_;
    std::optional<std::string> old_;
};

}  // namespace kalmora::test
