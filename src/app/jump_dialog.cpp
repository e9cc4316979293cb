#include "app/jump_dialog.h"

#include <array>
#include <string>

#include "app/translated_form.h"
#include "base/take_number.h"
#include "platform/dialog.h"
#include "state/app_state.h"
#include "views/control/navigation.h"

namespace kalmora {

namespace {

constexpr std::size_t kLongestText = 1024;
constexpr int kLastYear = 9999;  // folders have four digits for it

struct JumpFormat {
    int fields;
    std::array<std::size_t, 3> widths;  // most characters of a number, its sign included; 0: any
    char separator;                     // 0: none
};

// Tried in this order; the first that the text fills wins.
constexpr JumpFormat kFormats[] = {
    {3, {4, 2, 2}, 0},   {3, {4, 2, 2}, '/'}, {3, {0, 0, 0}, '/'}, {3, {4, 2, 2}, '.'},
    {3, {0, 0, 0}, '.'}, {2, {4, 2}, 0},      {2, {4, 2}, '/'},    {2, {0, 0}, '/'},
    {2, {4, 2}, '.'},    {2, {0, 0}, '.'},    {1, {4}, 0},         {1, {0}, 0},
};

std::optional<CalendarDate> Match(std::string_view text, const JumpFormat& format) {
    std::array<int, 3> values{};
    for (int field = 0; field < format.fields; ++field) {
        const auto i = static_cast<std::size_t>(field);
        if (field > 0 && format.separator != 0) {
            if (text.empty() || text.front() != format.separator) return std::nullopt;
            text.remove_prefix(1);
        }
        const std::optional<int> number = TakeNumber(text, format.widths[i]);
        if (!number) return std::nullopt;
        values[i] = *number;
    }
    return CalendarDate{values[0], values[1], values[2]};
}

bool IsOnACalendar(const CalendarDate& date) {
    return date.year >= 1 && date.year <= kLastYear && date.month >= 0 && date.month <= 12 && date.day >= 0 &&
           (date.month == 0 || date.day <= DaysInMonth(date.year, date.month));
}

constexpr int kEdit = 1001;

constexpr Control kJumpControls[] = {
    {ControlKind::Label, 0, "移動先の日付を入力してください（例: 2008/11/13, 200811, 2008）", 0, 0, 3},
    {ControlKind::Edit, kEdit, "", 1, 0, 3},
    {ControlKind::Button, kDialogOk, "OK", 2, 1},
    {ControlKind::Button, kDialogCancel, "キャンセル", 2, 2},
};
constexpr const char* kEnglishJumpTexts[] = {
    "Date to go to (2008/11/13, 200811, 2008)",
    "",
    "OK",
    "Cancel",
};
constexpr auto kEnglishJumpControls = Translated(kJumpControls, kEnglishJumpTexts);

}  // namespace

std::optional<CalendarDate> ParseJumpText(std::string_view text) {
    text = text.substr(0, kLongestText);
    for (const JumpFormat& format : kFormats) {
        const std::optional<CalendarDate> date = Match(text, format);
        if (!date) continue;
        return IsOnACalendar(*date) ? date : std::nullopt;
    }
    return std::nullopt;
}

void ShowJumpDialog(CalendarStore& calendar, Window& owner) {
    const bool japanese = State().settings.UseJapanese;
    std::optional<CalendarDate> date;
    DialogForm form;
    form.title = japanese ? "日付へ移動" : "Jump To";
    form.controls =
        japanese ? std::span<const Control>(kJumpControls) : std::span<const Control>(kEnglishJumpControls);
    form.onOpen = [](Dialog& dialog) { dialog.SetFocus(kEdit); };
    form.onButton = [&date](Dialog& dialog, int id) {
        if (id != kDialogOk) return;
        const std::string text = dialog.Text(kEdit);
        if (text.empty()) return;
        date = ParseJumpText(text);
        dialog.Close(kDialogOk);
    };
    // After the dialog has gone: the view that is drawn next shall not have it on top.
    ShowDialog(&owner, form);
    if (date) JumpTo(calendar, date->year, date->month, date->day);
}

}  // namespace kalmora
