// The seam's plain values in the toolkit's words. Any thread.
#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <string>
#include <string_view>

#include "base/geometry.h"
#include "text/text.h"

namespace kalmora::qt {

inline QColor ToQt(Color color) { return QColor(color.red, color.green, color.blue, color.alpha); }

// Floating point, because a rectangle's far edge may lie past what an int can hold.
inline QRectF ToQt(const Rect& area) { return QRectF(area.x, area.y, area.width, area.height); }

inline QString ToQt(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// For what is shown on the screen: ill-formed bytes become replacement characters.
inline QString ToDisplayText(std::string_view utf8) { return ToQt(text::ToDisplay(utf8)); }

inline std::string FromQt(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

}  // namespace kalmora::qt
