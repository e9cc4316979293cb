// Photos that can be written: a Temp folder beside them, and a clock with a fixed time.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/log.h"
#include "photo_fixture.h"
#include "support/still_clock.h"

namespace kalmora::test {

inline std::string ContentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

class WriteTest : public PhotoTest {
protected:
    WriteTest() { State().settings.TempFolder = folder / "Temp"; }
    ~WriteTest() override {
        State().settings.TempFolder.clear();
        OpenLog("");
    }

    std::size_t FilesInTemp(const std::string& beginning = "$") const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "Temp"))
            if (entry.path().filename().string().starts_with(beginning)) ++count;
        return count;
    }

    // The lines that the program logs from now on.
    void KeepLog() { OpenLog(folder / "log"); }
    std::string LogText() const { return ContentOf(folder / "log"); }

    // What the still clock's moment is as a time of last write: its fields as if they were UTC.
    static constexpr std::uint64_t kClockTicks = 128'545'312'892'500'000;

    StillClock clock{{2008, 5, 2, 6, 7, 8, 9, 250}};
};

}  // namespace kalmora::test
