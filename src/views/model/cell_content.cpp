#include "views/model/cell_content.h"

#include "base/dates.h"
#include "media/photo_file.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

DayCell& CellOf(CalendarStore& calendar, int year, int month, int day) {
    return calendar.MonthOf(year, month).days[static_cast<std::size_t>(day - 1)];
}

}  // namespace

bool IsEntryShown(const DayEntry& entry) {
    if (!files::Exists(entry.path)) return false;
    if (!State().settings.GoodMode && !State().settings.PublicMode) return true;
    return PhotoFile(entry.path).IsShownUnderEstimate();
}

CellContent ContentOfCell(CalendarStore& calendar, int year, int month, int day) {
    YearView& slot = calendar.SlotOf(year);
    std::lock_guard lock(slot.mutex);
    CellContent content;
    if (slot.year != year) return content;
    const DayCell& cell = CellOf(calendar, year, month, day);
    content.active = cell.active;
    content.count = cell.objects.size();
    if (cell.PhotoIndex < cell.objects.size()) content.entry = cell.objects[cell.PhotoIndex];
    return content;
}

bool AdvanceCellPhoto(CalendarStore& calendar, int year, int month, int day) {
    YearView& slot = calendar.SlotOf(year);
    std::vector<DayEntry> objects;
    std::size_t index;
    {
        std::lock_guard lock(slot.mutex);
        const DayCell& cell = CellOf(calendar, year, month, day);
        if (slot.year != year || !cell.active || cell.objects.empty()) return false;
        objects = cell.objects;
        index = cell.PhotoIndex;
    }
    for (std::size_t step = 1; step <= objects.size(); ++step) {
        const std::size_t next = (index + step) % objects.size();
        if (!IsEntryShown(objects[next])) continue;
        std::lock_guard lock(slot.mutex);
        DayCell& cell = CellOf(calendar, year, month, day);
        if (slot.year != year || next >= cell.objects.size()) return false;
        cell.PhotoIndex = next;
        return true;
    }
    return true;
}

bool DropVanishedEntries(CalendarStore& calendar, int year, int month, int day, CellContent* content) {
    YearView& slot = calendar.SlotOf(year);
    while (content->count > 0 && !files::Exists(content->entry.path)) {
        if (content->count == 1) return false;
        {
            std::lock_guard lock(slot.mutex);
            DayCell& cell = CellOf(calendar, year, month, day);
            if (slot.year != year || cell.PhotoIndex >= cell.objects.size()) return false;
            if (cell.objects[cell.PhotoIndex].path == content->entry.path)
                cell.objects.erase(cell.objects.begin() + static_cast<std::ptrdiff_t>(cell.PhotoIndex));
            if (cell.PhotoIndex >= cell.objects.size()) cell.PhotoIndex = 0;
        }
        *content = ContentOfCell(calendar, year, month, day);
    }
    return content->count > 0;
}

int RepresentativeDay(CalendarStore& calendar, int year, int month) {
    const std::vector<int> days = DaysWithObjects(calendar, year, month);
    return days.empty() ? 0 : days.front();
}

std::vector<int> DaysWithObjects(CalendarStore& calendar, int year, int month) {
    std::vector<int> found;
    YearView& slot = calendar.SlotOf(year);
    std::lock_guard lock(slot.mutex);
    if (slot.year != year) return found;
    const MonthView& view = calendar.MonthOf(year, month);
    const int days = DaysInMonth(year, month);
    for (int step = 0; step < days; ++step) {
        const int day = (view.DayCursor - 1 + step) % days + 1;
        if (!view.days[static_cast<std::size_t>(day - 1)].objects.empty()) found.push_back(day);
    }
    return found;
}

void RepresentMonthBy(CalendarStore& calendar, int year, int month, int day) {
    YearView& slot = calendar.SlotOf(year);
    std::lock_guard lock(slot.mutex);
    if (slot.year == year) calendar.MonthOf(year, month).DayCursor = day;
}

}  // namespace kalmora
