// YearView, MonthView, DayCell: the objects of the calendar grids. A year Y lives in slot Y mod 13, so that
// the years visited lately stay in memory.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "store/extension_table.h"

namespace kalmora {

inline constexpr int kRingSize = 13;

// A file that a cell can show. For a shortcut these are its target's path and kind.
struct DayEntry {
    std::string path;
    ObjectKind kind = ObjectKind::Unknown;
};

// One day of a grid. The list, the index and `active` are guarded by the slot's mutex.
struct DayCell {
    std::string folder;
    int year = 0, month = 0, day = 0;
    bool active = false;  // it was loaded
    std::vector<DayEntry> objects;
    std::size_t PhotoIndex = 0;  // the entry that represents the day
    std::atomic<bool> stop{false};

    void Clear();  // with the slot's mutex held
};

struct MonthView {
    int year = 0, month = 0;  // guarded by the slot's mutex, as are the cursors and Phase
    std::atomic<bool> active{false};
    std::atomic<bool> stop{false};
    std::atomic<bool> ready{false};
    std::atomic<bool> loading{false};
    int PhotoCursor = 0;  // runs over all objects of the month
    int DayCursor = 1;    // 1 to the last day
    int Phase = 0;        // which third of the cells changes at this tick
    std::array<DayCell, 31> days;

    void Clear();             // with the slot's mutex held
    int ObjectCount() const;  // with the slot's mutex held
    void RaiseStop();         // any thread
};

struct YearView {
    mutable std::mutex mutex;  // guards lists and numbers; held for moments only
    int year = 0;
    std::atomic<bool> ready{false};  // all twelve months are done
    std::atomic<bool> loading{false};
    std::atomic<bool> stop{false};
    std::atomic<bool> active{false};
    std::array<MonthView, 12> months;

    void Clear();      // takes the mutex
    void RaiseStop();  // any thread
};

// What a cell shows: a copy, so that nothing is held while it is drawn.
struct CellContent {
    bool active = false;
    std::size_t count = 0;
    DayEntry entry;  // the one at PhotoIndex; an empty path when there is none
};

}  // namespace kalmora
