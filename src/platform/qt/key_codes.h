// Key presses of the toolkit as the codes of keys.h.
#pragma once

class QKeyEvent;

namespace kalmora::qt {

// keys::kNone for a key that has no code.
int KeyCodeOf(const QKeyEvent& press);

}  // namespace kalmora::qt
