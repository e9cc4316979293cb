// The dialog that asks from where and how to import.
#pragma once

#include "platform/dialog.h"
#include "platform/window.h"

namespace kalmora {

// The dialog: what it shows comes from the settings, and its OK button puts there what was entered. `owner`
// may be null and has to outlive it. It ends with kDialogOk or kDialogCancel.
DialogForm MakeImportForm(Window* owner);

// Shows it; true when the import is wanted. GUI thread.
bool ShowImportDialog(Window* owner);

}  // namespace kalmora
