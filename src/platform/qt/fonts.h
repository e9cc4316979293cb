// Which fonts are used for the faces that the settings name, and how large they are.
#pragma once

#include <QFont>
#include <QString>
#include <string_view>

#include "platform/canvas.h"

namespace kalmora::qt {

// A font that is ready to be drawn with. Made for the thread that asks; cheap to make again.
struct DrawnFont {
    QFont font;
    double ascent = 0;  // from the top of the line to the base line, logical pixels
    int lineHeight = 1;
};

// The font for a wanted face and line height. Any thread, once the Application exists.
DrawnFont ResolveFont(const Font& wanted);

// One line as it is drawn: line ends and tabs become spaces, other control characters go.
QString SingleLine(QString text);

// The same of a text that the program shows; what no screen has room for is cut away.
QString ScreenLine(std::string_view utf8);

}  // namespace kalmora::qt
