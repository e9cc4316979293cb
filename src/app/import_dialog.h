// The dialog that asks from where and how to import.
#pragma once

#include <string_view>

#include "platform/dialog.h"
#include "platform/window.h"

namespace kalmora {

// The dialog: what it shows comes from the settings, and its OK button puts there what was entered. `owner`
// may be null and has to outlive it. It ends with kDialogOk or kDialogCancel.
DialogForm MakeImportForm(Window* owner);

// The end of the day as it is typed: hours after the midnight that begins it, or the hour of the clock up to
// noon ("2" is 26). Any other text, and anything beyond two days, leaves the one that there was.
int ParseDayEnd(std::string_view text, int before);

// Shows it; true when the import is wanted. GUI thread.
bool ShowImportDialog(Window* owner);

}  // namespace kalmora
