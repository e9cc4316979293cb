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

void Press(const ButtonInfo& button) {
    switch (button.action) {
        case ButtonAction::Command:
            return Calendar().partners.commands.RunCommand(button.command);
        case ButtonAction::EndSearch:
            return EndSearch();
        case ButtonAction::Help:
            shell::Open(FindResource(kHelpFile));
            return;
        case ButtonAction::Filter:
            return Calendar().partners.filter.Show();
        case ButtonAction::Indexing:
            return FlipIndexing();
        case ButtonAction::Nothing:
            return;
    }
}

}  // namespace

ButtonPress PressButton(Point point) {
    ButtonInfo button;
    if (!FindButton(point, &button)) return ButtonPress::None;
    Press(button);
    return ButtonPress::Done;
}

bool PressFocusedButton() {
    ButtonInfo button;
    if (!FocusedButton(&button)) return false;
    Press(button);
    return true;
}

}  // namespace kalmora
