// Viewer: the objects that a view holds. DayViewer has those of one day in its lines, AllViewer those of a
// whole period strewn over the window.
#pragma once

#include <array>
#include <atomic>
#include <string>

#include "base/dates.h"
#include "base/ticket_lock.h"
#include "views/model/calendar_geometry.h"
#include "views/model/object_list.h"
#include "views/model/occupancy_grid.h"

namespace kalmora {

// Filled by UpdateObjects, drawn by the paint thread and the heartbeat.
struct Viewer {
    ObjectList objects;
    TicketLock queue;  // who walks or redraws the list
    std::atomic<bool> stop{false};
    std::atomic<bool> usable{false};
    std::atomic<bool> loaded{false};
};

// The objects of one day.
struct DayViewer : Viewer {
    std::atomic<int> year{0}, month{0}, day{0};
    // False between a step to another day and its load: the ring may then be at a day of long ago.
    bool IsOf(const CalendarDate& date) const {
        return year == date.year && month == date.month && day == date.day;
    }

    // ---- placing; by the holder of the queue's ticket
    DayLines lines;
    int clientWidth = 0;
    LineOccupancy OccupancyGrid;
    std::array<int, kMaxDayLines> PerLineCount{};

    void Clear();
    // Forgets all places: the window has another size.
    void ResetPlaces(const DayLines& newLines, int newClientWidth);
    // PlaceOnLine: gives the object its line (photo.placementTag) and its pixel position.
    void PlaceOnLine(PlacedObject& object);
};

// The line for a date: 0 is what lies before the start, the last one takes everything later.
int LineOfTime(const DayLines& lines, int year, int month, int day, const SystemTime& time);
// The place on the line by the time of day, 0 to 2000.
int PlaceByTime(const DayLines& lines, int line, int viewerDay, const SystemTime& time);

// The objects of a day, a month or a year as one scatter.
struct AllViewer : Viewer {
    std::atomic<bool> drawing{false};
    ScatterOccupancy OccupancyGrid;  // by the holder of the queue's ticket

    void Clear();
};

}  // namespace kalmora
