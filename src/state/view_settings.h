// What the settings file says of the view: taken over at start, filled before saving.
#pragma once

namespace kalmora {

// The view that the settings name, without any search. A ViewType that there is not shows the month. GUI
// thread, before others run.
void TakeViewFromSettings();
// The view in force into the settings. GUI thread.
void PutViewIntoSettings();

}  // namespace kalmora
