// Ends whatever fills or draws the view.
#pragma once

namespace kalmora {

struct CalendarStore;

// Raises the stop flag of what the current view holds. Each change of the date begins with it, once it is
// certain that the view changes: the flag is state and no request, and loads, walks and beats of what it
// marks stop until the next load or walk lowers it. Any thread.
void StopCurrentLoad(CalendarStore& calendar);

}  // namespace kalmora
