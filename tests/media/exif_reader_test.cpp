#include "media/exif_reader.h"

#include <gtest/gtest.h>

#include "exif_builder.h"
#include "media/bytes_of.h"

namespace kalmora::exif {
namespace {

using test::ExifBuilder;
using test::ExifSegment;
using test::JpegOf;
using test::JpegSegmentBytes;
using test::JpegWith;

// One file's block, kept with the bytes that it points into.
struct Photo {
    explicit Photo(std::string content) : bytes(std::move(content)), file(test::BytesOf(bytes)) {
        found = ReadBlock(file, block);
    }
    std::int32_t Number(Tag tag) { return FirstNumber(file, block, tag); }
    std::string Value(Tag tag) { return ReadValue(file, block, tag).value_or("absent"); }

    std::string bytes;
    ByteWindow file;
    Block block;
    bool found = false;
};

class BlockOfEitherOrder : public testing::TestWithParam<ByteOrder> {};
INSTANTIATE_TEST_SUITE_P(ExifReader, BlockOfEitherOrder, testing::Values(ByteOrder::Little, ByteOrder::Big),
                         [](const auto& order) {
                             return order.param == ByteOrder::Big ? "BigEndian" : "LittleEndian";
                         });

TEST_P(BlockOfEitherOrder, ReadsWordsLongWordsAndTheNumeratorOfRationals) {
    Photo photo(JpegWith(ExifBuilder(GetParam())
                             .Ascii(ExifBuilder::Main, 0x010F, "Maker of cameras")
                             .Short(ExifBuilder::Exif, 0x8827, 400)
                             .Rational(ExifBuilder::Exif, 0x829A, 10, 4000)
                             .Rational(ExifBuilder::Exif, 0x9204, static_cast<std::uint32_t>(-7), 3, 10)
                             .Long(ExifBuilder::Exif, 0x9209, 70'000)));
    ASSERT_TRUE(photo.found);
    EXPECT_EQ(photo.Value(Tag::Make), std::string("Maker of cameras") + '\0');
    EXPECT_EQ(photo.Number(Tag::IsoSpeedRatings), 400);
    EXPECT_EQ(photo.Number(Tag::ExposureTime), 10);
    EXPECT_EQ(photo.Number(Tag::ExposureBiasValue), -7);
    EXPECT_EQ(photo.Number(Tag::Flash), 70'000);
    EXPECT_EQ(photo.Number(Tag::ApertureValue), 0);
    EXPECT_EQ(photo.Value(Tag::DateTime), "absent");
}

TEST_P(BlockOfEitherOrder, TakesAWordAsSigned) {
    Photo photo(JpegWith(ExifBuilder(GetParam()).Short(ExifBuilder::Exif, 0x8827, 40'000)));
    EXPECT_EQ(photo.Number(Tag::IsoSpeedRatings), 40'000 - 65'536);
}

TEST_P(BlockOfEitherOrder, TakesTextAndBytesAsTheyStandWhereANumberIsAsked) {
    Photo photo(JpegWith(ExifBuilder(GetParam())
                             .Undefined(ExifBuilder::Exif, 0x8827, "\x01\x02", test::kByteType)
                             .Ascii(ExifBuilder::Exif, 0x9209, "ABCDEF")));
    EXPECT_EQ(photo.Number(Tag::IsoSpeedRatings), 0x0201);
    EXPECT_EQ(photo.Number(Tag::Flash), 0x44434241);
}

TEST_P(BlockOfEitherOrder, CountsTheEntriesOfAllDirectoriesAndTheThumbnailButNoPointers) {
    Photo photo(JpegWith(ExifBuilder(GetParam())
                             .Ascii(ExifBuilder::Main, 0x010F, "Make")
                             .Short(ExifBuilder::Exif, 0x8827, 100)
                             .Short(ExifBuilder::Exif, 0x9209, 1)
                             .Ascii(ExifBuilder::Gps, 1, "N")
                             .Ascii(ExifBuilder::Interoperability, 1, "R98")
                             .Short(ExifBuilder::Thumbnail, 0x0103, 6)
                             .EmbeddedJpeg("\xFF\xD8 small \xFF\xD9")));
    // 1 main, 2 Exif, 1 GPS, 1 interoperability, 3 of the thumbnail, the thumbnail.
    EXPECT_EQ(photo.block.propertyCount, 9);
    EXPECT_EQ(photo.bytes.substr(photo.block.thumbnailOffset, photo.block.thumbnailLength),
              "\xFF\xD8 small \xFF\xD9");
}

TEST(ExifReader, FindsTheBlockBehindOtherSegments) {
    const std::string tiff = ExifBuilder().Short(ExifBuilder::Exif, 0x8827, 64).Build();
    Photo photo(JpegOf(
        JpegSegmentBytes(0xE0, std::string("JFIF\0", 5)) + JpegSegmentBytes(0xE2, std::string(60'000, 'p')) +
        JpegSegmentBytes(0xE1, std::string("http://ns.adobe.com/xap/1.0/\0<x/>", 33)) + ExifSegment(tiff)));
    ASSERT_TRUE(photo.found);
    EXPECT_EQ(photo.Number(Tag::IsoSpeedRatings), 64);
}

TEST(ExifReader, TakesTheFirstOfTwoBlocksThatHasAnyEntry) {
    const auto block = [](unsigned iso) {
        return ExifBuilder().Short(ExifBuilder::Exif, 0x8827, iso).Build();
    };
    EXPECT_EQ(Photo(JpegOf(ExifSegment(block(1)) + ExifSegment(block(2)))).Number(Tag::IsoSpeedRatings), 1);
    EXPECT_EQ(Photo(JpegOf(ExifSegment(ExifBuilder().Build()) + ExifSegment(block(2))))
                  .Number(Tag::IsoSpeedRatings),
              2);
    EXPECT_EQ(
        Photo(JpegOf(ExifSegment("no header at all") + ExifSegment(block(2)))).Number(Tag::IsoSpeedRatings),
        2);
}

TEST(ExifReader, AcceptsTheHeadersThatCamerasWrite) {
    const std::string tiff = ExifBuilder().Short(ExifBuilder::Exif, 0x8827, 64).Build();
    const auto iso = [&](const std::string& header) {
        return Photo(JpegOf(JpegSegmentBytes(0xE1, header + tiff))).Number(Tag::IsoSpeedRatings);
    };
    EXPECT_EQ(iso(std::string("Exif\0\0", 6)), 64);
    EXPECT_EQ(iso(std::string("Exif\0\xFF", 6)), 64);
    EXPECT_EQ(iso(std::string("\0\0Exif\0\0", 8)), 64);
    EXPECT_EQ(iso(std::string("Exig\0\0", 6)), 0);
    EXPECT_EQ(iso(""), 0);
}

TEST(ExifReader, ReadsAPlainTiff) {
    Photo photo(ExifBuilder(ByteOrder::Big).Short(ExifBuilder::Exif, 0x8827, 64).Build());
    ASSERT_TRUE(photo.found);
    EXPECT_EQ(photo.Number(Tag::IsoSpeedRatings), 64);
}

TEST(ExifReader, FindsNothingInOtherFiles) {
    for (const std::string& other :
         {std::string(), std::string("\xFF\xD8"), std::string("II*\0", 4),
          std::string("II+\0\x08\0\0\0\0\0", 10), std::string("IM\0*\x08\0\0\0\0\0", 10),
          std::string("\x89PNG\r\n\x1A\n", 8), std::string(5000, 'x')})
        EXPECT_FALSE(Photo(other).found);
}

TEST(ExifReader, FindsATagThatStandsTwiceTheFirstTime) {
    Photo photo(
        JpegWith(ExifBuilder().Short(ExifBuilder::Exif, 0x8827, 1).Short(ExifBuilder::Exif, 0x8827, 2)));
    EXPECT_EQ(photo.Number(Tag::IsoSpeedRatings), 1);
    EXPECT_EQ(photo.block.propertyCount, 2);
}

TEST(ExifReader, TakesATagFromItsHomeAndElsewhereOnlyWhenThatHasNone) {
    Photo both(
        JpegWith(ExifBuilder().Short(ExifBuilder::Main, 0x8827, 1).Short(ExifBuilder::Exif, 0x8827, 2)));
    EXPECT_EQ(both.Number(Tag::IsoSpeedRatings), 2);
    Photo strayed(
        JpegWith(ExifBuilder().Short(ExifBuilder::Main, 0x8827, 1).Ascii(ExifBuilder::Exif, 0x0132, "d")));
    EXPECT_EQ(strayed.Number(Tag::IsoSpeedRatings), 1);
    EXPECT_EQ(strayed.Value(Tag::DateTime), std::string("d\0", 2));
    Photo date(
        JpegWith(ExifBuilder().Ascii(ExifBuilder::Main, 0x0132, "m").Ascii(ExifBuilder::Exif, 0x0132, "e")));
    EXPECT_EQ(date.Value(Tag::DateTime), std::string("m\0", 2));
}

TEST(ExifReader, DoesNotTakeTheThumbnailsTagsForThePicturesOwn) {
    Photo photo(JpegWith(ExifBuilder()
                             .Short(ExifBuilder::Main, 0x0100, 1)
                             .Ascii(ExifBuilder::Thumbnail, 0x0132, "2001:01:01 00:00:00")
                             .Short(ExifBuilder::Thumbnail, 0x0112, 6)
                             .Ascii(ExifBuilder::Gps, 0x010F, "gps")));
    EXPECT_EQ(photo.Value(Tag::DateTime), "absent");
    EXPECT_EQ(photo.Value(Tag::Make), "absent");
    EXPECT_EQ(photo.Number(Tag::Orientation), 0);
}

TEST(ExifReader, LeavesOutEntriesWhoseValueLiesOutside) {
    Photo photo(JpegWith(ExifBuilder()
                             .Pointing(ExifBuilder::Main, 0x010F, test::kAsciiType, 20, 0x00FFFFFF)
                             .Pointing(ExifBuilder::Main, 0x0132, test::kAsciiType, 0xFFFFFFFF, 8)
                             .Pointing(ExifBuilder::Main, 0x9003, test::kRationalType, 0x20000001, 8)
                             .Pointing(ExifBuilder::Main, 0x9286, test::kUndefinedType, 100, 0xFFFFFFF0)
                             .Ascii(ExifBuilder::Main, 0x9C9C, "kept")));
    ASSERT_TRUE(photo.found);
    EXPECT_EQ(photo.block.propertyCount, 1);
    EXPECT_EQ(photo.Value(Tag::Make), "absent");
    EXPECT_EQ(photo.Value(Tag::XpComment), std::string("kept\0", 5));
}

TEST(ExifReader, LeavesOutEntriesWithoutTypeOrLength) {
    Photo photo(JpegWith(ExifBuilder()
                             .Raw(ExifBuilder::Exif, 0x8827, 0, 1, "ab")
                             .Raw(ExifBuilder::Exif, 0x9209, 14, 1, "ab")
                             .Raw(ExifBuilder::Exif, 0x9201, 0xFFFF, 1, "ab")
                             .Raw(ExifBuilder::Main, 0x0132, test::kAsciiType, 0, "")
                             .Short(ExifBuilder::Exif, 0x8822, 3)));
    EXPECT_EQ(photo.block.propertyCount, 1);
    EXPECT_EQ(photo.Number(Tag::ExposureProgram), 3);
    EXPECT_EQ(photo.Value(Tag::DateTime), "absent");
}

TEST(ExifReader, ReadsUnsortedEntries) {
    Photo photo(JpegWith(ExifBuilder()
                             .Short(ExifBuilder::Exif, 0x9209, 9)
                             .Short(ExifBuilder::Exif, 0x8827, 80)
                             .Short(ExifBuilder::Exif, 0x8822, 2)));
    EXPECT_EQ(photo.Number(Tag::Flash), 9);
    EXPECT_EQ(photo.Number(Tag::IsoSpeedRatings), 80);
    EXPECT_EQ(photo.Number(Tag::ExposureProgram), 2);
}

TEST(ExifReader, ReadsADirectoryOnceThoughItPointsAtItself) {
    const auto looped = [](unsigned pointer, std::uint32_t target) {
        return ExifBuilder()
            .Short(ExifBuilder::Main, 0x0112, 6)
            .Pointing(ExifBuilder::Main, pointer, test::kLongType, 1, target);
    };
    EXPECT_EQ(Photo(JpegWith(looped(0x8769, 8))).block.propertyCount, 1);
    EXPECT_EQ(Photo(JpegWith(looped(0x8825, 8))).block.propertyCount, 1);
    EXPECT_EQ(Photo(JpegWith(looped(0xA005, 8).NextOffset(8))).block.propertyCount, 1);
    // Two directories that name each other.
    ExifBuilder mutual;
    mutual.Short(ExifBuilder::Main, 0x0112, 6).Pointing(ExifBuilder::Exif, 0x8769, test::kLongType, 1, 8);
    mutual.Short(ExifBuilder::Exif, 0x8827, 50).Pointing(ExifBuilder::Exif, 0x8825, test::kLongType, 1, 8);
    Photo photo(JpegWith(mutual));
    EXPECT_EQ(photo.block.propertyCount, 2);
    EXPECT_EQ(photo.Number(Tag::IsoSpeedRatings), 50);
}

TEST(ExifReader, FollowsNoPointerThatIsNoWholeNumber) {
    const std::string tiff = ExifBuilder().Short(ExifBuilder::Exif, 0x8827, 64).Build();
    const auto iso = [&](unsigned type) {
        std::string changed = tiff;  // the pointer is the main directory's only entry
        changed.replace(12, 2, test::Word16(ByteOrder::Little, type));
        return Photo(JpegOf(ExifSegment(changed))).Number(Tag::IsoSpeedRatings);
    };
    for (const unsigned type : {3u, 4u, 9u, 13u}) EXPECT_EQ(iso(type), 64) << type;
    for (const unsigned type : {0u, 1u, 2u, 5u, 7u, 10u, 11u, 12u, 14u}) EXPECT_EQ(iso(type), 0) << type;
}

TEST(ExifReader, DoesWithoutTheOffsetOfTheNextDirectory) {
    Photo photo(JpegWith(ExifBuilder().Short(ExifBuilder::Main, 0x0112, 6).WithoutNextOffset()));
    EXPECT_EQ(photo.Number(Tag::Orientation), 6);
    EXPECT_EQ(photo.block.propertyCount, 1);
}

TEST(ExifReader, ReadsTheEntriesThatFitWhenTheCountPassesTheEnd) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
        std::string tiff = ExifBuilder(order).Short(ExifBuilder::Main, 0x0112, 6).Build();
        const std::string count = test::Word16(order, 0xFFFF);
        tiff.replace(8, 2, count);
        Photo photo(JpegOf(ExifSegment(tiff)));
        EXPECT_EQ(photo.Number(Tag::Orientation), 6);
        EXPECT_EQ(photo.block.propertyCount, 1);
    }
}

TEST(ExifReader, SurvivesEveryOffsetOfTheMainDirectory) {
    std::string tiff = ExifBuilder().Short(ExifBuilder::Exif, 0x8827, 64).Build();
    for (std::uint32_t offset = 0; offset < 200; ++offset) {
        tiff.replace(4, 4, test::Word32(ByteOrder::Little, offset));
        Photo photo(JpegOf(ExifSegment(tiff)));
        EXPECT_LE(photo.block.propertyCount, 60) << offset;
    }
    for (const std::uint32_t offset : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFCu, 0xFFFFFFFFu}) {
        tiff.replace(4, 4, test::Word32(ByteOrder::Little, offset));
        EXPECT_FALSE(Photo(JpegOf(ExifSegment(tiff))).found);
    }
}

TEST(ExifReader, IgnoresGarbageBehindTheBlock) {
    const std::string tiff = ExifBuilder().Short(ExifBuilder::Exif, 0x8827, 64).Build();
    EXPECT_EQ(Photo(JpegOf(ExifSegment(tiff + std::string(3000, '\xFF')))).Number(Tag::IsoSpeedRatings), 64);
}

TEST(ExifReader, DoesNotReachForValuesBehindItsOwnSegment) {
    const std::string tiff = ExifBuilder()
                                 .Short(ExifBuilder::Exif, 0x8827, 64)
                                 .Pointing(ExifBuilder::Main, 0x010F, test::kAsciiType, 8, 300)
                                 .Build();
    Photo photo(JpegOf(ExifSegment(tiff) + JpegSegmentBytes(0xE4, std::string(1000, 'z'))));
    EXPECT_EQ(photo.Value(Tag::Make), "absent");
}

}  // namespace
}  // namespace kalmora::exif
