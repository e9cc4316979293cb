#include "views/control/calendar_views.h"

#include <memory>

#include "views/control/day_calendar.h"
#include "views/control/month_calendar.h"
#include "views/control/scatter_calendar.h"
#include "views/control/year_calendar.h"

namespace kalmora {

void IntroduceViews(CalendarStore& calendar) {
    calendar.yearView = std::make_unique<YearCalendar>(calendar);
    calendar.monthView = std::make_unique<MonthCalendar>(calendar);
    calendar.dayView = std::make_unique<DayCalendar>(calendar);
    calendar.scatterView = std::make_unique<ScatterCalendar>(calendar);
}

}  // namespace kalmora
