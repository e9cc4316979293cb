#include "views/bar/button_bar.h"

#include <algorithm>

#include "base/log.h"
#include "pictures/res_pictures.h"
#include "platform/files.h"
#include "search/search_run.h"
#include "views/bar/button_parts.h"
#include "views/bar/button_rows.h"
#include "views/control/press_button.h"
#include "views/paint/paint_base.h"
#include "views/view_fixture.h"

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
    State().settings.ShowButtonHelp = false;
    SetButtonStates();
    const auto buttons = VisibleButtons();
    EXPECT_FALSE(Find(buttons, "Help"));
    EXPECT_EQ(Find(buttons, "Filter")->area.Right(), 960 - 5);
}

TEST_F(ButtonBarTest, ClearNextSettingHidesNextTwoAndLeavesNext) {
    State().settings.ShowButtonNext = false;
    SetButtonStates();
    EXPECT_FALSE(IsVisible("Next 2"));
    EXPECT_TRUE(IsVisible("Next"));
}

TEST_F(ButtonBarTest, PrevTwoStandsByTheHeightOfPrev) {
    TheButtonParts().images[kPrev]->height = 80;
    SetButtonStates();
    EXPECT_EQ(Find(VisibleButtons(), "Prev 2")->area.y, 700 - 80 - 5);
}

TEST_F(ButtonBarTest, WithEverySettingClearTheLabelsAndNextAreLeft) {
    for (const ButtonRow& row : kButtonRows)
        if (row.setting) State().settings.*row.setting = false;
    SetButtonStates();
    std::vector<std::string> names;
    for (const ButtonInfo& button : VisibleButtons()) names.push_back(button.name);
    EXPECT_THAT(names, testing::ElementsAre("2008年11月", "年表示", "Next"));
    EXPECT_EQ(VisibleButtons().back().area.Right(), 960 - 5);
}

TEST_F(ButtonBarTest, WithEverySettingOnAllStandInOrder) {
    for (const ButtonRow& row : kButtonRows)
        if (row.setting) State().settings.*row.setting = true;
    window_->SetFrame({0, 0, 1600, 700});
    ASSERT_TRUE(WaitUntilIdle());
    SetButtonStates();
    const auto buttons = VisibleButtons();
    std::vector<std::string> names;
    for (const ButtonInfo& button : buttons) names.push_back(button.name);
    EXPECT_THAT(names,
                testing::ElementsAre("2008年11月", "年表示", "Help", "Filter", "Import", "Twitter",
                                     "Google Calendar", "Amazon", "Indexing", "Search", "Slide show", "Sound",
                                     "All", "Pause", "Next 2", "Next", "Auto", "Prev", "Prev 2"));
    for (std::size_t i = 3; i < buttons.size(); ++i)
        EXPECT_EQ(buttons[i].area.Right(), buttons[i - 1].area.x - 5) << buttons[i].name;
    calls_.Clear();
    for (const ButtonInfo& button : buttons)
        if (button.command != 0) PressButton(*calendar_, Middle(button.area));
    EXPECT_THAT(
        calls_.Take(),
        testing::ElementsAre("RunCommand 1050", "RunCommand 1017", "RunCommand 1200", "RunCommand 1049",
                             "RunCommand 1048", "RunCommand 1046", "RunCommand 1041", "RunCommand 1051",
                             "RunCommand 1026", "RunCommand 1022", "RunCommand 1027", "RunCommand 1010",
                             "RunCommand 1011", "RunCommand 1023", "RunCommand 1012", "RunCommand 1013"));
}

TEST_F(ButtonBarTest, EachPictureLiesInTheResFolder) {
    for (const ButtonRow& row : kButtonRows)
        for (const char* image : {row.image, row.imageOff})
            EXPECT_TRUE(!image || !MeasureResPicture(image).IsEmpty()) << image;
}

TEST_F(ButtonBarTest, SwitchesShowTheirStateInTheirPicture) {
    AppState& state = State();
    const std::tuple<ImageButton, SharedFlag*, const char*, const char*> switches[] = {
        {kIndexing, &state.run.IndexingEnabled, "Res/indexing_on.png", "Res/indexing_off.png"},
        {kSound, &state.settings.SoundMode, "Res/sound_on.png", "Res/sound_off.png"},
        {kPause, &state.run.Paused, "Res/pause_off.png", "Res/pause_on.png"},
        {kAuto, &state.settings.AutoNavigate, "Res/auto_on.png", "Res/auto_off.png"}};
    for (const auto& [button, flag, set, clear] : switches) {
        *flag = 1;
        SetButtonStates();
        EXPECT_EQ(TheButtonParts().images[button]->image, set);
        *flag = 0;
        SetButtonStates();
        EXPECT_EQ(TheButtonParts().images[button]->image, clear);
    }
    for (const bool scatter : {true, false}) {
        ChangeView([&](ViewState& view) { view.scatter = scatter; });
        SetButtonStates();
        EXPECT_EQ(TheButtonParts().images[kAll]->image, scatter ? "Res/all_on.png" : "Res/all_off.png");
    }
}

TEST_F(ButtonBarTest, TipsSpeakTheUsersLanguage) {
    const auto tip = [](const std::string& name) { return Find(VisibleButtons(), name)->tip; };
    EXPECT_EQ(tip("Help"), "ヘルプ");
    State().settings.UseJapanese = false;
    SetButtonStates();
    EXPECT_EQ(tip("Help"), "Help");
    EXPECT_EQ(tip("Nov 2008"), "Open the folder");
    EXPECT_EQ(tip("Yearly"), "Yearly");
}

TEST_F(ButtonBarTest, YearHidesTheLevelLabelAndSearchTakesItsPlace) {
    const Rect level = VisibleButtons()[1].area;
    ShowYear(2008);
    ChangeView([&](ViewState& view) { view.searchResult = true; });
    SetSearchText("花火");
    SetButtonStates();
    const auto buttons = VisibleButtons();
    EXPECT_EQ(buttons[1].name, "花火");
    EXPECT_EQ(buttons[1].area.y, level.y);
    EXPECT_EQ(buttons[1].area.x, buttons[0].area.Right() + 5);
}

TEST_F(ButtonBarTest, LevelLabelLeadsToTheNextLevelUp) {
    const auto label = [](Level level) {
        ChangeView([&](ViewState& view) { view.period.level = level; });
        SetButtonStates();
        const ButtonInfo second = VisibleButtons()[1];
        return std::pair(second.name, second.command);
    };
    EXPECT_EQ(label(Level::Day), std::pair(std::string("月表示"), int{kCommandLevelUp}));
    EXPECT_EQ(label(Level::Month), std::pair(std::string("年表示"), int{kCommandToYearly}));
    State().settings.UseJapanese = false;
    EXPECT_EQ(label(Level::Day), std::pair(std::string("Monthly"), int{kCommandLevelUp}));
    EXPECT_EQ(label(Level::Month), std::pair(std::string("Yearly"), int{kCommandToYearly}));
    EXPECT_EQ(label(Level::Year).first, "Help") << "no label; the next one is a picture";
}

TEST_F(ButtonBarTest, WideningTheWindowMovesTheButtons) {
    window_->SetFrame({0, 0, 1200, 700});
    ASSERT_TRUE(WaitUntilIdle());
    SetButtonStates();
    EXPECT_EQ(Find(VisibleButtons(), "Help")->area.Right(), 1200 - 5);
}

TEST_F(ButtonBarTest, PressRunsTheButtonsCommand) {
    calls_.Clear();
    const auto buttons = VisibleButtons();
    EXPECT_EQ(PressButton(*calendar_, Middle(Find(buttons, "Next")->area)), ButtonPress::Done);
    EXPECT_EQ(PressButton(*calendar_, Middle(Find(buttons, "Prev 2")->area)), ButtonPress::Done);
    EXPECT_EQ(PressButton(*calendar_, Middle(buttons[0].area)), ButtonPress::Done);
    EXPECT_EQ(PressButton(*calendar_, Middle(buttons[1].area)), ButtonPress::Done);
    EXPECT_THAT(calls_.Take(), testing::ElementsAre("RunCommand 1011", "RunCommand 1013", "RunCommand 1050",
                                                    "RunCommand 1017"));
    EXPECT_EQ(PressButton(*calendar_, {480, 300}), ButtonPress::None);
}

TEST_F(ButtonBarTest, PressOnTheHiddenPlaceOfAButtonDoesNothing) {
    const Rect help = Find(VisibleButtons(), "Help")->area;
    const Rect filter = Find(VisibleButtons(), "Filter")->area;
    State().settings.ShowButtonHelp = State().settings.ShowButtonFilter = false;
    SetButtonStates();
    calls_.Clear();
    PressButton(*calendar_, Middle(help));
    PressButton(*calendar_, Middle(filter));
    EXPECT_THAT(calls_.Take(), testing::ElementsAre("RunCommand 1200", "RunCommand 1041"))
        << "what has moved up is pressed";
}

TEST_F(ButtonBarTest, IndexingFlipsAndStopsTheRunningRefresh) {
    State().settings.ShowButtonIndexing = true;
    State().run.IndexingEnabled = 0;
    SetButtonStates();
    ASSERT_TRUE(OpenLog(files::Join(root_, "log")));
    const auto stops = [this] {
        return files::ReadWholeFile(files::Join(root_, "log")).value_or("").find("stop by user") !=
               std::string::npos;
    };
    const Point place = Middle(Find(VisibleButtons(), "Indexing")->area);
    PressButton(*calendar_, place);
    EXPECT_EQ(State().run.IndexingEnabled, 1);
    EXPECT_FALSE(stops());
    PressButton(*calendar_, place);
    EXPECT_EQ(State().run.IndexingEnabled, 0);
    EXPECT_TRUE(stops());
    OpenLog("");
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

// ---- labels end before the first button

class LabelRoomTest : public ButtonBarTest {
protected:
    static int FirstButton() {
        int left = 100000;
        for (const ButtonInfo& button : VisibleButtons())
            if (IsPicture(button)) left = std::min(left, button.area.x);
        return left;
    }
    static bool IsPicture(const ButtonInfo& button) {
        return std::any_of(kButtonRows.begin(), kButtonRows.end(),
                           [&](const ButtonRow& row) { return button.name == row.name; });
    }
    void Search(const std::string& query) {
        ChangeView([&](ViewState& view) { view.searchResult = true; });
        SetSearchText(query);
        SetButtonStates();
    }
    void Resize(Size size) {
        window_->SetFrame({0, 0, size.width, size.height});
        ASSERT_TRUE(WaitUntilIdle());
        SetButtonStates();
    }
    static void ExpectNoOverlap() {
        const auto buttons = VisibleButtons();
        for (const ButtonInfo& one : buttons)
            for (const ButtonInfo& other : buttons) {
                if (one.area.x >= other.area.x) continue;
                EXPECT_LE(one.area.Right() + 5, other.area.x) << one.name << " and " << other.name;
            }
    }
};

constexpr char kLongQuery[] = "花火 or 海 or 山 or fireworks or the sea or a mountain with snow on it in May";

TEST_F(LabelRoomTest, LongQueryDoesNotRunUnderTheButtons) {
    Search(kLongQuery);
    const auto buttons = VisibleButtons();
    ASSERT_EQ(buttons[2].name, kLongQuery);
    EXPECT_EQ(buttons[2].area.Right(), FirstButton() - 5);
    const std::string& shown = TheButtonParts().search->shown;
    EXPECT_TRUE(shown.ends_with("...")) << shown;
    EXPECT_TRUE(TheButtonParts().date->shown == buttons[0].name) << "the query is shortened first";
    EXPECT_EQ(buttons[2].tip, kLongQuery + std::string("\n検索を終える"));
    EXPECT_EQ(buttons[0].tip, "フォルダを開く") << "a label that is whole needs no tip of its text";
    calls_.Clear();
    PressButton(*calendar_, Middle(Find(buttons, "Prev 2")->area));
    EXPECT_THAT(calls_.Take(), testing::ElementsAre("RunCommand 1013")) << "what is seen there is pressed";
}

TEST_F(LabelRoomTest, AShortenedLabelIsWholeAgainWhenThereIsRoom) {
    Search("a query that is long");
    Resize({800, 700});
    EXPECT_TRUE(TheButtonParts().search->IsShortened());
    Resize({1600, 700});
    EXPECT_EQ(TheButtonParts().search->shown, "a query that is long");
    EXPECT_EQ(VisibleButtons()[2].area.x, VisibleButtons()[1].area.Right() + 5);
}

TEST_F(LabelRoomTest, WholeBarFitsIntoTheSmallestWindow) {
    for (const bool all : {false, true}) {
        for (const ButtonRow& row : kButtonRows)
            if (all && row.setting) State().settings.*row.setting = true;
        ShowDay(2008, 11, 13);
        Search(kLongQuery);
        Resize(LeastClientSize());
        ASSERT_EQ(window_->ClientSize(), LeastClientSize());
        for (const CButton* label : {TheButtonParts().date.get(), TheButtonParts().level.get()})
            EXPECT_FALSE(label->shown.empty()) << label->text;
        EXPECT_EQ(VisibleButtons().size(), 3 + (all ? std::size_t{kImageButtonCount} : 12))
            << "nothing is hidden";
        ExpectNoOverlap();
        for (const ButtonInfo& button : VisibleButtons()) {
            EXPECT_GE(button.area.x, 5) << button.name;
            EXPECT_LE(button.area.Right(), LeastClientSize().width - 5) << button.name;
        }
    }
}

TEST_F(LabelRoomTest, WindowForcedBelowItsLeastSizeHidesLabelsBeforeTheyOverlap) {
    ShowDay(2008, 11, 13);
    Search(kLongQuery);
    for (int width = LeastClientSize().width; width > 0; width -= 150) {
        Resize({width, 300});
        ExpectNoOverlap();
    }
}

// ---- pixels

class BarPixelsTest : public ButtonBarTest {
protected:
    static constexpr Size kClient{960, 700};

    // The strip of the bar as it is on the screen.
    std::vector<Color> Strip() {
        std::vector<Color> pixels;
        const auto window = window_->Snapshot();
        for (int y = kClient.height - kBarHeight; y < kClient.height; ++y)
            for (int x = 0; x < kClient.width; ++x) pixels.push_back(window->PixelAt(x, y));
        return pixels;
    }
};

TEST_F(BarPixelsTest, DrawnTwiceIsTheSameAsOnce) {
    PaintBase(*calendar_);
    const auto once = Strip();
    DrawButtonsOnWindow();
    EXPECT_TRUE(Strip() == once);
    DrawButtonsOnWindow();
    EXPECT_TRUE(Strip() == once) << "half-transparent edges get no darker";
}

TEST_F(BarPixelsTest, PressAndFocusLeaveNothingBehind) {
    PaintBase(*calendar_);
    const auto atRest = Strip();
    const Rect next = Find(VisibleButtons(), "Next")->area;
    SetPressedButton(Middle(next), true);
    EXPECT_FALSE(Strip() == atRest);
    SetPressedButton(Middle(next), false);
    EXPECT_TRUE(Strip() == atRest);
    MoveButtonFocus(+1);
    EXPECT_FALSE(Strip() == atRest);
    ClearButtonFocus();
    EXPECT_TRUE(Strip() == atRest);
}

TEST_F(BarPixelsTest, NoRingStaysWhereTheFocusHasBeen) {
    for (const ButtonRow& row : kButtonRows)
        if (row.setting) State().settings.*row.setting = true;
    PaintBase(*calendar_);
    const auto atRest = Strip();
    constexpr int kRing = 3;
    for (const ButtonInfo& button : VisibleButtons())
        EXPECT_GE(button.area.y - kRing, kClient.height - kBarHeight) << button.name << " inside the strip";
    const std::size_t count = VisibleButtons().size();
    for (std::size_t i = 0; i <= count; ++i) MoveButtonFocus(+1);
    ClearButtonFocus();
    EXPECT_TRUE(Strip() == atRest);
}

TEST_F(BarPixelsTest, WhatIsDrawnUnderTheButtonsStaysThere) {
    PaintBase(*calendar_);
    constexpr Color kGreen{0, 200, 0};
    const Rect area{300, kClient.height - 20, 100, 20};
    {
        const auto canvas = window_->Draw();
        DrawUnderButtons(*canvas, area, [&](Canvas& target, Point origin) {
            target.FillRect({area.x - origin.x, area.y - origin.y, area.width, area.height}, kGreen);
        });
    }
    const auto drawn = Strip();
    const Color seen = PixelAt(350, kClient.height - 2);
    EXPECT_GT(seen.green, seen.red + 40) << "it shows through the strip of the bar";
    DrawButtonsOnWindow();
    EXPECT_TRUE(Strip() == drawn);
}

TEST_F(BarPixelsTest, LabelIsATileWithSoftEdgeAndCornersInItsOwnColour) {
    PaintBase(*calendar_);
    constexpr Color kLabelBack{220, 220, 255};
    const Rect label = VisibleButtons()[0].area;
    const Color strip = PixelAt(label.Right() + 2, label.y - 4);
    EXPECT_EQ(PixelAt(label.x + 20, label.Bottom() - 6), kLabelBack);
    for (const int x : {label.x, label.Right() - 1})
        for (const int y : {label.y, label.Bottom() - 1}) {
            const Color corner = PixelAt(x, y);
            EXPECT_NEAR(corner.red, strip.red, 30) << "no corner at " << x << "," << y;
            EXPECT_NEAR(corner.green, strip.green, 30);
        }
    // The picture buttons' tiles begin two pixels inside too.
    const Color edge = PixelAt(label.x + label.width / 2, label.y + 2);
    EXPECT_LT(edge.red, kLabelBack.red - 20) << "darker than the tile";
    EXPECT_GT(edge.red, 60) << "and not black";
}

TEST_F(BarPixelsTest, StripBehindTheBarQuietsWhatIsUnderIt) {
    for (const Color ground : {Color{0, 0, 0}, Color{255, 255, 255}, Color{200, 30, 30}}) {
        const auto base = Surface::Create(kClient, 1);
        base->Draw()->FillRect({0, 0, kClient.width, kClient.height}, ground);
        SetBarGround(*base);
        DrawButtonsOnWindow();
        const Color seen = PixelAt(420, kClient.height - kBarHeight / 2);
        const auto between = [](int value, int from, int to) {
            return value >= std::min(from, to) && value <= std::max(from, to);
        };
        EXPECT_TRUE(between(seen.red, ground.red, 251) && between(seen.green, ground.green, 247) &&
                    between(seen.blue, ground.blue, 239))
            << "between the ground and paper";
        EXPECT_GE(seen.red + seen.green + seen.blue, 3 * 120) << "dark letters are legible on it";
    }
    EXPECT_NE(PixelAt(420, kClient.height - kBarHeight), PixelAt(420, kClient.height - kBarHeight - 1));
}

}  // namespace
}  // namespace kalmora
