#include "state/view_settings.h"

#include "state/app_state.h"

namespace kalmora {

void TakeViewFromSettings() {
    const Settings& settings = State().settings;
    const auto level = static_cast<Level>(settings.ViewType);
    const bool known = level == Level::Year || level == Level::Month || level == Level::Day;
    ChangeView([&](ViewState& view) {
        view = {};
        view.period = {known ? level : Level::Month,
                       {settings.TargetYear, settings.TargetMonth, settings.TargetDay}};
        view.scatter = settings.AllViewMode;
    });
}

void PutViewIntoSettings() {
    Settings& settings = State().settings;
    const ViewState view = View();
    settings.ViewType = static_cast<int>(view.period.level);
    settings.TargetYear = view.period.date.year;
    settings.TargetMonth = view.period.date.month;
    settings.TargetDay = view.period.date.day;
    settings.AllViewMode = view.scatter;
}

}  // namespace kalmora
