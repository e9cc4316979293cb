// What changes on the screen at a heartbeat. On the heartbeat's thread; the caller has made sure that neither
// the loader nor the paint run is going.
#pragma once

namespace kalmora {

struct CalendarStore;

// ticks: TicksInView as counted up for this beat.
void HeartbeatRedraw(CalendarStore& calendar, int ticks);
// True when the period in view is loaded or being loaded, so that there is something to redraw.
bool IsViewReady(CalendarStore& calendar);

// What a view does at a beat: a third of a year's months, one object of the day (of each of its lines), one
// object of the scatter.
void RedrawYear(CalendarStore& calendar, int year);
void RedrawDay(CalendarStore& calendar);
void RedrawScatter(CalendarStore& calendar);

}  // namespace kalmora
