#include "platform/qt/fonts.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <mutex>

#include "platform/qt/values.h"

namespace kalmora {

namespace qt {

namespace {

// What replaces a face that is not installed, best first. A proportional face comes first, since nearly all
// texts are drawn in one; the calendar's digits look the same in both.
constexpr std::array kStandIns = {"IPAPGothic",   "Noto Sans CJK JP", "Noto Sans JP",
                                  "TakaoPGothic", "VL PGothic",       "M PLUS 1p",
                                  "IPAexGothic",  "IPAGothic",        "Source Han Sans JP"};

constexpr int kMaximumLineHeight = 4096;

// Full-width letters and the ideographic space as their ordinary selves: "ＭＳＰ ゴシック" is "MSP ゴシック".
QString NormalFace(const QString& face) {
    QString normal = face;
    for (QChar& c : normal) {
        if (c.unicode() >= 0xFF01 && c.unicode() <= 0xFF5E) c = QChar(c.unicode() - 0xFEE0);
        if (c.unicode() == 0x3000) c = QLatin1Char(' ');
    }
    return normal.trimmed();
}

QString StandIn() {
    for (const char* name : kStandIns) {
        const QString family = QString::fromLatin1(name);
        if (QFontDatabase::hasFamily(family)) return family;
    }
    for (const QString& family : QFontDatabase::families(QFontDatabase::Japanese))
        if (QFontDatabase::isScalable(family) && !QFontDatabase::isPrivateFamily(family)) return family;
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

// What has been decided so far. Never destroyed: threads that draw may outlive main.
struct Decisions {
    struct Metrics {
        int pixelSize = 1;
        double ascent = 0;
    };
    std::mutex mutex;
    QString standIn;                                   // guarded by mutex; empty until it was looked for
    std::map<std::string, QString> families;           // guarded by mutex; by wanted face
    std::map<std::pair<QString, int>, Metrics> sizes;  // guarded by mutex; by family and line height
};

Decisions& TheDecisions() {
    static auto* decisions = new Decisions;
    return *decisions;
}

QString FamilyFor(const std::string& wanted) {
    if (!qGuiApp) return ToDisplayText(wanted);  // nothing can be looked up yet, and nothing is remembered
    Decisions& decisions = TheDecisions();
    {
        std::lock_guard lock(decisions.mutex);
        if (const auto known = decisions.families.find(wanted); known != decisions.families.end())
            return known->second;
    }
    // Looked up without the lock: the first question of all loads the list of fonts.
    const QString face = ToDisplayText(wanted);
    QString family;
    for (const QString& name : {face, NormalFace(face)})
        if (family.isEmpty() && !name.isEmpty() && QFontDatabase::hasFamily(name)) family = name;
    if (family.isEmpty()) family = StandIn();
    std::lock_guard lock(decisions.mutex);
    return decisions.families.emplace(wanted, family).first->second;
}

QFont MakeFont(const QString& family, int pixelSize) {
    QFont font(family);
    font.setPixelSize(pixelSize);
    font.setWeight(QFont::Normal);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

// The largest size whose line is no higher than wanted.
Decisions::Metrics MetricsFor(const QString& family, int lineHeight) {
    Decisions& decisions = TheDecisions();
    const auto key = std::pair(family, lineHeight);
    {
        std::lock_guard lock(decisions.mutex);
        if (const auto known = decisions.sizes.find(key); known != decisions.sizes.end())
            return known->second;
    }
    const double share = QFontMetricsF(MakeFont(family, 100)).height() / 100.0;
    int pixelSize = std::max(1, static_cast<int>(std::lround(lineHeight / std::max(share, 0.1))));
    while (pixelSize > 1 && QFontMetricsF(MakeFont(family, pixelSize)).height() > lineHeight + 0.25)
        --pixelSize;
    const Decisions::Metrics metrics{pixelSize, QFontMetricsF(MakeFont(family, pixelSize)).ascent()};
    std::lock_guard lock(decisions.mutex);
    return decisions.sizes.emplace(key, metrics).first->second;
}

}  // namespace

DrawnFont ResolveFont(const Font& wanted) {
    const int lineHeight = std::clamp(wanted.height, 1, kMaximumLineHeight);
    const QString family = FamilyFor(wanted.face);
    const Decisions::Metrics metrics = MetricsFor(family, lineHeight);
    return DrawnFont{MakeFont(family, metrics.pixelSize), metrics.ascent, lineHeight};
}

QString SingleLine(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    for (QChar& c : text)
        if (c == u'\n' || c == u'\r' || c == u'\t' || c.unicode() == 0x2028 || c.unicode() == 0x2029)
            c = u' ';
    text.removeIf([](QChar c) { return c.unicode() < 0x20 || c.unicode() == 0x7F; });
    return text;
}

QString ScreenLine(std::string_view utf8) {
    constexpr std::size_t kMostBytes = 32768;
    return SingleLine(ToDisplayText(text::CutAtCharacter(utf8, kMostBytes)));
}

}  // namespace qt

Size MeasureText(std::string_view utf8, const Font& font) {
    const qt::DrawnFont drawn = qt::ResolveFont(font);
    const QFontMetricsF metrics(drawn.font);
    const double width = metrics.horizontalAdvance(qt::ScreenLine(utf8));
    return Size{static_cast<int>(std::ceil(std::min(width, 1e6))), drawn.lineHeight};
}

std::string InstalledFace(const std::string& wanted) { return qt::FromQt(qt::FamilyFor(wanted)); }

}  // namespace kalmora
