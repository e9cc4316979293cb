// convert_image IN.png OUT.jpg|OUT.bmp [quality]
//
// The SVG renderer writes only PNG; this turns the few drawings that the program wants in another format. The
// result has no transparency: what shows through is white. Runs without a display.

#include <QCoreApplication>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3 || arguments.size() > 4) {
        std::fprintf(stderr, "usage: convert_image IN.png OUT.jpg|OUT.bmp [quality]\n");
        return 2;
    }

    const QImage drawing(arguments[1]);
    if (drawing.isNull()) {
        std::fprintf(stderr, "convert_image: cannot read %s\n", qPrintable(arguments[1]));
        return 1;
    }

    // The BMP writer makes 24 bits a pixel out of RGB32.
    QImage opaque(drawing.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(0, 0, drawing);

    QImageWriter writer(arguments[2]);
    if (arguments.size() == 4) {
        bool isNumber = false;
        const int quality = arguments[3].toInt(&isNumber);
        if (!isNumber || quality < 0 || quality > 100) {
            std::fprintf(stderr, "convert_image: quality is 0 to 100, not %s\n", qPrintable(arguments[3]));
            return 2;
        }
        writer.setQuality(quality);
    }
    if (!writer.write(opaque)) {
        std::fprintf(stderr, "convert_image: cannot write %s: %s\n", qPrintable(arguments[2]),
                     qPrintable(writer.errorString()));
        return 1;
    }
    return 0;
}
