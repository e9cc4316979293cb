#include "store/settings_file.h"

#include <gmock/gmock.h>

#include "platform/shell.h"
#include "settings_fixture.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// ---- the first run

TEST_F(SettingsFileTest, AMissingFileIsTheFirstRunAndMakesTheDataFolder) {
    EXPECT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Missing);
    EXPECT_EQ(State().settings.DataDirectory, At("files"));
    EXPECT_THAT(State().settings.DataDirectories, ElementsAre(At("files")));
    EXPECT_TRUE(files::IsFolder(At("files")));
    EXPECT_FALSE(files::Exists(At("kalmora.ini")));
}

TEST_F(SettingsFileTest, TheFirstRunIsOverOnceTheFileHasBeenWritten) {
    ASSERT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Missing);
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    EXPECT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Read);
    EXPECT_EQ(State().settings.DataDirectory, At("files"));
}

TEST_F(SettingsFileTest, ADataFolderForThisRunLeavesTheDefaultOneUnmade) {
    State().settings.RunDataDirectory = "/mnt/this run only";
    EXPECT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Missing);
    EXPECT_FALSE(files::Exists(At("files")));
}

TEST_F(SettingsFileTest, AFileThatIsThereButCannotBeReadIsNoFirstRunAndIsNotReplaced) {
    MakeFolder("folder/kalmora.ini");
    MakeFolder("link");
    std::filesystem::create_symlink("/mnt/away/kalmora.ini", At("link/kalmora.ini"));
    for (const char* name : {"folder/kalmora.ini", "link/kalmora.ini"}) {
        EXPECT_EQ(LoadSettings(At(name)), FileRead::Unreadable) << name;
        EXPECT_FALSE(SaveSettings(At(name))) << name;
    }
    EXPECT_FALSE(files::Exists(At("files")));
    EXPECT_TRUE(files::IsFolder(At("folder/kalmora.ini")));
    EXPECT_TRUE(std::filesystem::is_symlink(At("link/kalmora.ini")));
}

TEST_F(SettingsFileTest, AnEmptyFileIsNoFirstRunAndMakesNothing) {
    Load("");
    EXPECT_FALSE(files::Exists(At("files")));
    EXPECT_THAT(State().settings.DataDirectories, IsEmpty());
}

// ---- defaults

TEST_F(SettingsFileTest, DefaultsAreWrittenByteForByte) {
    SetMachine();
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    EXPECT_EQ(ContentOf(At("kalmora.ini")), Golden("settings_defaults.txt"));
}

TEST_F(SettingsFileTest, DefaultsOfWhatIsNeverWritten) {
    const AppState& state = State();
    EXPECT_EQ(state.settings.ShellExecute, "");
    EXPECT_EQ(state.settings.TwitterURL, "");
    EXPECT_EQ(state.settings.MonthFontFaceForYearly, "MSP ゴシック");
    EXPECT_EQ(state.settings.MonthFontHeightForYearly, 24);
    EXPECT_EQ(state.settings.SlideShowTitleFontFace, "MSP ゴシック");
    EXPECT_EQ(state.settings.SlideShowTitleFontHeight, 32);
    EXPECT_EQ(state.settings.FilmWindowFontFace, "");
    EXPECT_EQ(state.settings.FilmWindowFontHeight, 0);
    EXPECT_EQ(state.settings.FilmWindowBackColor, (Color{0, 0, 0}));
    EXPECT_EQ(state.settings.FilmWindowFontColor, (Color{255, 255, 255}));
    EXPECT_FALSE(state.settings.NewsMode || state.settings.GradualRendering || state.settings.LogView ||
                 state.settings.OutputToLogFile || state.settings.UseSentimentMining);
}

TEST_F(SettingsFileTest, TheTargetDateIsTodayUnlessTheFileHasOne) {
    clock.now = SystemTime{2031, 2, 0, 3, 4, 5, 6, 7};
    Load("TargetMonth=12\n");
    EXPECT_EQ(State().settings.TargetYear, 2031);
    EXPECT_EQ(State().settings.TargetMonth, 12);
    EXPECT_EQ(State().settings.TargetDay, 3);
}

TEST_F(SettingsFileTest, OutsideProgramsBesideTheProgramComeFirst) {
    Put("jpegtran");
    Put("OrbinGet");
    ResetSettingsToDefaults();
    EXPECT_EQ(State().settings.PathOfJpegTran, At("jpegtran"));
    EXPECT_EQ(State().settings.PathOfOrbinGet, At("OrbinGet"));
    EXPECT_EQ(State().settings.TextEditor, shell::DefaultOpener());
}

TEST_F(SettingsFileTest, AnOutsideProgramIsTakenFromBesideTheExecutableBeforePath) {
    const std::string own = files::Join(files::ExecutableFolder(), "jpegtran");
    const std::string installed = files::Exists(own) ? own : files::FindProgram("jpegtran");
    EXPECT_EQ(State().settings.PathOfJpegTran, installed.empty() ? At("jpegtran") : installed);
}

TEST_F(SettingsFileTest, AnOutsideProgramThatIsNowhereIsNamedInTheHome) {
    EXPECT_EQ(State().settings.PathOfOrbinGet, At("OrbinGet"));
}

TEST_F(SettingsFileTest, ResettingForgetsWhatAnEarlierFileSaid) {
    LoadBytes(Golden("settings_changed.txt"));
    ResetSettingsToDefaults();
    SetMachine();
    EXPECT_EQ(MakeSettingsText(), Golden("settings_defaults.txt"));
    EXPECT_THAT(State().settings.DataDirectories, IsEmpty());
}

// ---- the whole file

TEST_F(SettingsFileTest, EveryChangedValueIsReadAndWrittenByteForByte) {
    LoadBytes(Golden("settings_changed.txt"));
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    EXPECT_EQ(ContentOf(At("kalmora.ini")), Golden("settings_changed.txt"));
}

TEST_F(SettingsFileTest, AnUnwritableFileIsAValueAndLeavesTheOldOne) {
    EXPECT_FALSE(SaveSettings(At("absent/kalmora.ini")));
}

TEST_F(SettingsFileTest, SavingLeavesNothingBesideTheFile) {
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    EXPECT_EQ(files::ListFolder(home).size(), 1u);
}

// ---- data folders

TEST_F(SettingsFileTest, WithOneDataFolderTheLastLineWins) {
    Load("DataDirectory=/a\nDataDirectory=/b\n");
    EXPECT_EQ(State().settings.DataDirectory, "/b");
    EXPECT_THAT(State().settings.DataDirectories, IsEmpty());
}

TEST_F(SettingsFileTest, WithSeveralTheListKeepsTheOrderOfTheFile) {
    MakeFolder("b");
    Load("AllowMultiDataDirectory=1\nDataDirectory=/nowhere/a\nDataDirectory=b\nDataDirectory=/nowhere/c\n");
    EXPECT_THAT(State().settings.DataDirectories, ElementsAre("/nowhere/a", At("b"), "/nowhere/c"));
    EXPECT_EQ(State().settings.DataDirectory, At("b"));  // the one that exists
    EXPECT_THAT(MakeSettingsText(),
                HasSubstr("\nDataDirectory=/nowhere/a\nDataDirectory=b\nDataDirectory=/nowhere/c\n"));
}

TEST_F(SettingsFileTest, SeveralDataFoldersCountOnlyBehindTheirFlag) {
    Load("DataDirectory=/a\nAllowMultiDataDirectory=1\n");
    EXPECT_EQ(State().settings.DataDirectories, std::vector{At("files")});
    EXPECT_EQ(State().settings.DataDirectory, At("files"));
}

TEST_F(SettingsFileTest, ADataFolderListedTwiceIsListedOnce) {
    ReadSettingsText(
        "AllowMultiDataDirectory=1\nDataDirectory=/Data/a\nDataDirectory=/b\nDataDirectory=/data/A/\n");
    EXPECT_THAT(State().settings.DataDirectories, ElementsAre("/Data/a", "/b"));
    EXPECT_EQ(State().settings.DataDirectory, "/b");
}

TEST_F(SettingsFileTest, DataFolderThatBeginsAListedOneIsDropped) {
    ReadSettingsText(
        "AllowMultiDataDirectory=1\nDataDirectory=/data2\nDataDirectory=/data\nDataDirectory=/data22\n");
    EXPECT_THAT(State().settings.DataDirectories, ElementsAre("/data2", "/data22"));
}

}  // namespace
}  // namespace kalmora
