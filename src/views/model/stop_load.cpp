#include "views/model/stop_load.h"

#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

void StopCurrentLoad() {
    const ViewState view = View();
    const CalendarDate& date = view.period.date;
    CalendarStore& calendar = Calendar();
    if (view.scatter)
        calendar.CurrentAllViewer().stop = true;
    else if (view.period.level == Level::Day)
        calendar.CurrentDayViewer().stop = true;
    else if (view.period.level == Level::Month)
        calendar.MonthOf(date.year, date.month).RaiseStop();
    else
        calendar.SlotOf(date.year).RaiseStop();
}

}  // namespace kalmora
