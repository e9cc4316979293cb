#include "app/dispatch.h"

#include <algorithm>
#include <array>
#include <type_traits>

#include "app/command_actions.h"
#include "app/jump_dialog.h"
#include "base/commands.h"
#include "base/log.h"
#include "input/accelerators.h"
#include "input/key_config.h"
#include "platform/clock.h"
#include "state/app_state.h"
#include "views/control/navigation.h"
#include "views/load/object_loader.h"

namespace kalmora {

namespace {

struct CommandRow {
    Command command;
    void (*run)(const AppParts& parts, Window& window);
};

// Calls the function with what it takes of the parts, the calendar and the window, and with the values of its
// row.
template <auto Function, auto... values>
void Run(const AppParts& parts, Window& window) {
    using F = decltype(Function);
    if constexpr (std::is_invocable_v<F, const AppParts&, Window&, decltype(values)...>)
        Function(parts, window, values...);
    else if constexpr (std::is_invocable_v<F, const AppParts&, decltype(values)...>)
        Function(parts, values...);
    else if constexpr (std::is_invocable_v<F, CalendarStore&, Window&, decltype(values)...>)
        Function(parts.calendar, window, values...);
    else if constexpr (std::is_invocable_v<F, CalendarStore&, decltype(values)...>)
        Function(parts.calendar, values...);
    else if constexpr (std::is_invocable_v<F, Window&, decltype(values)...>)
        Function(window, values...);
    else
        Function(values...);
}

// In the order of the numbers. A command without a row does nothing.
constexpr auto kRows = std::to_array<CommandRow>({
    {kCommandShow, Run<ShowMainWindow>},
    {kCommandExit, Run<ExitProgram>},
    {kCommandOuterNext, Run<StepPeriod, Step::OuterNext>},
    {kCommandNext, Run<StepPeriod, Step::Next>},
    {kCommandPrevious, Run<StepPeriod, Step::Previous>},
    {kCommandOuterPrevious, Run<StepPeriod, Step::OuterPrevious>},
    {kCommandToday, Run<JumpToToday>},
    {kCommandRandom, Run<RandomNavigate>},
    {kCommandJump, Run<ShowJumpDialog>},
    {kCommandToYearly, Run<ToYearly>},
    {kCommandLevelUp, Run<OneLevelUp>},
    {kCommandOpenTodayLevel, Run<OpenTodayLevel>},
    {kCommandHide, Run<HideMainWindow>},
    {kCommandReload, Run<ReloadView>},
    {kCommandAllView, Run<ToggleAllView>},
    {kCommandAutoNavigate, Run<ToggleAutoNavigate>},
    {kCommandPublicMode, Run<TogglePublicMode>},
    {kCommandGoodMode, Run<ToggleGoodMode>},
    {kCommandSound, Run<ToggleSound>},
    {kCommandPause, Run<TogglePaused>},
    {kCommandMusicForward, Run<StepMusic, +1>},
    {kCommandMusicBack, Run<StepMusic, -1>},
    {kCommandSearch, Run<ShowSearch>},
    {kCommandUpdateMonth, Run<UpdateMonthInView>},
    {kCommandAmazon, Run<RunGetter, Getter::Amazon>},
    {kCommandTravel, Run<RunGetter, Getter::Travel>},
    {kCommandGoogleCalendar, Run<SearchGoogleCalendar>},
    {kCommandTwitter, Run<RunGetter, Getter::Twitter>},
    {kCommandOpenFolder, Run<OpenPeriodFolder>},
    {kCommandOpenSlideShow, Run<OpenSlideShowByCommand>},
    {kCommandCloseSlideShow, Run<CloseSlideShowAndNeighbor>},
    {kCommandSlidesForward, Run<SetSlideDirection, SlideDirection::Forward>},
    {kCommandSlidesBackward, Run<SetSlideDirection, SlideDirection::Backward>},
    {kCommandNextSlide, Run<GoToNextObject>},
    {kCommandPreviousSlide, Run<GoToPreviousObject>},
    {kCommandFlipSlideShowView, Run<FlipSlideShowView>},
    {kCommandDeleteSlide, Run<DeleteSlide>},
    {kCommandPasteAndEdit, Run<OpenEditorAndPaste>},
    {kCommandRotate90, Run<RotateObject, 90>},
    {kCommandRotate180, Run<RotateObject, 180>},
    {kCommandRotate270, Run<RotateObject, 270>},
    {kCommandPasteIntoSlide, Run<PasteIntoSlide>},
    {kCommandRateLike, Run<RateObject, EstimateType::Like>},
    {kCommandRatePublic, Run<RateObject, EstimateType::Public>},
    {kCommandRateGood, Run<RateObject, EstimateType::Good>},
    {kCommandRateDislike, Run<RateObject, EstimateType::Dislike>},
    {kCommandRatePrivate, Run<RateObject, EstimateType::Private>},
    {kCommandRateBad, Run<RateObject, EstimateType::Bad>},
    {kCommandClearRating, Run<RateObject, EstimateType::Clear>},
    {kCommandThumbnailLarger, Run<ResizeThumbnails, +10>},
    {kCommandThumbnailSmaller, Run<ResizeThumbnails, -10>},
    {kCommandImport, Run<ImportFromCard>},
    {kCommandScreenshot, Run<TakeScreenshot, ScreenshotArea::Desktop>},
    {kCommandScreenshotOfWindow, Run<TakeScreenshot, ScreenshotArea::ForegroundWindow>},
    {kCommandScrapSelection, Run<ScrapText, ScrapSource::Selection>},
    {kCommandScrapClipboard, Run<ScrapText, ScrapSource::Clipboard>},
    {kCommandLineDown, Run<EditText, kCommandLineDown>},
    {kCommandLineUp, Run<EditText, kCommandLineUp>},
    {kCommandRight, Run<EditText, kCommandRight>},
    {kCommandLeft, Run<EditText, kCommandLeft>},
    {kCommandLineStart, Run<EditText, kCommandLineStart>},
    {kCommandLineEnd, Run<EditText, kCommandLineEnd>},
    {kCommandDeleteLeft, Run<EditText, kCommandDeleteLeft>},
    {kCommandDeleteRight, Run<EditText, kCommandDeleteRight>},
    {kCommandPaste, Run<EditText, kCommandPaste>},
    {kCommandPageDown, Run<EditText, kCommandPageDown>},
    {kCommandPageUp, Run<EditText, kCommandPageUp>},
    {kCommandCopy, Run<EditText, kCommandCopy>},
    {kCommandCutLine, Run<EditText, kCommandCutLine>},
    {kCommandCut, Run<EditText, kCommandCut>},
    {kCommandUndo, Run<EditText, kCommandUndo>},
    {kCommandRedo, Run<EditText, kCommandRedo>},
    {kCommandCloseEditor, Run<CloseEditor>},
    {kCommandSelectAll, Run<EditText, kCommandSelectAll>},
});

constexpr bool IsBefore(const CommandRow& a, const CommandRow& b) { return a.command < b.command; }
static_assert(std::is_sorted(kRows.begin(), kRows.end(), IsBefore), "the table is searched by halves");

constexpr bool HasRow(Command command) {
    return std::any_of(kRows.begin(), kRows.end(),
                       [=](const CommandRow& row) { return row.command == command; });
}
static_assert(std::all_of(kKeyCommands.begin(), kKeyCommands.end(),
                          [](const KeyCommand& key) { return key.id == kCommandAddText || HasRow(key.id); }),
              "a key can be bound to it, so it has a row");

}  // namespace

void DispatchCommand(const AppParts& parts, Window& window, int id) {
    State().run.LastActivity = UptimeMs();
    const int number = id & 0xFFFF;
    Log("[Command] %d", number);
    const auto row = std::lower_bound(kRows.begin(), kRows.end(), number,
                                      [](const CommandRow& r, int n) { return r.command < n; });
    if (row != kRows.end() && row->command == number) row->run(parts, window);
}

bool RouteCommand(const AppParts& parts, Window& window, int id) {
    State().run.LastActivity = UptimeMs();
    if (IsKeyCommand(id)) {
        id = parts.keys.TranslateKey(id);
        if (id == 0) return false;
    }
    DispatchCommand(parts, window, id);
    return true;
}

}  // namespace kalmora
