// PaintBase: the whole picture of the period in view, drawn off the screen and shown at once.
#pragma once

namespace kalmora {

struct CalendarStore;

// Background, grid or hour pictures, and buttons; without the objects of a day or a scatter. Any thread, also
// while objects are being drawn. Of two that run at the same time the one that began later stays on the
// window.
void PaintBase(CalendarStore& calendar);

}  // namespace kalmora
