// How lines of the settings file are read, and what is made of bad ones.
#include <gmock/gmock.h>

#include <chrono>

#include "settings_fixture.h"

namespace kalmora {
namespace {

using namespace std::string_literals;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// ---- repairs

TEST_F(SettingsFileTest, TheSlideShowsSizeIsRepairedBelowTenAndAboveAHundred) {
    for (int Settings::*field : {&Settings::HeightOfSlideShow, &Settings::WidthOfSlideShow}) {
        for (const auto& [value, repaired] : {std::pair{9, 75}, {10, 10}, {100, 100}, {101, 75}, {-1, 75}}) {
            State().settings.*field = value;
            RepairSettings();
            EXPECT_EQ(State().settings.*field, repaired) << value;
        }
    }
}

TEST_F(SettingsFileTest, NumbersOutOfRangeAreRepairedAndTheirNeighboursAreNot) {
    const struct {
        std::string key;
        int Settings::*field;
        int value, repaired;
    } cases[] = {
        {"QualityOfJpeg", &Settings::QualityOfJpeg, -1, 80},
        {"QualityOfJpeg", &Settings::QualityOfJpeg, 0, 0},
        {"QualityOfJpeg", &Settings::QualityOfJpeg, 100, 100},
        {"QualityOfJpeg", &Settings::QualityOfJpeg, 101, 80},
        {"TimingOfPopup(sec)", &Settings::TimingOfPopup, -1, 2},
        {"TimingOfPopup(sec)", &Settings::TimingOfPopup, 0, 0},
        {"TimingOfPopup(sec)", &Settings::TimingOfPopup, 100000, 100000},
        {"DayEndTimeForScrap", &Settings::DayEndTimeForScrap, 5, 29},
        {"DayEndTimeForScrap", &Settings::DayEndTimeForScrap, 60, 36},
        {"DayEndTimeForScrap", &Settings::DayEndTimeForScrap, 12, 36},
        {"DayEndTimeForScrap", &Settings::DayEndTimeForScrap, 13, 13},
        {"DayEndTimeForScrap", &Settings::DayEndTimeForScrap, 47, 47},
        {"DayEndTimeForScrap", &Settings::DayEndTimeForScrap, 48, 24},
        {"DayEndTimeForScrap", &Settings::DayEndTimeForScrap, 0, 24},
        {"DayEndTimeForScrap", &Settings::DayEndTimeForScrap, -100, -76},
    };
    for (const auto& row : cases) {
        Load(row.key + "=" + std::to_string(row.value) + "\n");
        EXPECT_EQ(State().settings.*row.field, row.repaired) << row.key << "=" << row.value;
    }
}

TEST_F(SettingsFileTest, EachEdgeOfTheWindowIsRepairedByItself) {
    const struct {
        int WindowRectValue::*edge;
        int value, repaired;
    } cases[] = {
        {&WindowRectValue::left, -101, 10},     {&WindowRectValue::left, -100, -100},
        {&WindowRectValue::left, 5000, 5000},   {&WindowRectValue::left, 5001, 10},
        {&WindowRectValue::right, -1, 960},     {&WindowRectValue::right, 0, 0},
        {&WindowRectValue::right, 5000, 5000},  {&WindowRectValue::right, 5001, 960},
        {&WindowRectValue::top, -101, 10},      {&WindowRectValue::top, -100, -100},
        {&WindowRectValue::top, 5000, 5000},    {&WindowRectValue::top, 5001, 10},
        {&WindowRectValue::bottom, -1, 710},    {&WindowRectValue::bottom, 0, 0},
        {&WindowRectValue::bottom, 5000, 5000}, {&WindowRectValue::bottom, 5001, 710},
    };
    for (const auto& row : cases) {
        WindowRectValue rect{1, 2, 3, 4};
        rect.*row.edge = row.value;
        Load("WindowRect=" + std::to_string(rect.left) + "," + std::to_string(rect.top) + "," +
             std::to_string(rect.right) + "," + std::to_string(rect.bottom) + "\n");
        rect.*row.edge = row.repaired;
        EXPECT_EQ(State().settings.WindowRect.left, rect.left);
        EXPECT_EQ(State().settings.WindowRect.top, rect.top);
        EXPECT_EQ(State().settings.WindowRect.right, rect.right);
        EXPECT_EQ(State().settings.WindowRect.bottom, rect.bottom);
    }
}

TEST_F(SettingsFileTest, TheDataDirectoryBecomesTheRootInUse) {
    Load("AllowMultiDataDirectory=1\nDataDirectory=/nowhere/a\nDataDirectory=" + MakeFolder("b") + "\n");
    EXPECT_EQ(State().settings.DataDirectory, At("b"));
}

TEST_F(SettingsFileTest, DataFoldersThatAreAllAwayStayAsTheyAreListed) {
    Load("AllowMultiDataDirectory=1\nDataDirectory=/nowhere/a\nDataDirectory=/nowhere/b\n");
    EXPECT_EQ(State().settings.DataDirectory, "/nowhere/a");
    EXPECT_THAT(State().settings.DataDirectories, ElementsAre("/nowhere/a", "/nowhere/b"));
    EXPECT_FALSE(files::Exists(At("files")));
}

TEST_F(SettingsFileTest, TheCommandLinesDataFolderIsNotSaved) {
    State().settings.RunDataDirectory = "/mnt/this run only";
    Load("DataDirectory=/life\n");
    EXPECT_EQ(State().settings.DataDirectory, "/life");
    EXPECT_EQ(LineOf("DataDirectory"), "DataDirectory=/life");
    Load("AllowMultiDataDirectory=1\nDataDirectory=/nowhere/a\n");
    EXPECT_THAT(State().settings.DataDirectories, ElementsAre("/nowhere/a"));
}

// ---- lines

TEST_F(SettingsFileTest, SectionsDoNotMatterForTheReader) {
    Load("[SlideShow]\nViewType=4\n[Main]\nQualityOfJpeg=7\n[ViewType=1\n");
    EXPECT_EQ(State().settings.ViewType, 4);
    EXPECT_EQ(State().settings.QualityOfJpeg, 7);
}

TEST_F(SettingsFileTest, AValueOfMoreThan255BytesIsReadWhole) {
    const std::string value(300, 'a');
    Load("TextEditor=" + value + "ViewType=4\nQualityOfJpeg=7\n");
    EXPECT_EQ(State().settings.TextEditor, value + "ViewType=4");
    EXPECT_EQ(State().settings.ViewType, 2);
    EXPECT_EQ(State().settings.QualityOfJpeg, 7);
}

TEST_F(SettingsFileTest, APathOfMoreThan255BytesSurvivesAWriteAndARead) {
    for (const std::string& name : {"folder/"s, "写真/"s, "😀/"s, "raw\xFF/"s}) {
        std::string path = "/mnt";
        while (path.size() < 3500) path += "/" + name.substr(0, name.size() - 1);
        State().settings.DataDirectory = State().settings.OtherDirectory = path;
        ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
        ASSERT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Read);
        EXPECT_EQ(State().settings.DataDirectory, path);
        EXPECT_EQ(State().settings.OtherDirectory, path);
    }
}

TEST_F(SettingsFileTest, AFileThatEndsInTheMiddleOfACharacterLosesOnlyThat) {
    LoadBytes("TextEditor=vi\x95");
    EXPECT_EQ(State().settings.TextEditor, "vi");
}

TEST_F(SettingsFileTest, AFileThatAnEditorSavedAsUtf8IsUnderstood) {
    const std::string content = "DataDirectory=/home/anna/写真 Käse 😀&#xE9;\nDayFontFace=ＭＳ 明朝\n";
    for (const std::string& mark : {""s, "\xEF\xBB\xBF"s}) {
        LoadBytes(mark + content);
        EXPECT_EQ(State().settings.DataDirectory, "/home/anna/写真 Käse 😀é");
        EXPECT_EQ(State().settings.DayFontFace, "ＭＳ 明朝");
    }
    LoadBytes("\xEF\xBB\xBFViewType=4\n");
    EXPECT_EQ(State().settings.ViewType, 4) << "the mark belongs to no key";
}

TEST_F(SettingsFileTest, AFileInUtf8StaysInUtf8) {
    for (const std::string& mark : {""s, "\xEF\xBB\xBF"s}) {
        LoadBytes(mark + "DataDirectory=/写真\n");
        State().settings.OtherDirectory = "/Käse\n&#xE9;\xFF";
        ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
        const std::string written = ContentOf(At("kalmora.ini"));
        EXPECT_THAT(written, StartsWith(mark + "[Main]\n"));
        EXPECT_THAT(written, HasSubstr("\nDataDirectory=/写真\n"));
        EXPECT_THAT(written, HasSubstr("\nOtherDirectory=/Käse&#xA;&#x26;#xE9;&#xDCFF;\n"));
        ASSERT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Read);
        EXPECT_EQ(State().settings.OtherDirectory, "/Käse\n&#xE9;\xFF");
    }
}

TEST_F(SettingsFileTest, GarbageLeavesTheDefaults) {
    std::string garbage;
    for (int i = 0; i < 256; ++i)
        garbage += std::string(3, static_cast<char>(i)) + "=" + static_cast<char>(i) + "\n";
    garbage +=
        "=\n==\nViewType\nViewType 4\n ViewType=4\nUnknown=1\n\xEF\xBB\xBF[Main]\n;ViewType=4\n#ViewType=4\n";
    const std::string before = MakeSettingsText();
    ReadSettingsText(garbage);
    EXPECT_EQ(MakeSettingsText(), before);
}

TEST_F(SettingsFileTest, AZeroByteEndsALine) {
    LoadBytes("TextEditor=vi\0m\nViewType=4\n"s);
    EXPECT_EQ(State().settings.TextEditor, "vi");
    EXPECT_EQ(State().settings.ViewType, 4);
}

TEST_F(SettingsFileTest, AHugeFileIsReadInBoundedTime) {
    const std::string huge = "ViewType=4\n" + std::string(16u << 20, 'x');
    const auto start = std::chrono::steady_clock::now();
    LoadBytes(huge);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(State().settings.ViewType, 4);
}

TEST_F(SettingsFileTest, WhatIsOnlyReadIsNeverWritten) {
    Load("ShellExecute=x\nTwitterURL=y\nNewsMode=1\nMonthFontFaceForYearly=z\nFilmWindowBackColor=(1,2,3)\n");
    EXPECT_EQ(State().settings.TwitterURL, "y");
    for (const char* key :
         {"ShellExecute", "TwitterURL", "NewsMode", "GradualRendering", "LogView", "OutputToLogFile",
          "UseSentimentMining", "MonthFont", "SlideShowTitle", "FilmWindowFont", "FilmWindowBack"})
        EXPECT_THAT(MakeSettingsText(), Not(HasSubstr(key))) << key;
}

}  // namespace
}  // namespace kalmora
