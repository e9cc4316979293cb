#include "media/photo.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "exif_builder.h"
#include "photo_fixture.h"
#include "picture_files.h"
#include "png_builder.h"
#include "store/file_helpers.h"
#include "text/text.h"

namespace kalmora {
namespace {

using test::ExifBuilder;
using test::JpegOf;
using test::JpegWith;
using test::PngOf;
using test::PngText;

constexpr SystemTime kMorningOfMay{.year = 2008, .month = 5, .day = 6, .hour = 7, .minute = 8, .second = 9};

const std::string kMarkup =
    "\n<estimations><estimation type='like' value='192' last='64'></estimation>"
    "<estimation type='good' value='-128' last='128'></estimation>"
    "<estimation type='privacy' value='-64' last='64'></estimation></estimations>";

std::string RatedJpeg(const std::string& markup = kMarkup) {
    return JpegWith(
        ExifBuilder().Undefined(ExifBuilder::Exif, 0x9286, std::string("ASCII\0\0\0", 8) + markup + '\0'));
}

using PhotoTest = test::PhotoTest;

// ---- what it is

TEST_F(PhotoTest, OfARelativePathIsEmptyAndNoError) {
    for (const char* refused : {"a/b.jpg", "b.jpg", "./b.jpg", ""}) {
        CPhoto photo(refused);
        EXPECT_EQ(photo.path, "") << refused;
        EXPECT_EQ(photo.kind, ObjectKind::Unknown);
        EXPECT_EQ(photo.extension, "");
        SystemTime date = kMorningOfMay;
        EXPECT_FALSE(photo.GetDate(date));
        EXPECT_EQ(date, SystemTime{});
        EXPECT_EQ(photo.GetComment(), nullptr);
        photo.ReadExifValues();
        EXPECT_EQ(photo.camera.iso, 0);
    }
}

TEST_F(PhotoTest, BeginsWithNothingRead) {
    const CPhoto photo("/absent/b.jpg");
    EXPECT_EQ(photo.visible, 1);
    EXPECT_EQ(photo.displayWidth, -1);
    EXPECT_EQ(photo.displayHeight, -1);
    EXPECT_EQ(photo.imageWidth, -1);
    EXPECT_EQ(photo.imageHeight, -1);
    EXPECT_EQ(photo.placementTag, -1);
    EXPECT_FALSE(photo.placed);
    EXPECT_FALSE(photo.commentRead);
    EXPECT_FALSE(photo.estimationsRead);
}

TEST_F(PhotoTest, TakesItsPlaceAndIsMeasuredOnRequest) {
    const std::string path = folder.Add("a.jpg", test::DecodableJpeg(400, 200));
    const CPhoto later(path, 5, 6, CPhoto::Measure::Later), now(path, 5, 6, CPhoto::Measure::Now);
    EXPECT_EQ(later.layoutX, 5);
    EXPECT_EQ(later.layoutY, 6);
    EXPECT_EQ(later.imageWidth, -1);
    EXPECT_EQ(now.imageWidth, 400);
    EXPECT_EQ(now.imageHeight, 200);
}

TEST_F(PhotoTest, HasTheExtensionInLowerCase) {
    const auto extension = [](const std::string& name) { return CPhoto("/data/" + name).extension; };
    EXPECT_EQ(extension("photo.JPEG"), "jpeg");
    EXPECT_EQ(extension("archive.tar.gz"), "gz");
    EXPECT_EQ(extension("name.12345678"), "12345678");
    EXPECT_EQ(extension("name.123456789"), "");
    EXPECT_EQ(extension("name.写真写真"), "写真写真");
    EXPECT_EQ(extension("name.写真写真x"), "");
    EXPECT_EQ(extension("name"), "");
    EXPECT_EQ(extension("name."), "");
    for (const char ends : std::string(" :\\,()~=?#!\"'$%&"))
        EXPECT_EQ(extension(std::string("name.j") + ends + "pg"), "") << ends;
    EXPECT_EQ(extension("folder.jpg/name"), "");
}

TEST_F(PhotoTest, TakesALongerExtensionThanOtherRooms) {
    EXPECT_EQ(CPhoto("/data/name.12345678").extension, "12345678");
    EXPECT_EQ(GetExtension("/data/name.12345678"), "");
    EXPECT_EQ(GetExtension("/data/name.1234567"), "1234567");
}

TEST_F(PhotoTest, DoesNotTakeATrailByteForAnEndOfTheExtension) {
    // In code page 932 the second byte of this character is a backslash.
    EXPECT_EQ(CPhoto("/data/表.jpg").extension, "jpg");
    EXPECT_EQ(CPhoto("/data/name.ソ").extension, "ソ");
}

TEST_F(PhotoTest, HasTheKindOfItsExtension) {
    const auto kind = [](const std::string& name) { return CPhoto("/data/" + name).kind; };
    EXPECT_EQ(kind("a.JPG"), ObjectKind::Image);
    EXPECT_EQ(kind("a.txt"), ObjectKind::Text);
    EXPECT_EQ(kind("a.mp3"), ObjectKind::Music);
    EXPECT_EQ(kind("a.m3u"), ObjectKind::MusicList);
    EXPECT_EQ(kind("a.mpg"), ObjectKind::Movie);
    EXPECT_EQ(kind("a.lnk"), ObjectKind::Shortcut);
    EXPECT_EQ(kind("a.xyz"), ObjectKind::Unknown);
    EXPECT_EQ(kind("a"), ObjectKind::Unknown);
}

TEST_F(PhotoTest, OfATextStandsFor1024By768) {
    const CPhoto text("/data/a.txt");
    EXPECT_EQ(text.imageWidth, 1024);
    EXPECT_EQ(text.imageHeight, 768);
}

// ---- where it is placed

TEST_F(PhotoTest, IsHitOnAllItsEdgesAndNotBeyond) {
    CPhoto photo("/data/a.jpg");
    photo.drawnX = 10;
    photo.drawnY = 20;
    photo.displayWidth = 100;
    photo.displayHeight = 50;
    EXPECT_TRUE(photo.HitTest(10, 20));
    EXPECT_TRUE(photo.HitTest(110, 45));
    EXPECT_TRUE(photo.HitTest(60, 70));
    EXPECT_FALSE(photo.HitTest(111, 45));
    EXPECT_FALSE(photo.HitTest(9, 45));
    EXPECT_FALSE(photo.HitTest(60, 71));
    EXPECT_FALSE(photo.HitTest(60, 19));
    photo.visible = 0;
    EXPECT_FALSE(photo.HitTest(60, 45));
}

TEST_F(PhotoTest, MovesByTheWayBetweenTwoPoints) {
    CPhoto photo("/data/a.jpg", 100, 200, CPhoto::Measure::Later);
    EXPECT_EQ(photo.Move(7, 8, 10, 4), 3);
    EXPECT_EQ(photo.layoutX, 103);
    EXPECT_EQ(photo.layoutY, 196);
}

// ---- size

TEST_F(PhotoTest, IsFittedIntoTheThumbnailSizeWhenMeasured) {
    CPhoto wide = Make("wide.jpg", test::DecodableJpeg(401, 200));
    wide.MeasureImage();
    EXPECT_EQ(wide.imageWidth, 401);
    EXPECT_EQ(wide.displayWidth, 240);
    EXPECT_EQ(wide.displayHeight, 240 * 200 / 401);
    CPhoto tall = Make("tall.jpg", test::DecodableJpeg(200, 401));
    tall.MeasureImage();
    EXPECT_EQ(tall.displayWidth, 200 * 240 / 401);
    EXPECT_EQ(tall.displayHeight, 240);
    CPhoto square = Make("square.jpg", test::DecodableJpeg(50, 50));
    square.MeasureImage();
    EXPECT_EQ(square.displayWidth, 240);
    EXPECT_EQ(square.displayHeight, 240);
}

TEST_F(PhotoTest, OfAnUnreadablePictureHasNoSize) {
    CPhoto photo = Make("a.jpg", "no picture");
    photo.MeasureImage();
    EXPECT_EQ(photo.displayWidth, 0);
    EXPECT_EQ(photo.displayHeight, 0);
}

TEST_F(PhotoTest, OfAnotherKindIsNotMeasured) {
    CPhoto photo = Make("a.mpg", "movie");
    photo.MeasureImage();
    EXPECT_EQ(photo.imageWidth, -1);
    EXPECT_EQ(photo.displayWidth, -1);
}

// ---- dates

class PhotoDateTest : public test::PhotoTest {
protected:
    // True when the date of such an object is that of its file.
    bool IsDatedByFile(const std::string& name, std::string_view content) {
        const SystemTime date = DateOf(name, content);
        return date != SystemTime{} && date == GetFileDate(folder / name);
    }
    SystemTime DateOf(const std::string& name, std::string_view content) {
        CPhoto photo = Make(name, content);
        SystemTime date;
        EXPECT_TRUE(photo.GetDate(date));
        EXPECT_EQ(photo.date, date);
        return date;
    }
};

TEST_F(PhotoDateTest, OfAPhotoIsItsShootingDate) {
    EXPECT_EQ(
        DateOf("a.jpg", JpegWith(ExifBuilder().Ascii(ExifBuilder::Main, 0x0132, "2008:05:06 07:08:09"))),
        kMorningOfMay);
}

TEST_F(PhotoDateTest, OfAPhotoWithoutOneIsThatOfItsFile) {
    EXPECT_TRUE(IsDatedByFile("a.jpg", JpegOf("")));
    EXPECT_TRUE(IsDatedByFile(
        "b.jpg", JpegWith(ExifBuilder().Ascii(ExifBuilder::Main, 0x0132, "0000:00:00 00:00:00"))));
}

TEST_F(PhotoDateTest, OfAPngIsItsCreationTimeOrThatOfItsFile) {
    EXPECT_EQ(DateOf("a.png", PngOf(PngText("Creation Time", "2008:05:06 07:08:09"))), kMorningOfMay);
    EXPECT_TRUE(IsDatedByFile("b.png", PngOf(PngText("Creation Time", "6 May 2008 07:08:09"))));
    EXPECT_TRUE(IsDatedByFile("c.png", PngOf("")));
}

TEST_F(PhotoDateTest, OfAJpegThatIsCalledPngIsItsShootingDate) {
    EXPECT_EQ(
        DateOf("a.png", JpegWith(ExifBuilder().Ascii(ExifBuilder::Main, 0x0132, "2008:05:06 07:08:09"))),
        kMorningOfMay);
}

TEST_F(PhotoDateTest, OfAPngThatIsCalledJpegIsThatOfItsFile) {
    EXPECT_TRUE(IsDatedByFile("a.jpg", PngOf(PngText("Creation Time", "2008:05:06 07:08:09"))));
}

TEST_F(PhotoDateTest, OfMusicAndMoviesIsThatOfTheirFile) {
    EXPECT_TRUE(IsDatedByFile("a.mp3", "ID3 music"));
    EXPECT_TRUE(IsDatedByFile("a.mpg", ""));
}

TEST_F(PhotoDateTest, OfANoteStandsInItsFirstLine) {
    const SystemTime morning{.year = 2008, .month = 11, .day = 13, .hour = 10, .minute = 15};
    const SystemTime hour{.year = 2008, .month = 11, .day = 13, .hour = 10};
    EXPECT_EQ(DateOf("a.txt", "[2008/11/13 10:15] dentist\n"), morning);
    EXPECT_EQ(DateOf("a.txt", "[2008/11/13 10] dentist"), hour);
    EXPECT_EQ(DateOf("a.txt", "\xEF\xBB\xBF[2008/11/13 10:15] 歯医者"), morning);
}

TEST_F(PhotoDateTest, OfAScheduleOrDiaryStandsInItsSecondLine) {
    const SystemTime morning{.year = 2008, .month = 11, .day = 13, .hour = 10, .minute = 15};
    EXPECT_EQ(DateOf("a.txt", "[Schedule]\r\n[2008/11/13 10:15] dentist\r\n"), morning);
    EXPECT_EQ(DateOf("a.txt", "[diary] a good day\n[2008/11/13 10:15]"), morning);
    EXPECT_TRUE(IsDatedByFile("b.txt", "[Memo]\n[2008/11/13 10:15]"));
    EXPECT_TRUE(IsDatedByFile("c.txt", "[Diary]\n\n[2008/11/13 10:15]"));
    EXPECT_TRUE(IsDatedByFile("d.txt", "[Diary]"));
}

TEST_F(PhotoDateTest, OfANoteWithoutOneIsThatOfItsFile) {
    for (const char* text : {"", "plain", "2008/11/13 10:15", "\n[2008/11/13 10:15]", "[2008/11/13]"})
        EXPECT_TRUE(IsDatedByFile("a.txt", text)) << text;
}

TEST_F(PhotoDateTest, OfADiaryWithALongFirstLineIsNotFound) {
    // A line of more than 255 bytes continues as the second one.
    EXPECT_EQ(DateOf("a.txt", "[Diary]" + std::string(247, 'x') + "\n[2008/11/13 10:15]").year, 2008);
    EXPECT_TRUE(IsDatedByFile("b.txt", "[Diary]" + std::string(249, 'x') + "\n[2008/11/13 10:15]"));
}

TEST_F(PhotoDateTest, OfAVanishedFileIsNone) {
    CPhoto photo = Make("a.txt", "[2008/11/13 10:15]");
    std::filesystem::remove(photo.path);
    SystemTime date = kMorningOfMay;
    EXPECT_FALSE(photo.GetDate(date));
    EXPECT_EQ(date, SystemTime{});
}

// ---- comments

std::string CommentOf(CPhoto photo) {
    const std::string* comment = photo.GetComment();
    EXPECT_TRUE(photo.commentRead);
    return comment ? *comment : "none";
}

TEST_F(PhotoTest, HasTheCommentOfExif) {
    EXPECT_EQ(CommentOf(Make("a.jpg", JpegWith(ExifBuilder().XpComment(u"花火")))), "花火");
    EXPECT_EQ(CommentOf(Make("a.jpg", JpegOf(""))), "none");
    EXPECT_EQ(CommentOf(Make("a.jpg", JpegWith(ExifBuilder().XpComment(u"")))), "");
    EXPECT_EQ(CommentOf(Make("b.txt", "text")), "none");
}

TEST_F(PhotoTest, HasTheCommentOfAPng) {
    EXPECT_EQ(CommentOf(Make("a.png", PngOf(PngText("Comment", text::ToCp932("花火"))))), "花火");
    EXPECT_EQ(CommentOf(Make("a.png", PngOf(PngText("Comment", "\U0001F600")))), "\U0001F600")
        << "what the code page lacks is written as UTF-8";
    EXPECT_EQ(CommentOf(Make("a.png", PngOf(""))), "none");
    EXPECT_EQ(CommentOf(Make("b.png", JpegWith(ExifBuilder().XpComment(u"花火")))), "花火");
}

TEST_F(PhotoTest, ReadsItsCommentOnce) {
    CPhoto photo = Make("a.jpg", JpegWith(ExifBuilder().XpComment(u"first")));
    ASSERT_NE(photo.GetComment(), nullptr);
    folder.Add("a.jpg", JpegWith(ExifBuilder().XpComment(u"second")));
    EXPECT_EQ(*photo.GetComment(), "first");
    photo.comment = "typed";
    EXPECT_EQ(*photo.GetComment(), "typed");
    photo.ForgetFile();
    EXPECT_EQ(*photo.GetComment(), "second");
}

TEST_F(PhotoTest, OfAVeryShortPathHasNoComment) {
    CPhoto photo("/a.j");
    EXPECT_EQ(photo.GetComment(), nullptr);
    EXPECT_TRUE(photo.commentRead);
}

// ---- camera values and make

TEST_F(PhotoTest, FillsItsCameraValues) {
    CPhoto photo = Make("a.jpg", JpegWith(ExifBuilder()
                                              .Ascii(ExifBuilder::Main, 0x010F, "Kalmora")
                                              .Short(ExifBuilder::Exif, 0x8827, 200)
                                              .Rational(ExifBuilder::Exif, 0x9202, 300, 100)
                                              .Short(ExifBuilder::Exif, 0x9209, 16)));
    photo.ReadExifValues();
    EXPECT_EQ(photo.camera.iso, 200);
    EXPECT_EQ(photo.camera.aperture, 300);
    EXPECT_EQ(photo.camera.flash, 16);
    EXPECT_EQ(photo.camera.shutter, 0);
    EXPECT_EQ(photo.ReadMake(), "Kalmora");
    EXPECT_EQ(Make("b.jpg", JpegOf("")).ReadMake(), std::nullopt);
}

TEST_F(PhotoTest, AsksItsFileOnceForEverything) {
    CPhoto photo =
        Make("a.jpg",
             JpegWith(ExifBuilder()
                          .Ascii(ExifBuilder::Main, 0x0132, "2008:05:06 07:08:09")
                          .XpComment(u"kept")
                          .Short(ExifBuilder::Exif, 0x8827, 200)
                          .Undefined(ExifBuilder::Exif, 0x9286, std::string("ASCII\0\0\0", 8) + kMarkup)));
    photo.ReadExifValues();
    std::filesystem::remove(photo.path);
    SystemTime date;
    EXPECT_TRUE(photo.ReadShotDate(date));
    EXPECT_EQ(date, kMorningOfMay);
    EXPECT_EQ(*photo.GetComment(), "kept");
    EXPECT_EQ(photo.GetEstimate(1), 192);
}

// ---- estimations

TEST_F(PhotoTest, GivesItsEstimationsByType) {
    CPhoto photo = Make("a.jpg", RatedJpeg());
    EXPECT_EQ(photo.GetEstimate(1), 192);
    EXPECT_EQ(photo.GetEstimate(2), -64);
    EXPECT_EQ(photo.GetEstimate(3), -128);
    for (const int other : {0, 4, 5, 6, 7, -1, 100}) EXPECT_EQ(photo.GetEstimate(other), 0) << other;
    EXPECT_TRUE(photo.estimationsRead);
}

TEST_F(PhotoTest, OfAPngHasItsEstimationsInTheProperty) {
    EXPECT_EQ(Make("a.png", PngOf(PngText("Property", kMarkup))).GetEstimate(1), 192);
    EXPECT_EQ(Make("a.png", PngOf(PngText("Comment", kMarkup))).GetEstimate(1), 0);
    EXPECT_EQ(Make("b.png", RatedJpeg()).GetEstimate(1), 192);
}

TEST_F(PhotoTest, ReadsItsEstimationsOnce) {
    CPhoto photo = Make("a.jpg", RatedJpeg());
    EXPECT_EQ(photo.GetEstimate(1), 192);
    photo.estimations.like = 224;
    EXPECT_EQ(photo.GetEstimate(1), 224);
}

TEST_F(PhotoTest, IsHiddenByGoodModeWhenItIsBad) {
    const auto shown = [&](const std::string& markup) {
        CPhoto photo = Make("a.jpg", RatedJpeg(markup));
        const bool result = photo.IsVisibleUnderEstimate();
        EXPECT_EQ(photo.visible, result ? 1 : 0);
        return result;
    };
    const std::string bad = "<estimations><estimation type='good' value='-1'";
    const std::string secret = " <estimations><estimation type='privacy' value='-1'";
    EXPECT_TRUE(shown(bad));
    State().settings.GoodMode = 1;
    EXPECT_FALSE(shown(bad));
    EXPECT_TRUE(shown(secret));
    EXPECT_TRUE(shown("<estimations><estimation type='good' value='0'"));
    State().settings.GoodMode = 0;
    State().settings.PublicMode = 1;
    EXPECT_TRUE(shown(bad));
    EXPECT_FALSE(shown(secret));
    State().settings.GoodMode = 2;  // only 1 is on
    EXPECT_TRUE(shown(bad));
}

TEST_F(PhotoTest, ThatIsNotHiddenByItsEstimationStaysAsItWas) {
    CPhoto photo = Make("a.jpg", RatedJpeg());
    photo.visible = 0;
    EXPECT_TRUE(photo.IsVisibleUnderEstimate());
    EXPECT_EQ(photo.visible, 0);
}

// ---- small pictures

TEST_F(PhotoTest, IsLeftOutWhenItIsSmallOnBothSides) {
    State().settings.SizeOfSmallImage = 100;
    const auto shown = [&](unsigned width, unsigned height) {
        const std::string name = std::to_string(width) + "x" + std::to_string(height) + ".jpg";
        CPhoto photo = Make(name, test::DecodableJpeg(width, height));
        const bool result = photo.SkipIfSmall();
        EXPECT_EQ(photo.visible, result ? 1 : 0);
        return result;
    };
    EXPECT_FALSE(shown(99, 99));
    EXPECT_TRUE(shown(99, 100));
    EXPECT_TRUE(shown(100, 99));
    EXPECT_TRUE(shown(100, 100));
    State().settings.SkipSmallImage = false;
    EXPECT_TRUE(shown(10, 10));
}

TEST_F(PhotoTest, OfAnotherKindIsNeverTooSmall) {
    EXPECT_TRUE(Make("a.txt", "text").SkipIfSmall());
    EXPECT_TRUE(Make("a.mpg", "movie").SkipIfSmall());
}

}  // namespace
}  // namespace kalmora
