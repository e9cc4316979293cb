// The main window under the program's own procedure, with every wish to a room above it written down instead
// of carried out.
#pragma once

#include <gmock/gmock.h>

#include <atomic>
#include <string>
#include <vector>

#include "app/app_hooks.h"
#include "platform/clock.h"
#include "views/hooks.h"
#include "views/view_fixture.h"

namespace kalmora {

// Uptime and local time as the test wants them; sleeping takes no time.
class TestClock : public Clock {
public:
    TestClock() { SetClock(this); }
    ~TestClock() override { SetClock(nullptr); }
    SystemTime LocalTime() override { return {2008, 11, 4, 13, 10, 15, 30, 250}; }
    double UptimeMs() override { return now; }
    void SleepMs(int) override {}

    std::atomic<double> now = 1'000'000;
};

class AppTest : public ViewTest {
protected:
    AppTest();
    ~AppTest() override;

    // The main window, made as the program makes it; no heart beats.
    void OpenMainWindow(Size size = {960, 700});
    // Where the cursor is and whether the left button is down, for those who ask the machine.
    static void Pointer(Point screen, bool leftButton = false);
    // What was asked of the rooms above since the last look.
    std::vector<std::string> Calls();
    std::string Logged() const;  // since StartLog
    void StartLog();

    AppState& state_ = State();
    std::vector<std::string> calls_;
    // What the rooms above answer.
    bool slideShowOpen_ = false, neighborShown_ = false, estimateShown_ = false, editorOpen_ = false;
    bool onSlidePicture_ = false, searchAnswer_ = false, dragAnswer_ = true, importAnswer_ = false;
    int rating_ = 0;
    std::string madeText_;
};

}  // namespace kalmora
