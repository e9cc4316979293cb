#include "input/key_commands.h"

namespace kalmora {

namespace {

constexpr KeyCommand kMainCommands[] = {
    {1021, "Reload", "F5"},
    {1014, "Go Today", ""},
    {1013, "Previous Year/Month", "C+LEFT"},
    {1012, "Previous Month/Day", "LEFT"},
    {1011, "Next Month/Day", "RIGHT"},
    {1010, "Next Year/Month", "C+RIGHT"},
    {1018, "Change to Monthly Mode", "UP"},
    {1019, "Change to Daily Mode", "DOWN"},
    {1023, "Change Auto Navigate", ""},
    {1022, "Change All View Mode", ""},
    {1024, "Change Private Mode", ""},
    {1025, "Change Good Mode", ""},
    {1031, "Previous Music", ""},
    {1030, "Next Music", ""},
    {1039, "Add Text", ""},
    {1200, "Import Files", "C+I"},
    {1120, "Increment Thumbnail Size", ""},
    {1121, "Decrement Thumbnail Size", ""},
    {1016, "Jump To", ""},
    {1041, "Search", "F3"},
    {1043, "Update Index", "F4"},
    {1046, "Get Amazon", "C+A"},
    {1047, "Get Rakuten", "C+R"},
    {2000, "Get Screenshot", "C+F1"},
    {2001, "Get Screenshot of Active Window", "C+F2"},
    {2002, "Scrap selected area as text type", "C+S+T", DefaultKey::WhenSlotIsFree},
    {2005, "Scrap text from clipboard", "C+A+T", DefaultKey::WhenSlotIsFree},
    {1051, "Show Slide Show", "C+S"},
    {1001, "Show Window", ""},
    {1020, "Window Hide", "F11"},
    {1002, "Window Close", "A+F4"},
};

constexpr KeyCommand kSlideShowCommands[] = {
    {1052, "Hide Slide Show", "ESCAPE"},
    {1053, "Slide Mode (Normal)", "C+RIGHT"},
    {1054, "Slide Mode (Reverse)", "C+LEFT"},
    {1059, "Paste Clipboard Text to Current Image", "C+V"},
    {1063, "Paste Clipboard Text to Current Image Without Edit", "A+V"},
    {1055, "Go Next Slide", "RIGHT"},
    {1056, "Go Previous Slide", "LEFT"},
    {1057, "Switch Auto Mode", ""},
    {1060, "Rotate(90)", "DOWN"},
    {1061, "Rotate(180)", ""},
    {1062, "Rotate(270)", "UP"},
    {1058, "Delete This Slide", "C+D"},
    {1104, "Estimate as Private", "A+P"},
    {1101, "Estimate as Public", "A+U"},
    {1102, "Estimate as Good", "A+G"},
    {1105, "Estimate as Bad", "A+B"},
    {1100, "Estimate as Like", "A+L"},
    {1103, "Estimate as Dislike", "A+D"},
    {1106, "Clear Estimate", "C+A+D"},
};

constexpr KeyCommand kEditorCommands[] = {
    {40271, "Line Down", "DOWN"},
    {40272, "Line Up", "UP"},
    {40274, "Go Left Char", "LEFT"},
    {40273, "Go Right Char", "RIGHT"},
    {40275, "Go Line Start", ""},
    {40276, "Go Line End", ""},
    {40282, "Copy", "C+C"},
    {40284, "Cut", "C+X"},
    {40279, "Paste", "C+V"},
    {40280, "Page Down", ""},
    {40281, "Page Up", ""},
    {40277, "Delete Left Char", ""},
    {40278, "Delete Right Char", ""},
    {40291, "Select All", "C+A"},
    {40285, "Undo", ""},
    {40286, "Redo", ""},
    {40290, "Close", "ESCAPE"},
};

}  // namespace

std::span<const KeyCommand> KeyCommands(KeyContext context) {
    switch (context) {
        case KeyContext::Main:
            return kMainCommands;
        case KeyContext::SlideShow:
            return kSlideShowCommands;
        case KeyContext::Editor:
            return kEditorCommands;
    }
    return {};
}

}  // namespace kalmora
