// An edit control for texts of several lines that lies inside a window, input methods included. GUI thread.
//
// Texts are UTF-8 and their lines end with CR LF, whichever line ends the toolkit uses. A position counts
// bytes of that text from 0; one inside a character or between CR and LF means the place before it, one past
// the end means the end. Lines are those of the text and not those that wrapping makes.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/geometry.h"
#include "platform/canvas.h"
#include "platform/window.h"

namespace kalmora {

// From `start` to `end`; the caret is at `end`, which may lie before `start`. Equal: nothing is selected.
struct TextSelection {
    std::size_t start = 0;
    std::size_t end = 0;
    friend bool operator==(const TextSelection&, const TextSelection&) = default;
};

struct TextBoxOptions {
    Rect area;  // in the window, logical pixels; the border lies inside
    Font font;
    std::size_t limit = 262'144;  // bytes of text; typing and pasting stop there
};

class TextBox {
public:
    // Hidden at first, with no text. The window must outlive it. Null once the window is closed.
    static std::unique_ptr<TextBox> Create(Window& window, const TextBoxOptions& options);
    virtual ~TextBox() = default;

    // Asked before the box uses a key press (a Key event) or a character (a Character event, also an empty
    // one when an input method begins to compose); true when the box shall leave it alone. Accelerators come
    // before it.
    virtual void SetInputHook(std::function<bool(const Event&)> hook) = 0;

    virtual void Show() = 0;  // without the focus
    virtual void Hide() = 0;  // the focus goes back to the window
    virtual bool IsVisible() const = 0;
    virtual void Focus() = 0;  // shows it and brings its window to the front
    virtual bool HasFocus() const = 0;
    virtual void SetArea(const Rect& area) = 0;

    // As if the user had typed it, at the caret: for the key press that opened the box.
    virtual void TakeInput(const Event& event) = 0;

    virtual std::string Text() const = 0;
    // CR LF and LF alone both end a line. The caret goes to the end; there is nothing to undo then. What is
    // past the limit is cut off.
    virtual void SetText(std::string_view utf8) = 0;

    virtual TextSelection Selection() const = 0;
    virtual void SetSelection(const TextSelection& selection) = 0;
    virtual void ScrollToCaret() = 0;

    virtual int LineCount() const = 0;                   // at least 1
    virtual int LineOf(std::size_t position) const = 0;  // from 0
    virtual std::size_t LineStart(int line) const = 0;   // of a line past the last: the end of the text
    virtual std::size_t LineLength(int line) const = 0;  // bytes without the line's end; 0 past the last
    // The next place at which a caret can be, over a whole character or line end; itself at either end of
    // the text.
    virtual std::size_t Next(std::size_t position) const = 0;
    virtual std::size_t Previous(std::size_t position) const = 0;

    virtual void DeleteSelection() = 0;                  // can be undone, as can the next three
    virtual void InsertText(std::string_view utf8) = 0;  // in place of the selection
    virtual void Cut() = 0;
    virtual void Paste() = 0;
    virtual void Copy() = 0;  // nothing when nothing is selected
    virtual void Undo() = 0;  // nothing when there is nothing to undo

    enum class Paging { Up, Down };
    virtual void MovePage(Paging paging) = 0;  // the caret, by what is seen of the text at once
};

}  // namespace kalmora
