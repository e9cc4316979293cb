#include "media/jpeg_turner.h"

#include <span>
#include <vector>

#include "base/log.h"
#include "media/byte_window.h"
#include "media/jpeg_segments.h"
#include "media/turned_jpeg.h"
#include "platform/files.h"
#include "platform/jpeg.h"
#include "platform/process.h"

namespace kalmora {

namespace {

constexpr std::size_t kMostResultBytes = 1u << 30;

// Removed with the object, also on failure.
struct ScratchFile {
    std::string path;
    explicit ScratchFile(std::string name) : path(std::move(name)) { files::RemoveFile(path); }
    ~ScratchFile() { files::RemoveFile(path); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
};

ByteWindow WindowOn(std::string_view bytes) {
    return ByteWindow(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

}  // namespace

JpegTurner::Result JpegTurner::TurnFile(const std::string& path, const Options& options) const {
    const ScratchFile made(files::Join(scratchFolder_, "$turned.jpg"));
    std::vector<std::string> command{tool_, "-copy", "all"};
    if (options.optimize) command.emplace_back("-optimize");
    if (options.progressive) command.emplace_back("-progressive");
    if (options.perfect) command.emplace_back("-perfect");
    command.insert(command.end(), {"-rotate", std::to_string(degrees_), path, made.path});
    constexpr int kWithoutBound = -1, kWarned = 2;
    const ProcessResult run = RunProcess(command, kWithoutBound);
    Result result;
    if (run.started && (run.exitCode == 0 || run.exitCode == kWarned)) {
        result.jpeg = files::ReadWholeFile(made.path, kMostResultBytes).value_or("");
        if (!result.jpeg.empty()) result.outcome = run.exitCode == 0 ? Outcome::Turned : Outcome::Warned;
    }
    if (result.outcome != Outcome::Turned)
        Log("%s did not turn %s (%d)", tool_.c_str(), path.c_str(), run.exitCode);
    return result;
}

std::string JpegTurner::TurnSmall(std::string_view jpeg, std::size_t most) const {
    ByteWindow original = WindowOn(jpeg);
    const auto picture = FindJpegPicture(original);
    const auto size = ReadJpegFrameSize(original);
    if (picture && size) {
        const ScratchFile source(files::Join(scratchFolder_, "$small.jpg"));
        Result result;
        if (files::AppendToFile(source.path, jpeg) == files::FileResult::Done)
            result = TurnFile(source.path, {.optimize = true, .perfect = true});
        const std::string data = DataOf(result.jpeg, SwapsSides() ? Size{size->height, size->width} : *size);
        if (result.outcome == Outcome::Turned && !data.empty()) {
            std::string whole = WholeJpeg(HeadOf(original, *picture), data, {});
            if (whole.size() <= most) return whole;
            if (result.jpeg.size() <= most) return std::move(result.jpeg);
        }
    }
    return jpeg::TurnByPixels(jpeg, degrees_, most);
}

}  // namespace kalmora
