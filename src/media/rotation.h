// Turning a JPEG without loss, by an outside program: PathOfJpegTran (jpeg_turner.h). The program reads the
// photo and writes its work into the Temp folder; the photo itself is then changed once, by SafeRewrite
// (turned_photo.h).
#pragma once

#include <string>

#include "media/picture_window.h"

namespace kalmora {

enum class RotateResult {
    Turned,
    NoTool,     // no file at PathOfJpegTran
    NotJpeg,    // by its extension, or by what it holds
    Denied,     // read-only, or no right to write it
    NoSpace,    // on its disk or on that of the Temp folder
    InUse,      // another program has it locked, or the Temp folder's lock
    Changed,    // another program wrote or replaced it meanwhile: its version is kept
    Damaged,    // the picture is cut, or its data are
    WouldMove,  // what lies behind the picture would lose its place, and something may name that place
    Failed      // there is no such file, or the tool failed; the picture is as it was
};

// Turns what is seen clockwise by 90, 180 or 270 degrees; for a picture that is stored mirrored the tool gets
// the turn that looks like that. Everything in the file but the picture and its embedded thumbnail, which is
// turned along, stays byte for byte. Waits for the tool, as long as that takes.
RotateResult RotateJpeg(const std::string& path, int degrees);

// Receives the result of a turn in a window. GUI thread.
class TurnListener {
public:
    virtual ~TurnListener() = default;
    // The file holds the turned picture now; the window reloads it next.
    virtual void OnTurned(const std::string& path) = 0;
    virtual void OnToolMissing(const std::string& toolPath) = 0;  // where the tool was looked for
};

// Turns the picture of the window that is shown, the slide show first; nothing when neither is. A picture
// that is gone is reported in the log alone. GUI thread, which waits.
void RotateShown(int degrees, PictureWindow& slideShow, PictureWindow& neighbor, TurnListener& listener);

}  // namespace kalmora
