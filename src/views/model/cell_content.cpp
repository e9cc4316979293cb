#include "views/model/cell_content.h"

#include "base/dates.h"
#include "media/photo_file.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

DayCell& CellOf(int year, int month, int day) {
    return Calendar().MonthOf(year, month).days[static_cast<std::size_t>(day - 1)];
}

}  // namespace

bool IsEntryShown(const DayEntry& entry) {
    if (!files::Exists(entry.path)) return false;
    if (!State().settings.GoodMode && !State().settings.PublicMode) return true;
    return PhotoFile(entry.path).IsShownUnderEstimate();
}

CellContent ContentOfCell(int year, int month, int day) {
    YearView& slot = Calendar().SlotOf(year);
    std::lock_guard lock(slot.mutex);
    CellContent content;
    if (slot.year != year) return content;
    const DayCell& cell = CellOf(year, month, day);
    content.active = cell.active;
    content.count = cell.objects.size();
    if (cell.PhotoIndex < cell.objects.size()) content.entry = cell.objects[cell.PhotoIndex];
    return content;
}

bool AdvanceCellPhoto(int year, int month, int day) {
    YearView& slot = Calendar().SlotOf(year);
    std::vector<DayEntry> objects;
    std::size_t index;
    {
        std::lock_guard lock(slot.mutex);
        const DayCell& cell = CellOf(year, month, day);
        if (slot.year != year || !cell.active || cell.objects.empty()) return false;
        objects = cell.objects;
        index = cell.PhotoIndex;
    }
    for (std::size_t step = 1; step <= objects.size(); ++step) {
        const std::size_t next = (index + step) % objects.size();
        if (!IsEntryShown(objects[next])) continue;
        std::lock_guard lock(slot.mutex);
        DayCell& cell = CellOf(year, month, day);
        if (slot.year != year || next >= cell.objects.size()) return false;
        cell.PhotoIndex = next;
        return true;
    }
    return true;
}

bool DropVanishedEntries(int year, int month, int day, CellContent* content) {
    YearView& slot = Calendar().SlotOf(year);
    while (content->count > 0 && !files::Exists(content->entry.path)) {
        if (content->count == 1) return false;
        {
            std::lock_guard lock(slot.mutex);
            DayCell& cell = CellOf(year, month, day);
            if (slot.year != year || cell.PhotoIndex >= cell.objects.size()) return false;
            if (cell.objects[cell.PhotoIndex].path == content->entry.path)
                cell.objects.erase(cell.objects.begin() + static_cast<std::ptrdiff_t>(cell.PhotoIndex));
            if (cell.PhotoIndex >= cell.objects.size()) cell.PhotoIndex = 0;
        }
        *content = ContentOfCell(year, month, day);
    }
    return content->count > 0;
}

int RepresentativeDay(int year, int month) {
    const std::vector<int> days = DaysWithObjects(year, month);
    return days.empty() ? 0 : days.front();
}

std::vector<int> DaysWithObjects(int year, int month) {
    std::vector<int> found;
    YearView& slot = Calendar().SlotOf(year);
    std::lock_guard lock(slot.mutex);
    if (slot.year != year) return found;
    const MonthView& view = Calendar().MonthOf(year, month);
    const int days = DaysInMonth(year, month);
    for (int step = 0; step < days; ++step) {
        const int day = (view.DayCursor - 1 + step) % days + 1;
        if (!view.days[static_cast<std::size_t>(day - 1)].objects.empty()) found.push_back(day);
    }
    return found;
}

void RepresentMonthBy(int year, int month, int day) {
    YearView& slot = Calendar().SlotOf(year);
    std::lock_guard lock(slot.mutex);
    if (slot.year == year) Calendar().MonthOf(year, month).DayCursor = day;
}

}  // namespace kalmora
