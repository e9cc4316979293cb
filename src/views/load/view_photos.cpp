#include "views/load/view_photos.h"

#include "base/log.h"
#include "platform/clock.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr int kTries = 10, kTryMs = 100;

PlacedObjectPtr Find(const ObjectList& list, const std::string& path) {
    for (const PlacedObjectPtr& object : list.Snapshot())
        if (object->photo->path == path) return object;
    return nullptr;
}

bool ClaimSoon(ObjectList& list, const PlacedObjectPtr& object) {
    for (int i = 0; i < kTries; ++i) {
        if (list.Claim(object)) return true;
        SleepMs(kTryMs);
    }
    return false;
}

bool RateAlone(const std::string& path, EstimateType type) { return IsDone(PhotoFile(path).Estimate(type)); }

bool RateIn(Viewer& viewer, const std::string& path, EstimateType type) {
    const TicketGuard guard(viewer.queue, kTries, kTryMs);
    if (!guard) {
        Log("not rated, the view is at work: %s", path.c_str());
        return false;
    }
    const PlacedObjectPtr object = Find(viewer.objects, path);
    if (!object) return RateAlone(path, type);
    if (!ClaimSoon(viewer.objects, object)) return false;
    const RewriteResult result = object->photo->Estimate(type);
    viewer.objects.Abandon(object);
    return IsDone(result);
}

void ForgetIn(ObjectList& list, const std::string& path) {
    const PlacedObjectPtr object = Find(list, path);
    if (!object || !ClaimSoon(list, object)) return;
    object->photo->ForgetFile();
    list.Abandon(object);
}

}  // namespace

bool RateInView(CalendarStore& calendar, const std::string& path, EstimateType type) {
    Viewer* const viewer = calendar.ViewOf(View()).CurrentViewer();
    return viewer ? RateIn(*viewer, path, type) : RateAlone(path, type);
}

void ForgetInViews(CalendarStore& calendar, const std::string& path) {
    for (DayViewer& viewer : calendar.dayViewers) ForgetIn(viewer.objects, path);
    for (AllViewer& viewer : calendar.allViewers) ForgetIn(viewer.objects, path);
}

}  // namespace kalmora
