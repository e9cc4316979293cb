// What the tests of this folder share: pictures made to order, folders that go away, waiting without
// sleeping.
#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/window.h"

namespace kalmora::test {

using Bytes = std::vector<std::uint8_t>;

inline constexpr Color kRed{255, 0, 0}, kGreen{0, 255, 0}, kBlue{0, 0, 255}, kWhite{255, 255, 255},
    kBlack{0, 0, 0};

// Serves events until the condition holds; false when it does not within ten seconds.
inline bool ServeUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        TheApplication()->ProcessEvents(5);
    }
    return true;
}

// Serves all that waits at this moment, and what that leads to at once.
inline void ServeAll() {
    bool isServed = false;
    TheApplication()->Post([&isServed] { TheApplication()->Post([&isServed] { isServed = true; }); });
    EXPECT_TRUE(ServeUntil([&isServed] { return isServed; }));
}

class FolderTest : public testing::Test {
protected:
    FolderTest() : folder_(files::MakeTemporaryFolder()) {}
    ~FolderTest() override { files::RemoveFolderTree(folder_); }

    std::string PathOf(const std::string& name) const { return files::Join(folder_, name); }
    std::string Write(const std::string& name, const Bytes& content) const {
        const std::string path = PathOf(name);
        const std::string_view text(reinterpret_cast<const char*>(content.data()), content.size());
        EXPECT_EQ(files::WriteWholeFile(path, text), files::FileResult::Done);
        return path;
    }
    std::string Save(const std::string& name, const QImage& image, int quality = -1) const {
        const std::string path = PathOf(name);
        EXPECT_TRUE(image.save(QString::fromStdString(path), nullptr, quality)) << path;
        return path;
    }

private:
    const std::string folder_;
};

// A picture whose four quarters have four colours: upper left red, upper right green, lower left blue, lower
// right white. Which way it was turned can be read off it.
QImage Quarters(int width, int height);
// Every pixel different from its neighbours.
QImage Noise(int width, int height);

struct JpegOptions {
    int quality = 90;
    bool isProgressive = false;
    bool isGray = false;
    bool isCmyk = false;      // inverted, with the marker that says so
    int restartInterval = 0;  // in blocks
};
Bytes EncodeJpeg(const QImage& image, const JpegOptions& options = {});
// The same file, but its head claims another size.
Bytes WithClaimedSize(Bytes jpeg, int width, int height);

// The distance of two colours in the channel where it is largest.
int Distance(Color a, Color b);

}  // namespace kalmora::test
