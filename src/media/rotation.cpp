#include "media/rotation.h"

#include "base/log.h"
#include "media/turned_photo.h"
#include "platform/files.h"
#include "rewrite/safe_rewrite.h"
#include "state/app_state.h"
#include "store/file_helpers.h"
#include "text/text.h"

namespace kalmora {

std::function<void(const std::string& toolPath)> OnRotationToolMissing;

namespace {

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
    if (!files::Exists(tool)) {
        if (OnRotationToolMissing) OnRotationToolMissing(tool);
        return RotateResult::NoTool;
    }
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

void RotateOnStage(int degrees, const RotationStage& slideShow, const RotationStage& hoverWindow) {
    const RotationStage* stage = slideShow.isShown()     ? &slideShow
                                 : hoverWindow.isShown() ? &hoverWindow
                                                         : nullptr;
    if (!stage) return;
    stage->say("Rotating", false);
    const std::string path = stage->path();
    if (stage->logsPath) Log("Rotate: %s", path.c_str());
    if (!files::Exists(path)) {
        Log("Not found: Rotation target file");
        return;
    }
    if (RotateJpeg(path, degrees) == RotateResult::Turned) {
        stage->say("Ok.    ", true);
        stage->reload();
    } else {
        stage->say("Error. ", true);
    }
}

}  // namespace kalmora
