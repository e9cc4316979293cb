// ButtonBar: the labels and buttons along the window's lower edge, the caption, and the workers' progress
// gauge.
#pragma once

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
// The date label's text and the window's title alone. Any thread.
void SetCaption();

// Draws every visible button. Any thread.
void DrawButtons(Canvas& canvas);
void DrawButtonsOnWindow();  // straight onto the window, over the background where a button stood before

// What a press does. Runs the action of the visible button under the point on the calling (GUI) thread.
enum class ButtonPress { None, NoAction, Done };
ButtonPress PressButton(Point point);
// The button under the point: its place, and what it is called. For pressed looks and tooltips.
struct ButtonInfo {
    Rect area;
    std::string name;
    int command = 0;  // 0 when no command stands behind it
};
bool FindButton(Point point, ButtonInfo* info);
// Every visible button; for keyboard use and tests.
std::vector<ButtonInfo> VisibleButtons();
// The button that is held down, drawn darker; an empty place for none.
void SetPressedButton(Point point, bool down);

// The gauge over the main window: ratio 0 to 1 (or 100 to fill no rest), with its text; an empty text draws
// nothing. Any thread.
void ShowProgress(double ratio, const std::string& text);

}  // namespace kalmora
