#include "app/connect_photos.h"

#include <atomic>
#include <memory>

#include "app/app_hooks.h"
#include "app/run_beside.h"
#include "base/commands.h"
#include "media/rotation.h"
#include "state/app_state.h"
#include "views/hooks.h"
#include "views/load/view_photos.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr int kTicksWhileTurning = 50, kTicksWhenTurned = 10;  // times TimingOfChangeSlide

RotationStage SlideShowStage() {
    RotationStage stage;
    stage.isShown = [] { return Hooks().IsSlideShowOpen(); };
    stage.path = [] { return Shell().SlidePath(); };
    stage.say = [](const std::string& words, bool isLast) {
        const int ticks = isLast ? kTicksWhenTurned : kTicksWhileTurning;
        Shell().SayInSlideShow(words, State().settings.TimingOfChangeSlide * ticks);
    };
    stage.reload = [] {
        ForgetInViews(Shell().SlidePath());
        Shell().ReloadSlide();
    };
    return stage;
}

RotationStage NeighborStage() {
    RotationStage stage;
    stage.isShown = [] { return Shell().IsNeighborShown(); };
    stage.path = [] { return Shell().NeighborPath(); };
    stage.say = [](const std::string& words, bool) { Shell().SayInNeighbor(words); };
    stage.reload = [] {
        ForgetInViews(Shell().NeighborPath());
        Shell().ReloadNeighbor();
    };
    stage.logsPath = true;
    return stage;
}

void Rotate(int id) {
    constexpr int kQuarterTurn = 90;
    RotateOnStage((id - kCommandRotate90 + 1) * kQuarterTurn, SlideShowStage(), NeighborStage());
}

}  // namespace

void ConnectPhotos() {
    Shell().Rotate = Rotate;
    Shell().RateFile = [](const std::string& path, int type) {
        const auto isRated = std::make_shared<std::atomic<bool>>(false);
        RunBeside("Rate", [=] { *isRated = RateInView(path, static_cast<EstimateType>(type)); });
        return isRated->load();
    };
    OnRotationToolMissing = [](const std::string& toolPath) {
        ShowMessage(MainWindow(), "Not found", toolPath, MessageButtons::Ok);
    };
}

}  // namespace kalmora
