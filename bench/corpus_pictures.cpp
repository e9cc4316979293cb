#include "corpus_pictures.h"

// The library's header wants the C library's before it.
#include <cstdio>
#include <cstdlib>
// clang-format off
#include <jpeglib.h>
// clang-format on
#include <algorithm>

namespace bench {

namespace {

// A stream of numbers that is the same on every machine.
class Noise {
public:
    explicit Noise(std::uint32_t seed) : state_(seed * 2654435761u + 1) {}
    std::uint32_t Next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return state_;
    }
    int Below(int limit) { return static_cast<int>(Next() % static_cast<std::uint32_t>(limit)); }

private:
    std::uint32_t state_;
};

// Adds noise whose cells are `cell` pixels wide, drawn out between them.
void AddOctave(Picture& picture, Noise& noise, int cell, int strength, std::vector<int>& sum) {
    const int columns = picture.width / cell + 2, rows = picture.height / cell + 2;
    std::vector<int> knots(static_cast<std::size_t>(columns) * rows * 3);
    for (int& knot : knots) knot = noise.Below(2 * strength + 1) - strength;
    std::vector<int> line(static_cast<std::size_t>(columns) * 3);
    for (int y = 0; y < picture.height; ++y) {
        const int row = y / cell, down = y % cell;
        for (std::size_t i = 0; i < line.size(); ++i) {
            const std::size_t above = static_cast<std::size_t>(row) * line.size() + i;
            line[i] = (knots[above] * (cell - down) + knots[above + line.size()] * down) / cell;
        }
        int* to = sum.data() + static_cast<std::size_t>(y) * picture.width * 3;
        for (int x = 0; x < picture.width; ++x) {
            const int* from = line.data() + x / cell * 3;
            const int right = x % cell;
            for (int channel = 0; channel < 3; ++channel, ++from)
                *to++ += (from[0] * (cell - right) + from[3] * right) / cell;
        }
    }
}

void AddEdges(Picture& picture, Noise& noise, std::vector<int>& sum) {
    constexpr int kBoxes = 14;
    for (int box = 0; box < kBoxes; ++box) {
        const int width = picture.width / 40 + noise.Below(picture.width / 4);
        const int height = picture.height / 40 + noise.Below(picture.height / 4);
        const int left = noise.Below(picture.width - width), top = noise.Below(picture.height - height);
        const int light[3] = {noise.Below(121) - 60, noise.Below(121) - 60, noise.Below(121) - 60};
        for (int y = top; y < top + height; ++y) {
            int* at = sum.data() + (static_cast<std::size_t>(y) * picture.width + left) * 3;
            for (int i = 0; i < width * 3; ++i) *at++ += light[i % 3];
        }
    }
}

}  // namespace

Picture MakePicture(std::uint32_t seed, int width, int height, int grain) {
    Picture picture{width, height, {}};
    Noise noise(seed);
    std::vector<int> sum(static_cast<std::size_t>(width) * height * 3, 128);
    int strength = 110;
    for (int cell = width / 5; cell >= 2; cell /= 4, strength = strength * 3 / 5)
        AddOctave(picture, noise, cell, strength, sum);
    AddEdges(picture, noise, sum);
    picture.rgb.resize(sum.size());
    for (std::size_t i = 0; i < sum.size(); i += 3) {
        // Grain is a matter of light far more than of colour.
        const int speck = grain > 0 ? noise.Below(2 * grain + 1) - grain : 0;
        for (std::size_t channel = 0; channel < 3; ++channel)
            picture.rgb[i + channel] =
                static_cast<std::uint8_t>(std::clamp(sum[i + channel] + speck, 0, 255));
    }
    return picture;
}

Picture Reduce(const Picture& picture, int width, int height) {
    Picture small{width, height, std::vector<std::uint8_t>(static_cast<std::size_t>(width) * height * 3)};
    for (int y = 0; y < height; ++y) {
        const int top = y * picture.height / height, bottom = (y + 1) * picture.height / height;
        for (int x = 0; x < width; ++x) {
            const int left = x * picture.width / width, right = (x + 1) * picture.width / width;
            for (int channel = 0; channel < 3; ++channel) {
                int sum = 0;
                for (int fromY = top; fromY < bottom; ++fromY)
                    for (int fromX = left; fromX < right; ++fromX)
                        sum +=
                            picture
                                .rgb[(static_cast<std::size_t>(fromY) * picture.width + fromX) * 3 + channel];
                small.rgb[(static_cast<std::size_t>(y) * width + x) * 3 + channel] =
                    static_cast<std::uint8_t>(sum / ((bottom - top) * (right - left)));
            }
        }
    }
    return small;
}

std::vector<std::uint8_t> JpegBody(const Picture& picture, int quality, Chroma chroma) {
    jpeg_compress_struct codec{};
    jpeg_error_mgr errors{};
    codec.err = jpeg_std_error(&errors);
    jpeg_create_compress(&codec);
    unsigned char* bytes = nullptr;
    unsigned long length = 0;
    jpeg_mem_dest(&codec, &bytes, &length);
    codec.image_width = static_cast<JDIMENSION>(picture.width);
    codec.image_height = static_cast<JDIMENSION>(picture.height);
    codec.input_components = 3;
    codec.in_color_space = JCS_RGB;
    jpeg_set_defaults(&codec);
    jpeg_set_quality(&codec, quality, TRUE);
    codec.write_JFIF_header = FALSE;
    codec.comp_info[0].h_samp_factor = 2;
    codec.comp_info[0].v_samp_factor = chroma == Chroma::HalfBoth ? 2 : 1;
    jpeg_start_compress(&codec, TRUE);
    while (codec.next_scanline < codec.image_height) {
        // The library reads the row and never writes it.
        JSAMPROW row = const_cast<JSAMPROW>(picture.rgb.data()) +
                       static_cast<std::size_t>(codec.next_scanline) * picture.width * 3;
        jpeg_write_scanlines(&codec, &row, 1);
    }
    jpeg_finish_compress(&codec);
    constexpr std::size_t kStartOfImage = 2;
    std::vector<std::uint8_t> body(bytes + kStartOfImage, bytes + length);
    jpeg_destroy_compress(&codec);
    std::free(bytes);
    return body;
}

}  // namespace bench
