// The commands: the number of each, and for those that a key can run the name in the key files and the key
// that they have without one. The numbers are fixed: key files and hot keys of other versions know them.
#pragma once

#include <array>
#include <span>

namespace kalmora {

enum Command : int {
    kCommandNone = 0,

    // ---- main window and calendar
    kCommandShow = 1001,
    kCommandExit = 1002,
    kCommandOuterNext = 1010,
    kCommandNext = 1011,
    kCommandPrevious = 1012,
    kCommandOuterPrevious = 1013,
    kCommandToday = 1014,
    kCommandRandom = 1015,
    kCommandJump = 1016,
    kCommandToYearly = 1017,
    kCommandLevelUp = 1018,
    kCommandOpenTodayLevel = 1019,
    kCommandHide = 1020,
    kCommandReload = 1021,
    kCommandAllView = 1022,
    kCommandAutoNavigate = 1023,
    kCommandPublicMode = 1024,
    kCommandGoodMode = 1025,
    kCommandSound = 1026,
    kCommandPause = 1027,
    kCommandMusicForward = 1030,
    kCommandMusicBack = 1031,
    kCommandAddText = 1039,  // can be bound and does nothing
    kCommandSearch = 1041,
    kCommandUpdateMonth = 1043,
    kCommandAmazon = 1046,
    kCommandTravel = 1047,
    kCommandGoogleCalendar = 1048,
    kCommandTwitter = 1049,
    kCommandOpenFolder = 1050,

    // ---- slide show and neighbor window
    kCommandOpenSlideShow = 1051,
    kCommandCloseSlideShow = 1052,
    kCommandSlidesForward = 1053,
    kCommandSlidesBackward = 1054,
    kCommandNextSlide = 1055,
    kCommandPreviousSlide = 1056,
    kCommandFlipSlideShowView = 1057,
    kCommandDeleteSlide = 1058,
    kCommandPasteAndEdit = 1059,
    kCommandRotate90 = 1060,
    kCommandRotate180 = 1061,
    kCommandRotate270 = 1062,
    kCommandPasteIntoSlide = 1063,
    kCommandRateLike = 1100,
    kCommandRatePublic = 1101,
    kCommandRateGood = 1102,
    kCommandRateDislike = 1103,
    kCommandRatePrivate = 1104,
    kCommandRateBad = 1105,
    kCommandClearRating = 1106,

    kCommandThumbnailLarger = 1120,
    kCommandThumbnailSmaller = 1121,
    kCommandImport = 1200,

    // ---- what is taken from other programs
    kCommandScreenshot = 2000,
    kCommandScreenshotOfWindow = 2001,
    kCommandScrapSelection = 2002,
    kCommandHotKey2003 = 2003,  // this one and the like are hot keys on no list: nothing comes of them
    kCommandHotKey2004 = 2004,
    kCommandScrapClipboard = 2005,
    kCommandHotKey2006 = 2006,
    kCommandHotKey2007 = 2007,

    // ---- the in-place editor
    kCommandLineDown = 40271,
    kCommandLineUp = 40272,
    kCommandRight = 40273,
    kCommandLeft = 40274,
    kCommandLineStart = 40275,
    kCommandLineEnd = 40276,
    kCommandDeleteLeft = 40277,
    kCommandDeleteRight = 40278,
    kCommandPaste = 40279,
    kCommandPageDown = 40280,
    kCommandPageUp = 40281,
    kCommandCopy = 40282,
    kCommandCutLine = 40283,  // on no list, so that no key can be bound to it
    kCommandCut = 40284,
    kCommandUndo = 40285,
    kCommandRedo = 40286,
    kCommandCloseEditor = 40290,
    kCommandSelectAll = 40291,
};

// Which of the three key lists a command is on; the numbers are those of the start and stop sequences.
enum class KeyContext { Main = 0, SlideShow = 1, Editor = 2 };

inline constexpr int kKeyContextCount = 3;

// When a command that its file does not name takes its default key.
enum class DefaultKey { Always, WhenSlotIsFree };

struct KeyCommand {
    KeyContext context;
    Command id;
    const char* name;        // as in the key file; ASCII, no tab
    const char* defaultKey;  // in the spelling of the key file; empty for none
    DefaultKey when = DefaultKey::Always;
};

// List by list, in the order of the list and of its file.
inline constexpr auto kKeyCommands = std::to_array<KeyCommand>({
    {KeyContext::Main, kCommandReload, "Reload", "F5"},
    {KeyContext::Main, kCommandToday, "Go Today", ""},
    {KeyContext::Main, kCommandOuterPrevious, "Previous Year/Month", "C+LEFT"},
    {KeyContext::Main, kCommandPrevious, "Previous Month/Day", "LEFT"},
    {KeyContext::Main, kCommandNext, "Next Month/Day", "RIGHT"},
    {KeyContext::Main, kCommandOuterNext, "Next Year/Month", "C+RIGHT"},
    {KeyContext::Main, kCommandLevelUp, "Change to Monthly Mode", "UP"},
    {KeyContext::Main, kCommandOpenTodayLevel, "Change to Daily Mode", "DOWN"},
    {KeyContext::Main, kCommandAutoNavigate, "Change Auto Navigate", ""},
    {KeyContext::Main, kCommandAllView, "Change All View Mode", ""},
    {KeyContext::Main, kCommandPublicMode, "Change Private Mode", ""},
    {KeyContext::Main, kCommandGoodMode, "Change Good Mode", ""},
    {KeyContext::Main, kCommandMusicBack, "Previous Music", ""},
    {KeyContext::Main, kCommandMusicForward, "Next Music", ""},
    {KeyContext::Main, kCommandAddText, "Add Text", ""},
    {KeyContext::Main, kCommandImport, "Import Files", "C+I"},
    {KeyContext::Main, kCommandThumbnailLarger, "Increment Thumbnail Size", ""},
    {KeyContext::Main, kCommandThumbnailSmaller, "Decrement Thumbnail Size", ""},
    {KeyContext::Main, kCommandJump, "Jump To", ""},
    {KeyContext::Main, kCommandSearch, "Search", "F3"},
    {KeyContext::Main, kCommandUpdateMonth, "Update Index", "F4"},
    {KeyContext::Main, kCommandAmazon, "Get Amazon", "C+A"},
    {KeyContext::Main, kCommandTravel, "Get Rakuten", "C+R"},
    {KeyContext::Main, kCommandScreenshot, "Get Screenshot", "C+F1"},
    {KeyContext::Main, kCommandScreenshotOfWindow, "Get Screenshot of Active Window", "C+F2"},
    {KeyContext::Main, kCommandScrapSelection, "Scrap selected area as text type", "C+S+T",
     DefaultKey::WhenSlotIsFree},
    {KeyContext::Main, kCommandScrapClipboard, "Scrap text from clipboard", "C+A+T",
     DefaultKey::WhenSlotIsFree},
    {KeyContext::Main, kCommandOpenSlideShow, "Show Slide Show", "C+S"},
    {KeyContext::Main, kCommandShow, "Show Window", ""},
    {KeyContext::Main, kCommandHide, "Window Hide", "F11"},
    {KeyContext::Main, kCommandExit, "Window Close", "A+F4"},

    {KeyContext::SlideShow, kCommandCloseSlideShow, "Hide Slide Show", "ESCAPE"},
    {KeyContext::SlideShow, kCommandSlidesForward, "Slide Mode (Normal)", "C+RIGHT"},
    {KeyContext::SlideShow, kCommandSlidesBackward, "Slide Mode (Reverse)", "C+LEFT"},
    {KeyContext::SlideShow, kCommandPasteAndEdit, "Paste Clipboard Text to Current Image", "C+V"},
    {KeyContext::SlideShow, kCommandPasteIntoSlide, "Paste Clipboard Text to Current Image Without Edit",
     "A+V"},
    {KeyContext::SlideShow, kCommandNextSlide, "Go Next Slide", "RIGHT"},
    {KeyContext::SlideShow, kCommandPreviousSlide, "Go Previous Slide", "LEFT"},
    {KeyContext::SlideShow, kCommandFlipSlideShowView, "Switch Auto Mode", ""},
    {KeyContext::SlideShow, kCommandRotate90, "Rotate(90)", "DOWN"},
    {KeyContext::SlideShow, kCommandRotate180, "Rotate(180)", ""},
    {KeyContext::SlideShow, kCommandRotate270, "Rotate(270)", "UP"},
    {KeyContext::SlideShow, kCommandDeleteSlide, "Delete This Slide", "C+D"},
    {KeyContext::SlideShow, kCommandRatePrivate, "Estimate as Private", "A+P"},
    {KeyContext::SlideShow, kCommandRatePublic, "Estimate as Public", "A+U"},
    {KeyContext::SlideShow, kCommandRateGood, "Estimate as Good", "A+G"},
    {KeyContext::SlideShow, kCommandRateBad, "Estimate as Bad", "A+B"},
    {KeyContext::SlideShow, kCommandRateLike, "Estimate as Like", "A+L"},
    {KeyContext::SlideShow, kCommandRateDislike, "Estimate as Dislike", "A+D"},
    {KeyContext::SlideShow, kCommandClearRating, "Clear Estimate", "C+A+D"},

    {KeyContext::Editor, kCommandLineDown, "Line Down", "DOWN"},
    {KeyContext::Editor, kCommandLineUp, "Line Up", "UP"},
    {KeyContext::Editor, kCommandLeft, "Go Left Char", "LEFT"},
    {KeyContext::Editor, kCommandRight, "Go Right Char", "RIGHT"},
    {KeyContext::Editor, kCommandLineStart, "Go Line Start", ""},
    {KeyContext::Editor, kCommandLineEnd, "Go Line End", ""},
    {KeyContext::Editor, kCommandCopy, "Copy", "C+C"},
    {KeyContext::Editor, kCommandCut, "Cut", "C+X"},
    {KeyContext::Editor, kCommandPaste, "Paste", "C+V"},
    {KeyContext::Editor, kCommandPageDown, "Page Down", ""},
    {KeyContext::Editor, kCommandPageUp, "Page Up", ""},
    {KeyContext::Editor, kCommandDeleteLeft, "Delete Left Char", ""},
    {KeyContext::Editor, kCommandDeleteRight, "Delete Right Char", ""},
    {KeyContext::Editor, kCommandSelectAll, "Select All", "C+A"},
    {KeyContext::Editor, kCommandUndo, "Undo", ""},
    {KeyContext::Editor, kCommandRedo, "Redo", ""},
    {KeyContext::Editor, kCommandCloseEditor, "Close", "ESCAPE"},
});

// The rows of one list.
constexpr std::span<const KeyCommand> KeyCommands(KeyContext context) {
    const std::span<const KeyCommand> all(kKeyCommands);
    std::size_t first = 0, end = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].context != context) continue;
        if (end == 0) first = i;
        end = i + 1;
    }
    return all.subspan(first, end - first);
}

// The commands whose key of the main list works whichever program has the focus, in the order in which they
// are given back at the end.
inline constexpr auto kHotKeyCommands = std::to_array<Command>(
    {kCommandShow, kCommandScreenshotOfWindow, kCommandScreenshot, kCommandScrapSelection, kCommandHotKey2003,
     kCommandHotKey2004, kCommandScrapClipboard, kCommandHotKey2006, kCommandHotKey2007});

constexpr bool HasHotKey(int command) {
    for (const Command hotKey : kHotKeyCommands)
        if (hotKey == command) return true;
    return false;
}

// The screenshots and "Show Window": these work whichever of the program's windows is up.
constexpr bool WorksInEveryWindow(int command) {
    return command == kCommandScreenshot || command == kCommandScreenshotOfWindow || command == kCommandShow;
}

}  // namespace kalmora
