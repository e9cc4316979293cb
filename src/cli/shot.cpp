#include "cli/shot.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

#include "app/environment.h"
#include "app/rooms_to_come.h"
#include "base/dates.h"
#include "cli/before_reading.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "views/bar/button_bar.h"
#include "views/control/calendar_views.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/paint/background.h"
#include "views/paint/paint_view.h"

namespace kalmora {

namespace {

constexpr double kPatienceMs = 30 * 60 * 1000.0;  // a year of large pictures on a slow disk
constexpr int kLargestSide = 16384;

// When things appeared. A picture has no buttons to press, and it leaves no line in the navigation log.
class Times : public ViewObserver, public CommandRunner, public NavigationListener {
public:
    void OnFirstPaint() override { firstPaint = UptimeMs(); }
    void OnWholeView() override { wholeView = UptimeMs(); }
    void RunCommand(int) override {}
    void OnNavigation(const std::string&) override {}

    double window = 0;
    std::atomic<double> firstPaint{0};
    std::atomic<double> wholeView{0};
};

int WrongUse(const char* what, const std::string& value) {
    std::cerr << "kalmora shot: " << what << ": " << value << "\n";
    return 2;
}

std::optional<Size> ParseSize(const std::string& text) {
    int width = 0, height = 0, used = 0;
    if (std::sscanf(text.c_str(), "%dx%d%n", &width, &height, &used) != 2 ||
        static_cast<std::size_t>(used) != text.size())
        return std::nullopt;
    if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) return std::nullopt;
    return Size{width, height};
}

std::optional<CalendarDate> ParseDate(const std::string& text) {
    CalendarDate date;
    int used = 0;
    if (std::sscanf(text.c_str(), "%d-%d-%d%n", &date.year, &date.month, &date.day, &used) != 3 ||
        static_cast<std::size_t>(used) != text.size())
        return std::nullopt;
    if (date.year < 1 || date.year > 9999 || date.month < 1 || date.month > 12 || date.day < 1 ||
        date.day > DaysInMonth(date.year, date.month))
        return std::nullopt;
    return date;
}

void SetView(const ShotOptions& options, const CalendarDate& date) {
    AppState& state = State();
    ChangeView([&](ViewState& view) {
        if (options.view == "year") view.period.level = Level::Year;
        if (options.view == "month") view.period.level = Level::Month;
        if (options.view == "day") view.period.level = Level::Day;
        view.period.date = date;
        view.scatter = options.all;
    });
    state.settings.SoundMode = 0;
    state.settings.OutputNavigationLog = false;
    // No user watches the pictures arrive one by one.
    state.settings.TimingOfChangeImage = 0;
}

bool WaitForWholeView(CalendarStore& calendar, Application& application, const Times& times) {
    while (times.wholeView == 0 || calendar.IsObjectLoaderRunning() || calendar.IsPaintThreadRunning() ||
           !calendar.cellRedraws.AreDone()) {
        application.ProcessEvents(1);
        if (UptimeMs() > kPatienceMs) return false;
    }
    application.ProcessEvents(1);
    return true;
}

void Print(const ShotOptions& options, const Times& times, int objects) {
    if (options.json) {
        nlohmann::ordered_json result;
        result["file"] = options.out;
        result["objects"] = objects;
        result["windowMs"] = times.window;
        result["firstPaintMs"] = times.firstPaint.load();
        result["wholeViewMs"] = times.wholeView.load();
        std::cout << result.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
        return;
    }
    std::printf("%s: %d objects, window after %.0f ms, first paint after %.0f ms, whole view after %.0f ms\n",
                options.out.c_str(), objects, times.window, times.firstPaint.load(), times.wholeView.load());
}

}  // namespace

int RunShot(const StartOptions& start, const ShotOptions& options) {
    const auto size = ParseSize(options.size);
    if (!size) return WrongUse("--size wants WIDTHxHEIGHT", options.size);
    const SystemTime today = LocalTime();
    const auto date =
        options.date.empty() ? CalendarDate{today.year, today.month, today.day} : ParseDate(options.date);
    if (!date) return WrongUse("--date wants YYYY-MM-DD", options.date);

    PrepareFolders(start);
    const auto application = Application::Create("Kalmora", Application::Display::None, options.scale);
    if (!application) {
        std::cerr << "kalmora shot: nothing can be drawn on this machine\n";
        return 1;
    }
    ConnectRooms();
    LoadEnvironment(start);
    MakeWholeBeforeReading("shot");
    SetView(options, *date);

    Times times;
    RoomsToCome rooms;
    CalendarStore calendar({rooms.slideShow, rooms.music, times, times, rooms.filter, times});
    IntroduceViews(calendar);
    PrefetchBackground(calendar);
    WindowOptions windowOptions;
    windowOptions.title = "Kalmora";
    windowOptions.frame = {0, 0, size->width, size->height};
    const auto window = Window::Create(windowOptions, [&calendar](Window&, const Event& event) {
        if (event.type == EventType::Paint) PaintView(calendar);
        return true;
    });
    if (!window) return 1;
    SetMainWindow(window.get());
    CreateButtons();
    window->Show();
    times.window = UptimeMs();
    UpdateObjects(calendar);
    const bool whole = WaitForWholeView(calendar, *application, times);
    const auto picture = window->Snapshot();
    SetMainWindow(nullptr);
    if (!whole || !picture || !picture->SavePng(options.out)) {
        std::cerr << "kalmora shot: " << options.out << " cannot be written\n";
        // A worker that hangs would find what it uses taken down under it.
        if (!whole) std::_Exit(1);
        return 1;
    }
    Print(options, times, calendar.objectsDrawn);
    return 0;
}

}  // namespace kalmora
