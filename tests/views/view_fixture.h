// A life-log in a temporary folder, the program's record set to it, and a window of its own without a
// display.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/image.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"
#include "views/recording_partners.h"

namespace kalmora {

class ViewTest : public testing::Test {
protected:
    ViewTest();
    ~ViewTest() override;

    // Files of a day; the folder is made. They give the path.
    std::string AddText(int year, int month, int day, const std::string& name, std::string_view content);
    std::string AddPicture(int year, int month, int day, const std::string& name, Color color,
                           Size size = {64, 48});
    std::string AddFile(const std::string& folder, const std::string& name, std::string_view content);
    std::string DayFolder(int year, int month, int day) const;

    // A window of this size, in view until the test ends; its Paint events draw.
    void OpenWindow(Size size);
    // Serves events until neither worker runs and nothing waits to be drawn; false after ten seconds.
    bool WaitUntilIdle();
    void ShowMonth(int year, int month);
    void ShowYear(int year);
    void ShowDay(int year, int month, int day);
    Color PixelAt(int x, int y) const;

    std::string root_;
    // What the views asked of the rooms above them.
    CallRecord calls_;
    RecordingSlideShow slideShow_{calls_};
    RecordingMusicPlayer music_{calls_};
    RecordingNavigation navigation_;
    RecordingCommands commands_{calls_};
    RecordingFilterWindow filter_{calls_};
    NoObserver observer_;
    std::unique_ptr<CalendarStore> calendar_;
    std::unique_ptr<Window> window_;
};

// A picture of one colour as a PNG file.
void WritePicture(const std::string& path, Color color, Size size);

}  // namespace kalmora
