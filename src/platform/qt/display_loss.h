// The toolkit's messages, and what it does when the X server goes away: it says so and ends the process on
// the spot. Here the message loop ends instead, so that the program can save what it has.
#pragma once

#include <exception>
#include <memory>

namespace kalmora::qt {

// Thrown out of the toolkit's message loop, on the GUI thread, while a DisplayLossScope exists; nowhere else.
// The toolkit allows this for ending a program: no loop may be run afterwards.
struct DisplayLost {};

// Holds a dialog that runs a loop of its own. One that DisplayLost passes is left behind: taking it down
// would end a loop that has ended already.
struct LeaveWhenDisplayIsLost {
    template <typename Dialog>
    void operator()(Dialog* dialog) const {
        if (std::uncaught_exceptions() == 0) delete dialog;
    }
};
template <typename Dialog>
using ModalDialog = std::unique_ptr<Dialog, LeaveWhenDisplayIsLost>;

class DisplayLossScope {
public:
    DisplayLossScope();
    ~DisplayLossScope();
    DisplayLossScope(const DisplayLossScope&) = delete;
    DisplayLossScope& operator=(const DisplayLossScope&) = delete;
};

// From now on the toolkit's messages go to the log, and a message that comes with a broken connection to the
// display throws DisplayLost. Before the toolkit is started.
void WatchMessages();

}  // namespace kalmora::qt
