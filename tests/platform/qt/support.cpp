#include "support.h"

// The library's header wants the C library's before it.
#include <cstdio>
#include <cstdlib>
// clang-format off
#include <jpeglib.h>
// clang-format on
#include <algorithm>

namespace kalmora::test {

QImage Quarters(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool isLeft = x < width / 2, isTop = y < height / 2;
            image.setPixel(x, y,
                           isTop ? (isLeft ? 0xFFFF0000 : 0xFF00FF00) : (isLeft ? 0xFF0000FF : 0xFFFFFFFF));
        }
    return image;
}

QImage Noise(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    std::uint32_t state = 1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            state = state * 1664525u + 1013904223u;
            image.setPixel(x, y, 0xFF000000u | state >> 8);
        }
    return image;
}

Bytes EncodeJpeg(const QImage& image, const JpegOptions& options) {
    jpeg_compress_struct codec{};
    jpeg_error_mgr errors{};
    codec.err = jpeg_std_error(&errors);
    jpeg_create_compress(&codec);
    unsigned char* memory = nullptr;
    unsigned long length = 0;
    jpeg_mem_dest(&codec, &memory, &length);
    codec.image_width = static_cast<JDIMENSION>(image.width());
    codec.image_height = static_cast<JDIMENSION>(image.height());
    codec.input_components = options.isGray ? 1 : options.isCmyk ? 4 : 3;
    codec.in_color_space = options.isGray ? JCS_GRAYSCALE : options.isCmyk ? JCS_CMYK : JCS_RGB;
    jpeg_set_defaults(&codec);
    jpeg_set_quality(&codec, options.quality, TRUE);
    codec.restart_interval = static_cast<unsigned>(options.restartInterval);
    codec.write_Adobe_marker = options.isCmyk ? TRUE : FALSE;
    if (options.isProgressive) jpeg_simple_progression(&codec);
    jpeg_start_compress(&codec, TRUE);
    Bytes row;
    for (int y = 0; y < image.height(); ++y) {
        row.clear();
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const auto add = [&row](int value) { row.push_back(static_cast<std::uint8_t>(value)); };
            if (options.isGray) {
                add(qGray(pixel));
                continue;
            }
            add(qRed(pixel));
            add(qGreen(pixel));
            add(qBlue(pixel));
            if (options.isCmyk) add(255);  // no black, inverted as the rest
        }
        JSAMPROW line = row.data();
        jpeg_write_scanlines(&codec, &line, 1);
    }
    jpeg_finish_compress(&codec);
    jpeg_destroy_compress(&codec);
    Bytes bytes(memory, memory + length);
    std::free(memory);
    return bytes;
}

Bytes WithClaimedSize(Bytes jpeg, int width, int height) {
    for (std::size_t i = 2; i + 9 < jpeg.size(); ++i) {
        const bool isFrameHead = jpeg[i] == 0xFF && jpeg[i + 1] >= 0xC0 && jpeg[i + 1] <= 0xC2;
        if (!isFrameHead) continue;
        jpeg[i + 5] = static_cast<std::uint8_t>(height >> 8);
        jpeg[i + 6] = static_cast<std::uint8_t>(height);
        jpeg[i + 7] = static_cast<std::uint8_t>(width >> 8);
        jpeg[i + 8] = static_cast<std::uint8_t>(width);
        return jpeg;
    }
    ADD_FAILURE() << "no frame head";
    return jpeg;
}

int Distance(Color a, Color b) {
    return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)});
}

}  // namespace kalmora::test
