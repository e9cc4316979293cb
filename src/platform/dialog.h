// A modal dialog made from a table of controls. GUI thread.
//
// A dialog comes with its window: an owner that is hidden or minimised is shown first, and gets a Restore
// event. Nothing but the owner waits for the answer.
//
// The table says what there is and in which row and column of a grid it is; sizes follow the texts and
// the user's letters. All of it works from the keyboard: Tab goes through the controls in the order of the
// table, Enter presses the button kDialogOk and Escape the button kDialogCancel.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/system_time.h"
#include "platform/window.h"

namespace kalmora {

// The buttons that Enter and Escape press, and what closing the window by its frame gives.
inline constexpr int kDialogOk = 1;
inline constexpr int kDialogCancel = 2;

enum class ControlKind {
    Label,       // text; names the control that follows it in the table, for & letters and for screen readers
    Edit,        // one line
    TextArea,    // several lines; Enter begins a new one
    CheckBox,    // with its text
    Choice,      // one of a list
    ChoiceEdit,  // one of a list, or what is typed
    Date,        // a day, with a calendar to pick it from
    Group,       // a frame with a title around the rows from its own on, `rows` many
    Button,
};

struct Control {
    ControlKind kind = ControlKind::Label;
    int id = 0;  // unlike all others of the table; a label or a group may do with 0
    const char* text = "";
    int row = 0;
    int column = 0;
    int columns = 1;  // how many it spans
    int rows = 1;
};

// Of this kind, a question or a message: the window that it belongs to takes no input until it is answered.
bool IsDialogOpen();

// The dialog while it is shown. An id that is not in the table answers with nothing and changes nothing.
class Dialog {
public:
    virtual ~Dialog() = default;

    // What is typed or chosen; the caption of the others. At most 32767 characters can be typed.
    virtual std::string Text(int id) const = 0;
    virtual void SetText(int id, const std::string& text) = 0;
    virtual bool IsChecked(int id) const = 0;
    virtual void SetChecked(int id, bool isChecked) = 0;
    virtual void SetChoices(int id, const std::vector<std::string>& choices) = 0;  // the first is chosen
    virtual int Chosen(int id) const = 0;  // its index; -1 for none and for a text that was typed freely
    virtual void Choose(int id, int index) = 0;
    virtual SystemTime Date(int id) const = 0;  // its day, at midnight; a zero date for other controls
    virtual void SetDate(int id, const SystemTime& date) = 0;
    virtual void SetEnabled(int id, bool isEnabled) = 0;
    virtual void SetFocus(int id) = 0;  // with all of its text selected
    virtual void Close(int result) = 0;
};

struct DialogForm {
    std::string title;
    std::span<const Control> controls;
    std::function<void(Dialog&)> onOpen;  // before it is shown
    // A button was pressed, by whichever way. Without this every button closes the dialog with its id; with
    // it the dialog stays until Close is called, but for kDialogCancel, which closes it in any case.
    std::function<void(Dialog&, int id)> onButton;
    enum class Place { OverOwner, MiddleOfScreen } place = Place::OverOwner;
};

// Shows it in front of the owner (may be null) until it is closed and gives what Close was given.
// kDialogCancel at once where no user could answer.
int ShowDialog(Window* owner, const DialogForm& form);

}  // namespace kalmora
