// CellRedraws: the one worker that draws cells of a grid later, which the GUI thread could only draw
// coarsely.
#pragma once

#include <deque>
#include <functional>
#include <mutex>

#include "base/dates.h"

namespace kalmora {

// Any thread.
class CellRedraws {
public:
    // `draw` draws one cell; on the worker.
    explicit CellRedraws(std::function<void(const CalendarDate& day)> draw) : draw_(std::move(draw)) {}
    CellRedraws(const CellRedraws&) = delete;
    CellRedraws& operator=(const CellRedraws&) = delete;

    // Has the worker draw the cell soon; repeated requests for one cell are one.
    void Request(const CalendarDate& day);
    // True when no cell waits to be drawn and the worker has left. Until then the object must not go.
    bool AreDone() const;

    // While one of these exists the worker begins no cell: a full paint holds it back until its picture is on
    // the window, which would otherwise cover the worker's newer cell.
    class Pause {
    public:
        explicit Pause(CellRedraws& redraws);
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        CellRedraws& redraws_;
    };

private:
    void StartIfWanted();
    void Work();

    const std::function<void(const CalendarDate& day)> draw_;
    mutable std::mutex mutex_;
    std::deque<CalendarDate> waiting_;  // guarded by mutex_
    bool running_ = false;              // guarded by mutex_
    int pauses_ = 0;                    // guarded by mutex_
};

}  // namespace kalmora
