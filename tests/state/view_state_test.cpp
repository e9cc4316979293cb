#include "state/view_state.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "state/app_state.h"
#include "state/view_settings.h"

namespace kalmora {
namespace {

constexpr Period kYear{Level::Year, {1999, 1, 1}};
constexpr Period kDay{Level::Day, {2024, 12, 31}};

TEST(ViewState, ReaderOnAnotherThreadNeverSeesHalfAJump) {
    SharedView view;
    const auto jump = [&](const Period& period, bool scatter) {
        view.Change([&](ViewState& next) {
            next.period = period;
            next.scatter = scatter;
        });
    };
    jump(kYear, false);
    std::atomic<bool> done{false};
    std::atomic<int> read{0}, torn{0};
    std::thread reader([&] {
        while (!done) {
            const ViewState seen = view.Now();
            const bool first = seen.period == kYear && !seen.scatter;
            const bool second = seen.period == kDay && seen.scatter;
            if (!first && !second) ++torn;
            ++read;
        }
    });
    // At least so many jumps, and until the reader has looked often enough.
    for (int i = 0; i < 20'000 || read < 1000; ++i) jump(i % 2 == 0 ? kDay : kYear, i % 2 == 0);
    done = true;
    reader.join();
    EXPECT_EQ(torn, 0);
}

TEST(ViewState, ChangeBuildsOnWhatIsInForce) {
    SharedView view;
    view.Change([](ViewState& next) { next.period = kDay; });
    view.Change([](ViewState& next) { next.searchResult = true; });
    EXPECT_EQ(view.Now().period, kDay);
    EXPECT_TRUE(view.Now().searchResult);
}

TEST(Period, RangeHasZeroForWhatTheLevelLeavesOpen) {
    const CalendarDate date{2008, 11, 13};
    EXPECT_EQ((Period{Level::Year, date}.Range()), (CalendarDate{2008, 0, 0}));
    EXPECT_EQ((Period{Level::Month, date}.Range()), (CalendarDate{2008, 11, 0}));
    EXPECT_EQ((Period{Level::Day, date}.Range()), date);
}

TEST(Period, ContainsTheDaysOfItsLevel) {
    const CalendarDate date{2008, 11, 13};
    EXPECT_TRUE((Period{Level::Year, date}.Contains({2008, 1, 1})));
    EXPECT_FALSE((Period{Level::Year, date}.Contains({2009, 11, 13})));
    EXPECT_TRUE((Period{Level::Month, date}.Contains({2008, 11, 30})));
    EXPECT_FALSE((Period{Level::Month, date}.Contains({2008, 12, 13})));
    EXPECT_TRUE((Period{Level::Day, date}.Contains(date)));
    EXPECT_FALSE((Period{Level::Day, date}.Contains({2008, 11, 14})));
}

TEST(ViewSettings, ViewOfTheSettingsIsTakenOverWithoutASearch) {
    Settings& settings = State().settings;
    settings.ViewType = 4;
    settings.TargetYear = 2008;
    settings.TargetMonth = 11;
    settings.TargetDay = 13;
    settings.AllViewMode = true;
    ChangeView([](ViewState& view) { view.searchResult = view.searchAllLoaded = true; });
    TakeViewFromSettings();
    EXPECT_EQ(View(), (ViewState{{Level::Day, {2008, 11, 13}}, true, false, false}));
}

TEST(ViewSettings, ViewTypeThatThereIsNotShowsTheMonth) {
    for (const int unknown : {0, 3, 5, -1, 8}) {
        State().settings.ViewType = unknown;
        TakeViewFromSettings();
        EXPECT_EQ(View().period.level, Level::Month) << unknown;
    }
}

TEST(ViewSettings, WhatIsOnTheScreenIsWhatIsSaved) {
    ChangeView([](ViewState& view) { view = {{Level::Year, {1999, 8, 7}}, true, true, true}; });
    PutViewIntoSettings();
    const Settings& settings = State().settings;
    EXPECT_EQ(settings.ViewType, 1);
    EXPECT_EQ(settings.TargetYear, 1999);
    EXPECT_EQ(settings.TargetMonth, 8);
    EXPECT_EQ(settings.TargetDay, 7);
    EXPECT_TRUE(settings.AllViewMode);
}

}  // namespace
}  // namespace kalmora
