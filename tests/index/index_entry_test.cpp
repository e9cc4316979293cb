// What the index takes from a file.
#include "index_fixture.h"
#include "media/photo_file.h"
#include "media/png_builder.h"
#include "text/text.h"

namespace kalmora {
namespace {

using test::ExifBuilder;
constexpr auto Main = ExifBuilder::Main;
constexpr auto Exif = ExifBuilder::Exif;

class IndexEntryRefresh : public IndexTest {
protected:
    IndexEntry Refreshed(std::string_view name, std::string_view content) const {
        IndexEntry entry;
        entry.path = PutInDay(name, content);
        EXPECT_TRUE(entry.Refresh());
        return entry;
    }
};

constexpr char kEstimations[] =
    "<estimations><estimation type='like' value='192' last='64'></estimation>"
    "<estimation type='good' value='-64' last='64'></estimation>"
    "<estimation type='privacy' value='128' last='64'></estimation></estimations>";

std::string MakerNote() {
    return std::string(14, 'n') + test::Word16(ByteOrder::Little, 0x1031) + std::string(6, 'x') +
           test::Word32(ByteOrder::Little, 5) + test::Word16(ByteOrder::Little, 0x4000) +
           std::string(6, 'x') + test::Word32(ByteOrder::Little, 0) + std::string(20, 'z');
}

TEST_F(IndexEntryRefresh, PhotoGivesEverything) {
    ExifBuilder exif;
    exif.Ascii(Main, 0x0132, "2008:11:13 18:42:07")
        .XpComment(u"Fireworks\r\nカメラ ＡＢＣ")
        .Short(Exif, 0x8827, 100)
        .Rational(Exif, 0x9201, 825, 100, test::kSignedRationalType)
        .Rational(Exif, 0x9202, 300, 100)
        .Rational(Exif, 0x9203, 541, 100, test::kSignedRationalType)
        .Rational(Exif, 0x9204, 33, 100, test::kSignedRationalType)
        .Rational(Exif, 0x829A, 10, 3200)
        .Short(Exif, 0x8822, 2)
        .Short(Exif, 0x9209, 16)
        .Undefined(Exif, 0x927C, MakerNote())
        .Undefined(Exif, 0x9286, std::string("ASCII\0\0\0", 8) + kEstimations);
    const IndexEntry entry = Refreshed("a.JPG", test::JpegWith(exif, 2048, 1536));
    EXPECT_EQ(entry.width, 240);
    EXPECT_EQ(entry.height, 180);
    EXPECT_EQ(entry.date, (SystemTime{2008, 11, entry.date.dayOfWeek, 13, 18, 42, 7, 0}));
    EXPECT_EQ(entry.comment, "fireworks  ｶﾒﾗ abc");
    EXPECT_EQ(entry.estimations.like, 192);
    EXPECT_EQ(entry.estimations.good, -64);
    EXPECT_EQ(entry.estimations.privacy, 128);
    EXPECT_EQ(entry.camera.face, 1);
    EXPECT_EQ(entry.camera.mode, 5);
    EXPECT_EQ(entry.camera.iso, 100);
    EXPECT_EQ(entry.camera.shutter, 825);
    EXPECT_EQ(entry.camera.brightness, 541);
    EXPECT_EQ(entry.camera.flash, 16);
    EXPECT_EQ(entry.camera.exposureBias, 33);
    EXPECT_EQ(entry.camera.exposureTime, 10);
    EXPECT_EQ(entry.camera.exposureProgram, 2);
    EXPECT_EQ(entry.camera.aperture, 300);
    EXPECT_EQ(entry.lastWriteTime, files::GetStatus(entry.path)->written);
    EXPECT_FALSE(entry.IsStale());
}

TEST_F(IndexEntryRefresh, TallPhotoIsFittedByItsHeight) {
    const IndexEntry entry = Refreshed("a.jpeg", test::JpegOf("", 1536, 2048));
    EXPECT_EQ(entry.width, 180);
    EXPECT_EQ(entry.height, 240);
}

TEST_F(IndexEntryRefresh, SmallPhotoIsIndexedLikeAnyOther) {
    State().settings.SkipSmallImage = true;
    State().settings.SizeOfSmallImage = 80;
    EXPECT_EQ(Refreshed("a.jpg", test::JpegOf("", 16, 16)).width, 240);
}

TEST_F(IndexEntryRefresh, PhotoWithoutAUsableDateTakesTheTimeOfTheFile) {
    for (const char* date :
         {"0000:00:00 00:00:00", "2008:11:00 10:00:00", "9000:11:13 10:00:00", "2008:13:13 10:00:00"}) {
        const IndexEntry entry = Refreshed("a.jpg", PhotoTaken(date));
        // GetDate asks the photo first, so a date that was read as one stays: only one that the photo denies
        // falls back to the file.
        PhotoFile photo(entry.path);
        SystemTime expected;
        photo.GetDate(expected);
        EXPECT_EQ(entry.date, expected) << date;
    }
    const IndexEntry undated = Refreshed("b.jpg", test::JpegOf(""));
    EXPECT_NE(undated.date.year, 0);
}

TEST_F(IndexEntryRefresh, PngGivesItsTexts) {
    const IndexEntry entry =
        Refreshed("a.png", test::PngOf(test::PngText("Comment", "\x89\xD4\x89\xCE ABC") +
                                       test::PngText("Creation Time", "2008:11:13 18:42:07") +
                                       test::PngText("Property", kEstimations)));
    EXPECT_EQ(entry.comment, "花火 abc");
    EXPECT_EQ(entry.estimations.like, 192);
    EXPECT_EQ(entry.date.hour, 18);
}

TEST_F(IndexEntryRefresh, BrokenPhotoHasNoSizeAndTheTimeOfItsFile) {
    const IndexEntry entry = Refreshed("a.jpg", "this is no photo");
    EXPECT_EQ(entry.width, 0);
    EXPECT_EQ(entry.height, 0);
    EXPECT_NE(entry.date.year, 0);
    EXPECT_EQ(entry.comment, "");
}

TEST_F(IndexEntryRefresh, AnyOtherFileIsReadAsText) {
    EXPECT_EQ(Refreshed("a.txt", "One\tTwo\nThree").comment, "one two three");
    EXPECT_EQ(Refreshed("b.mp3", std::string("ID3 Tune\0binary", 15)).comment, "id3 tune");
    EXPECT_EQ(Refreshed("c.xyz", "Any").comment, "any");
    EXPECT_EQ(Refreshed("d.txt", "").comment, "");
}

TEST_F(IndexEntryRefresh, TextMayBeInAnyEncoding) {
    const std::string text = "「花火」を見た。カメラ";
    const std::string folded = text::Fold(text);
    EXPECT_EQ(Refreshed("a.txt", text).comment, folded);
    EXPECT_EQ(Refreshed("b.txt", text::ToCp932(text)).comment, folded);
    EXPECT_EQ(Refreshed("c.txt", "\xFF\xFE" + text::ToUtf16(text, false)).comment, folded);
    EXPECT_EQ(Refreshed("d.txt", "\xFE\xFF" + text::ToUtf16("AB", true)).comment, "ab");
}

TEST_F(IndexEntryRefresh, LineEndOfTwoBytesIsOneBlank) {
    EXPECT_EQ(Refreshed("a.txt", "one\r\ntwo\rthree\r").comment, "one two three ");
}

TEST_F(IndexEntryRefresh, TextIsReadUpToItsLimit) {
    EXPECT_EQ(Refreshed("a.txt", std::string(40000, 'a')).comment.size(), 32768u);
}

TEST_F(IndexEntryRefresh, CommentOfOneByteIsNotFolded) {
    EXPECT_EQ(Refreshed("a.txt", "A").comment, "A");
    EXPECT_EQ(Refreshed("b.txt", "AB").comment, "ab");
    EXPECT_EQ(Refreshed("c.txt", "\n").comment, " ");  // it would end the line in the index
}

TEST_F(IndexEntryRefresh, NoteHasTheDateInItsHead) {
    const IndexEntry entry = Refreshed("a.txt", "[Schedule]\n[2008/11/13 09:30]\nparty");
    EXPECT_EQ(entry.date.year, 2008);
    EXPECT_EQ(entry.date.hour, 9);
    EXPECT_EQ(entry.date.minute, 30);
    EXPECT_EQ(entry.comment, "[schedule] [2008/11/13 09:30] party");
}

TEST_F(IndexEntryRefresh, FileWithoutAnExtensionGivesItsTimeAlone) {
    for (const char* name : {"README", "name.verylongext", "a.b c"}) {
        const IndexEntry entry = Refreshed(name, "content");
        EXPECT_EQ(entry.comment, "") << name;
        EXPECT_EQ(entry.date, SystemTime{}) << name;
        EXPECT_NE(entry.lastWriteTime.ticks, 0u) << name;
    }
}

TEST_F(IndexEntryRefresh, MissingFileFailsAndChangesNothing) {
    IndexEntry entry;
    entry.path = PathOf("gone.jpg");
    entry.comment = "cat";
    EXPECT_FALSE(entry.Refresh());
    EXPECT_EQ(entry.comment, "cat");
    EXPECT_TRUE(entry.IsStale());
}

TEST_F(IndexEntryRefresh, OnlyTheLastWriteTimeMakesItStale) {
    const std::string path = PutInDay("a.txt", "cat");
    Touch(path, 0);
    IndexEntry entry;
    entry.path = path;
    entry.Refresh();
    PutInDay("a.txt", "a longer text");
    Touch(path, 0);
    EXPECT_FALSE(entry.IsStale());
    Touch(path, 1);
    EXPECT_TRUE(entry.IsStale());
    Touch(path, 0);
    EXPECT_FALSE(entry.IsStale());
}

TEST_F(IndexEntryRefresh, FileThatLostItsCommentHasNone) {
    ExifBuilder exif;
    exif.XpComment(u"cat");
    IndexEntry entry = Refreshed("a.jpg", test::JpegWith(exif));
    EXPECT_EQ(entry.comment, "cat");
    PutInDay("a.jpg", test::JpegOf(""));
    entry.Refresh();
    EXPECT_EQ(entry.comment, "");
}

TEST_F(IndexEntryRefresh, CommentWithLineBreaksIsOneLineInTheFile) {
    PutInDay("a.txt", "one\r\ntwo\nthree");
    LoadDay();
    EXPECT_THAT(IndexOf(), testing::HasSubstr("\nCOMM=one two three\n-\n"));
}

}  // namespace
}  // namespace kalmora
