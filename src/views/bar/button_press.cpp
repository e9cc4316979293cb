// What the user does with the buttons: pressing, going through them by keyboard, asking what they are.
#include <algorithm>

#include "platform/shell.h"
#include "store/resources.h"
#include "views/bar/button_bar.h"
#include "views/bar/button_parts.h"
#include "views/hooks.h"
#include "views/load/search_view.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr char kHelpFile[] = "users-guide.md";

// Which button, without holding on to it: the bar may be laid out anew while a press does its work.
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
            return State().view.ViewType == kDaily ? kCommandLevelUp : kCommandToYearly;
        case Part::Image:
            return kButtonRows[place.row].command;
        default:
            return 0;
    }
}

std::string TipOf(const Place& place, const std::string& text) {
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

void FlipIndexing() {
    AppState& state = State();
    state.run.IndexingEnabled = state.run.IndexingEnabled ? 0 : 1;
    if (!state.run.IndexingEnabled) Hooks().StopIndexing("stop by user");
    SetButtonStates();
    DrawButtonsOnWindow();
}

void Press(const Place& place) {
    if (const int command = CommandOf(place); command != 0) return Hooks().RunCommand(command);
    if (place.part == Part::Search) return EndSearch();
    switch (place.row) {
        case kHelp:
            shell::Open(FindResource(kHelpFile));
            break;
        case kFilter:
            Hooks().ShowFilterWindow();
            break;
        case kIndexing:
            FlipIndexing();
            break;
        default:
            break;
    }
}

Place FindPlace(Point point) {
    Place found;
    ButtonParts& parts = TheButtonParts();
    std::lock_guard lock(parts.mutex);
    ForEachButton(parts, [&](const CButton& button, std::size_t row) {
        if (found.part == Part::None && button.IsVisible() && button.HitTest(point.x, point.y))
            found = PlaceOf(parts, button, row);
    });
    return found;
}

}  // namespace

ButtonPress PressButton(Point point) {
    const Place place = FindPlace(point);
    if (place.part == Part::None) return ButtonPress::None;
    Press(place);
    return ButtonPress::Done;
}

bool FindButton(Point point, ButtonInfo* info) {
    for (const ButtonInfo& button : VisibleButtons()) {
        if (!button.area.ContainsInclusive(point)) continue;
        if (info) *info = button;
        return true;
    }
    return false;
}

std::vector<ButtonInfo> VisibleButtons() {
    std::vector<ButtonInfo> found;
    ButtonParts& parts = TheButtonParts();
    std::lock_guard lock(parts.mutex);
    ForEachButton(parts, [&](const CButton& button, std::size_t row) {
        if (!button.IsVisible()) return;
        const Place place = PlaceOf(parts, button, row);
        found.push_back({button.Area(), place.part == Part::Image ? kButtonRows[row].name : button.text,
                         TipOf(place, button.text), CommandOf(place)});
    });
    return found;
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

bool PressFocusedButton() {
    Place place;
    {
        ButtonParts& parts = TheButtonParts();
        std::lock_guard lock(parts.mutex);
        ForEachButton(parts, [&](const CButton& button, std::size_t row) {
            if (&button == parts.focused && button.IsVisible()) place = PlaceOf(parts, button, row);
        });
    }
    if (place.part == Part::None) return false;
    Press(place);
    return true;
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
