// A window that nobody touches for ten minutes: beat by beat it stays as it was when it had been loaded,
// pixel for pixel, where no picture has changed.
#include "app/app_fixture.h"
#include "views/bar/button_bar.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_geometry.h"

namespace kalmora {
namespace {

constexpr Size kClient{720, 400};    // the last rows of a month reach under the bar
constexpr int kBeatsOfAMinute = 60;  // beats
constexpr Color kStillRed{200, 30, 30}, kGreen{30, 180, 30};

class StillWindowTest : public AppTest {
protected:
    StillWindowTest() {
        state_.settings.TimingOfPopup = 1;
        state_.settings.CalendarMode = 1;
        Pointer({10, 10});
        state_.run.LastCursorX = state_.run.LastCursorY = 10;
    }

    void Open() {
        OpenMainWindow(kClient);
        UpdateObjects(*calendar_);
        ASSERT_TRUE(WaitUntilIdle());
        state_.run.LastTickClock = clock_.now.load();
    }

    void Beat(int count) {
        for (int beat = 0; beat < count; ++beat) {
            clock_.now = clock_.now + 1000;
            ASSERT_EQ(heartbeat_.Tick(), BeatEnd::Redrawn);
        }
    }

    // The pixels of the window that `isCompared` wants; all others black.
    template <typename IsCompared>
    std::vector<Color> Pixels(IsCompared isCompared) {
        std::vector<Color> pixels;
        const auto window = window_->Snapshot();
        for (int y = 0; y < kClient.height; ++y)
            for (int x = 0; x < kClient.width; ++x)
                pixels.push_back(isCompared(Point{x, y}) ? window->PixelAt(x, y) : Color{});
        return pixels;
    }

    template <typename IsCompared>
    void ExpectTheSameForTenMinutes(IsCompared isCompared) {
        const std::vector<Color> loaded = Pixels(isCompared);
        Beat(kBeatsOfAMinute);
        ExpectSame(loaded, Pixels(isCompared), "after a minute");
        Beat(9 * kBeatsOfAMinute);
        ExpectSame(loaded, Pixels(isCompared), "after ten minutes");
    }

private:
    static void ExpectSame(const std::vector<Color>& before, const std::vector<Color>& after,
                           const char* when) {
        const auto at = std::mismatch(before.begin(), before.end(), after.begin());
        if (at.first == before.end()) return;
        const auto index = static_cast<int>(at.first - before.begin());
        ADD_FAILURE() << when << " the pixel at " << index % kClient.width << ", " << index / kClient.width
                      << " is " << Text(*at.second) << " instead of " << Text(*at.first);
    }
    static std::string Text(Color color) {
        return testing::PrintToString(std::tuple<int, int, int>(color.red, color.green, color.blue));
    }

    TestClock clock_;
};

bool IsOnBar(Point point) { return point.y >= kClient.height - kBarHeight; }

bool IsAnywhere(Point) { return true; }

TEST_F(StillWindowTest, MonthKeepsItsLinesAndBar) {
    const MonthGrid grid = MakeMonthGrid(2008, 11, {0, 0, kClient.width, kClient.height}, false);
    std::vector<Rect> changing;
    for (int day = 1; day <= grid.days; ++day) {
        AddPicture(2008, 11, day, "a.png", kStillRed);
        if (day % 4 != 0) continue;
        AddPicture(2008, 11, day, "b.png", kGreen, {48, 64});
        const Rect cell = MonthCellRect(grid, day);
        changing.push_back({cell.x + 1, cell.y + 1, cell.width - 1, cell.height - 1});
    }
    ShowMonth(2008, 11);
    Open();
    ExpectTheSameForTenMinutes([&](Point point) {
        for (const Rect& cell : changing)
            if (cell.ContainsInclusive(point) && point.x < cell.Right() && point.y < cell.Bottom())
                return false;
        return true;
    });
}

TEST_F(StillWindowTest, YearOfDayGridsKeepsItsLinesAndBar) {
    for (int month = 1; month <= 12; ++month)
        for (int day = 1; day <= 28; day += 3) AddPicture(2008, month, day, "a.png", kStillRed);
    ShowYear(2008);
    Open();
    ExpectTheSameForTenMinutes(IsAnywhere);
}

TEST_F(StillWindowTest, YearOfPicturesKeepsItsFramesAndBar) {
    for (int month = 1; month <= 12; ++month) AddPicture(2008, month, 5, "a.png", kStillRed);
    state_.settings.CalendarMode = 0;
    ShowYear(2008);
    Open();
    ExpectTheSameForTenMinutes(IsAnywhere);
}

TEST_F(StillWindowTest, DayKeepsItsBar) {
    for (const char* name : {"a.png", "b.png", "c.png"}) AddPicture(2008, 11, 13, name, kStillRed);
    ShowDay(2008, 11, 13);
    Open();
    ExpectTheSameForTenMinutes(IsOnBar);
}

TEST_F(StillWindowTest, ScatterOfEnlargedPicturesKeepsItsBar) {
    for (const char* name : {"a.png", "b.png"}) AddPicture(2008, 11, 13, name, kStillRed);
    AddPicture(2008, 11, 13, "c.png", kGreen, {48, 64});
    state_.settings.ThumbnailMaxSize = 900;
    ShowMonth(2008, 11);
    ChangeView([](ViewState& view) { view.scatter = true; });
    Open();
    ExpectTheSameForTenMinutes(IsOnBar);
}

}  // namespace
}  // namespace kalmora
