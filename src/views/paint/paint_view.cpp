#include "views/paint/paint_view.h"

#include <mutex>
#include <string>

#include "pictures/res_pictures.h"
#include "platform/files.h"
#include "platform/image.h"
#include "platform/window.h"
#include "state/app_state.h"
#include "store/resources.h"
#include "views/bar/button_bar.h"
#include "views/hooks.h"
#include "views/model/calendar_geometry.h"
#include "views/model/calendar_store.h"
#include "views/paint/event_paint.h"
#include "views/paint/missing_folder.h"
#include "views/paint/paint_cell.h"

namespace kalmora {

namespace {

constexpr Color kPaper = ColorFromBgr(0xE6FFFF);  // the light brush: what is seen where no picture lies
constexpr int kBackgroundStep = 512;              // device pixels

// Sizes of the decoded background go in steps, so that dragging the window's edge does not decode at each
// pixel.
Size BackgroundPixels(Size client, double scale) {
    const auto up = [scale](int length) {
        const int pixels = static_cast<int>(length * scale);
        return (pixels + kBackgroundStep - 1) / kBackgroundStep * kBackgroundStep;
    };
    return {up(client.width), up(client.height)};
}

std::string BackgroundPath() {
    const BackgroundSet& backgrounds = Calendar().backgrounds;
    const std::string own = backgrounds.IsValid() ? backgrounds.CurrentImage() : std::string();
    if (!own.empty()) return own;
    const std::string& set = State().settings.BackgroundImage;
    // The default picture may have been installed elsewhere than in the home folder.
    if (!set.empty() && !files::Exists(set))
        return FindResource(set.substr(set.find_last_of(files::kSeparator) + 1));
    return set;
}

struct LastBase {
    std::mutex mutex;
    SurfacePtr surface;  // guarded by mutex
};

LastBase& Base() {
    static LastBase* const base = new LastBase;
    return *base;
}

struct BackgroundCache {
    std::mutex mutex;
    std::string path;  // guarded by mutex, as is all of this
    Size size;
    double scale = 0;
    std::shared_ptr<const Surface> surface;
};

BackgroundCache& Cache() {
    static BackgroundCache* const cache = new BackgroundCache;
    return *cache;
}

std::shared_ptr<const Surface> MakeBackground(const std::string& path, Size size, double scale) {
    std::shared_ptr<Surface> surface = Surface::Create(size, scale);
    if (!surface) return nullptr;
    const Image image = images::Load(path, BackgroundPixels(size, scale), images::Preview::Never);
    const auto canvas = surface->Draw();
    canvas->FillRect({0, 0, size.width, size.height}, kPaper);
    canvas->DrawImage({0, 0, size.width, size.height}, image);
    return surface;
}

// The background for the picture that is to be shown now.
BackgroundPtr RenewBackground() {
    const Size size = ClientSize();
    const double scale = ClientScale();
    if (size.IsEmpty()) return nullptr;
    const std::string path = BackgroundPath();
    BackgroundCache& cache = Cache();
    {
        std::lock_guard lock(cache.mutex);
        if (cache.surface && cache.path == path && cache.size == size && cache.scale == scale)
            return cache.surface;
    }
    std::shared_ptr<const Surface> surface = MakeBackground(path, size, scale);
    std::lock_guard lock(cache.mutex);
    cache.path = path;
    cache.size = size;
    cache.scale = scale;
    cache.surface = surface;
    return surface;
}

Decode DecodePolicy() {
    const Application* application = TheApplication();
    return application && application->IsGuiThread() ? Decode::Later : Decode::Now;
}

int DrawYear(Canvas& canvas, int year, Size client, double scale) {
    int drawn = 0;
    for (int month = 1; month <= 12; ++month) {
        const Rect area = YearMonthRect(client.width, month);
        drawn += State().settings.CalendarMode
                     ? DrawMonth(canvas, MakeMonthGrid(year, month, area, true), true, scale, DecodePolicy())
                     : DrawMonthAsPicture(canvas, year, month, area, scale, DecodePolicy());
    }
    return drawn;
}

void DrawHours(Canvas& canvas, Size client, double scale) {
    const AppState& state = State();
    const DayLines lines = MakeDayLines(client.height, state.settings.DayNumberOfLine,
                                        state.settings.DayDuration, state.settings.DayStartTime);
    for (int line = 0; line < lines.lines; ++line) {
        const Rect area = lines.HourPictureRect(line);
        canvas.DrawImage(
            area, LoadResPicture(HourPictureName(lines.HourOfLine(line)), {area.width, area.height}, scale));
    }
}

void DrawPeriod(Canvas& canvas, Size client, double scale) {
    const AppState& state = State();
    CalendarStore& calendar = Calendar();
    if (state.view.AllViewMode) return;
    switch (state.view.ViewType) {
        case kYearly:
            calendar.objectsDrawn = DrawYear(canvas, state.view.TargetYear, client, scale);
            break;
        case kMonthly:
            calendar.objectsDrawn = DrawMonth(canvas,
                                              MakeMonthGrid(state.view.TargetYear, state.view.TargetMonth,
                                                            {0, 0, client.width, client.height}, false),
                                              false, scale, DecodePolicy());
            break;
        case kDaily:
            DrawHours(canvas, client, scale);
            break;
        default:
            break;
    }
}

}  // namespace

SurfacePtr PaintedBase() {
    std::lock_guard lock(Base().mutex);
    return Base().surface;
}

BackgroundPtr PaintedBackground() {
    BackgroundCache& cache = Cache();
    {
        std::lock_guard lock(cache.mutex);
        if (cache.surface && cache.size == ClientSize() && cache.scale == ClientScale()) return cache.surface;
    }
    return RenewBackground();
}

void RestoreBackground(Canvas& canvas, const BackgroundPtr& background, const Rect& area, Point from) {
    if (background)
        canvas.Blit(area, *background, from);
    else
        canvas.FillRect(area, kPaper);
}

void PrefetchBackground() {
    const WindowRectValue& frame = State().settings.WindowRect;
    images::Prefetch(BackgroundPath(),
                     BackgroundPixels({frame.right - frame.left, frame.bottom - frame.top}, 1.0),
                     images::Preview::Never);
}

void PaintBase() {
    Window* window = MainWindow();
    const AppState& state = State();
    if (!window) return;
    SetButtonStates();
    const Size size = window->ClientSize();
    const double scale = window->Scale();
    const std::shared_ptr<Surface> surface = Surface::Create(size, scale);
    if (!surface) return;
    const BackgroundPtr background = RenewBackground();
    const CellRedrawPause pause;
    const int viewType = state.view.ViewType;
    const bool known = viewType == kYearly || viewType == kMonthly || viewType == kDaily;
    {
        const auto canvas = surface->Draw();
        RestoreBackground(*canvas, background, {0, 0, size.width, size.height});
        if (known) DrawPeriod(*canvas, size, scale);
        if (LastSeenDataFolder() == DataFolder::Away) DrawMissingFolder(*canvas, size);
    }
    {
        std::lock_guard lock(Base().mutex);
        Base().surface = surface;
    }
    if (const auto canvas = window->Draw()) {
        canvas->Blit({0, 0, size.width, size.height}, *surface);
        if (known) DrawButtons(*canvas);
    }
    if (!State().run.FirstPaintDone.exchange(1)) Hooks().OnFirstPaint();
}

void PaintView() {
    if (Calendar().LeavePaintToRun()) return;
    PaintBase();
    EventPaint();
}

}  // namespace kalmora
