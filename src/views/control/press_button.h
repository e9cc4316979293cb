// What a press on a button of the bar does. GUI thread.
#pragma once

#include "base/geometry.h"

namespace kalmora {

struct CalendarStore;

enum class ButtonPress { None, Done };
// Runs the action of the visible button under the point.
ButtonPress PressButton(CalendarStore& calendar, Point point);
// The same of the button that has the keyboard's focus; false when no visible one has it.
bool PressFocusedButton(CalendarStore& calendar);

}  // namespace kalmora
