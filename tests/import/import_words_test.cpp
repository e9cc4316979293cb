// What an import writes beside its files: the phone's date, words for the comments, shortcuts.
#include <gmock/gmock.h>

#include <filesystem>

#include "import/import.h"
#include "import/import_fixture.h"
#include "media/photo_file.h"
#include "store/shortcuts.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using ImportPhoneTest = ImportTest;
using ImportCommentTest = ImportTest;
using ImportShortcutTest = ImportTest;

// ---- the old phone

TEST_F(ImportPhoneTest, NameGivesDateMakerAndModel) {
    const std::string source = Add("081114-101530.jpg", test::JpegOf(""));
    Import();
    const std::string target = PathOf("081114-101530.jpg", 14);
    for (const std::string& path : {source, target}) {
        PhotoFile photo(path);
        SystemTime date;
        ASSERT_TRUE(photo.ReadShotDate(date)) << path;
        EXPECT_EQ(date, (SystemTime{2008, 11, date.dayOfWeek, 14, 10, 15, 30, 0}));
        EXPECT_EQ(photo.ReadMake(), "SHARP");
        EXPECT_THAT(ContentOf(path), HasSubstr("W-ZERO3 [es]"));
    }
}

TEST_F(ImportPhoneTest, SignedPictureIsSignedAnew) {
    test::ExifBuilder exif;
    exif.Ascii(test::ExifBuilder::Main, 0x010F, "Other")
        .Ascii(test::ExifBuilder::Main, 0x0132, "2001:02:03 04:05:06");
    Add("081113-101530 and more.jpg", test::JpegWith(exif));
    Import();
    PhotoFile photo(PathOf("081113-101530 and more.jpg"));
    EXPECT_EQ(photo.ReadMake(), "SHARP");
}

TEST_F(ImportPhoneTest, ReadOnlySourceStaysAsItIsAndItsCopyIsSigned) {
    const std::string content = test::JpegOf("");
    const std::string source = Add("081113-101530.jpg", content);
    std::filesystem::permissions(source, std::filesystem::perms::owner_read);
    Import();
    EXPECT_EQ(ContentOf(source), content);
    EXPECT_EQ(NamesInDay().size(), 1u) << "the date is that of the name all the same";
}

TEST_F(ImportPhoneTest, OtherFilesHaveTheDateOfTheirName) {
    const std::string source = Add("081114-101530.mov", "film");
    Import();
    EXPECT_EQ(ContentOf(PathOf("081114-101530.mov", 14)), "film");
    EXPECT_EQ(ContentOf(source), "film");
}

TEST(PhoneNameDate, ReadsThirteenLettersAtTheStart) {
    EXPECT_EQ(PhoneNameDate("081113-101530.jpg"), (SystemTime{2008, 11, 4, 13, 10, 15, 30, 0}));
    EXPECT_EQ(PhoneNameDate("991231-235959"), (SystemTime{2099, 12, 4, 31, 23, 59, 59, 0}));
    EXPECT_TRUE(PhoneNameDate("081113-101530_x.y.z"));
    for (const char* name :
         {"", "081113-10153", "081113_101530.jpg", "08111-3101530.jpg", "x081113-101530.jpg",
          "081113-10153x.jpg", "081313-101530.jpg", "080230-101530.jpg", "081100-101530.jpg",
          "081113-241530.jpg", "081113-106030.jpg", "081113-101560.jpg",
          "\xEF\xBC\x90"
          "81113-101530"})
        EXPECT_FALSE(PhoneNameDate(name)) << name;
}

// ---- notes

TEST_F(ImportCommentTest, FolderNameIsAddedToTheComment) {
    Add("100TEST/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Add("101 海/B.JPG", PhotoTaken("2008:11:13 10:15:31"));
    PhotoFile(OnCard("101 海/B.JPG")).SetComment("before");
    Add("film.mov", "film");
    options.addFolderName = true;
    const ImportSummary summary = Import();
    EXPECT_EQ(summary.failures, 0);
    EXPECT_EQ(CommentOf(PathOf("A.JPG")), "100TEST");
    EXPECT_EQ(CommentOf(PathOf("B.JPG")), "before\r\n101 海");
    EXPECT_EQ(CommentOf(OnCard("100TEST/A.JPG")), "") << "the source stays as it is";
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=A.JPG")) << "it is in the index at once";
    EXPECT_THAT(IndexOf(), HasSubstr("100test")) << "with its words";
}

TEST_F(ImportCommentTest, CommentStandsInFrontOfTheFolderName) {
    Add("100TEST/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    options.addFolderName = true;
    options.addComment = true;
    options.comment = "summer";
    options.source = ImportOptions::Source::Goes;
    Import();
    EXPECT_EQ(CommentOf(PathOf("A.JPG")), "summer\r\n100TEST");
}

TEST_F(ImportCommentTest, SecondTimeAddsNothing) {
    Add("A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Add("B.JPG", test::JpegOf("without a date"));
    Add("c.png", "no picture");
    options.addFolderName = true;
    for (const Naming naming : {Naming::Keep, Naming::Number})
        for (const SameBy sameBy : {SameBy::DateOrSize, SameBy::Content}) {
            options.naming = naming;
            options.sameBy = sameBy;
            Import();
            const auto before = TreeOf(root);
            EXPECT_EQ(Import().failures, 0);
            EXPECT_EQ(TreeOf(root), before);
            EXPECT_THAT(Results(), testing::Each(ImportResult::Same)) << "the words alone are no difference";
        }
    EXPECT_EQ(CommentOf(PathOf("A.JPG")), "DCIM");
}

TEST_F(ImportCommentTest, CommentAloneEndsItsLine) {
    Add("A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    options.addComment = true;
    options.comment = "summer";
    Import();
    EXPECT_EQ(CommentOf(PathOf("A.JPG")), "summer\r\n");
}

TEST_F(ImportCommentTest, EmptyCommentLeavesTheFileAndFillsTheIndex) {
    const std::string photo = PhotoTaken("2008:11:13 10:15:30");
    Add("A.JPG", photo);
    options.addComment = true;
    Import();
    EXPECT_EQ(ContentOf(PathOf("A.JPG")), photo);
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=A.JPG"));
}

TEST_F(ImportCommentTest, WithoutNotesTheIndexIsLeftToTheUpdate) {
    Add("A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Import();
    EXPECT_FALSE(HasIndex());
}

// ---- shortcuts

TEST_F(ImportShortcutTest, SourceStaysAndALinkPointsAtIt) {
    const std::string source = Add("A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    options.source = ImportOptions::Source::GetsShortcut;
    Import();
    EXPECT_EQ(ResolveShortcut(PathOf("A.JPG.lnk")), source);
    EXPECT_TRUE(files::Exists(source));
    EXPECT_THAT(Results(), ElementsAre(ImportResult::Linked));
    EXPECT_EQ(reported[0].target, PathOf("A.JPG.lnk"));
}

TEST_F(ImportShortcutTest, IndexHasThePathBesideTheLink) {
    Add("A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    options.source = ImportOptions::Source::GetsShortcut;
    Import();
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=A.JPG\n"));
    EXPECT_FALSE(files::Exists(PathOf("A.JPG")));
    DayIndex day = LoadDay();
    day.dataRoot = root;
    day.Update(2008, 11, 13);
    EXPECT_THAT(IndexOf(), testing::Not(HasSubstr("FILE=A.JPG\n")));
}

TEST_F(ImportShortcutTest, EachFileHasItsOwnLinkAndNoneASecond) {
    Add("100/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Add("101/A.JPG", PhotoTaken("2008:11:13 10:15:31") + "2");
    options.source = ImportOptions::Source::GetsShortcut;
    Import();
    EXPECT_EQ(ResolveShortcut(PathOf("A.JPG.lnk")), OnCard("100/A.JPG"));
    EXPECT_EQ(ResolveShortcut(PathOf("A[1].jpg.lnk")), OnCard("101/A.JPG"));
    Import();
    EXPECT_THAT(Results(), ElementsAre(ImportResult::Same, ImportResult::Same));
    EXPECT_EQ(NamesInDay().size(), 3u) << "two links and the index";
}

TEST_F(ImportShortcutTest, FileThatStandsInItsDayNeedsNone) {
    PutInDay("A.JPG", "same size");
    Add("A.JPG", "same SIZE");
    options.source = ImportOptions::Source::GetsShortcut;
    Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("A.JPG"));
}

}  // namespace
}  // namespace kalmora
