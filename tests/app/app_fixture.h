// The main window under the program's own procedure, with every request to another part written down instead
// of carried out.
#pragma once

#include <gmock/gmock.h>

#include <atomic>
#include <string>
#include <vector>

#include "app/app_parts.h"
#include "app/heartbeat.h"
#include "app/recording_parts.h"
#include "app/tray_menu.h"
#include "input/key_config.h"
#include "platform/clock.h"
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
    // Also until no paint of the main window goes on.
    bool WaitUntilIdle();
    // Where the cursor is and whether the left button is down, for those who ask the machine.
    static void Pointer(Point screen, bool leftButton = false);
    std::unique_ptr<Window> MakeMainWindow();
    // What was asked of the other parts since the last look.
    std::vector<std::string> Calls() { return calls_.Take(); }
    std::string Logged() const;  // since StartLog
    void StartLog();

    AppState& state_ = State();
    RecordingParts others_{calls_};
    RecordingPictures<PictureWindow> neighbor_{calls_, "Neighbor"};
    QuietKeyboard keyboard_;
    KeyConfig keys_{keyboard_, keyboard_};
    Tray tray_;
    Heartbeat heartbeat_{*calendar_, slideShow_, neighbor_, others_, others_};
    const AppParts parts_{*calendar_, slideShow_, neighbor_, music_,  filter_, others_,
                          others_,    others_,    others_,   others_, others_, others_,
                          others_,    others_,    others_,   keys_,   tray_,   heartbeat_};
};

}  // namespace kalmora
