// Writing into the photos that the views hold: what a view knows of a photo moves with the file.
#pragma once

#include <string>

#include "media/estimation.h"

namespace kalmora {

struct CalendarStore;

// One rating more for a file: by the object that the view in force has of it, or by one made for it.
// False when the file could not be written, and when the view is at work on its objects for longer than a
// second: then nothing has happened. The view is not painted again. Any thread.
bool RateInView(CalendarStore& calendar, const std::string& path, EstimateType type);

// A file has become another, as by a turn: every object that a view has of it reads it again when it is next
// asked. Any thread; waits at most a second for one that is just being drawn.
void ForgetInViews(CalendarStore& calendar, const std::string& path);

}  // namespace kalmora
