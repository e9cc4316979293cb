#include "views/model/caption.h"

#include <gmock/gmock.h>

#include "state/app_state.h"

namespace kalmora {
namespace {

CaptionInput On(Level level, bool japanese) {
    CaptionInput input;
    input.period = {level, {2008, 11, 13}};
    input.japanese = japanese;
    input.showFolder = false;
    input.folder = "/life/2008";
    return input;
}

TEST(Caption, YearInBothLanguages) {
    EXPECT_EQ(MakeCaption(On(Level::Year, false)).label, "2008");
    EXPECT_EQ(MakeCaption(On(Level::Year, true)).label, "2008年");
    EXPECT_EQ(MakeCaption(On(Level::Year, true)).title, "Kalmora [2008]");
}

TEST(Caption, MonthInBothLanguages) {
    EXPECT_EQ(MakeCaption(On(Level::Month, false)).label, "Nov 2008");
    EXPECT_EQ(MakeCaption(On(Level::Month, true)).label, "2008年11月");
    EXPECT_EQ(MakeCaption(On(Level::Month, true)).title, "Kalmora [2008/11]");
}

TEST(Caption, DayInBothLanguages) {
    EXPECT_EQ(MakeCaption(On(Level::Day, false)).label, "Thu, 13 Nov 2008");
    EXPECT_EQ(MakeCaption(On(Level::Day, true)).label, "2008年11月13日(木)");
    EXPECT_EQ(MakeCaption(On(Level::Day, true)).title, "Kalmora [2008/11/13]");
}

TEST(Caption, MonthsAndDaysArePaddedWithZeros) {
    CaptionInput input = On(Level::Day, true);
    input.period.date.month = 2;
    input.period.date.day = 3;
    EXPECT_EQ(MakeCaption(input).label, "2008年02月03日(日)");
    EXPECT_EQ(MakeCaption(input).title, "Kalmora [2008/02/03]");
    input.japanese = false;
    EXPECT_EQ(MakeCaption(input).label, "Sun, 3 Feb 2008");
}

TEST(Caption, DayLabelIsBlueOnSaturdayAndRedOnSunday) {
    CaptionInput input = On(Level::Day, true);
    EXPECT_EQ(MakeCaption(input).labelColor, (Color{0, 0, 0}));
    input.period.date.day = 15;
    EXPECT_EQ(MakeCaption(input).labelColor, (Color{0, 0, 255}));
    input.period.date.day = 16;
    EXPECT_EQ(MakeCaption(input).labelColor, (Color{255, 0, 0}));
    input.period.level = Level::Month;
    EXPECT_EQ(MakeCaption(input).labelColor, (Color{0, 0, 0}));
}

TEST(Caption, FolderStandsInBracketsBehindThePeriod) {
    CaptionInput input = On(Level::Year, true);
    input.showFolder = true;
    EXPECT_EQ(MakeCaption(input).title, "Kalmora [2008] (/life/2008)");
}

TEST(Caption, SearchIsNamedInTheTitle) {
    CaptionInput input = On(Level::Month, true);
    input.searchMode = true;
    input.query = "花火 tag:like";
    EXPECT_EQ(MakeCaption(input).title, "Kalmora [2008/11] Searched by 花火 tag:like");
}

}  // namespace
}  // namespace kalmora
