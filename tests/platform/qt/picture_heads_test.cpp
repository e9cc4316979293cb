#include "formats/picture_heads.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageWriter>
#include <string>
#include <string_view>

#include "support.h"

namespace kalmora {
namespace {

using namespace std::string_literals;
using namespace test;

Size Measure(std::string_view bytes) {
    return ReadPictureHead(MemorySource({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}))
        .size;
}

std::string Encoded(const QImage& image, const char* format) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format)) << format;
    return buffer.data().toStdString();
}

TEST(PictureHeads, AgreeWithTheFilesThatTheToolkitWrites) {
    const auto known = QImageWriter::supportedImageFormats();
    for (const char* format : {"jpg", "png", "bmp", "ppm", "pgm", "pbm", "tiff", "webp", "ico"})
        if (known.contains(format)) {
            EXPECT_EQ(Measure(Encoded(Quarters(60, 40), format)), (Size{60, 40})) << format;
        }
}

// ---- formats of which the toolkit writes one kind or none

constexpr Size kNone{};

std::string Riff(const std::string& chunk) { return "RIFF\0\1\0\0WEBP"s + chunk; }

TEST(PictureHeads, WebpOfEveryKind) {
    EXPECT_EQ(Measure(Riff("VP8 \x40\0\0\0\0\0\0\x9D\x01\x2A\x3C\x40\x28\0"s)), (Size{60, 40}));
    EXPECT_EQ(Measure(Riff("VP8L\x40\0\0\0\x2F\x3B\xC0\x09\0"s)), (Size{60, 40}));
    EXPECT_EQ(Measure(Riff("VP8X\x0A\0\0\0\0\0\0\0\x3B\0\0\x27\0\0"s)), (Size{60, 40}));
    EXPECT_EQ(Measure(Riff("VP8X\x0A\0\0\0\0\0\0\0\x3B\0\0\x27\0"s)), kNone);
    EXPECT_EQ(Measure(Riff("VP8 \x40\0\0\0\0\0\0\x9D\x01\x2B\x3C\0\x28\0"s)), kNone);
    EXPECT_EQ(Measure(Riff("ALPH\x40\0\0\0\0\0\0\x9D\x01\x2A\x3C\0\x28\0"s)), kNone);
}

TEST(PictureHeads, Gif) {
    EXPECT_EQ(Measure("GIF89a\x3C\0\x28\0"s), (Size{60, 40}));
    EXPECT_EQ(Measure("GIF87a\x3C\0\x28\0"s), (Size{60, 40}));
    EXPECT_EQ(Measure("GIF88a\x3C\0\x28\0"s), kNone);
    EXPECT_EQ(Measure("GIF89a\x3C\0\x28"s), kNone);
}

TEST(PictureHeads, BmpFromItsTopAndWithTheOldHeader) {
    const std::string file = "BM" + std::string(12, '\0');
    EXPECT_EQ(Measure(file + "\x28\0\0\0\x3C\0\0\0\xD8\xFF\xFF\xFF"s), (Size{60, 40}));
    EXPECT_EQ(Measure(file + "\x0C\0\0\0\x3C\0\x28\0"s), (Size{60, 40}));
    EXPECT_EQ(Measure(file + "\x28\0\0\0\xC4\xFF\xFF\xFF\x28\0\0\0"s), kNone);
    EXPECT_EQ(Measure(file + "\x28\0\0\0\x3C\0\0\0\0\0\0\x80"s), kNone);
    EXPECT_EQ(Measure(file + "\x29\1\0\0\x3C\0\0\0\x28\0\0\0"s), kNone);
}

TEST(PictureHeads, TiffInBothOrdersBothKindsAndUpright) {
    const std::string little = "\0\1\3\0\1\0\0\0\x3C\0\0\0\1\1\4\0\1\0\0\0\x28\0\0\0"s;
    EXPECT_EQ(Measure("II*\0\x08\0\0\0\2\0"s + little), (Size{60, 40}));
    EXPECT_EQ(Measure("II*\0\x0A\0\0\0..\2\0"s + little), (Size{60, 40}));
    EXPECT_EQ(Measure("MM\0*\0\0\0\x08\0\2\1\0\0\3\0\0\0\1\0\x3C\0\0\1\1\0\4\0\0\0\1\0\0\0\x28"s),
              (Size{60, 40}));
    const std::string turned = "\x12\1\3\0\1\0\0\0\6\0\0\0"s;
    EXPECT_EQ(Measure("II*\0\x08\0\0\0\3\0"s + little + turned), (Size{40, 60}));
    const std::string one = "\1\0\0\0\0\0\0\0"s;
    EXPECT_EQ(Measure("II+\0\x08\0\0\0\x10\0\0\0\0\0\0\0\2\0\0\0\0\0\0\0\0\1\x10\0"s + one +
                      "\x3C\0\0\0\0\0\0\0\1\1\3\0"s + one + "\x28\0\0\0\0\0\0\0"s),
              (Size{60, 40}));
    EXPECT_EQ(Measure("II*\0\x08\0\0\0\1\0"s + little), kNone);
    EXPECT_EQ(Measure("II*\0\xFF\xFF\xFF\xFF\2\0"s + little), kNone);
    EXPECT_EQ(Measure("II*\0\x08\0"s), kNone);
    EXPECT_EQ(Measure("II,\0\x08\0\0\0\2\0"s + little), kNone);
}

TEST(PictureHeads, PortableMapsWithComments) {
    EXPECT_EQ(Measure("P6\n# made by hand\n 60\t40\n255\n"), (Size{60, 40}));
    EXPECT_EQ(Measure("P1 60 40 "), (Size{60, 40}));
    for (const char* wrong : {"P6", "P6 60", "P6 60 40", "P7 60 40 ", "P6x60 40 ", "P6 60x40 ", "P6 -60 40 ",
                              "P6 0 40 ", "P6 60 99999999999999999999 ", "P6 # endless"})
        EXPECT_EQ(Measure(wrong), kNone) << wrong;
}

TEST(PictureHeads, PngWhoseHeadIsBrokenIsNone) {
    std::string png = Encoded(Quarters(60, 40), "png");
    for (const std::size_t place : {0u, 12u, 19u, 23u, 30u}) {
        std::string broken = png;
        broken[place] = static_cast<char>(broken[place] ^ 1);
        EXPECT_EQ(Measure(broken), kNone) << place;
    }
    EXPECT_EQ(Measure(std::string_view(png).substr(0, 33)), (Size{60, 40}));
    EXPECT_EQ(Measure(std::string_view(png).substr(0, 32)), kNone);
}

TEST(PictureHeads, IconWhoseFirstPictureLiesOutsideIsNone) {
    const std::string icon = "\0\0\1\0\1\0\0\x28\0\0\1\0\x20\0\4\0\0\0\x16\0\0\0...."s;
    EXPECT_EQ(Measure(icon), (Size{256, 40}));
    EXPECT_EQ(Measure(std::string_view(icon).substr(0, icon.size() - 1)), kNone);
    EXPECT_EQ(Measure("\0\0\1\0\0\0"s), kNone);
}

constexpr char kScan[] = "\xFF\xDA\0\6";

std::string Jpeg(const std::string& segments) { return "\xFF\xD8" + segments + std::string(kScan, 4); }

std::string Frame(char kind, char precision = 8) {
    return "\xFF"s + kind + "\0\x0B"s + precision + "\0\x28\0\x3C\1\1\x11\0"s;
}

TEST(PictureHeads, JpegFrameBehindOtherSegments) {
    for (const char kind : {'\xC0', '\xC1', '\xC2', '\xC9', '\xCA'})
        EXPECT_EQ(Measure(Jpeg(Frame(kind))), (Size{60, 40}));
    const std::string frame = Frame('\xC2');
    EXPECT_EQ(Measure(Jpeg("\xFF\xE1\0\6....\xFF\xFF\xC4\0\2"s + frame + "\xFF\xDB\0\2"s)), (Size{60, 40}));
    EXPECT_EQ(Measure(Jpeg("\xFF\xE1\0\6...."s + std::string(100, '.') + "\xFF\0"s + frame)), (Size{60, 40}))
        << "stray bytes, which the codec passes over too";
    EXPECT_EQ(Measure(Jpeg("\xFF\xD0\xFF\1"s + frame)), (Size{60, 40})) << "markers without a length";
}

TEST(PictureHeads, JpegThatTheCodecRefusesIsNone) {
    const std::string frame = Frame('\xC0');
    EXPECT_EQ(Measure("\xFF\xD8" + frame), kNone) << "no scan";
    EXPECT_EQ(Measure(Jpeg(std::string(kScan, 4) + "...." + frame)), kNone) << "behind the scan";
    EXPECT_EQ(Measure(Jpeg("\xFF\xD9" + frame)), kNone) << "behind the end";
    EXPECT_EQ(Measure(Jpeg(Frame('\xC3'))), kNone) << "lossless";
    EXPECT_EQ(Measure(Jpeg(Frame('\xC1', 12))), kNone);
    EXPECT_EQ(Measure(Jpeg("\xFF\xE1\0\1"s + frame)), kNone) << "shorter than its length";
    EXPECT_EQ(Measure(Jpeg("\xFF\xE1\xFF\xFF"s + frame)), kNone);
    EXPECT_EQ(Measure(Jpeg(frame).substr(0, 10)), kNone);
    EXPECT_EQ(Measure("\xFF\xD8" + std::string(100, '\xFF')), kNone);
}

TEST(PictureHeads, OtherFilesAreNone) {
    for (const std::string& other :
         {""s, "B"s, "P"s, "text that is none"s, "\0\0\0\0"s, std::string(600, '\0'),
          std::string(600, '\xFF'), "%PDF-1.4"s, "\xFF\xD8\xFF\xE0"s})
        EXPECT_EQ(Measure(other), kNone) << other;
}

}  // namespace
}  // namespace kalmora
