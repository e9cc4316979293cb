// The Temp folder of scratch files: swept when the program starts and ends. Any thread.
#pragma once

#include <string>

namespace kalmora {

// Removes the files in the folder whose names begin with "$" (scratch files carry such names); other files
// and all folders stay. Returns how many went. While a rewrite of this or another program holds the lock,
// waits at most 200 ms, then leaves the folder to the next sweep. A copy that recovery still
// needs stays.
int SweepTempFolder(const std::string& folder);
// The same for the holder of the folder's lock (rewrite_journal.h).
int SweepScratchFiles(const std::string& folder);
// Makes the folder when it is missing, sweeps it otherwise. False when it cannot be made.
bool PrepareTempFolder(const std::string& folder);

}  // namespace kalmora
