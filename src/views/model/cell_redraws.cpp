#include "views/model/cell_redraws.h"

#include <algorithm>

#include "base/worker.h"

namespace kalmora {

void CellRedraws::Request(const CalendarDate& day) {
    std::lock_guard lock(mutex_);
    if (std::find(waiting_.begin(), waiting_.end(), day) != waiting_.end()) return;
    waiting_.push_back(day);
    StartIfWanted();
}

bool CellRedraws::AreDone() const {
    std::lock_guard lock(mutex_);
    return !running_ && waiting_.empty();
}

CellRedraws::Pause::Pause(CellRedraws& redraws) : redraws_(redraws) {
    std::lock_guard lock(redraws_.mutex_);
    ++redraws_.pauses_;
}

CellRedraws::Pause::~Pause() {
    std::lock_guard lock(redraws_.mutex_);
    --redraws_.pauses_;
    redraws_.StartIfWanted();
}

// With the mutex held. A running worker leaves when it finds a pause; the pause's end starts another.
void CellRedraws::StartIfWanted() {
    if (running_ || pauses_ > 0 || waiting_.empty()) return;
    // It waits for the mutex first.
    const auto work = [this](const StopToken&) { Work(); };
    running_ = StartWorker("CellRedraws", Worker::Priority::Normal, work).IsStarted();
    if (!running_) waiting_.clear();
}

void CellRedraws::Work() {
    for (;;) {
        CalendarDate cell;
        {
            std::lock_guard lock(mutex_);
            if (waiting_.empty() || pauses_ > 0) {
                running_ = false;
                return;
            }
            cell = waiting_.front();
            waiting_.pop_front();
        }
        draw_(cell);
    }
}

}  // namespace kalmora
