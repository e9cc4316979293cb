#include "views/model/painted_base.h"

#include <mutex>
#include <utility>

namespace kalmora {

namespace {

struct LastBase {
    std::mutex mutex;
    SurfacePtr surface;  // guarded by mutex
};

LastBase& Base() {
    static LastBase* const base = new LastBase;  // workers may outlive main
    return *base;
}

}  // namespace

SurfacePtr PaintedBase() {
    std::lock_guard lock(Base().mutex);
    return Base().surface;
}

void SetPaintedBase(SurfacePtr surface) {
    std::lock_guard lock(Base().mutex);
    Base().surface = std::move(surface);
}

}  // namespace kalmora
