// What a day cell of a grid shows, and which of its entries comes next. Any thread; the disk is never read
// with a slot's mutex held.
#pragma once

#include <vector>

#include "views/model/year_view.h"

namespace kalmora {

struct CalendarStore;

// True when the entry may be shown now: the file exists, and the GoodMode and PublicMode filters let it pass.
bool IsEntryShown(const DayEntry& entry);

// A copy of what a cell shows; not active when the slot holds another year or the day was not loaded.
CellContent ContentOfCell(CalendarStore& calendar, int year, int month, int day);
// The next entry that can be shown; false when the cell is not loaded or is empty.
bool AdvanceCellPhoto(CalendarStore& calendar, int year, int month, int day);
// Drops entries whose file has gone until one exists; of a single entry nothing is dropped. `content` is what
// the cell shows, and then what is left. False when nothing can be shown.
bool DropVanishedEntries(CalendarStore& calendar, int year, int month, int day, CellContent* content);

// The day that represents a month drawn as one picture: the first with objects from the month's DayCursor on,
// then from the first of the month; 0 when there is none.
int RepresentativeDay(CalendarStore& calendar, int year, int month);
// All days with objects in that order.
std::vector<int> DaysWithObjects(CalendarStore& calendar, int year, int month);
// From now on the day represents the month, because those before it have nothing that can be drawn.
void RepresentMonthBy(CalendarStore& calendar, int year, int month, int day);

}  // namespace kalmora
