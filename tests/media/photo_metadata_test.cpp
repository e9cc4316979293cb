#include "media/photo_metadata.h"

#include <gtest/gtest.h>

#include "base/log.h"
#include "exif_builder.h"
#include "media/bytes_of.h"
#include "support/temporary_folder.h"

namespace kalmora {
namespace {

using test::ExifBuilder;
using test::JpegWith;

PhotoMetadata Read(const std::string& jpeg, StoredSize size = StoredSize::Skip) {
    ByteWindow file(test::BytesOf(jpeg));
    PhotoMetadata metadata;
    ReadPhotoMetadata(file, "test.jpg", metadata, size);
    return metadata;
}

// A photo with everything in it; its maker note and comment lie behind the first 4 KiB.
ExifBuilder FullPhoto(ByteOrder order) {
    std::string note(14, 'n');
    note +=
        test::Word16(ByteOrder::Little, 0x1031) + std::string(6, 'x') + test::Word32(ByteOrder::Little, 5);
    note +=
        test::Word16(ByteOrder::Little, 0x4000) + std::string(6, 'x') + test::Word32(ByteOrder::Little, 0);
    note += std::string(3000, 'n');
    ExifBuilder exif(order);
    exif.Ascii(ExifBuilder::Main, 0x010F, "KALMORA CAMERA CO., LTD.")
        .Short(ExifBuilder::Main, 0x0112, 6)
        .Ascii(ExifBuilder::Main, 0x0132, "2008:05:06 07:08:09")
        .XpComment(u"\u82B1\u706B in July")
        .Ascii(ExifBuilder::Exif, 0x9003, "2007:01:02 03:04:05")
        .Rational(ExifBuilder::Exif, 0x829A, 10, 3200)
        .Short(ExifBuilder::Exif, 0x8822, 2)
        .Short(ExifBuilder::Exif, 0x8827, 200)
        .Rational(ExifBuilder::Exif, 0x9201, 825, 100, test::kSignedRationalType)
        .Rational(ExifBuilder::Exif, 0x9202, 300, 100)
        .Rational(ExifBuilder::Exif, 0x9203, static_cast<std::uint32_t>(-541), 100, test::kSignedRationalType)
        .Rational(ExifBuilder::Exif, 0x9204, 33, 100, test::kSignedRationalType)
        .Short(ExifBuilder::Exif, 0x9209, 16)
        .Undefined(ExifBuilder::Exif, 0x927C, note)
        .Undefined(ExifBuilder::Exif, 0x9286,
                   std::string("ASCII\0\0\0", 8) + "typed" + std::string(2000, ' ') + '\0')
        .EmbeddedJpeg("\xFF\xD8" + std::string(500, 't') + "\xFF\xD9");
    return exif;
}

class PhotoOfEitherOrder : public testing::TestWithParam<ByteOrder> {};
INSTANTIATE_TEST_SUITE_P(PhotoMetadata, PhotoOfEitherOrder,
                         testing::Values(ByteOrder::Little, ByteOrder::Big), [](const auto& order) {
                             return order.param == ByteOrder::Big ? "BigEndian" : "LittleEndian";
                         });

TEST_P(PhotoOfEitherOrder, GivesEveryValueByOneLookAtTheFile) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Add("a.jpg", JpegWith(FullPhoto(GetParam()), 3872, 2592));
    PhotoMetadata found;
    ASSERT_TRUE(ReadPhotoMetadata(path, found, StoredSize::Read));
    EXPECT_EQ(found.camera, (CameraValues{.iso = 200,
                                          .shutter = 825,
                                          .brightness = -541,
                                          .flash = 16,
                                          .exposureBias = 33,
                                          .exposureTime = 10,
                                          .exposureProgram = 2,
                                          .aperture = 300,
                                          .mode = 5,
                                          .face = 1}));
    EXPECT_EQ(found.dateTime.Text(), "2008:05:06 07:08:09");
    EXPECT_EQ(found.dateTime.length, 20u);
    EXPECT_EQ(found.dateTimeOriginal.Text(), "2007:01:02 03:04:05");
    EXPECT_EQ(found.make, "KALMORA CAMERA CO., LTD.");
    EXPECT_EQ(found.orientation, 6);
    EXPECT_EQ(found.xpComment, "\u82B1\u706B in July");
    EXPECT_EQ(UserCommentText(found)->substr(0, 6), "typed ");
    EXPECT_EQ(found.thumbnailLength, 504u);
    EXPECT_EQ(found.storedSize, (Size{3872, 2592}));
    EXPECT_EQ(found.propertyCount, 18);
}

TEST_P(PhotoOfEitherOrder, CutAtAnyByteGivesEachValueWholeOrNotAtAll) {
    const std::string jpeg = JpegWith(FullPhoto(GetParam()), 3872, 2592);
    const PhotoMetadata whole = Read(jpeg, StoredSize::Read);
    const auto sameOrZero = [](std::int32_t found, std::int32_t wanted) {
        return found == 0 || found == wanted;
    };
    ASSERT_GT(jpeg.size(), 4096u);
    for (std::size_t length = 0; length <= jpeg.size(); ++length) {
        SCOPED_TRACE(length);
        const PhotoMetadata cut = Read(jpeg.substr(0, length), StoredSize::Read);
        ASSERT_TRUE(sameOrZero(cut.camera.iso, whole.camera.iso));
        ASSERT_TRUE(sameOrZero(cut.camera.shutter, whole.camera.shutter));
        ASSERT_TRUE(sameOrZero(cut.camera.brightness, whole.camera.brightness));
        ASSERT_TRUE(sameOrZero(cut.camera.flash, whole.camera.flash));
        ASSERT_TRUE(sameOrZero(cut.camera.exposureBias, whole.camera.exposureBias));
        ASSERT_TRUE(sameOrZero(cut.camera.exposureTime, whole.camera.exposureTime));
        ASSERT_TRUE(sameOrZero(cut.camera.exposureProgram, whole.camera.exposureProgram));
        ASSERT_TRUE(sameOrZero(cut.camera.aperture, whole.camera.aperture));
        ASSERT_TRUE(sameOrZero(cut.camera.mode, whole.camera.mode));
        ASSERT_TRUE(sameOrZero(cut.camera.face, whole.camera.face));
        ASSERT_TRUE(!cut.dateTime.IsPresent() || cut.dateTime.Text() == whole.dateTime.Text());
        ASSERT_TRUE(!cut.dateTimeOriginal.IsPresent() ||
                    cut.dateTimeOriginal.Text() == whole.dateTimeOriginal.Text());
        ASSERT_TRUE(!cut.make || cut.make == whole.make);
        ASSERT_TRUE(!cut.xpComment || cut.xpComment == whole.xpComment);
        ASSERT_TRUE(cut.userComment.empty() || cut.userComment == whole.userComment);
        ASSERT_TRUE(cut.orientation == 1 || cut.orientation == whole.orientation);
        ASSERT_TRUE(cut.storedSize == Size{} || cut.storedSize == whole.storedSize);
        ASSERT_LE(cut.propertyCount, whole.propertyCount);
    }
}

TEST_P(PhotoOfEitherOrder, OfAFileIsTheSameAsOfItsBytes) {
    const test::TemporaryFolder folder;
    const std::string jpeg = JpegWith(FullPhoto(GetParam()));
    for (std::size_t length = 0; length <= jpeg.size(); length += 97) {
        const PhotoMetadata bytes = Read(jpeg.substr(0, length));
        PhotoMetadata file;
        ReadPhotoMetadata(folder.Add("a.jpg", jpeg.substr(0, length)), file);
        ASSERT_EQ(file.camera, bytes.camera) << length;
        ASSERT_EQ(file.propertyCount, bytes.propertyCount) << length;
        ASSERT_EQ(file.userComment, bytes.userComment) << length;
        ASSERT_EQ(file.dateTime.Text(), bytes.dateTime.Text()) << length;
    }
}

TEST(PhotoMetadata, OfAPhotoWithoutAnyPropertyIsAllZero) {
    const test::TemporaryFolder folder;
    PhotoMetadata found;
    EXPECT_TRUE(ReadPhotoMetadata(folder.Add("a.jpg", test::JpegOf("", 17, 9)), found, StoredSize::Read));
    EXPECT_EQ(found.propertyCount, 0);
    EXPECT_EQ(found.camera, CameraValues{});
    EXPECT_FALSE(found.dateTime.IsPresent());
    EXPECT_EQ(found.xpComment, std::nullopt);
    EXPECT_EQ(found.make, std::nullopt);
    EXPECT_EQ(UserCommentText(found), std::nullopt);
    EXPECT_EQ(found.orientation, 1);
    EXPECT_EQ(found.storedSize, (Size{17, 9}));
    SystemTime date;
    EXPECT_FALSE(ShotDateOf(found, date));
}

TEST(PhotoMetadata, OfWhatIsNoPhotoIsNothing) {
    const test::TemporaryFolder folder;
    PhotoMetadata found = Read(JpegWith(FullPhoto(ByteOrder::Little)));
    EXPECT_FALSE(ReadPhotoMetadata(folder / "absent.jpg", found));
    EXPECT_EQ(found.camera, CameraValues{});
    EXPECT_EQ(found.propertyCount, 0);
    EXPECT_EQ(found.xpComment, std::nullopt);
    EXPECT_FALSE(found.dateTime.IsPresent());
    for (const char* content : {"", "text", "\x89PNG\r\n\x1A\n"})
        EXPECT_FALSE(ReadPhotoMetadata(folder.Add("b.jpg", content), found)) << content;
    EXPECT_FALSE(ReadPhotoMetadata(folder.Path(), found));
}

// ---- the limit

ExifBuilder PhotoWithProperties(int count) {
    ExifBuilder exif;
    exif.Short(ExifBuilder::Exif, 0x8827, 100).Ascii(ExifBuilder::Main, 0x0132, "2008:05:06 07:08:09");
    for (int i = 2; i < count; ++i) exif.Short(ExifBuilder::Main, static_cast<unsigned>(0xC000 + i), 1);
    return exif;
}

TEST(PhotoMetadata, Of200PropertiesIsReadAndOf201HasNoCameraValues) {
    EXPECT_EQ(Read(JpegWith(PhotoWithProperties(200))).propertyCount, 200);
    EXPECT_EQ(Read(JpegWith(PhotoWithProperties(200))).camera.iso, 100);
    const PhotoMetadata broken = Read(JpegWith(PhotoWithProperties(201)));
    EXPECT_EQ(broken.propertyCount, 201);
    EXPECT_EQ(broken.camera, CameraValues{});
    // Only the camera values are refused.
    EXPECT_EQ(broken.dateTime.Text(), "2008:05:06 07:08:09");
}

TEST(PhotoMetadata, Of201PropertiesIsToldToTheLog) {
    const test::TemporaryFolder folder;
    ASSERT_TRUE(OpenLog(folder / "log.txt"));
    PhotoMetadata found;
    ReadPhotoMetadata(folder.Add("good.jpg", JpegWith(PhotoWithProperties(200))), found);
    ReadPhotoMetadata(folder.Add("bad.jpg", JpegWith(PhotoWithProperties(201))), found);
    OpenLog("");
    const std::string log = files::ReadWholeFile(folder / "log.txt").value_or("");
    EXPECT_NE(log.find("Exif Error: " + folder / "bad.jpg"), std::string::npos);
    EXPECT_EQ(log.find("good.jpg"), std::string::npos);
}

// ---- camera values

TEST(CameraValues, OfTypeByteOrUndefinedAreNotTaken) {
    const PhotoMetadata found =
        Read(JpegWith(ExifBuilder()
                          .Undefined(ExifBuilder::Exif, 0x8827, "\x64", test::kByteType)
                          .Undefined(ExifBuilder::Exif, 0x9209, std::string("\x10\0\0\0", 4))
                          .Short(ExifBuilder::Exif, 0x8822, 2)));
    EXPECT_EQ(found.camera, (CameraValues{.exposureProgram = 2}));
}

TEST(CameraValues, TakeTheMakerNoteOnlyAsBytes) {
    const std::string note = std::string(14, 'n') + test::Word16(ByteOrder::Little, 0x1031) +
                             std::string(6, 'x') + test::Word32(ByteOrder::Little, 5) + "x";
    const auto mode = [&](unsigned type) {
        return Read(JpegWith(ExifBuilder().Undefined(ExifBuilder::Exif, 0x927C, note, type))).camera.mode;
    };
    EXPECT_EQ(mode(test::kUndefinedType), 5);
    EXPECT_EQ(mode(test::kByteType), 5);
    EXPECT_EQ(mode(test::kAsciiType), 0);
}

// ---- dates

std::optional<SystemTime> ShotDate(const ExifBuilder& exif) {
    SystemTime date;
    if (!ShotDateOf(Read(JpegWith(exif)), date)) return std::nullopt;
    return date;
}

constexpr SystemTime kMay{.year = 2008, .month = 5, .day = 6, .hour = 7, .minute = 8, .second = 9};
constexpr SystemTime kJanuary{.year = 2007, .month = 1, .day = 2, .hour = 3, .minute = 4, .second = 5};

TEST(ShotDate, IsTheSameWithColonsAndWithSlashes) {
    EXPECT_EQ(ShotDate(ExifBuilder().Ascii(ExifBuilder::Main, 0x0132, "2008:05:06 07:08:09")), kMay);
    EXPECT_EQ(ShotDate(ExifBuilder().Ascii(ExifBuilder::Main, 0x0132, "2008/05/06 07:08:09")), kMay);
}

TEST(ShotDate, IsDateTimeBeforeDateTimeOriginal) {
    EXPECT_EQ(ShotDate(ExifBuilder()
                           .Ascii(ExifBuilder::Main, 0x0132, "2008:05:06 07:08:09")
                           .Ascii(ExifBuilder::Exif, 0x9003, "2007:01:02 03:04:05")),
              kMay);
    EXPECT_EQ(ShotDate(ExifBuilder().Ascii(ExifBuilder::Exif, 0x9003, "2007:01:02 03:04:05")), kJanuary);
}

TEST(ShotDate, OfZerosIsNoneThoughDateTimeOriginalIsThere) {
    EXPECT_EQ(ShotDate(ExifBuilder()
                           .Ascii(ExifBuilder::Main, 0x0132, "0000:00:00 00:00:00")
                           .Ascii(ExifBuilder::Exif, 0x9003, "2007:01:02 03:04:05")),
              std::nullopt);
}

TEST(ShotDate, TakesTenBytesAndRefusesNine) {
    EXPECT_EQ(ShotDate(ExifBuilder().Undefined(ExifBuilder::Main, 0x0132, "2008:5:06", test::kAsciiType)),
              std::nullopt);
    EXPECT_EQ(ShotDate(ExifBuilder().Undefined(ExifBuilder::Main, 0x0132, "2008:05:06", test::kAsciiType)),
              (SystemTime{.year = 2008, .month = 5, .day = 6}));
}

TEST(ShotDate, OfAnotherTypeThanTextIsNone) {
    EXPECT_EQ(ShotDate(ExifBuilder()
                           .Undefined(ExifBuilder::Main, 0x0132, "2008:05:06 07:08:09")
                           .Ascii(ExifBuilder::Exif, 0x9003, "2007:01:02 03:04:05")),
              std::nullopt);
}

TEST(ShotDate, EndsAtAZeroByte) {
    EXPECT_EQ(ShotDate(ExifBuilder().Undefined(ExifBuilder::Main, 0x0132,
                                               std::string("2008:05:06\0 07:08:09", 20), test::kAsciiType)),
              (SystemTime{.year = 2008, .month = 5, .day = 6}));
}

TEST(ShotDate, WithoutLengthCountsAsMissing) {
    EXPECT_EQ(ShotDate(ExifBuilder()
                           .Raw(ExifBuilder::Main, 0x0132, 2, 0, "")
                           .Ascii(ExifBuilder::Exif, 0x9003, "2007:01:02 03:04:05")),
              kJanuary);
}

TEST(ShotDate, OfAVeryLongTextIsReadFromItsBeginning) {
    EXPECT_EQ(ShotDate(ExifBuilder().Ascii(ExifBuilder::Main, 0x0132,
                                           "2008:05:06 07:08:09" + std::string(9000, '9'))),
              (SystemTime{.year = 2008, .month = 5, .day = 6, .hour = 7, .minute = 8, .second = 65535}));
}

// ---- user comment

std::optional<std::string> UserComment(const std::string& value, unsigned type = test::kUndefinedType) {
    return UserCommentText(Read(JpegWith(ExifBuilder().Undefined(ExifBuilder::Exif, 0x9286, value, type))));
}

TEST(UserComment, LosesItsCharacterCode) {
    EXPECT_EQ(UserComment(std::string("ASCII\0\0\0", 8) + "text"), "text");
    EXPECT_EQ(UserComment(std::string("JIS\0\0\0\0\0", 8) + "text"), "text");
    EXPECT_EQ(UserComment(std::string("UNICODE\0", 8) + "text"), "text");
    EXPECT_EQ(UserComment(std::string("ASCII\0\0\0", 8)), "");
    EXPECT_EQ(UserComment("ascii text"), "ascii text");
    EXPECT_EQ(UserComment("ASCII  text"), "ASCII  text");
}

TEST(UserComment, CalledUnicodeIsGivenByteForByte) {
    const std::string wide("<\0e\0>\0", 6);
    EXPECT_EQ(UserComment(std::string("UNICODE\0", 8) + wide), wide);
}

TEST(UserComment, ThatIsEmptyOrBeginsWithAZeroOrIsShortIsNone) {
    EXPECT_EQ(UserComment(std::string(20, '\0')), std::nullopt);
    EXPECT_EQ(UserComment(std::string(8, '\0') + "text"), std::nullopt);
    EXPECT_EQ(UserComment("seven b"), std::nullopt);
    EXPECT_EQ(UserComment("eight by"), "eight by");
}

TEST(UserComment, OfTypeTextEndsAtItsFirstZero) {
    EXPECT_EQ(UserComment(std::string("text\0more", 9), test::kAsciiType), "text");
    EXPECT_EQ(UserComment("short", test::kAsciiType), "short");
    EXPECT_EQ(UserComment(std::string("\0text", 5), test::kAsciiType), std::nullopt);
}

TEST(UserComment, OfAnyOtherTypeIsNone) {
    EXPECT_EQ(UserComment("long enough", test::kByteType), std::nullopt);
}

// ---- comment and make

TEST(XpComment, IsLittleEndianInBlocksOfPhotoOfEitherOrder) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big})
        EXPECT_EQ(Read(JpegWith(ExifBuilder(order).XpComment(u"\u3042 \U0001F600"))).xpComment,
                  "\u3042 \U0001F600");
}

TEST(XpComment, EndsAtItsFirstZeroWordOrAtItsEnd) {
    const auto comment = [](const std::string& bytes) {
        return Read(JpegWith(ExifBuilder().Undefined(ExifBuilder::Main, 0x9C9C, bytes, test::kByteType)))
            .xpComment;
    };
    EXPECT_EQ(comment(std::string("a\0b\0\0\0c\0", 8)), "ab");
    EXPECT_EQ(comment(std::string("a\0b\0", 4)), "ab");
    EXPECT_EQ(comment(std::string("a\0b\0c", 5)), "ab");
    EXPECT_EQ(comment(std::string("\0\0", 2)), "");
    EXPECT_EQ(comment("a"), "");
}

TEST(Make, IsTextUpToItsFirstZeroInCodePage932) {
    const auto make = [](const std::string& bytes, unsigned type) {
        return Read(JpegWith(ExifBuilder().Undefined(ExifBuilder::Main, 0x010F, bytes, type))).make;
    };
    EXPECT_EQ(make(std::string("Kalmora\0junk", 12), test::kAsciiType), "Kalmora");
    EXPECT_EQ(make("\x83\x4A\x83\x81\x83\x89", test::kAsciiType), "カメラ");
    EXPECT_EQ(make(std::string("K\0a\0\0\0", 6), test::kByteType), "Ka");
}

TEST(Orientation, OutsideOneToEightIsUpright) {
    for (const unsigned value : {0u, 9u, 0xFFFFu})
        EXPECT_EQ(Read(JpegWith(ExifBuilder().Short(ExifBuilder::Main, 0x0112, value))).orientation, 1)
            << value;
    for (const unsigned value : {1u, 8u})
        EXPECT_EQ(Read(JpegWith(ExifBuilder().Short(ExifBuilder::Main, 0x0112, value))).orientation,
                  static_cast<int>(value));
}

}  // namespace
}  // namespace kalmora
