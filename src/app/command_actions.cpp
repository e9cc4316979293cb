#include "app/command_actions.h"

#include "app/tray_menu.h"
#include "base/log.h"
#include "media/rotation.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "views/bar/button_bar.h"
#include "views/control/navigation.h"
#include "views/load/object_loader.h"
#include "views/load/view_photos.h"
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

void PlayCurrentMusic(const AppParts& parts) {
    const std::string path = parts.calendar.backgrounds.CurrentMusic();
    if (State().settings.SoundMode && !path.empty() && files::Exists(path)) parts.music.Play(path);
}

class TurnInViews : public TurnListener {
public:
    explicit TurnInViews(CalendarStore& calendar) : calendar_(calendar) {}
    void OnTurned(const std::string& path) override { ForgetInViews(calendar_, path); }
    void OnToolMissing(const std::string& toolPath) override {
        ShowMessage(MainWindow(), "Not found", toolPath, MessageButtons::Ok);
    }

private:
    CalendarStore& calendar_;
};

}  // namespace

void ShowMainWindow(Window& window) {
    window.Show();
    window.Activate();
    State().run.MainWindowVisible = 1;
}

void HideMainWindow(const AppParts& parts, Window& window) {
    parts.filter.Hide();
    if (!parts.tray.IsShown()) {
        // Hidden, it could never be called back. A Minimize event follows.
        window.Minimize();
        return;
    }
    window.Hide();
    State().run.MainWindowVisible = 0;
}

void ExitProgram(const AppParts& parts, Window& window) {
    StopCurrentLoad(parts.calendar);
    window.Close();
    State().run.MainWindowVisible = 0;
}

void ToggleSound(const AppParts& parts) {
    if (State().settings.SoundMode) {
        State().settings.SoundMode = 0;
        parts.music.Stop();
    } else {
        State().settings.SoundMode = 1;
        StepMusic(parts, +1);
    }
    RedrawButtons();
}

void StepMusic(const AppParts& parts, int step) {
    parts.calendar.backgrounds.StepMusic(step);
    parts.music.Stop();
    PlayCurrentMusic(parts);
}

void PlayOtherMusic(const AppParts& parts) {
    parts.calendar.backgrounds.PickOtherMusic();
    PlayCurrentMusic(parts);
}

void ShowSearch(const AppParts& parts) {
    if (!parts.searchQuestion.Ask()) return;
    parts.calendar.AdvanceAllRing();
    RedrawButtons();
    UpdateObjects(parts.calendar);
}

void UpdateMonthInView(const AppParts& parts) {
    const CalendarDate date = View().period.date;
    parts.indexUpdates.Start(date.year * 100 + date.month);
}

void ImportFromCard(const AppParts& parts) { parts.importer.AskAndImport(); }

// A library of another platform does it there. It cannot be loaded here, and the log says so.
void SearchGoogleCalendar() {
    const std::string& library = State().settings.PathOfOrbinLib;
    Log("[Calendar] error: cannot load library %s", library.empty() ? "OrbinLib.dll" : library.c_str());
}

void OpenPeriodFolder() {
    const CalendarDate range = View().period.Range();
    shell::Open(MakeDayFolderPath(MainRoot(), range.year, range.month, range.day));
}

void OpenSlideShowByCommand(const AppParts& parts) {
    parts.slideShow.Open();
    State().run.SlideOpenedByCommand = 1;
}

void CloseSlideShowAndNeighbor(const AppParts& parts) {
    if (parts.slideShow.IsShown()) {
        parts.slideShow.Hide();
        State().run.SlideOpenedByCommand = 0;
    }
    if (parts.neighbor.IsShown()) parts.neighbor.Hide();
}

void SetSlideDirection(const AppParts& parts, SlideDirection direction) {
    parts.slideShow.SetDirection(direction);
}

void FlipSlideShowView(const AppParts& parts) { parts.slideShow.FlipView(); }

void DeleteSlide(const AppParts& parts) {
    Log("Delete");
    parts.slideShow.DeleteSlide();
}

void PasteIntoSlide(const AppParts& parts) {
    if (parts.slideShow.IsShown()) parts.slideShow.PasteComment();
}

void GoToNextObject(const AppParts& parts) {
    Log("Next.");
    if (parts.slideShow.IsShown()) parts.slideShow.Next();
    if (parts.neighbor.IsShown()) parts.neighbor.Next();
}

void GoToPreviousObject(const AppParts& parts) {
    Log("Prev.");
    if (parts.slideShow.IsShown()) parts.slideShow.Previous();
    if (parts.neighbor.IsShown()) parts.neighbor.Previous();
}

void RateObject(const AppParts& parts, EstimateType type) {
    if (parts.slideShow.IsShown())
        parts.slideShow.Rate(type);
    else if (parts.neighbor.IsShown())
        parts.neighbor.Rate(type);
}

void RotateObject(const AppParts& parts, int degrees) {
    TurnInViews listener(parts.calendar);
    RotateShown(degrees, parts.slideShow, parts.neighbor, listener);
}

void OpenEditorAndPaste(const AppParts& parts) {
    if (!parts.editor.IsOpen()) parts.editor.OpenAndPaste();
}

void EditText(const AppParts& parts, Command command) { parts.editor.Edit(command); }

void CloseEditor(const AppParts& parts) {
    if (parts.editor.IsOpen()) parts.editor.Close();
}

void TakeScreenshot(const AppParts& parts, ScreenshotArea area) { parts.screenshots.Take(area); }

void ScrapText(const AppParts& parts, ScrapSource source) { parts.scraps.Scrap(source); }

void RunGetter(const AppParts& parts, Getter getter) { parts.getters.Run(getter); }

void ResizeThumbnails(const AppParts& parts, int pixels) {
    AppState& state = State();
    if (!View().scatter || parts.slideShow.IsShown()) return;
    if (pixels < 0 && state.settings.ThumbnailMaxSize <= kSmallestThumbnail) return;
    state.settings.ThumbnailMaxSize = state.settings.ThumbnailMaxSize + pixels;
}

}  // namespace kalmora
