// Turning a JPEG without loss, by an outside program: PathOfJpegTran (jpeg_turner.h). The program reads the
// photo and writes its work into the Temp folder; the photo itself is then changed once, by SafeRewrite
// (turned_photo.h).
#pragma once

#include <functional>
#include <string>

namespace kalmora {

enum class RotateResult {
    Turned,
    NoTool,     // PathOfJpegTran does not stand; OnRotationToolMissing was told
    NotJpeg,    // by its extension, or by what it holds
    Denied,     // read-only, or no right to write it
    NoSpace,    // on its disk or on that of the Temp folder
    InUse,      // another program has it locked, or the Temp folder's lock
    Changed,    // another program wrote or replaced it meanwhile: what that one made stands
    Damaged,    // the picture is cut, or its data are
    WouldMove,  // what stands behind the picture would lose its place, and something may tell of that place
    Failed      // there is no such file, or the tool failed; the picture is as it was
};

// Told the path that was looked for, so that the shell can show it with the caption "Not found". The shell
// sets it at start, before other threads run.
extern std::function<void(const std::string& toolPath)> OnRotationToolMissing;

// Turns what is seen clockwise by 90, 180 or 270 degrees; for a picture that is stored mirrored the tool gets
// the turn that looks like that. Everything in the file but the picture and its embedded thumbnail, which is
// turned along, stays byte for byte. Waits for the tool, as long as that takes.
RotateResult RotateJpeg(const std::string& path, int degrees);

// Where a turn is asked for and shown: the slide show or the hover window.
struct RotationStage {
    std::function<bool()> isShown;
    std::function<std::string()> path;
    std::function<void(const std::string& words, bool isLast)>
        say;  // "Rotating", then "Ok.    " or "Error. "
    std::function<void()> reload;
    bool logsPath = false;
};
// Turns the picture of the first stage that is shown; nothing when none is. A picture that is gone is told to
// the log alone. GUI thread, which waits.
void RotateOnStage(int degrees, const RotationStage& slideShow, const RotationStage& hoverWindow);

}  // namespace kalmora
