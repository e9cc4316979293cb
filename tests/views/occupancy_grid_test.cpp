#include "views/model/occupancy_grid.h"

#include <gmock/gmock.h>

#include "base/random.h"
#include "views/model/viewers.h"

namespace kalmora {
namespace {

TEST(LineOccupancy, FirstObjectTakesTheFirstPlaceDrawn) {
    SeedRandom(7);
    const int expected = Random() % 2000;
    SeedRandom(7);
    LineOccupancy grid;
    EXPECT_EQ(grid.Place(3), expected);
    EXPECT_EQ(grid.CountAt(expected / 100, 3), 1);
    EXPECT_EQ(grid.CountAt(expected / 100, 2), 0);
}

TEST(LineOccupancy, ObjectsAvoidEachOtherWhileThereIsRoom) {
    for (unsigned seed = 1; seed <= 50; ++seed) {
        SeedRandom(seed);
        LineOccupancy grid;
        const int first = grid.Place(0) / 100;
        const int second = grid.Place(0) / 100;
        EXPECT_NE(first, second) << "seed " << seed;
    }
}

TEST(LineOccupancy, FullLineStillGivesAPlace) {
    SeedRandom(1);
    LineOccupancy grid;
    for (int i = 0; i < 500; ++i) {
        const int x = grid.Place(23);
        EXPECT_GE(x, 0);
        EXPECT_LT(x, 2000);
    }
}

TEST(ScatterOccupancy, EmptyPlaceIsTakenAtOnce) {
    SeedRandom(11);
    const int x = Random() % 2000, y = Random() % 2000;
    SeedRandom(11);
    ScatterOccupancy grid;
    EXPECT_EQ(grid.Place(), (Point{x, y}));
    EXPECT_EQ(grid.CountAt(x / 100, y / 100), 1);
}

TEST(ScatterOccupancy, ManyObjectsSpreadOverThePlane) {
    SeedRandom(3);
    ScatterOccupancy grid;
    for (int i = 0; i < 200; ++i) grid.Place();
    int highest = 0;
    for (int column = 0; column < 20; ++column)
        for (int row = 0; row < 20; ++row) highest = std::max(highest, grid.CountAt(column, row));
    EXPECT_LE(highest, 2);
}

TEST(PlaneToArea, ObjectNeverLeavesTheArea) {
    EXPECT_EQ(PlaneToArea({0, 0}, {960, 650}, {240, 180}), (Point{0, 0}));
    const Point far = PlaneToArea({1999, 1999}, {960, 650}, {240, 180});
    EXPECT_LE(far.x + 240, 960);
    EXPECT_LE(far.y + 180, 650);
}

SystemTime At(int day, int hour, int minute = 0) {
    SystemTime time;
    time.year = 2008;
    time.month = 11;
    time.day = static_cast<std::uint16_t>(day);
    time.hour = static_cast<std::uint16_t>(hour);
    time.minute = static_cast<std::uint16_t>(minute);
    return time;
}

const DayLines kLines = MakeDayLines(700, 4, 4, 12);

TEST(LineOfTime, LineZeroTakesWhatCameBeforeTheStart) {
    EXPECT_EQ(LineOfTime(kLines, 2008, 11, 13, At(13, 0)), 0);
    EXPECT_EQ(LineOfTime(kLines, 2008, 11, 13, At(13, 11, 59)), 0);
    EXPECT_EQ(LineOfTime(kLines, 2008, 11, 13, At(13, 12)), 1);
}

TEST(LineOfTime, EachLineTakesItsHours) {
    EXPECT_EQ(LineOfTime(kLines, 2008, 11, 13, At(13, 15, 59)), 1);
    EXPECT_EQ(LineOfTime(kLines, 2008, 11, 13, At(13, 16)), 2);
    EXPECT_EQ(LineOfTime(kLines, 2008, 11, 13, At(13, 19)), 2);
    EXPECT_EQ(LineOfTime(kLines, 2008, 11, 13, At(13, 20)), 3);
    EXPECT_EQ(LineOfTime(kLines, 2008, 11, 13, At(13, 23)), 3);
}

TEST(LineOfTime, EveryHourLandsWhereItsNumberSays) {
    for (int start = 0; start < 24; ++start) {
        const DayLines lines = MakeDayLines(700, 24, 1, start);
        for (int hour = 0; hour < 24; ++hour) {
            const int expected = std::min(23, std::max(0, hour - start + 1));
            EXPECT_EQ(LineOfTime(lines, 2008, 11, 13, At(13, hour)), expected) << start << " " << hour;
        }
    }
}

TEST(LineOfTime, LateStartKeepsTheNightOnTheSameDay) {
    EXPECT_EQ(LineOfTime(kLines, 2008, 11, 13, At(14, 2)), 3);
}

TEST(LineOfTime, OneLineTakesEverything) {
    const DayLines one = MakeDayLines(700, 1, 4, 12);
    EXPECT_EQ(LineOfTime(one, 2008, 11, 13, At(13, 3)), 0);
    EXPECT_EQ(LineOfTime(one, 2008, 11, 13, At(13, 23)), 0);
}

TEST(PlaceByTime, PhotoBeforeTheStartStandsAtTheLeft) { EXPECT_EQ(PlaceByTime(kLines, 0, 13, At(13, 3)), 0); }

TEST(PlaceByTime, PlaceIsTheFractionOfTheLinesHours) {
    EXPECT_EQ(PlaceByTime(kLines, 1, 13, At(13, 12)), 0);
    EXPECT_EQ(PlaceByTime(kLines, 1, 13, At(13, 14)), 1000);
    EXPECT_EQ(PlaceByTime(kLines, 1, 13, At(13, 13, 30)), 750);
    EXPECT_EQ(PlaceByTime(kLines, 3, 13, At(14, 1)), 2000) << "25 o'clock lies past the line's end";
}

}  // namespace
}  // namespace kalmora
