#include "store/settings_file.h"

#include <gmock/gmock.h>

#include <chrono>

#include "platform/shell.h"
#include "store_fixture.h"
#include "text/text.h"

namespace kalmora {

void PrintTo(const Color& color, std::ostream* out) {
    *out << int{color.red} << ',' << int{color.green} << ',' << int{color.blue};
}

namespace {

using namespace std::string_literals;

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class SettingsFileTest : public StoreTest {
protected:
    // Loads a settings file of this content, which is UTF-8 here and code page 932 on disk.
    void Load(const std::string& content) { LoadBytes(text::ToCp932(content)); }
    void LoadBytes(const std::string& bytes) {
        EXPECT_EQ(LoadSettings(Put("kalmora.ini", bytes)), FileRead::Read);
    }

    // A golden file as it is on disk: code page 932, with the home folder in it.
    std::string Golden(const std::string& name) const {
        std::string content = GoldenText(name);
        for (std::size_t at = 0; (at = content.find("<HOME>", at)) != std::string::npos;)
            content.replace(at, 6, home);
        return text::ToCp932(content);
    }
    // What depends on the machine: the programs and the card that it has.
    void SetMachine() const {
        State().settings.ImportDirectory = "/media/card/DCIM";
        State().settings.TextEditor = "xdg-open";
        State().settings.PathOfOrbinGet = At("OrbinGet");
        State().settings.PathOfOrbinLib = At("OrbinLib");
        State().settings.PathOfJpegTran = "/usr/bin/jpegtran";
    }
    static std::string LineOf(const std::string& key) {
        const std::string content = MakeSettingsText();
        const std::size_t start = content.find("\n" + key + "=");
        if (start == std::string::npos) return "no " + key;
        return content.substr(start + 1, content.find('\n', start + 1) - start - 1);
    }
};

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
