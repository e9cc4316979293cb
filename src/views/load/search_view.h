// The views in search mode: what a search found replaces what the folders hold.
#pragma once

#include <functional>
#include <string>

#include "base/stop_token.h"
#include "views/model/load_request.h"

namespace kalmora {

// Brings the result up to what is being loaded, while a query is in force; does nothing otherwise. On the
// thread that loads.
void RunSearch(const LoadRequest& request, const StopToken& stop);

// The files of the result in force that lie below the folder (compared without case), in the result's order;
// of an empty folder all of them. A stop ends it between any two. Any thread.
void ForEachFound(const std::string& folder, const StopToken& stop,
                  const std::function<void(const std::string& path)>& found);

}  // namespace kalmora
