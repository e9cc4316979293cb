#include "platform/jpeg.h"

// The library's header wants the C library's before it.
#include <csetjmp>
#include <cstdio>
// clang-format off
#include <jpeglib.h>
// clang-format on
#include <QTransform>
#include <array>
#include <cstdlib>
#include <span>

#include "base/byte_source.h"
#include "platform/qt/jpeg_decoder.h"

namespace kalmora::jpeg {

namespace {

// One encoding. The library reports an error by a jump out of its call.
class Encoding {
public:
    ~Encoding() { std::free(bytes_); }
    Encoding() = default;
    Encoding(const Encoding&) = delete;
    Encoding& operator=(const Encoding&) = delete;

    // False when it fails.
    bool Run(const QImage& image, int quality) {
        codec_.err = jpeg_std_error(&errors_);
        errors_.error_exit = [](j_common_ptr codec) {
            std::longjmp(static_cast<Encoding*>(codec->client_data)->jump_, 1);
        };
        errors_.output_message = [](j_common_ptr) {};
        codec_.client_data = this;
        const bool isDone = setjmp(jump_) == 0 && Compress(image, quality);
        jpeg_destroy_compress(&codec_);
        return isDone;
    }
    std::string_view Bytes() const { return {reinterpret_cast<const char*>(bytes_), length_}; }

private:
    bool Compress(const QImage& image, int quality) {
        jpeg_create_compress(&codec_);
        jpeg_mem_dest(&codec_, &bytes_, &length_);
        codec_.image_width = static_cast<JDIMENSION>(image.width());
        codec_.image_height = static_cast<JDIMENSION>(image.height());
        codec_.input_components = 4;
        codec_.in_color_space = JCS_EXT_BGRX;  // the bytes of a 0xFFRRGGBB word
        jpeg_set_defaults(&codec_);
        jpeg_set_quality(&codec_, quality, TRUE);
        codec_.optimize_coding = TRUE;
        jpeg_start_compress(&codec_, TRUE);
        while (codec_.next_scanline < codec_.image_height) {
            // The library reads the row and does not write it.
            auto* row = const_cast<JSAMPROW>(image.constScanLine(static_cast<int>(codec_.next_scanline)));
            jpeg_write_scanlines(&codec_, &row, 1);
        }
        jpeg_finish_compress(&codec_);
        return true;
    }

    jpeg_compress_struct codec_{};
    jpeg_error_mgr errors_{};
    std::jmp_buf jump_{};
    unsigned char* bytes_ = nullptr;
    unsigned long length_ = 0;
};

}  // namespace

std::string TurnByPixels(std::string_view jpeg, int degrees, std::size_t most) {
    const MemorySource source(std::span(reinterpret_cast<const std::uint8_t*>(jpeg.data()), jpeg.size()));
    const QImage image = qt::DecodeJpeg(source, {});
    if (image.isNull()) return {};
    const QImage turned =
        image.transformed(QTransform().rotate(degrees)).convertToFormat(QImage::Format_RGB32);
    constexpr std::array kQualities{95, 92, 88, 84, 80, 75, 70, 65, 60, 50, 40, 30, 20};
    for (const int quality : kQualities) {
        Encoding encoding;
        if (turned.isNull() || !encoding.Run(turned, quality)) return {};
        if (encoding.Bytes().size() <= most) return std::string(encoding.Bytes());
    }
    return {};
}

}  // namespace kalmora::jpeg
