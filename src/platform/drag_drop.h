// Files and texts that are dragged between programs. Files that are dropped on a window come as a DropEvent
// (drop_event.h). GUI thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/window.h"

namespace kalmora {

// What a drag carries; the other program takes what it knows.
struct DragContent {
    std::string path;  // absolute, of a file that exists; offered as a file
    std::string text;  // UTF-8; offered as plain text when it is not empty
};

enum class DragResult {
    NotStarted,  // no button is held down, no file is there, or there is no display
    Cancelled,   // dropped where no window takes it, or Escape
    Copied,
    Moved,  // the other program says so; nothing is deleted here
};

// Begins a drag from the window, the left button being down, and comes back when it has ended. Events, timers
// and posted work are served meanwhile, so the caller holds no lock. The window and the program itself may be
// its target.
DragResult DragOut(Window& source, const DragContent& content);

// Makes the window take dropped texts too, beside the files that WindowOptions::acceptDrops lets in: a drag
// that carries both is one of files. `dropped` gets the text as UTF-8, at most 16 MB of it, with its line
// ends. An empty function ends it, as does the end of the window.
void AcceptTexts(Window& window, std::function<void(const std::string& text)> dropped);

// Reports drags of any program, as long as the object lives.
class DragWatch {
public:
    // `begun` runs soon after the pointer has begun to drag something, on the GUI thread. There is no report
    // of the end: the drag is over once IsLeftButtonDown says no. Null where the desktop does not show the
    // drags of others.
    static std::unique_ptr<DragWatch> Create(std::function<void()> begun);
    virtual ~DragWatch() = default;
};

}  // namespace kalmora
