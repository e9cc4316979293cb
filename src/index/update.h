// Bringing the index up to date in the background: by command, after an import, when the user is away, at
// start.
#pragma once

namespace kalmora {

// Updates a month of both roots (of month 0: the year) on a thread of its own at the lowest priority;
// State().run.BackgroundUpdateRunning is set while it runs. Does not ask whether another one runs: the
// months' gates sort that out. A stop of the indexing (StopIndexing) after this call ends it.
void StartBackgroundUpdate(int yearTimes100PlusMonth);
// How many such threads run. Any thread.
int CountBackgroundUpdates();
// The same on this thread.
void UpdateMonthOfBothRoots(int year, int month);

// Loads NumberOfLoadIndex months of both roots, from the current month backwards. On this thread.
void PreloadIndexes();

}  // namespace kalmora
