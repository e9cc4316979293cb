#include "platform/transfer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "platform/abandoned_files.h"
#include "support/temporary_folder.h"

namespace kalmora::files {
namespace {

using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : ListFolder(folder)) names.push_back(entry.name);
    return names;
}

std::string TestBytes(std::size_t count) {
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i * 31 + i / 251);
    return bytes;
}

bool AreAllDone(std::span<NewCopy* const> copies) {
    for (const FileResult result : FlushCopies(copies))
        if (result != FileResult::Done) return false;
    return true;
}

// A second volume, where the machine has one.
std::string FolderOnOtherVolume(const std::string& folder) {
    const auto here = GetStatus(folder), memory = GetStatus("/dev/shm");
    if (!here || !memory || here->volume == memory->volume) return {};
    std::string path = "/dev/shm/kalmora-transfer-XXXXXX";
    return mkdtemp(path.data()) ? path : std::string();
}

// ---- names

TEST(RenameNew, GivesAnotherNameAndKeepsTheFile) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a.txt", "content");
    const auto before = GetStatus(from);
    EXPECT_EQ(RenameNew(from, folder / "b.txt"), FileResult::Done);
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("b.txt"));
    EXPECT_EQ(GetStatus(folder / "b.txt")->identity, before->identity);
}

TEST(RenameNew, ReplacesNothing) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a.txt", "mine"), to = folder.Add("b.txt", "yours");
    EXPECT_EQ(RenameNew(from, to), FileResult::Exists);
    EXPECT_EQ(ReadWholeFile(from), "mine");
    EXPECT_EQ(ReadWholeFile(to), "yours");
    const std::string link = folder / "dangling";
    ASSERT_EQ(symlink("nowhere", link.c_str()), 0);
    EXPECT_EQ(RenameNew(from, link), FileResult::Exists) << "a link to nothing is something, too";
    EXPECT_EQ(RenameNew(from, folder.AddFolder("folder")), FileResult::Exists);
}

TEST(RenameNew, TellsWhatIsWrong) {
    const TemporaryFolder folder;
    EXPECT_EQ(RenameNew(folder / "gone", folder / "b"), FileResult::NotFound);
    EXPECT_EQ(RenameNew(folder.Add("a"), folder / "no/such/folder/b"), FileResult::NotFound);
}

TEST(RenameNew, DoesNotReachAnotherVolume) {
    const TemporaryFolder folder;
    folder.Add("a");
    const std::string other = FolderOnOtherVolume(folder.Path());
    if (other.empty()) GTEST_SKIP() << "this machine has one volume only";
    EXPECT_EQ(RenameNew(folder / "a", other + "/a"), FileResult::Failed);
    EXPECT_TRUE(Exists(folder / "a"));
    EXPECT_EQ(RemoveFolderTree(other), FileResult::Done);
}

TEST(RemoveEmptyFolder, TakesAwayWhatIsEmptyAlone) {
    const TemporaryFolder folder;
    const std::string empty = folder.AddFolder("empty"), full = folder.AddFolder("full");
    folder.Add("full/a", "x");
    EXPECT_EQ(RemoveEmptyFolder(empty), FileResult::Done);
    EXPECT_FALSE(Exists(empty));
    EXPECT_EQ(RemoveEmptyFolder(full), FileResult::Failed);
    EXPECT_TRUE(Exists(full + "/a"));
    EXPECT_EQ(RemoveEmptyFolder(empty), FileResult::NotFound);
    EXPECT_EQ(RemoveEmptyFolder(full + "/a"), FileResult::NotFound) << "a file is no folder";
    EXPECT_EQ(ReadWholeFile(full + "/a"), "x");
}

TEST(FlushFolders, IsDoneForFoldersAndNotWithAnAbsentOne) {
    const TemporaryFolder folder;
    std::vector<std::string> folders{folder.Path()};
    EXPECT_EQ(FlushFolders(folders), FileResult::Done);
    for (const char* name : {"a", "b", "c", "d", "e"}) folders.push_back(folder.AddFolder(name));
    EXPECT_EQ(FlushFolders(folders), FileResult::Done) << "many of one volume";
    folders.push_back(folder / "gone");
    EXPECT_EQ(FlushFolders(folders), FileResult::NotFound);
    EXPECT_EQ(FlushFolders({}), FileResult::Done);
}

TEST(HaveSameBytes, ComparesRegularFilesOnly) {
    const TemporaryFolder folder;
    const std::string a = folder.Add("a", "same"), b = folder.Add("b", "same"), c = folder.Add("c", "sane");
    EXPECT_TRUE(HaveSameBytes(a, b));
    EXPECT_TRUE(HaveSameBytes(a, a));
    EXPECT_TRUE(HaveSameBytes(folder.Add("d"), folder.Add("e"))) << "nothing is like nothing";
    EXPECT_FALSE(HaveSameBytes(a, c));
    EXPECT_FALSE(HaveSameBytes(a, folder / "d"));
    EXPECT_FALSE(HaveSameBytes(a, folder / "gone"));
    EXPECT_FALSE(HaveSameBytes(folder / "gone", folder / "gone"));
    EXPECT_FALSE(HaveSameBytes(folder.Path(), folder.Path()));
}

TEST(IsLink, LooksAtThePathItself) {
    const TemporaryFolder folder;
    const std::string file = folder.Add("a"), link = folder / "l";
    ASSERT_EQ(symlink("a", link.c_str()), 0);
    EXPECT_TRUE(IsLink(link));
    EXPECT_FALSE(IsLink(file));
    EXPECT_FALSE(IsLink(folder / "gone"));
}

TEST(LiesIn, FollowsLinksAndSpellings) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "photos/2008");
    std::filesystem::create_directories(folder / "photos2");
    std::filesystem::create_directory_symlink(folder / "photos/2008", folder / "alias");
    const std::string photos = folder / "photos";
    for (const char* inside : {"photos", "photos/", "photos/2008", "photos/./2008/..", "alias",
                               "photos2/../photos/2008", "photos/not/yet/made.jpg", "alias/not yet"})
        EXPECT_TRUE(LiesIn(folder / inside, photos)) << inside;
    for (const char* outside : {"", "photos2", "PHOTOS/2008", "photos/..", "photo", "photos2/not yet"})
        EXPECT_FALSE(LiesIn(folder / outside, photos)) << outside;
    EXPECT_TRUE(LiesIn(folder / "photos/2008", folder / "alias"));
    EXPECT_TRUE(LiesIn(folder / "photos", photos + "/2008/.."));
    EXPECT_FALSE(LiesIn(photos, folder / "gone")) << "nothing lies in a folder that does not exist";
}

TEST(FreeSpace, IsThatOfTheVolumeAlsoForWhatDoesNotStandYet) {
    const TemporaryFolder folder;
    struct statvfs system {};
    ASSERT_EQ(statvfs(folder.Path().c_str(), &system), 0);
    const auto here = FreeSpace(folder.Path()), below = FreeSpace(folder / "2008/200811/2008_1113");
    ASSERT_TRUE(here && below);
    // Others write meanwhile.
    const auto near = static_cast<double>(system.f_bavail) * static_cast<double>(system.f_frsize);
    EXPECT_NEAR(static_cast<double>(*here), near, near / 2 + 1e6);
    EXPECT_NEAR(static_cast<double>(*below), near, near / 2 + 1e6);
    EXPECT_EQ(FreeSpace("/proc/self"), 0u);
}

// ---- copies

TEST(NewCopy, AppearsWholeWithTimesAndRights) {
    const TemporaryFolder folder;
    for (const std::size_t size : {0u, 1u, 65'536u, 300'001u}) {
        const std::string content = TestBytes(size);
        const std::string from = folder.Add("a.bin", content), to = folder / "b.bin";
        ASSERT_EQ(chmod(from.c_str(), 0640), 0);
        ASSERT_TRUE(SetTimes(from, FileTime{128'710'000'000'000'000u}, FileTime{128'720'000'000'000'000u}));
        NewCopy copy;
        ASSERT_EQ(copy.Make(from, folder.Path()), FileResult::Done);
        EXPECT_FALSE(Exists(to)) << "not before Appear is called";
        NewCopy* const all[] = {&copy};
        EXPECT_TRUE(AreAllDone(all));
        EXPECT_TRUE(copy.HoldsSameBytes());
        EXPECT_EQ(copy.Appear(to), FileResult::Done);
        EXPECT_EQ(ReadWholeFile(to), content);
        EXPECT_EQ(GetStatus(to)->written, FileTime{128'720'000'000'000'000u});
        struct stat status {};
        ASSERT_EQ(stat(to.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0640u);
        EXPECT_EQ(RemoveFile(to), FileResult::Done);
    }
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a.bin"));
}

TEST(NewCopy, StandsUnderAScratchNameUntilThen) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a", "x"), target = folder.AddFolder("target");
    {
        NewCopy copy;
        ASSERT_EQ(copy.Make(from, target), FileResult::Done);
        const auto names = NamesIn(target);
        ASSERT_EQ(names.size(), 1u);
        EXPECT_TRUE(HasScratchName(names[0])) << names[0];
        EXPECT_TRUE(IsHidden(target + "/" + names[0]));
    }
    EXPECT_THAT(NamesIn(target), IsEmpty()) << "one that never appears leaves nothing";
}

TEST(NewCopy, ReplacesOnlyWhenTold) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a", "new"), existing = folder.Add("b", "old");
    NewCopy copy;
    ASSERT_EQ(copy.Make(from, folder.Path()), FileResult::Done);
    EXPECT_EQ(copy.Appear(existing), FileResult::Exists);
    EXPECT_EQ(ReadWholeFile(existing), "old");
    EXPECT_EQ(copy.Appear(existing, NewCopy::Existing::Replace), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(existing), "new");
    EXPECT_EQ(copy.Appear(folder / "c"), FileResult::Failed) << "it has appeared already";
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a", "b"));
}

TEST(NewCopy, CanBeGivenAnotherNameWhenTheFirstIsTaken) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a", "new"), existing = folder.Add("b", "old");
    NewCopy copy;
    ASSERT_EQ(copy.Make(from, folder.Path()), FileResult::Done);
    EXPECT_EQ(copy.Appear(existing), FileResult::Exists);
    EXPECT_EQ(copy.Appear(folder / "c"), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(folder / "c"), "new");
}

TEST(NewCopy, SeesASourceThatWasWrittenReplacedOrRemoved) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a", "content");
    NewCopy copy;
    const auto makeAgain = [&] {
        std::ofstream(from, std::ios::binary | std::ios::trunc) << "content";
        ASSERT_TRUE(SetTimes(from, {}, FileTime{128'710'000'000'000'000u}));
        ASSERT_EQ(copy.Make(from, folder.Path()), FileResult::Done);
        ASSERT_TRUE(copy.IsSourceUntouched());
    };
    makeAgain();
    std::ofstream(from, std::ios::app) << "more";
    EXPECT_FALSE(copy.IsSourceUntouched());
    EXPECT_FALSE(copy.HoldsSameBytes());
    makeAgain();
    std::ofstream(from, std::ios::trunc) << "CONTENT";
    ASSERT_TRUE(SetTimes(from, {}, FileTime{128'710'000'000'010'000u}));
    EXPECT_FALSE(copy.IsSourceUntouched()) << "the same size at another time";
    makeAgain();
    folder.Add("b", "content");
    std::filesystem::rename(folder / "b", from);
    EXPECT_FALSE(copy.IsSourceUntouched());
    makeAgain();
    std::filesystem::remove(from);
    EXPECT_FALSE(copy.IsSourceUntouched());
    EXPECT_FALSE(copy.HoldsSameBytes());
}

TEST(NewCopy, SeesAByteThatDiffers) {
    const TemporaryFolder folder;
    const std::string content = TestBytes(600'000);
    const std::string from = folder.Add("a", content), target = folder.AddFolder("target");
    for (const std::size_t at : {0u, 262'143u, 262'144u, 599'999u}) {
        NewCopy copy;
        ASSERT_EQ(copy.Make(from, target), FileResult::Done);
        ASSERT_TRUE(copy.HoldsSameBytes());
        std::fstream scratch(target + "/" + NamesIn(target).at(0),
                             std::ios::binary | std::ios::in | std::ios::out);
        scratch.seekp(static_cast<std::streamoff>(at));
        scratch.put(static_cast<char>(content[at] ^ 1));
        scratch.close();
        EXPECT_FALSE(copy.HoldsSameBytes()) << at;
        EXPECT_TRUE(copy.IsSourceUntouched());
    }
    NewCopy copy;
    ASSERT_EQ(copy.Make(from, target), FileResult::Done);
    std::filesystem::resize_file(target + "/" + NamesIn(target).at(0), 599'999);
    EXPECT_FALSE(copy.HoldsSameBytes()) << "one byte less";
}

TEST(NewCopy, FollowsALinkAndRefusesWhatIsNoFile) {
    const TemporaryFolder folder;
    folder.Add("a", "content");
    const std::string link = folder / "link", pipe = folder / "pipe", target = folder.AddFolder("target");
    ASSERT_EQ(symlink("a", link.c_str()), 0);
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    NewCopy copy;
    ASSERT_EQ(copy.Make(link, target), FileResult::Done);
    ASSERT_EQ(copy.Appear(target + "/a"), FileResult::Done);
    EXPECT_FALSE(IsLink(target + "/a"));
    EXPECT_EQ(ReadWholeFile(target + "/a"), "content");
    EXPECT_EQ(copy.Make(pipe, target), FileResult::Failed);
    EXPECT_EQ(copy.Make(folder.Path(), target), FileResult::Failed);
    EXPECT_EQ(copy.Make(folder / "gone", target), FileResult::NotFound);
    EXPECT_EQ(copy.Make(folder / "a", folder / "no such folder"), FileResult::NotFound);
    EXPECT_THAT(NamesIn(target), ElementsAre("a"));
}

TEST(NewCopy, WriteProtectedSourceGivesAWritableCopy) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a", "x");
    ASSERT_EQ(chmod(from.c_str(), 0444), 0);
    NewCopy copy;
    ASSERT_EQ(copy.Make(from, folder.Path()), FileResult::Done);
    ASSERT_EQ(copy.Appear(folder / "b"), FileResult::Done);
    struct stat status {};
    ASSERT_EQ(stat((folder / "b").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0644u);
    EXPECT_TRUE(GetStatus(from)->isReadOnly) << "the source is as it was";
}

TEST(NewCopy, GoesFromOneVolumeToAnother) {
    const TemporaryFolder folder;
    const std::string other = FolderOnOtherVolume(folder.Path());
    if (other.empty()) GTEST_SKIP() << "this machine has one volume only";
    const std::string content = TestBytes(300'001), from = folder.Add("a", content);
    NewCopy copy;
    ASSERT_EQ(copy.Make(from, other), FileResult::Done);
    NewCopy* const all[] = {&copy};
    EXPECT_TRUE(AreAllDone(all));
    EXPECT_TRUE(copy.HoldsSameBytes());
    ASSERT_EQ(copy.Appear(other + "/a"), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(other + "/a"), content);
    EXPECT_EQ(RemoveFolderTree(other), FileResult::Done);
}

TEST(FlushCopies, ManyAndFewAndNone) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a", TestBytes(5'000));
    std::vector<NewCopy> copies(5);
    std::vector<NewCopy*> all;
    EXPECT_THAT(FlushCopies(all), IsEmpty());
    for (NewCopy& copy : copies) {
        ASSERT_EQ(copy.Make(from, folder.Path()), FileResult::Done);
        all.push_back(&copy);
        EXPECT_TRUE(AreAllDone(all));
    }
    NewCopy never;
    all = {&never};
    EXPECT_THAT(FlushCopies(all), ElementsAre(FileResult::Failed)) << "nothing was copied";
}

TEST(NewCopy, MovesToAnotherObject) {
    const TemporaryFolder folder;
    NewCopy copy;
    ASSERT_EQ(copy.Make(folder.Add("a", "x"), folder.Path()), FileResult::Done);
    NewCopy other = std::move(copy);
    NewCopy third;
    third = std::move(other);
    EXPECT_EQ(third.Appear(folder / "b"), FileResult::Done);
    EXPECT_THAT(NamesIn(folder.Path()), ElementsAre("a", "b"));
}

}  // namespace
}  // namespace kalmora::files
