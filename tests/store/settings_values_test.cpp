// The values of the settings file: flags, numbers and colours.
#include <gmock/gmock.h>

#include "settings_fixture.h"

namespace kalmora {
namespace {

using namespace std::string_literals;

// ---- flags

struct FlagCase {
    std::string key;
    bool Settings::*field;
    bool initial;
};
const FlagCase kFlags[] = {
    {"AllowMultiDataDirectory", &Settings::AllowMultiDataDirectory, false},
    {"UseOtherFolder", &Settings::UseOtherFolder, false},
    {"RemoveImportFiles", &Settings::RemoveImportFiles, false},
    {"InsertOriginalPathToExif", &Settings::InsertOriginalPathToExif, false},
    {"ImportAsShortcutFile", &Settings::ImportAsShortcutFile, false},
    {"UseJapanese", &Settings::UseJapanese, true},
    {"ShowFolderPath", &Settings::ShowFolderPath, true},
    {"OutputNavigationLog", &Settings::OutputNavigationLog, false},
    {"UseEstimation", &Settings::UseEstimation, true},
    {"UseExifThumbnail", &Settings::UseExifThumbnail, false},
    {"DayViewSortByTime", &Settings::DayViewSortByTime, true},
    {"RenameFileWhenMove", &Settings::RenameFileWhenMove, false},
    {"RenameFileWhenCopy", &Settings::RenameFileWhenCopy, false},
    {"StopUpdateWhenWindowHide", &Settings::StopUpdateWhenWindowHide, true},
    {"SkipSmallImage", &Settings::SkipSmallImage, true},
    {"LoadIndexInitially", &Settings::LoadIndexInitially, false},
    {"ConfirmScrapText", &Settings::ConfirmScrapText, true},
    {"SlideShowRandom", &Settings::SlideShowRandom, false},
    {"SlideShowTransparent", &Settings::SlideShowTransparent, false},
    {"DoSortForSlideShow", &Settings::DoSortForSlideShow, false},
    {"NewsMode", &Settings::NewsMode, false},
    {"GradualRendering", &Settings::GradualRendering, false},
    {"LogView", &Settings::LogView, false},
    {"OutputToLogFile", &Settings::OutputToLogFile, false},
    {"UseSentimentMining", &Settings::UseSentimentMining, false},
    {"ShowButtonPrev2", &Settings::ShowButtonPrev2, true},
    {"ShowButtonPrev", &Settings::ShowButtonPrev, true},
    {"ShowButtonAuto", &Settings::ShowButtonAuto, true},
    {"ShowButtonNext", &Settings::ShowButtonNext, true},
    {"ShowButtonNext2", &Settings::ShowButtonNext2, true},
    {"ShowButtonStop", &Settings::ShowButtonStop, true},
    {"ShowButtonParapara", &Settings::ShowButtonParapara, true},
    {"ShowButtonSlideShow", &Settings::ShowButtonSlideShow, true},
    {"ShowButtonFilter", &Settings::ShowButtonFilter, true},
    {"ShowButtonImport", &Settings::ShowButtonImport, true},
    {"ShowButtonSearch", &Settings::ShowButtonSearch, true},
    {"ShowButtonHelp", &Settings::ShowButtonHelp, true},
    {"ShowButtonSound", &Settings::ShowButtonSound, false},
    {"ShowButtonFilmWindow", &Settings::ShowButtonFilmWindow, false},
    {"ShowButtonGoogleCalendar", &Settings::ShowButtonGoogleCalendar, false},
    {"ShowButtonAmazon", &Settings::ShowButtonAmazon, false},
    {"ShowButtonTwitter", &Settings::ShowButtonTwitter, false},
    {"ShowButtonIndexing", &Settings::ShowButtonIndexing, false},
};
struct SharedFlagCase {
    std::string key;
    SharedFlag Settings::*field;
    bool initial;
};
const SharedFlagCase kSharedFlags[] = {
    {"SoundMode", &Settings::SoundMode, true},
    {"GoodMode", &Settings::GoodMode, false},
    {"PublicMode", &Settings::PublicMode, false},
    {"CalendarMode", &Settings::CalendarMode, true},
    {"AutoNavigate", &Settings::AutoNavigate, false},
    {"SlideShowAutoNavigate", &Settings::SlideShowAutoNavigate, false},
    {"MonitorClipboard", &Settings::MonitorClipboard, false},
};

// The value opposite to the default counts, whatever follows it; every other text leaves the default.
template <typename Case>
void ExpectFlag(const Case& flag) {
    const std::string opposite = flag.initial ? "=0" : "=1", same = flag.initial ? "=1" : "=0";
    const auto after = [&](const std::string& line) {
        ResetSettingsToDefaults();
        ReadSettingsText(line);
        return State().settings.*flag.field != 0;
    };
    EXPECT_EQ(after(flag.key + opposite + "\n"), !flag.initial) << flag.key;
    EXPECT_EQ(after(flag.key + opposite + "\r\n"), !flag.initial) << flag.key;
    EXPECT_EQ(after(flag.key + opposite + "7\n"), !flag.initial) << flag.key;
    for (const std::string& other : {same, "=2"s, "= "s + opposite.substr(1), "="s, " "s + opposite})
        EXPECT_EQ(after(flag.key + other + "\n"), flag.initial) << flag.key << other;
}

TEST_F(SettingsFileTest, TheScatterOfTheStartIsAFlagLikeTheOthers) {
    ReadSettingsText("AllViewMode=1\n");
    EXPECT_EQ(State().settings.AllViewMode, 1);
    ResetSettingsToDefaults();
    ReadSettingsText("AllViewMode=2\n");
    EXPECT_EQ(State().settings.AllViewMode, 0);
}

TEST_F(SettingsFileTest, EachFlagIsSetByTheOppositeOfItsDefaultAndByNothingElse) {
    for (const FlagCase& flag : kFlags) ExpectFlag(flag);
    for (const SharedFlagCase& flag : kSharedFlags) ExpectFlag(flag);
}

TEST_F(SettingsFileTest, DrawWhileLoadingCannotBeTurnedOffByTheFile) {
    Load("DrawWhileLoading=0\n");
    EXPECT_TRUE(State().settings.DrawWhileLoading);
    Load("DrawWhileLoading=1\n");
    EXPECT_TRUE(State().settings.DrawWhileLoading);
}

TEST_F(SettingsFileTest, CaseOfAKeyDoesNotMatter) {
    Load("soundmode=0\nVIEWTYPE=4\nscheduleBACKcolor=(1,2,3)\ntimingofchangebgimage(NUM)=9\n");
    EXPECT_EQ(State().settings.SoundMode, 0);
    EXPECT_EQ(State().settings.ViewType, 4);
    EXPECT_EQ(State().settings.TextStyles[0].back, (Color{1, 2, 3}));
    EXPECT_EQ(State().settings.TimingOfChangeBgImage, 9);
}

// ---- numbers and colours

struct NumberCase {
    std::string key;
    int Settings::*field;
};
const NumberCase kNumbers[] = {
    {"TimingOfPopup(sec)", &Settings::TimingOfPopup},
    {"TimingOfChangeImage(msec)", &Settings::TimingOfChangeImage},
    {"TimingOfChangeBgImage(num)", &Settings::TimingOfChangeBgImage},
    {"MinutesToSleep", &Settings::MinutesToSleep},
    {"DayStartTime", &Settings::DayStartTime},
    {"DayNumberOfLine", &Settings::DayNumberOfLine},
    {"DayDuration", &Settings::DayDuration},
    {"SizeOfSmallImage", &Settings::SizeOfSmallImage},
    {"NumberOfLoadIndex", &Settings::NumberOfLoadIndex},
    {"DayFontHeight", &Settings::DayFontHeight},
    {"ButtonFontHeight", &Settings::ButtonFontHeight},
    {"MiniFontHeight", &Settings::MiniFontHeight},
    {"DayFontHeightForYearly", &Settings::DayFontHeightForYearly},
    {"MonthFontHeightForYearly", &Settings::MonthFontHeightForYearly},
    {"TimingOfAutoNavigate(num)", &Settings::TimingOfAutoNavigate},
    {"DayEndTimeForScrap", &Settings::DayEndTimeForScrap},
    {"QualityOfJpeg", &Settings::QualityOfJpeg},
    {"SlideShowFontHeight", &Settings::SlideShowFontHeight},
    {"SlideShowTitleFontHeight", &Settings::SlideShowTitleFontHeight},
    {"MessageFontHeight", &Settings::MessageFontHeight},
    {"TimingOfChangeSlide(sec)", &Settings::TimingOfChangeSlide},
    {"TimingOfCloseEditor(sec)", &Settings::TimingOfCloseEditor},
    {"NeighborWindowFontHeight", &Settings::NeighborWindowFontHeight},
    {"MaxHeightOfNeighborWindow", &Settings::MaxHeightOfNeighborWindow},
    {"MaxWidthOfNeighborWindow", &Settings::MaxWidthOfNeighborWindow},
    {"FilmWindowFontHeight", &Settings::FilmWindowFontHeight},
};

TEST_F(SettingsFileTest, EachNumberIsReadIntoItsField) {
    for (const NumberCase& number : kNumbers) {
        ResetSettingsToDefaults();
        ReadSettingsText(number.key + "=1234\n");
        EXPECT_EQ(State().settings.*number.field, 1234) << number.key;
    }
    ReadSettingsText("ViewType=1\nThumbnailMaxSize=99\nTargetYear=1999\nTargetMonth=8\nTargetDay=7\n");
    EXPECT_EQ(State().settings.ViewType, 1);
    EXPECT_EQ(State().settings.ThumbnailMaxSize, 99);
    EXPECT_EQ(State().settings.TargetYear, 1999);
    EXPECT_EQ(State().settings.TargetMonth, 8);
    EXPECT_EQ(State().settings.TargetDay, 7);
}

TEST_F(SettingsFileTest, ANumberEndsWhereItsDigitsEnd) {
    const std::pair<const char*, int> cases[] = {
        {"12abc", 12},
        {" 12", 12},
        {"\t-12", -12},
        {"+12", 12},
        {"12.9", 12},
        {"0x10", 0},
        {"007", 7},
        {"2147483647", 2147483647},
        {"2147483648", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"-99999999999999999999", -2147483647 - 1},
        {"99999999999999999999", 2147483647},
    };
    for (const auto& [written, value] : cases) {
        State().settings.DayDuration = 4;
        ReadSettingsText(std::string("DayDuration=") + written + "\n");
        EXPECT_EQ(State().settings.DayDuration, value) << written;
    }
}

TEST_F(SettingsFileTest, ANumberThatDoesNotConvertLeavesTheDefault) {
    for (const char* written : {"", "abc", "-", "+", "- 5", "--5", "=5", "\x82\x50", "１２"}) {
        ReadSettingsText(std::string("DayDuration=") + written + "\n");
        EXPECT_EQ(State().settings.DayDuration, 4) << written;
    }
}

TEST_F(SettingsFileTest, EachColourIsReadIntoItsField) {
    const std::pair<const char*, Color Settings::*> fields[] = {
        {"SlideShowBackColor", &Settings::SlideShowBackColor},
        {"SlideShowFontColor", &Settings::SlideShowFontColor},
        {"SlideShowMessageBackColor", &Settings::SlideShowMessageBackColor},
        {"SlideShowMessageFontColor", &Settings::SlideShowMessageFontColor},
        {"NeighborWindowBackColor", &Settings::NeighborWindowBackColor},
        {"NeighborWindowFontColor", &Settings::NeighborWindowFontColor},
        {"FilmWindowBackColor", &Settings::FilmWindowBackColor},
        {"FilmWindowFontColor", &Settings::FilmWindowFontColor},
    };
    for (const auto& [key, field] : fields) {
        ReadSettingsText(std::string(key) + "=(12,34,56)\n");
        EXPECT_EQ(State().settings.*field, (Color{12, 34, 56})) << key;
    }
    const char* kinds[] = {"Schedule", "ToDo", "Memo", "Web", "Normal"};
    for (std::size_t i = 0; i < 5; ++i) {
        const std::string kind = kinds[i];
        ReadSettingsText(kind + "BackColor=(1,2,3)\n" + kind + "FrameColor=(4,5,6)\n" + kind +
                         "FontColor=(7,8,9)\n");
        EXPECT_EQ(State().settings.TextStyles[i].back, (Color{1, 2, 3})) << kind;
        EXPECT_EQ(State().settings.TextStyles[i].frame, (Color{4, 5, 6})) << kind;
        EXPECT_EQ(State().settings.TextStyles[i].font, (Color{7, 8, 9})) << kind;
    }
}

TEST_F(SettingsFileTest, AColourThatIsNotWholeLeavesTheDefault) {
    for (const char* written : {"", "1,2,3", "(1,2)", "(1,2,", "(1;2;3)", "(a,b,c)", "( ,2,3)"}) {
        ReadSettingsText(std::string("ToDoBackColor=") + written + "\n");
        EXPECT_EQ(State().settings.TextStyles[1].back, (Color{238, 238, 255})) << written;
    }
}

TEST_F(SettingsFileTest, AColourNeedsNoClosingBracketAndIsBroughtIntoRange) {
    ReadSettingsText("ToDoBackColor=( 1, 2, 3\n");
    EXPECT_EQ(State().settings.TextStyles[1].back, (Color{1, 2, 3}));
    ReadSettingsText("ToDoBackColor=(-5,256,99999999999)\n");
    EXPECT_EQ(State().settings.TextStyles[1].back, (Color{0, 255, 255}));
}

TEST_F(SettingsFileTest, TheWindowRectangleIsFourNumbersOrNothing) {
    Load("WindowRect=1,2,300,400\n");
    EXPECT_EQ(State().settings.WindowRect.left, 1);
    EXPECT_EQ(State().settings.WindowRect.top, 2);
    EXPECT_EQ(State().settings.WindowRect.right, 300);
    EXPECT_EQ(State().settings.WindowRect.bottom, 400);
    Load("WindowRect=1,2,300\n");
    EXPECT_EQ(State().settings.WindowRect.left, 10);
    EXPECT_EQ(State().settings.WindowRect.right, 960);
}

TEST_F(SettingsFileTest, AWindowWhoseRightLiesLeftOfItsLeftIsKept) {
    Load("WindowRect=500,10,100,710\n");
    EXPECT_EQ(State().settings.WindowRect.left, 500);
    EXPECT_EQ(State().settings.WindowRect.right, 100);
}

TEST_F(SettingsFileTest, TheSlideShowsSizeCannotBeSetByTheFile) {
    for (const char* percent : {"%", "%%", "%%%", ""}) {
        const std::string sign = std::string("(") + percent + ")=50\n";
        Load("HeightOfSlideShow" + sign + "WidthOfSlideShow" + sign);
        EXPECT_EQ(State().settings.HeightOfSlideShow, 75) << percent;
        EXPECT_EQ(State().settings.WidthOfSlideShow, 75) << percent;
    }
}

}  // namespace
}  // namespace kalmora
