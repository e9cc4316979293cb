// What is redrawn in parts looks as a full paint draws it.
#include "pictures/picture_painter.h"
#include "views/bar/button_bar.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_geometry.h"
#include "views/paint/background.h"
#include "views/paint/heartbeat_redraw.h"
#include "views/paint/paint_base.h"
#include "views/paint/paint_cell.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

constexpr Size kSmallClient{560, 340};  // the last rows of a month and of a year reach under the bar
constexpr Color kRedPhoto{200, 30, 30}, kGreenPhoto{30, 180, 30};

std::vector<Color> PixelsOf(const Surface& surface) {
    std::vector<Color> pixels;
    const Size size = surface.GetSize();
    for (int y = 0; y < size.height * surface.Scale(); ++y)
        for (int x = 0; x < size.width * surface.Scale(); ++x) pixels.push_back(surface.PixelAt(x, y));
    return pixels;
}

class RedrawTest : public ViewTest {
protected:
    // Pictures of two shapes, so that margins change from beat to beat.
    void AddDay(int month, int day) {
        AddPicture(2008, month, day, "a.png", kRedPhoto);
        AddPicture(2008, month, day, "b.png", kGreenPhoto, {48, 64});
    }
    void Open() {
        OpenWindow(kSmallClient);
        UpdateObjects(*calendar_);
        ASSERT_TRUE(WaitUntilIdle());
    }
    std::vector<Color> Pixels() { return PixelsOf(*window_->Snapshot()); }

    void ExpectBeatsToDrawAsAFullPaintDoes() {
        const auto before = Pixels();
        for (int beat = 1; beat <= 7; ++beat) HeartbeatRedraw(*calendar_, beat);
        const auto redrawn = Pixels();
        EXPECT_FALSE(redrawn == before);
        DrawButtonsOnWindow();
        EXPECT_TRUE(Pixels() == redrawn) << "the bar alone, as for a press of Pause";
        PaintBase(*calendar_);
        EXPECT_TRUE(Pixels() == redrawn) << "all of the window";
    }
};

TEST_F(RedrawTest, BeatsOfAMonthDrawAsAFullPaintDoes) {
    for (int day = 1; day <= 30; ++day) AddDay(11, day);
    ShowMonth(2008, 11);
    Open();
    ExpectBeatsToDrawAsAFullPaintDoes();
}

TEST_F(RedrawTest, BeatsOfAYearOfDayGridsDrawAsAFullPaintDoes) {
    for (int month = 1; month <= 12; ++month)
        for (int day = 1; day <= 28; day += 3) AddDay(month, day);
    ShowYear(2008);
    Open();
    ExpectBeatsToDrawAsAFullPaintDoes();
}

TEST_F(RedrawTest, BeatsOfAYearOfPicturesDrawAsAFullPaintDoes) {
    for (int month = 1; month <= 12; ++month) AddDay(month, month);
    State().settings.CalendarMode = 0;
    ShowYear(2008);
    Open();
    ExpectBeatsToDrawAsAFullPaintDoes();
}

TEST_F(RedrawTest, LinesOfACellGetNoDarkerAtAnyScale) {
    constexpr Rect kLeft{7, 5, 35, 26}, kRight{42, 5, 35, 26};
    PreparedPicture picture;
    picture.look = PreparedPicture::Look::TextCard;
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        const auto surface = Surface::Create({100, 60}, scale);
        const auto draw = [&](const Rect& cell, int column) {
            DrawDayCell(*surface->Draw(), {}, cell, 1, column, true, &picture);
        };
        RestoreBackground(*surface->Draw(), {}, {0, 0, 100, 60});
        draw(kLeft, 0);
        draw(kRight, 1);
        const Color line = surface->PixelAt(static_cast<int>(42.5 * scale), static_cast<int>(15 * scale));
        draw(kLeft, 0);
        draw(kRight, 1);
        draw(kLeft, 0);
        EXPECT_EQ(surface->PixelAt(static_cast<int>(42.5 * scale), static_cast<int>(15 * scale)), line)
            << scale;
        EXPECT_EQ(line, surface->PixelAt(static_cast<int>(7.5 * scale), static_cast<int>(15 * scale)))
            << "a line that two cells share looks as one of a single cell, at scale " << scale;
    }
}

}  // namespace
}  // namespace kalmora
