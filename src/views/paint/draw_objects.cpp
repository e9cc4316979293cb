#include "views/paint/draw_objects.h"

#include "pictures/draw_context.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

bool PassesFilter(CPhoto& photo) {
    if (photo.kind != ObjectKind::Text && photo.kind != ObjectKind::Image && photo.kind != ObjectKind::Movie)
        return false;
    return photo.IsVisibleUnderEstimate();
}

// What is prepared is drawn only while the view shows this viewer.
bool IsInView(CalendarStore& calendar, const Viewer& viewer) {
    return viewer.usable && !viewer.stop && calendar.ViewOf(View()).CurrentViewer() == &viewer;
}

// Claims the object, draws it when it passes the filter, and remembers where it lies.
template <typename DrawOne>
bool DrawClaimed(ObjectList& list, const PlacedObjectPtr& object, DrawOne draw) {
    if (!list.Claim(object)) return false;
    CPhoto& photo = *object->photo;
    photo.visible = 1;
    Rect drawn;
    if (PassesFilter(photo)) {
        draw(photo);
        drawn = photo.Drawn();
    }
    if (drawn.IsEmpty()) drawn = {};
    list.MarkDrawn(object, drawn);
    return !drawn.IsEmpty();
}

}  // namespace

Size ObjectArea() {
    const Size client = ClientSize();
    return {client.width, client.height - kBarHeight};
}

bool DrawDayObject(CalendarStore& calendar, DayViewer& viewer, const PlacedObjectPtr& object) {
    Window* window = MainWindow();
    if (!window) return false;
    const DrawContext context(*window, [&] { return IsInView(calendar, viewer); });
    return DrawClaimed(viewer.objects, object, [&](CPhoto& photo) {
        if (!photo.placed) viewer.PlaceOnLine(*object);
        photo.DrawScaledToHeight(context, viewer.lines.ThumbnailHeight());
    });
}

bool DrawAllObject(CalendarStore& calendar, AllViewer& viewer, const PlacedObjectPtr& object) {
    Window* window = MainWindow();
    if (!window) return false;
    const Size area = ObjectArea();
    const auto isWanted = [&] { return IsInView(calendar, viewer); };
    // An enlarged picture reaches out of the area on all sides.
    const auto paintBar = [&](Canvas& canvas) {
        if (object->photo->Drawn().Bottom() > area.height) DrawButtons(canvas);
    };
    const DrawContext context(*window, isWanted, paintBar);
    return DrawClaimed(viewer.objects, object, [&](CPhoto& photo) {
        if (!photo.placed) {
            const Point place = viewer.OccupancyGrid.Place();
            photo.layoutX = place.x;
            photo.layoutY = place.y;
            photo.placed = true;
        }
        photo.DrawInArea(context, area.width, area.height);
    });
}

}  // namespace kalmora
