#include "views/view_fixture.h"

#include "platform/clock.h"
#include "platform/files.h"
#include "search/search_run.h"
#include "state/view_settings.h"
#include "store/data_folder.h"
#include "store/extension_table.h"
#include "store/settings_file.h"
#include "views/bar/button_bar.h"
#include "views/control/calendar_views.h"
#include "views/model/calendar_store.h"
#include "views/paint/paint_view.h"

namespace kalmora {

void WritePicture(const std::string& path, Color color, Size size) {
    const auto surface = Surface::Create(size, 1.0);
    surface->Draw()->FillRect({0, 0, size.width, size.height}, color);
    ASSERT_TRUE(surface->SavePng(path));
}

ViewTest::ViewTest() : root_(files::MakeTemporaryFolder()) {
    AppState& state = State();
    state.settings.ProgramFolder = root_;
    state.settings.InstallFolder = files::ExecutableFolder();
    ResetSettingsToDefaults();
    LoadExtensionTable(files::Join(root_, "extension.dat"));
    state.settings.DataDirectory = files::Join(root_, "files");
    MakeDirectories(state.settings.DataDirectory);
    state.settings.TimingOfChangeImage = 0;
    TakeViewFromSettings();
    ResetIndexes();
    ResetSearch();
    state.run.Paused = 0;
    state.run.FirstPaintDone = 0;
    state.run.FirstLoadDone = 0;
    state.run.TicksInView = 0;
    state.run.DayRing = state.run.AllRing = 0;
    calendar_ = std::make_unique<CalendarStore>(
        ViewPartners{slideShow_, music_, navigation_, commands_, filter_, observer_});
    IntroduceViews(*calendar_);
}

ViewTest::~ViewTest() {
    WaitUntilIdle();
    SetMainWindow(nullptr);
    DestroyButtons();
    window_.reset();
    calendar_.reset();
    files::RemoveFolderTree(root_);
}

std::string ViewTest::DayFolder(int year, int month, int day) const {
    return MakeDayFolderPath(MainRoot(), year, month, day);
}

std::string ViewTest::AddFile(const std::string& folder, const std::string& name, std::string_view content) {
    EXPECT_TRUE(MakeDirectories(folder));
    const std::string path = files::Join(folder, name);
    EXPECT_EQ(files::WriteWholeFile(path, content), files::FileResult::Done);
    return path;
}

std::string ViewTest::AddText(int year, int month, int day, const std::string& name,
                              std::string_view content) {
    return AddFile(DayFolder(year, month, day), name, content);
}

std::string ViewTest::AddPicture(int year, int month, int day, const std::string& name, Color color,
                                 Size size) {
    const std::string folder = DayFolder(year, month, day);
    EXPECT_TRUE(MakeDirectories(folder));
    const std::string path = files::Join(folder, name);
    WritePicture(path, color, size);
    return path;
}

void ViewTest::OpenWindow(Size size) {
    WindowOptions options;
    options.title = "Kalmora";
    options.frame = {0, 0, size.width, size.height};
    window_ = Window::Create(options, [this](Window&, const Event& event) {
        if (event.type == EventType::Paint) PaintView(*calendar_);
        return true;
    });
    ASSERT_TRUE(window_);
    SetMainWindow(window_.get());
    CreateButtons();
    window_->Show();
    TheApplication()->ProcessEvents(10);
}

bool ViewTest::WaitUntilIdle() {
    const double start = UptimeMs();
    do {
        TheApplication()->ProcessEvents(2);
        if (UptimeMs() - start > 10000) return false;
    } while (calendar_->AreWorkersRunning());
    TheApplication()->ProcessEvents(2);
    return true;
}

void ViewTest::ShowMonth(int year, int month) {
    ChangeView([&](ViewState& view) {
        view.period.level = Level::Month;
        view.period.date.year = year;
        view.period.date.month = month;
    });
}

void ViewTest::ShowYear(int year) {
    ChangeView([&](ViewState& view) {
        view.period.level = Level::Year;
        view.period.date.year = year;
    });
}

void ViewTest::ShowDay(int year, int month, int day) {
    ShowMonth(year, month);
    ChangeView([&](ViewState& view) {
        view.period.level = Level::Day;
        view.period.date.day = day;
    });
}

Color ViewTest::PixelAt(int x, int y) const { return window_->Snapshot()->PixelAt(x, y); }

}  // namespace kalmora
