// Searching while the index is loaded, updated, stopped and added to, and while the view moves on.
#include <atomic>
#include <thread>

#include "search/search_fixture.h"

namespace kalmora {
namespace {

class SearchThreadsTest : public SearchTest {
protected:
    static constexpr int kRounds = 12;

    SearchThreadsTest() {
        for (const int month : {10, 11, 12})
            for (int day = 1; day <= 28; day += 9) PutNote({2008, month, day}, "a.txt", "a cat");
    }
};

TEST_F(SearchThreadsTest, SearchesBesideLoadsUpdatesStopsAndOtherViewsEndWellAndAreRightAfterwards) {
    std::atomic<bool> over = false;
    probe.onProgress = [](double, const std::string&) {};
    std::vector<std::thread> others;
    const auto meanwhile = [&](auto work) {
        others.emplace_back([&over, work] {
            for (int round = 0; !over; ++round) work(round);
        });
    };
    meanwhile([](int round) { MainIndex().Update(2008, 10 + round % 3, 0); });
    meanwhile([](int round) { MainIndex().Load(2008, 10 + round % 3, 0); });
    meanwhile([](int round) {
        ChangeView([&](ViewState& view) { view.period.date.month = 10 + round % 3; });
        SetSearchText(round % 2 ? "cat" : "dog");
        if (round % 50 == 0) StopIndexing("test");
        std::this_thread::yield();
    });
    meanwhile([this](int round) {
        AddFileToIndex(PutNote({2008, 11, 28}, "new" + std::to_string(round % 3) + ".txt", "a dog"));
    });
    meanwhile([](int round) {
        StopSource stop;
        if (round % 5 == 0) stop.RequestStop();
        Search(round % 2 ? "cat" : "a", SearchScope::View, Year(), stop.Token());
        for (const FoundDay& day : *CurrentSearchResult())
            for (std::size_t i = 0; i < day.positions.size(); ++i) ASSERT_FALSE(day.Entry(i).path.empty());
    });
    for (int round = 0; round < kRounds; ++round) {
        const Period views[] = {Month(10 + round % 3), Year(), Day(10)};
        const SearchResult found =
            Search(round % 2 ? "cat" : "cat or bird", round % 5 ? SearchScope::View : SearchScope::AllLoaded,
                   views[round % 3], kNeverStopped);
        for (const FoundDay& day : *found) ASSERT_FALSE(day.positions.empty());
    }
    over = true;
    for (std::thread& other : others) other.join();
    probe.onProgress = nullptr;
    MainIndex().Update(2008, 11, 0);
    MainIndex().Update(2008, 11, 0);
    ResetSearch();
    EXPECT_EQ(Find("cat", Month()).size(), 4u);
}

}  // namespace
}  // namespace kalmora
