// What a killed program leaves beside the files that it was replacing. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace kalmora::files {

// True for the names that WriteWholeFile and WriteWholeFiles give to a new file until it takes its place.
bool HasScratchName(std::string_view name);
// Removes such a file when the program that made it no longer runs and it has not been written for an hour
// (so that the work of another machine on the same folder is left alone). True when it is gone.
bool RemoveAbandoned(const std::string& folder, const std::string& name);

}  // namespace kalmora::files
