#include "platform/qt/text_block.h"

#include <QFontMetricsF>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>

#include "platform/qt/fonts.h"
#include "platform/qt/values.h"

namespace kalmora {

namespace qt {

namespace {

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

QString Ellipsis() { return QStringLiteral("..."); }

QString WithoutBlanksAtEnd(QString line) {
    while (!line.isEmpty() && line.back().isSpace()) line.chop(1);
    return line;
}

bool IsMereEllipsis(const std::vector<QString>& lines) {
    return std::all_of(lines.begin(), lines.end(),
                       [](const QString& line) { return line.isEmpty() || line == Ellipsis(); });
}

}  // namespace

QString WithEllipsis(const QString& line, const QFontMetricsF& metrics, int width) {
    const auto shortened = [&](qsizetype length) {
        return WithoutBlanksAtEnd(line.left(length)) + Ellipsis();
    };
    const auto fits = [&](qsizetype length) { return metrics.horizontalAdvance(shortened(length)) <= width; };
    if (fits(line.size())) return shortened(line.size());
    qsizetype low = 0, high = line.size();
    while (high - low > 1) {
        const qsizetype middle = low + (high - low) / 2;
        (fits(middle) ? low : high) = middle;
    }
    // Between whole characters, as the user sees them.
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, line);
    finder.setPosition(low);
    const qsizetype length = finder.isAtBoundary() ? low : finder.toPreviousBoundary();
    return WithoutBlanksAtEnd(line.left(length)).isEmpty() ? QString() : shortened(length);
}

namespace {

std::vector<QString> FillLines(const QString& text, const QFont& font, int width, int maxLines,
                               LineIndent indent) {
    std::vector<QString> lines;
    if (width <= 0 || maxLines <= 0 || text.isEmpty()) return lines;
    const auto room = [&] {
        return static_cast<int>(lines.size()) < indent.lines ? std::max(1, width - indent.width) : width;
    };
    const QFontMetricsF metrics(font);

    // A letter is almost never narrower than two pixels, so what lies behind this many cannot be reached; a
    // whole book then costs no more to lay out than a page.
    const qint64 reachable = std::min((qint64{width} / 2 + 16) * maxLines, kMostCharacters);
    const bool isCut = text.size() > reachable;
    const QStringList paragraphs = Tidy(isCut ? text.left(reachable) : text).split(QLatin1Char('\n'));
    const auto take = [&](QString piece, bool moreFollows) {
        const bool isFull = static_cast<int>(lines.size()) + 1 == maxLines;
        piece = WithoutBlanksAtEnd(piece);
        if (isFull && moreFollows) {
            const QString shortened = WithEllipsis(piece, metrics, room());
            if (piece.isEmpty() || !shortened.isEmpty()) piece = shortened;
        }
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
            line.setLineWidth(room());
            const int end = line.textStart() + line.textLength();
            goOn =
                take(paragraph.mid(line.textStart(), line.textLength()), !isLast || end < paragraph.size());
        }
        layout.endLayout();
        if (!goOn) return lines;
    }
    return lines;
}

}  // namespace

std::vector<QString> BreakIntoLines(const QString& text, const QFont& font, int width, int maxLines,
                                    LineIndent indent) {
    std::vector<QString> lines = FillLines(text, font, width, maxLines, indent);
    if (IsMereEllipsis(lines)) lines.clear();
    return lines;
}

}  // namespace qt

std::string ElideText(std::string_view utf8, const Font& font, int width) {
    const qt::DrawnFont drawn = qt::ResolveFont(font);
    const QFontMetricsF metrics(drawn.font);
    const QString line = qt::ScreenLine(utf8);
    if (metrics.horizontalAdvance(line) <= width) return qt::FromQt(line);
    return qt::FromQt(qt::WithEllipsis(line, metrics, width));
}

}  // namespace kalmora
