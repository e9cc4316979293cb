#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sample {

// A shortcut file. `target` is the whole path of the file it stands for; `relative` leads there from the
// shortcut's own folder, with backslashes.
std::vector<std::uint8_t> LinkBytes(const std::string& target, const std::string& relative);

}  // namespace sample
