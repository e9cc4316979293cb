#include "platform/qt/toolkit_decoder.h"

#include <QIODevice>
#include <QImageReader>
#include <algorithm>
#include <array>
#include <mutex>

#include "platform/qt/decode_limits.h"
#include "platform/qt/pixels.h"

namespace kalmora::qt {

namespace {

// Formats of photos and drawings. Those that are really texts or programs of drawing are left out: anything
// could be taken for one of them.
constexpr std::array kFormats = {"png", "bmp", "gif", "tif", "tiff", "webp", "ico", "ppm", "pgm", "pbm"};

// A source as the toolkit's readers want it.
class SourceDevice final : public QIODevice {
public:
    explicit SourceDevice(const ByteSource& source) : source_(source) { open(QIODevice::ReadOnly); }
    qint64 size() const override { return static_cast<qint64>(source_.Size()); }
    bool isSequential() const override { return false; }

protected:
    qint64 readData(char* into, qint64 most) override {
        if (most <= 0) return 0;
        const std::span<std::uint8_t> room(reinterpret_cast<std::uint8_t*>(into),
                                           static_cast<std::size_t>(most));
        return static_cast<qint64>(source_.ReadAt(static_cast<std::uint64_t>(pos()), room));
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    const ByteSource& source_;
};

class OtherReader {
public:
    explicit OtherReader(const ByteSource& source) : device_(source), reader_(&device_) {
        static std::once_flag once;
        std::call_once(
            once, [] { QImageReader::setAllocationLimit(static_cast<int>(kMostDecodedPixels * 4 >> 20)); });
        reader_.setDecideFormatFromContent(true);
        reader_.setAutoTransform(true);
        const QByteArray format = reader_.format();
        isKnown_ = std::find(kFormats.begin(), kFormats.end(), format) != kFormats.end();
    }

    Size StoredSize() const {
        const QSize size = isKnown_ ? reader_.size() : QSize();
        return size.isEmpty() ? Size{} : Size{size.width(), size.height()};
    }
    bool SwapsSides() const {
        return reader_.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    }
    Size UprightSize() const {
        const Size stored = StoredSize();
        return SwapsSides() ? Size{stored.height, stored.width} : stored;
    }
    QImage Decode(Size wanted);

private:
    SourceDevice device_;
    QImageReader reader_;
    bool isKnown_ = false;
};

QImage OtherReader::Decode(Size wanted) {
    if (!isKnown_) return QImage();
    const Size upright = UprightSize();
    if (PixelCount(upright) > kMostStoredPixels) return QImage();
    const Size needed = NeededSize(upright, wanted);
    if (!upright.IsEmpty() && PixelCount(upright) > kMostDecodedPixels / 4) {
        // Large ones are reduced while they are read, where the format can do that.
        if (PixelCount(needed) > kMostDecodedPixels) return QImage();
        if (needed != upright)
            reader_.setScaledSize(SwapsSides() ? QSize(needed.height, needed.width)
                                               : QSize(needed.width, needed.height));
    }
    return reader_.read();
}

}  // namespace

QImage DecodeOther(const ByteSource& source, Size wanted) { return OtherReader(source).Decode(wanted); }

}  // namespace kalmora::qt
