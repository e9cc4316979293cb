#include "views/bar/button_bar.h"

#include <algorithm>
#include <utility>

#include "pictures/res_pictures.h"
#include "search/search_run.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "text/text.h"
#include "views/bar/button_parts.h"
#include "views/model/calendar_store.h"
#include "views/model/caption.h"

namespace kalmora {

namespace {

constexpr int kGap = 5;
constexpr int kLabels = 3;
constexpr int kLeastLabelWidth = 60;  // shows two or three digits and an ellipsis
constexpr int kLeastHeight = 200;     // the bar, the gauge over it, and some of the calendar
constexpr Color kLabelBack{220, 220, 255};
constexpr Color kSearchBack{200, 200, 225};
constexpr Color kStrip{251, 247, 239, 150};  // paper, through which the calendar is still seen
constexpr Color kHighlight = ColorFromBgr(0x6464FF);

bool IsShown(std::size_t button, const AppState& state) {
    const ButtonRow& row = kButtonRows[button];
    if (button == kNext2) return state.settings.ShowButtonNext2 && state.settings.ShowButtonNext;
    return !row.setting || state.settings.*row.setting;
}

Caption CurrentCaption() {
    const AppState& state = State();
    const ViewState view = View();
    CaptionInput input;
    input.period = view.period;
    input.japanese = state.settings.UseJapanese;
    input.showFolder = state.settings.ShowFolderPath;
    const CalendarDate range = view.period.Range();
    input.folder = MakeDayFolderPath(MainRoot(), range.year, range.month, range.day);
    input.searchMode = view.searchResult;
    if (input.searchMode) input.query = SearchText();
    return MakeCaption(input);
}

std::string LevelLabel(Level level) {
    const LevelRow& row = LevelRowOf(level);
    return State().settings.UseJapanese ? row.japanese : row.name;
}

// Gives each visible label a width, so that all of them end before `limit`: the query is shortened first,
// then the level, then the date. What finds no room even so (in a window that was forced below
// LeastClientSize) is hidden.
void FitLabels(ButtonParts& bar, int limit) {
    CButton* const inOrder[] = {bar.date.get(), bar.level.get(), bar.search.get()};
    CButton* const shortenFirst[] = {bar.search.get(), bar.level.get(), bar.date.get()};
    int excess = kGap - limit;
    for (CButton* label : inOrder)
        if (label->IsVisible()) excess += label->FullWidth() + kGap;
    for (CButton* label : shortenFirst) {
        if (!label->IsVisible()) continue;
        const int least = std::min(label->FullWidth(), kLeastLabelWidth);
        const int width = std::clamp(label->FullWidth() - std::max(0, excess), least, label->FullWidth());
        excess -= label->FullWidth() - width;
        label->LimitWidth(width);
    }
    int x = kGap;
    for (CButton* label : inOrder) {
        if (label->IsVisible() && x + label->width + kGap > limit) label->state = CButton::State::Hidden;
        label->x = x;
        if (label->IsVisible()) x += label->width + kGap;
    }
}

// `limit`: where the first picture button begins.
void PlaceLabels(ButtonParts& bar, int clientHeight, int limit) {
    const ViewState view = View();
    const auto show = [&](CButton& label, bool isShown) {
        label.state = isShown ? CButton::State::Normal : CButton::State::Hidden;
        label.y = clientHeight - label.height - kGap;
    };
    const std::string level = LevelLabel(view.period.level);
    show(*bar.date, true);
    show(*bar.level, !level.empty());
    bar.level->SetText(level);
    show(*bar.search, view.searchResult);
    if (view.searchResult) bar.search->SetText(text::ToDisplay(SearchText()));
    FitLabels(bar, limit);
}

// Gives where the leftmost of them begins.
int PlaceImages(ButtonParts& bar, Size client) {
    const AppState& state = State();
    int previousLeft = client.width;
    for (std::size_t i = 0; i < kImageButtonCount; ++i) {
        const ButtonRow& row = kButtonRows[i];
        CButton& button = *bar.images[i];
        button.SetImage(row.isOn && row.imageOff && !row.isOn(state) ? row.imageOff : row.image);
        if (!IsShown(i, state)) {
            button.state = CButton::State::Hidden;
            continue;
        }
        button.state = CButton::State::Normal;
        button.x = previousLeft - button.width - kGap;
        // Prev 2 is placed by the height of the Prev button: kept, and held by a test.
        const int height = i == kPrev2 ? bar.images[kPrev]->height : button.height;
        button.y = client.height - height - kGap;
        previousLeft = button.x;
    }
    return previousLeft;
}

Rect StripOf(Size client) {
    const int height = std::clamp(client.height, 0, kBarHeight);
    return {0, client.height - height, client.width, height};
}

// The whole strip, so that nothing half-transparent is painted over itself. While the window has just got
// another size there is no ground for it: its own paint is about to come.
void PaintStrip(ButtonParts& bar, Canvas& canvas) {
    const Size client = canvas.GetSize();
    if (bar.ground && bar.groundClient == client) {
        canvas.Blit(StripOf(client), *bar.ground);
        canvas.FillRect(StripOf(client), kStrip);
    }
    ForEachButton(bar, [&](const CButton& button, std::size_t) { button.Paint(canvas); });
    if (bar.focused && bar.focused->IsVisible()) bar.focused->PaintFocus(canvas);
}

}  // namespace

ButtonParts& TheButtonParts() {
    static ButtonParts* const parts = new ButtonParts;  // workers may outlive main
    return *parts;
}

void CreateButtons() {
    const AppState& state = State();
    const Font font{state.settings.ButtonFontFace, state.settings.ButtonFontHeight};
    ButtonParts& bar = TheButtonParts();
    std::lock_guard lock(bar.mutex);
    bar.date = std::make_unique<CButton>("", font, kLabelBack, kHighlight);
    bar.level = std::make_unique<CButton>(LevelLabel(Level::Day), font, kLabelBack, kHighlight);
    bar.search = std::make_unique<CButton>(" ", font, kSearchBack, kHighlight);
    bar.search->state = CButton::State::Hidden;
    bar.images.clear();
    for (const ButtonRow& row : kButtonRows) bar.images.push_back(std::make_unique<CButton>(row.image));
}

void DestroyButtons() {
    ButtonParts& bar = TheButtonParts();
    std::lock_guard lock(bar.mutex);
    bar.date.reset();
    bar.level.reset();
    bar.search.reset();
    bar.images.clear();
    bar.focused = nullptr;
    bar.ground.reset();
}

Size LeastClientSize() {
    int width = kGap + kLabels * (kLeastLabelWidth + kGap);
    for (std::size_t i = 0; i < kImageButtonCount; ++i)
        if (IsShown(i, State())) width += MeasureResPicture(kButtonRows[i].image).width + kGap;
    return {width, kLeastHeight};
}

void SetCaption() {
    const Caption caption = CurrentCaption();
    ButtonParts& bar = TheButtonParts();
    {
        std::lock_guard lock(bar.mutex);
        if (bar.date) {
            bar.date->SetText(caption.label);
            bar.date->textColor = caption.labelColor;
        }
    }
    if (Window* window = MainWindow()) window->SetTitle(text::ToDisplay(caption.title));
}

void SetButtonStates() {
    SetCaption();
    const Size client = ClientSize();
    ButtonParts& bar = TheButtonParts();
    std::lock_guard lock(bar.mutex);
    if (!bar.date) return;
    PlaceLabels(bar, client.height, PlaceImages(bar, client));
}

void SetBarGround(const Surface& base) {
    const Size client = base.GetSize();
    const Rect strip = StripOf(client);
    std::unique_ptr<Surface> ground = Surface::Create({strip.width, strip.height}, base.Scale());
    if (ground) ground->Draw()->Blit({0, 0, strip.width, strip.height}, base, {strip.x, strip.y});
    ButtonParts& bar = TheButtonParts();
    std::lock_guard lock(bar.mutex);
    bar.ground = std::move(ground);
    bar.groundClient = client;
}

void DrawUnderButtons(Canvas& canvas, const Rect& area,
                      const std::function<void(Canvas& canvas, Point origin)>& draw) {
    draw(canvas, {0, 0});
    const Size client = canvas.GetSize();
    const Rect strip = StripOf(client);
    if (area.Bottom() < strip.y) return;
    ButtonParts& bar = TheButtonParts();
    std::lock_guard lock(bar.mutex);
    if (bar.ground && bar.groundClient == client) draw(*bar.ground->Draw(), {strip.x, strip.y});
    PaintStrip(bar, canvas);
}

void DrawButtons(Canvas& canvas) {
    ButtonParts& bar = TheButtonParts();
    std::lock_guard lock(bar.mutex);
    PaintStrip(bar, canvas);
}

void DrawButtonsOnWindow() {
    Window* window = MainWindow();
    if (!window) return;
    if (const auto canvas = window->Draw()) DrawButtons(*canvas);
}

}  // namespace kalmora
