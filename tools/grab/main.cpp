// kalmora-grab OUT.png [SECONDS]: waits until the picture on the screen no longer changes, and writes it as
// PNG.
//
// For a display in memory, on which the calendar is all there is: the empty screen around the window is cut
// off. "Still" is two looks, a second apart, that see the same and more than a few colours. A calendar whose
// pictures never rest is taken as it is when the seconds (60) have passed. Exit 0 written, 1 nothing to be
// seen or not to be written, 2 wrong use.

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QThread>
#include <cstdio>
#include <unordered_set>

namespace {

constexpr int kBetweenLooksMs = 1000;
constexpr int kDefaultSeconds = 60;
constexpr std::size_t kFewColours = 16;

bool ShowsMoreThanAFewColours(const QImage& picture) {
    std::unordered_set<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            if (colours.insert(line[x]).second && colours.size() > kFewColours) return true;
    }
    return false;
}

// Without the rows and columns at the edges that show nothing but the colour of the last corner.
QImage WithoutEmptyMargin(const QImage& screen) {
    const QRgb empty = screen.pixel(screen.width() - 1, screen.height() - 1);
    int left = screen.width(), top = screen.height(), right = -1, bottom = -1;
    for (int y = 0; y < screen.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(screen.constScanLine(y));
        for (int x = 0; x < screen.width(); ++x) {
            if (line[x] == empty) continue;
            left = qMin(left, x);
            right = qMax(right, x);
            top = qMin(top, y);
            bottom = qMax(bottom, y);
        }
    }
    return right < 0 ? screen : screen.copy(left, top, right - left + 1, bottom - top + 1);
}

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    bool isNumber = true;
    const int seconds = arguments.size() == 3 ? arguments[2].toInt(&isNumber) : kDefaultSeconds;
    if (arguments.size() < 2 || arguments.size() > 3 || !isNumber || seconds < 0) {
        std::fprintf(stderr, "usage: kalmora-grab OUT.png [SECONDS]\n");
        return 2;
    }

    QElapsedTimer waited;
    waited.start();
    QImage before;
    for (;;) {
        const QImage now =
            application.primaryScreen()->grabWindow().toImage().convertToFormat(QImage::Format_RGB32);
        const bool isSomething = !now.isNull() && ShowsMoreThanAFewColours(now);
        const bool isLate = waited.elapsed() >= qint64{seconds} * 1000;
        if (isSomething && (now == before || isLate)) {
            if (WithoutEmptyMargin(now).save(arguments[1], "PNG")) return 0;
            std::fprintf(stderr, "kalmora-grab: %s cannot be written\n", qPrintable(arguments[1]));
            return 1;
        }
        if (isLate) {
            std::fprintf(stderr, "kalmora-grab: nothing to be seen after %d s\n", seconds);
            return 1;
        }
        before = now;
        QThread::msleep(kBetweenLooksMs);
    }
}
