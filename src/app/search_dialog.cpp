#include "app/search_dialog.h"

#include <cstdio>
#include <span>
#include <string>
#include <vector>

#include "app/translated_form.h"
#include "index/index_manager.h"
#include "platform/dialog.h"
#include "search/compose_query.h"
#include "search/search_run.h"
#include "state/app_state.h"
#include "views/control/search_mode.h"

namespace kalmora {

namespace {

enum Id : int {
    kKeyword = 1001,
    kFace = 1003,
    kNightMode = 1004,
    kFlash = 1005,
    kFromHour = 1006,
    kToHour = 1007,
    kAllLoaded = 1008,
};

// Dialog 106. A label comes before the control that it names, which is drawn at its left.
constexpr char kSearchTitle[] = "検索ボックス";
constexpr Control kSearchControls[] = {
    {ControlKind::Label, 0, "検索キーワードを入力してください", 0, 0, 4},
    {ControlKind::Edit, kKeyword, "", 1, 0, 4},
    {ControlKind::Group, 0, "時間を指定した検索", 2, 0, 4, 2},
    {ControlKind::Label, 0, "時から", 2, 1},
    {ControlKind::ChoiceEdit, kFromHour, "", 2, 0},
    {ControlKind::Label, 0, "時まで", 2, 3},
    {ControlKind::ChoiceEdit, kToHour, "", 2, 2},
    {ControlKind::Label, 0, "* 24時間表記でお願いします", 3, 0, 4},
    {ControlKind::Group, 0, "写真の要素を指定した検索", 4, 0, 4, 4},
    {ControlKind::CheckBox, kFace, "顔認識されたものを検索", 4, 0, 4},
    {ControlKind::CheckBox, kNightMode, "夜景モードで撮影された画像を検索", 5, 0, 4},
    {ControlKind::CheckBox, kFlash, "フラッシュをたいて撮影された画像を検索", 6, 0, 4},
    {ControlKind::Label, 0, "* FinePix でなければ意味ないかも", 7, 0, 4},
    {ControlKind::CheckBox, kAllLoaded, "ロード済みのすべてのデータを対象とする", 8, 0, 4},
    {ControlKind::Button, kDialogOk, "検索", 9, 2},
    {ControlKind::Button, kDialogCancel, "キャンセル", 9, 3},
};
constexpr char kEnglishSearchTitle[] = "Search";
constexpr const char* kEnglishSearchTexts[] = {
    "Words to search for",
    "",
    "Time of the day",
    "o'clock until",
    "",
    "o'clock",
    "",
    "* Hours from 0 to 36; 26 is 2 o'clock of the night that follows",
    "What the camera noted",
    "A face was recognised",
    "Taken in night mode",
    "Taken with flash",
    "* Few makes of camera note the first two",
    "Search everything that has been loaded",
    "Search",
    "Cancel",
};
constexpr auto kEnglishSearchControls = Translated(kSearchControls, kEnglishSearchTexts);

// A search of everything goes through the months that have been touched, and loads what it needs of them.
bool IsAnythingLoaded() {
    const IndexManager* const other = OtherIndexInUse();
    return !MainIndex().Months().empty() || (other && !other->Months().empty());
}

void FillHours(Dialog& dialog, int id) {
    std::vector<std::string> hours;
    for (int hour = 0; hour < kHourChoices; ++hour) {
        char text[16];
        std::snprintf(text, sizeof text, "%02d", hour);
        hours.emplace_back(text);
    }
    dialog.SetChoices(id, hours);
    dialog.Choose(id, -1);
}

void FillInSearch(Dialog& dialog) {
    FillHours(dialog, kFromHour);
    FillHours(dialog, kToHour);
    // At the start of the program nothing is loaded, and the box would find nothing.
    dialog.SetEnabled(kAllLoaded, IsAnythingLoaded());
    dialog.SetFocus(kKeyword);
}

SearchEntry Read(const Dialog& dialog) {
    SearchEntry entry;
    entry.keyword = dialog.Text(kKeyword);
    entry.face = dialog.IsChecked(kFace);
    entry.nightMode = dialog.IsChecked(kNightMode);
    entry.flash = dialog.IsChecked(kFlash);
    entry.from = {dialog.Chosen(kFromHour), dialog.Text(kFromHour)};
    entry.to = {dialog.Chosen(kToHour), dialog.Text(kToHour)};
    return entry;
}

}  // namespace

DialogForm MakeSearchForm(SearchAnswer& answer) {
    const bool japanese = State().settings.UseJapanese;
    DialogForm form;
    form.title = japanese ? kSearchTitle : kEnglishSearchTitle;
    form.controls = japanese ? std::span<const Control>(kSearchControls)
                             : std::span<const Control>(kEnglishSearchControls);
    form.place = DialogForm::Place::MiddleOfScreen;
    form.onOpen = FillInSearch;
    form.onButton = [&answer](Dialog& dialog, int id) {
        if (id != kDialogOk) return;
        answer = {true, ComposeQuery(Read(dialog))};
        // It is never cleared here: a search of everything stays one until the program ends. Meant, and held
        // by SearchDialog.AllLoadedStaysForLaterSearches.
        if (dialog.IsChecked(kAllLoaded)) ChangeView([](ViewState& view) { view.searchAllLoaded = true; });
        dialog.Close(answer.query.empty() ? kDialogCancel : kDialogOk);
    };
    return form;
}

bool ShowSearchDialog(CalendarStore& calendar, Window* owner) {
    SearchAnswer answer;
    // What follows comes after the dialog has gone: what is drawn then shall not have it on top.
    ShowDialog(owner, MakeSearchForm(answer));
    if (!answer.isGiven) return false;
    if (!answer.query.empty()) {
        BeginSearch(calendar, answer.query);
        return true;
    }
    SetSearchText({});
    if (View().searchResult) EndSearch(calendar);
    return false;
}

void ForgetSearch() {
    ResetSearch();
    ChangeView([&](ViewState& view) {
        view.searchResult = false;
        view.searchAllLoaded = false;
    });
}

}  // namespace kalmora
