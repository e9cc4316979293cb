// The views while a query is in force.
#include "views/load/search_view.h"

#include "base/progress_listener.h"
#include "index/index_manager.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "search/search_run.h"
#include "store/data_folder.h"
#include "views/bar/button_bar.h"
#include "views/control/press_button.h"
#include "views/control/search_mode.h"
#include "views/load/month_loader.h"
#include "views/load/object_loader.h"
#include "views/load/viewer_load.h"
#include "views/model/calendar_store.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class SearchViewTest : public ViewTest {
protected:
    SearchViewTest() {
        AddText(2008, 11, 13, "cat.txt", "a cat");
        AddText(2008, 11, 13, "dog.txt", "a dog");
        AddText(2008, 11, 20, "late.txt", "a cat");
        AddText(2008, 12, 1, "december.txt", "a cat");
        AddText(2009, 1, 1, "other_year.txt", "a cat");
        ShowMonth(2008, 11);
        ChangeView([&](ViewState& view) { view.period.date.day = 13; });
        OpenWindow({960, 700});
    }
    ~SearchViewTest() override {
        ChangeView([](ViewState& view) { view.scatter = false; });
    }

    static std::string NameOf(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }
    void Show(const std::string& query) {
        BeginSearch(*calendar_, query);
        Reload();
    }
    void Reload() {
        UpdateObjects(*calendar_);
        ASSERT_TRUE(WaitUntilIdle());
    }
    std::vector<std::string> InCell(int month, int day) {
        std::lock_guard lock(calendar_->SlotOf(2008).mutex);
        std::vector<std::string> names;
        for (const DayEntry& entry :
             calendar_->MonthOf(2008, month).days[static_cast<std::size_t>(day - 1)].objects)
            names.push_back(NameOf(entry.path));
        return names;
    }
    static std::vector<std::string> In(const ObjectList& list) {
        std::vector<std::string> names;
        for (const PlacedObjectPtr& object : list.Snapshot()) names.push_back(NameOf(object->photo->path));
        return names;
    }
    std::vector<std::string> InScatter() { return In(calendar_->CurrentAllViewer().objects); }
};

TEST_F(SearchViewTest, MonthShowsWhatWasFound) {
    Reload();
    EXPECT_THAT(InCell(11, 13), ElementsAre("cat.txt", "dog.txt"));
    Show("cat");
    EXPECT_THAT(InCell(11, 13), ElementsAre("cat.txt"));
    EXPECT_THAT(InCell(11, 20), ElementsAre("late.txt"));
    Show("dog");
    EXPECT_THAT(InCell(11, 13), ElementsAre("dog.txt"));
    EXPECT_THAT(InCell(11, 20), IsEmpty());
}

TEST_F(SearchViewTest, YearShowsWhatWasFound) {
    ShowYear(2008);
    Show("cat");
    EXPECT_THAT(InCell(11, 13), ElementsAre("cat.txt"));
    EXPECT_THAT(InCell(12, 1), ElementsAre("december.txt"));
}

TEST_F(SearchViewTest, DayShowsWhatWasFound) {
    ShowDay(2008, 11, 13);
    Show("cat");
    EXPECT_THAT(In(calendar_->CurrentDayViewer().objects), ElementsAre("cat.txt"));
}

TEST_F(SearchViewTest, ScatterShowsWhatWasFoundInItsPeriod) {
    ChangeView([&](ViewState& view) { view.scatter = true; });
    Show("cat");
    EXPECT_THAT(InScatter(), UnorderedElementsAre("cat.txt", "late.txt"));
    ShowYear(2008);
    Reload();
    EXPECT_THAT(InScatter(), UnorderedElementsAre("cat.txt", "late.txt", "december.txt"));
    ShowDay(2008, 11, 20);
    Reload();
    EXPECT_THAT(InScatter(), ElementsAre("late.txt"));
}

TEST_F(SearchViewTest, OtherPeriodIsSearchedWhenItIsShown) {
    Show("cat");
    ChangeView([&](ViewState& view) { view.period.date.month = 12; });
    Reload();
    EXPECT_THAT(InCell(12, 1), ElementsAre("december.txt"));
}

TEST_F(SearchViewTest, EmptyResultIsAnEmptyView) {
    Show("no such word");
    for (int day = 1; day <= 30; ++day) EXPECT_THAT(InCell(11, day), IsEmpty());
}

TEST_F(SearchViewTest, AllLoadedTurnsToAScatterOfEverythingFound) {
    MainIndex().Load(2009, 1, 0);
    MainIndex().Load(2008, 12, 0);
    ChangeView([&](ViewState& view) { view.searchAllLoaded = true; });
    Show("cat");
    EXPECT_TRUE(View().scatter);
    EXPECT_THAT(InScatter(), UnorderedElementsAre("december.txt", "other_year.txt"));
    ChangeView([&](ViewState& view) { view.scatter = false; });
    Reload();
    EXPECT_FALSE(View().scatter) << "the result stays, and the user may look at it in another view";
    EXPECT_THAT(InCell(11, 13), IsEmpty());
}

TEST_F(SearchViewTest, EndingItBringsTheFoldersBack) {
    Show("cat");
    EndSearch(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_FALSE(View().searchResult);
    EXPECT_THAT(InCell(11, 13), ElementsAre("cat.txt", "dog.txt"));
}

TEST_F(SearchViewTest, LoadListsForTheViewOfItsRequestAndNotForALaterOne) {
    ShowDay(2008, 11, 13);
    const LoadRequest before{View(), StopToken()};
    Show("cat");
    const LoadRequest during{View(), StopToken()};
    LoadDayViewer(*calendar_, before, StopToken());
    EXPECT_THAT(In(calendar_->CurrentDayViewer().objects), UnorderedElementsAre("cat.txt", "dog.txt"));
    ChangeView([](ViewState& view) { view.searchResult = false; });
    LoadDayViewer(*calendar_, during, StopToken());
    EXPECT_THAT(In(calendar_->CurrentDayViewer().objects), ElementsAre("cat.txt"));
    LoadAllViewer(*calendar_, during, StopToken());
    EXPECT_THAT(InScatter(), ElementsAre("cat.txt"));
    LoadMonth({*calendar_, during.view, MainRoot(), {false, false, false}}, 11, StopToken());
    EXPECT_THAT(InCell(11, 13), ElementsAre("cat.txt"));
}

TEST_F(SearchViewTest, LabelShowsTheQueryAndEndsTheSearch) {
    const auto label = [] {
        for (const ButtonInfo& button : VisibleButtons())
            if (button.name == "cat") return button.area;
        return Rect{};
    };
    EXPECT_TRUE(label().IsEmpty());
    Show("cat");
    const Rect area = label();
    ASSERT_FALSE(area.IsEmpty());
    EXPECT_EQ(PressButton(*calendar_, {area.x + area.width / 2, area.y + area.height / 2}),
              ButtonPress::Done);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_FALSE(View().searchResult);
    EXPECT_TRUE(label().IsEmpty());
    EXPECT_THAT(InCell(11, 13), ElementsAre("cat.txt", "dog.txt"));
}

TEST_F(SearchViewTest, ReloadShowsTheResultAgain) {
    Show("cat");
    AddText(2008, 11, 13, "cat2.txt", "a cat");
    ReloadView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_THAT(InCell(11, 13), ElementsAre("cat.txt"));
}

// Where an index is loaded, and how far.
class IndexProgress final : public ProgressListener {
public:
    void OnProgress(double, const std::string& text) override {
        if (TheApplication()->IsGuiThread()) ++onGuiThread;
        if (!text.starts_with("Loading")) return;
        ++loading;
        while (isHeld && !State().run.ObjectGate.IsStopRequested()) SleepMs(1);
    }
    std::atomic<int> loading = 0, onGuiThread = 0;
    std::atomic<bool> isHeld = false;  // until the view's load is asked to leave
};

class SearchLoadTest : public SearchViewTest {
protected:
    SearchLoadTest() { ResetIndexes({{}, &progress_}); }
    ~SearchLoadTest() override {
        WaitUntilIdle();
        ResetIndexes();
    }
    void ExpectLoadBesideTheWindow() {
        Show("cat");
        EXPECT_GT(progress_.loading, 0) << "it is shown";
        EXPECT_EQ(progress_.onGuiThread, 0);
    }
    IndexProgress progress_;
};

TEST_F(SearchLoadTest, IndexOfADayIsNotLoadedOnTheGuiThread) {
    ShowDay(2008, 11, 13);
    ExpectLoadBesideTheWindow();
}

TEST_F(SearchLoadTest, IndexOfAScatterIsNotLoadedOnTheGuiThread) {
    ShowYear(2008);
    ChangeView([](ViewState& view) { view.scatter = true; });
    ExpectLoadBesideTheWindow();
}

TEST_F(SearchLoadTest, IndexOfAllThatIsLoadedIsNotLoadedOnTheGuiThread) {
    ChangeView([](ViewState& view) { view.searchAllLoaded = true; });
    ExpectLoadBesideTheWindow();
    EXPECT_TRUE(View().scatter);
}

TEST_F(SearchLoadTest, ViewThatIsLeftStopsTheLoadForItsSearch) {
    progress_.isHeld = true;
    BeginSearch(*calendar_, "cat");
    UpdateObjects(*calendar_);
    while (progress_.loading == 0) SleepMs(1);
    ChangeView([](ViewState& view) { view.searchResult = false; });
    UpdateObjects(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(progress_.loading, 1) << "no day more";
}

TEST_F(SearchViewTest, FoundFilesCountAsWhatTheyAre) {
    AddFile(DayFolder(2008, 11, 13), "find me.mp3", "x");
    AddFile(DayFolder(2008, 11, 13), "find me.doc", "x");
    AddPicture(2008, 11, 13, "back find me.png", {1, 2, 3});
    AddPicture(2008, 11, 13, "find me.png", {1, 2, 3});
    const std::string gone = AddText(2008, 11, 13, "find me gone.txt", "x");
    MainIndex().Load(2008, 11, 0);
    files::RemoveFile(gone);
    Show("me.");
    EXPECT_THAT(InCell(11, 13), ElementsAre("find me.png")) << "as if they lay in the folder";
    EXPECT_THAT(slideShow_.slides.Take(), ElementsAre(DayFolder(2008, 11, 13) + "/find me.png"));
    EXPECT_TRUE(calendar_->backgrounds.HasMusic(DayFolder(2008, 11, 13) + "/find me.mp3"));
}

TEST_F(SearchViewTest, FolderIsComparedWithoutCaseAndToItsEnd) {
    Show("cat");
    std::vector<std::string> names;
    const auto found = [&](const std::string& path) { names.push_back(NameOf(path)); };
    const auto below = [&](const std::string& folder) {
        names.clear();
        ForEachFound(folder, StopToken(), found);
        return names;
    };
    const std::string day = DayFolder(2008, 11, 13);
    EXPECT_THAT(below(day), ElementsAre("cat.txt"));
    std::string other = day;
    for (char& c : other) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_THAT(below(other), ElementsAre("cat.txt"));
    EXPECT_THAT(below(day.substr(0, day.size() - 1)), IsEmpty()) << "another folder's name begins like it";
    EXPECT_THAT(below(DayFolder(2008, 11, 0)), ElementsAre("cat.txt", "late.txt"));
    EXPECT_THAT(below(""), ElementsAre("cat.txt", "late.txt"));
}

TEST_F(SearchViewTest, StopEndsTheWalkOverTheResult) {
    ChangeView([&](ViewState& view) { view.scatter = true; });
    Show("cat");
    StopSource stop;
    int count = 0;
    ForEachFound({}, stop.Token(), [&](const std::string&) {
        ++count;
        stop.RequestStop();
    });
    EXPECT_EQ(count, 1);
}

}  // namespace
}  // namespace kalmora
