// Reading and writing the key files.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "key_fixture.h"

namespace kalmora {

namespace {

using testing::ElementsAre;

std::vector<int> Ids(const KeyTable& table) {
    std::vector<int> ids;
    for (const KeyBinding& binding : table) ids.push_back(binding.id);
    return ids;
}

// Counts that every list is whole, which no file may change.
void ExpectWholeLists(const KeyConfig& keys) {
    EXPECT_EQ(keys.Bindings(KeyContext::Main).size(), 31u);
    EXPECT_EQ(keys.Bindings(KeyContext::SlideShow).size(), 19u);
    EXPECT_EQ(keys.Bindings(KeyContext::Editor).size(), 17u);
}

}  // namespace

class KeyFile : public KeyTest {
protected:
    ~KeyFile() override { files::RemoveFolderTree(folder); }

    void LoadMain(std::string_view text) { keys.LoadKeyText(text, KeyContext::Main); }

    const std::string folder = files::MakeTemporaryFolder();
    const std::string path = files::Join(folder, "KeyConfig.dat");
};

TEST_F(KeyFile, MissingFilesGiveTheDefaultsAndAreWrittenWhole) {
    const struct {
        KeyContext context;
        const char* name;
    } rows[] = {{KeyContext::Main, "KeyConfig.dat"},
                {KeyContext::SlideShow, "KeyConfig4SS.dat"},
                {KeyContext::Editor, "KeyConfig4Editor.dat"}};
    for (const auto& row : rows) keys.LoadKeyConfig(files::Join(folder, row.name), row.context);
    for (const auto& row : rows) {
        const std::string written = files::Join(folder, row.name);
        EXPECT_EQ(keys.SaveKeyConfig(written, row.context), files::FileResult::Done);
        EXPECT_EQ(files::ReadWholeFile(written), GoldenText(row.name));
    }
}

TEST_F(KeyFile, WrittenFilesAreReadBackAsTheyWere) {
    LoadDefaults();
    KeyConfig again(*this, *this);
    for (const KeyContext context : {KeyContext::Main, KeyContext::SlideShow, KeyContext::Editor}) {
        again.LoadKeyText(keys.KeyText(context), context);
        EXPECT_EQ(again.KeyText(context), keys.KeyText(context));
    }
}

TEST_F(KeyFile, ListsHaveTheirCommandsInOrder) {
    LoadDefaults();
    EXPECT_THAT(Ids(keys.Bindings(KeyContext::Main)),
                ElementsAre(1021, 1014, 1013, 1012, 1011, 1010, 1018, 1019, 1023, 1022, 1024, 1025, 1031,
                            1030, 1039, 1200, 1120, 1121, 1016, 1041, 1043, 1046, 1047, 2000, 2001, 2002,
                            2005, 1051, 1001, 1020, 1002));
    EXPECT_THAT(Ids(keys.Bindings(KeyContext::SlideShow)),
                ElementsAre(1052, 1053, 1054, 1059, 1063, 1055, 1056, 1057, 1060, 1061, 1062, 1058, 1104,
                            1101, 1102, 1105, 1100, 1103, 1106));
    EXPECT_THAT(Ids(keys.Bindings(KeyContext::Editor)),
                ElementsAre(40271, 40272, 40274, 40273, 40275, 40276, 40282, 40284, 40279, 40280, 40281,
                            40277, 40278, 40291, 40285, 40286, 40290));
}

TEST_F(KeyFile, SequenceNumbersRunThroughTheThreeListsFromTheMainList) {
    LoadDefaults();
    LoadDefaults();
    EXPECT_EQ(keys.Bindings(KeyContext::Main).front().sequence, 0);
    EXPECT_EQ(keys.Bindings(KeyContext::Main).back().sequence, 30);
    EXPECT_EQ(keys.Bindings(KeyContext::SlideShow).front().sequence, 31);
    EXPECT_EQ(keys.Bindings(KeyContext::Editor).back().sequence, 66);
}

TEST_F(KeyFile, LineOfAFileTakesTheCommandFromItsDefault) {
    ASSERT_EQ(files::WriteWholeFile(path, "Reload\tC+F9\n"), files::FileResult::Done);
    keys.LoadKeyConfig(path, KeyContext::Main);
    EXPECT_EQ(BoundTo(1021), Press("C+F9"));
    EXPECT_EQ(Translate("C+F9"), 1021);
    EXPECT_EQ(Translate("F5"), 0);
}

TEST_F(KeyFile, CommandWithoutAKeyInTheFileStaysWithoutOne) {
    LoadMain("Reload\t\n");
    EXPECT_EQ(BoundTo(1021).key, kNoKey);
    EXPECT_EQ(Translate("F5"), 0);
}

TEST_F(KeyFile, OnlyTheMainListFillsItsGapsWithDefaults) {
    LoadMain("");
    keys.LoadKeyText("", KeyContext::SlideShow);
    keys.LoadKeyText("", KeyContext::Editor);
    EXPECT_EQ(keys.KeyText(KeyContext::Main), GoldenText("KeyConfig.dat"));
    for (const KeyContext context : {KeyContext::SlideShow, KeyContext::Editor}) {
        for (const KeyBinding& binding : keys.Bindings(context)) {
            EXPECT_EQ(binding.shortcut, Shortcut{}) << binding.name;
        }
    }
}

TEST_F(KeyFile, ShortenedNameBindsTheFirstCommandThatBeginsSo) {
    LoadMain("Go\tF9\n");
    EXPECT_EQ(BoundTo(1014), Press("F9"));
    EXPECT_EQ(Translate("F9"), 1014);
}

TEST_F(KeyFile, LineThatBeginsWithATabBindsTheFirstCommandOfTheList) {
    LoadMain("\tF9\n");
    EXPECT_EQ(BoundTo(1021), Press("F9"));
}

TEST_F(KeyFile, NameOfOneCommandThatBeginsAnotherBindsOnlyTheFirst) {
    LoadMain("Get Screenshot\tC+F1\n");
    EXPECT_EQ(BoundTo(2000), Press("C+F1"));
    EXPECT_EQ(BoundTo(2001), Press("C+F2"));  // its default, not the line's key
}

TEST_F(KeyFile, LongerNameIsNotTakenForTheShorterCommand) {
    LoadMain("Get Screenshot of Active Window\tC+F9\nReload All\tF8\n");
    EXPECT_EQ(BoundTo(2000), Press("C+F1"));
    EXPECT_EQ(BoundTo(2001), Press("C+F9"));
    EXPECT_EQ(BoundTo(1021), Press("F5"));
}

TEST_F(KeyFile, NamesAreComparedCaseByCase) {
    LoadMain("reload\tF9\n");
    EXPECT_EQ(BoundTo(1021), Press("F5"));
}

TEST_F(KeyFile, CommentsShortLinesAndLinesWithoutATabAreSkipped) {
    LoadMain("#\tF9\n\n\t\n\tA\nReload F9\n #\tF9");
    EXPECT_EQ(BoundTo(1021), Press("A"));  // three characters are enough, two are not
    LoadMain("R\t");
    EXPECT_EQ(BoundTo(1021), Press("F5"));
    LoadMain("R\t\n");
    EXPECT_EQ(BoundTo(1021), Shortcut{});
}

TEST_F(KeyFile, LastLineNeedsNoLineFeed) {
    LoadMain("Search\tC+F");
    EXPECT_EQ(BoundTo(1041), Press("C+F"));
}

TEST_F(KeyFile, LineEndsOfWindowsDoNoHarm) {
    LoadMain("# Key-config file\r\nSearch\tC+F\r\nUpdate Index\tF1\r\n");
    EXPECT_EQ(BoundTo(1041), Press("C+F"));
    EXPECT_EQ(BoundTo(1043), Press("F1"));
}

TEST_F(KeyFile, SecondLineOfACommandAddsItsModifiersAndReplacesItsKey) {
    LoadMain("Search\tC+F\nSearch\tS+G\n");
    EXPECT_EQ(BoundTo(1041), Press("C+S+G"));
}

TEST_F(KeyFile, LoadingAgainStartsFromNothing) {
    LoadMain("Search\tC+F\n");
    LoadMain("Search\tS+G\n");
    EXPECT_EQ(BoundTo(1041), Press("S+G"));
    EXPECT_EQ(keys.CommandAt(KeyContext::Main, KeySlots::SlotOf(Press("C+F"))), 0);
}

TEST_F(KeyFile, TwoCommandsOnOneKeyAreBothKeptAndTheLaterWins) {
    const std::string text = "Window Hide\tC+K\nJump To\tC+K\n";  // in the list Jump To comes first
    LoadMain(text);
    EXPECT_EQ(Translate("C+K"), 1020);
    EXPECT_THAT(keys.KeyText(KeyContext::Main), testing::HasSubstr("\nJump To\tC+K\n"));
    EXPECT_THAT(keys.KeyText(KeyContext::Main), testing::HasSubstr("\nWindow Hide\tC+K\n"));
}

TEST_F(KeyFile, DefaultOfAMissingCommandTakesAKeyFromAnEarlierOne) {
    LoadMain("Reload\tC+A\n");
    EXPECT_EQ(Translate("C+A"), 1046);  // the default of Get Amazon, which comes later in the list
}

TEST_F(KeyFile, ScrapCommandsLeaveATakenKeyAlone) {
    LoadMain("Reload\tC+S+T\nJump To\tC+A+T\n");
    EXPECT_EQ(BoundTo(2002), Shortcut{});
    EXPECT_EQ(BoundTo(2005), Shortcut{});
    EXPECT_EQ(Translate("C+S+T"), 1021);
    EXPECT_EQ(Translate("C+A+T"), 1016);
}

TEST_F(KeyFile, ScrapCommandsTakeTheirKeysWhenThoseAreFree) {
    LoadMain("Reload\tC+T\n");
    EXPECT_EQ(BoundTo(2002), Press("C+S+T"));
    EXPECT_EQ(BoundTo(2005), Press("C+A+T"));
}

TEST_F(KeyFile, UnknownLinesAreGoneAfterSaving) {
    LoadMain("# my own comment\nMake Tea\tC+T\n");
    EXPECT_EQ(keys.KeyText(KeyContext::Main), GoldenText("KeyConfig.dat"));
}

TEST_F(KeyFile, ModifiersWithoutAKeyAreKept) {
    LoadMain("Reload\tC+S+\n");
    EXPECT_THAT(keys.KeyText(KeyContext::Main), testing::HasSubstr("\nReload\tC+S+\n"));
    for (int slot = 0; slot < KeySlots::kArrayLength; ++slot) {
        EXPECT_NE(keys.CommandAt(KeyContext::Main, slot), 1021) << slot;
    }
}

TEST_F(KeyFile, JapaneseTextAroundAKeySpellsNothing) {
    // "ア" and "ソ" in code page 932, whose second bytes would read as A and a backslash.
    LoadMain("Reload\t\x83\x41\x83\x5C C+F9\nJump To\t\x83\x41\n");
    EXPECT_EQ(BoundTo(1021), Press("C+F9"));
    EXPECT_EQ(BoundTo(1016), Shortcut{});
}

TEST_F(KeyFile, EscapedCharacterCountsAsTheCharacter) {
    LoadMain("Reload\tC+&#x46;9\n");
    EXPECT_EQ(BoundTo(1021), Press("C+F9"));
}

TEST_F(KeyFile, NulEndsItsLineOnly) {
    LoadMain(std::string_view("Reload\tF9\0C+\nSearch\tF8\n", 23));
    EXPECT_EQ(BoundTo(1021), Press("F9"));
    EXPECT_EQ(BoundTo(1041), Press("F8"));
}

TEST_F(KeyFile, LineIsReadInPiecesOf32767Bytes) {
    const std::string filling(32767 - 7, '.');  // with "Reload\t" one piece
    LoadMain("Reload\t" + filling + "Search\tF9\n");
    EXPECT_EQ(BoundTo(1021), Shortcut{});
    EXPECT_EQ(BoundTo(1041), Press("F9"));
    LoadMain("Reload\t" + filling.substr(1) + "Search\tF9\n");  // one byte less: the S is in the first piece
    EXPECT_EQ(BoundTo(1021), Press("S"));
    EXPECT_EQ(BoundTo(1041), Press("F3"));
}

TEST_F(KeyFile, GarbageLeavesTheListsWhole) {
    LoadDefaults();
    constexpr std::string_view kLetters("\t\n\tRGSC+A+S+FENDHOME019\xFF\x82\x00&#x;", 30);
    unsigned state = 12345;
    for (int round = 0; round < 200; ++round) {
        std::string garbage;
        for (int i = 0; i < 600; ++i) {
            state = state * 1664525u + 1013904223u;
            garbage += kLetters[(state >> 16) % kLetters.size()];
        }
        for (const KeyContext context : {KeyContext::Main, KeyContext::SlideShow, KeyContext::Editor}) {
            keys.LoadKeyText(garbage, context);
            KeyConfig again(*this, *this);
            again.LoadKeyText(keys.KeyText(context), context);
            ASSERT_EQ(again.KeyText(context), keys.KeyText(context));
        }
    }
    ExpectWholeLists(keys);
}

TEST_F(KeyFile, TenMegabytesOfOneLineAreReadInPieces) {
    ASSERT_EQ(files::WriteWholeFile(path, std::string(10u << 20, 'A') + "\nSearch\tF9\n"),
              files::FileResult::Done);
    keys.LoadKeyConfig(path, KeyContext::Main);
    EXPECT_EQ(BoundTo(1041), Press("F9"));
}

TEST_F(KeyFile, TenMegabytesOfLinesAreRead) {
    std::string text;
    while (text.size() < (10u << 20)) text += "Reload\tC+A+S+END\nNobody\tF1\n\n\t\n";
    ASSERT_EQ(files::WriteWholeFile(path, text + "Search\tF9\n"), files::FileResult::Done);
    keys.LoadKeyConfig(path, KeyContext::Main);
    EXPECT_EQ(BoundTo(1021), Press("C+A+S+END"));
    EXPECT_EQ(BoundTo(1041), Press("F9"));
}

TEST_F(KeyFile, FolderInPlaceOfTheFileGivesTheDefaultsAndIsNotReplaced) {
    ASSERT_EQ(files::MakeFolder(path), files::FileResult::Done);
    keys.LoadKeyConfig(path, KeyContext::Editor);
    EXPECT_EQ(keys.KeyText(KeyContext::Editor), GoldenText("KeyConfig4Editor.dat"));
    EXPECT_NE(keys.SaveKeyConfig(path, KeyContext::Editor), files::FileResult::Done);
    EXPECT_TRUE(files::IsFolder(path));
}

TEST_F(KeyFile, FileThatCouldNotBeReadIsNotReplacedInThisRun) {
    ASSERT_EQ(files::MakeFolder(path), files::FileResult::Done);
    EXPECT_EQ(keys.LoadKeyConfig(path, KeyContext::Main), FileRead::Unreadable);
    ASSERT_EQ(files::RemoveFolderTree(path), files::FileResult::Done);
    // Its disk is back, and with it the keys of the user.
    ASSERT_EQ(files::WriteWholeFile(path, "Reload\tF9\n"), files::FileResult::Done);
    EXPECT_EQ(keys.SaveKeyConfig(path, KeyContext::Main), files::FileResult::Denied);
    EXPECT_EQ(files::ReadWholeFile(path), "Reload\tF9\n");
    EXPECT_EQ(keys.LoadKeyConfig(path, KeyContext::Main), FileRead::Read);
    EXPECT_EQ(keys.SaveKeyConfig(path, KeyContext::Main), files::FileResult::Done);
}

TEST_F(KeyFile, FileInUtf8IsUnderstoodAndStaysInUtf8) {
    ASSERT_EQ(files::WriteWholeFile(path, "\xEF\xBB\xBFReload\tF9\n# 写真\n"), files::FileResult::Done);
    keys.LoadKeyConfig(path, KeyContext::Main);
    EXPECT_EQ(BoundTo(1021), Press("F9"));
    EXPECT_EQ(keys.SaveKeyConfig(path, KeyContext::Main), files::FileResult::Done);
    EXPECT_EQ(files::ReadWholeFile(path).value_or("").substr(0, 4), "\xEF\xBB\xBF#");
}

TEST_F(KeyFile, FileThatCannotBeWrittenIsSkipped) {
    LoadDefaults();
    EXPECT_NE(keys.SaveKeyConfig(files::Join(folder, "absent/KeyConfig.dat"), KeyContext::Main),
              files::FileResult::Done);
    EXPECT_FALSE(files::Exists(files::Join(folder, "absent")));
}

}  // namespace kalmora
