// The search in force: which result is kept, and when it is made again.
#include "search/search_run.h"

#include "search/search_fixture.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SearchRunTest : public SearchTest {
protected:
    SearchRunTest() {
        PutNote({2008, 11, 13}, "a.txt", "a cat");
        PutNote({2008, 11, 14}, "b.txt", "a dog");
        PutNote({2008, 12, 24}, "c.txt", "a cat");
        PutNote({2009, 1, 1}, "d.txt", "a cat");
    }
    // How many months were walked by what `work` does.
    template <typename Work>
    std::size_t RunsOf(Work work) {
        const ProgressTexts progress(probe);
        work();
        return Count(progress, "Searched.");
    }
};

TEST_F(SearchRunTest, ResultIsForThePeriodInView) {
    EXPECT_THAT(Find("cat", Month()), ElementsAre("a.txt"));
    EXPECT_THAT(Find("cat", Month(12)), ElementsAre("c.txt"));
    EXPECT_THAT(Find("cat", Year()), ElementsAre("a.txt", "c.txt"));
    EXPECT_THAT(Find("cat", Year(2009)), ElementsAre("d.txt"));
    EXPECT_THAT(Find("cat", Day()), ElementsAre("a.txt"));
    EXPECT_THAT(Find("cat", Day(14)), IsEmpty());
}

TEST_F(SearchRunTest, SameQueryInTheSameViewRunsOnce) {
    EXPECT_EQ(RunsOf([] { Find("cat", Month()); }), 1u);
    EXPECT_EQ(RunsOf([] { Find("cat", Month()); }), 0u);
    EXPECT_THAT(Find("cat", Month()), ElementsAre("a.txt"));
    EXPECT_EQ(RunsOf([] { Find("dog", Month()); }), 1u) << "another query";
    EXPECT_EQ(RunsOf([] { Find("Dog", Month()); }), 1u) << "another line, though it means the same";
    EXPECT_EQ(RunsOf([] { Find("Dog", Month(12)); }), 1u) << "another month";
    EXPECT_EQ(RunsOf([] { Find("Dog", Year()); }), 12u) << "another kind of view";
    EXPECT_EQ(RunsOf([] { Find("Dog", Year()); }), 0u);
    EXPECT_EQ(RunsOf([] { Find("Dog", Year(2009)); }), 12u);
    EXPECT_EQ(RunsOf([] { Find("Dog", Month()); }), 1u) << "only the last run is known";
}

TEST_F(SearchRunTest, DayInViewCountsInADayOnly) {
    Period other = Month();
    Find("cat", other);
    other.date.day = 14;
    EXPECT_EQ(RunsOf([&] { Find("cat", other); }), 0u);
    Find("cat", Day());
    EXPECT_THAT(Find("cat", Day(14)), IsEmpty());
}

TEST_F(SearchRunTest, OtherKindsOfViewAreAlwaysSearched) {
    const Period other{static_cast<Level>(8), 2008, 11, 13};
    EXPECT_EQ(RunsOf([&] { Find("cat", other); }), 1u);
    EXPECT_EQ(RunsOf([&] { Find("cat", other); }), 1u);
}

TEST_F(SearchRunTest, EmptyQueryLeavesTheResult) {
    Find("cat", Month());
    EXPECT_EQ(RunsOf([] { EXPECT_THAT(Find("", Year()), ElementsAre("a.txt")); }), 0u);
}

TEST_F(SearchRunTest, BlanksAreAQuery) {
    EXPECT_THAT(Find("  ", Month()), ElementsAre("a.txt", "b.txt")) << "every comment";
}

TEST_F(SearchRunTest, ResultStandsUntilTheNext) {
    EXPECT_THAT(*CurrentSearchResult(), IsEmpty());
    const SearchResult first = Search("cat", SearchScope::View, Month(), kNeverStopped);
    EXPECT_EQ(CurrentSearchResult(), first);
    Search("dog", SearchScope::View, Month(), kNeverStopped);
    EXPECT_THAT(NamesOf(*CurrentSearchResult()), ElementsAre("b.txt"));
    EXPECT_THAT(NamesOf(*first), ElementsAre("a.txt")) << "whoever holds it keeps it";
}

TEST_F(SearchRunTest, StoppedRunIsNotKept) {
    Find("cat", Month());
    StopSource stop;
    probe.onProgress = [&](double, const std::string& text) {
        if (text.starts_with("Searching")) stop.RequestStop();
    };
    EXPECT_THAT(*Search("dog", SearchScope::View, Month(), stop.Token()), IsEmpty());
    probe.onProgress = nullptr;
    EXPECT_THAT(NamesOf(*CurrentSearchResult()), ElementsAre("a.txt"));
    EXPECT_THAT(Find("dog", Month()), ElementsAre("b.txt")) << "it runs again";
}

TEST_F(SearchRunTest, PartialResultIsShownAndNotReliedUpon) {
    Find("cat", Year());
    probe.onProgress = [](double, const std::string& text) {
        if (text == "Searching (2008/12)") MainIndex().FindMonth(2008, 12)->RequestStop();
    };
    ResetSearch();
    EXPECT_THAT(Find("cat", Year()), ElementsAre("a.txt"));
    probe.onProgress = nullptr;
    EXPECT_THAT(NamesOf(*CurrentSearchResult()), ElementsAre("a.txt"));
    EXPECT_THAT(Find("cat", Year()), ElementsAre("a.txt", "c.txt"));
}

TEST_F(SearchRunTest, AllLoadedIsEverythingThatWasTouchedAndSwitchesToTheScatter) {
    EXPECT_THAT(Find("cat", Month(), SearchScope::AllLoaded), IsEmpty());
    EXPECT_TRUE(View().scatter);
    ChangeView([&](ViewState& view) { view.scatter = false; });
    Find("dog", Month());
    MainIndex().Load(2009, 1, 0);
    EXPECT_FALSE(View().scatter) << "a search of the view does not";
    EXPECT_THAT(Find("cat", Month(), SearchScope::AllLoaded), ElementsAre("d.txt", "a.txt"));
    ChangeView([&](ViewState& view) { view.scatter = false; });
    Find("cat", Month(), SearchScope::AllLoaded);
    EXPECT_FALSE(View().scatter) << "nothing ran";
}

TEST_F(SearchRunTest, ScopeCountsForWhetherAResultStands) {
    Find("cat", Month());
    Find("cat", Month(12));
    EXPECT_THAT(Find("cat", Month(12), SearchScope::AllLoaded).size(), 2u);
    EXPECT_THAT(Find("cat", Month(12)), ElementsAre("c.txt"));
}

TEST_F(SearchRunTest, SecondFolderIsSearchedBehindTheFirst) {
    Put("other/2008/200811/2008_1101/z.txt", "a cat");
    State().settings.OtherDirectory = At("other");
    State().settings.UseOtherFolder = true;
    EXPECT_THAT(Find("cat", Month()), ElementsAre("a.txt", "z.txt"));
    EXPECT_THAT(Find("cat", Year()), ElementsAre("a.txt", "c.txt", "z.txt"));
    State().settings.UseOtherFolder = false;
    EXPECT_THAT(Find("cat", Month()), ElementsAre("a.txt"));
    State().settings.UseOtherFolder = true;
    std::filesystem::rename(At("other"), At("gone"));
    EXPECT_THAT(Find("cat", Year()), ElementsAre("a.txt", "c.txt"));
}

TEST_F(SearchRunTest, TagsSetTheModesAndLeaveThemSet) {
    Find("tag:good", Month());
    EXPECT_EQ(State().settings.GoodMode, 1);
    Find("cat", Month());
    EXPECT_EQ(State().settings.GoodMode, 1);
    Find("tag:bad", Month());
    EXPECT_EQ(State().settings.GoodMode, 0);
    State().settings.GoodMode = 1;
    Find("tag:bad", Month());
    EXPECT_EQ(State().settings.GoodMode, 1) << "nothing ran";
}

TEST_F(SearchRunTest, TextIsKeptAsItIs) {
    EXPECT_EQ(SearchText(), "");
    SetSearchText("  Cat OR 犬");
    EXPECT_EQ(SearchText(), "  Cat OR 犬");
    ResetSearch();
    EXPECT_EQ(SearchText(), "");
}

TEST_F(SearchRunTest, FileAddedToTheIndexIsFoundAfterAnUpdate) {
    Find("cat", Month());
    Find("dog", Month());
    AddFileToIndex(PutNote({2008, 11, 13}, "new.txt", "a cat"));
    EXPECT_THAT(Find("cat", Month()), ElementsAre("a.txt"));
    MainIndex().Update(2008, 11, 0);
    Find("dog", Month());
    EXPECT_THAT(Find("cat", Month()), ElementsAre("a.txt", "new.txt"));
}

}  // namespace
}  // namespace kalmora
