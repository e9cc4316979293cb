#include "views/load/arrivals.h"

#include <memory>
#include <mutex>
#include <utility>

#include "media/photo.h"
#include "state/app_state.h"
#include "store/extension_table.h"
#include "store/file_helpers.h"
#include "views/model/calendar_store.h"
#include "views/paint/paint_on_window.h"

namespace kalmora {

namespace {

void AddToCell(CalendarStore& calendar, const std::string& path, ObjectKind kind, const CalendarDate& day) {
    YearView& slot = calendar.SlotOf(day.year);
    {
        std::lock_guard lock(slot.mutex);
        MonthView& month = calendar.MonthOf(day.year, day.month);
        DayCell& cell = month.days[static_cast<std::size_t>(day.day - 1)];
        // A day that is not loaded yet will find the file in its folder.
        if (slot.year != day.year || !cell.active || cell.month != day.month) return;
        cell.objects.push_back({path, kind});
    }
    calendar.cellRedraws.Request(day);
}

}  // namespace

bool AddToView(CalendarStore& calendar, const std::string& path, const CalendarDate& day) {
    const ViewState view = View();
    if (view.searchResult || day.month < 1 || day.day < 1 || day.day > DaysInMonth(day.year, day.month) ||
        !view.period.Contains(day))
        return false;
    const ObjectKind kind = ClassifyFile(path);
    if (kind == ObjectKind::Image && GetFileName(path).starts_with("back")) {
        calendar.backgrounds.AddImage(path);
        return true;
    }
    if (kind != ObjectKind::Image && kind != ObjectKind::Text && kind != ObjectKind::Movie) return false;
    calendar.partners.slideShow.AddSlide(path);
    if (Viewer* const viewer = calendar.ViewOf(view).CurrentViewer())
        viewer->objects.Add(std::make_unique<CPhoto>(path));
    else
        AddToCell(calendar, path, kind, day);
    return true;
}

}  // namespace kalmora
