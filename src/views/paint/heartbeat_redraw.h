// What changes on the screen at a heartbeat. On the heartbeat's thread; the caller has made sure that neither
// the loader nor the paint run is going.
#pragma once

namespace kalmora {

// ticks: TicksInView as counted up for this beat.
void HeartbeatRedraw(int ticks);
// True when the period in view is loaded or being loaded, so that there is something to redraw.
bool IsViewReady();

// What a view does at a beat: a third of a year's months, one object of the day (of each of its lines), one
// object of the scatter.
void RedrawYear(int year);
void RedrawDay();
void RedrawScatter();

}  // namespace kalmora
