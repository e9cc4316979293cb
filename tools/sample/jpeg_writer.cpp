#include "jpeg_writer.h"

// jpeglib.h wants FILE to be known before it.
// clang-format off
#include <cstdio>
#include <jpeglib.h>
// clang-format on
#include <cstdlib>

namespace sample {

std::vector<std::uint8_t> JpegBytes(const Image& image, int quality, const std::vector<std::uint8_t>& exif) {
    jpeg_compress_struct encoder{};
    jpeg_error_mgr errors{};
    // The library's own handler ends the program; for a picture in memory only a lack of memory leads there.
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&encoder, &buffer, &size);
    encoder.image_width = static_cast<JDIMENSION>(image.width);
    encoder.image_height = static_cast<JDIMENSION>(image.height);
    encoder.input_components = 3;
    encoder.in_color_space = JCS_RGB;
    jpeg_set_defaults(&encoder);
    jpeg_set_quality(&encoder, quality, TRUE);
    encoder.comp_info[0].h_samp_factor = 2;  // colour at half width, as cameras store it
    encoder.comp_info[0].v_samp_factor = 1;
    encoder.write_JFIF_header = exif.empty() ? TRUE : FALSE;
    jpeg_start_compress(&encoder, TRUE);
    if (!exif.empty()) {
        jpeg_write_marker(&encoder, JPEG_APP0 + 1, exif.data(), static_cast<unsigned int>(exif.size()));
    }
    const std::size_t stride = static_cast<std::size_t>(image.width) * 3;
    while (encoder.next_scanline < encoder.image_height) {
        JSAMPROW row = const_cast<JSAMPROW>(image.rgb.data() + encoder.next_scanline * stride);
        jpeg_write_scanlines(&encoder, &row, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    std::vector<std::uint8_t> bytes(buffer, buffer + size);
    std::free(buffer);
    return bytes;
}

}  // namespace sample
