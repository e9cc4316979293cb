#include "views/control/calendar_views.h"

#include "views/control/day_calendar.h"
#include "views/control/month_calendar.h"
#include "views/control/scatter_calendar.h"
#include "views/control/year_calendar.h"

namespace kalmora {

void IntroduceViews(CalendarStore& calendar) {
    static CalendarView* const year = new YearCalendar;
    static CalendarView* const month = new MonthCalendar;
    static CalendarView* const day = new DayCalendar;
    static CalendarView* const scatter = new ScatterCalendar;
    calendar.yearView = year;
    calendar.monthView = month;
    calendar.dayView = day;
    calendar.scatterView = scatter;
}

}  // namespace kalmora
