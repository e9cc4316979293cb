// Photos that can be written: a Temp folder beside them, and a clock with a fixed time.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/log.h"
#include "photo_fixture.h"
#include "platform/clock.h"

namespace kalmora::test {

class StillClock : public Clock {
public:
    SystemTime LocalTime() override { return now; }
    double UptimeMs() override { return 0; }
    void SleepMs(int) override {}
    SystemTime now{2008, 5, 2, 6, 7, 8, 9, 250};
};

inline std::string ContentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

class WriteTest : public PhotoTest {
protected:
    WriteTest() {
        SetClock(&clock);
        State().settings.TempFolder = folder.PathOf("Temp");
    }
    ~WriteTest() override {
        SetClock(nullptr);
        State().settings.TempFolder.clear();
        OpenLog("");
    }

    std::size_t FilesInTemp(const std::string& beginning = "$") const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder.PathOf("Temp")))
            if (entry.path().filename().string().starts_with(beginning)) ++count;
        return count;
    }

    // The lines that the program logs from now on.
    void KeepLog() { OpenLog(folder.PathOf("log")); }
    std::string LogText() const { return ContentOf(folder.PathOf("log")); }

    // What the still clock's moment is as a time of last write: its fields as if they were UTC.
    static constexpr std::uint64_t kClockTicks = 128'545'312'892'500'000;

    StillClock clock;
};

}  // namespace kalmora::test
