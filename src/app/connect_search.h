// Puts the search into the shell's hooks.
#pragma once

namespace kalmora {

// Once, at start, after the settings are read: no query is in force.
void ConnectSearch();

}  // namespace kalmora
