#include "media/jpeg_picture.h"

#include <gmock/gmock.h>

#include "exif_builder.h"
#include "picture_files.h"

namespace kalmora {
namespace {

using test::JpegSegmentBytes;
using namespace std::string_literals;

std::optional<JpegPicture> PictureOf(const std::string& bytes) {
    ByteWindow file({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    return FindJpegPicture(file);
}
// 0 when none is found.
std::uint64_t EndOf(const std::string& bytes) {
    const auto picture = PictureOf(bytes);
    return picture ? picture->end : 0;
}

const std::string kStart = "\xFF\xD8", kEnd = "\xFF\xD9";

std::string Scan(const std::string& data) { return JpegSegmentBytes(0xDA, "\1\1\0\0\x3F\0"s) + data; }

TEST(JpegPicture, EndsAtItsOwnEndMarkerAndNotAtALaterPicture) {
    const std::string picture = test::DecodableJpeg(64, 48);
    for (const std::string& behind :
         {""s, "\0\0\0"s, "\xFF"s, "\xFF\xFF\xD9"s, picture, "trailer" + picture + kEnd})
        EXPECT_EQ(EndOf(picture + behind), picture.size()) << behind.size();
}

TEST(JpegPicture, EndMarkerInASegmentIsNone) {
    const std::string thumbnail = JpegSegmentBytes(0xE1, "Exif\0\0"s + test::DecodableJpeg(16, 16));
    const std::string picture = kStart + thumbnail + Scan("data") + kEnd;
    EXPECT_EQ(EndOf(picture + "more" + kEnd), picture.size());
}

TEST(JpegPicture, StuffedBytesRestartsAndFillAreDataOfTheScan) {
    for (const std::string& data :
         {""s, "\xFF\0"s, "a\xFF\0\xD9z"s, "\xFF\xD0\xFF\xD7"s, "\xFF\xFF\xFF"s, "\xFF\xFF\0\xD9"s,
          std::string(40'000, '\xFF'), std::string(16'383, 'x') + "\xFF\0\xD9"s,
          std::string(16'370, 'x') + "\xFF\xD3"}) {
        const std::string picture = kStart + Scan(data) + kEnd;
        EXPECT_EQ(EndOf(picture + "behind"), picture.size()) << data.size();
    }
}

TEST(JpegPicture, SeveralScansWithTablesLineCountAndCommentsBetweenThemAreOne) {
    const std::string head = JpegSegmentBytes(0xC2, "frame");
    const std::string picture = kStart + head + Scan("first") + JpegSegmentBytes(0xDC, "\0\x10"s) +
                                JpegSegmentBytes(0xC4, "tables") + Scan("second") +
                                JpegSegmentBytes(0xFE, "words") + Scan("third") + kEnd;
    const auto found = PictureOf(picture + picture);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->end, picture.size());
    std::vector<int> markers;
    std::string parts = kStart;
    for (const JpegPart& part : found->parts) {
        markers.push_back(part.marker);
        parts += picture.substr(part.offset, part.length);
    }
    EXPECT_THAT(markers, testing::ElementsAre(0xC2, 0xDA, 0xDC, 0xC4, 0xDA, 0xFE, 0xDA));
    EXPECT_EQ(parts + kEnd, picture);
    EXPECT_TRUE(found->parts[0].IsProgressive());
    EXPECT_TRUE(found->parts[5].IsMetadata());
}

TEST(JpegPicture, StrayAndFillBytesBetweenSegmentsBelongToNone) {
    const std::string picture = kStart + "ab" + JpegSegmentBytes(0xE1, "x") + "\xFF\xFF\xFF" +
                                JpegSegmentBytes(0xDB, "y") + Scan("") + kEnd;
    ASSERT_TRUE(PictureOf(picture));
    EXPECT_EQ(PictureOf(picture)->parts[0].offset, 4u);
    EXPECT_EQ(PictureOf(picture)->parts[1].offset, 4u + 5 + 3);
    EXPECT_EQ(EndOf(picture), picture.size());
}

TEST(JpegPicture, CutOrBrokenOneIsNone) {
    const std::string picture = test::DecodableJpeg(64, 48);
    for (std::size_t length = 0; length < picture.size(); ++length)
        EXPECT_EQ(EndOf(picture.substr(0, length)), 0u) << length;
    for (const std::string& broken :
         {kStart + Scan("data") + picture, kStart + "\xFF\x02\0\4ab"s + kEnd, kStart + "\xFF\xE1\0\1"s + kEnd,
          kStart + JpegSegmentBytes(0xE1, "x").replace(2, 2, "\xF0\0"s) + kEnd,
          kStart + std::string(70'000, 'x') + kEnd})
        EXPECT_EQ(EndOf(broken), 0u) << broken.size();
    EXPECT_EQ(EndOf("no picture"), 0u);
}

}  // namespace
}  // namespace kalmora
