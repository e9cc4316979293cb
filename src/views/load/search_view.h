// The views in search mode: what a search found stands in the place of what the folders hold.
#pragma once

#include <functional>
#include <string>

#include "views/model/load_request.h"

namespace kalmora {

// Brings the result up to what is being loaded, while a query is in force; does nothing otherwise. On the
// thread that loads.
void RunSearch(const LoadRequest& request, const std::function<bool()>& stopped);

// The files of the result in force that lie below the folder (compared without case), in the result's order;
// of an empty folder all of them. `stopped` is asked between any two; true ends it. Any thread.
void ForEachFound(const std::string& folder, const std::function<bool()>& stopped,
                  const std::function<void(const std::string& path)>& found);

}  // namespace kalmora
