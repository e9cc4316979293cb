// Settings: what the settings file holds, and the paths that follow from where the program was started.
//
// The fields carry the names of their keys in kalmora.ini (store/settings_file.h reads and writes them).
// Written before other threads run and by the GUI thread; what another thread reads while the program runs is
// atomic, but for the data folders, which store/data_folder.h hands out.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "state/period.h"
#include "state/shared_values.h"

namespace kalmora {

// The five kinds of text frame.
enum class TextKind { Schedule = 0, ToDo = 1, Memo = 2, Web = 3, Normal = 4 };

struct TextColors {
    Color back, frame, font;
};

struct WindowRectValue {
    int left = 10, top = 10, right = 960, bottom = 710;
};

// The order of the settings file is worth more than the record's padding.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct Settings {
    // ---- [Main]
    WindowRectValue WindowRect;
    std::string BackgroundImage;
    bool AllowMultiDataDirectory = false;
    std::string DataDirectory;                 // no trailing separator
    std::vector<std::string> DataDirectories;  // the ordered list behind AllowMultiDataDirectory
    bool UseOtherFolder = false;
    std::string OtherDirectory;
    std::string RunDataDirectory;  // stands in for DataDirectory in this run only; empty: nothing does
    std::string ImportDirectory;
    bool RemoveImportFiles = false;
    bool InsertOriginalPathToExif = false;
    bool ImportAsShortcutFile = false;
    bool UseJapanese = true;
    bool ShowFolderPath = true;
    bool OutputNavigationLog = false;
    bool DrawWhileLoading = true;
    int TimingOfPopup = 3;           // seconds
    int TimingOfChangeImage = 50;    // milliseconds
    int TimingOfChangeBgImage = 15;  // heartbeat ticks
    int MinutesToSleep = 5;
    bool UseEstimation = true;
    SharedFlag SoundMode = 1;
    SharedFlag GoodMode = 0;
    SharedFlag PublicMode = 0;
    SharedFlag CalendarMode = 1;
    bool UseExifThumbnail = false;
    SharedInt ThumbnailMaxSize = 240;  // pixels, the longer side
    bool DayViewSortByTime = true;
    int DayStartTime = 12;  // hour
    int DayNumberOfLine = 4;
    int DayDuration = 4;  // hours a line
    bool RenameFileWhenMove = false;
    bool RenameFileWhenCopy = false;       // stored only
    bool StopUpdateWhenWindowHide = true;  // stored only
    bool SkipSmallImage = true;
    int SizeOfSmallImage = 80;  // pixels
    bool LoadIndexInitially = false;
    int NumberOfLoadIndex = 6;

    // ---- the view of the start and of the end (see state/view_settings.h); in between View() has it
    int ViewType = static_cast<int>(Level::Month);
    int TargetYear = 0, TargetMonth = 0, TargetDay = 0;
    bool AllViewMode = false;

    // ---- [Text]
    std::string DayFontFace, ButtonFontFace, MiniFontFace, DayFontFaceForYearly;
    int DayFontHeight = 20, ButtonFontHeight = 24, MiniFontHeight = 12, DayFontHeightForYearly = 10;
    std::array<TextColors, 5> TextStyles{{{{255, 238, 255}, {50, 150, 150}, {0, 0, 0}},
                                          {{238, 238, 255}, {50, 150, 150}, {0, 0, 0}},
                                          {{255, 238, 238}, {50, 150, 150}, {0, 0, 0}},
                                          {{238, 255, 255}, {150, 50, 150}, {0, 0, 0}},
                                          {{255, 255, 238}, {255, 255, 100}, {0, 0, 0}}}};  // by TextKind

    // ---- [Button]
    bool ShowButtonPrev2 = true, ShowButtonPrev = true, ShowButtonAuto = true, ShowButtonNext = true,
         ShowButtonNext2 = true, ShowButtonStop = true, ShowButtonParapara = true, ShowButtonSound = false,
         ShowButtonSlideShow = true, ShowButtonFilmWindow = false, ShowButtonFilter = true,
         ShowButtonImport = true, ShowButtonGoogleCalendar = false, ShowButtonAmazon = false,
         ShowButtonTwitter = false, ShowButtonSearch = true, ShowButtonIndexing = false,
         ShowButtonHelp = true;

    // ---- [AutoNavigate]
    SharedFlag AutoNavigate = 0;
    SharedFlag SlideShowAutoNavigate = 0;
    int TimingOfAutoNavigate = 40;  // heartbeat ticks

    // ---- [Scrap]
    bool ConfirmScrapText = true;
    SharedFlag MonitorClipboard = 0;
    int DayEndTimeForScrap = 24;  // hour; see the repairs in store/settings.h
    int QualityOfJpeg = 100;

    // ---- [Application]
    std::string OrbinWrite, TextEditor, PathOfOrbinGet, PathOfOrbinLib, PathOfJpegTran;

    // ---- [SlideShow]
    std::string BackgroundImageForSlideShow;
    Color SlideShowBackColor{255, 255, 255}, SlideShowFontColor{0, 0, 0};
    std::string SlideShowFontFace;
    int SlideShowFontHeight = 16;
    Color SlideShowMessageBackColor{50, 200, 50}, SlideShowMessageFontColor{255, 255, 255};
    std::string MessageFontFace;
    int MessageFontHeight = 16;
    int HeightOfSlideShow = 75, WidthOfSlideShow = 75;     // percent
    int TimingOfChangeSlide = 2, TimingOfCloseEditor = 4;  // seconds
    bool SlideShowRandom = false, SlideShowTransparent = false, DoSortForSlideShow = false;

    // ---- [NeighborWindow]
    std::string BackgroundImageForNeighbor;
    Color NeighborWindowBackColor{255, 255, 255}, NeighborWindowFontColor{0, 0, 0};
    std::string NeighborWindowFontFace;
    int NeighborWindowFontHeight = 0;
    int MaxHeightOfNeighborWindow = 400, MaxWidthOfNeighborWindow = 0;

    // ---- [Other]
    std::string GoogleCalendarPrivateURL;

    // ---- read, never written
    std::string ShellExecute, TwitterURL;
    std::string MonthFontFaceForYearly, SlideShowTitleFontFace, FilmWindowFontFace;
    int MonthFontHeightForYearly = 24, SlideShowTitleFontHeight = 32, FilmWindowFontHeight = 0;
    Color FilmWindowBackColor{0, 0, 0}, FilmWindowFontColor{255, 255, 255};
    bool NewsMode = false, GradualRendering = false, LogView = false, OutputToLogFile = false,
         UseSentimentMining = false;

    // ---- paths, set once at start
    std::string ProgramFolder;  // the home: settings, key files, Temp
    std::string InstallFolder;  // where Res and the default backgrounds were installed
    std::string SettingsPath, ExtensionListPath, KeyConfigPath, KeyConfigSlideShowPath, KeyConfigEditorPath;
    std::string TempFolder, LogDataPath;
    std::string DataDirectoryText, OtherDirectoryText;  // the folders that the two index keepers work from
};

}  // namespace kalmora
