// AppState: the one process-wide record, in four parts with a rule each: who writes, who reads, when. Plain
// data, no behaviour.
#pragma once

#include "state/press_state.h"
#include "state/run_flags.h"
#include "state/settings.h"
#include "state/view_state.h"

namespace kalmora {

struct AppState {
    Settings settings;
    SharedView view;
    RunFlags run;
    PressState press;
};

// The record. Made on first use, never destroyed: threads may outlive main.
AppState& State();

// The view in force. Any thread.
inline ViewState View() { return State().view.Now(); }
// Replaces it; see SharedView::Change. GUI thread and heartbeat, and a load whose search wants another view.
template <typename Compute>
void ChangeView(Compute change) {
    State().view.Change(change);
}

}  // namespace kalmora
