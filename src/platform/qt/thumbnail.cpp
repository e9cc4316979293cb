#include "platform/qt/thumbnail.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/geometry.h"
#include "platform/qt/black_bars.h"
#include "platform/qt/jpeg_decoder.h"

namespace kalmora::qt {

namespace {

constexpr double kShapeTolerance = 0.02;
constexpr int kBlurredLines = 2;  // of a bar that the codec or a half pixel may have lightened

constexpr std::array kEdges{Edge::Left, Edge::Top, Edge::Right, Edge::Bottom};

bool LiesAcross(Size a, Size b) {
    return (a.width > a.height && b.width < b.height) || (a.width < a.height && b.width > b.height);
}

// How much of `excess` lines is to go at the first of two edges: half, but rather the bars than the picture.
int ShareOfFirstEdge(const QImage& image, int excess, Edge first, Edge last) {
    const int atFirst = BlackLines(image, first), atLast = BlackLines(image, last);
    if (atFirst + atLast + kBlurredLines < excess) return excess / 2;  // no bars: a picture of another shape
    const int least = std::max(0, excess - atLast), most = std::min(excess, atFirst);
    return least > most ? (least + most) / 2 : std::clamp(excess / 2, least, most);
}

QImage CutToShape(const QImage& thumbnail, Size picture) {
    const Size size{thumbnail.width(), thumbnail.height()};
    const double pictureShape = static_cast<double>(picture.width) / picture.height;
    const double shape = static_cast<double>(size.width) / size.height;
    if (std::abs(shape / pictureShape - 1) <= kShapeTolerance) return thumbnail;
    if (shape > pictureShape) {
        const int width = std::max(1, static_cast<int>(std::lround(size.height * pictureShape)));
        const int left = ShareOfFirstEdge(thumbnail, size.width - width, Edge::Left, Edge::Right);
        return thumbnail.copy(left, 0, width, size.height);
    }
    const int height = std::max(1, static_cast<int>(std::lround(size.width / pictureShape)));
    const int top = ShareOfFirstEdge(thumbnail, size.height - height, Edge::Top, Edge::Bottom);
    return thumbnail.copy(0, top, size.width, height);
}

// Cuts the bars that are left. Null when a black edge may as well be the picture's own.
QImage CutBars(const QImage& thumbnail, const ByteSource& picture) {
    std::array<int, kEdges.size()> bars{};
    std::transform(kEdges.begin(), kEdges.end(), bars.begin(),
                   [&](Edge edge) { return BarLines(thumbnail, edge); });
    const auto [left, top, right, bottom] = bars;
    if (left + top + right + bottom == 0) return thumbnail;
    // Where the picture is light a bar is a bar. Its lower edge would take as long as all of it: cameras put
    // their picture into the middle, so a bar there has one above.
    const QImage upperPart = DecodeJpegTop(picture, Size{thumbnail.width(), thumbnail.height()});
    const auto isBar = [&](int lines, Edge edge) { return lines == 0 || IsLightAt(upperPart, edge); };
    if (!isBar(left, Edge::Left) || !isBar(top, Edge::Top) || !isBar(right, Edge::Right) ||
        (bottom > 0 && top == 0))
        return QImage();
    return thumbnail.copy(left, top, thumbnail.width() - left - right, thumbnail.height() - top - bottom);
}

}  // namespace

QImage DecodeThumbnail(std::span<const std::uint8_t> jpeg, const ByteSource& picture) {
    const MemorySource source(jpeg);
    const QImage thumbnail = DecodeJpeg(source, Size{});
    const Size stored = MeasureJpeg(picture);
    if (thumbnail.isNull() || stored.IsEmpty()) return thumbnail;
    if (LiesAcross(Size{thumbnail.width(), thumbnail.height()}, stored)) return QImage();
    return CutBars(CutToShape(thumbnail, stored), picture);
}

}  // namespace kalmora::qt
