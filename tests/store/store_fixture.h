// What the store's tests share: a home folder of their own, a clock with a fixed time, small files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "source_folder.h"
#include "state/app_state.h"
#include "store/settings_file.h"
#include "support/still_clock.h"

namespace kalmora {

// The home folder is State().settings.ProgramFolder; it is empty at first.
class StoreTest : public testing::Test {
protected:
    StoreTest() : home(files::MakeTemporaryFolder()) {
        State().settings.ProgramFolder = home;
        State().settings.InstallFolder.clear();
        State().settings.RunDataDirectory.clear();
        ResetSettingsToDefaults();
    }
    ~StoreTest() override {
        files::RemoveFolderTree(home);
        State().settings.ProgramFolder.clear();
        State().settings.InstallFolder.clear();
        State().settings.RunDataDirectory.clear();
    }

    std::string At(std::string_view name) const { return files::Join(home, name); }

    // Writes a file below the home folder and makes the folders that it needs.
    std::string Put(const std::string& name, std::string_view content = "x") const {
        const std::filesystem::path path = At(name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
        return path;
    }
    std::string MakeFolder(const std::string& name) const {
        std::filesystem::create_directories(At(name));
        return At(name);
    }
    static std::string ContentOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        EXPECT_TRUE(file.is_open()) << path;
        return {std::istreambuf_iterator<char>(file), {}};
    }

    test::StillClock clock;
    const std::string home;
};

inline std::string GoldenText(const std::string& name) {
    std::ifstream file(SourceFolder(__FILE__) / "golden" / name, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace kalmora
