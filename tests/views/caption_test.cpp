#include "views/model/caption.h"

#include <gmock/gmock.h>

#include "state/app_state.h"

namespace kalmora {
namespace {

CaptionInput On(int viewType, bool japanese) {
    CaptionInput input;
    input.viewType = viewType;
    input.year = 2008;
    input.month = 11;
    input.day = 13;
    input.japanese = japanese;
    input.showFolder = false;
    input.folder = "/life/2008";
    return input;
}

TEST(Caption, YearInBothLanguages) {
    EXPECT_EQ(MakeCaption(On(kYearly, false)).label, "2008");
    EXPECT_EQ(MakeCaption(On(kYearly, true)).label, "2008年");
    EXPECT_EQ(MakeCaption(On(kYearly, true)).title, "Kalmora [2008]");
}

TEST(Caption, MonthInBothLanguages) {
    EXPECT_EQ(MakeCaption(On(kMonthly, false)).label, "Nov 2008");
    EXPECT_EQ(MakeCaption(On(kMonthly, true)).label, "2008年11月");
    EXPECT_EQ(MakeCaption(On(kMonthly, true)).title, "Kalmora [2008/11]");
}

TEST(Caption, DayInBothLanguages) {
    EXPECT_EQ(MakeCaption(On(kDaily, false)).label, "Thu, 13 Nov 2008");
    EXPECT_EQ(MakeCaption(On(kDaily, true)).label, "2008年11月13日(木)");
    EXPECT_EQ(MakeCaption(On(kDaily, true)).title, "Kalmora [2008/11/13]");
}

TEST(Caption, MonthsAndDaysArePaddedWithZeros) {
    CaptionInput input = On(kDaily, true);
    input.month = 2;
    input.day = 3;
    EXPECT_EQ(MakeCaption(input).label, "2008年02月03日(日)");
    EXPECT_EQ(MakeCaption(input).title, "Kalmora [2008/02/03]");
    input.japanese = false;
    EXPECT_EQ(MakeCaption(input).label, "Sun, 3 Feb 2008");
}

TEST(Caption, DayLabelIsBlueOnSaturdayAndRedOnSunday) {
    CaptionInput input = On(kDaily, true);
    EXPECT_EQ(MakeCaption(input).labelColor, (Color{0, 0, 0}));
    input.day = 15;
    EXPECT_EQ(MakeCaption(input).labelColor, (Color{0, 0, 255}));
    input.day = 16;
    EXPECT_EQ(MakeCaption(input).labelColor, (Color{255, 0, 0}));
    input.viewType = kMonthly;
    EXPECT_EQ(MakeCaption(input).labelColor, (Color{0, 0, 0}));
}

TEST(Caption, FolderStandsInBracketsBehindThePeriod) {
    CaptionInput input = On(kYearly, true);
    input.showFolder = true;
    EXPECT_EQ(MakeCaption(input).title, "Kalmora [2008] (/life/2008)");
}

TEST(Caption, SearchIsNamedInTheTitle) {
    CaptionInput input = On(kMonthly, true);
    input.searchMode = true;
    input.query = "花火 tag:like";
    EXPECT_EQ(MakeCaption(input).title, "Kalmora [2008/11] Searched by 花火 tag:like");
}

TEST(LevelLabel, NamesTheNextLevelUp) {
    EXPECT_EQ(LevelLabel(kDaily, false), "Monthly");
    EXPECT_EQ(LevelLabel(kDaily, true), "月表示");
    EXPECT_EQ(LevelLabel(kMonthly, false), "Yearly");
    EXPECT_EQ(LevelLabel(kMonthly, true), "年表示");
    EXPECT_EQ(LevelLabel(kYearly, true), "");
}

}  // namespace
}  // namespace kalmora
