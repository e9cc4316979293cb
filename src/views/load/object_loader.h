// UpdateObjects: from the period in view to loaded objects, by a worker; whatever was being loaded before is
// stopped first.
#pragma once

namespace kalmora {

struct CalendarStore;

// Loads and paints the period in view again. GUI thread, or the heartbeat's thread. Waits at most 200 ms for
// the running worker to leave; behind one that hangs in a file call the new one waits itself, at most 2.2 s.
// Refused (nothing happens) when another one waits there already.
void UpdateObjects(CalendarStore& calendar);

// The same when the input that has queued up is dealt with: any number of changes until then are followed by
// one load, of the last period. To be called before the change. GUI thread; returns at once.
void UpdateObjectsSoon(CalendarStore& calendar);

// Command 1021 in a grid or a day: a worker reads the period again. GUI thread.
void ReloadView(CalendarStore& calendar);

}  // namespace kalmora
