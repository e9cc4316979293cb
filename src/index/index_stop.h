// The end of index work and imports in the process, at the next file: for Ctrl+C and for the program's end.
// Index files that are written already stay; none is left half.
#pragma once

namespace kalmora {

void InterruptIndexing();  // async-signal-safe
bool IsIndexingInterrupted();
void ResumeIndexing();  // for tests

}  // namespace kalmora
