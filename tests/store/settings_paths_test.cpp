// The texts and paths of the settings file.
#include <gmock/gmock.h>

#include "settings_fixture.h"

namespace kalmora {
namespace {

using namespace std::string_literals;

// ---- texts and paths

TEST_F(SettingsFileTest, ATextTakesTheRestOfItsLine) {
    Load("TextEditor=gedit --wait = x \r\nTwitterURL=\nDayFontFace= ＭＳ 明朝\nGoogleCalendarPrivateURL=a");
    EXPECT_EQ(State().settings.TextEditor, "gedit --wait = x ");
    EXPECT_EQ(State().settings.TwitterURL, "");
    EXPECT_EQ(State().settings.DayFontFace, " ＭＳ 明朝");
    EXPECT_EQ(State().settings.GoogleCalendarPrivateURL, "a");
}

TEST_F(SettingsFileTest, EachTextIsReadIntoItsField) {
    const std::pair<const char*, std::string Settings::*> fields[] = {
        {"DayFontFace", &Settings::DayFontFace},
        {"ButtonFontFace", &Settings::ButtonFontFace},
        {"MiniFontFace", &Settings::MiniFontFace},
        {"DayFontFaceForYearly", &Settings::DayFontFaceForYearly},
        {"MonthFontFaceForYearly", &Settings::MonthFontFaceForYearly},
        {"SlideShowFontFace", &Settings::SlideShowFontFace},
        {"SlideShowTitleFontFace", &Settings::SlideShowTitleFontFace},
        {"MessageFontFace", &Settings::MessageFontFace},
        {"NeighborWindowFontFace", &Settings::NeighborWindowFontFace},
        {"FilmWindowFontFace", &Settings::FilmWindowFontFace},
        {"OrbinWrite", &Settings::OrbinWrite},
        {"TextEditor", &Settings::TextEditor},
        {"TwitterURL", &Settings::TwitterURL},
        {"GoogleCalendarPrivateURL", &Settings::GoogleCalendarPrivateURL},
    };
    for (const auto& [key, field] : fields) {
        Load(std::string(key) + "=some " + key + "\n");
        EXPECT_EQ(State().settings.*field, std::string("some ") + key);
    }
}

TEST_F(SettingsFileTest, APathIsRelativeToTheProgramFolder) {
    const std::pair<const char*, std::string Settings::*> fields[] = {
        {"BackgroundImage", &Settings::BackgroundImage},
        {"BackGroundImage", &Settings::BackgroundImage},
        {"BackgroundImageForNeighbor", &Settings::BackgroundImageForNeighbor},
        {"BackgroundImageForSlideShow", &Settings::BackgroundImageForSlideShow},
        {"ShellExecute", &Settings::ShellExecute},
        {"DataDirectory", &Settings::DataDirectory},
        {"PathOfOrbinGet", &Settings::PathOfOrbinGet},
        {"PathOfOrbinLib", &Settings::PathOfOrbinLib},
        {"PathOfJpegTran", &Settings::PathOfJpegTran},
    };
    for (const auto& [key, field] : fields) {
        const std::string start = std::string(key) + "=";
        Load(start + "sub/表.x\n");
        EXPECT_EQ(State().settings.*field, At("sub/表.x")) << key;
        Load(start + "sub\\表.x\n");  // as the other platform writes it
        EXPECT_EQ(State().settings.*field, At("sub/表.x")) << key;
        for (const char* absolute : {"/abs/x", "C:\\abs\\x", "\\\\server\\share"}) {
            Load(start + absolute + "\n");
            EXPECT_EQ(State().settings.*field, absolute) << key;
        }
    }
}

TEST_F(SettingsFileTest, AnEmptyPathIsTheProgramFolderItself) {
    Load("BackgroundImage=\nDataDirectory=\n");
    EXPECT_EQ(State().settings.BackgroundImage, home + "/");
    EXPECT_EQ(State().settings.DataDirectory, home);
}

TEST_F(SettingsFileTest, FoldersLoseOneTrailingSeparator) {
    Load("ImportDirectory=/card/DCIM/\nOtherDirectory=/other//\nDataDirectory=/data/\n");
    EXPECT_EQ(State().settings.ImportDirectory, "/card/DCIM");
    EXPECT_EQ(State().settings.OtherDirectory, "/other/");
    EXPECT_EQ(State().settings.DataDirectory, "/data");
    Load("ImportDirectory=E:\\DCIM\\\nOtherDirectory=/\nDataDirectory=sub\\\n");
    EXPECT_EQ(State().settings.ImportDirectory, "E:\\DCIM");
    EXPECT_EQ(State().settings.OtherDirectory, "/");
    EXPECT_EQ(State().settings.DataDirectory, At("sub"));
}

TEST_F(SettingsFileTest, TheOtherDirectoryAndTheImportDirectoryStayAsWritten) {
    Load("OtherDirectory=other\\x\nImportDirectory=card\n");
    EXPECT_EQ(State().settings.OtherDirectory, "other\\x");
    EXPECT_EQ(State().settings.ImportDirectory, "card");
    Load("OtherDirectory=\n");
    EXPECT_EQ(State().settings.OtherDirectory, "");
}

TEST_F(SettingsFileTest, AnEmptyImportDirectoryLeavesTheCardThatIsInNow) {
    State().settings.ImportDirectory = "/media/card/DCIM";
    ReadSettingsText("ImportDirectory=\n");
    EXPECT_EQ(State().settings.ImportDirectory, "/media/card/DCIM");
}

TEST_F(SettingsFileTest, PathsBelowTheProgramFolderAreWrittenShort) {
    State().settings.BackgroundImage = At("sub/sea.jpg");
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=sub/sea.jpg");
    State().settings.BackgroundImage = home;
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=" + home);
    State().settings.BackgroundImage = home + "2/sea.jpg";  // begins with the folder's name, lies elsewhere
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=" + home + "2/sea.jpg");
    State().settings.BackgroundImage = "/elsewhere/sea.jpg";
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=/elsewhere/sea.jpg");
    State().settings.OrbinWrite = At("OrbinWrite");
    EXPECT_EQ(LineOf("OrbinWrite"), "OrbinWrite=" + At("OrbinWrite"));
}

TEST_F(SettingsFileTest, AnotherFolderWhoseNameDiffersInCaseOnlyIsNotTheProgramFolder) {
    const std::string upper = MakeFolder("APP"), lower = At("app");
    if (files::Exists(lower)) GTEST_SKIP() << "the file system ignores case";
    State().settings.ProgramFolder = upper;
    State().settings.BackgroundImage = lower + "/sea.jpg";
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=" + lower + "/sea.jpg");
    State().settings.ProgramFolder = home;
}

TEST_F(SettingsFileTest, OfATwiceWrittenToolPathTheLastOneIsKept) {
    Load("PathOfJpegTran=/old/place/jpegtran\nPathOfJpegTran=jpegtran\n");
    EXPECT_EQ(State().settings.PathOfJpegTran, At("jpegtran"));
}

TEST_F(SettingsFileTest, NamesOfEveryKindSurviveAWriteAndARead) {
    for (const std::string& name : {"日本語"s, "表示能力ソ"s, "～①㈱"s, "emoji 😀"s, "not utf-8 \xFF\xE3\x81"s,
                                    "&#x41;"s, "line\nfeed\r"s, "한국어"s, " blanks "s}) {
        State().settings.DataDirectory = home + "/" + name;
        State().settings.OtherDirectory = "/mnt/" + name;
        State().settings.DayFontFace = name;
        ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
        ASSERT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Read);
        EXPECT_EQ(State().settings.DataDirectory, home + "/" + name);
        EXPECT_EQ(State().settings.OtherDirectory, "/mnt/" + name);
        EXPECT_EQ(State().settings.DayFontFace, name);
    }
}

TEST_F(SettingsFileTest, ACharacterThatTheCodePageLacksIsWrittenAsAnEscape) {
    State().settings.DayFontFace = "a😀";
    EXPECT_EQ(LineOf("DayFontFace"), "DayFontFace=a&#x1F600;");
}

}  // namespace
}  // namespace kalmora
