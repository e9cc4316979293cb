// Where the cursor is and which buttons and keys are down, for threads that see no events.
#pragma once

#include <QEvent>

#include "base/geometry.h"

namespace kalmora::qt {

// One for the process. On an X display the server is asked, over a connection of the program's own, so that
// also the cursor over other programs' windows is known; elsewhere the last event of an own window is used.
class InputState {
public:
    static InputState& Instance();

    // GUI thread. When no display can be reached only the events are used.
    void Connect();
    // GUI thread: the screens have changed; keeps a copy of where they lie for the other threads.
    void ReadScreens();
    // GUI thread, for every event of a window.
    void Note(const QEvent& event);

    struct Pointer {
        Point position;  // on the screen, logical pixels
        bool leftButton = false;
        bool control = false;
    };
    Pointer Now();  // any thread; some 50 microseconds

private:
    struct Members;
    InputState();
    Members* const members_;  // never freed: threads may outlive main
};

}  // namespace kalmora::qt
