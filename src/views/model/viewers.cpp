#include "views/model/viewers.h"

#include <algorithm>

#include "base/dates.h"
#include "state/app_state.h"

namespace kalmora {

namespace {
constexpr double kHour = 1.0 / 8928;  // one hour on the scale of DateToNumber
}

void DayViewer::Clear() {
    objects.Clear();
    stop = false;
    usable = true;
    loaded = false;
    OccupancyGrid.Clear();
    PerLineCount = {};
}

void DayViewer::ResetPlaces(const DayLines& newLines, int newClientWidth) {
    lines = newLines;
    clientWidth = newClientWidth;
    OccupancyGrid.Clear();
    PerLineCount = {};
    for (const PlacedObjectPtr& object : objects.Snapshot()) object->photo->placed = false;
}

int LineOfTime(const DayLines& lines, int year, int month, int day, const SystemTime& time) {
    const double moment = DateToNumber(time);
    for (int line = 0; line <= lines.lines - 2; ++line) {
        SystemTime spanStart;
        spanStart.year = static_cast<std::uint16_t>(year);
        spanStart.month = static_cast<std::uint16_t>(month);
        spanStart.day = static_cast<std::uint16_t>(day);
        // Hours above 23 of this date reach into the next day: a start later than midnight keeps the night.
        const double start = DateToNumber(spanStart) + (line * lines.duration + lines.startHour) * kHour;
        // Minutes do not enter the scale, so half an hour is room enough for rounding.
        if (moment < start - kHour / 2) return line;
    }
    return lines.lines - 1;
}

int PlaceByTime(const DayLines& lines, int line, int viewerDay, const SystemTime& time) {
    const int lineStart = (line - 1) * lines.duration + lines.startHour;
    const int hour = time.day == viewerDay ? time.hour : time.hour + 24;
    const double seconds = (hour - lineStart) * 3600.0 + time.minute * 60 + time.second;
    const double fraction = lines.duration > 0 ? seconds / (lines.duration * 3600.0) : 0.0;
    return static_cast<int>(std::clamp(fraction, 0.0, 1.0) * kPlaneSize);
}

void DayViewer::PlaceOnLine(PlacedObject& object) {
    CPhoto& photo = *object.photo;
    SystemTime time;
    photo.GetDate(time);
    const int line = LineOfTime(lines, year, month, day, time);
    const int x =
        State().settings.DayViewSortByTime ? PlaceByTime(lines, line, day, time) : OccupancyGrid.Place(line);
    photo.layoutX =
        kDayLeftMargin + (clientWidth - lines.thumbWidthAllowance - kDayLeftMargin) * x / kPlaneSize;
    photo.layoutY = lines.LineTop(line);
    photo.placementTag = line;
    photo.displayWidth = photo.displayHeight = -1;
    ++PerLineCount[static_cast<std::size_t>(line)];
    photo.placed = true;
}

void AllViewer::Clear() {
    objects.Clear();
    stop = false;
    usable = true;
    loaded = false;
    drawing = false;
    OccupancyGrid.Clear();
}

}  // namespace kalmora
