// AppState: the one process-wide record of settings and run-time flags. Plain data, no behaviour.
//
// Settings carry the names of their keys in kalmora.ini (store/settings.h reads and writes them). What
// several threads read while one writes is atomic; everything else is written before other threads run.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "base/ticket_lock.h"
#include "base/work_gate.h"

namespace kalmora {

using SharedInt = std::atomic<std::int32_t>;
using SharedFlag = std::atomic<std::uint8_t>;

// The values of ViewType. They are written to the settings file.
enum ViewTypeValue : std::int32_t { kYearly = 1, kMonthly = 2, kDaily = 4 };

// The five kinds of text frame.
enum class TextKind { Schedule = 0, ToDo = 1, Memo = 2, Web = 3, Normal = 4 };

struct TextColors {
    Color back, frame, font;
};

struct WindowRectValue {
    int left = 10, top = 10, right = 960, bottom = 710;
};

// One record for the whole run: the order of the settings file is worth more than its padding.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct AppState {
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
    SharedFlag AllViewMode = 0;
    bool OutputNavigationLog = false;
    SharedInt ViewType = kMonthly;
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
    SharedInt TargetYear = 0, TargetMonth = 0, TargetDay = 0;

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

    // ---- run-time flags; none is saved
    SharedFlag MainWindowVisible = 0;  // the heartbeat does nothing while it is clear
    SharedFlag Paused = 0;             // loaders sleep in 500 ms steps while it is set
    SharedFlag IndexingEnabled = 0;    // the indexing button; 0 at every start
    SharedFlag InitialScanRunning = 1;
    SharedFlag FirstStartPending = 1;
    SharedFlag FirstLoadDone = 0;
    SharedFlag IndexPreloadRunning = 0;
    SharedFlag BackgroundUpdateRunning = 0;
    SharedFlag SlideOpenedByCommand = 0;
    SharedFlag SearchResultMode = 0;
    SharedFlag SearchAllLoaded = 0;
    SharedFlag DateScanRunning = 0;
    SharedFlag ImportRunning = 0;
    SharedInt ImportTotal = 0;       // files that the running or last import found
    SharedInt ImportDone = 0;        // and how many of them it has handled
    SharedFlag ImportCommentOn = 0;  // the import dialog's box for a comment
    std::string ImportComment;       // and its text; GUI thread
    SharedInt TicksInView = 0;
    std::atomic<double> LastActivity = 0;   // uptime in ms at the last input
    std::atomic<double> LastTickClock = 0;  // uptime in ms of the last accepted heartbeat
    int LastCursorX = 0, LastCursorY = 0;   // heartbeat thread only
    SharedFlag HeartbeatBusy = 0;
    SharedInt DayRing = 0, AllRing = 0;  // 0 to 12
    std::string DragPath;                // GUI thread: path of the object under the last press
    Rect DragRect;                       // GUI thread: screen rectangle of a rating drop
    SharedFlag PressActive = 0;
    Point PressPoint;  // GUI thread, client coordinates
    SharedFlag ObjectHit = 0;
    SharedFlag FirstPaintDone = 0;

    // ---- locks of the object lists
    WorkGate ObjectGate;     // who loads or draws the objects
    TicketLock ObjectQueue;  // short critical sections on the lists
    TicketLock LoaderQueue;  // left by the loader thread when it ends
};

// The record. Made on first use, never destroyed: threads may outlive main.
AppState& State();

}  // namespace kalmora
