// ButtonBar: the labels and buttons along the window's lower edge, the caption, and the workers' progress
// gauge.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "platform/canvas.h"

namespace kalmora {

// Makes the buttons; once, at start, when fonts can be measured. GUI thread.
void CreateButtons();
void DestroyButtons();

// Caption, places, texts and pictures of all buttons for the view as it is. Any thread; own mutex.
void SetButtonStates();
// The least client size in which all buttons that the settings show have their places, beside labels that are
// shortened as far as they can be. Any thread, before CreateButtons too.
Size LeastClientSize();
// The date label's text and the window's title alone. Any thread.
void SetCaption();

// ---- the strip along the window's lower edge, painted whole: its ground, paper half over it, then
// every visible button. Any thread.
inline constexpr int kBarHeight = 50;  // logical pixels
void DrawButtons(Canvas& canvas);      // of a whole window
void DrawButtonsOnWindow();
// What lies under the buttons: the lower strip of a whole window that was painted without them.
void SetBarGround(const Surface& base);
// For what is redrawn in parts and may reach under the buttons: draws it on the window's canvas and, where
// `area` reaches that far, into the ground too, and the buttons on top. `origin` is the point of the window
// at which the canvas that `draw` gets begins.
void DrawUnderButtons(Canvas& canvas, const Rect& area,
                      const std::function<void(Canvas& canvas, Point origin)>& draw);

// What a press on a button does.
enum class ButtonAction { Nothing, Command, Help, Filter, Indexing, EndSearch };

// ---- for presses, tips and tests; any thread. A value: the bar may get a new layout meanwhile.
struct ButtonInfo {
    Rect area;
    std::string name;  // of a picture button; the text of a label
    std::string tip;   // what it does, in the user's language
    int command = 0;   // of ButtonAction::Command, else 0
    ButtonAction action = ButtonAction::Nothing;
};
// The visible button under the point.
bool FindButton(Point point, ButtonInfo* info);
std::vector<ButtonInfo> VisibleButtons();  // labels first, then pictures from the right to the left
// The button under the point is drawn darker while it is held down; up again, none is.
void SetPressedButton(Point point, bool down);

// ---- going through the buttons by keyboard; GUI thread. The one with the focus has a ring around it.
void MoveButtonFocus(int step);        // +1 to the right, -1 to the left, round and round; begins at that end
bool FocusedButton(ButtonInfo* info);  // false when no visible one has the focus
bool ClearButtonFocus();               // false when none had it

// The gauge over the main window: ratio 0 to 1 (or 100 to fill no rest), with its text; an empty text draws
// nothing. Any thread.
void ShowProgress(double ratio, const std::string& text);

}  // namespace kalmora
