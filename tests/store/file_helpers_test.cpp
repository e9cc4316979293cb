#include "store/file_helpers.h"

#include "store_fixture.h"

namespace kalmora {
namespace {

using FileHelpersTest = StoreTest;

TEST(GetExtension, IsWhatStandsBehindTheLastDotInLowerCase) {
    EXPECT_EQ(GetExtension("/d/photo.JPG"), "jpg");
    EXPECT_EQ(GetExtension("file.tar.gz"), "gz");
    EXPECT_EQ(GetExtension(".cidx"), "cidx");
    EXPECT_EQ(GetExtension("a.b"), "b");
}

TEST(GetExtension, HasAtMostSevenBytes) {
    EXPECT_EQ(GetExtension("name.1234567"), "1234567");
    EXPECT_EQ(GetExtension("name.12345678"), "");
    EXPECT_EQ(GetExtension("name.verylongext"), "");
}

TEST(GetExtension, IsMeasuredInCodePage932) {
    EXPECT_EQ(GetExtension("a.日本語"), "日本語");    // 6
    EXPECT_EQ(GetExtension("a.日本語x"), "日本語x");  // 7
    EXPECT_EQ(GetExtension("a.日本語xy"), "");        // 8
    EXPECT_EQ(GetExtension("a.日本語本"), "");        // 8
    EXPECT_EQ(GetExtension("a.😀😀😀"), "😀😀😀");          // two each
    EXPECT_EQ(GetExtension("a.😀😀😀😀"), "");
}

TEST(GetExtension, ThereIsNoneWithoutADotOrBehindIt) {
    EXPECT_EQ(GetExtension(""), "");
    EXPECT_EQ(GetExtension("name"), "");
    EXPECT_EQ(GetExtension("name."), "");
    EXPECT_EQ(GetExtension("/dir.d/name"), "");
}

TEST(GetExtension, CharactersThatNoExtensionHasEndTheSearch) {
    EXPECT_EQ(GetExtension("a.b c"), "");
    for (const char c : std::string("/ :\\,()~=?#!\"'$%&"))
        EXPECT_EQ(GetExtension(std::string("a.b") + c + "c"), "") << c;
    for (const char c : std::string("-_+@;[]{}^`|<>*"))
        EXPECT_NE(GetExtension(std::string("a.b") + c + "c"), "") << c;
}

TEST(GetExtension, LettersBeyondAsciiKeepTheirCase) { EXPECT_EQ(GetExtension("a.XÄＡ"), "xÄＡ"); }

TEST(GetExtension, BytesThatAreNoTextDoNotDisturbIt) {
    EXPECT_EQ(GetExtension("\xE3\x81.JPG"), "jpg");
    EXPECT_EQ(GetExtension("a.\xFF"), "\xFF");
    EXPECT_EQ(GetExtension(std::string("a\0.jpg", 6)), "jpg");
    EXPECT_EQ(GetExtension(std::string(1u << 20, '\x81')), "");
}

TEST(GetFileName, IsWhatStandsBehindTheLastSeparator) {
    EXPECT_EQ(GetFileName("/d/e/photo.jpg"), "photo.jpg");
    EXPECT_EQ(GetFileName("/photo.jpg"), "photo.jpg");
}

TEST(GetFileName, IsEmptyWithoutASeparatorOrAtTheEnd) {
    EXPECT_EQ(GetFileName("photo.jpg"), "");
    EXPECT_EQ(GetFileName("/d/e/"), "");
    EXPECT_EQ(GetFileName(""), "");
}

TEST(GetFileName, ANameWhoseCodePageBytesHoldASeparatorStaysWhole) {
    // In code page 932 the second byte of each of these is a backslash.
    EXPECT_EQ(GetFileName("/d/表.jpg"), "表.jpg");
    EXPECT_EQ(GetFileName("/d/ソ能.txt"), "ソ能.txt");
}

TEST_F(FileHelpersTest, SizeValueIsThePlainSizeOfAnOrdinaryFile) {
    EXPECT_EQ(GetFileSizeValue(Put("five", "12345")), 5u);
    EXPECT_EQ(GetFileSizeValue(At("absent")), 0u);
}

TEST_F(FileHelpersTest, SizeValueBeyondFourGigabytesIsTheLowWordLessTheHighWord) {
    const std::string path = Put("large");
    std::error_code error;
    std::filesystem::resize_file(path, (5ull << 32) + 100, error);  // sparse: takes no space
    if (error) GTEST_SKIP() << "the file system has no files of that size: " << error.message();
    EXPECT_EQ(GetFileSizeValue(path), 100u - 5u);
}

TEST_F(FileHelpersTest, ReadOnlyIsAFileThatMayNotBeWritten) {
    const std::string path = Put("locked");
    EXPECT_FALSE(IsReadOnly(path));
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    EXPECT_TRUE(IsReadOnly(path));
    EXPECT_FALSE(IsReadOnly(At("absent")));
}

TEST_F(FileHelpersTest, DateIsTheEarlierOfCreationAndLastWrite) {
    const std::string path = Put("photo.jpg");
    const SystemTime before{2001, 2, 0, 3, 4, 5, 6, 0};
    ASSERT_TRUE(SetFileDates(path, before));
    const auto date = GetFileDate(path);
    ASSERT_TRUE(date);
    // The file was created just now, so the last write is the earlier one.
    EXPECT_EQ(date->year, 2001);
    EXPECT_EQ(date->month, 2);
    EXPECT_EQ(date->day, 3);
    EXPECT_EQ(date->hour, 4);

    ASSERT_TRUE(SetFileDates(path, SystemTime{2090, 1, 0, 1, 0, 0, 0, 0}));
    if (files::GetStatus(path)->created != files::GetStatus(path)->written) {
        EXPECT_LT(GetFileDate(path)->year, 2090);
    }
}

TEST_F(FileHelpersTest, DateOfAnAbsentFileIsNone) { EXPECT_FALSE(GetFileDate(At("absent"))); }

TEST_F(FileHelpersTest, SettingDatesSetsAccessAndLastWrite) {
    const std::string path = Put("a");
    const SystemTime date{2008, 11, 0, 13, 10, 15, 30, 0};
    ASSERT_TRUE(SetFileDates(path, date));
    EXPECT_EQ(files::GetStatus(path)->written, ToFileTime(date));
    EXPECT_EQ(files::GetStatus(path)->accessed, ToFileTime(date));
    EXPECT_FALSE(SetFileDates(path, SystemTime{}));
    EXPECT_FALSE(SetFileDates(At("absent"), date));
    EXPECT_EQ(files::GetStatus(path)->written, ToFileTime(date));
}

TEST(BlankControls, LineFeedsTabsAndReturnsBecomeBlanks) {
    std::string text = "a\r\nb\tc\v日";
    BlankControls(text);
    EXPECT_EQ(text, "a  b c\v日");
}

}  // namespace
}  // namespace kalmora
