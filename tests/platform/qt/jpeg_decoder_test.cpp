#include "platform/qt/jpeg_decoder.h"

#include <gtest/gtest.h>

#include <chrono>

#include "platform/qt/decode_limits.h"
#include "platform/qt/pixels.h"
#include "support.h"

namespace kalmora::qt {
namespace {

using namespace test;

QImage Decode(const Bytes& jpeg, Size needed = {}) { return DecodeJpeg(MemorySource(jpeg), needed); }
Size Measure(const Bytes& jpeg) { return MeasureJpeg(MemorySource(jpeg)); }
Size SizeOf(const QImage& image) { return Size{image.width(), image.height()}; }

TEST(JpegDecoder, MeasuresFromTheHead) {
    Bytes jpeg = EncodeJpeg(Quarters(123, 77));
    EXPECT_EQ(Measure(jpeg), (Size{123, 77}));
    jpeg.resize(jpeg.size() / 2 + 300);
    EXPECT_EQ(Measure(jpeg), (Size{123, 77}));
}

TEST(JpegDecoder, DecodesTheWholePicture) {
    const QImage image = Decode(EncodeJpeg(Quarters(64, 48)));
    ASSERT_EQ(SizeOf(image), (Size{64, 48}));
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    EXPECT_LT(Distance(ColorAt(image, 8, 8), kRed), 8);
    EXPECT_LT(Distance(ColorAt(image, 56, 8), kGreen), 8);
    EXPECT_LT(Distance(ColorAt(image, 8, 40), kBlue), 8);
    EXPECT_LT(Distance(ColorAt(image, 56, 40), kWhite), 8);
    EXPECT_EQ(image.pixel(0, 0) >> 24, 0xFFu);
}

TEST(JpegDecoder, TakesTheSmallestScaleThatCoversWhatIsNeeded) {
    const Bytes jpeg = EncodeJpeg(Quarters(800, 600));
    EXPECT_EQ(SizeOf(Decode(jpeg, Size{100, 75})), (Size{100, 75}));
    EXPECT_EQ(SizeOf(Decode(jpeg, Size{101, 75})), (Size{200, 150}));
    EXPECT_EQ(SizeOf(Decode(jpeg, Size{1, 1})), (Size{100, 75}));
    EXPECT_EQ(SizeOf(Decode(jpeg, Size{799, 10})), (Size{800, 600}));
    EXPECT_EQ(SizeOf(Decode(jpeg, Size{5000, 5000})), (Size{800, 600}));
}

TEST(JpegDecoder, ScaledColoursAreRight) {
    for (const int width : {100, 200, 300, 400, 500, 600, 700, 800}) {
        const QImage image = Decode(EncodeJpeg(Quarters(800, 600)), Size{width, width * 3 / 4});
        const int w = image.width(), h = image.height();
        EXPECT_LT(Distance(ColorAt(image, w / 8, h / 8), kRed), 10) << width;
        EXPECT_LT(Distance(ColorAt(image, w * 7 / 8, h * 7 / 8), kWhite), 10) << width;
    }
}

TEST(JpegDecoder, DecodesProgressiveFiles) {
    const Bytes jpeg = EncodeJpeg(Quarters(160, 120), {.isProgressive = true});
    EXPECT_LT(Distance(ColorAt(Decode(jpeg), 10, 10), kRed), 8);
    EXPECT_EQ(SizeOf(Decode(jpeg, Size{20, 15})), (Size{20, 15}));
}

TEST(JpegDecoder, DecodesGreyFiles) {
    const QImage image = Decode(EncodeJpeg(Quarters(64, 48), {.isGray = true}));
    ASSERT_FALSE(image.isNull());
    const Color pixel = ColorAt(image, 8, 8);
    EXPECT_EQ(pixel.red, pixel.green);
    EXPECT_EQ(pixel.red, pixel.blue);
    EXPECT_NEAR(pixel.red, qGray(0xFFFF0000), 4);
    EXPECT_EQ(image.pixel(8, 8) >> 24, 0xFFu);
}

TEST(JpegDecoder, DecodesInvertedInks) {
    const Bytes jpeg = EncodeJpeg(Quarters(64, 48), {.isCmyk = true});
    for (const Size needed : {Size{}, Size{8, 6}}) {
        const QImage image = Decode(jpeg, needed);
        ASSERT_FALSE(image.isNull());
        const int w = image.width(), h = image.height();
        EXPECT_LT(Distance(ColorAt(image, w / 4, h / 4), kRed), 10);
        EXPECT_LT(Distance(ColorAt(image, w * 3 / 4, h / 4), kGreen), 10);
        EXPECT_LT(Distance(ColorAt(image, w * 3 / 4, h * 3 / 4), kWhite), 10);
    }
}

TEST(JpegDecoder, DecodesPicturesOfOnePixel) {
    EXPECT_EQ(SizeOf(Decode(EncodeJpeg(Quarters(1, 1)))), (Size{1, 1}));
    EXPECT_EQ(SizeOf(Decode(EncodeJpeg(Quarters(1, 1)), Size{1, 1})), (Size{1, 1}));
    EXPECT_EQ(SizeOf(Decode(EncodeJpeg(Quarters(3, 2000)), Size{1, 250})), (Size{1, 250}));
}

// ---- broken and hostile files

TEST(JpegDecoder, WhatIsNoJpegGivesNothing) {
    for (const Bytes& bytes : {Bytes{}, Bytes{0xFF}, Bytes{0xFF, 0xD8}, Bytes{0xFF, 0xD8, 0xFF, 0xD9},
                               Bytes(5000, 0xFF), Bytes(5000, 0x00)}) {
        EXPECT_TRUE(Measure(bytes).IsEmpty());
        EXPECT_TRUE(Decode(bytes).isNull());
    }
}

// What is there is shown, and never does a cut do more harm than that.
TEST(JpegDecoder, FileCutAnywhereGivesThePictureOrNothing) {
    for (const bool isProgressive : {false, true}) {
        const Bytes whole = EncodeJpeg(Noise(96, 64), {.isProgressive = isProgressive});
        int shown = 0;
        for (std::size_t length = 0; length < whole.size(); length += 50) {
            const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            const QImage image = Decode(cut);
            if (image.isNull()) continue;
            ++shown;
            EXPECT_EQ(SizeOf(image), (Size{96, 64}));
            EXPECT_EQ(Measure(cut), (Size{96, 64}));
        }
        EXPECT_GT(shown, 20);
    }
}

TEST(JpegDecoder, ACutFileShowsItsUpperPartAndGreyBelow) {
    Bytes jpeg = EncodeJpeg(Noise(256, 1024), {.quality = 95});
    const QImage whole = Decode(jpeg);
    jpeg.resize(jpeg.size() / 2);
    const QImage half = Decode(jpeg);
    ASSERT_EQ(half.size(), whole.size());
    EXPECT_EQ(half.copy(0, 0, 256, 400), whole.copy(0, 0, 256, 400));
    EXPECT_EQ(ColorAt(half, 100, 1000), (Color{128, 128, 128}));
}

TEST(JpegDecoder, AFileThatLacksOnlyItsEndMarkerIsWhole) {
    Bytes jpeg = EncodeJpeg(Noise(64, 64));
    const QImage whole = Decode(jpeg);
    jpeg.resize(jpeg.size() - 2);
    EXPECT_EQ(Decode(jpeg), whole);
}

TEST(JpegDecoder, DamagedBytesInTheMiddleAreSurvived) {
    const Bytes whole = EncodeJpeg(Noise(96, 64));
    for (std::size_t at = 2; at < whole.size(); at += 37) {
        Bytes damaged = whole;
        damaged[at] = static_cast<std::uint8_t>(~damaged[at]);
        Decode(damaged);
        Decode(damaged, Size{20, 20});
    }
}

TEST(JpegDecoder, AHugeClaimIsRefusedWithoutItsMemory) {
    const auto start = std::chrono::steady_clock::now();
    const Bytes base = EncodeJpeg(Quarters(64, 48));
    const Bytes progressive = EncodeJpeg(Quarters(64, 48), {.isProgressive = true});
    EXPECT_TRUE(Decode(WithClaimedSize(base, 65500, 65500)).isNull());
    EXPECT_TRUE(Decode(WithClaimedSize(base, 65500, 65500), Size{100, 100}).isNull());
    EXPECT_TRUE(Decode(WithClaimedSize(progressive, 65500, 65500), Size{100, 100}).isNull());
    EXPECT_TRUE(Decode(WithClaimedSize(progressive, 20000, 20000), Size{100, 100}).isNull());
    EXPECT_EQ(Measure(WithClaimedSize(base, 65500, 65500)), (Size{65500, 65500}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(JpegDecoder, ALargeClaimOverLittleContentEndsWithTheContent) {
    // 1.6 billion pixels claimed: an eighth of them each way may be made, but not one by one out of nothing.
    const auto start = std::chrono::steady_clock::now();
    const QImage image = Decode(WithClaimedSize(EncodeJpeg(Quarters(64, 48)), 40000, 40000), Size{100, 100});
    if (!image.isNull()) {
        EXPECT_LE(PixelCount(SizeOf(image)), kMostDecodedPixels);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(JpegDecoder, APictureOfTooManyScansIsRefused) {
    Bytes jpeg = EncodeJpeg(Quarters(64, 48), {.isProgressive = true});
    // The last scan, over and over.
    std::size_t lastScan = 0;
    for (std::size_t i = 0; i + 1 < jpeg.size(); ++i)
        if (jpeg[i] == 0xFF && jpeg[i + 1] == 0xDA) lastScan = i;
    ASSERT_NE(lastScan, 0u);
    const Bytes scan(jpeg.begin() + static_cast<std::ptrdiff_t>(lastScan), jpeg.end() - 2);
    jpeg.resize(jpeg.size() - 2);
    for (int i = 0; i < 2000; ++i) jpeg.insert(jpeg.end(), scan.begin(), scan.end());
    jpeg.insert(jpeg.end(), {0xFF, 0xD9});
    EXPECT_TRUE(Decode(jpeg).isNull());
}

}  // namespace
}  // namespace kalmora::qt
