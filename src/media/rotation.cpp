#include "media/rotation.h"

#include <array>
#include <optional>

#include "app/app_state.h"
#include "base/log.h"
#include "media/byte_window.h"
#include "media/jpeg_segments.h"
#include "media/photo_metadata.h"
#include "platform/files.h"
#include "platform/process.h"
#include "platform/text.h"
#include "store/file_helpers.h"
#include "store/safe_rewrite.h"

namespace kalmora {

std::function<void(const std::string& toolPath)> OnRotationToolMissing;

namespace {

constexpr int kWholeTurn = 360;

struct Look {
    Size size;
    int orientation = 1;
};

std::optional<Look> LookAt(const std::string& path) {
    PhotoMetadata metadata;
    if (!ReadPhotoMetadata(path, metadata, StoredSize::Read) || metadata.storedSize.IsEmpty())
        return std::nullopt;
    return Look{metadata.storedSize, metadata.orientation};
}

bool IsMirrored(int orientation) {
    return orientation == 2 || orientation == 4 || orientation == 5 || orientation == 7;
}

// A cut file has no end marker. Some cameras leave a few bytes behind it.
bool HasEndMarker(const std::string& path) {
    constexpr std::uint64_t kTail = 4096;
    files::InputFile file;
    if (!file.Open(path)) return false;
    const std::uint64_t size = file.Size(), begin = size > kTail ? size - kTail : 0;
    std::array<std::uint8_t, kTail> tail;
    const std::size_t length = file.ReadAt(begin, tail);
    for (std::size_t i = 0; i + 1 < length; ++i)
        if (tail[i] == 0xFF && tail[i + 1] == 0xD9) return true;
    return false;
}

ToolWork LookAtWork(const std::string& path, const Look& before, int degrees) {
    const auto after = LookAt(path);
    if (!after || !HasEndMarker(path)) return ToolWork::Broken;
    const Size turned = degrees % 180 == 0 ? before.size : Size{before.size.height, before.size.width};
    return after->size == turned ? ToolWork::Good : ToolWork::Other;
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
    const std::string tool = State().PathOfJpegTran;
    if (!files::Exists(tool)) {
        if (OnRotationToolMissing) OnRotationToolMissing(tool);
        return RotateResult::NoTool;
    }
    const std::string extension = GetExtension(path);
    if (extension != "jpg" && extension != "jpeg") return RotateResult::NotJpeg;
    const auto before = LookAt(path);
    if (!before) return files::Exists(path) ? RotateResult::NotJpeg : RotateResult::Failed;
    const int turn = IsMirrored(before->orientation) ? kWholeTurn - degrees : degrees;
    const auto run = [&](const std::string& copy) {
        constexpr int kWithoutBound = -1;
        const ProcessResult result =
            RunProcess({tool, "-copy", "all", "-rotate", std::to_string(turn), copy, path}, kWithoutBound);
        if (!result.started || result.exitCode != 0)
            Log("%s did not turn %s (%d)", tool.c_str(), path.c_str(), result.exitCode);
        return result.started && result.exitCode == 0;
    };
    return ResultOf(RewriteByTool(path, run, [&] { return LookAtWork(path, *before, degrees); }));
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
