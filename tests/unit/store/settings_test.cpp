#include "store/settings.h"

#include <gmock/gmock.h>

#include <chrono>

#include "platform/shell.h"
#include "platform/text.h"
#include "store_fixture.h"

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

class Settings : public StoreTest {
protected:
    // Loads a settings file of this content, which is UTF-8 here and code page 932 on disk.
    void Load(const std::string& content) { LoadBytes(text::ToCp932(content)); }
    void LoadBytes(const std::string& bytes) {
        EXPECT_EQ(LoadSettings(Put("kalmora.ini", bytes)), FileRead::Read);
    }

    // A golden file as it stands on disk: code page 932, with the home folder in it.
    std::string Golden(const std::string& name) const {
        std::string content = GoldenText(name);
        for (std::size_t at = 0; (at = content.find("<HOME>", at)) != std::string::npos;)
            content.replace(at, 6, home);
        return text::ToCp932(content);
    }
    // What depends on the machine: the programs and the card that stand on it.
    void SetMachine() const {
        State().ImportDirectory = "/media/card/DCIM";
        State().TextEditor = "xdg-open";
        State().PathOfOrbinGet = At("OrbinGet");
        State().PathOfOrbinLib = At("OrbinLib");
        State().PathOfJpegTran = "/usr/bin/jpegtran";
    }
    static std::string LineOf(const std::string& key) {
        const std::string content = MakeSettingsText();
        const std::size_t start = content.find("\n" + key + "=");
        if (start == std::string::npos) return "no " + key;
        return content.substr(start + 1, content.find('\n', start + 1) - start - 1);
    }
};

// ---- the first run

TEST_F(Settings, AMissingFileIsTheFirstRunAndMakesTheDataFolder) {
    EXPECT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Missing);
    EXPECT_EQ(State().DataDirectory, At("files"));
    EXPECT_THAT(State().DataDirectories, ElementsAre(At("files")));
    EXPECT_TRUE(files::IsFolder(At("files")));
    EXPECT_FALSE(files::Exists(At("kalmora.ini")));
}

TEST_F(Settings, TheFirstRunIsOverOnceTheFileHasBeenWritten) {
    ASSERT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Missing);
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    EXPECT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Read);
    EXPECT_EQ(State().DataDirectory, At("files"));
}

TEST_F(Settings, ADataFolderForThisRunLeavesTheDefaultOneUnmade) {
    State().RunDataDirectory = "/mnt/this run only";
    EXPECT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Missing);
    EXPECT_FALSE(files::Exists(At("files")));
}

TEST_F(Settings, AFileThatIsThereButCannotBeReadIsNoFirstRunAndIsNotReplaced) {
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

TEST_F(Settings, AnEmptyFileIsNoFirstRunAndMakesNothing) {
    Load("");
    EXPECT_FALSE(files::Exists(At("files")));
    EXPECT_THAT(State().DataDirectories, IsEmpty());
}

// ---- defaults

TEST_F(Settings, DefaultsAreWrittenByteForByte) {
    SetMachine();
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    EXPECT_EQ(ContentOf(At("kalmora.ini")), Golden("settings_defaults.txt"));
}

TEST_F(Settings, DefaultsOfWhatIsNeverWritten) {
    const AppState& state = State();
    EXPECT_EQ(state.ShellExecute, "");
    EXPECT_EQ(state.TwitterURL, "");
    EXPECT_EQ(state.MonthFontFaceForYearly, "MSP ゴシック");
    EXPECT_EQ(state.MonthFontHeightForYearly, 24);
    EXPECT_EQ(state.SlideShowTitleFontFace, "MSP ゴシック");
    EXPECT_EQ(state.SlideShowTitleFontHeight, 32);
    EXPECT_EQ(state.FilmWindowFontFace, "");
    EXPECT_EQ(state.FilmWindowFontHeight, 0);
    EXPECT_EQ(state.FilmWindowBackColor, (Color{0, 0, 0}));
    EXPECT_EQ(state.FilmWindowFontColor, (Color{255, 255, 255}));
    EXPECT_FALSE(state.NewsMode || state.GradualRendering || state.LogView || state.OutputToLogFile ||
                 state.UseSentimentMining);
}

TEST_F(Settings, TheTargetDateIsTodayUnlessTheFileHasOne) {
    clock.now = SystemTime{2031, 2, 0, 3, 4, 5, 6, 7};
    Load("TargetMonth=12\n");
    EXPECT_EQ(State().TargetYear, 2031);
    EXPECT_EQ(State().TargetMonth, 12);
    EXPECT_EQ(State().TargetDay, 3);
}

TEST_F(Settings, OutsideProgramsBesideTheProgramComeFirst) {
    Put("jpegtran");
    Put("OrbinGet");
    ResetSettingsToDefaults();
    EXPECT_EQ(State().PathOfJpegTran, At("jpegtran"));
    EXPECT_EQ(State().PathOfOrbinGet, At("OrbinGet"));
    EXPECT_EQ(State().TextEditor, shell::DefaultOpener());
}

TEST_F(Settings, AnOutsideProgramIsTakenFromBesideTheExecutableBeforePath) {
    const std::string own = files::Join(files::ExecutableFolder(), "jpegtran");
    const std::string installed = files::Exists(own) ? own : files::FindProgram("jpegtran");
    EXPECT_EQ(State().PathOfJpegTran, installed.empty() ? At("jpegtran") : installed);
}

TEST_F(Settings, AnOutsideProgramThatIsNowhereIsNamedInTheHome) {
    EXPECT_EQ(State().PathOfOrbinGet, At("OrbinGet"));
}

TEST_F(Settings, ResettingForgetsWhatAnEarlierFileSaid) {
    LoadBytes(Golden("settings_changed.txt"));
    ResetSettingsToDefaults();
    SetMachine();
    EXPECT_EQ(MakeSettingsText(), Golden("settings_defaults.txt"));
    EXPECT_THAT(State().DataDirectories, IsEmpty());
}

// ---- the whole file

TEST_F(Settings, EveryChangedValueIsReadAndWrittenByteForByte) {
    LoadBytes(Golden("settings_changed.txt"));
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    EXPECT_EQ(ContentOf(At("kalmora.ini")), Golden("settings_changed.txt"));
}

TEST_F(Settings, AnUnwritableFileIsAValueAndLeavesTheOldOne) {
    EXPECT_FALSE(SaveSettings(At("absent/kalmora.ini")));
}

TEST_F(Settings, SavingLeavesNothingBesideTheFile) {
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
    EXPECT_EQ(files::ListFolder(home).size(), 1u);
}

// ---- flags

struct FlagCase {
    std::string key;
    bool AppState::*field;
    bool initial;
};
const FlagCase kFlags[] = {
    {"AllowMultiDataDirectory", &AppState::AllowMultiDataDirectory, false},
    {"UseOtherFolder", &AppState::UseOtherFolder, false},
    {"RemoveImportFiles", &AppState::RemoveImportFiles, false},
    {"InsertOriginalPathToExif", &AppState::InsertOriginalPathToExif, false},
    {"ImportAsShortcutFile", &AppState::ImportAsShortcutFile, false},
    {"UseJapanese", &AppState::UseJapanese, true},
    {"ShowFolderPath", &AppState::ShowFolderPath, true},
    {"OutputNavigationLog", &AppState::OutputNavigationLog, false},
    {"UseEstimation", &AppState::UseEstimation, true},
    {"UseExifThumbnail", &AppState::UseExifThumbnail, false},
    {"DayViewSortByTime", &AppState::DayViewSortByTime, true},
    {"RenameFileWhenMove", &AppState::RenameFileWhenMove, false},
    {"RenameFileWhenCopy", &AppState::RenameFileWhenCopy, false},
    {"StopUpdateWhenWindowHide", &AppState::StopUpdateWhenWindowHide, true},
    {"SkipSmallImage", &AppState::SkipSmallImage, true},
    {"LoadIndexInitially", &AppState::LoadIndexInitially, false},
    {"ConfirmScrapText", &AppState::ConfirmScrapText, true},
    {"SlideShowRandom", &AppState::SlideShowRandom, false},
    {"SlideShowTransparent", &AppState::SlideShowTransparent, false},
    {"DoSortForSlideShow", &AppState::DoSortForSlideShow, false},
    {"NewsMode", &AppState::NewsMode, false},
    {"GradualRendering", &AppState::GradualRendering, false},
    {"LogView", &AppState::LogView, false},
    {"OutputToLogFile", &AppState::OutputToLogFile, false},
    {"UseSentimentMining", &AppState::UseSentimentMining, false},
    {"ShowButtonPrev2", &AppState::ShowButtonPrev2, true},
    {"ShowButtonPrev", &AppState::ShowButtonPrev, true},
    {"ShowButtonAuto", &AppState::ShowButtonAuto, true},
    {"ShowButtonNext", &AppState::ShowButtonNext, true},
    {"ShowButtonNext2", &AppState::ShowButtonNext2, true},
    {"ShowButtonStop", &AppState::ShowButtonStop, true},
    {"ShowButtonParapara", &AppState::ShowButtonParapara, true},
    {"ShowButtonSlideShow", &AppState::ShowButtonSlideShow, true},
    {"ShowButtonFilter", &AppState::ShowButtonFilter, true},
    {"ShowButtonImport", &AppState::ShowButtonImport, true},
    {"ShowButtonSearch", &AppState::ShowButtonSearch, true},
    {"ShowButtonHelp", &AppState::ShowButtonHelp, true},
    {"ShowButtonSound", &AppState::ShowButtonSound, false},
    {"ShowButtonFilmWindow", &AppState::ShowButtonFilmWindow, false},
    {"ShowButtonGoogleCalendar", &AppState::ShowButtonGoogleCalendar, false},
    {"ShowButtonAmazon", &AppState::ShowButtonAmazon, false},
    {"ShowButtonTwitter", &AppState::ShowButtonTwitter, false},
    {"ShowButtonIndexing", &AppState::ShowButtonIndexing, false},
};
struct SharedFlagCase {
    std::string key;
    SharedFlag AppState::*field;
    bool initial;
};
const SharedFlagCase kSharedFlags[] = {
    {"AllViewMode", &AppState::AllViewMode, false},
    {"SoundMode", &AppState::SoundMode, true},
    {"GoodMode", &AppState::GoodMode, false},
    {"PublicMode", &AppState::PublicMode, false},
    {"CalendarMode", &AppState::CalendarMode, true},
    {"AutoNavigate", &AppState::AutoNavigate, false},
    {"SlideShowAutoNavigate", &AppState::SlideShowAutoNavigate, false},
    {"MonitorClipboard", &AppState::MonitorClipboard, false},
};

// The value opposite to the default counts, whatever follows it; every other text leaves the default.
template <typename Case>
void ExpectFlag(const Case& flag) {
    const std::string opposite = flag.initial ? "=0" : "=1", same = flag.initial ? "=1" : "=0";
    const auto after = [&](const std::string& line) {
        ResetSettingsToDefaults();
        ReadSettingsText(line);
        return State().*flag.field != 0;
    };
    EXPECT_EQ(after(flag.key + opposite + "\n"), !flag.initial) << flag.key;
    EXPECT_EQ(after(flag.key + opposite + "\r\n"), !flag.initial) << flag.key;
    EXPECT_EQ(after(flag.key + opposite + "7\n"), !flag.initial) << flag.key;
    for (const std::string& other : {same, "=2"s, "= "s + opposite.substr(1), "="s, " "s + opposite})
        EXPECT_EQ(after(flag.key + other + "\n"), flag.initial) << flag.key << other;
}

TEST_F(Settings, EachFlagIsSetByTheOppositeOfItsDefaultAndByNothingElse) {
    for (const FlagCase& flag : kFlags) ExpectFlag(flag);
    for (const SharedFlagCase& flag : kSharedFlags) ExpectFlag(flag);
}

TEST_F(Settings, DrawWhileLoadingCannotBeTurnedOffByTheFile) {
    Load("DrawWhileLoading=0\n");
    EXPECT_TRUE(State().DrawWhileLoading);
    Load("DrawWhileLoading=1\n");
    EXPECT_TRUE(State().DrawWhileLoading);
}

TEST_F(Settings, CaseOfAKeyDoesNotMatter) {
    Load("soundmode=0\nVIEWTYPE=4\nscheduleBACKcolor=(1,2,3)\ntimingofchangebgimage(NUM)=9\n");
    EXPECT_EQ(State().SoundMode, 0);
    EXPECT_EQ(State().ViewType, 4);
    EXPECT_EQ(State().TextStyles[0].back, (Color{1, 2, 3}));
    EXPECT_EQ(State().TimingOfChangeBgImage, 9);
}

// ---- numbers and colours

struct NumberCase {
    std::string key;
    int AppState::*field;
};
const NumberCase kNumbers[] = {
    {"TimingOfPopup(sec)", &AppState::TimingOfPopup},
    {"TimingOfChangeImage(msec)", &AppState::TimingOfChangeImage},
    {"TimingOfChangeBgImage(num)", &AppState::TimingOfChangeBgImage},
    {"MinutesToSleep", &AppState::MinutesToSleep},
    {"DayStartTime", &AppState::DayStartTime},
    {"DayNumberOfLine", &AppState::DayNumberOfLine},
    {"DayDuration", &AppState::DayDuration},
    {"SizeOfSmallImage", &AppState::SizeOfSmallImage},
    {"NumberOfLoadIndex", &AppState::NumberOfLoadIndex},
    {"DayFontHeight", &AppState::DayFontHeight},
    {"ButtonFontHeight", &AppState::ButtonFontHeight},
    {"MiniFontHeight", &AppState::MiniFontHeight},
    {"DayFontHeightForYearly", &AppState::DayFontHeightForYearly},
    {"MonthFontHeightForYearly", &AppState::MonthFontHeightForYearly},
    {"TimingOfAutoNavigate(num)", &AppState::TimingOfAutoNavigate},
    {"DayEndTimeForScrap", &AppState::DayEndTimeForScrap},
    {"QualityOfJpeg", &AppState::QualityOfJpeg},
    {"SlideShowFontHeight", &AppState::SlideShowFontHeight},
    {"SlideShowTitleFontHeight", &AppState::SlideShowTitleFontHeight},
    {"MessageFontHeight", &AppState::MessageFontHeight},
    {"TimingOfChangeSlide(sec)", &AppState::TimingOfChangeSlide},
    {"TimingOfCloseEditor(sec)", &AppState::TimingOfCloseEditor},
    {"NeighborWindowFontHeight", &AppState::NeighborWindowFontHeight},
    {"MaxHeightOfNeighborWindow", &AppState::MaxHeightOfNeighborWindow},
    {"MaxWidthOfNeighborWindow", &AppState::MaxWidthOfNeighborWindow},
    {"FilmWindowFontHeight", &AppState::FilmWindowFontHeight},
};

TEST_F(Settings, EachNumberIsReadIntoItsField) {
    for (const NumberCase& number : kNumbers) {
        ResetSettingsToDefaults();
        ReadSettingsText(number.key + "=1234\n");
        EXPECT_EQ(State().*number.field, 1234) << number.key;
    }
    ReadSettingsText("ViewType=1\nThumbnailMaxSize=99\nTargetYear=1999\nTargetMonth=8\nTargetDay=7\n");
    EXPECT_EQ(State().ViewType, 1);
    EXPECT_EQ(State().ThumbnailMaxSize, 99);
    EXPECT_EQ(State().TargetYear, 1999);
    EXPECT_EQ(State().TargetMonth, 8);
    EXPECT_EQ(State().TargetDay, 7);
}

TEST_F(Settings, ANumberEndsWhereItsDigitsEnd) {
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
        State().DayDuration = 4;
        ReadSettingsText(std::string("DayDuration=") + written + "\n");
        EXPECT_EQ(State().DayDuration, value) << written;
    }
}

TEST_F(Settings, ANumberThatDoesNotConvertLeavesTheDefault) {
    for (const char* written : {"", "abc", "-", "+", "- 5", "--5", "=5", "\x82\x50", "１２"}) {
        ReadSettingsText(std::string("DayDuration=") + written + "\n");
        EXPECT_EQ(State().DayDuration, 4) << written;
    }
}

TEST_F(Settings, EachColourIsReadIntoItsField) {
    const std::pair<const char*, Color AppState::*> fields[] = {
        {"SlideShowBackColor", &AppState::SlideShowBackColor},
        {"SlideShowFontColor", &AppState::SlideShowFontColor},
        {"SlideShowMessageBackColor", &AppState::SlideShowMessageBackColor},
        {"SlideShowMessageFontColor", &AppState::SlideShowMessageFontColor},
        {"NeighborWindowBackColor", &AppState::NeighborWindowBackColor},
        {"NeighborWindowFontColor", &AppState::NeighborWindowFontColor},
        {"FilmWindowBackColor", &AppState::FilmWindowBackColor},
        {"FilmWindowFontColor", &AppState::FilmWindowFontColor},
    };
    for (const auto& [key, field] : fields) {
        ReadSettingsText(std::string(key) + "=(12,34,56)\n");
        EXPECT_EQ(State().*field, (Color{12, 34, 56})) << key;
    }
    const char* kinds[] = {"Schedule", "ToDo", "Memo", "Web", "Normal"};
    for (std::size_t i = 0; i < 5; ++i) {
        const std::string kind = kinds[i];
        ReadSettingsText(kind + "BackColor=(1,2,3)\n" + kind + "FrameColor=(4,5,6)\n" + kind +
                         "FontColor=(7,8,9)\n");
        EXPECT_EQ(State().TextStyles[i].back, (Color{1, 2, 3})) << kind;
        EXPECT_EQ(State().TextStyles[i].frame, (Color{4, 5, 6})) << kind;
        EXPECT_EQ(State().TextStyles[i].font, (Color{7, 8, 9})) << kind;
    }
}

TEST_F(Settings, AColourThatIsNotWholeLeavesTheDefault) {
    for (const char* written : {"", "1,2,3", "(1,2)", "(1,2,", "(1;2;3)", "(a,b,c)", "( ,2,3)"}) {
        ReadSettingsText(std::string("ToDoBackColor=") + written + "\n");
        EXPECT_EQ(State().TextStyles[1].back, (Color{238, 238, 255})) << written;
    }
}

TEST_F(Settings, AColourNeedsNoClosingBracketAndIsBroughtIntoRange) {
    ReadSettingsText("ToDoBackColor=( 1, 2, 3\n");
    EXPECT_EQ(State().TextStyles[1].back, (Color{1, 2, 3}));
    ReadSettingsText("ToDoBackColor=(-5,256,99999999999)\n");
    EXPECT_EQ(State().TextStyles[1].back, (Color{0, 255, 255}));
}

TEST_F(Settings, TheWindowRectangleIsFourNumbersOrNothing) {
    Load("WindowRect=1,2,300,400\n");
    EXPECT_EQ(State().WindowRect.left, 1);
    EXPECT_EQ(State().WindowRect.top, 2);
    EXPECT_EQ(State().WindowRect.right, 300);
    EXPECT_EQ(State().WindowRect.bottom, 400);
    Load("WindowRect=1,2,300\n");
    EXPECT_EQ(State().WindowRect.left, 10);
    EXPECT_EQ(State().WindowRect.right, 960);
}

TEST_F(Settings, AWindowWhoseRightLiesLeftOfItsLeftIsKept) {
    Load("WindowRect=500,10,100,710\n");
    EXPECT_EQ(State().WindowRect.left, 500);
    EXPECT_EQ(State().WindowRect.right, 100);
}

TEST_F(Settings, TheSlideShowsSizeCannotBeSetByTheFile) {
    for (const char* percent : {"%", "%%", "%%%", ""}) {
        const std::string sign = std::string("(") + percent + ")=50\n";
        Load("HeightOfSlideShow" + sign + "WidthOfSlideShow" + sign);
        EXPECT_EQ(State().HeightOfSlideShow, 75) << percent;
        EXPECT_EQ(State().WidthOfSlideShow, 75) << percent;
    }
}

// ---- texts and paths

TEST_F(Settings, ATextTakesTheRestOfItsLine) {
    Load("TextEditor=gedit --wait = x \r\nTwitterURL=\nDayFontFace= ＭＳ 明朝\nGoogleCalendarPrivateURL=a");
    EXPECT_EQ(State().TextEditor, "gedit --wait = x ");
    EXPECT_EQ(State().TwitterURL, "");
    EXPECT_EQ(State().DayFontFace, " ＭＳ 明朝");
    EXPECT_EQ(State().GoogleCalendarPrivateURL, "a");
}

TEST_F(Settings, EachTextIsReadIntoItsField) {
    const std::pair<const char*, std::string AppState::*> fields[] = {
        {"DayFontFace", &AppState::DayFontFace},
        {"ButtonFontFace", &AppState::ButtonFontFace},
        {"MiniFontFace", &AppState::MiniFontFace},
        {"DayFontFaceForYearly", &AppState::DayFontFaceForYearly},
        {"MonthFontFaceForYearly", &AppState::MonthFontFaceForYearly},
        {"SlideShowFontFace", &AppState::SlideShowFontFace},
        {"SlideShowTitleFontFace", &AppState::SlideShowTitleFontFace},
        {"MessageFontFace", &AppState::MessageFontFace},
        {"NeighborWindowFontFace", &AppState::NeighborWindowFontFace},
        {"FilmWindowFontFace", &AppState::FilmWindowFontFace},
        {"OrbinWrite", &AppState::OrbinWrite},
        {"TextEditor", &AppState::TextEditor},
        {"TwitterURL", &AppState::TwitterURL},
        {"GoogleCalendarPrivateURL", &AppState::GoogleCalendarPrivateURL},
    };
    for (const auto& [key, field] : fields) {
        Load(std::string(key) + "=some " + key + "\n");
        EXPECT_EQ(State().*field, std::string("some ") + key);
    }
}

TEST_F(Settings, APathIsRelativeToTheProgramFolder) {
    const std::pair<const char*, std::string AppState::*> fields[] = {
        {"BackgroundImage", &AppState::BackgroundImage},
        {"BackGroundImage", &AppState::BackgroundImage},
        {"BackgroundImageForNeighbor", &AppState::BackgroundImageForNeighbor},
        {"BackgroundImageForSlideShow", &AppState::BackgroundImageForSlideShow},
        {"ShellExecute", &AppState::ShellExecute},
        {"DataDirectory", &AppState::DataDirectory},
        {"PathOfOrbinGet", &AppState::PathOfOrbinGet},
        {"PathOfOrbinLib", &AppState::PathOfOrbinLib},
        {"PathOfJpegTran", &AppState::PathOfJpegTran},
    };
    for (const auto& [key, field] : fields) {
        const std::string start = std::string(key) + "=";
        Load(start + "sub/表.x\n");
        EXPECT_EQ(State().*field, At("sub/表.x")) << key;
        Load(start + "sub\\表.x\n");  // as the other platform writes it
        EXPECT_EQ(State().*field, At("sub/表.x")) << key;
        for (const char* absolute : {"/abs/x", "C:\\abs\\x", "\\\\server\\share"}) {
            Load(start + absolute + "\n");
            EXPECT_EQ(State().*field, absolute) << key;
        }
    }
}

TEST_F(Settings, AnEmptyPathIsTheProgramFolderItself) {
    Load("BackgroundImage=\nDataDirectory=\n");
    EXPECT_EQ(State().BackgroundImage, home + "/");
    EXPECT_EQ(State().DataDirectory, home);
}

TEST_F(Settings, FoldersLoseOneTrailingSeparator) {
    Load("ImportDirectory=/card/DCIM/\nOtherDirectory=/other//\nDataDirectory=/data/\n");
    EXPECT_EQ(State().ImportDirectory, "/card/DCIM");
    EXPECT_EQ(State().OtherDirectory, "/other/");
    EXPECT_EQ(State().DataDirectory, "/data");
    Load("ImportDirectory=E:\\DCIM\\\nOtherDirectory=/\nDataDirectory=sub\\\n");
    EXPECT_EQ(State().ImportDirectory, "E:\\DCIM");
    EXPECT_EQ(State().OtherDirectory, "/");
    EXPECT_EQ(State().DataDirectory, At("sub"));
}

TEST_F(Settings, TheOtherDirectoryAndTheImportDirectoryStayAsWritten) {
    Load("OtherDirectory=other\\x\nImportDirectory=card\n");
    EXPECT_EQ(State().OtherDirectory, "other\\x");
    EXPECT_EQ(State().ImportDirectory, "card");
    Load("OtherDirectory=\n");
    EXPECT_EQ(State().OtherDirectory, "");
}

TEST_F(Settings, AnEmptyImportDirectoryLeavesTheCardThatIsInNow) {
    State().ImportDirectory = "/media/card/DCIM";
    ReadSettingsText("ImportDirectory=\n");
    EXPECT_EQ(State().ImportDirectory, "/media/card/DCIM");
}

TEST_F(Settings, PathsBelowTheProgramFolderAreWrittenShort) {
    State().BackgroundImage = At("sub/sea.jpg");
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=sub/sea.jpg");
    State().BackgroundImage = home;
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=" + home);
    State().BackgroundImage = home + "2/sea.jpg";  // begins with the folder's name, lies elsewhere
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=" + home + "2/sea.jpg");
    State().BackgroundImage = "/elsewhere/sea.jpg";
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=/elsewhere/sea.jpg");
    State().OrbinWrite = At("OrbinWrite");
    EXPECT_EQ(LineOf("OrbinWrite"), "OrbinWrite=" + At("OrbinWrite"));
}

TEST_F(Settings, AnotherFolderWhoseNameDiffersInCaseOnlyIsNotTheProgramFolder) {
    const std::string upper = MakeFolder("APP"), lower = At("app");
    if (files::Exists(lower)) GTEST_SKIP() << "the file system ignores case";
    State().ProgramFolder = upper;
    State().BackgroundImage = lower + "/sea.jpg";
    EXPECT_EQ(LineOf("BackGroundImage"), "BackGroundImage=" + lower + "/sea.jpg");
    State().ProgramFolder = home;
}

TEST_F(Settings, OfATwiceWrittenToolPathTheLastOneIsKept) {
    Load("PathOfJpegTran=/old/place/jpegtran\nPathOfJpegTran=jpegtran\n");
    EXPECT_EQ(State().PathOfJpegTran, At("jpegtran"));
}

TEST_F(Settings, NamesOfEveryKindSurviveAWriteAndARead) {
    for (const std::string& name : {"日本語"s, "表示能力ソ"s, "～①㈱"s, "emoji 😀"s, "not utf-8 \xFF\xE3\x81"s,
                                    "&#x41;"s, "line\nfeed\r"s, "한국어"s, " blanks "s}) {
        State().DataDirectory = home + "/" + name;
        State().OtherDirectory = "/mnt/" + name;
        State().DayFontFace = name;
        ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
        ASSERT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Read);
        EXPECT_EQ(State().DataDirectory, home + "/" + name);
        EXPECT_EQ(State().OtherDirectory, "/mnt/" + name);
        EXPECT_EQ(State().DayFontFace, name);
    }
}

TEST_F(Settings, ACharacterThatTheCodePageLacksIsWrittenAsAnEscape) {
    State().DayFontFace = "a😀";
    EXPECT_EQ(LineOf("DayFontFace"), "DayFontFace=a&#x1F600;");
}

// ---- data folders

TEST_F(Settings, WithOneDataFolderTheLastLineWins) {
    Load("DataDirectory=/a\nDataDirectory=/b\n");
    EXPECT_EQ(State().DataDirectory, "/b");
    EXPECT_THAT(State().DataDirectories, IsEmpty());
}

TEST_F(Settings, WithSeveralTheListKeepsTheOrderOfTheFile) {
    MakeFolder("b");
    Load("AllowMultiDataDirectory=1\nDataDirectory=/nowhere/a\nDataDirectory=b\nDataDirectory=/nowhere/c\n");
    EXPECT_THAT(State().DataDirectories, ElementsAre("/nowhere/a", At("b"), "/nowhere/c"));
    EXPECT_EQ(State().DataDirectory, At("b"));  // the one that stands
    EXPECT_THAT(MakeSettingsText(),
                HasSubstr("\nDataDirectory=/nowhere/a\nDataDirectory=b\nDataDirectory=/nowhere/c\n"));
}

TEST_F(Settings, SeveralDataFoldersCountOnlyBehindTheirFlag) {
    Load("DataDirectory=/a\nAllowMultiDataDirectory=1\n");
    EXPECT_EQ(State().DataDirectories, std::vector{At("files")});
    EXPECT_EQ(State().DataDirectory, At("files"));
}

TEST_F(Settings, ADataFolderListedTwiceIsListedOnce) {
    ReadSettingsText(
        "AllowMultiDataDirectory=1\nDataDirectory=/Data/a\nDataDirectory=/b\nDataDirectory=/data/A/\n");
    EXPECT_THAT(State().DataDirectories, ElementsAre("/Data/a", "/b"));
    EXPECT_EQ(State().DataDirectory, "/b");
}

TEST_F(Settings, DataFolderThatBeginsAListedOneIsDropped) {
    ReadSettingsText(
        "AllowMultiDataDirectory=1\nDataDirectory=/data2\nDataDirectory=/data\nDataDirectory=/data22\n");
    EXPECT_THAT(State().DataDirectories, ElementsAre("/data2", "/data22"));
}

// ---- repairs

TEST_F(Settings, TheSlideShowsSizeIsRepairedBelowTenAndAboveAHundred) {
    for (int AppState::*field : {&AppState::HeightOfSlideShow, &AppState::WidthOfSlideShow}) {
        for (const auto& [value, repaired] : {std::pair{9, 75}, {10, 10}, {100, 100}, {101, 75}, {-1, 75}}) {
            State().*field = value;
            RepairSettings();
            EXPECT_EQ(State().*field, repaired) << value;
        }
    }
}

TEST_F(Settings, NumbersOutOfRangeAreRepairedAndTheirNeighboursAreNot) {
    const struct {
        std::string key;
        int AppState::*field;
        int value, repaired;
    } cases[] = {
        {"QualityOfJpeg", &AppState::QualityOfJpeg, -1, 80},
        {"QualityOfJpeg", &AppState::QualityOfJpeg, 0, 0},
        {"QualityOfJpeg", &AppState::QualityOfJpeg, 100, 100},
        {"QualityOfJpeg", &AppState::QualityOfJpeg, 101, 80},
        {"TimingOfPopup(sec)", &AppState::TimingOfPopup, -1, 2},
        {"TimingOfPopup(sec)", &AppState::TimingOfPopup, 0, 0},
        {"TimingOfPopup(sec)", &AppState::TimingOfPopup, 100000, 100000},
        {"DayEndTimeForScrap", &AppState::DayEndTimeForScrap, 5, 29},
        {"DayEndTimeForScrap", &AppState::DayEndTimeForScrap, 60, 36},
        {"DayEndTimeForScrap", &AppState::DayEndTimeForScrap, 12, 36},
        {"DayEndTimeForScrap", &AppState::DayEndTimeForScrap, 13, 13},
        {"DayEndTimeForScrap", &AppState::DayEndTimeForScrap, 47, 47},
        {"DayEndTimeForScrap", &AppState::DayEndTimeForScrap, 48, 24},
        {"DayEndTimeForScrap", &AppState::DayEndTimeForScrap, 0, 24},
        {"DayEndTimeForScrap", &AppState::DayEndTimeForScrap, -100, -76},
    };
    for (const auto& row : cases) {
        Load(row.key + "=" + std::to_string(row.value) + "\n");
        EXPECT_EQ(State().*row.field, row.repaired) << row.key << "=" << row.value;
    }
}

TEST_F(Settings, EachEdgeOfTheWindowIsRepairedByItself) {
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
        EXPECT_EQ(State().WindowRect.left, rect.left);
        EXPECT_EQ(State().WindowRect.top, rect.top);
        EXPECT_EQ(State().WindowRect.right, rect.right);
        EXPECT_EQ(State().WindowRect.bottom, rect.bottom);
    }
}

TEST_F(Settings, TheDataDirectoryBecomesTheRootInUse) {
    Load("AllowMultiDataDirectory=1\nDataDirectory=/nowhere/a\nDataDirectory=" + MakeFolder("b") + "\n");
    EXPECT_EQ(State().DataDirectory, At("b"));
}

TEST_F(Settings, DataFoldersThatAreAllAwayStayAsTheyAreListed) {
    Load("AllowMultiDataDirectory=1\nDataDirectory=/nowhere/a\nDataDirectory=/nowhere/b\n");
    EXPECT_EQ(State().DataDirectory, "/nowhere/a");
    EXPECT_THAT(State().DataDirectories, ElementsAre("/nowhere/a", "/nowhere/b"));
    EXPECT_FALSE(files::Exists(At("files")));
}

TEST_F(Settings, TheCommandLinesDataFolderIsNotSaved) {
    State().RunDataDirectory = "/mnt/this run only";
    Load("DataDirectory=/life\n");
    EXPECT_EQ(State().DataDirectory, "/life");
    EXPECT_EQ(LineOf("DataDirectory"), "DataDirectory=/life");
    Load("AllowMultiDataDirectory=1\nDataDirectory=/nowhere/a\n");
    EXPECT_THAT(State().DataDirectories, ElementsAre("/nowhere/a"));
}

// ---- lines

TEST_F(Settings, SectionsDoNotMatterForTheReader) {
    Load("[SlideShow]\nViewType=4\n[Main]\nQualityOfJpeg=7\n[ViewType=1\n");
    EXPECT_EQ(State().ViewType, 4);
    EXPECT_EQ(State().QualityOfJpeg, 7);
}

TEST_F(Settings, AValueOfMoreThan255BytesIsReadWhole) {
    const std::string value(300, 'a');
    Load("TextEditor=" + value + "ViewType=4\nQualityOfJpeg=7\n");
    EXPECT_EQ(State().TextEditor, value + "ViewType=4");
    EXPECT_EQ(State().ViewType, 2);
    EXPECT_EQ(State().QualityOfJpeg, 7);
}

TEST_F(Settings, APathOfMoreThan255BytesSurvivesAWriteAndARead) {
    for (const std::string& name : {"folder/"s, "写真/"s, "😀/"s, "raw\xFF/"s}) {
        std::string path = "/mnt";
        while (path.size() < 3500) path += "/" + name.substr(0, name.size() - 1);
        State().DataDirectory = State().OtherDirectory = path;
        ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
        ASSERT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Read);
        EXPECT_EQ(State().DataDirectory, path);
        EXPECT_EQ(State().OtherDirectory, path);
    }
}

TEST_F(Settings, AFileThatEndsInTheMiddleOfACharacterLosesOnlyThat) {
    LoadBytes("TextEditor=vi\x95");
    EXPECT_EQ(State().TextEditor, "vi");
}

TEST_F(Settings, AFileThatAnEditorSavedAsUtf8IsUnderstood) {
    const std::string content = "DataDirectory=/home/anna/写真 Käse 😀&#xE9;\nDayFontFace=ＭＳ 明朝\n";
    for (const std::string& mark : {""s, "\xEF\xBB\xBF"s}) {
        LoadBytes(mark + content);
        EXPECT_EQ(State().DataDirectory, "/home/anna/写真 Käse 😀é");
        EXPECT_EQ(State().DayFontFace, "ＭＳ 明朝");
    }
    LoadBytes("\xEF\xBB\xBFViewType=4\n");
    EXPECT_EQ(State().ViewType, 4) << "the mark belongs to no key";
}

TEST_F(Settings, AFileInUtf8StaysInUtf8) {
    for (const std::string& mark : {""s, "\xEF\xBB\xBF"s}) {
        LoadBytes(mark + "DataDirectory=/写真\n");
        State().OtherDirectory = "/Käse\n&#xE9;\xFF";
        ASSERT_TRUE(SaveSettings(At("kalmora.ini")));
        const std::string written = ContentOf(At("kalmora.ini"));
        EXPECT_THAT(written, StartsWith(mark + "[Main]\n"));
        EXPECT_THAT(written, HasSubstr("\nDataDirectory=/写真\n"));
        EXPECT_THAT(written, HasSubstr("\nOtherDirectory=/Käse&#xA;&#x26;#xE9;&#xDCFF;\n"));
        ASSERT_EQ(LoadSettings(At("kalmora.ini")), FileRead::Read);
        EXPECT_EQ(State().OtherDirectory, "/Käse\n&#xE9;\xFF");
    }
}

TEST_F(Settings, GarbageLeavesTheDefaults) {
    std::string garbage;
    for (int i = 0; i < 256; ++i)
        garbage += std::string(3, static_cast<char>(i)) + "=" + static_cast<char>(i) + "\n";
    garbage +=
        "=\n==\nViewType\nViewType 4\n ViewType=4\nUnknown=1\n\xEF\xBB\xBF[Main]\n;ViewType=4\n#ViewType=4\n";
    const std::string before = MakeSettingsText();
    ReadSettingsText(garbage);
    EXPECT_EQ(MakeSettingsText(), before);
}

TEST_F(Settings, AZeroByteEndsALine) {
    LoadBytes("TextEditor=vi\0m\nViewType=4\n"s);
    EXPECT_EQ(State().TextEditor, "vi");
    EXPECT_EQ(State().ViewType, 4);
}

TEST_F(Settings, AHugeFileIsReadInBoundedTime) {
    const std::string huge = "ViewType=4\n" + std::string(16u << 20, 'x');
    const auto start = std::chrono::steady_clock::now();
    LoadBytes(huge);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(State().ViewType, 4);
}

TEST_F(Settings, WhatIsOnlyReadIsNeverWritten) {
    Load("ShellExecute=x\nTwitterURL=y\nNewsMode=1\nMonthFontFaceForYearly=z\nFilmWindowBackColor=(1,2,3)\n");
    EXPECT_EQ(State().TwitterURL, "y");
    for (const char* key :
         {"ShellExecute", "TwitterURL", "NewsMode", "GradualRendering", "LogView", "OutputToLogFile",
          "UseSentimentMining", "MonthFont", "SlideShowTitle", "FilmWindowFont", "FilmWindowBack"})
        EXPECT_THAT(MakeSettingsText(), Not(HasSubstr(key))) << key;
}

}  // namespace
}  // namespace kalmora
