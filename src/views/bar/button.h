// CButton: a label or a picture in the window that can be pressed.
#pragma once

#include <cstdint>
#include <string>

#include "base/geometry.h"
#include "platform/canvas.h"

namespace kalmora {

// Written by SetButtonStates, drawn and hit with the bar's mutex held (see button_bar.h).
class CButton {
public:
    enum class State { Hidden = 0, Normal = 1, Highlighted = 2 };
    enum class Kind { Text = 1, Image = 2 };

    static constexpr int kTextHeight = 38;

    // A label in this font.
    CButton(std::string caption, Font font, Color normal, Color highlighted);
    // A picture of the program's own, "Res/next.png"; as large as that picture.
    explicit CButton(const std::string& resource);

    bool HitTest(int px, int py) const;  // the four edges as half planes; edges included
    void Paint(Canvas& canvas) const;
    void PaintFocus(Canvas& canvas) const;  // the ring around it

    void SetText(const std::string& caption);  // the width follows the text
    // Shows of a label what fits into the width. FullWidth is that of the whole.
    void LimitWidth(int widest);
    int FullWidth() const { return fullWidth; }
    bool IsShortened() const { return shown != text; }
    void SetImage(const std::string& resource);
    Rect Area() const { return {x, y, width, height}; }
    bool IsVisible() const { return state != State::Hidden; }

    State state = State::Normal;
    Kind kind = Kind::Text;
    int x = 0, y = 0, width = 0, height = 0;
    std::string text;   // whole
    std::string shown;  // the text, or its beginning with an ellipsis
    Font font;
    Color textColor{0, 0, 0};
    Color brush, highlightBrush;
    std::string image;  // resource name
    bool pressed = false;

private:
    void MeasureText();

    int fullWidth = 0;
};

}  // namespace kalmora
