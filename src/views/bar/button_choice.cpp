// What the buttons are and which one is meant: by a point, by the keyboard.
#include <algorithm>

#include "views/bar/button_bar.h"
#include "views/bar/button_parts.h"

namespace kalmora {

namespace {

// Which button, without holding on to it.
enum class Part { None, Date, Level, Search, Image };
struct Place {
    Part part = Part::None;
    std::size_t row = kImageButtonCount;
};

Place PlaceOf(const ButtonParts& parts, const CButton& button, std::size_t row) {
    if (&button == parts.date.get()) return {Part::Date};
    if (&button == parts.level.get()) return {Part::Level};
    if (&button == parts.search.get()) return {Part::Search};
    return {Part::Image, row};
}

int CommandOf(const Place& place) {
    switch (place.part) {
        case Part::Date:
            return kCommandOpenFolder;
        case Part::Level:
            return LevelRowOf(View().period.level).command;
        case Part::Image:
            return kButtonRows[place.row].command;
        default:
            return 0;
    }
}

ButtonAction ActionOf(const Place& place) {
    if (CommandOf(place) != 0) return ButtonAction::Command;
    if (place.part == Part::Search) return ButtonAction::EndSearch;
    switch (place.row) {
        case kHelp:
            return ButtonAction::Help;
        case kFilter:
            return ButtonAction::Filter;
        case kIndexing:
            return ButtonAction::Indexing;
        default:
            return ButtonAction::Nothing;
    }
}

std::string ActionTip(const Place& place, const std::string& text) {
    const bool japanese = State().settings.UseJapanese;
    switch (place.part) {
        case Part::Date:
            return japanese ? "フォルダを開く" : "Open the folder";
        case Part::Search:
            return japanese ? "検索を終える" : "End the search";
        case Part::Image:
            return japanese ? kButtonRows[place.row].japanese : kButtonRows[place.row].name;
        default:
            return text;
    }
}

// A shortened label is given whole, and then what it does.
std::string TipOf(const Place& place, const CButton& button) {
    const std::string action = ActionTip(place, button.text);
    return button.IsShortened() && action != button.text ? button.text + "\n" + action : action;
}

ButtonInfo InfoOf(const ButtonParts& parts, const CButton& button, std::size_t row) {
    const Place place = PlaceOf(parts, button, row);
    return {button.Area(), place.part == Part::Image ? kButtonRows[row].name : button.text,
            TipOf(place, button), CommandOf(place), ActionOf(place)};
}

}  // namespace

std::vector<ButtonInfo> VisibleButtons() {
    std::vector<ButtonInfo> found;
    ButtonParts& parts = TheButtonParts();
    std::lock_guard lock(parts.mutex);
    ForEachButton(parts, [&](const CButton& button, std::size_t row) {
        if (button.IsVisible()) found.push_back(InfoOf(parts, button, row));
    });
    return found;
}

bool FindButton(Point point, ButtonInfo* info) {
    for (const ButtonInfo& button : VisibleButtons()) {
        if (!button.area.ContainsInclusive(point)) continue;
        if (info) *info = button;
        return true;
    }
    return false;
}

void SetPressedButton(Point point, bool down) {
    bool changed = false;
    {
        ButtonParts& parts = TheButtonParts();
        std::lock_guard lock(parts.mutex);
        ForEachButton(parts, [&](CButton& button, std::size_t) {
            const bool pressed = down && button.IsVisible() && button.HitTest(point.x, point.y);
            changed |= pressed != button.pressed;
            button.pressed = pressed;
        });
    }
    if (changed) DrawButtonsOnWindow();
}

void MoveButtonFocus(int step) {
    {
        ButtonParts& parts = TheButtonParts();
        std::lock_guard lock(parts.mutex);
        // As the eye goes, from the left to the right.
        std::vector<CButton*> shown;
        ForEachButton(parts, [&](CButton& button, std::size_t) {
            if (button.IsVisible()) shown.push_back(&button);
        });
        if (shown.empty()) return;
        std::sort(shown.begin(), shown.end(), [](const CButton* a, const CButton* b) { return a->x < b->x; });
        const auto at = std::find(shown.begin(), shown.end(), parts.focused);
        const std::ptrdiff_t count = std::ssize(shown);
        // Without a focus the first step goes to the first button of its direction.
        const std::ptrdiff_t from = at != shown.end() ? at - shown.begin() : step > 0 ? -1 : count;
        parts.focused = shown[static_cast<std::size_t>((from + step % count + count) % count)];
    }
    DrawButtonsOnWindow();
}

bool FocusedButton(ButtonInfo* info) {
    bool found = false;
    ButtonParts& parts = TheButtonParts();
    std::lock_guard lock(parts.mutex);
    ForEachButton(parts, [&](const CButton& button, std::size_t row) {
        if (&button != parts.focused || !button.IsVisible()) return;
        *info = InfoOf(parts, button, row);
        found = true;
    });
    return found;
}

bool ClearButtonFocus() {
    {
        ButtonParts& parts = TheButtonParts();
        std::lock_guard lock(parts.mutex);
        if (!parts.focused) return false;
        parts.focused = nullptr;
    }
    DrawButtonsOnWindow();
    return true;
}

}  // namespace kalmora
