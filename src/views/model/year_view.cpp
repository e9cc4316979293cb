#include "views/model/year_view.h"

namespace kalmora {

void DayCell::Clear() {
    folder.clear();
    active = false;
    objects.clear();
    PhotoIndex = 0;
    stop = false;
}

void MonthView::Clear() {
    active = stop = ready = loading = false;
    PhotoCursor = 0;
    DayCursor = 1;
    Phase = 0;
    for (DayCell& day : days) day.Clear();
}

int MonthView::ObjectCount() const {
    std::size_t count = 0;
    for (const DayCell& day : days) count += day.objects.size();
    return static_cast<int>(count);
}

void MonthView::RaiseStop() {
    stop = true;
    for (DayCell& day : days) day.stop = true;
}

void YearView::Clear() {
    std::lock_guard lock(mutex);
    ready = loading = stop = active = false;
    for (MonthView& month : months) month.Clear();
}

void YearView::RaiseStop() {
    stop = true;
    for (MonthView& month : months) month.RaiseStop();
}

}  // namespace kalmora
