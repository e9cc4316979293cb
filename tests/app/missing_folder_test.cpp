// The data folder goes, as a drive does that is pulled out, and comes back.
#include "views/paint/missing_folder.h"

#include "app/app_fixture.h"
#include "app/heartbeat.h"
#include "index/index_manager.h"
#include "input/navigation_log.h"
#include "platform/files.h"
#include "store/data_folder.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"

namespace kalmora {
namespace {

constexpr Size kWindow = {960, 700};
constexpr Color kRed = {200, 30, 30};

class MissingFolderTest : public AppTest {
protected:
    MissingFolderTest() {
        for (int day = 1; day <= 30; ++day) AddPicture(2008, 11, day, "a.png", kRed, {400, 300});
        ShowMonth(2008, 11);
        OpenMainWindow(kWindow);
        UpdateObjects(*calendar_);
        EXPECT_TRUE(WaitUntilIdle());
        state_.settings.TimingOfPopup = 3;
        state_.run.LastTickClock = clock_.now.load();
        Pointer({10, 10});
    }
    ~MissingFolderTest() override {
        // The scan of the dates begins again when the folder is back.
        for (int turn = 0; state_.run.InitialScanRunning && turn < 1000; ++turn)
            TheApplication()->ProcessEvents(5);
        WaitUntilIdle();
        LookForDataFolder();
        state_.settings.OutputNavigationLog = false;
    }

    BeatEnd Beat() {
        clock_.now = clock_.now + 3000;
        const BeatEnd end = heartbeat_.Tick();
        EXPECT_TRUE(WaitUntilIdle());
        return end;
    }
    std::string Away() const { return root_ + "/unplugged"; }
    void Unplug() { ASSERT_EQ(files::Rename(MainRoot(), Away()), files::FileResult::Done); }
    void Plug() { ASSERT_EQ(files::Rename(Away(), MainRoot()), files::FileResult::Done); }
    // Inside the card's right edge, where no text is.
    Color CardColor() const { return PixelAt(kWindow.width / 2 + 314, kWindow.height / 2 + 30); }
    Color MemoColor() const {
        return state_.settings.TextStyles[static_cast<std::size_t>(TextKind::Memo)].back;
    }

    TestClock clock_;
};

TEST_F(MissingFolderTest, ViewsSayThatItIsAwayAndShowItAgainWhenItIsBack) {
    ASSERT_EQ(CardColor(), kRed);
    Unplug();
    EXPECT_EQ(Beat(), BeatEnd::Reloaded);
    EXPECT_EQ(CardColor(), MemoColor());
    EXPECT_EQ(Beat(), BeatEnd::Redrawn);
    EXPECT_EQ(CardColor(), MemoColor()) << "it stays there";
    Plug();
    EXPECT_EQ(Beat(), BeatEnd::Reloaded);
    EXPECT_EQ(CardColor(), kRed);
}

TEST_F(MissingFolderTest, EachViewSaysSo) {
    Unplug();
    const auto isSaid = [&] {
        UpdateObjects(*calendar_);
        EXPECT_TRUE(WaitUntilIdle());
        return CardColor() == MemoColor();
    };
    ShowYear(2008);
    EXPECT_TRUE(isSaid());
    ShowDay(2008, 11, 13);
    EXPECT_TRUE(isSaid());
    ShowMonth(2008, 11);
    ChangeView([&](ViewState& view) { view.scatter = true; });
    EXPECT_TRUE(isSaid());
    ChangeView([&](ViewState& view) { view.scatter = false; });
}

TEST_F(MissingFolderTest, NothingIsMadeInItsPlace) {
    state_.settings.OutputNavigationLog = true;
    navigation_.lines.Clear();
    Unplug();
    Beat();
    UpdateObjects(*calendar_);
    EXPECT_TRUE(WaitUntilIdle());
    const std::vector<std::string> lines = navigation_.lines.Take();
    EXPECT_FALSE(lines.empty());
    for (const std::string& line : lines) NavigationLog("%s", line.c_str());
    EXPECT_FALSE(files::Exists(MainRoot()));
}

TEST_F(MissingFolderTest, IndexDoesNotTakeADriveThatIsAwayForAnEmptyOne) {
    IndexManager index(MainRoot());
    Unplug();
    for (int touch = 0; touch < 2; ++touch) index.Load(2008, 11, 0);
    EXPECT_FALSE(index.IsLoaded(2008, 11, 0));
    Plug();
    for (int touch = 0; touch < 2; ++touch) index.Load(2008, 11, 0);
    ASSERT_TRUE(index.IsLoaded(2008, 11, 0));
    EXPECT_EQ(index.FindMonth(2008, 11)->Day(13)->entries.size(), 1u);
    Unplug();
    index.Update(2008, 11, 0);
    EXPECT_EQ(index.FindMonth(2008, 11)->Day(13)->entries.size(), 1u) << "nothing is forgotten";
}

}  // namespace
}  // namespace kalmora
