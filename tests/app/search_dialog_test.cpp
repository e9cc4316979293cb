// What the search dialog shows, and what it makes of its answers.
#include "app/search_dialog.h"

#include "app/app_fixture.h"
#include "app/command_actions.h"
#include "app/entered_dialog.h"
#include "index/index_manager.h"
#include "search/search_run.h"
#include "views/model/calendar_store.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

using testing::IsEmpty;

class SearchDialog : public ViewTest {
protected:
    SearchDialog() : form(MakeSearchForm(answer)) { form.onOpen(dialog); }

    SearchAnswer answer;
    EnteredDialog dialog;
    DialogForm form;
};

TEST_F(SearchDialog, HasItsControls) {
    EXPECT_EQ(form.title, "検索ボックス");
    const ControlFacts wanted[] = {{1001, ControlKind::Edit, ""},
                                   {1, ControlKind::Button, "検索"},
                                   {2, ControlKind::Button, "キャンセル"},
                                   {1006, ControlKind::ChoiceEdit, ""},
                                   {1007, ControlKind::ChoiceEdit, ""},
                                   {1003, ControlKind::CheckBox, "顔認識されたものを検索"},
                                   {1004, ControlKind::CheckBox, "夜景モードで撮影された画像を検索"},
                                   {1005, ControlKind::CheckBox, "フラッシュをたいて撮影された画像を検索"},
                                   {1008, ControlKind::CheckBox, "ロード済みのすべてのデータを対象とする"}};
    ExpectControls(form, wanted);
    for (const char* text :
         {"検索キーワードを入力してください", "時から", "時まで", "時間を指定した検索",
          "写真の要素を指定した検索", "* 24時間表記でお願いします", "* FinePix でなければ意味ないかも"})
        EXPECT_TRUE(std::any_of(form.controls.begin(), form.controls.end(), [&](const Control& control) {
            return std::string_view(control.text) == text;
        })) << text;
    EXPECT_EQ(form.place, DialogForm::Place::MiddleOfScreen);
}

TEST_F(SearchDialog, EnglishOneHasTheSameControls) {
    State().settings.UseJapanese = false;
    const DialogForm english = MakeSearchForm(answer);
    ASSERT_EQ(english.controls.size(), form.controls.size());
    for (std::size_t i = 0; i < english.controls.size(); ++i) {
        EXPECT_EQ(english.controls[i].id, form.controls[i].id);
        EXPECT_EQ(english.controls[i].kind, form.controls[i].kind);
    }
}

TEST_F(SearchDialog, OpensEmptyWithHoursPastMidnightAndTheFocusOnTheKeyword) {
    EXPECT_EQ(dialog.Text(1001), "");
    EXPECT_EQ(dialog.focus, 1001);
    for (const int box : {1006, 1007}) {
        ASSERT_EQ(dialog.choices[box].size(), 37u);
        EXPECT_EQ(dialog.choices[box].front(), "00");
        EXPECT_EQ(dialog.choices[box].back(), "36");
        EXPECT_EQ(dialog.Chosen(box), -1);
    }
    EXPECT_THAT(dialog.checked, IsEmpty());
}

TEST_F(SearchDialog, AllLoadedCanBeCheckedAfterTheFirstSearch) {
    EXPECT_FALSE(dialog.enabled.at(1008)) << "at the start";
    AddText(2008, 11, 13, "a.txt", "x");
    Search("x", SearchScope::View, {Level::Month, 2008, 11, 13}, StopToken());
    form.onOpen(dialog);
    EXPECT_TRUE(dialog.enabled.at(1008));
}

TEST_F(SearchDialog, SearchButtonComposesTheQuery) {
    dialog.SetText(1001, "cat");
    dialog.SetChecked(1003, true);
    dialog.SetChecked(1005, true);
    dialog.Choose(1006, 22);
    dialog.Choose(1007, 26);
    form.onButton(dialog, 1);
    EXPECT_TRUE(answer.isGiven);
    EXPECT_EQ(answer.query, "cat tag:face flash:9 time:22-26");
    EXPECT_EQ(dialog.result, 1);
    EXPECT_FALSE(View().searchAllLoaded);
}

TEST_F(SearchDialog, TypedHoursCountWhenTheyAreBelow37) {
    dialog.SetChecked(1004, true);
    dialog.Choose(1006, 22);
    dialog.chosen[1007] = -1;
    dialog.SetText(1007, "40");
    form.onButton(dialog, 1);
    EXPECT_EQ(answer.query, "mode:5");
    dialog.SetText(1007, "26");
    form.onButton(dialog, 1);
    EXPECT_EQ(answer.query, "mode:5 time:22-26");
}

TEST_F(SearchDialog, NothingEnteredClosesWithTwo) {
    form.onButton(dialog, 1);
    EXPECT_TRUE(answer.isGiven);
    EXPECT_EQ(answer.query, "");
    EXPECT_EQ(dialog.result, 2);
}

TEST_F(SearchDialog, CancelChangesNothing) {
    dialog.SetText(1001, "cat");
    dialog.SetChecked(1008, true);
    form.onButton(dialog, 2);
    EXPECT_FALSE(answer.isGiven);
    EXPECT_FALSE(View().searchAllLoaded);
}

TEST_F(SearchDialog, AllLoadedStaysForLaterSearches) {
    dialog.SetText(1001, "cat");
    dialog.SetChecked(1008, true);
    form.onButton(dialog, 1);
    EXPECT_TRUE(View().searchAllLoaded);
    dialog.SetChecked(1008, false);
    form.onButton(dialog, 1);
    EXPECT_TRUE(View().searchAllLoaded);
    ForgetSearch();
    EXPECT_FALSE(View().searchAllLoaded) << "as after a new start";
}

using SearchCommand = AppTest;

TEST_F(SearchCommand, ShowsTheResultOfAnAnswer) {
    ShowMonth(2008, 11);
    OpenMainWindow();
    state_.run.AllRing = 12;
    others_.searchAnswer = true;
    ChangeView([&](ViewState& view) { view.searchResult = true; });
    ShowSearch(parts_);
    EXPECT_EQ(state_.run.AllRing, 0) << "thirteen stores, round and round";
    ASSERT_TRUE(WaitUntilIdle());
    others_.searchAnswer = false;
    ShowSearch(parts_);
    EXPECT_EQ(state_.run.AllRing, 0);
}

}  // namespace
}  // namespace kalmora
