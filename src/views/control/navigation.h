// Which period is in view, and every way to another one.
//
// GUI thread, but RandomNavigate, which the heartbeat's thread calls. A command that comes while another
// change is still being made is dropped, silently.
#pragma once

#include "views/model/calendar_view.h"

namespace kalmora {

struct CalendarStore;

// ---- steps, commands 1010 to 1013, with their guard; the reload comes when no more input waits, so that
// keys that come faster than views can be loaded leave no steps behind
void StepPeriod(CalendarStore& calendar, Step step);

// ---- the date alone, no guard, no reload
void StepYears(int years);
void PrevMonth(CalendarStore& calendar);
void NextMonth(CalendarStore& calendar);
void PrevDay(CalendarStore& calendar);
void NextDay(CalendarStore& calendar);

// ---- levels
void ToYearly(CalendarStore& calendar);                    // 1017: from a month only
void OneLevelUp(CalendarStore& calendar);                  // 1018
void OpenTodayLevel(CalendarStore& calendar);              // 1019: one level down, guided by today's date
void ChangeToMonthly(CalendarStore& calendar, int month);  // below 1: a month drawn at random
void ChangeToDaily(CalendarStore& calendar, int day);      // below 1: the day under the cursor

// month 0 shows the year, day below 1 the month.
void JumpTo(CalendarStore& calendar, int year, int month, int day);
void JumpToToday(CalendarStore& calendar);

// Moves on to a random period of the same level when the present one was shown long enough. True when the
// heartbeat has nothing more to do.
bool RandomNavigate(CalendarStore& calendar);

// ---- modes, commands 1022 to 1025 and 1027
void ToggleAllView(CalendarStore& calendar);
void TogglePublicMode(CalendarStore& calendar);
void ToggleGoodMode(CalendarStore& calendar);
void ToggleAutoNavigate();
void TogglePaused();

}  // namespace kalmora
