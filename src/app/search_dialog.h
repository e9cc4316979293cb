// The dialog that asks what to search for.
#pragma once

#include <string>

#include "platform/dialog.h"
#include "platform/window.h"

namespace kalmora {

struct CalendarStore;

struct SearchAnswer {
    bool isGiven = false;  // the search button was pressed
    std::string query;     // empty when nothing was entered
};
// The dialog: its controls, and what they make of `answer`, which has to outlive it. It ends with kDialogOk
// for a query, with kDialogCancel for an empty one.
DialogForm MakeSearchForm(SearchAnswer& answer);

// Asks, and puts the query in force. True when its result is to be shown. An empty query takes the one away
// that is in force, and the views go back to their folders. GUI thread; the owner may be null.
bool ShowSearchDialog(CalendarStore& calendar, Window* owner);

// No query is in force and none has been entered: the state of a start.
void ForgetSearch();

}  // namespace kalmora
