#include "platform/qt/key_codes.h"

#include <QKeyEvent>

#include "platform/keys.h"

namespace kalmora::qt {

namespace {

struct NamedKey {
    int toolkit;
    int code;
};

constexpr NamedKey kNamedKeys[] = {
    {Qt::Key_Space, keys::kSpace},   {Qt::Key_Up, keys::kUp},
    {Qt::Key_Down, keys::kDown},     {Qt::Key_Left, keys::kLeft},
    {Qt::Key_Right, keys::kRight},   {Qt::Key_Pause, keys::kPause},
    {Qt::Key_Escape, keys::kEscape}, {Qt::Key_Home, keys::kHome},
    {Qt::Key_End, keys::kEnd},       {Qt::Key_Return, keys::kEnter},
    {Qt::Key_Enter, keys::kEnter},   {Qt::Key_Tab, keys::kTab},
    {Qt::Key_Backtab, keys::kTab},   {Qt::Key_Backspace, keys::kBackspace},
    {Qt::Key_Delete, keys::kDelete}, {Qt::Key_Insert, keys::kInsert},
    {Qt::Key_PageUp, keys::kPageUp}, {Qt::Key_PageDown, keys::kPageDown},
};

// The X server's numbers of the keys where letters and digits are engraved on most keyboards. With Shift the
// toolkit names what a digit key types ("!"), and on a Greek keyboard a letter key types no Latin letter: the
// place of the key then says which one is meant.
struct KeyRow {
    unsigned first;
    const char* engraved;
};
constexpr KeyRow kRows[] = {{10, "1234567890"}, {24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};

int CodeByPlace(unsigned scanCode) {
    for (const KeyRow& row : kRows)
        for (unsigned i = 0; row.engraved[i] != '\0'; ++i)
            if (scanCode == row.first + i) return row.engraved[i];
    return keys::kNone;
}

}  // namespace

unsigned ScanCodeOf(int code) {
    for (const KeyRow& row : kRows)
        for (unsigned i = 0; row.engraved[i] != '\0'; ++i)
            if (row.engraved[i] == code) return row.first + i;
    return 0;
}

int KeyCodeOf(const QKeyEvent& press) {
    const int key = press.key();
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return 'A' + (key - Qt::Key_A);
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return '0' + (key - Qt::Key_0);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return keys::kF1 + (key - Qt::Key_F1);
    for (const NamedKey& named : kNamedKeys)
        if (named.toolkit == key) return named.code;
    return CodeByPlace(press.nativeScanCode());
}

}  // namespace kalmora::qt
