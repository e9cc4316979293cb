#include "views/button_bar.h"

#include "search/search_run.h"
#include "unit/views/view_fixture.h"
#include "views/commands.h"
#include "views/hooks.h"

namespace kalmora {
namespace {

class ButtonBarTest : public ViewTest {
protected:
    ButtonBarTest() {
        ShowMonth(2008, 11);
        OpenWindow({960, 700});
        SetButtonStates();
    }
    static const ButtonInfo* Find(const std::vector<ButtonInfo>& buttons, const std::string& name) {
        for (const ButtonInfo& button : buttons)
            if (button.name == name) return &button;
        return nullptr;
    }
    static bool IsVisible(const std::string& name) { return Find(VisibleButtons(), name) != nullptr; }
    static Point Middle(const Rect& area) { return {area.x + area.width / 2, area.y + area.height / 2}; }
};

TEST_F(ButtonBarTest, DateLabelStandsAtTheLowerLeft) {
    const auto buttons = VisibleButtons();
    ASSERT_GE(buttons.size(), 2u);
    EXPECT_EQ(buttons[0].name, "2008年11月");
    EXPECT_EQ(buttons[0].area.x, 5);
    EXPECT_EQ(buttons[0].area.Bottom(), 695);
    EXPECT_EQ(buttons[0].area.height, 38);
    EXPECT_EQ(buttons[1].area.x, buttons[0].area.Right() + 5);
}

TEST_F(ButtonBarTest, ImageButtonsRunFromTheRightEdgeToTheLeft) {
    const auto buttons = VisibleButtons();
    const ButtonInfo* help = Find(buttons, "Help");
    const ButtonInfo* filter = Find(buttons, "Filter");
    ASSERT_TRUE(help && filter);
    EXPECT_EQ(help->area.Right(), 960 - 5);
    EXPECT_EQ(filter->area.Right(), help->area.x - 5);
    EXPECT_EQ(help->area.Bottom(), 695);
}

TEST_F(ButtonBarTest, HiddenButtonTakesNoRoom) {
    State().ShowButtonHelp = false;
    SetButtonStates();
    const auto buttons = VisibleButtons();
    EXPECT_FALSE(Find(buttons, "Help"));
    EXPECT_EQ(Find(buttons, "Filter")->area.Right(), 960 - 5);
}

TEST_F(ButtonBarTest, ClearNextSettingHidesNextTwoAndLeavesNext) {
    State().ShowButtonNext = false;
    SetButtonStates();
    EXPECT_FALSE(IsVisible("Next 2"));
    EXPECT_TRUE(IsVisible("Next"));
}

TEST_F(ButtonBarTest, YearHidesTheLevelLabelAndSearchTakesItsPlace) {
    const Rect level = VisibleButtons()[1].area;
    ShowYear(2008);
    State().SearchResultMode = 1;
    SetSearchText("花火");
    SetButtonStates();
    const auto buttons = VisibleButtons();
    EXPECT_EQ(buttons[1].name, "花火");
    EXPECT_EQ(buttons[1].area.y, level.y);
    EXPECT_EQ(buttons[1].area.x, buttons[0].area.Right() + 5);
}

TEST_F(ButtonBarTest, WideningTheWindowMovesTheButtons) {
    window_->SetFrame({0, 0, 1200, 700});
    ASSERT_TRUE(Settle());
    SetButtonStates();
    EXPECT_EQ(Find(VisibleButtons(), "Help")->area.Right(), 1200 - 5);
}

TEST_F(ButtonBarTest, PressRunsTheButtonsCommand) {
    std::vector<int> commands;
    Hooks().RunCommand = [&](int id) { commands.push_back(id); };
    const auto buttons = VisibleButtons();
    EXPECT_EQ(PressButton(Middle(Find(buttons, "Next")->area)), ButtonPress::Done);
    EXPECT_EQ(PressButton(Middle(Find(buttons, "Prev 2")->area)), ButtonPress::Done);
    EXPECT_EQ(PressButton(Middle(buttons[0].area)), ButtonPress::Done);
    EXPECT_EQ(PressButton(Middle(buttons[1].area)), ButtonPress::Done);
    EXPECT_THAT(commands, testing::ElementsAre(1011, 1013, 1050, 1017));
    EXPECT_EQ(PressButton({480, 300}), ButtonPress::None);
}

TEST_F(ButtonBarTest, PressOnTheHiddenPlaceOfAButtonDoesNothing) {
    const Rect help = Find(VisibleButtons(), "Help")->area;
    const Rect filter = Find(VisibleButtons(), "Filter")->area;
    State().ShowButtonHelp = State().ShowButtonFilter = false;
    SetButtonStates();
    std::vector<int> commands;
    Hooks().RunCommand = [&](int id) { commands.push_back(id); };
    PressButton(Middle(help));
    PressButton(Middle(filter));
    EXPECT_THAT(commands, testing::ElementsAre(kCommandImport, kCommandSearch))
        << "what has moved up is pressed";
}

TEST_F(ButtonBarTest, IndexingFlipsAndStopsTheRunningRefresh) {
    State().ShowButtonIndexing = true;
    State().IndexingEnabled = 0;
    SetButtonStates();
    int stops = 0;
    Hooks().StopIndexing = [&](const char*) { ++stops; };
    const Point place = Middle(Find(VisibleButtons(), "Indexing")->area);
    PressButton(place);
    EXPECT_EQ(State().IndexingEnabled, 1);
    EXPECT_EQ(stops, 0);
    PressButton(place);
    EXPECT_EQ(State().IndexingEnabled, 0);
    EXPECT_EQ(stops, 1);
}

TEST_F(ButtonBarTest, TitleFollowsThePeriod) {
    SetCaption();
    EXPECT_EQ(window_->Title(), "Kalmora [2008/11] (" + root_ + "/files/2008/200811)");
}

TEST_F(ButtonBarTest, ProgressGaugeFillsToItsRatio) {
    ShowProgress(0.5, "Loading");
    const int y = 700 - 38 - 35 + 2;
    EXPECT_EQ(PixelAt(960 - 410 + 3, y), ColorFromBgr(0xC86432));
    EXPECT_EQ(PixelAt(960 - 14, y), ColorFromBgr(0xB4B4B4));
}

TEST_F(ButtonBarTest, ProgressWithoutATextDrawsNothing) {
    const Color before = PixelAt(960 - 407, 629);
    ShowProgress(1.0, "");
    EXPECT_EQ(PixelAt(960 - 407, 629), before);
}

}  // namespace
}  // namespace kalmora
