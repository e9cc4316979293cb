// What commands and events ask of the windows and helpers around the calendar, besides the slide show,
// the neighbor window and the filter window, which lower rooms know. GUI thread, but where it says otherwise.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/commands.h"
#include "base/dates.h"
#include "base/geometry.h"
#include "media/estimation.h"
#include "platform/window.h"

namespace kalmora {

// The petals around a dragged picture; each means a rating.
class RatingPetals {
public:
    virtual ~RatingPetals() = default;
    virtual bool IsShown() const = 0;                                      // any thread
    virtual void Hide() = 0;                                               // any thread
    virtual std::optional<EstimateType> RatingAt(Point screen) const = 0;  // of the petal there
};

// The in-place editor of a slide's comment.
class NoteEditor {
public:
    virtual ~NoteEditor() = default;
    virtual bool IsOpen() const = 0;
    virtual void OpenAndPaste() = 0;
    virtual void Close() = 0;
    virtual void Edit(Command command) = 0;  // one of the editor's commands
};

enum class ScrapSource { Selection, Clipboard };

// Texts that become notes.
class TextScraps {
public:
    virtual ~TextScraps() = default;
    virtual void Scrap(ScrapSource source) = 0;
    // Calls back on the GUI thread after each change of the clipboard, as long as the program runs.
    virtual void WatchClipboard(std::function<void()> onChange) = 0;
    virtual void KeepClipboard() = 0;  // what was copied becomes a note
    // Makes a text of the day and gives its path; empty on failure.
    virtual std::string MakeText(const CalendarDate& day, const std::string& content) = 0;
};

// Drags of a file out of the window.
class DragSource {
public:
    virtual ~DragSource() = default;
    virtual bool Start(Window& window, const std::string& path) = 0;
};

enum class ScreenshotArea { Desktop, ForegroundWindow };

class Screenshots {
public:
    virtual ~Screenshots() = default;
    virtual void Take(ScreenshotArea area) = 0;
};

enum class Getter { Amazon, Travel, Twitter };

// Dialogs that fetch something from the web.
class Getters {
public:
    virtual ~Getters() = default;
    virtual void Run(Getter getter) = 0;
};

}  // namespace kalmora
