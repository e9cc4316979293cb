#include "app/command_actions.h"

#include "app/app_hooks.h"
#include "app/tray_menu.h"
#include "base/log.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "views/bar/button_bar.h"
#include "views/control/navigation.h"
#include "views/hooks.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/model/stop_load.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

constexpr int kSmallestThumbnail = 10;

void RedrawButtons() {
    SetButtonStates();
    DrawButtonsOnWindow();
}

void PlayCurrentMusic() {
    const std::string path = Calendar().backgrounds.CurrentMusic();
    if (State().settings.SoundMode && !path.empty() && files::Exists(path)) Hooks().PlayMusic(path);
}

}  // namespace

void ShowMainWindow(Window& window) {
    window.Show();
    window.Activate();
    State().run.MainWindowVisible = 1;
}

void HideMainWindow(Window& window) {
    Shell().HideFilterWindow();
    if (!HasTray()) {
        // Hidden, it could never be called back. Once it is minimised the window is told so.
        window.Minimize();
        return;
    }
    window.Hide();
    State().run.MainWindowVisible = 0;
}

void ExitProgram(Window& window) {
    StopCurrentLoad();
    window.Close();
    State().run.MainWindowVisible = 0;
}

void ToggleSound() {
    if (State().settings.SoundMode) {
        State().settings.SoundMode = 0;
        Hooks().StopMusic();
    } else {
        State().settings.SoundMode = 1;
        StepMusic(+1);
    }
    RedrawButtons();
}

void StepMusic(int step) {
    Calendar().backgrounds.StepMusic(step);
    Hooks().StopMusic();
    PlayCurrentMusic();
}

void PlayOtherMusic() {
    Calendar().backgrounds.PickOtherMusic();
    PlayCurrentMusic();
}

void ShowSearch() {
    if (!Shell().ShowSearchDialog()) return;
    Calendar().AdvanceAllRing();
    RedrawButtons();
    UpdateObjects();
}

void UpdateMonthInView() {
    Shell().UpdateMonthInBackground(State().view.TargetYear * 100 + State().view.TargetMonth);
}

// A library of another platform does it there. It cannot be loaded here, and the log says so.
void SearchGoogleCalendar() {
    const std::string& library = State().settings.PathOfOrbinLib;
    Log("[Calendar] error: cannot load library %s", library.empty() ? "OrbinLib.dll" : library.c_str());
}

void OpenPeriodFolder() {
    const AppState& state = State();
    const int view = state.view.ViewType;
    shell::Open(MakeDayFolderPath(MainRoot(), state.view.TargetYear,
                                  view == kYearly ? 0 : state.view.TargetMonth.load(),
                                  view == kYearly || view == kMonthly ? 0 : state.view.TargetDay.load()));
}

void OpenSlideShowByCommand() {
    Shell().OpenSlideShow();
    State().run.SlideOpenedByCommand = 1;
}

void CloseSlideShowAndNeighbor() {
    if (Hooks().IsSlideShowOpen()) {
        Shell().CloseSlideShow();
        State().run.SlideOpenedByCommand = 0;
    }
    if (Shell().IsNeighborShown()) Shell().HideNeighbor();
}

void GoToNextObject() {
    Log("Next.");
    if (Hooks().IsSlideShowOpen()) Shell().NextSlide();
    if (Shell().IsNeighborShown()) Shell().NextNeighbor();
}

void GoToPreviousObject() {
    Log("Prev.");
    if (Hooks().IsSlideShowOpen()) Shell().PreviousSlide();
    if (Shell().IsNeighborShown()) Shell().PreviousNeighbor();
}

void RateObject(int estimateType) {
    if (Hooks().IsSlideShowOpen())
        Shell().RateSlide(estimateType);
    else if (Shell().IsNeighborShown())
        Shell().RateNeighbor(estimateType);
}

void ResizeThumbnails(int pixels) {
    AppState& state = State();
    if (!state.view.AllViewMode || Hooks().IsSlideShowOpen()) return;
    if (pixels < 0 && state.settings.ThumbnailMaxSize <= kSmallestThumbnail) return;
    state.settings.ThumbnailMaxSize = state.settings.ThumbnailMaxSize + pixels;
}

}  // namespace kalmora
