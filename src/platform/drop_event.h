// Files dropped on a window, and the answer to the program that gave them.
#pragma once

#include "platform/window.h"

namespace kalmora {

// What was done with dropped files. The program that gave them may delete its own when a move is reported.
enum class DropResult { NotTaken, Copied, Moved };

// Every event of the type Drop is one.
struct DropEvent : Event {
    DropEvent() : Event{EventType::Drop} {}
    bool isOwnDrag = false;  // it began in this program
    bool mayMove = true;     // the program that gives the files lets go of them
    // Where the window says what it did before its procedure comes back; until then the program that gave the
    // files waits for its answer. Null where no program asks.
    DropResult* result = nullptr;
};

inline const DropEvent& AsDrop(const Event& event) { return static_cast<const DropEvent&>(event); }

}  // namespace kalmora
