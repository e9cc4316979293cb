#include "app/dispatch.h"

#include <algorithm>
#include <array>

#include "app/app_hooks.h"
#include "app/command_actions.h"
#include "app/jump_dialog.h"
#include "base/log.h"
#include "input/accelerators.h"
#include "platform/clock.h"
#include "state/app_state.h"
#include "views/control/navigation.h"
#include "views/hooks.h"
#include "views/load/object_loader.h"

namespace kalmora {

namespace {

struct CommandRow {
    int first;
    int last;
    void (*run)(Window& window, int id);
};

#define KALMORA_RUN(...)         \
    [](Window& window, int id) { \
        (void)window;            \
        (void)id;                \
        __VA_ARGS__;             \
    }

// In the order of the numbers.
constexpr std::array kCommands = std::to_array<CommandRow>({
    {1001, 1001, KALMORA_RUN(ShowMainWindow(window))},
    {1002, 1002, KALMORA_RUN(ExitProgram(window))},
    {1010, 1010, KALMORA_RUN(StepPeriod(Step::OuterNext))},
    {1011, 1011, KALMORA_RUN(StepPeriod(Step::Next))},
    {1012, 1012, KALMORA_RUN(StepPeriod(Step::Previous))},
    {1013, 1013, KALMORA_RUN(StepPeriod(Step::OuterPrevious))},
    {1014, 1014, KALMORA_RUN(JumpToToday())},
    {1015, 1015, KALMORA_RUN(RandomNavigate())},
    {1016, 1016, KALMORA_RUN(ShowJumpDialog(window))},
    {1017, 1017, KALMORA_RUN(ToYearly())},
    {1018, 1018, KALMORA_RUN(OneLevelUp())},
    {1019, 1019, KALMORA_RUN(OpenTodayLevel())},
    {1020, 1020, KALMORA_RUN(HideMainWindow(window))},
    {1021, 1021, KALMORA_RUN(ReloadView())},
    {1022, 1022, KALMORA_RUN(ToggleAllView())},
    {1023, 1023, KALMORA_RUN(ToggleAutoNavigate())},
    {1024, 1024, KALMORA_RUN(TogglePublicMode())},
    {1025, 1025, KALMORA_RUN(ToggleGoodMode())},
    {1026, 1026, KALMORA_RUN(ToggleSound())},
    {1027, 1027, KALMORA_RUN(TogglePaused())},
    {1030, 1030, KALMORA_RUN(StepMusic(+1))},
    {1031, 1031, KALMORA_RUN(StepMusic(-1))},
    {1041, 1041, KALMORA_RUN(ShowSearch())},
    {1043, 1043, KALMORA_RUN(UpdateMonthInView())},
    {1046, 1047, KALMORA_RUN(Shell().RunGetter(id))},
    {1048, 1048, KALMORA_RUN(SearchGoogleCalendar())},
    {1049, 1049, KALMORA_RUN(Shell().RunGetter(id))},
    {1050, 1050, KALMORA_RUN(OpenPeriodFolder())},
    {1051, 1051, KALMORA_RUN(OpenSlideShowByCommand())},
    {1052, 1052, KALMORA_RUN(CloseSlideShowAndNeighbor())},
    {1053, 1054, KALMORA_RUN(Shell().SetSlideShowState(id - 1053))},
    {1055, 1055, KALMORA_RUN(GoToNextObject())},
    {1056, 1056, KALMORA_RUN(GoToPreviousObject())},
    {1057, 1057, KALMORA_RUN(Shell().FlipSlideShowView())},
    {1058, 1058, KALMORA_RUN(Log("Delete"); Shell().DeleteSlide())},
    {1059, 1059, KALMORA_RUN(if (!Shell().IsEditorOpen()) Shell().OpenEditorAndPaste())},
    {1060, 1062, KALMORA_RUN(Shell().Rotate(id))},
    {1063, 1063, KALMORA_RUN(if (Hooks().IsSlideShowOpen()) Shell().PasteIntoSlideShow())},
    {1100, 1106, KALMORA_RUN(RateObject(id - 1099))},
    {1120, 1120, KALMORA_RUN(ResizeThumbnails(+10))},
    {1121, 1121, KALMORA_RUN(ResizeThumbnails(-10))},
    {1200, 1200, KALMORA_RUN(Shell().Import())},
    {2000, 2000, KALMORA_RUN(Shell().TakeScreenshot(true))},
    {2001, 2001, KALMORA_RUN(Shell().TakeScreenshot(false))},
    {2002, 2002, KALMORA_RUN(Shell().ScrapSelection(id))},
    {2005, 2005, KALMORA_RUN(Shell().ScrapSelection(id))},
    {40271, 40286, KALMORA_RUN(Shell().SendToEditor(id))},
    {40290, 40290, KALMORA_RUN(if (Shell().IsEditorOpen()) Shell().CloseEditor())},
    {40291, 40291, KALMORA_RUN(Shell().SendToEditor(id))},
});

#undef KALMORA_RUN

constexpr bool InOrder() {
    for (std::size_t i = 1; i < kCommands.size(); ++i)
        if (kCommands[i].first <= kCommands[i - 1].last) return false;
    return true;
}
static_assert(InOrder(), "the table is searched by halves");

}  // namespace

void DispatchCommand(Window& window, int id) {
    State().run.LastActivity = UptimeMs();
    const int number = id & 0xFFFF;
    Log("[Command] %d", number);
    const auto row = std::lower_bound(kCommands.begin(), kCommands.end(), number,
                                      [](const CommandRow& r, int n) { return r.last < n; });
    if (row != kCommands.end() && row->first <= number) row->run(window, number);
}

bool RouteCommand(Window& window, int id) {
    State().run.LastActivity = UptimeMs();
    if (IsKeyCommand(id)) {
        id = Shell().TranslateKey(id);
        if (id == 0) return false;
    }
    DispatchCommand(window, id);
    return true;
}

}  // namespace kalmora
