#include "app/import_dialog.h"

#include <string>

#include "app/day_end.h"
#include "app/translated_form.h"
#include "platform/files.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

enum ControlId {
    kRemove = 102,
    kAsShortcut = 103,
    kFolderName = 104,
    kWithComment = 105,
    kBrowse = 1003,
    kComment = 1007,
    kFolder = 1047,
    kDayEnd = 1048,
};

// Dialog 278.
constexpr char kImportTitle[] = "取り込みフォルダの設定";
constexpr Control kImportControls[] = {
    {ControlKind::Label, 0, "取り込みたいファイルを含むフォルダを設定してください．", 0, 0, 4},
    {ControlKind::Edit, kFolder, "", 1, 0, 3},
    {ControlKind::Button, kBrowse, "参照", 1, 3},
    {ControlKind::Label, 0, "なお，取り込む際はExif（撮影日時）情報を利用します．", 2, 0, 4},
    {ControlKind::Label, 0,
     "Exif情報が無い場合はファイルの作成日時を利用するため意図しない日時に割り振られることがあります．", 3, 0,
     4},
    {ControlKind::Label, 0, "同一ファイルが存在する場合はスキップします．", 4, 0, 4},
    {ControlKind::Label, 0, "時までをその日として換算（夜更かしさん用）", 5, 1, 3},
    {ControlKind::Edit, kDayEnd, "", 5, 0},
    {ControlKind::CheckBox, kRemove, "取り込み時に元ファイルを削除 （Undo はできません）", 6, 0, 4},
    {ControlKind::CheckBox, kAsShortcut, "ショートカットファイルとして取り込む （元の構成を維持）", 7, 0, 4},
    {ControlKind::CheckBox, kFolderName, "取り込み時に移動元のフォルダ名を写真に追記（検索用）", 8, 0, 4},
    {ControlKind::CheckBox, kWithComment, "取り込み時に写真に下記のコメントを追記（検索用）", 9, 0, 4},
    {ControlKind::Edit, kComment, "", 10, 0, 4},
    {ControlKind::Label, 0, "ベータ版ですので利用は自己責任でお願いします．", 11, 0, 4},
    {ControlKind::Button, kDialogOk, "OK", 12, 2},
    {ControlKind::Button, kDialogCancel, "ｷｬﾝｾﾙ", 12, 3},
};
constexpr char kEnglishImportTitle[] = "Import";
constexpr const char* kEnglishImportTexts[] = {
    "The folder that holds the files to import",
    "",
    "Browse",
    "A photo goes to the day on which it was taken (Exif).",
    "Without that the time of the file decides, which may not be the day you expect.",
    "A file that the day has already is skipped.",
    "o'clock ends the day (for those who stay up late)",
    "",
    "Remove the originals (this cannot be undone)",
    "Make shortcuts (the originals stay as they are)",
    "Add the folder's name to the photos, to search by",
    "Add this comment to the photos, to search by",
    "",
    "This is a beta version; use it at your own risk.",
    "OK",
    "Cancel",
};
constexpr auto kEnglishImportControls = Translated(kImportControls, kEnglishImportTexts);

void FillInImport(Dialog& dialog) {
    const AppState& state = State();
    dialog.SetText(kFolder, state.settings.ImportDirectory);
    dialog.SetText(kDayEnd, std::to_string(state.settings.DayEndTimeForScrap));
    dialog.SetChecked(kRemove, state.settings.RemoveImportFiles);
    dialog.SetChecked(kAsShortcut, state.settings.ImportAsShortcutFile);
    dialog.SetChecked(kFolderName, state.settings.InsertOriginalPathToExif);
    dialog.SetChecked(kWithComment, state.run.ImportCommentOn == 1);
    dialog.SetText(kComment, state.run.ImportComment);
    dialog.SetFocus(kFolder);
}

void Browse(Dialog& dialog, Window* owner) {
    const bool japanese = State().settings.UseJapanese;
    if (const auto folder =
            ChooseFolder(owner, japanese ? kImportTitle : kEnglishImportTitle, dialog.Text(kFolder)))
        dialog.SetText(kFolder, *folder);
}

void Store(const Dialog& dialog) {
    AppState& state = State();
    std::string folder = dialog.Text(kFolder);
    while (folder.size() > 1 && folder.back() == files::kSeparator) folder.pop_back();
    state.settings.ImportDirectory = folder;
    state.settings.DayEndTimeForScrap = ParseDayEnd(dialog.Text(kDayEnd), state.settings.DayEndTimeForScrap);
    state.settings.RemoveImportFiles = dialog.IsChecked(kRemove);
    state.settings.ImportAsShortcutFile = dialog.IsChecked(kAsShortcut);
    state.settings.InsertOriginalPathToExif = dialog.IsChecked(kFolderName);
    state.run.ImportCommentOn = dialog.IsChecked(kWithComment) ? 1 : 0;
    state.run.ImportComment = dialog.Text(kComment);
}

}  // namespace

DialogForm MakeImportForm(Window* owner) {
    const bool japanese = State().settings.UseJapanese;
    DialogForm form;
    form.title = japanese ? kImportTitle : kEnglishImportTitle;
    form.controls = japanese ? std::span<const Control>(kImportControls)
                             : std::span<const Control>(kEnglishImportControls);
    form.onOpen = FillInImport;
    form.onButton = [owner](Dialog& dialog, int id) {
        if (id == kBrowse) return Browse(dialog, owner);
        if (id != kDialogOk) return;
        Store(dialog);
        dialog.Close(kDialogOk);
    };
    return form;
}

bool ShowImportDialog(Window* owner) { return ShowDialog(owner, MakeImportForm(owner)) == kDialogOk; }

}  // namespace kalmora
