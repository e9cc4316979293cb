#include "media/rotation.h"

#include "base/log.h"
#include "media/turned_photo.h"
#include "platform/files.h"
#include "rewrite/safe_rewrite.h"
#include "state/app_state.h"
#include "store/file_helpers.h"
#include "text/text.h"

namespace kalmora {

namespace {

// How long the slide show stays at the picture, in times of a slide.
constexpr int kSlidesWhileTurning = 50, kSlidesWhenTurned = 10;

RotateResult ResultOf(TurnPlan plan) {
    switch (plan) {
        case TurnPlan::Ready:
            return RotateResult::Turned;
        case TurnPlan::NotJpeg:
            return RotateResult::NotJpeg;
        case TurnPlan::Damaged:
            return RotateResult::Damaged;
        case TurnPlan::WouldMove:
            return RotateResult::WouldMove;
        case TurnPlan::ToolFailed:
            break;
    }
    return RotateResult::Failed;
}

RotateResult ResultOf(RewriteResult result) {
    switch (result) {
        case RewriteResult::Written:
        case RewriteResult::Unchanged:
            return RotateResult::Turned;
        case RewriteResult::Denied:
            return RotateResult::Denied;
        case RewriteResult::NoSpace:
            return RotateResult::NoSpace;
        case RewriteResult::InUse:
            return RotateResult::InUse;
        case RewriteResult::Changed:
            return RotateResult::Changed;
        default:
            return RotateResult::Failed;
    }
}

}  // namespace

RotateResult RotateJpeg(const std::string& path, int degrees) {
    const std::string tool = State().settings.PathOfJpegTran;
    if (!files::Exists(tool)) return RotateResult::NoTool;
    const std::string extension = GetExtension(path);
    if (extension != "jpg" && extension != "jpeg") return RotateResult::NotJpeg;
    if (!files::Exists(path)) return RotateResult::Failed;
    TurnPlan plan = TurnPlan::Ready;
    const RewriteResult written = SafeRewrite(path, [&](FileChange& change) {
        plan = PlanTurn(path, degrees, tool, State().settings.TempFolder, change);
        return plan == TurnPlan::Ready ? RewriteResult::Written : RewriteResult::Unsupported;
    });
    return plan == TurnPlan::Ready ? ResultOf(written) : ResultOf(plan);
}

void RotateShown(int degrees, PictureWindow& slideShow, PictureWindow& neighbor, TurnListener& listener) {
    PictureWindow* const window = slideShow.IsShown() ? &slideShow : neighbor.IsShown() ? &neighbor : nullptr;
    if (!window) return;
    const int slideTicks = State().settings.TimingOfChangeSlide;
    window->Say("Rotating", slideTicks * kSlidesWhileTurning);
    const std::string path = window->Path();
    if (window == &neighbor) Log("Rotate: %s", path.c_str());
    if (!files::Exists(path)) {
        Log("Not found: Rotation target file");
        return;
    }
    const RotateResult result = RotateJpeg(path, degrees);
    if (result == RotateResult::NoTool) listener.OnToolMissing(State().settings.PathOfJpegTran);
    if (result != RotateResult::Turned) return window->Say("Error. ", slideTicks * kSlidesWhenTurned);
    window->Say("Ok.    ", slideTicks * kSlidesWhenTurned);
    listener.OnTurned(path);
    window->Reload();
}

}  // namespace kalmora
