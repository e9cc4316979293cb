#include "views/model/calendar_geometry.h"

#include <gmock/gmock.h>

namespace kalmora {
namespace {

constexpr Rect kClient{0, 0, 960, 700};

TEST(MonthGrid, CellsAreASeventhWideAndThreeQuartersHigh) {
    const MonthGrid grid = MakeMonthGrid(2008, 11, kClient, false);
    EXPECT_EQ(grid.cellWidth, 137);
    EXPECT_EQ(grid.cellHeight, 102);
    EXPECT_EQ(grid.headingHeight, 27);
    EXPECT_EQ(grid.offset, 0);
}

// The window's height has no part in the size of a cell.
TEST(MonthGrid, SixWeeksFitWhereTheWindowIsAboutTwoThirdsAsHighAsWide) {
    const auto bottomOfLastDay = [](int width) {
        return MonthCellRect(MakeMonthGrid(2026, 11, {0, 0, width, 1030}, false), 30).Bottom();
    };
    EXPECT_LE(bottomOfLastDay(1530), 1030);
    EXPECT_EQ(bottomOfLastDay(1920), 1284) << "a row and more is below a window of 1920 x 1030";
}

TEST(YearGrid, DecemberEndsBelowAWindowThatIsWide) {
    const auto bottomOfLastDay = [](int width) {
        return MonthCellRect(MakeMonthGrid(2026, 12, YearMonthRect(width, 12), true), 31).Bottom();
    };
    EXPECT_GT(bottomOfLastDay(1920), 1030);
    EXPECT_LE(bottomOfLastDay(1650), 1030);
}

TEST(MonthGrid, WeekBeginsOnMonday) {
    // 1 November 2008 was a Saturday, 1 September 2008 a Monday.
    EXPECT_EQ(MakeMonthGrid(2008, 11, kClient, false).firstColumn, 5);
    EXPECT_EQ(MakeMonthGrid(2008, 9, kClient, false).firstColumn, 0);
}

TEST(MonthGrid, MonthThatBeginsOnSundayNeedsSixRows) {
    // August 2010: the first was a Sunday, 31 days.
    const MonthGrid grid = MakeMonthGrid(2010, 8, kClient, false);
    EXPECT_EQ(grid.firstColumn, 6);
    EXPECT_EQ(grid.RowOf(31), 5);
    EXPECT_EQ(grid.ColumnOf(31), 1);
    EXPECT_EQ(grid.firstColumn + 31 - 1, 36);
}

TEST(MonthGrid, CellStandsBelowHeadingAndOffset) {
    MonthGrid grid = MakeMonthGrid(2008, 11, {100, 50, 960, 0}, false);
    EXPECT_EQ(MonthCellRect(grid, 1), (Rect{100 + 5 * 137, 50 + 27, 137, 102}));
    EXPECT_EQ(MonthCellRect(grid, 3), (Rect{100, 50 + 27 + 102, 137, 102}));
    grid.offset = 40;
    EXPECT_EQ(MonthCellRect(grid, 3).y, 50 + 40 + 27 + 102);
    EXPECT_EQ(WeekdayRect(grid, 2), (Rect{100 + 2 * 137, 90, 137, 27}));
}

TEST(MonthHitTest, PointOnASharedEdgeBelongsToTheEarlierCell) {
    const MonthGrid grid = MakeMonthGrid(2008, 11, kClient, false);
    const Rect third = MonthCellRect(grid, 3);
    EXPECT_EQ(MonthHitTest(grid, {third.Right(), third.y + 10}), 3);
    EXPECT_EQ(MonthHitTest(grid, {third.Right() + 1, third.y + 10}), 4);
    EXPECT_EQ(MonthHitTest(grid, {third.x + 5, third.Bottom()}), 3);
    EXPECT_EQ(MonthHitTest(grid, {third.x + 5, third.Bottom() + 1}), 10);
}

TEST(MonthHitTest, PointRightOfTheSeventhCellIsNoHit) {
    const MonthGrid grid = MakeMonthGrid(2008, 11, kClient, false);
    const Rect last = MonthCellRect(grid, 30);
    EXPECT_EQ(MonthHitTest(grid, {7 * 137 + 1, last.y + 5}), 0);
    EXPECT_EQ(MonthHitTest(grid, {7 * 137, MonthCellRect(grid, 9).y + 5}), 9);
    EXPECT_EQ(MonthHitTest(grid, {5, 5}), 0) << "the weekdays are no days";
}

TEST(MonthHitTest, WindowOfNoWidthHasNoDays) {
    EXPECT_EQ(MonthHitTest(MakeMonthGrid(2008, 11, {0, 0, 0, 0}, false), {0, 0}), 0);
    EXPECT_EQ(MonthHitTest(MakeMonthGrid(2008, 11, {0, 0, -50, 0}, false), {0, 0}), 0);
}

TEST(YearGrid, FourColumnsAndThreeRows) {
    EXPECT_EQ(YearMonthRect(960, 1), (Rect{0, 0, 240, 205}));
    EXPECT_EQ(YearMonthRect(960, 4), (Rect{720, 0, 240, 205}));
    EXPECT_EQ(YearMonthRect(960, 5), (Rect{0, 205, 240, 205}));
    EXPECT_EQ(YearMonthRect(960, 12), (Rect{720, 410, 240, 205}));
}

TEST(YearHitTest, WithoutDayGridsAMonthIsHit) {
    EXPECT_EQ(YearHitTest(2008, 960, false, {0, 0}).month, 1);
    EXPECT_EQ(YearHitTest(2008, 960, false, {240, 100}).month, 1) << "edges are inclusive, the earlier wins";
    EXPECT_EQ(YearHitTest(2008, 960, false, {241, 100}).month, 2);
    EXPECT_EQ(YearHitTest(2008, 960, false, {960, 615}).month, 12);
    EXPECT_EQ(YearHitTest(2008, 960, false, {100, 616}).month, -1);
    EXPECT_EQ(YearHitTest(2008, 960, false, {100, 100}).day, -1);
}

TEST(YearHitTest, WithDayGridsOnlyADayIsAHit) {
    const MonthGrid march = MakeMonthGrid(2008, 3, YearMonthRect(960, 3), true);
    const Rect ninth = MonthCellRect(march, 9);
    const YearHit hit = YearHitTest(2008, 960, true, {ninth.x + 5, ninth.y + 5});
    EXPECT_EQ(hit.month, 3);
    EXPECT_EQ(hit.day, 9);
    // 1 March 2008 was a Saturday: the first row's left cells are empty.
    const Rect first = MonthCellRect(march, 1);
    EXPECT_EQ(YearHitTest(2008, 960, true, {first.x - 20, first.y + 5}).month, -1);
}

TEST(DayLines, LineHeightComesFromTheClientHeight) {
    const DayLines lines = MakeDayLines(700, 4, 4, 12);
    EXPECT_EQ(lines.lineHeight, 160);
    EXPECT_EQ(lines.thumbWidthAllowance, 223);
    EXPECT_EQ(lines.LineTop(2), 330);
    EXPECT_EQ(lines.ThumbnailHeight(), 155);
    EXPECT_EQ(lines.HourPictureRect(1), (Rect{10, 170, 36, 36}));
}

TEST(DayLines, LineZeroShowsTheHourBeforeTheStartAndHoursWrap) {
    const DayLines lines = MakeDayLines(700, 4, 4, 12);
    EXPECT_EQ(lines.HourOfLine(0), 8);
    EXPECT_EQ(lines.HourOfLine(1), 12);
    EXPECT_EQ(lines.HourOfLine(3), 20);
    EXPECT_EQ(MakeDayLines(700, 6, 4, 12).HourOfLine(5), 4) << "28 less 24";
}

TEST(DayLines, NumberOfLinesIsKeptBetweenOneAndTwentyFour) {
    EXPECT_EQ(MakeDayLines(700, 0, 4, 12).lines, 1);
    EXPECT_EQ(MakeDayLines(700, -3, 4, 12).lines, 1);
    EXPECT_EQ(MakeDayLines(700, 24, 1, 0).lines, 24);
    EXPECT_EQ(MakeDayLines(700, 25, 1, 0).lines, 24);
}

}  // namespace
}  // namespace kalmora
