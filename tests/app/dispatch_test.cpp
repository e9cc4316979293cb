// The table of commands, row by row: what each number does, and whom it asks.
#include "app/dispatch.h"

#include <set>

#include "app/app_fixture.h"
#include "platform/files.h"
#include "store/data_folder.h"
#include "store/date_tree.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class DispatchTest : public AppTest {
protected:
    DispatchTest() {
        ShowMonth(2008, 11);
        ChangeView([&](ViewState& view) { view.period.date.day = 13; });
        OpenMainWindow();
    }
    std::vector<std::string> Run(int id) {
        DispatchCommand(parts_, *window_, id);
        EXPECT_TRUE(WaitUntilIdle());
        return Calls();
    }
    std::string Period() const {
        return std::to_string(static_cast<int>(View().period.level)) + ":" +
               std::to_string(View().period.date.year) + "/" + std::to_string(View().period.date.month) +
               "/" + std::to_string(View().period.date.day);
    }
    std::string PeriodAfter(int id) {
        Run(id);
        return Period();
    }
};

TEST_F(DispatchTest, StepsAndLevels) {
    EXPECT_EQ(PeriodAfter(1010), "2:2009/11/13");
    EXPECT_EQ(PeriodAfter(1013), "2:2008/11/13");
    EXPECT_EQ(PeriodAfter(1011), "2:2008/12/13");
    EXPECT_EQ(PeriodAfter(1012), "2:2008/11/13");
    EXPECT_EQ(PeriodAfter(1017), "1:2008/11/13");
    EXPECT_EQ(PeriodAfter(1017), "1:2008/11/13") << "from a month only";
    ShowDay(2008, 11, 13);
    EXPECT_EQ(PeriodAfter(1018), "2:2008/11/13");
    EXPECT_EQ(PeriodAfter(1018), "1:2008/11/13");
    ShowMonth(2008, 11);
    EXPECT_EQ(PeriodAfter(1019), "4:2008/11/15") << "no day of that month has a folder";
}

TEST_F(DispatchTest, TodayAndSomewhere) {
    const SystemTime before = LocalTime();
    Run(1014);
    EXPECT_EQ(View().period.level, Level::Day);
    EXPECT_THAT(View().period.date.year, testing::AnyOf(before.year, LocalTime().year));
    AddText(1999, 5, 6, "a.txt", "cat");
    TheDateTree().ScanAll(MainRoot());
    ShowMonth(2008, 11);
    state_.run.TicksInView = 1000;
    EXPECT_EQ(PeriodAfter(1015), "2:1999/5/" + std::to_string(View().period.date.day));
}

TEST_F(DispatchTest, ShowAndHide) {
    EXPECT_THAT(Run(1020), ElementsAre("HideFilterWindow"));
    EXPECT_TRUE(window_->IsVisible()) << "without a tray and a window manager it could never be called back";
    window_->Hide();
    state_.run.MainWindowVisible = 0;
    EXPECT_THAT(Run(1001), IsEmpty());
    EXPECT_TRUE(window_->IsVisible());
    EXPECT_EQ(state_.run.MainWindowVisible, 1);
}

TEST_F(DispatchTest, ExitClosesTheWindow) {
    DispatchCommand(parts_, *window_, 1002);
    EXPECT_THAT(Calls(), ElementsAre("HideSlide", "HideNeighbor", "HidePetals", "HideFilterWindow"));
    EXPECT_EQ(state_.run.MainWindowVisible, 0);
    EXPECT_FALSE(window_->Draw());
}

TEST_F(DispatchTest, ReloadReadsThePeriodAnew) {
    StartLog();
    Run(1021);
    EXPECT_THAT(Logged(), HasSubstr("Reload (2008/11)\n"));
    AddText(2008, 11, 13, "new.txt", "cat");
    Run(1021);
    EXPECT_EQ(calendar_->MonthOf(2008, 11).ObjectCount(), 1);
    ShowDay(2008, 11, 13);
    Run(1021);
    EXPECT_THAT(Logged(), HasSubstr("Reload (2008/11/13)\n"));
    ShowYear(2008);
    Run(1021);
    EXPECT_EQ(calendar_->SlotOf(2008).year, 2008);
}

TEST_F(DispatchTest, ReloadLeavesTheScatterAlone) {
    ChangeView([&](ViewState& view) { view.scatter = true; });
    StartLog();
    Run(1021);
    EXPECT_THAT(Logged(), testing::Not(HasSubstr("Reload (")));
}

TEST_F(DispatchTest, SwitchesGoBothWays) {
    const std::pair<int, SharedFlag*> switches[] = {{1023, &state_.settings.AutoNavigate},
                                                    {1024, &state_.settings.PublicMode},
                                                    {1025, &state_.settings.GoodMode},
                                                    {1027, &state_.run.Paused}};
    for (const auto& [id, flag] : switches) {
        *flag = 0;
        Run(id);
        EXPECT_EQ(*flag, 1) << id;
        Run(id);
        EXPECT_EQ(*flag, 0) << id;
    }
    Run(1022);
    EXPECT_TRUE(View().scatter);
    Run(1022);
    EXPECT_FALSE(View().scatter);
}

// ---- music

TEST_F(DispatchTest, SoundWithoutMusicIsOnAndSilent) {
    state_.settings.SoundMode = 0;
    EXPECT_THAT(Run(1026), ElementsAre("StopMusic"));
    EXPECT_EQ(state_.settings.SoundMode, 1);
    EXPECT_THAT(Run(1026), ElementsAre("StopMusic"));
    EXPECT_EQ(state_.settings.SoundMode, 0);
}

TEST_F(DispatchTest, MusicStepsAndWraps) {
    for (const char* name : {"a.mp3", "b.mp3", "c.mp3"})
        calendar_->backgrounds.AddMusic(AddFile(root_, name, "music"), true);
    calendar_->backgrounds.SetValid();
    state_.settings.SoundMode = 1;
    EXPECT_THAT(Run(1031), ElementsAre("StopMusic", "PlayMusic c.mp3")) << "back from the first to the last";
    EXPECT_THAT(Run(1030), ElementsAre("StopMusic", "PlayMusic a.mp3"));
    EXPECT_THAT(Run(1030), ElementsAre("StopMusic", "PlayMusic b.mp3"));
    state_.settings.SoundMode = 0;
    EXPECT_THAT(Run(1030), ElementsAre("StopMusic")) << "it moves on in silence";
    files::RemoveFile(files::Join(root_, "a.mp3"));
    state_.settings.SoundMode = 1;
    EXPECT_THAT(Run(1030), ElementsAre("StopMusic")) << "the file is gone";
    state_.settings.SoundMode = 0;
    EXPECT_THAT(Run(1026), ElementsAre("StopMusic", "PlayMusic b.mp3")) << "turned on, the next one plays";
}

// ---- what other rooms do

TEST_F(DispatchTest, EachOfTheOthersReachesItsRoom) {
    const std::pair<int, std::vector<std::string>> rows[] = {
        {1041, {"AskForSearch"}},    {1043, {"UpdateMonth 200811"}},
        {1046, {"GetAmazon"}},       {1047, {"GetTravel"}},
        {1049, {"GetTwitter"}},      {1051, {"OpenSlide"}},
        {1053, {"ForwardSlide"}},    {1054, {"BackwardSlide"}},
        {1057, {"FlipViewOfSlide"}}, {1058, {"DeleteSlide"}},
        {1200, {"Import"}},          {2000, {"ShootDesktop"}},
        {2001, {"ShootWindow"}},     {2002, {"ScrapSelection"}},
        {2005, {"ScrapClipboard"}},
    };
    for (const auto& [id, calls] : rows) EXPECT_EQ(Run(id), calls) << id;
}

TEST_F(DispatchTest, TurnsReachTheWindowThatIsShown) {
    for (const int id : {1060, 1061, 1062}) {
        slideShow_.shown = neighbor_.shown = false;
        EXPECT_THAT(Run(id), IsEmpty());
        neighbor_.shown = true;
        EXPECT_THAT(Run(id), ElementsAre("SayNeighbor \"Rotating\" 100")) << "it has no picture";
        slideShow_.shown = true;
        EXPECT_THAT(Run(id), ElementsAre("SaySlide \"Rotating\" 100"));
    }
}

TEST_F(DispatchTest, SearchResultMovesToAFreshScatter) {
    const int ring = state_.run.AllRing;
    Run(1041);
    EXPECT_EQ(state_.run.AllRing, ring);
    others_.searchAnswer = true;
    Run(1041);
    EXPECT_EQ(state_.run.AllRing, (ring + 1) % kRingSize);
}

TEST_F(DispatchTest, MissingCalendarLibraryIsLogged) {
    StartLog();
    EXPECT_THAT(Run(1048), IsEmpty());
    EXPECT_THAT(Logged(), HasSubstr("OrbinLib"));
}

TEST_F(DispatchTest, SlideShowOpensByCommandAndCloses) {
    Run(1051);
    EXPECT_EQ(state_.run.SlideOpenedByCommand, 1);
    EXPECT_THAT(Run(1052), IsEmpty()) << "nothing is open";
    EXPECT_EQ(state_.run.SlideOpenedByCommand, 1);
    slideShow_.shown = neighbor_.shown = true;
    EXPECT_THAT(Run(1052), ElementsAre("HideSlide", "HideNeighbor"));
    EXPECT_EQ(state_.run.SlideOpenedByCommand, 0);
}

TEST_F(DispatchTest, NextAndPreviousGoToWhatIsOpen) {
    StartLog();
    EXPECT_THAT(Run(1055), IsEmpty());
    slideShow_.shown = true;
    EXPECT_THAT(Run(1055), ElementsAre("NextSlide"));
    EXPECT_THAT(Run(1056), ElementsAre("PreviousSlide"));
    neighbor_.shown = true;
    EXPECT_THAT(Run(1055), ElementsAre("NextSlide", "NextNeighbor"));
    slideShow_.shown = false;
    EXPECT_THAT(Run(1056), ElementsAre("PreviousNeighbor"));
    Run(1058);
    for (const char* word : {"Next.\n", "Prev.\n", "Delete\n"}) EXPECT_THAT(Logged(), HasSubstr(word));
}

TEST_F(DispatchTest, EditorIsOpenedOnceAndClosedOnce) {
    EXPECT_THAT(Run(1059), ElementsAre("OpenEditorAndPaste"));
    EXPECT_THAT(Run(40290), IsEmpty());
    others_.editorOpen = true;
    EXPECT_THAT(Run(1059), IsEmpty());
    EXPECT_THAT(Run(40290), ElementsAre("CloseEditor"));
}

TEST_F(DispatchTest, EditingCommandsGoToTheEditor) {
    for (int id = 40270; id <= 40292; ++id) {
        const bool isForwarded = (id >= 40271 && id <= 40286) || id == 40291;
        const std::vector<std::string> calls = Run(id);
        if (isForwarded)
            EXPECT_THAT(calls, ElementsAre("Edit " + std::to_string(id)));
        else
            EXPECT_THAT(calls, IsEmpty()) << id;
    }
}

TEST_F(DispatchTest, PasteIntoASlideNeedsAnOpenSlideShow) {
    EXPECT_THAT(Run(1063), IsEmpty());
    slideShow_.shown = true;
    EXPECT_THAT(Run(1063), ElementsAre("PasteIntoSlide"));
}

TEST_F(DispatchTest, RatingGoesToTheSlideShowBeforeTheNeighbor) {
    for (int id = 1100; id <= 1106; ++id) {
        const std::string type = std::to_string(id - 1099);
        slideShow_.shown = neighbor_.shown = false;
        EXPECT_THAT(Run(id), IsEmpty());
        neighbor_.shown = true;
        EXPECT_THAT(Run(id), ElementsAre("RateNeighbor " + type));
        slideShow_.shown = true;
        EXPECT_THAT(Run(id), ElementsAre("RateSlide " + type));
    }
}

TEST_F(DispatchTest, ThumbnailsChangeInTheScatterOnlyAndNotUnderASlideShow) {
    state_.settings.ThumbnailMaxSize = 240;
    Run(1120);
    EXPECT_EQ(state_.settings.ThumbnailMaxSize, 240);
    ChangeView([&](ViewState& view) { view.scatter = true; });
    Run(1120);
    EXPECT_EQ(state_.settings.ThumbnailMaxSize, 250);
    Run(1121);
    Run(1121);
    EXPECT_EQ(state_.settings.ThumbnailMaxSize, 230);
    slideShow_.shown = true;
    Run(1120);
    Run(1121);
    EXPECT_EQ(state_.settings.ThumbnailMaxSize, 230);
}

TEST_F(DispatchTest, ThumbnailsOfTenPixelsGetNoSmaller) {
    ChangeView([&](ViewState& view) { view.scatter = true; });
    state_.settings.ThumbnailMaxSize = 11;
    Run(1121);
    EXPECT_EQ(state_.settings.ThumbnailMaxSize, 1);
    state_.settings.ThumbnailMaxSize = 10;
    Run(1121);
    EXPECT_EQ(state_.settings.ThumbnailMaxSize, 10);
    Run(1120);
    EXPECT_EQ(state_.settings.ThumbnailMaxSize, 20);
}

// ---- the way in

TEST_F(DispatchTest, NumbersWithoutARowDoNothingButCountAsActivity) {
    const std::string before = Period();
    for (const int id :
         {0,    1000, 1003, 1009, 1028, 1029, 1032, 1040,  1042,  1045,  1064,  1099,  1107, 1119,
          1122, 1199, 1201, 2003, 2004, 2006, 2007, 40287, 40289, 40292, 50040, 65535, -1}) {
        state_.run.LastActivity = -1;
        EXPECT_THAT(Run(id), IsEmpty()) << id;
        EXPECT_GE(state_.run.LastActivity, 0) << id;
    }
    EXPECT_EQ(Period(), before);
}

TEST_F(DispatchTest, OnlyTheLowSixteenBitsCount) {
    EXPECT_THAT(Run(0x10000 + 1200), ElementsAre("Import"));
    EXPECT_THAT(Run(static_cast<int>(0xABCD0000u) + 2000), ElementsAre("ShootDesktop"));
}

// 50040 is F5.
TEST_F(DispatchTest, KeysAreTranslatedAndOthersAreNot) {
    keys_.LoadKeyText("Import Files\tF5\n", KeyContext::Main);
    state_.run.LastActivity = -1;
    EXPECT_TRUE(RouteCommand(parts_, *window_, 50040));
    EXPECT_THAT(Calls(), ElementsAre("Import"));
    EXPECT_FALSE(RouteCommand(parts_, *window_, 50041))
        << "a key without a command: it is passed on to the window";
    EXPECT_FALSE(RouteCommand(parts_, *window_, 59999));
    EXPECT_GE(state_.run.LastActivity, 0);
    EXPECT_TRUE(RouteCommand(parts_, *window_, 2000));
    EXPECT_THAT(Calls(), ElementsAre("ShootDesktop"));
    EXPECT_TRUE(RouteCommand(parts_, *window_, 49999));
    EXPECT_TRUE(RouteCommand(parts_, *window_, 60000));
}

}  // namespace
}  // namespace kalmora
