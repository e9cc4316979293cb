// CalendarView: one way to look at a period. The year, the month, the day and the scatter are its four
// classes (see views/control/); who loads, paints or asks what lies under a point asks the view that is in
// force.
#pragma once

#include <optional>
#include <string>

#include "base/dates.h"
#include "base/stop_token.h"
#include "pictures/picture_painter.h"
#include "platform/canvas.h"
#include "store/extension_table.h"
#include "views/model/calendar_geometry.h"
#include "views/model/load_request.h"
#include "views/model/viewers.h"

namespace kalmora {

struct CalendarStore;

// Commands 1010 to 1013.
enum class Step { OuterNext, Next, Previous, OuterPrevious };

// What lies under a point.
struct ViewHit {
    enum class Part { Nothing, Object, MonthHeading, DayNumber, HourPicture, DayGround };
    Part part = Part::Nothing;  // DayGround: beside the objects of a day, in its lines or its scatter
    CalendarDate date;          // the day of a cell, the month of a heading
    int hour = 0;               // of an hour picture
    bool picksDay = false;      // a press on it makes `date` the day that is left
    bool hasObject = false;     // a cell, a month's picture or an object lies there, for any `part`
    Rect area;                  // of it, in client coordinates
    std::string path;           // of it; empty for an empty cell
    ObjectKind kind = ObjectKind::Unknown;
};

// What a drop on the window is meant for.
struct DropTarget {
    CalendarDate day;           // month and day 0 where the period in view has none
    bool isBackground = false;  // pictures become the background of that period
};

enum class WalkEnd { Whole, Stopped, Repaint };  // Repaint: a full paint was asked for meanwhile

// Without data of its own: what it shows is in the store, which owns the view. Any thread, unless it says
// otherwise.
class CalendarView {
public:
    explicit CalendarView(CalendarStore& calendar) : calendar_(calendar) {}
    CalendarView(const CalendarView&) = delete;
    CalendarView& operator=(const CalendarView&) = delete;
    virtual ~CalendarView() = default;

    // ---- load
    // A load of the period is asked for: writes the line of the navigation log. Before the object gate.
    virtual void Announce(const Period& period) = 0;
    // What the object gate is taken for.
    virtual std::string NameOfLoad(const Period& period) const = 0;
    // Empties what the load of the period is going to fill, so that nothing old is painted meanwhile.
    virtual void PrepareLoad(const Period& period) = 0;
    // Fills the view for the request. On the load's worker, with the object gate held. False when stopped.
    virtual bool Load(const LoadRequest& request, const StopToken& stop) = 0;
    // Command 1021: reads the period again. On the load's worker, with the object gate held.
    virtual void Reload(const LoadRequest& request, const StopToken& stop) = 0;
    // Adds the objects in the folders of the period, for its scatter; with the object gate held.
    virtual void Gather(const LoadRequest& request, const StopToken& stop, ObjectList& list) = 0;
    // Raises the stop flag of what holds the period.
    virtual void Stop(const Period& period) = 0;
    // The period is loaded or being loaded, so that there is something to redraw.
    virtual bool IsReady(const Period& period) const = 0;

    // ---- paint
    // What lies over the background, but for objects that are drawn one by one.
    virtual void Paint(Canvas& canvas, const Period& period, Size client, double scale, Decode decode) = 0;
    // The objects that are shown; null in a grid, whose pictures belong to its cells.
    virtual Viewer* CurrentViewer() const { return nullptr; }
    // A viewer's objects are drawn by a run of their own.
    bool DrawsObjects() const { return CurrentViewer() != nullptr; }
    // The body of such a run. On the paint thread.
    virtual WalkEnd DrawObjects() = 0;
    // What changes at a heartbeat. On its thread.
    virtual void Beat(const Period& period) = 0;
    // Draws a cell that is on the window once more.
    virtual void RedrawCell(const CalendarDate& /*day*/) {}

    // ---- step
    // Changes the date; the caller loads. GUI thread.
    virtual void MakeStep(Step step) = 0;
    // The next viewer of the ring becomes the current one.
    virtual void AdvanceRing() {}
    // How many beats the period is shown at least before a random one follows it.
    virtual int BeatsToShow(const Period& period) const = 0;
    // Another date in place of the period's, drawn at random; nothing when there is none.
    virtual std::optional<CalendarDate> RandomDate(const Period& period) const = 0;

    // ---- what lies where, in client coordinates; GUI thread
    virtual ViewHit HitTest(const Period& period, Point point, Size client) const = 0;
    // The day whose cell lies under the point; nothing in a view without days.
    virtual std::optional<CalendarDate> DayUnder(const Period& period, Point point, Size client) const = 0;
    virtual bool HasDayCells() const = 0;
    // The grid in which a month is shown; nothing when the view has no such month. Any thread.
    virtual std::optional<MonthGrid> GridOf(const Period& /*period*/, int /*year*/, int /*month*/,
                                            Size /*client*/) const {
        return std::nullopt;
    }
    // Nothing for a point that means nothing.
    virtual std::optional<DropTarget> TargetOfDrop(const Period& period, Point point, Size client) const = 0;

protected:
    CalendarStore& calendar_;
};

}  // namespace kalmora
