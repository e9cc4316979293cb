#include "views/paint/background.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "pictures/picture_cache.h"
#include "platform/files.h"
#include "platform/image.h"
#include "state/app_state.h"
#include "store/resources.h"
#include "views/model/calendar_store.h"

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

std::string BackgroundPath(CalendarStore& calendar) {
    const BackgroundSet& backgrounds = calendar.backgrounds;
    const std::string own = backgrounds.IsValid() ? backgrounds.CurrentImage() : std::string();
    if (!own.empty()) return own;
    const std::string& set = State().settings.BackgroundImage;
    // The default picture may have been installed elsewhere than in the home folder.
    if (!set.empty() && !files::Exists(set))
        return FindResource(set.substr(set.find_last_of(files::kSeparator) + 1));
    return set;
}

struct BackgroundCache {
    std::mutex mutex;
    std::optional<FileVersion> file;  // guarded by mutex, as is all of this; empty when it was not there
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
    const Image image = Pictures().Load(path, BackgroundPixels(size, scale), images::Preview::Never);
    const auto canvas = surface->Draw();
    canvas->FillRect({0, 0, size.width, size.height}, kPaper);
    canvas->DrawImage({0, 0, size.width, size.height}, image);
    return surface;
}

}  // namespace

BackgroundPtr RenewBackground(CalendarStore& calendar) {
    const Size size = ClientSize();
    const double scale = ClientScale();
    if (size.IsEmpty()) return nullptr;
    const std::string path = BackgroundPath(calendar);
    // A file that was replaced under its name is another one.
    const std::optional<FileVersion> file = VersionOf(path);
    BackgroundCache& cache = Cache();
    {
        std::lock_guard lock(cache.mutex);
        if (cache.surface && cache.file == file && cache.size == size && cache.scale == scale)
            return cache.surface;
    }
    std::shared_ptr<const Surface> surface = MakeBackground(path, size, scale);
    std::lock_guard lock(cache.mutex);
    cache.file = file;
    cache.size = size;
    cache.scale = scale;
    cache.surface = surface;
    return surface;
}

BackgroundPtr PaintedBackground(CalendarStore& calendar) {
    BackgroundCache& cache = Cache();
    {
        std::lock_guard lock(cache.mutex);
        if (cache.surface && cache.size == ClientSize() && cache.scale == ClientScale()) return cache.surface;
    }
    return RenewBackground(calendar);
}

void RestoreBackground(Canvas& canvas, const Ground& ground, const Rect& area) {
    if (ground.background)
        canvas.Blit(area, *ground.background, {area.x + ground.origin.x, area.y + ground.origin.y});
    else
        canvas.FillRect(area, kPaper);
}

void PrefetchBackground(CalendarStore& calendar) {
    const WindowRectValue& frame = State().settings.WindowRect;
    Pictures().Prefetch(BackgroundPath(calendar),
                        BackgroundPixels({frame.right - frame.left, frame.bottom - frame.top}, 1.0),
                        images::Preview::Never);
}

}  // namespace kalmora
