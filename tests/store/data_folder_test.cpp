#include "store/data_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <thread>

#include "store/date_folder.h"
#include "store_fixture.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using DataFolderTest = StoreTest;

TEST(DayFolder, PathsAreBuiltLevelByLevel) {
    EXPECT_EQ(MakeYearFolderPath("/files", 2008), "/files/2008");
    EXPECT_EQ(MakeMonthFolderPath("/files", 2008, 11), "/files/2008/200811");
    EXPECT_EQ(MakeDayFolderPath("/files", 2008, 11, 13), "/files/2008/200811/2008_1113");
}

TEST(DayFolder, NumbersArePaddedWithZeros) {
    EXPECT_EQ(MakeDayFolderPath("/f", 8, 1, 3), "/f/0008/000801/0008_0103");
    EXPECT_EQ(MakeDayFolderPath("/f", 12345, 1, 3), "/f/12345/1234501/12345_0103");
}

TEST(DayFolder, WithoutADayItIsTheMonthAndWithoutAMonthTheYear) {
    EXPECT_EQ(MakeDayFolderPath("/f", 2008, 11, 0), "/f/2008/200811");
    EXPECT_EQ(MakeDayFolderPath("/f", 2008, 11, -1), "/f/2008/200811");
    EXPECT_EQ(MakeDayFolderPath("/f", 2008, 0, 13), "/f/2008");
    EXPECT_EQ(MakeMonthFolderPath("/f", 2008, 0), "/f/2008");
    EXPECT_EQ(MakeMonthFolderPath("/f", 2008, -5), "/f/2008");
}

class ParsePathDateTest : public StoreTest {
protected:
    ParsePathDateTest() {
        State().settings.DataDirectory = "/life/files";
        State().settings.OtherDirectory = "/life/other";
    }
};

TEST_F(ParsePathDateTest, AFileOfEitherRootHasTheDateOfItsFolder) {
    EXPECT_EQ(ParsePathDate("/life/files/2008/200811/2008_1113/a.jpg"), (CalendarDate{2008, 11, 13}));
    EXPECT_EQ(ParsePathDate("/life/other/2008/200811/2008_1113/sub/a.jpg"), (CalendarDate{2008, 11, 13}));
    EXPECT_EQ(ParsePathDate("/life/files/2008/200811/2008_1113"), (CalendarDate{2008, 11, 13}));
}

TEST_F(ParsePathDateTest, APathInNeitherRootHasNone) {
    EXPECT_FALSE(ParsePathDate("/elsewhere/2008/200811/2008_1113/a.jpg"));
    EXPECT_FALSE(ParsePathDate("/life/Files/2008/200811/2008_1113/a.jpg"));
    EXPECT_FALSE(ParsePathDate("/life/files2/2008/200811/2008_1113/a.jpg"));
    EXPECT_FALSE(ParsePathDate("/life/files"));
    EXPECT_FALSE(ParsePathDate("/life/files/"));
    EXPECT_FALSE(ParsePathDate("/life/files/photos/a.jpg"));
    EXPECT_FALSE(ParsePathDate(""));
}

TEST_F(ParsePathDateTest, YearIsThatOfTheDayFolder) {
    EXPECT_EQ(ParsePathDate("/life/files/2008/200811/2007_1113/a.jpg"), (CalendarDate{2007, 11, 13}));
}

TEST_F(ParsePathDateTest, MonthIsThatOfTheMonthFolderAndDayThatOfTheDayFolder) {
    EXPECT_EQ(ParsePathDate("/life/files/2008/200811/2008_1213/a.jpg"), (CalendarDate{2008, 11, 13}));
}

TEST_F(ParsePathDateTest, APathThatEndsEarlierGivesWhatStandsInIt) {
    EXPECT_EQ(ParsePathDate("/life/files/2008/200811/back.jpg"), (CalendarDate{2008, 11, 0}));
    EXPECT_EQ(ParsePathDate("/life/files/2008/200811"), (CalendarDate{2008, 11, 0}));
    EXPECT_EQ(ParsePathDate("/life/files/2008"), (CalendarDate{2008, 0, 0}));
    EXPECT_EQ(ParsePathDate("/life/files/2008/200811/2008"), (CalendarDate{2008, 11, 0}));
}

TEST_F(ParsePathDateTest, SeparatorsOfAnOldFileAreUnderstood) {
    EXPECT_EQ(ParsePathDate("/life/files\\2008\\200811\\2008_1113\\a.jpg"), (CalendarDate{2008, 11, 13}));
    EXPECT_EQ(ParsePathDate("\\life\\files\\2008\\200811\\2008_1113\\a.jpg"), (CalendarDate{2008, 11, 13}));
    State().settings.DataDirectory = "C:\\life";
    EXPECT_EQ(ParsePathDate("C:\\life\\2008\\200811\\2008_1113\\a.jpg"), (CalendarDate{2008, 11, 13}));
}

TEST_F(ParsePathDateTest, AnEmptyRootHoldsNothing) {
    State().settings.DataDirectory.clear();
    State().settings.OtherDirectory.clear();
    EXPECT_FALSE(ParsePathDate("/2008/200811/2008_1113/a.jpg"));
}

TEST_F(ParsePathDateTest, NumbersThatNoDateHasGiveAValueAndNothingElse) {
    EXPECT_EQ(ParsePathDate("/life/files/99999999999999999999/1/1_1")->year, 1);
    EXPECT_EQ(ParsePathDate("/life/files/99999999999999999999")->year, 2147483647);
    EXPECT_EQ(ParsePathDate("/life/files/-99999999999999999999")->year, -2147483647);
    EXPECT_FALSE(ParsePathDate("/life/files/-"));
    EXPECT_FALSE(ParsePathDate("/life/files/\xFF\xFE"));
}

TEST_F(ParsePathDateTest, AJapaneseNameWithABackslashByteDoesNotSplitThePath) {
    EXPECT_EQ(ParsePathDate("/life/files/2008/200811/2008_1113/表.jpg"), (CalendarDate{2008, 11, 13}));
    State().settings.DataDirectory = "/生活/表";
    EXPECT_EQ(ParsePathDate("/生活/表/2008/200811/2008_1113/能.jpg"), (CalendarDate{2008, 11, 13}));
}

TEST_F(DataFolderTest, WithoutSeveralFoldersTheRootIsTheDataDirectoryEvenWhenItIsAbsent) {
    State().settings.DataDirectory = "/nowhere/at all";
    State().settings.DataDirectories = {MakeFolder("a")};
    EXPECT_EQ(CurrentDataRoot(), "/nowhere/at all");
}

TEST_F(DataFolderTest, OfSeveralFoldersTheFirstThatStandsIsTheRoot) {
    State().settings.AllowMultiDataDirectory = true;
    State().settings.DataDirectories = {"/nowhere/at all", Put("a file"), MakeFolder("second"),
                                        MakeFolder("third")};
    const std::string before = State().settings.DataDirectory;
    EXPECT_EQ(CurrentDataRoot(), At("second"));
    EXPECT_EQ(State().settings.DataDirectory, before);

    MakeFolder("first");
    State().settings.DataDirectories.insert(State().settings.DataDirectories.begin(), At("first"));
    EXPECT_EQ(CurrentDataRoot(), At("first"));
}

TEST_F(DataFolderTest, WhenNoneOfSeveralStandsNothingIsMadeInTheirPlace) {
    State().settings.AllowMultiDataDirectory = true;
    State().settings.DataDirectory = "/nowhere/b";
    State().settings.DataDirectories = {"/nowhere/a", "/nowhere/b"};
    EXPECT_EQ(CurrentDataRoot(), "/nowhere/a");
    EXPECT_FALSE(files::Exists(At("files")));
    MakeFolder("files");
    EXPECT_EQ(CurrentDataRoot(), "/nowhere/a")
        << "photos would come into a folder that the user has not named";
    EXPECT_THAT(State().settings.DataDirectories, ElementsAre("/nowhere/a", "/nowhere/b"));
}

TEST_F(DataFolderTest, WhenNoneIsListedTheDefaultFolderIsMadeAndListed) {
    State().settings.AllowMultiDataDirectory = true;
    State().settings.DataDirectories.clear();
    EXPECT_EQ(CurrentDataRoot(), At("files"));
    EXPECT_TRUE(files::IsFolder(At("files")));
    EXPECT_THAT(State().settings.DataDirectories, ElementsAre(At("files")));
}

TEST_F(DataFolderTest, ADefaultFolderThatStandsAlreadyIsNotListed) {
    State().settings.AllowMultiDataDirectory = true;
    MakeFolder("files");
    EXPECT_EQ(CurrentDataRoot(), At("files"));
    EXPECT_THAT(State().settings.DataDirectories, IsEmpty());
}

TEST_F(DataFolderTest, ADefaultFolderThatCannotBeMadeIsStillTheRoot) {
    State().settings.AllowMultiDataDirectory = true;
    Put("files", "in the way");
    EXPECT_EQ(CurrentDataRoot(), At("files"));
    EXPECT_THAT(State().settings.DataDirectories, IsEmpty());
}

TEST_F(DataFolderTest, AFolderForThisRunStandsInForTheDataDirectory) {
    State().settings.RunDataDirectory = "/run";
    EXPECT_EQ(CurrentDataRoot(), "/run");
    EXPECT_EQ(MainRoot(), "/run");
    EXPECT_EQ(ParsePathDate("/run/2008/200811/2008_1113/a.jpg"), (CalendarDate{2008, 11, 13}));
    EXPECT_FALSE(ParsePathDate(At("files/2008/200811/2008_1113/a.jpg")));
    State().settings.AllowMultiDataDirectory = true;
    State().settings.DataDirectories = {MakeFolder("a")};
    EXPECT_EQ(CurrentDataRoot(), "/run");
}

TEST_F(DataFolderTest, ManyThreadsMayAskForTheRootWhileItComesIntoBeing) {
    State().settings.AllowMultiDataDirectory = true;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int n = 0; n < 200; ++n) {
                EXPECT_EQ(CurrentDataRoot(), At("files"));
                ParsePathDate("/x/2008");
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_THAT(State().settings.DataDirectories, ElementsAre(At("files")));
}

TEST_F(DataFolderTest, TheSecondRootCountsOnlyWhenItIsInUseAndStands) {
    State().settings.OtherDirectory = At("other");
    EXPECT_EQ(OtherRoot(), "");
    State().settings.UseOtherFolder = true;
    EXPECT_EQ(OtherRoot(), "");
    MakeFolder("other");
    EXPECT_EQ(OtherRoot(), At("other"));
    State().settings.UseOtherFolder = false;
    EXPECT_EQ(OtherRoot(), "");
}

TEST_F(DataFolderTest, AFolderOfADateIsMadeUnlessItsRootIsAway) {
    const std::string root = MakeFolder("life");
    EXPECT_TRUE(MakeDateFolder(MakeDayFolderPath(root, 2008, 11, 13)));
    EXPECT_TRUE(MakeDateFolder(MakeDayFolderPath(root, 2008, 11, 13)));
    EXPECT_TRUE(MakeDateFolder(MakeMonthFolderPath(root, 2009, 1)));
    EXPECT_TRUE(files::IsFolder(At("life/2008/200811/2008_1113")));
    EXPECT_TRUE(files::IsFolder(At("life/2009/200901")));
    EXPECT_FALSE(MakeDateFolder(MakeDayFolderPath(At("away"), 2008, 11, 13)));
    EXPECT_FALSE(MakeDateFolder(MakeMonthFolderPath(At("away"), 2008, 11)));
    EXPECT_FALSE(MakeDateFolder("2008"));
    EXPECT_FALSE(files::Exists(At("away")));
}

TEST_F(DataFolderTest, ANameThatEndsInAColonIsAName) {
    EXPECT_TRUE(MakeDirectories(At("trip:/2008:/a")));
    EXPECT_TRUE(files::IsFolder(At("trip:/2008:/a")));
    EXPECT_TRUE(MakeDateFolder(MakeDayFolderPath(At("trip:"), 2008, 11, 13)));
}

TEST_F(DataFolderTest, EveryMissingFolderOfAPathIsMade) {
    EXPECT_TRUE(MakeDirectories(At("2008/200811/2008_1113")));
    EXPECT_TRUE(files::IsFolder(At("2008/200811/2008_1113")));
    EXPECT_TRUE(MakeDirectories(At("2008/200811/2008_1113")));
    EXPECT_TRUE(MakeDirectories(At("表/能//ソ/")));
    EXPECT_TRUE(files::IsFolder(At("表/能/ソ")));
    EXPECT_TRUE(MakeDirectories("/"));
}

TEST_F(DataFolderTest, APathOfManyHundredBytesCanBeMade) {
    std::string path = home;
    for (int i = 0; i < 20; ++i) path += "/a folder with a long name";
    EXPECT_TRUE(MakeDirectories(path));
    EXPECT_TRUE(files::IsFolder(path));
}

TEST_F(DataFolderTest, AFolderPathThroughAFileFails) {
    Put("2008/200811", "a file");
    EXPECT_FALSE(MakeDirectories(At("2008/200811/2008_1113")));
    EXPECT_FALSE(MakeDirectories(At("2008/200811")));
    EXPECT_FALSE(MakeDirectories(""));
    EXPECT_FALSE(MakeDirectories(At("new/" + std::string(300, 'x') + "/y")));
    EXPECT_TRUE(files::IsFolder(At("new")));
}

TEST_F(DataFolderTest, RelativeFoldersAreMadeBelowTheCurrentOne) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(home);
    EXPECT_TRUE(MakeDirectories("a/b"));
    std::filesystem::current_path(before);
    EXPECT_TRUE(files::IsFolder(At("a/b")));
}

}  // namespace
}  // namespace kalmora
