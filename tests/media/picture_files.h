// Pictures that can be decoded, for tests that paint.
#pragma once

#include <jpeglib.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "exif_builder.h"

namespace kalmora::test {

// A grey JPEG of that size, with the Exif block in front of its tables when there is one.
inline std::string DecodableJpeg(unsigned width, unsigned height, const std::string& tiff = {}) {
    jpeg_compress_struct encoder;
    jpeg_error_mgr errors;
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    unsigned char* bytes = nullptr;
    unsigned long length = 0;
    jpeg_mem_dest(&encoder, &bytes, &length);
    encoder.image_width = width;
    encoder.image_height = height;
    encoder.input_components = 1;
    encoder.in_color_space = JCS_GRAYSCALE;
    jpeg_set_defaults(&encoder);
    jpeg_start_compress(&encoder, TRUE);
    std::vector<JSAMPLE> row(width, 128);
    JSAMPROW rows[] = {row.data()};
    while (encoder.next_scanline < height) jpeg_write_scanlines(&encoder, rows, 1);
    jpeg_finish_compress(&encoder);
    std::string jpeg(reinterpret_cast<const char*>(bytes), length);
    jpeg_destroy_compress(&encoder);
    std::free(bytes);
    if (!tiff.empty()) jpeg.insert(2, ExifSegment(tiff));
    return jpeg;
}

}  // namespace kalmora::test
