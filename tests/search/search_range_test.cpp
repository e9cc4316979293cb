// The walk over months and days.
#include "search/search_range.h"

#include "search/search_fixture.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SearchRangeTest : public SearchTest {
protected:
    static QueryMatcher Matcher(const char* query) { return QueryMatcher(ParseQuery(query)); }
    std::vector<std::string> FindIn(const CalendarDate& range, const char* query = "cat") {
        FoundDays found;
        whole = SearchRange(MainIndex(), Matcher(query), range, kNeverStopped, found);
        return NamesOf(found);
    }
    bool whole = false;
};

TEST_F(SearchRangeTest, MonthIsSearchedDayByDay) {
    PutNote({2008, 11, 20}, "late.txt", "a cat");
    PutNote({2008, 11, 2}, "early.txt", "a cat");
    PutNote({2008, 11, 2}, "dog.txt", "a dog");
    PutNote({2008, 12, 2}, "other.txt", "a cat");
    EXPECT_THAT(FindIn({2008, 11, 0}), ElementsAre("early.txt", "late.txt"));
    EXPECT_TRUE(whole);
}

TEST_F(SearchRangeTest, YearIsSearchedMonthByMonth) {
    PutNote({2008, 12, 2}, "december.txt", "a cat");
    PutNote({2008, 1, 31}, "january.txt", "a cat");
    PutNote({2009, 1, 1}, "other.txt", "a cat");
    MainIndex().Load(2008, 12, 0);  // in front of the list
    EXPECT_THAT(FindIn({2008, 0, 0}), ElementsAre("january.txt", "december.txt"));
    EXPECT_TRUE(whole);
    EXPECT_TRUE(MainIndex().IsLoaded(2008, 0, 0)) << "the year is in memory from now on";
}

TEST_F(SearchRangeTest, DayIsSearchedAlone) {
    PutNote({2008, 11, 13}, "mine.txt", "a cat");
    PutNote({2008, 11, 14}, "other.txt", "a cat");
    EXPECT_THAT(FindIn({2008, 11, 13}), ElementsAre("mine.txt"));
    EXPECT_THAT(FindIn({2008, 11, 15}), IsEmpty());
}

TEST_F(SearchRangeTest, YearZeroIsEveryMonthThatWasTouched) {
    PutNote({2008, 11, 13}, "touched.txt", "a cat");
    PutNote({2007, 5, 1}, "loaded.txt", "a cat");
    PutNote({2006, 5, 1}, "unknown.txt", "a cat");
    MainIndex().Load(2008, 11, 0);
    MainIndex().Load(2007, 5, 0);
    MainIndex().Load(2007, 5, 0);
    EXPECT_THAT(FindIn({0, 0, 0}), ElementsAre("loaded.txt", "touched.txt")) << "the last one used first";
    EXPECT_NE(MainIndex().FindMonth(0, 12), nullptr) << "its own twelve months are in the list too";
}

TEST_F(SearchRangeTest, SearchedMonthInTheListIsInMemoryAfterwards) {
    PutNote({2008, 11, 13}, "a.txt", "a cat");
    FindIn({2008, 11, 0});
    EXPECT_FALSE(MainIndex().IsLoaded(2008, 11, 0)) << "the first search worked on a copy";
    FindIn({2008, 11, 0});
    EXPECT_TRUE(MainIndex().IsLoaded(2008, 11, 0));
}

TEST_F(SearchRangeTest, ProgressIsToldForEachDayOfAMonth) {
    const ProgressTexts progress(probe);
    MonthIndex month(2008, 11, root, context);
    FoundDays found;
    EXPECT_TRUE(SearchMonth(month, Matcher("cat"), kNeverStopped, found));
    ASSERT_EQ(progress.texts.size(), 31u);
    EXPECT_EQ(progress.texts[0], "Searching (2008/11)");
    EXPECT_EQ(progress.ratios[0], 0.0);
    EXPECT_DOUBLE_EQ(progress.ratios[29], 29.0 / 30);
    EXPECT_EQ(progress.texts[30], "Searched. (2008/11)");
    EXPECT_FALSE(month.searching);
}

TEST_F(SearchRangeTest, DayTellsNoProgress) {
    const ProgressTexts progress(probe);
    MonthIndex month(2008, 11, root, context);
    FoundDays found;
    EXPECT_TRUE(SearchDay(month, Matcher("cat"), 13, kNeverStopped, found));
    EXPECT_THAT(progress.texts, IsEmpty());
    EXPECT_TRUE(month.IsLoaded(13));
    EXPECT_FALSE(SearchDay(month, Matcher("cat"), 32, kNeverStopped, found));
}

TEST_F(SearchRangeTest, StopRequestLeavesAPartialResultWithoutTheLastLine) {
    PutNote({2008, 11, 2}, "early.txt", "a cat");
    PutNote({2008, 11, 20}, "late.txt", "a cat");
    MonthIndex month(2008, 11, root, context);
    std::vector<std::string> texts;
    probe.onProgress = [&](double, const std::string& text) {
        texts.push_back(text);
        EXPECT_TRUE(month.searching);
        if (texts.size() == 10) month.RequestStop();
    };
    FoundDays found;
    EXPECT_FALSE(SearchMonth(month, Matcher("cat"), kNeverStopped, found));
    EXPECT_THAT(NamesOf(found), ElementsAre("early.txt"));
    EXPECT_EQ(texts.size(), 10u);
    EXPECT_EQ(texts.back(), "Searching (2008/11)");
    EXPECT_FALSE(month.searching);
    probe.onProgress = nullptr;
    EXPECT_TRUE(SearchMonth(month, Matcher("cat"), kNeverStopped, found)) << "a stop is for what runs";
}

TEST_F(SearchRangeTest, StopRequestOfAMonthLeavesTheOtherMonths) {
    PutNote({2008, 3, 2}, "march.txt", "a cat");
    PutNote({2008, 4, 2}, "april.txt", "a cat");
    FindIn({2008, 0, 0});
    probe.onProgress = [](double, const std::string& text) {
        if (text == "Searching (2008/03)") MainIndex().FindMonth(2008, 3)->RequestStop();
    };
    EXPECT_THAT(FindIn({2008, 0, 0}), ElementsAre("april.txt"));
    EXPECT_FALSE(whole);
}

TEST_F(SearchRangeTest, StopRequestFromBeforeIsNotForTheSearch) {
    PutNote({2008, 11, 2}, "a.txt", "a cat");
    for (const CalendarDate range : {CalendarDate{2008, 11, 0}, CalendarDate{2008, 0, 0}}) {
        FindIn(range);
        StopIndexing("nothing runs");
        MainIndex().FindMonth(2008, 11)->RequestStop();
        EXPECT_THAT(FindIn(range), ElementsAre("a.txt"));
    }
    ResetIndexes(context);
    StopIndexing("nothing has been loaded");
    EXPECT_THAT(FindIn({2008, 0, 0}), ElementsAre("a.txt"));
    EXPECT_TRUE(whole);
}

TEST_F(SearchRangeTest, CallersStopEndsTheWholeWalk) {
    for (int month = 1; month <= 12; ++month) PutNote({2008, month, 1}, "a.txt", "a cat");
    FindIn({2008, 0, 0});
    StopSource stop;
    int days = 0;
    probe.onProgress = [&](double, const std::string& text) {
        if (text.starts_with("Searching") && ++days == 40) stop.RequestStop();
    };
    FoundDays found;
    EXPECT_FALSE(SearchRange(MainIndex(), Matcher("cat"), {2008, 0, 0}, stop.Token(), found));
    EXPECT_EQ(found.size(), 2u);
    EXPECT_EQ(days, 40) << "no day more";
}

TEST_F(SearchRangeTest, CallersStopEndsTheLoadOfTheIndexBeforeTheNextDay) {
    for (int day = 1; day <= 30; ++day) PutNote({2008, 11, day}, "a.txt", "a cat");
    StopSource stop;
    int days = 0;
    probe.onProgress = [&](double, const std::string& text) {
        if (text.starts_with("Loading") && ++days == 3) stop.RequestStop();
    };
    FoundDays found;
    EXPECT_FALSE(SearchRange(MainIndex(), Matcher("cat"), {2008, 11, 0}, stop.Token(), found));
    EXPECT_EQ(days, 3);
}

TEST_F(SearchRangeTest, DayThatCannotBeLoadedLosesTheRestOfItsMonth) {
    PutNote({2008, 11, 2}, "early.txt", "a cat");
    PutNote({2008, 11, 20}, "late.txt", "a cat");
    MonthIndex month(2008, 11, root, context);
    probe.onProgress = [this, count = 0](double, const std::string&) mutable {
        if (++count == 10) interrupt.RequestStop();
    };
    FoundDays found;
    EXPECT_FALSE(SearchMonth(month, Matcher("cat"), kNeverStopped, found));
    EXPECT_THAT(NamesOf(found), ElementsAre("early.txt"));
}

TEST_F(SearchRangeTest, LoadOfSomethingElseIsAskedToStop) {
    PutNote({2008, 11, 13}, "a.txt", "a cat");
    ChangeView([&](ViewState& view) { view.period.date.month = 10; });
    std::vector<std::string> loads;
    bool searched = false;
    probe.onProgress = [&](double, const std::string& text) {
        if (text.find("2007/05") != std::string::npos) loads.push_back(text);
        if (loads.size() != 5 || searched) return;
        searched = true;
        EXPECT_THAT(FindIn({2008, 11, 0}), ElementsAre("a.txt"));
    };
    MainIndex().Load(2007, 5, 0);
    EXPECT_EQ(loads.back(), "Canceled. (2007/05/00)");
}

TEST_F(SearchRangeTest, LoadGoesOnWhenTheViewItselfIsSearched) {
    bool searched = false;
    std::vector<std::string> loads;
    probe.onProgress = [&](double, const std::string& text) {
        if (text.find("2007/05") != std::string::npos) loads.push_back(text);
        if (loads.size() != 5 || searched) return;
        searched = true;
        FindIn({2008, 11, 0});
        FindIn({0, 0, 0});
    };
    MainIndex().Load(2007, 5, 0);
    EXPECT_EQ(loads.back(), "Loaded. (2007/05)");
}

}  // namespace
}  // namespace kalmora
