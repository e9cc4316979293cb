#include "platform/qt/black_bars.h"

#include <algorithm>
#include <array>

namespace kalmora::qt {

namespace {

// Brightness is that of a grey, as the codec keeps it for each pixel; the colour it shares with neighbours,
// so that the light beside a bar colours the bar.
constexpr int kBlack = 24;
constexpr int kLight = 64;
constexpr int kBrightPart = 20;  // light in one of so many pixels makes a line light

bool IsUpright(Edge edge) { return edge == Edge::Left || edge == Edge::Right; }

// The lines of an image, counted from one of its edges.
class Lines {
public:
    Lines(const QImage& image, Edge edge) : image_(image), edge_(edge) {}

    int Count() const { return IsUpright(edge_) ? image_.width() : image_.height(); }

    bool IsBlack(int line) const {
        for (int i = 0; i < Length(); ++i)
            if (Brightness(line, i) > kBlack) return false;
        return true;
    }

    // The brightness that one in kBrightPart pixels has at least.
    int Light(int line) const {
        std::array<int, 256> pixels{};
        for (int i = 0; i < Length(); ++i) ++pixels[static_cast<std::size_t>(Brightness(line, i))];
        int brighter = 0, brightness = 255;
        for (; brightness > 0; --brightness) {
            brighter += pixels[static_cast<std::size_t>(brightness)];
            if (brighter * kBrightPart > Length()) break;
        }
        return brightness;
    }

private:
    int Length() const { return IsUpright(edge_) ? image_.height() : image_.width(); }

    int Brightness(int line, int i) const {
        const bool isFar = edge_ == Edge::Right || edge_ == Edge::Bottom;
        const int across = isFar ? Count() - 1 - line : line;
        return qGray(IsUpright(edge_) ? image_.pixel(across, i) : image_.pixel(i, across));
    }

    const QImage& image_;
    const Edge edge_;
};

}  // namespace

int BlackLines(const QImage& image, Edge edge) {
    const Lines lines(image, edge);
    int black = 0;
    while (black < lines.Count() / 2 && lines.IsBlack(black)) ++black;
    return black;
}

int BarLines(const QImage& image, Edge edge) {
    const Lines lines(image, edge);
    const int black = BlackLines(image, edge);
    if (black + 1 >= lines.Count()) return 0;
    const int first = lines.Light(black), second = lines.Light(black + 1);
    if (std::max(first, second) < kLight) return 0;
    // Where the bar ends inside a line of pixels, that line is half as bright; it may be all that is left of
    // one.
    return 2 * first < second ? black + 1 : black;
}

bool IsLightAt(const QImage& image, Edge edge) {
    return !image.isNull() && Lines(image, edge).Light(0) >= kLight;
}

}  // namespace kalmora::qt
