// What the four views answer for themselves.
#include "views/model/calendar_view.h"

#include "views/load/object_loader.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

constexpr Size kViewClient{960, 700};
constexpr CalendarDate kDate{2008, 11, 13};

class CalendarViewTest : public ViewTest {
protected:
    CalendarView& Of(Level level, bool scatter = false) const {
        return calendar_->ViewOf(ViewState{{level, kDate}, scatter, false, false});
    }
    bool ShowsMonth(Level level, int year, int month, bool scatter = false) const {
        return Of(level, scatter).GridOf({level, kDate}, year, month, kViewClient).has_value();
    }
};

TEST_F(CalendarViewTest, GridOfAMonthIsShownByTheMonthAndItsYearAlone) {
    EXPECT_TRUE(ShowsMonth(Level::Month, 2008, 11));
    EXPECT_FALSE(ShowsMonth(Level::Month, 2008, 12));
    EXPECT_FALSE(ShowsMonth(Level::Month, 2007, 11));
    EXPECT_TRUE(ShowsMonth(Level::Year, 2008, 12));
    EXPECT_FALSE(ShowsMonth(Level::Year, 2009, 12));
    EXPECT_FALSE(ShowsMonth(Level::Day, 2008, 11));
    EXPECT_FALSE(ShowsMonth(Level::Year, 2008, 11, true)) << "a scatter has no cells";
}

TEST_F(CalendarViewTest, ObjectsOfADayAndAScatterAreInTheirViewers) {
    EXPECT_EQ(Of(Level::Day).CurrentViewer(), &calendar_->CurrentDayViewer());
    EXPECT_EQ(Of(Level::Day, true).CurrentViewer(), &calendar_->CurrentAllViewer());
    EXPECT_EQ(Of(Level::Month, true).CurrentViewer(), &calendar_->CurrentAllViewer());
    EXPECT_EQ(Of(Level::Month).CurrentViewer(), nullptr);
    EXPECT_EQ(Of(Level::Year).CurrentViewer(), nullptr);
}

TEST_F(CalendarViewTest, ObjectsOfAnotherDayAreNotHitBeforeTheDayIsLoaded) {
    AddPicture(2008, 11, 13, "a.png", {200, 30, 30});
    ShowDay(2008, 11, 13);
    OpenWindow(kViewClient);
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    const auto hits = [this](const CalendarDate& day) {
        int count = 0;
        for (int y = 0; y < kViewClient.height; y += 10)
            for (int x = 0; x < kViewClient.width; x += 10)
                count += Of(Level::Day).HitTest({Level::Day, day}, {x, y}, kViewClient).hasObject ? 1 : 0;
        return count;
    };
    EXPECT_GT(hits(kDate), 0);
    EXPECT_EQ(hits({2008, 11, 14}), 0);
    EXPECT_EQ(hits({2008, 12, 13}), 0);
    EXPECT_EQ(hits({2007, 11, 13}), 0);
}

TEST_F(CalendarViewTest, ScatterIsNamedAfterItsPeriod) {
    const auto name = [this](Level level, bool scatter) {
        return Of(level, scatter).NameOfLoad({level, kDate});
    };
    for (const bool scatter : {false, true}) {
        EXPECT_EQ(name(Level::Year, scatter), "UpdateObjects: [2008]");
        EXPECT_EQ(name(Level::Month, scatter), "UpdateObjects: [2008/11]");
        EXPECT_EQ(name(Level::Day, scatter), "UpdateObjects");
    }
}

}  // namespace
}  // namespace kalmora
