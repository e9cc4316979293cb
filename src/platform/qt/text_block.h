// Breaking a text into the lines that a rectangle has room for.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <vector>

namespace kalmora::qt {

// What the first lines leave free on their left.
struct LineIndent {
    int width = 0;  // logical pixels
    int lines = 0;
};

// At most maxLines lines, none wider than `width` logical pixels: broken between words, inside a word only
// where it is wider than a line, and between any two characters of Japanese as its rules allow. CR LF, CR and
// LF each end a line. When the text continues past the last line, that line ends in an ellipsis; no lines
// where that would be all. The indented lines are narrower by their indent. Any thread.
std::vector<QString> BreakIntoLines(const QString& text, const QFont& font, int width, int maxLines,
                                    LineIndent indent = {});

// The longest beginning of the line that fits into the width with an ellipsis behind it; empty when no letter
// does. The ellipsis is three full stops: they are on the base line in every font, which the one character
// for it is not in those with Japanese glyphs. Any thread.
QString WithEllipsis(const QString& line, const QFontMetricsF& metrics, int width);

}  // namespace kalmora::qt
