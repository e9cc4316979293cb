#include "media/jpeg_segments.h"

#include <gmock/gmock.h>

#include "exif_builder.h"
#include "media/bytes_of.h"

namespace kalmora {
namespace {

using test::JpegOf;
using test::JpegSegmentBytes;
using testing::ElementsAre;

std::vector<int> Markers(const std::string& jpeg) {
    ByteWindow file(test::BytesOf(jpeg));
    JpegSegmentWalk walk(file);
    JpegSegment segment;
    std::vector<int> markers;
    while (walk.Next(segment)) markers.push_back(segment.marker);
    return markers;
}

Size FrameSize(const std::string& jpeg) {
    ByteWindow file(test::BytesOf(jpeg));
    return ReadJpegFrameSize(file).value_or(Size{});
}

TEST(JpegSegmentWalk, TellsPlaceAndLengthOfEachSegment) {
    const std::string jpeg = JpegOf(JpegSegmentBytes(0xE0, "JFIF") + JpegSegmentBytes(0xE1, "abcdef"));
    ByteWindow file(test::BytesOf(jpeg));
    JpegSegmentWalk walk(file);
    ASSERT_TRUE(walk.IsJpeg());
    JpegSegment segment;
    ASSERT_TRUE(walk.Next(segment));
    EXPECT_EQ(segment.marker, 0xE0);
    EXPECT_EQ(segment.offset, 2u);
    EXPECT_EQ(segment.payload, 6u);
    EXPECT_EQ(segment.length, 4u);
    ASSERT_TRUE(walk.Next(segment));
    EXPECT_EQ(segment.marker, 0xE1);
    EXPECT_EQ(segment.offset, 10u);
    EXPECT_EQ(segment.length, 6u);
}

TEST(JpegSegmentWalk, EndsAtTheScan) { EXPECT_THAT(Markers(JpegOf("")), ElementsAre(0xC0)); }

TEST(JpegSegmentWalk, EndsAtTheEndMarker) {
    EXPECT_THAT(Markers("\xFF\xD8" + JpegSegmentBytes(0xE0, "") + "\xFF\xD9" + JpegSegmentBytes(0xE1, "")),
                ElementsAre(0xE0));
}

TEST(JpegSegmentWalk, PassesFillBytesAndStrayBytesBetweenSegments) {
    EXPECT_THAT(Markers(JpegOf(JpegSegmentBytes(0xE0, "a") + "\xFF\xFF\xFF" + JpegSegmentBytes(0xE1, "b") +
                               std::string("\0xyz\xFF\0", 6) + JpegSegmentBytes(0xE2, "c"))),
                ElementsAre(0xE0, 0xE1, 0xE2, 0xC0));
}

TEST(JpegSegmentWalk, PassesMarkersThatStandAlone) {
    EXPECT_THAT(Markers(JpegOf("\xFF\x01\xFF\xD0" + JpegSegmentBytes(0xE1, "b"))), ElementsAre(0xE1, 0xC0));
}

TEST(JpegSegmentWalk, EndsAtALengthThatCannotBe) {
    EXPECT_THAT(Markers(JpegOf(std::string("\xFF\xE0\x00\x01", 4) + JpegSegmentBytes(0xE1, "b"))),
                ElementsAre());
}

TEST(JpegSegmentWalk, GivesASegmentThatPassesTheEndAndThenEnds) {
    EXPECT_THAT(Markers("\xFF\xD8\xFF\xE1\x7F\xFFxxxx"), ElementsAre(0xE1));
}

TEST(JpegSegmentWalk, GivesUpOnAFileOfNothingButGarbage) {
    EXPECT_THAT(Markers("\xFF\xD8" + std::string(200'000, 'x') + JpegSegmentBytes(0xE1, "b")), ElementsAre());
    std::string endless = "\xFF\xD8";
    for (int i = 0; i < 3000; ++i) endless += JpegSegmentBytes(0xE0, "");
    EXPECT_EQ(Markers(endless).size(), 2000u);
}

TEST(JpegSegmentWalk, IsNotBegunForOtherFiles) {
    for (const std::string& other : {std::string(), std::string("\xFF"), std::string("\xFF\xD9"),
                                     std::string("II*\0\x08\0\0\0", 8), "x" + JpegOf("")})
        EXPECT_THAT(Markers(other), ElementsAre());
}

TEST(JpegFrameSize, IsThatOfTheFirstFrameHeader) {
    EXPECT_EQ(FrameSize(JpegOf("", 4000, 3000)), (Size{4000, 3000}));
    const std::string table = JpegSegmentBytes(0xC4, std::string("\x08\x00\x01\x00\x01\x00", 6));
    EXPECT_EQ(FrameSize(JpegOf(table, 17, 65535)), (Size{17, 65535}));
}

TEST(JpegFrameSize, IsEmptyWithoutAWholeFrameHeader) {
    EXPECT_EQ(FrameSize("\xFF\xD8\xFF\xD9"), Size{});
    EXPECT_EQ(FrameSize(std::string("\xFF\xD8\xFF\xC0\x00\x0B\x08\x01", 8)), Size{});
    EXPECT_EQ(FrameSize("not a picture"), Size{});
}

}  // namespace
}  // namespace kalmora
