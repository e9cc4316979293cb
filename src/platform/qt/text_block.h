// Breaking a text into the lines that a rectangle has room for.
#pragma once

#include <QFont>
#include <QString>
#include <vector>

namespace kalmora::qt {

// At most maxLines lines, none wider than `width` logical pixels: broken between words, inside a word only
// where it is wider than a line, and between any two characters of Japanese as its rules allow. CR LF, CR and
// LF each end a line. When the text continues past the last line, that line ends in an ellipsis. Any thread.
std::vector<QString> BreakIntoLines(const QString& text, const QFont& font, int width, int maxLines);

}  // namespace kalmora::qt
