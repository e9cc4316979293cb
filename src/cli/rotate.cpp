#include "cli/rotate.h"

#include <nlohmann/json.hpp>

#include "cli/photo_verb.h"
#include "media/rotation.h"
#include "platform/files.h"
#include "state/app_state.h"

namespace kalmora {

namespace {

std::string WordsFor(RotateResult result) {
    switch (result) {
        case RotateResult::Turned:
            return "turned";
        case RotateResult::NoTool:
            return "no jpegtran: " + State().settings.PathOfJpegTran;
        case RotateResult::NotJpeg:
            return "not a JPEG";
        case RotateResult::Denied:
            return "denied";
        case RotateResult::NoSpace:
            return "no space";
        case RotateResult::InUse:
            return "in use";
        case RotateResult::Changed:
            return "changed meanwhile";
        case RotateResult::Damaged:
            return "damaged";
        case RotateResult::WouldMove:
            return "would move what stands behind the picture";
        case RotateResult::Failed:
            break;
    }
    return "failed";
}

}  // namespace

int RunRotate(const StartOptions& start, const RotateOptions& options) {
    PrepareToWrite(start);
    const std::string path = AbsoluteFilePath(options.file);
    FileReport report("rotate", options.json ? ReportForm::Json : ReportForm::Lines);
    if (!files::Exists(path)) {
        report.Failed(options.file, "no such file");
        return report.Finish();
    }
    const RotateResult result = RotateJpeg(path, options.degrees);
    if (result == RotateResult::Turned)
        report.Done(options.file, WordsFor(result), {{"degrees", options.degrees}});
    else
        report.Failed(options.file, WordsFor(result));
    return report.Finish();
}

}  // namespace kalmora
