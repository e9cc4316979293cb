// The index works while the user goes from view to view.
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include "app/connect_index.h"
#include "index/day_index.h"
#include "index/index_manager.h"
#include "index/update.h"
#include "platform/files.h"
#include "search/search_run.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/bar/button_bar.h"
#include "views/load/object_loader.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

class IndexBesideView : public ViewTest {
protected:
    IndexBesideView() {
        for (const int month : {11, 12})
            for (int day = 1; day <= 9; day += 4) {
                AddText(2008, month, day, "note.txt", "a note");
                AddPicture(2008, month, day, "p.png", {200, 100, 50});
            }
        ResetIndexes();
        ResetSearch();
        OpenWindow({640, 480});
        ConnectIndex();
    }
    ~IndexBesideView() override {
        ResetDateTree();
        ResetSearch();
        ResetIndexes();
    }
};

TEST_F(IndexBesideView, AllAtOnce) {
    State().settings.NumberOfLoadIndex = 1;
    std::atomic<bool> done = false;
    const std::vector<std::function<void(int round)>> jobs{
        [](int round) { UpdateMonthOfBothRoots(2008, 11 + round % 2); },
        [](int) { PreloadIndexes(); },
        [](int) { MainIndex().Load(2008, 0, 0); },
        [&](int round) { AddFileToIndex(DayFolder(2008, 11, 1) + (round % 2 ? "/note.txt" : "/new.txt")); },
        [](int) {
            Search("note", SearchScope::View, {Level::Year, 2008, 0, 0}, StopToken());
        },
        [](int) { TheDateTree().Scan(MainRoot(), true); }};
    std::vector<std::thread> threads;
    for (const auto& job : jobs)
        threads.emplace_back([&job, &done] {
            for (int round = 0; !done; ++round) job(round);
        });
    for (int round = 0; round < 12; ++round) {
        switch (round % 4) {
            case 0:
                ShowMonth(2008, 11);
                break;
            case 1:
                ShowDay(2008, 11, 5);
                break;
            case 2:
                ShowYear(2008);
                break;
            default:
                ShowMonth(2008, 12);
                break;
        }
        UpdateObjects(*calendar_);
        SetButtonStates();
        WaitUntilIdle();
        if (round % 3 == 2) StopIndexing("the user");
    }
    done = true;
    for (std::thread& thread : threads) thread.join();
    // Each call may take back one stop request of those that came last.
    for (int i = 0; i < 4; ++i) UpdateMonthOfBothRoots(2008, 11);
    DayIndex day;
    day.dataRoot = State().settings.DataDirectory;
    ASSERT_TRUE(day.Load(2008, 11, 5));
    EXPECT_EQ(day.entries.size(), 2u);
    EXPECT_TRUE(WaitUntilIdle());
}

}  // namespace
}  // namespace kalmora
