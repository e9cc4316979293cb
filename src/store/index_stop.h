// The end of all index work in the process, at the next file: for Ctrl+C on the command line. Index files
// that are written already stay; none is left half.
#pragma once

namespace kalmora {

void InterruptIndexing();  // async-signal-safe
bool IsIndexingInterrupted();
void ResumeIndexing();  // for tests

}  // namespace kalmora
