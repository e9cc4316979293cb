// The import's worker: of the import command, and of what is dropped. One at a time.
#pragma once

#include "base/stop_token.h"
#include "import/import.h"

namespace kalmora {

struct CalendarStore;

// Who may import. What is dropped waits for its turn, on a worker; the import command is refused instead.
class ImportTurn {
public:
    // Waits until no other import runs, or until stopped.
    explicit ImportTurn(const StopToken& stop);
    ~ImportTurn();
    ImportTurn(const ImportTurn&) = delete;
    ImportTurn& operator=(const ImportTurn&) = delete;
    explicit operator bool() const { return isMine_; }

private:
    bool isMine_ = false;
};

// Imports on a thread of its own. What arrives joins the view; at the end the result is reported to the user.
// False, and reported, when an import runs already. GUI thread.
bool StartImportOf(CalendarStore& calendar, ImportOptions options);
// The same on the calling thread, which has the turn: comes back when it is done.
ImportSummary ImportHere(CalendarStore& calendar, ImportOptions options);
// Reports to the user that another import has to wait. GUI thread.
void SayImportRuns();

}  // namespace kalmora
