#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "exif_builder.h"
#include "media/png_text_file.h"
#include "platform/files.h"
#include "png_builder.h"
#include "support/permissions.h"
#include "write_fixture.h"

namespace kalmora {
namespace {

using test::ContentOf;
using test::ExifBuilder;
using test::JpegOf;
using test::JpegWith;
using test::PngOf;
using test::PngText;

std::string WithWords(std::string_view words) {
    return JpegWith(ExifBuilder().Undefined(ExifBuilder::Exif, 0x9286,
                                            std::string("ASCII\0\0\0", 8) + std::string(words) + '\0'));
}

class PhotoWriteTest : public test::WriteTest {
protected:
    // Asks a fresh object, so from the file.
    static std::string CommentOf(const std::string& path) {
        PhotoFile photo(path);
        const std::string* comment = photo.GetComment();
        return comment ? *comment : "none";
    }
    static std::string WordsOf(const std::string& path) {
        return PhotoFile(path).ReadUserComment().value_or("none");
    }
    static Estimations ValuesOf(const std::string& path) {
        PhotoFile photo(path);
        return {photo.GetEstimate(1), photo.GetEstimate(3), photo.GetEstimate(2)};
    }
    // A file of each kind that can hold words.
    std::vector<std::string> Files() {
        return {folder.Add("a.jpg", JpegOf("")),
                folder.Add("b.JPEG",
                           JpegWith(ExifBuilder(ByteOrder::Big).Ascii(ExifBuilder::Main, 0x010F, "Maker"))),
                folder.Add("c.png", PngOf("")), folder.Add("d.png", JpegOf("")),
                folder.Add("\u8868.jpg", JpegOf(""))};
    }
};

TEST_F(PhotoWriteTest, CommentIsWrittenAndReadBack) {
    for (const std::string& path : Files())
        for (const char* text : {"a walk", "\u3042\u3044", "\U0001F600 two\r\nlines", ""}) {
            PhotoFile photo(path);
            EXPECT_EQ(photo.SetComment(text), RewriteResult::Written) << path;
            EXPECT_EQ(photo.comment, text);
            EXPECT_EQ(CommentOf(path), text) << path;
        }
}

TEST_F(PhotoWriteTest, CommentOfNothingIsAnEmptyOne) {
    for (const std::string& path : Files()) {
        PhotoFile photo(path);
        photo.SetComment("words");
        EXPECT_EQ(photo.SetComment(std::nullopt), RewriteResult::Written);
        EXPECT_EQ(photo.GetComment(), nullptr);
        EXPECT_EQ(CommentOf(path), "");
    }
}

TEST_F(PhotoWriteTest, AddedCommentGetsALineOfItsOwn) {
    for (const std::string& path : Files()) {
        PhotoFile photo(path);
        EXPECT_EQ(photo.AppendComment(std::nullopt), RewriteResult::Unchanged);
        EXPECT_EQ(CommentOf(path), "none");
        EXPECT_EQ(photo.AppendComment("one"), RewriteResult::Written);
        EXPECT_EQ(CommentOf(path), "one");
        PhotoFile(path).AppendComment("two");
        PhotoFile(path).AppendComment("\nthree");
        PhotoFile(path).AppendComment("\rfour");
        EXPECT_EQ(CommentOf(path), "one\r\ntwo\nthree\rfour") << path;
    }
}

TEST_F(PhotoWriteTest, DateIsWrittenAndReadBack) {
    for (const std::string& path : Files()) {
        PhotoFile photo(path);
        EXPECT_EQ(photo.SetShotDate({1999, 12, 0, 31, 23, 58, 59, 0}), RewriteResult::Written);
        SystemTime date;
        ASSERT_TRUE(PhotoFile(path).ReadShotDate(date)) << path;
        EXPECT_EQ(date.year, 1999);
        EXPECT_EQ(date.month, 12);
        EXPECT_EQ(date.day, 31);
        EXPECT_EQ(date.hour, 23);
        EXPECT_EQ(date.minute, 58);
        EXPECT_EQ(date.second, 59);
    }
    PngTextFile png;
    ASSERT_TRUE(png.Parse(folder / "c.png"));
    EXPECT_EQ(*png.GetText("Creation Time"), "1999:12:31 23:58:59");
}

TEST_F(PhotoWriteTest, EstimationsAreWrittenAndReadBack) {
    for (const std::string& path : Files()) {
        PhotoFile photo(path);
        EXPECT_EQ(photo.Estimate(EstimateType::Like), RewriteResult::Written);
        EXPECT_EQ(photo.Estimate(EstimateType::Like), RewriteResult::Written);
        EXPECT_EQ(photo.Estimate(EstimateType::Private), RewriteResult::Written);
        EXPECT_EQ(photo.estimations.like, 192);
        EXPECT_EQ(ValuesOf(path), (Estimations{.like = 192, .privacy = -128})) << path;
        PhotoFile again(path);
        EXPECT_EQ(again.Estimate(EstimateType::Bad), RewriteResult::Written);
        EXPECT_EQ(ValuesOf(path), (Estimations{.like = 192, .good = -128, .privacy = -128})) << path;
        EXPECT_EQ(again.Estimate(EstimateType::Clear), RewriteResult::Written);
        EXPECT_EQ(ValuesOf(path), Estimations{});
    }
}

TEST_F(PhotoWriteTest, EstimationsStandInTheirPlaceToTheByte) {
    const std::string block =
        "\n<estimations><estimation type='like' value='128' last='128'>"
        "<log date='2008/05/06' value='128'/></estimation></estimations>";
    const std::vector<std::string> paths = Files();
    for (const std::string& path : paths) PhotoFile(path).Estimate(EstimateType::Like);
    for (const std::string& path : {paths[0], paths[1], paths[3]})
        EXPECT_NE(ContentOf(path).find(std::string("ASCII\0\0\0", 8) + block + '\0'), std::string::npos)
            << path;
    PngTextFile png;
    ASSERT_TRUE(png.Parse(paths[2]));
    EXPECT_EQ(*png.GetText("Property"), block);
}

TEST_F(PhotoWriteTest, WordsOfOthersInTheUserCommentStay) {
    PhotoFile photo(folder.Add("a.jpg", WithWords("typed by hand")));
    photo.Estimate(EstimateType::Good);
    EXPECT_TRUE(WordsOf(photo.path).starts_with("typed by hand\n<estimations>"));
    PhotoFile wide(
        folder.Add("b.jpg", JpegWith(ExifBuilder().Undefined(ExifBuilder::Exif, 0x9286,
                                                             std::string("UNICODE\0w\0i\0d\0e\0", 16)))));
    wide.Estimate(EstimateType::Good);
    EXPECT_TRUE(WordsOf(wide.path).starts_with("wide\n<estimations>"));
    EXPECT_EQ(ValuesOf(wide.path).good, 128);
}

TEST_F(PhotoWriteTest, ClearTakesTheWordsInFrontAlong) {
    PhotoFile photo(folder.Add("a.jpg", WithWords("typed by hand")));
    photo.Estimate(EstimateType::Good);
    photo.Estimate(EstimateType::Clear);
    EXPECT_EQ(WordsOf(photo.path), std::string(1, '\0')) << "an item of length 9 is left: code and zero byte";
    EXPECT_EQ(ValuesOf(photo.path), Estimations{});
}

TEST_F(PhotoWriteTest, ClearWithoutABlockRewritesTheSameText) {
    const std::string path = folder.Add("a.jpg", WithWords("typed by hand")), before = ContentOf(path);
    PhotoFile photo(path);
    EXPECT_EQ(photo.Estimate(EstimateType::Clear), RewriteResult::Unchanged);
    EXPECT_EQ(ContentOf(path), before);
    EXPECT_EQ(files::GetStatus(path)->written.ticks, kClockTicks);
    EXPECT_EQ(photo.estimations.like, 0);
    // A text that is not there yet becomes an empty one.
    PhotoFile bare(folder.Add("b.jpg", JpegOf("")));
    EXPECT_EQ(bare.Estimate(EstimateType::Clear), RewriteResult::Written);
    EXPECT_NE(ContentOf(bare.path).find(std::string("ASCII\0\0\0\0", 9)), std::string::npos);
}

TEST_F(PhotoWriteTest, ClearWithoutTheEndOfTheBlockComesBack) {
    const std::string text = "<estimations><estimation type='like' value='192' last='64'>";
    PhotoFile photo(folder.Add("a.jpg", WithWords(text)));
    photo.Estimate(EstimateType::Clear);
    EXPECT_EQ(photo.estimations.like, 0);
    EXPECT_EQ(ValuesOf(photo.path).like, 192);
    EXPECT_EQ(WordsOf(photo.path), text + '\0');
}

TEST_F(PhotoWriteTest, OnWhatIsNoImageStepsInTheObjectAndLeavesTheFile) {
    for (const char* name : {"a.avi", "a.txt", "a.mp3", "a.xyz"}) {
        const std::string path = folder.Add(name, JpegOf(""));
        PhotoFile photo(path);
        EXPECT_EQ(photo.Estimate(EstimateType::Like), RewriteResult::Unsupported) << name;
        EXPECT_EQ(photo.estimations.like, 128);
        EXPECT_EQ(photo.SetComment("words"), RewriteResult::Unsupported);
        EXPECT_EQ(photo.comment, "words");
        EXPECT_EQ(photo.SetShotDate({2008, 5, 2, 6, 7, 8, 9, 0}), RewriteResult::Unsupported);
        EXPECT_EQ(photo.WriteTextTag(0x010F, "Maker"), RewriteResult::Unsupported);
        EXPECT_EQ(ContentOf(path), JpegOf(""));
    }
}

TEST_F(PhotoWriteTest, OnAnImageThatIsNoJpegLeavesTheFile) {
    for (const char* name : {"a.gif", "a.bmp", "a.tif", "a.jpg", "a.png"}) {
        const std::string path = folder.Add(name, "GIF89a and so on");
        EXPECT_EQ(PhotoFile(path).Estimate(EstimateType::Like), RewriteResult::Unsupported) << name;
        EXPECT_EQ(PhotoFile(path).SetComment("words"), RewriteResult::Unsupported);
        EXPECT_EQ(ContentOf(path), "GIF89a and so on");
    }
    const std::string png = folder.Add("b.jpg", PngOf(""));
    EXPECT_EQ(PhotoFile(png).SetComment("words"), RewriteResult::Unsupported)
        << "a PNG that is called a JPEG";
}

TEST_F(PhotoWriteTest, FailureIsToldAndTheObjectHasMovedOn) {
    KeepLog();
    const std::string path = folder.Add("a.jpg", JpegOf(""));
    test::MakeReadOnly(path);
    PhotoFile photo(path);
    EXPECT_EQ(photo.Estimate(EstimateType::Like), RewriteResult::Denied);
    EXPECT_EQ(photo.SetComment("words"), RewriteResult::Denied);
    EXPECT_EQ(photo.estimations.like, 128);
    EXPECT_EQ(*photo.GetComment(), "words");
    EXPECT_EQ(ContentOf(path), JpegOf(""));
    EXPECT_NE(LogText().find("read only: " + path), std::string::npos);
    EXPECT_NE(LogText().find("not written (denied): " + path), std::string::npos);
}

TEST_F(PhotoWriteTest, RatingIsToldToTheLog) {
    KeepLog();
    const std::string path = folder.Add("a.jpg", JpegOf(""));
    PhotoFile photo(path);
    photo.Estimate(EstimateType::Bad);
    photo.Estimate(EstimateType::Like);
    const std::string log = LogText();
    EXPECT_NE(log.find("Estimate[6]: " + path), std::string::npos);
    EXPECT_NE(log.find("Estimate[1]: " + path), std::string::npos);
    EXPECT_NE(log.find("Like = 0, Good = -128, Private = 0"), std::string::npos);
}

TEST_F(PhotoWriteTest, TextTagsAreWrittenInCodePage932) {
    PhotoFile photo(folder.Add("a.jpg", JpegOf("")));
    EXPECT_EQ(photo.WriteTextTag(0x010F, "SHARP"), RewriteResult::Written);
    EXPECT_EQ(photo.WriteTextTag(0x0110, "W-ZERO3 [es]"), RewriteResult::Written);
    EXPECT_EQ(PhotoFile(photo.path).ReadMake(), "SHARP");
    EXPECT_EQ(photo.WriteTextTag(0x010F, ""), RewriteResult::Unchanged);
}

TEST_F(PhotoWriteTest, SameCommentMovesTheTimeAlone) {
    for (const std::string& path : {folder.Add("a.jpg", JpegOf("")), folder.Add("c.png", PngOf(""))}) {
        PhotoFile(path).SetComment("words");
        const std::string before = ContentOf(path);
        files::SetTimes(path, FileTime{123'456'789'000'000'000}, FileTime{123'456'000'000'000'000});
        EXPECT_EQ(PhotoFile(path).SetComment("words"), RewriteResult::Unchanged);
        EXPECT_GT(files::GetStatus(path)->written.ticks, 128'000'000'000'000'000u) << path;
        EXPECT_EQ(ContentOf(path), before);
    }
}

TEST_F(PhotoWriteTest, ManyAreRatedInTheirOrderAndEachHasItsResult) {
    std::vector<PhotoFile> photos;
    photos.emplace_back(folder.Add("a.jpg", JpegOf("")));
    photos.emplace_back(folder.Add("b.gif", "GIF89a"));
    photos.emplace_back(folder / "absent.jpg");
    photos.emplace_back(folder.Add("c.png", PngOf("")));
    photos.emplace_back(folder / "a.jpg");
    photos.emplace_back("relative.jpg");
    const std::vector<RewriteResult> results = EstimateAll(photos, EstimateType::Like);
    EXPECT_EQ(results,
              (std::vector{RewriteResult::Written, RewriteResult::Unsupported, RewriteResult::Unreadable,
                           RewriteResult::Written, RewriteResult::Written, RewriteResult::Unreadable}));
    EXPECT_EQ(ValuesOf(folder / "a.jpg").like, 192) << "twice in the list, so twice rated";
    EXPECT_EQ(ValuesOf(folder / "c.png").like, 128);
    EXPECT_TRUE(EstimateAll({}, EstimateType::Like).empty());
}

TEST_F(PhotoWriteTest, FileThatWasChangedIsReadAgainOnceForgotten) {
    const std::string path = folder.Add("a.jpg", JpegOf("", 640, 480));
    PhotoFile photo(path);
    EXPECT_TRUE(photo.MeasurePicture(path));
    EXPECT_EQ(photo.GetComment(), nullptr);
    PhotoFile other(path);
    other.SetComment("words");
    other.Estimate(EstimateType::Like);
    EXPECT_EQ(photo.GetComment(), nullptr);
    photo.ForgetFile();
    ASSERT_NE(photo.GetComment(), nullptr);
    EXPECT_EQ(*photo.GetComment(), "words");
    EXPECT_EQ(photo.GetEstimate(1), 128);
}

}  // namespace
}  // namespace kalmora
