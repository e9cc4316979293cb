// The program's clock as a test wants it.
#pragma once

#include "platform/clock.h"

namespace kalmora::test {

// The clock of the program while it lives. Time passes only by sleeping, which takes none.
class StillClock final : public Clock {
public:
    StillClock() : StillClock(SystemTime{2008, 11, 4, 13, 10, 15, 30, 250}) {}
    explicit StillClock(const SystemTime& local) : now(local) { SetClock(this); }
    ~StillClock() override { SetClock(nullptr); }
    StillClock(const StillClock&) = delete;
    StillClock& operator=(const StillClock&) = delete;

    SystemTime LocalTime() override { return now; }
    double UptimeMs() override { return uptimeMs; }
    void SleepMs(int milliseconds) override {
        sleptMs += milliseconds;
        uptimeMs += milliseconds;
    }

    SystemTime now;  // stays also when uptime passes
    double uptimeMs = 0;
    int sleptMs = 0;
};

}  // namespace kalmora::test
