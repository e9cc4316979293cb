#include "platform/qt/encode.h"

#include <QBuffer>
#include <QPainter>
#include <algorithm>
#include <string_view>

#include "platform/files.h"

namespace kalmora::qt {

namespace {

// Through memory, so that the file is replaced in one step and its name may be any bytes.
bool Write(const QImage& image, const char* format, int quality, const std::string& path) {
    if (image.isNull()) return false;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, format, quality)) return false;
    const std::string_view content(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return files::WriteWholeFile(path, content) == files::FileResult::Done;
}

}  // namespace

bool WritePng(const QImage& image, const std::string& path) {
    // The scale is for the screen; the file has the pixels as they are.
    QImage plain = image;
    plain.setDevicePixelRatio(1);
    return Write(plain, "PNG", -1, path);
}

bool WriteJpeg(const QImage& image, const std::string& path, int quality) {
    if (image.isNull()) return false;
    QImage opaque(image.size(), QImage::Format_RGB32);
    if (opaque.isNull()) return false;
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(QRect(QPoint(), image.size()), image, image.rect());
    return Write(opaque, "JPEG", std::clamp(quality, 0, 100), path);
}

}  // namespace kalmora::qt
