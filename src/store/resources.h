// Where a picture of the program's own lies: the user's home folder first, so that a skin put there wins,
// then the folder in which the program was installed.
#pragma once

#include <string>
#include <string_view>

namespace kalmora {

// The path of "back.jpg", "Res/Month/01.png" and the like in the first folder that holds it; the path in the
// home folder when none does. A path that lies in the home folder (the default of a background setting) is
// looked for in the same way; any other absolute path comes back as it is. Any thread.
std::string FindResource(std::string_view name);

}  // namespace kalmora
