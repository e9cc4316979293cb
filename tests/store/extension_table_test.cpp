#include "store/extension_table.h"

#include <gmock/gmock.h>

#include "store_fixture.h"
#include "text/text.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ExtensionTableTest : public StoreTest {
protected:
    ~ExtensionTableTest() override { ClearExtensionTable(); }
    void LoadDefaults() { LoadExtensionTable(At("extension.dat")); }
};

std::vector<std::vector<std::string>> AllLists() {
    return {ExtensionsOf(ObjectKind::Image), ExtensionsOf(ObjectKind::Movie), ExtensionsOf(ObjectKind::Text),
            ExtensionsOf(ObjectKind::Music), ExtensionsOf(ObjectKind::MusicList)};
}

TEST_F(ExtensionTableTest, AMissingTableIsWrittenWithTheDefaultsAndLoaded) {
    LoadDefaults();
    EXPECT_EQ(ContentOf(At("extension.dat")), text::ToCp932(GoldenText("extension_default.txt")));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Image),
                ElementsAre("bmp", "jpg", "jpeg", "gif", "png", "tif", "tiff"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Movie), ElementsAre("avi", "wmv", "mov", "mpg", "mpeg", "flv"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Music), ElementsAre("mid", "mp3", "wmv", "wma", "wav"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::MusicList), ElementsAre("m3u"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Text), ElementsAre("txt", "dat"));
}

TEST_F(ExtensionTableTest, TheSavedTableHasItsOwnOrderOfSections) {
    LoadDefaults();
    ASSERT_TRUE(SaveExtensionTable(At("extension.dat")));
    EXPECT_EQ(ContentOf(At("extension.dat")), text::ToCp932(GoldenText("extension_saved.txt")));
}

TEST_F(ExtensionTableTest, ASavedTableReadAgainGivesTheSameLists) {
    ReadExtensionTableText(
        "[IMAGE]\njpg\nraw\xFF\njpg\r\n[MOVIE]\n[MUSIC_LIST]\n\x93\xFA\x96{\n&#x1F600;\n[TEXT]\n t t \n");
    const auto lists = AllLists();
    ASSERT_TRUE(SaveExtensionTable(At("extension.dat")));
    ClearExtensionTable();
    LoadExtensionTable(At("extension.dat"));
    EXPECT_EQ(AllLists(), lists);
    EXPECT_THAT(ExtensionsOf(ObjectKind::MusicList), ElementsAre("日本", "😀"));
}

TEST_F(ExtensionTableTest, AnEscapeThatWouldMakeAnotherLineStaysAsItIsWritten) {
    ReadExtensionTableText("[IMAGE]\na&#xA;b\n&#x23;jpg\n&#x5B;TEXT]\n&#x26;#x41;\n");
    const std::vector<std::string> expected{"a&#xA;b", "&#x23;jpg", "&#x5B;TEXT]", "&#x41;"};
    EXPECT_EQ(ExtensionsOf(ObjectKind::Image), expected);
    ReadExtensionTableText(MakeExtensionTableText());
    EXPECT_EQ(ExtensionsOf(ObjectKind::Image), expected);
}

TEST_F(ExtensionTableTest, WhatCanBeNeitherReadNorWrittenLeavesTheListsEmpty) {
    ReadExtensionTableText("[IMAGE]\njpg\n");
    LoadExtensionTable(At("no folder/extension.dat"));
    for (const auto& list : AllLists()) EXPECT_THAT(list, IsEmpty());
    EXPECT_FALSE(SaveExtensionTable(At("no folder/extension.dat")));
}

TEST_F(ExtensionTableTest, ATableThatIsThereButCannotBeReadIsNotReplaced) {
    MakeFolder("extension.dat");
    EXPECT_EQ(LoadExtensionTable(At("extension.dat")), FileRead::Unreadable);
    EXPECT_FALSE(SaveExtensionTable(At("extension.dat")));
    std::filesystem::create_symlink("/mnt/away/extension.dat", At("link.dat"));
    EXPECT_EQ(LoadExtensionTable(At("link.dat")), FileRead::Unreadable);
    EXPECT_FALSE(SaveExtensionTable(At("link.dat")));
    EXPECT_TRUE(std::filesystem::is_symlink(At("link.dat")));
}

TEST_F(ExtensionTableTest, ATableInUtf8IsUnderstoodAndStaysInUtf8) {
    LoadExtensionTable(Put("extension.dat", "\xEF\xBB\xBF[IMAGE]\njpg\n写真\n"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Image), ElementsAre("jpg", "写真"));
    ASSERT_TRUE(SaveExtensionTable(At("extension.dat")));
    EXPECT_EQ(ContentOf(At("extension.dat")).substr(0, 3), "\xEF\xBB\xBF");
    EXPECT_NE(ContentOf(At("extension.dat")).find("\njpg\n写真\n"), std::string::npos);
}

TEST_F(ExtensionTableTest, AnEmptyFileLeavesOnlyTheMovieDefaults) {
    LoadExtensionTable(Put("extension.dat", ""));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Movie), ElementsAre("avi", "wmv", "mov", "mpg", "mpeg"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Image), IsEmpty());
    EXPECT_EQ(ClassifyFile("a.jpg"), ObjectKind::Unknown);
    EXPECT_EQ(ContentOf(At("extension.dat")), "");
}

TEST_F(ExtensionTableTest, AMovieSectionOfItsOwnKeepsTheDefaultsOut) {
    ReadExtensionTableText("[MOVIE]\n");
    EXPECT_THAT(ExtensionsOf(ObjectKind::Movie), IsEmpty());
}

TEST_F(ExtensionTableTest, LoadingReplacesAllLists) {
    ReadExtensionTableText("[IMAGE]\njpg\n[TEXT]\ntxt\n");
    ReadExtensionTableText("[IMAGE]\npng\n");
    EXPECT_THAT(ExtensionsOf(ObjectKind::Image), ElementsAre("png"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Text), IsEmpty());
}

TEST_F(ExtensionTableTest, LinesThatAreNoExtensionAreSkipped) {
    ReadExtensionTableText(
        "early\n# note\n\n\r\n[UNKNOWN]\n[IMAGE]\n#jpg\n[nonsense\njpg\n\n[ IMAGE]\npng\n");
    EXPECT_THAT(ExtensionsOf(ObjectKind::Image), ElementsAre("jpg", "png"));
}

TEST_F(ExtensionTableTest, AHeaderIsComparedOverItsOwnLengthAndByCase) {
    ReadExtensionTableText("[IMAGE] pictures\njpg\n[MUSIC_LIST]x\nm3u\n[MUSIC]\nmp3\n[text]\ntxt\n");
    EXPECT_THAT(ExtensionsOf(ObjectKind::Image), ElementsAre("jpg"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::MusicList), ElementsAre("m3u"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Music), ElementsAre("mp3", "txt"));
    EXPECT_THAT(ExtensionsOf(ObjectKind::Text), IsEmpty());
}

TEST_F(ExtensionTableTest, TheLastByteOfALineGoesWhateverItIs) {
    ReadExtensionTableText("[IMAGE]\njpg\r\npng");
    EXPECT_THAT(ExtensionsOf(ObjectKind::Image), ElementsAre("jpg\r", "pn"));
    EXPECT_EQ(ClassifyFile("a.jpg"), ObjectKind::Unknown);
    ReadExtensionTableText("[IMAGE]\nj");  // one byte alone is no entry
    EXPECT_THAT(ExtensionsOf(ObjectKind::Image), IsEmpty());
}

TEST_F(ExtensionTableTest, ALineComesInPiecesOf32767Bytes) {
    const std::string content = "[IMAGE]\n" + std::string(32767, 'a') + "bc\n";
    ReadExtensionTableText(content);
    const auto list = ExtensionsOf(ObjectKind::Image);
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0], std::string(32766, 'a'));
    EXPECT_EQ(list[1], "bc");
    ReadExtensionTableText("[IMAGE]\n" + std::string(32766, 'a') + "\nbc\n");
    EXPECT_THAT(ExtensionsOf(ObjectKind::Image), ElementsAre(std::string(32766, 'a'), "bc"));
}

TEST_F(ExtensionTableTest, OneHugeLineTakesBoundedMemory) {
    const std::string path = Put("extension.dat", "[IMAGE]\njpg\n");
    std::ofstream(path, std::ios::binary | std::ios::app) << std::string(100u << 20, 'x');
    LoadExtensionTable(path);
    std::size_t total = 0;
    for (const std::string& entry : ExtensionsOf(ObjectKind::Image)) total += entry.size();
    EXPECT_LE(total, 1u << 20);
    EXPECT_EQ(ClassifyFile("a.jpg"), ObjectKind::Image);
}

TEST_F(ExtensionTableTest, BytesWithoutMeaningDoNoHarm) {
    std::string everything = "[IMAGE]\n";
    for (int i = 0; i < 65536; ++i) {
        everything += static_cast<char>(i >> 8);
        everything += static_cast<char>(i);
    }
    ReadExtensionTableText(everything);
    const auto lists = AllLists();
    const std::string saved = MakeExtensionTableText();
    ReadExtensionTableText(saved);
    EXPECT_EQ(AllLists(), lists);
    EXPECT_EQ(ClassifyFile("a.jpg"), ObjectKind::Unknown);
}

TEST_F(ExtensionTableTest, EveryKindIsFoundWhateverTheCase) {
    LoadDefaults();
    EXPECT_EQ(ClassifyFile("/d/photo.JPEG"), ObjectKind::Image);
    EXPECT_EQ(ClassifyFile("/d/photo.jPeG"), ObjectKind::Image);
    EXPECT_EQ(ClassifyFile("a.txt"), ObjectKind::Text);
    EXPECT_EQ(ClassifyFile("a.Mp3"), ObjectKind::Music);
    EXPECT_EQ(ClassifyFile("a.m3u"), ObjectKind::MusicList);
    EXPECT_EQ(ClassifyFile("a.FLV"), ObjectKind::Movie);
    EXPECT_EQ(ClassifyFile("日本語の写真.png"), ObjectKind::Image);
    EXPECT_EQ(ClassifyFile("😀.png"), ObjectKind::Image);
    EXPECT_EQ(ClassifyFile("\xFF\xFE.png"), ObjectKind::Image);
    ReadExtensionTableText("[IMAGE]\nJPG\n");
    EXPECT_EQ(ClassifyFile("a.jpg"), ObjectKind::Image);
}

TEST_F(ExtensionTableTest, AnExtensionListedTwiceIsAMovieBeforeItIsMusic) {
    LoadDefaults();
    EXPECT_EQ(ClassifyFile("song.wmv"), ObjectKind::Movie);
    ReadExtensionTableText("[TEXT]\nx\n[MUSIC_LIST]\nx\n[MUSIC]\nx\n");
    EXPECT_EQ(ClassifyFile("a.x"), ObjectKind::Music);
    ReadExtensionTableText("[TEXT]\nx\n[MUSIC_LIST]\nx\n");
    EXPECT_EQ(ClassifyFile("a.x"), ObjectKind::MusicList);
    ReadExtensionTableText("[MOVIE]\nx\n[IMAGE]\nx\n");
    EXPECT_EQ(ClassifyFile("a.x"), ObjectKind::Image);
}

TEST_F(ExtensionTableTest, AShortcutIsAShortcutWhateverTheTableSays) {
    ReadExtensionTableText("[IMAGE]\nlnk\n");
    EXPECT_EQ(ClassifyFile("a.lnk"), ObjectKind::Shortcut);
    EXPECT_EQ(ClassifyFile("a.LNK"), ObjectKind::Shortcut);
}

TEST_F(ExtensionTableTest, AnExtensionOfEightBytesIsFoundAndOneOfNineIsNot) {
    ReadExtensionTableText(text::ToCp932("[IMAGE]\n12345678\n123456789\n日本語日\n日本語日x\n"));
    EXPECT_EQ(ClassifyFile("a.12345678"), ObjectKind::Image);
    EXPECT_EQ(ClassifyFile("a.123456789"), ObjectKind::Unknown);
    EXPECT_EQ(ClassifyFile("a.日本語日"), ObjectKind::Image);
    EXPECT_EQ(ClassifyFile("a.日本語日x"), ObjectKind::Unknown);
}

TEST_F(ExtensionTableTest, NamesWithoutAnExtensionAreUnknown) {
    LoadDefaults();
    EXPECT_EQ(ClassifyFile(""), ObjectKind::Unknown);
    EXPECT_EQ(ClassifyFile("jpg"), ObjectKind::Unknown);
    EXPECT_EQ(ClassifyFile("photo"), ObjectKind::Unknown);
    EXPECT_EQ(ClassifyFile("photo."), ObjectKind::Unknown);
    EXPECT_EQ(ClassifyFile("photo.jpg."), ObjectKind::Unknown);
    EXPECT_EQ(ClassifyFile("photo.jpg/x"), ObjectKind::Unknown);
    EXPECT_EQ(ClassifyFile("photo.exe"), ObjectKind::Unknown);
}

TEST_F(ExtensionTableTest, ABackslashDoesNotEndTheExtension) {
    ReadExtensionTableText("[IMAGE]\nname\\x\n");
    EXPECT_EQ(ClassifyFile("dir.name\\x"), ObjectKind::Image);
    EXPECT_EQ(ClassifyFile("dir.name/x"), ObjectKind::Unknown);
}

TEST_F(ExtensionTableTest, ListsOfKindsThatHaveNoneAreEmpty) {
    LoadDefaults();
    EXPECT_THAT(ExtensionsOf(ObjectKind::Unknown), IsEmpty());
    EXPECT_THAT(ExtensionsOf(ObjectKind::Shortcut), IsEmpty());
}

}  // namespace
}  // namespace kalmora
