// What each event does to the main window. GUI thread; true when the event was used up.
#pragma once

#include "app/app_parts.h"
#include "platform/window.h"

namespace kalmora {

bool OnCreate(const AppParts& parts, Window& window);
bool OnDestroy(const AppParts& parts, Window& window);
bool OnMinimize(const AppParts& parts, Window& window);
bool OnRestore();
bool OnClipboardChange(const AppParts& parts, Window& window);  // of any program's
bool OnPaint(const AppParts& parts);
bool OnResize(const AppParts& parts);
bool OnTimer(const AppParts& parts, Window& window, int timer);

bool OnMouseMove(const AppParts& parts, Window& window, const Event& event);
bool OnLeftDown(const AppParts& parts, Window& window, const Event& event);
bool OnLeftUp(Window& window, const Event& event);
bool OnLeftDoubleClick(const AppParts& parts, Window& window, const Event& event);
bool OnRightUp();
bool OnRightDoubleClick(const AppParts& parts, const Event& event);
bool OnWheel(Window& window, const Event& event);
bool OnDrop(const AppParts& parts, Window& window, const Event& event);

bool OnKey(const AppParts& parts, const Event& event);

// A press on a button or on something in the view; true when it was used.
bool HandleLeftPress(const AppParts& parts, Window& window, Point point);

}  // namespace kalmora
