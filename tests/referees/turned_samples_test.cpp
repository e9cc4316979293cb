// Photos of real cameras after turns, in the eyes of another program: every embedded picture and every
// trailer has the bytes that it had, but for the thumbnail, which is turned along.
#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "embedded_pictures.h"
#include "media/multi_picture_builder.h"
#include "media/rotation.h"
#include "platform/files.h"
#include "state/app_state.h"

namespace kalmora {
namespace {

namespace fs = std::filesystem;

using test::ContentOf;
using test::DecodedPicture;
using test::Embedded;
using test::OutputOf;

// Warnings are among it.
std::map<std::string, Embedded> ReadAll(const std::string& folder) {
    return test::EmbeddedIn(folder, "-G1:4 -Warning -ImageSize");
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

// How far they differ on average once the first one is turned clockwise by a quarter.
double DifferenceOfQuarterTurn(const DecodedPicture& before, const DecodedPicture& after) {
    if (before.width == 0 || before.width != after.height || before.height != after.width) return 255;
    double sum = 0;
    for (int y = 0; y < after.height; ++y)
        for (int x = 0; x < after.width; ++x)
            sum += std::abs(after.At(x, y) - before.At(y, before.height - 1 - x));
    return sum / after.width / after.height;
}

double Difference(const DecodedPicture& a, const DecodedPicture& b) {
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
                    const DecodedPicture old = test::Decoded(FromBase64(value), test::Channels::Brightness);
                    const DecodedPicture fresh = test::Decoded(FromBase64(now), test::Channels::Brightness);
                    // One that had to be encoded again loses a little.
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
