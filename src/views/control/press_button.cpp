#include "views/control/press_button.h"

#include "index/index_manager.h"
#include "platform/shell.h"
#include "state/app_state.h"
#include "store/resources.h"
#include "views/bar/button_bar.h"
#include "views/control/search_mode.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr char kHelpFile[] = "users-guide.md";

void FlipIndexing() {
    AppState& state = State();
    state.run.IndexingEnabled = state.run.IndexingEnabled ? 0 : 1;
    if (!state.run.IndexingEnabled) StopIndexing("stop by user");
    SetButtonStates();
    DrawButtonsOnWindow();
}

void Press(CalendarStore& calendar, const ButtonInfo& button) {
    switch (button.action) {
        case ButtonAction::Command:
            return calendar.partners.commands.RunCommand(button.command);
        case ButtonAction::EndSearch:
            return EndSearch(calendar);
        case ButtonAction::Help:
            shell::Open(FindResource(kHelpFile));
            return;
        case ButtonAction::Filter:
            return calendar.partners.filter.Show();
        case ButtonAction::Indexing:
            return FlipIndexing();
        case ButtonAction::Nothing:
            return;
    }
}

}  // namespace

ButtonPress PressButton(CalendarStore& calendar, Point point) {
    ButtonInfo button;
    if (!FindButton(point, &button)) return ButtonPress::None;
    Press(calendar, button);
    return ButtonPress::Done;
}

bool PressFocusedButton(CalendarStore& calendar) {
    ButtonInfo button;
    if (!FocusedButton(&button)) return false;
    Press(calendar, button);
    return true;
}

}  // namespace kalmora
