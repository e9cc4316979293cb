// Key presses of the toolkit as the codes of keys.h.
#pragma once

class QKeyEvent;

namespace kalmora::qt {

// keys::kNone for a key that has no code.
int KeyCodeOf(const QKeyEvent& press);

// The X server's number of the key on which a letter or digit is engraved on most keyboards; 0 for other
// codes.
unsigned ScanCodeOf(int code);

}  // namespace kalmora::qt
