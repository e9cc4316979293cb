#include "platform/qt/text_block.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>

#include "platform/qt/fonts.h"

namespace kalmora::qt {

namespace {

constexpr char16_t kEllipsis = 0x2026;
constexpr int kTabWidth = 4;  // characters

// However large the area, a drawing shall not take longer than this many characters.
constexpr qint64 kMostCharacters = qint64{1} << 18;

// Line ends as one LF each; tabs as spaces, since a cell is too narrow for tab stops. Blanks at the very end
// are dropped: they would only make the last line end in an ellipsis.
QString Tidy(QString text) {
    while (!text.isEmpty() && text.back().isSpace()) text.chop(1);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    text.replace(QLatin1Char('\t'), QString(kTabWidth, QLatin1Char(' ')));
    return text;
}

// The line with an ellipsis at its end, shortened until it fits.
QString Elided(QString line, const QFontMetricsF& metrics, int width) {
    while (!line.isEmpty() && line.back().isSpace()) line.chop(1);
    return metrics.elidedText(line + QChar(kEllipsis), Qt::ElideRight, width);
}

}  // namespace

std::vector<QString> BreakIntoLines(const QString& text, const QFont& font, int width, int maxLines) {
    std::vector<QString> lines;
    if (width <= 0 || maxLines <= 0 || text.isEmpty()) return lines;
    const QFontMetricsF metrics(font);

    // A letter is almost never narrower than two pixels, so what lies behind this many cannot be reached; a
    // whole book then costs no more to lay out than a page.
    const qint64 reachable = std::min((qint64{width} / 2 + 16) * maxLines, kMostCharacters);
    const bool isCut = text.size() > reachable;
    const QStringList paragraphs = Tidy(isCut ? text.left(reachable) : text).split(QLatin1Char('\n'));
    const auto take = [&](QString piece, bool moreFollows) {
        const bool isFull = static_cast<int>(lines.size()) + 1 == maxLines;
        if (isFull && moreFollows) piece = Elided(piece, metrics, width);
        while (!piece.isEmpty() && piece.back().isSpace()) piece.chop(1);
        lines.push_back(piece);
        return !isFull;
    };

    QTextOption wrapping;
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    for (qsizetype p = 0; p < paragraphs.size(); ++p) {
        const QString paragraph = SingleLine(paragraphs[p]);
        const bool isLast = p + 1 == paragraphs.size() && !isCut;
        if (paragraph.isEmpty()) {
            if (!take(QString(), !isLast)) return lines;
            continue;
        }
        QTextLayout layout(paragraph, font);
        layout.setTextOption(wrapping);
        layout.beginLayout();
        bool goOn = true;
        for (QTextLine line = layout.createLine(); goOn && line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            const int end = line.textStart() + line.textLength();
            goOn =
                take(paragraph.mid(line.textStart(), line.textLength()), !isLast || end < paragraph.size());
        }
        layout.endLayout();
        if (!goOn) return lines;
    }
    return lines;
}

}  // namespace kalmora::qt
