// A day, and a month drawn as one picture, show something that can be drawn as long as they have it.
#include "platform/files.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_geometry.h"
#include "views/model/cell_content.h"
#include "views/paint/heartbeat_redraw.h"
#include "views/paint/paint_view.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

constexpr Size kClient{560, 420};
constexpr Color kRed{200, 30, 30};
constexpr char kBroken[] = "\xFF\xD8 this is no photo";

class RepresentativeTest : public ViewTest {
protected:
    void AddBroken(int month, int day, const std::string& name) {
        AddFile(DayFolder(2008, month, day), name, kBroken);
    }
    void Open() {
        OpenWindow(kClient);
        UpdateObjects(*calendar_);
        ASSERT_TRUE(WaitUntilIdle());
    }
    Color CentreOf(int day) const {
        const Rect cell =
            MonthCellRect(MakeMonthGrid(2008, 11, {0, 0, kClient.width, kClient.height}, false), day);
        return PixelAt(cell.x + cell.width / 2, cell.y + cell.height * 3 / 4);
    }
    std::string Shown(int day) { return ContentOfCell(*calendar_, 2008, 11, day).entry.path; }
    // Three beats redraw each cell once.
    void BeatThreeTimes() {
        for (int beat = 1; beat <= 3; ++beat) HeartbeatRedraw(*calendar_, beat);
    }
};

TEST_F(RepresentativeTest, DayWithAGoodPhotoAmongBrokenOnesShowsIt) {
    for (int day = 1; day <= 20; ++day) {
        AddBroken(11, day, "a.jpg");
        AddPicture(2008, 11, day, "b.png", kRed);
        AddBroken(11, day, "c.jpg");
    }
    ShowMonth(2008, 11);
    Open();
    for (int day = 1; day <= 20; ++day) EXPECT_EQ(CentreOf(day), kRed) << "loaded, day " << day;
    BeatThreeTimes();
    for (int day = 1; day <= 20; ++day) {
        EXPECT_EQ(CentreOf(day), kRed) << "after its beat, day " << day;
        EXPECT_EQ(Shown(day), files::Join(DayFolder(2008, 11, day), "b.png")) << "what a press opens";
    }
}

TEST_F(RepresentativeTest, AnotherPhotoIsShownWhenTheShownOneBreaks) {
    const std::string folder = DayFolder(2008, 11, 3);
    for (const char* name : {"a.png", "b.png"}) AddPicture(2008, 11, 3, name, kRed);
    ShowMonth(2008, 11);
    Open();
    const std::string broken = Shown(3);
    ASSERT_EQ(files::WriteWholeFile(broken, kBroken), files::FileResult::Done);
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(CentreOf(3), kRed);
    EXPECT_NE(Shown(3), broken);
    BeatThreeTimes();
    EXPECT_EQ(CentreOf(3), kRed);
}

TEST_F(RepresentativeTest, CellIsEmptyWhenItsOnlyPhotoBreaks) {
    const std::string photo = AddPicture(2008, 11, 3, "a.png", kRed);
    AddPicture(2008, 11, 4, "a.png", kRed);
    ShowMonth(2008, 11);
    Open();
    ASSERT_EQ(files::WriteWholeFile(photo, kBroken), files::FileResult::Done);
    BeatThreeTimes();
    const Color beaten = CentreOf(3);
    EXPECT_NE(beaten, kRed);
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(CentreOf(3), beaten) << "as a full paint draws it";
    EXPECT_EQ(CentreOf(4), kRed);
}

TEST_F(RepresentativeTest, MonthOfOnePictureShowsADayThatCanBeDrawn) {
    State().settings.CalendarMode = 0;
    for (int month = 1; month <= 12; ++month) {
        AddBroken(month, 4, "a.jpg");
        AddPicture(2008, month, 12, "b.png", kRed);
        AddBroken(month, 20, "c.jpg");
    }
    ShowYear(2008);
    Open();
    for (int step = 0; step < 2; ++step) {
        for (int month = 1; month <= 8; ++month) {
            const Rect area = YearMonthRect(kClient.width, month);
            EXPECT_EQ(PixelAt(area.x + area.width / 2, area.y + area.height / 2), kRed) << "month " << month;
            EXPECT_EQ(RepresentativeDay(*calendar_, 2008, month), 12) << "what a press opens";
        }
        BeatThreeTimes();
    }
}

}  // namespace
}  // namespace kalmora
