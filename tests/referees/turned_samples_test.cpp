// Photos of real cameras after turns, in the eyes of another program: every embedded picture and every
// trailer has the bytes that it had, but for the thumbnail, which is turned along.
#include <gmock/gmock.h>
#include <jpeglib.h>

#include <array>
#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "media/multi_picture_builder.h"
#include "media/rotation.h"
#include "platform/files.h"
#include "state/app_state.h"

namespace kalmora {
namespace {

namespace fs = std::filesystem;

std::string ContentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string OutputOf(const std::string& command) {
    std::FILE* pipe = popen(command.c_str(), "r");  // NOLINT(bugprone-command-processor): as a user would
    if (!pipe) return {};
    std::string output;
    std::vector<char> block(1u << 16);
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), pipe))
        output.append(block.data(), length);
    pclose(pipe);
    return output;
}

// What one file holds: tag to bytes, as the other program prints them. Warnings are among them.
using Embedded = std::map<std::string, std::string>;

// Of all files by one call.
std::map<std::string, Embedded> ReadAll(const std::string& folder) {
    const auto records = nlohmann::json::parse(
        OutputOf("cd '" + folder +
                 "' && exiftool -j -a -G1:4 -b -Preview:all -Trailer -Warning -ImageSize . 2>/dev/null"),
        nullptr, false);
    std::map<std::string, Embedded> files;
    if (!records.is_array()) return files;
    for (const auto& record : records) {
        Embedded& embedded = files[fs::path(record["SourceFile"].get<std::string>()).filename().string()];
        for (const auto& [key, value] : record.items())
            if (key != "SourceFile")
                embedded[key] = value.is_string() ? value.get<std::string>() : value.dump();
    }
    return files;
}

bool IsThumbnail(const std::string& key) {
    return key.starts_with("IFD1") && key.ends_with(":ThumbnailImage");
}
bool IsAboutSize(const std::string& key) { return key.ends_with(":ImageSize"); }

std::string FromBase64(std::string_view text) {
    constexpr std::string_view kPrefix = "base64:";
    if (text.starts_with(kPrefix)) text.remove_prefix(kPrefix.size());
    std::string bytes;
    unsigned bits = 0, count = 0;
    for (const char c : text) {
        constexpr std::string_view kDigits =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        const std::size_t digit = kDigits.find(c);
        if (digit == std::string_view::npos) continue;
        bits = bits << 6 | static_cast<unsigned>(digit);
        if (++count % 4 != 1) bytes += static_cast<char>(bits >> (6 - 2 * ((count - 1) % 4)) & 0xFF);
    }
    return bytes;
}

struct DecoderError {
    jpeg_error_mgr base;
    std::jmp_buf back;
};

struct Grey {
    int width = 0, height = 0;
    std::string pixels;
    int At(int x, int y) const {
        return static_cast<std::uint8_t>(
            pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                   static_cast<std::size_t>(x)]);
    }
};

// The brightness of the pixels; nothing for what cannot be decoded.
Grey Decoded(const std::string& jpeg) {
    jpeg_decompress_struct decoder;
    DecoderError error;
    Grey grey;
    decoder.err = jpeg_std_error(&error.base);
    error.base.error_exit = [](j_common_ptr any) {
        std::longjmp(reinterpret_cast<DecoderError*>(any->err)->back, 1);
    };
    error.base.output_message = [](j_common_ptr) {};
    if (setjmp(error.back) == 0) {
        jpeg_create_decompress(&decoder);
        jpeg_mem_src(&decoder, reinterpret_cast<const unsigned char*>(jpeg.data()), jpeg.size());
        jpeg_read_header(&decoder, TRUE);
        decoder.out_color_space = JCS_GRAYSCALE;
        jpeg_start_decompress(&decoder);
        grey.width = static_cast<int>(decoder.output_width);
        grey.height = static_cast<int>(decoder.output_height);
        grey.pixels.resize(std::size_t{decoder.output_width} * decoder.output_height);
        while (decoder.output_scanline < decoder.output_height) {
            JSAMPROW row = reinterpret_cast<JSAMPROW>(grey.pixels.data()) +
                           std::size_t{decoder.output_width} * decoder.output_scanline;
            jpeg_read_scanlines(&decoder, &row, 1);
        }
    } else {
        grey = {};
    }
    jpeg_destroy_decompress(&decoder);
    return grey;
}

// How far they differ on average once the first one is turned clockwise by a quarter.
double DifferenceOfQuarterTurn(const Grey& before, const Grey& after) {
    if (before.width == 0 || before.width != after.height || before.height != after.width) return 255;
    double sum = 0;
    for (int y = 0; y < after.height; ++y)
        for (int x = 0; x < after.width; ++x)
            sum += std::abs(after.At(x, y) - before.At(y, before.height - 1 - x));
    return sum / after.width / after.height;
}

double Difference(const Grey& a, const Grey& b) {
    if (a.width == 0 || a.width != b.width || a.height != b.height) return 255;
    double sum = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i)
        sum += std::abs(static_cast<std::uint8_t>(a.pixels[i]) - static_cast<std::uint8_t>(b.pixels[i]));
    return sum / static_cast<double>(a.pixels.size());
}

class TurnedSamplesTest : public testing::Test {
protected:
    TurnedSamplesTest() : folder_(files::MakeTemporaryFolder()), photos_(files::Join(folder_, "photos")) {
        State().settings.TempFolder = files::Join(folder_, "Temp");
        State().settings.PathOfJpegTran = KALMORA_BIN_DIR "/jpegtran";
        fs::create_directory(photos_);
        std::error_code missing;
        for (const char* kind : {"camera", "behind"})
            for (const auto& entry : fs::directory_iterator(fs::path(KALMORA_SAMPLES) / kind, missing)) {
                const std::string extension = entry.path().extension().string();
                if (extension == ".jpg" || extension == ".JPG")
                    Put(entry.path().filename().string(), ContentOf(entry.path().string()));
            }
    }
    ~TurnedSamplesTest() override {
        State().settings.TempFolder.clear();
        State().settings.PathOfJpegTran.clear();
        files::RemoveFolderTree(folder_);
    }

    void Put(const std::string& name, const std::string& content) {
        std::ofstream(PathOf(name), std::ios::binary) << content;
        contents_[name] = content;
    }
    std::string PathOf(const std::string& name) const { return files::Join(photos_, name); }
    bool CanRun() const {
        return !contents_.empty() && files::Exists("/usr/bin/jpegtran") &&
               !files::FindProgram("exiftool").empty();
    }
    // Photos that no sample is: with a movie behind them, and in files of several pictures.
    void PutMadeUpPhotos() {
        const std::string plain = contents_.at("FujiFilm_FinePixS1Pro_(1).jpg");
        const std::string other = contents_.at("Kodak_DC240.jpg");
        const std::string shortest =
            OutputOf("/usr/bin/jpegtran -copy none -optimize '" + PathOf("Kodak_DC240.jpg") + "'");
        const std::string movie = ContentOf(KALMORA_SAMPLES "/movie/sample_mpeg4.mp4");
        Put("with a movie.jpg", plain + movie);
        Put("two pictures.jpg", test::TwoPictures(plain, other));
        Put("two pictures and a movie.jpg", test::TwoPictures(plain, other, "gap") + movie);
        for (const char* made : {"with a movie.jpg", "two pictures.jpg"}) mustTurn_.emplace_back(made);
        Put("shortest with a movie.jpg", shortest + movie);
        Put("two shortest pictures.jpg", test::TwoPictures(shortest, shortest) + "trailer");
        for (const char* made : {"shortest with a movie.jpg", "two shortest pictures.jpg"})
            mustTurn_.emplace_back(made);
    }

    const std::string folder_, photos_;
    std::map<std::string, std::string> contents_;
    std::vector<std::string> mustTurn_;
};

TEST_F(TurnedSamplesTest, HoldWhatTheyHeld) {
    if (!CanRun())
        GTEST_SKIP() << "no samples in " << KALMORA_SAMPLES << ", or exiftool or jpegtran is missing";
    PutMadeUpPhotos();
    const auto before = ReadAll(photos_);
    ASSERT_EQ(before.size(), contents_.size());
    std::map<std::string, RotateResult> results;
    int refused = 0;
    const auto turnAll = [&] {
        for (const auto& [name, original] : contents_) {
            if (results.contains(name) && results[name] != RotateResult::Turned) continue;
            const std::string old = ContentOf(PathOf(name));
            results[name] = RotateJpeg(PathOf(name), 90);
            if (results[name] == RotateResult::Turned) continue;
            ++refused;
            EXPECT_EQ(results[name], RotateResult::WouldMove) << name;
            EXPECT_TRUE(ContentOf(PathOf(name)) == old) << name << " was changed";
        }
    };
    const auto expectTheSame = [&](const std::map<std::string, Embedded>& after, bool isQuarterTurn) {
        for (const auto& [name, embedded] : before) {
            if (results[name] != RotateResult::Turned) continue;
            SCOPED_TRACE(name);
            const Embedded& found = after.at(name);
            for (const auto& [key, value] : embedded) {
                ASSERT_TRUE(found.contains(key)) << "lost " << key;
                const std::string& now = found.at(key);
                if (IsThumbnail(key)) {
                    const Grey old = Decoded(FromBase64(value)), fresh = Decoded(FromBase64(now));
                    // One that had to be encoded anew loses a little.
                    EXPECT_LT(isQuarterTurn ? DifferenceOfQuarterTurn(old, fresh) : Difference(old, fresh), 8)
                        << key;
                } else if (!IsAboutSize(key) || !isQuarterTurn) {
                    EXPECT_TRUE(now == value) << key << " differs";
                }
            }
            for (const auto& [key, value] : found)
                EXPECT_TRUE(embedded.contains(key)) << "new " << key << ": " << value.substr(0, 100);
        }
    };
    turnAll();
    expectTheSame(ReadAll(photos_), true);
    for (int turn = 0; turn < 3; ++turn) turnAll();
    expectTheSame(ReadAll(photos_), false);
    for (const std::string& name : mustTurn_) EXPECT_EQ(results[name], RotateResult::Turned) << name;
    EXPECT_LE(refused, 2);
    std::cout << contents_.size() << " photos turned by quarters, " << refused << " refused\n";
}

}  // namespace
}  // namespace kalmora
