// What the referees share: what another program says of a folder of photos, among it the pictures and
// trailers that they hold beside their picture, byte for byte, and the pixels of a picture.
#pragma once

#include <jpeglib.h>

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace kalmora::test {

inline std::string ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What the command prints; nothing when it cannot be started.
inline std::string OutputOf(const std::string& command) {
    std::FILE* pipe = popen(command.c_str(), "r");  // NOLINT(bugprone-command-processor): as a user would
    if (!pipe) return {};
    std::string output;
    std::vector<char> block(1u << 16);
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), pipe))
        output.append(block.data(), length);
    pclose(pipe);
    return output;
}

// Tag to bytes, as the other program prints them.
using Embedded = std::map<std::string, std::string>;

// Of all files of a folder, by one call. Empty when the program is not there.
inline std::map<std::string, Embedded> EmbeddedIn(const std::string& folder,
                                                  const std::string& options = "-G1") {
    std::map<std::string, Embedded> files;
    const auto records = nlohmann::json::parse(OutputOf("cd '" + folder + "' && exiftool -j -a " + options +
                                                        " -b -Preview:all -Trailer . 2>/dev/null"),
                                               nullptr, false);
    if (!records.is_array()) return files;
    for (const auto& record : records) {
        const auto name = std::filesystem::path(record["SourceFile"].get<std::string>()).filename().string();
        Embedded& embedded = files[name];
        for (const auto& [key, value] : record.items())
            if (key != "SourceFile")
                embedded[key] = value.is_string()
                                    ? value.get<std::string>()
                                    : value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    }
    return files;
}

struct DecodedPicture {
    int width = 0, height = 0;
    std::string pixels;           // a byte a channel
    int At(int x, int y) const {  // of one with one channel
        return static_cast<std::uint8_t>(
            pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                   static_cast<std::size_t>(x)]);
    }
    friend bool operator==(const DecodedPicture&, const DecodedPicture&) = default;
};

enum class Channels { All, Brightness };

// Nothing for what cannot be decoded.
inline DecodedPicture Decoded(const std::string& jpeg, Channels channels = Channels::All) {
    struct DecoderError {
        jpeg_error_mgr base;
        std::jmp_buf back;
    };
    jpeg_decompress_struct decoder;
    DecoderError error;
    DecodedPicture picture;
    decoder.err = jpeg_std_error(&error.base);
    error.base.error_exit = [](j_common_ptr any) {
        std::longjmp(reinterpret_cast<DecoderError*>(any->err)->back, 1);
    };
    error.base.output_message = [](j_common_ptr) {};
    if (setjmp(error.back) == 0) {
        jpeg_create_decompress(&decoder);
        jpeg_mem_src(&decoder, reinterpret_cast<const unsigned char*>(jpeg.data()), jpeg.size());
        jpeg_read_header(&decoder, TRUE);
        if (channels == Channels::Brightness) decoder.out_color_space = JCS_GRAYSCALE;
        jpeg_start_decompress(&decoder);
        const std::size_t stride =
            std::size_t{decoder.output_width} * static_cast<std::size_t>(decoder.output_components);
        picture.width = static_cast<int>(decoder.output_width);
        picture.height = static_cast<int>(decoder.output_height);
        picture.pixels.resize(stride * decoder.output_height);
        while (decoder.output_scanline < decoder.output_height) {
            JSAMPROW row =
                reinterpret_cast<JSAMPROW>(picture.pixels.data()) + stride * decoder.output_scanline;
            jpeg_read_scanlines(&decoder, &row, 1);
        }
    } else {
        picture = {};
    }
    jpeg_destroy_decompress(&decoder);
    return picture;
}

}  // namespace kalmora::test
