#include "import/import_names.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "import/import_fixture.h"

namespace kalmora {
namespace {

using testing::ElementsAre;

using CompareImportFilesTest = ImportTest;
using MakeTargetPathTest = ImportTest;
using TargetNamesTest = ImportTest;

// ---- the same file or not

TEST_F(CompareImportFilesTest, SizeDecidesWithoutADate) {
    const std::string a = Add("a.txt", "12"), b = Add("b.txt", "ab"), c = Add("c.txt", "123");
    EXPECT_EQ(CompareImportFiles(a, b), 0);
    EXPECT_EQ(CompareImportFiles(a, c), -1);
    EXPECT_EQ(CompareImportFiles(c, a), 1);
}

TEST_F(CompareImportFilesTest, SameSecondIsTheSameFile) {
    const std::string photo = PhotoTaken("2008:11:13 10:15:30");
    const std::string a = Add("a.jpg", photo), b = Add("b.jpg", photo + "more"),
                      later = Add("c.jpg", PhotoTaken("2008:11:13 10:15:31"));
    EXPECT_EQ(CompareImportFiles(a, b), 0) << "another size";
    EXPECT_EQ(CompareImportFiles(a, later), 0) << "other dates, and so the size decides: it is the same";
    EXPECT_EQ(CompareImportFiles(later, b), -1);
}

TEST_F(CompareImportFilesTest, OneDateIsNone) {
    const std::string dated = Add("a.jpg", PhotoTaken("2008:11:13 10:15:30")), plain = Add("b.jpg", "x");
    EXPECT_EQ(CompareImportFiles(dated, plain), 1);
    EXPECT_EQ(CompareImportFiles(plain, dated), -1);
}

TEST_F(CompareImportFilesTest, MissingFileHasSizeZero) {
    const std::string a = Add("a.txt", "1"), empty = Add("b.txt", "");
    EXPECT_EQ(CompareImportFiles(a, OnCard("gone")), 1);
    EXPECT_EQ(CompareImportFiles(OnCard("gone"), a), -1);
    EXPECT_EQ(CompareImportFiles(OnCard("gone"), empty), 0);
    EXPECT_EQ(CompareImportFiles(OnCard("gone"), OnCard("gone too")), 0);
}

// ---- names

TEST(NumberedName, ExtensionIsThatOfTheFileThatStands) {
    EXPECT_EQ(NumberedName("IMG.JPG", "/d/IMG.JPG", 1), "IMG[1].jpg");
    EXPECT_EQ(NumberedName("IMG.JPG", "/d/IMG[1].jpg", 2), "IMG[2].jpg");
    EXPECT_EQ(NumberedName("README", "/d/README", 1), "README[1]");
    EXPECT_EQ(NumberedName("README", "/d/README[1]", 2), "README[2]");
    EXPECT_EQ(NumberedName("a.b c", "/d/a.b c", 1), "a.b c[1]") << "a blank ends no extension";
    EXPECT_EQ(NumberedName("name.verylongext", "/d/name.verylongext", 1), "name.verylongext[1]");
    EXPECT_EQ(NumberedName("a.tar.gz", "/d/a.tar.gz", 3), "a.tar[3].gz");
    EXPECT_EQ(NumberedName(".jpg", "/d/.jpg", 1), "[1].jpg");
}

TEST(NumberedName, FitsTheFileSystem) {
    const std::string longest(251, 'a');
    EXPECT_EQ(NumberedName(longest + ".jpg", "/d/" + longest + ".jpg", 1), std::string(248, 'a') + "[1].jpg");
    std::string kana;
    for (int i = 0; i < 83; ++i) kana += "あ";
    const std::string numbered = NumberedName(kana + ".jpg", "/d/" + kana + ".jpg", 12);
    EXPECT_LE(numbered.size(), 255u);
    EXPECT_TRUE(numbered.ends_with("あ[12].jpg")) << numbered;
}

TEST_F(MakeTargetPathTest, GivesTheNameInTheFolderOfTheDay) {
    EXPECT_EQ(MakeTargetPath(Add("A.JPG"), root, 2008, 11, 13), PathOf("A.JPG"));
    EXPECT_TRUE(files::IsFolder(DayFolder())) << "it is made";
    EXPECT_FALSE(MakeTargetPath("", root, 2008, 11, 13));
    EXPECT_FALSE(MakeTargetPath("A.JPG", root, 2008, 11, 13)) << "a path without a folder has no name";
    EXPECT_FALSE(MakeTargetPath(card + "/", root, 2008, 11, 13));
}

TEST_F(MakeTargetPathTest, FileOfTheDayStaysWhereItIs) {
    const std::string path = PutInDay("A.JPG");
    EXPECT_FALSE(MakeTargetPath(path, root, 2008, 11, 13));
    EXPECT_FALSE(MakeTargetPath(PutInDay("walk/A.JPG"), root, 2008, 11, 13));
    EXPECT_EQ(MakeTargetPath(path, root, 2008, 11, 14), PathOf("A.JPG", 14));
}

TEST_F(MakeTargetPathTest, FolderOfAnotherCaseIsAnotherFolder) {
    const std::string photos = MakeFolder("photos");
    const std::string elsewhere = Put("PHOTOS/2008/200811/2008_1113/A.JPG", "x");
    if (files::Exists(files::Join(photos, "2008")))
        GTEST_SKIP() << "this file system does not distinguish cases";
    EXPECT_EQ(MakeTargetPath(elsewhere, photos, 2008, 11, 13), At("photos/2008/200811/2008_1113/A.JPG"));
}

TEST_F(MakeTargetPathTest, FileInTheWayOfTheFolderGivesNothing) {
    Put("files/2008", "a file");
    EXPECT_FALSE(MakeTargetPath(Add("A.JPG"), root, 2008, 11, 13));
}

TEST_F(MakeTargetPathTest, SecondAndThirdOfANameGetNumbersInBrackets) {
    const std::string source = Add("A.JPG", "third of three");
    PutInDay("A.JPG", "first");
    EXPECT_EQ(MakeTargetPath(source, root, 2008, 11, 13), PathOf("A[1].jpg"));
    PutInDay("A[1].jpg", "second");
    EXPECT_EQ(MakeTargetPath(source, root, 2008, 11, 13), PathOf("A[2].jpg"))
        << "the name is taken from the source each time";
    PutInDay("A[2].jpg", "third of three");
    EXPECT_FALSE(MakeTargetPath(source, root, 2008, 11, 13)) << "there it is";
}

TEST_F(MakeTargetPathTest, DanglingLinkIsInTheWayToo) {
    PutInDay("other.txt");
    std::filesystem::create_symlink("nowhere", PathOf("A.JPG"));
    EXPECT_EQ(MakeTargetPath(Add("A.JPG"), root, 2008, 11, 13), PathOf("A[1].jpg"));
}

TEST_F(MakeTargetPathTest, PictureCacheIsRemoved) {
    for (const char* name : {"Thumbs.db", "THUMBS.DB", "thumbs.db"}) {
        const std::string cache = Add(name);
        EXPECT_FALSE(MakeTargetPath(cache, root, 2008, 11, 13));
        EXPECT_FALSE(files::Exists(cache)) << name;
    }
    State().settings.RenameFileWhenMove = true;
    const std::string cache = Add("Thumbs.db");
    EXPECT_EQ(MakeTargetPath(cache, root, 2008, 11, 13), PathOf("0001.db"));
    EXPECT_TRUE(files::Exists(cache)) << "a numbered one is a file like others";
}

TEST_F(TargetNamesTest, FirstFreeNumberIsTaken) {
    State().settings.RenameFileWhenMove = true;
    PutInDay("0001.jpg", "standing");
    PutInDay("0002.jpg", "standing");
    for (const auto& [name, target] : std::vector<std::pair<const char*, const char*>>{
             {"A.JPG", "0003.jpg"}, {"b.png", "0003.png"}, {"README", "0003"}, {"c.verylongext", "0003"}})
        EXPECT_EQ(MakeTargetPath(Add(name), root, 2008, 11, 13), PathOf(target)) << name;
    files::RemoveFile(PathOf("0001.jpg"));
    EXPECT_EQ(MakeTargetPath(Add("A.JPG"), root, 2008, 11, 13), PathOf("0001.jpg")) << "a gap is filled";
}

TEST_F(TargetNamesTest, OnlyJpgTakesANumber) {
    State().settings.RenameFileWhenMove = true;
    PutInDay("0001.png", "standing");
    EXPECT_EQ(MakeTargetPath(Add("A.JPG"), root, 2008, 11, 13), PathOf("0001.jpg"))
        << "a number is taken from a .jpg by a .jpg alone";
    EXPECT_EQ(MakeTargetPath(Add("A.PNG"), root, 2008, 11, 13), PathOf("0002.png"))
        << "and yet nothing is replaced";
}

TEST_F(TargetNamesTest, NumberedFileThatStandsIsFoundByItsBytes) {
    const std::string photo = PhotoTaken("2008:11:13 10:15:30");
    PutInDay("0001.jpg", "another");
    PutInDay("0002.jpg", photo);
    TargetNames names(Naming::Number);
    const auto choice = names.Look(Add("A.JPG", photo), DayFolder());
    EXPECT_EQ(choice.why, ImportResult::Same);
    EXPECT_EQ(choice.existing, PathOf("0002.jpg"));
    EXPECT_EQ(names.Look(Add("B.JPG", photo + "of a series"), DayFolder()).path, PathOf("0003.jpg"))
        << "one second has many pictures";
    EXPECT_EQ(names.Look(Add("A.PNG", photo), DayFolder()).path, PathOf("0003.png")) << "another kind";
}

TEST_F(TargetNamesTest, NumberIsZeroWhenAllAreTaken) {
    TargetNames names(Naming::Number);
    const std::string source = Add("A.JPG");
    for (int number = 1; number <= 9999; ++number) {
        char name[16];
        std::snprintf(name, sizeof name, "%04d.jpg", number);
        names.Reserve(PathOf(name));
    }
    EXPECT_EQ(names.Choose(source, DayFolder()).path, PathOf("0000.jpg"));
}

TEST_F(TargetNamesTest, ReservedNameHasToBeWaitedFor) {
    TargetNames names(Naming::Keep);
    const std::string source = Add("A.JPG");
    names.Reserve(PathOf("A.JPG"));
    EXPECT_TRUE(names.Choose(source, DayFolder()).mustWait);
    names.ForgetReserved();
    EXPECT_FALSE(names.Choose(source, DayFolder()).mustWait);
    TargetNames numbers(Naming::Number);
    numbers.Reserve(PathOf("0001.jpg"));
    EXPECT_EQ(numbers.Choose(source, DayFolder()).path, PathOf("0002.jpg"));
    EXPECT_EQ(numbers.Choose(Add("A.PNG"), DayFolder()).path, PathOf("0002.png"));
}

TEST_F(TargetNamesTest, LookingTouchesNothing) {
    TargetNames names(Naming::Keep);
    const std::string cache = Add("Thumbs.db");
    EXPECT_EQ(names.Look(cache, DayFolder()).why, ImportResult::Removed);
    EXPECT_EQ(names.Look(Add("A.JPG"), DayFolder()).path, PathOf("A.JPG"));
    EXPECT_TRUE(files::Exists(cache));
    EXPECT_FALSE(files::Exists(DayFolder()));
}

}  // namespace
}  // namespace kalmora
