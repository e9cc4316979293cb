// What each event does to the main window. GUI thread; true when the event was used up.
#pragma once

#include "platform/window.h"

namespace kalmora {

bool OnCreate(Window& window);
bool OnDestroy(Window& window);
bool OnMinimize(Window& window);
bool OnRestore();
bool OnClipboardChange(Window& window);  // of any program's
bool OnPaint();
bool OnResize();
bool OnCommand(Window& window, int command);
bool OnTimer(Window& window, int timer);

bool OnMouseMove(Window& window, const Event& event);
bool OnLeftDown(Window& window, const Event& event);
bool OnLeftUp(Window& window, const Event& event);
bool OnLeftDoubleClick(Window& window, const Event& event);
bool OnRightUp();
bool OnRightDoubleClick(const Event& event);
bool OnWheel(Window& window, const Event& event);
bool OnDrop(Window& window, const Event& event);

bool OnKey(const Event& event);

// A press on a button or on something in the view; true when it was used.
bool HandleLeftPress(Window& window, Point point);

}  // namespace kalmora
