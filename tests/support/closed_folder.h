// A folder that cannot be listed, by root neither, whom permissions do not hold back.
#pragma once

#include <string>

namespace kalmora::test {

// While it lives, this program is denied the names in one folder. One at a time.
class ClosedFolder {
public:
    explicit ClosedFolder(const std::string& path);
    ~ClosedFolder();
    ClosedFolder(const ClosedFolder&) = delete;
    ClosedFolder& operator=(const ClosedFolder&) = delete;
};

}  // namespace kalmora::test
