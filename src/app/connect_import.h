// Puts the import into the shell's hooks: command 1200, and what is dropped on the window.
#pragma once

namespace kalmora {

// Once, at start, before the main window exists.
void ConnectImport();

}  // namespace kalmora
