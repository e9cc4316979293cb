// What the import dialog shows, and what it makes of its answers.
#include "app/import_dialog.h"

#include <algorithm>

#include "app/day_end.h"
#include "app/entered_dialog.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

class ImportDialogTest : public ViewTest {
protected:
    ~ImportDialogTest() override {
        State().run.ImportCommentOn = 0;
        State().run.ImportComment.clear();
    }
    EnteredDialog dialog;
};

TEST_F(ImportDialogTest, HasItsControls) {
    const DialogForm form = MakeImportForm(nullptr);
    EXPECT_EQ(form.title, "取り込みフォルダの設定");
    const ControlFacts wanted[] = {
        {1047, ControlKind::Edit, ""},
        {1003, ControlKind::Button, "参照"},
        {1048, ControlKind::Edit, ""},
        {102, ControlKind::CheckBox, "取り込み時に元ファイルを削除 （Undo はできません）"},
        {103, ControlKind::CheckBox, "ショートカットファイルとして取り込む （元の構成を維持）"},
        {104, ControlKind::CheckBox, "取り込み時に移動元のフォルダ名を写真に追記（検索用）"},
        {105, ControlKind::CheckBox, "取り込み時に写真に下記のコメントを追記（検索用）"},
        {1007, ControlKind::Edit, ""},
        {1, ControlKind::Button, "OK"},
        {2, ControlKind::Button, "ｷｬﾝｾﾙ"}};
    ExpectControls(form, wanted);
    for (const char* label :
         {"取り込みたいファイルを含むフォルダを設定してください．",
          "なお，取り込む際はExif（撮影日時）情報を利用します．",
          "Exif情報が無い場合はファイルの作成日時を利用するため意図しない日時に割り振られることがあります．",
          "同一ファイルが存在する場合はスキップします．", "時までをその日として換算（夜更かしさん用）",
          "ベータ版ですので利用は自己責任でお願いします．"})
        EXPECT_TRUE(std::any_of(form.controls.begin(), form.controls.end(), [&](const Control& control) {
            return control.kind == ControlKind::Label && std::string_view(control.text) == label;
        })) << label;
    State().settings.UseJapanese = false;
    const DialogForm english = MakeImportForm(nullptr);
    EXPECT_EQ(english.title, "Import");
    ASSERT_EQ(english.controls.size(), form.controls.size());
    for (std::size_t i = 0; i < form.controls.size(); ++i)
        EXPECT_EQ(english.controls[i].id, form.controls[i].id) << i;
}

TEST_F(ImportDialogTest, ShowsTheSettings) {
    AppState& state = State();
    state.settings.ImportDirectory = "/media/CARD/DCIM";
    state.settings.DayEndTimeForScrap = 26;
    state.settings.RemoveImportFiles = true;
    state.settings.InsertOriginalPathToExif = true;
    state.run.ImportCommentOn = 1;
    state.run.ImportComment = "summer";
    MakeImportForm(nullptr).onOpen(dialog);
    EXPECT_EQ(dialog.Text(1047), "/media/CARD/DCIM");
    EXPECT_EQ(dialog.Text(1048), "26");
    EXPECT_TRUE(dialog.IsChecked(102));
    EXPECT_FALSE(dialog.IsChecked(103));
    EXPECT_TRUE(dialog.IsChecked(104));
    EXPECT_TRUE(dialog.IsChecked(105));
    EXPECT_EQ(dialog.Text(1007), "summer");
}

TEST_F(ImportDialogTest, OkPutsTheAnswersIntoTheSettings) {
    const DialogForm form = MakeImportForm(nullptr);
    form.onOpen(dialog);
    dialog.SetText(1047, "/media/OTHER/DCIM/");
    dialog.SetText(1048, "3");
    dialog.SetChecked(102, true);
    dialog.SetChecked(103, true);
    dialog.SetChecked(104, true);
    dialog.SetChecked(105, true);
    dialog.SetText(1007, "winter");
    form.onButton(dialog, kDialogOk);
    EXPECT_EQ(dialog.result, kDialogOk);
    const AppState& state = State();
    EXPECT_EQ(state.settings.ImportDirectory, "/media/OTHER/DCIM") << "one separator at its end goes";
    EXPECT_EQ(state.settings.DayEndTimeForScrap, 27);
    EXPECT_TRUE(state.settings.RemoveImportFiles && state.settings.ImportAsShortcutFile &&
                state.settings.InsertOriginalPathToExif);
    EXPECT_EQ(state.run.ImportCommentOn, 1);
    EXPECT_EQ(state.run.ImportComment, "winter");
}

TEST_F(ImportDialogTest, CancelLeavesTheSettings) {
    State().settings.ImportDirectory = "/media/CARD/DCIM";
    const DialogForm form = MakeImportForm(nullptr);
    form.onOpen(dialog);
    dialog.SetText(1047, "/elsewhere");
    form.onButton(dialog, kDialogCancel);
    EXPECT_EQ(State().settings.ImportDirectory, "/media/CARD/DCIM");
}

TEST(ParseDayEnd, TakesHoursAndTheClock) {
    const struct {
        const char* text;
        int hours;
    } wanted[] = {{"24", 24}, {"26", 26}, {"47", 47}, {" 30 ", 30}, {"2", 26},
                  {"0", 24},  {"12", 36}, {"13", 13}, {"48", 24},   {"49", 25},
                  {"", 25},   {"x", 25},  {"2x", 25}, {"-1", 25},   {"99999999999", 25}};
    for (const auto& one : wanted) EXPECT_EQ(ParseDayEnd(one.text, 25), one.hours) << one.text;
}

}  // namespace
}  // namespace kalmora
