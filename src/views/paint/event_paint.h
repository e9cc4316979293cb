// EventPaint: the run that draws a day's objects, or a period's scatter, over the painted window, one by one.
#pragma once

#include <cstdint>
#include <memory>

namespace kalmora {

// Starts the run on its own thread; nothing in a grid view, while the objects are being loaded, or while a
// run is going. Any thread; does not wait.
void EventPaint();

// Body of the run; loadNumber is the one of the load whose objects it draws. Lets a burst of paints come to
// rest first; a full paint that is asked for meanwhile is done here and the walk begins anew.
void EventPaintThread(std::uint32_t loadNumber);

// Draws one object of the day in view where it belongs and remembers where it lies. False when nothing was
// drawn.
bool DrawDayObject(struct DayViewer& viewer, const std::shared_ptr<struct PlacedObject>& object);
// The same in the scatter.
bool DrawAllObject(struct AllViewer& viewer, const std::shared_ptr<struct PlacedObject>& object);

}  // namespace kalmora
