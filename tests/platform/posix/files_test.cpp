#include "platform/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/clock.h"
#include "support/temporary_folder.h"

namespace kalmora::files {
namespace {

using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Names(const std::vector<FolderEntry>& entries) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : entries) names.push_back(entry.name);
    return names;
}

const FolderEntry* Find(const std::vector<FolderEntry>& entries, std::string_view name) {
    for (const FolderEntry& entry : entries)
        if (entry.name == name) return &entry;
    return nullptr;
}

void Link(const std::string& target, const std::string& link) {
    ASSERT_EQ(symlink(target.c_str(), link.c_str()), 0);
}

// ---- names

TEST(IsAbsolute, HoldsForPathsFromTheRootOnly) {
    EXPECT_TRUE(IsAbsolute("/"));
    EXPECT_TRUE(IsAbsolute("/a/b"));
    EXPECT_FALSE(IsAbsolute(""));
    EXPECT_FALSE(IsAbsolute("a/b"));
    EXPECT_FALSE(IsAbsolute("\\a"));
    EXPECT_FALSE(IsAbsolute("C:\\a"));
}

TEST(WithPlatformSeparators, TurnsBackslashesIntoSlashes) {
    EXPECT_EQ(WithPlatformSeparators("2008\\200811\\2008_1113\\a.jpg"), "2008/200811/2008_1113/a.jpg");
    EXPECT_EQ(WithPlatformSeparators("a/b"), "a/b");
}

TEST(WithPlatformSeparators, LeavesACharacterWhoseOldCodeEndsInABackslashWhole) {
    // 表 is 95 5C in code page 932; in memory it has no backslash in it.
    EXPECT_EQ(WithPlatformSeparators("表\\表.txt"), "表/表.txt");
}

// ---- looks

TEST(Exists, HoldsForFilesAndFoldersAndNotForWhatIsAbsent) {
    const TemporaryFolder folder;
    const std::string file = folder.Add("a.txt", "x");
    EXPECT_TRUE(Exists(file));
    EXPECT_TRUE(Exists(folder.Path()));
    EXPECT_FALSE(Exists(folder / "b.txt"));
    EXPECT_FALSE(Exists(""));
    EXPECT_FALSE(Exists(file + "/b.txt"));
}

TEST(IsFolder, HoldsForFoldersAndLinksToFolders) {
    const TemporaryFolder folder;
    const std::string sub = folder.AddFolder("sub");
    const std::string file = folder.Add("a.txt");
    Link(sub, folder / "link");
    Link(folder / "nowhere", folder / "broken");
    EXPECT_TRUE(IsFolder(sub));
    EXPECT_TRUE(IsFolder(sub + "/"));
    EXPECT_TRUE(IsFolder(folder / "link"));
    EXPECT_FALSE(IsFolder(file));
    EXPECT_FALSE(IsFolder(folder / "broken"));
    EXPECT_FALSE(IsFolder(folder / "absent"));
    EXPECT_FALSE(IsFolder(""));
}

TEST(GetStatus, TellsSizeKindAndTimesOfAFile) {
    const TemporaryFolder folder;
    const FileTime before = CurrentFileTime();
    const std::string file = folder.Add("a.txt", "12345");
    const FileTime written{132'000'000'000'000'000};
    ASSERT_TRUE(SetTimes(file, {}, written));
    const auto status = GetStatus(file);
    ASSERT_TRUE(status);
    EXPECT_TRUE(status->isRegular);
    EXPECT_FALSE(status->isFolder);
    EXPECT_FALSE(status->isReadOnly);
    EXPECT_EQ(status->size, 5u);
    EXPECT_EQ(status->written, written);
    // The birth time where the file system keeps one, else the last write.
    constexpr std::uint64_t kTenSeconds = 100'000'000;
    const bool isBirth = status->created.ticks + kTenSeconds > before.ticks;
    EXPECT_TRUE(isBirth || status->created == written);
}

TEST(GetStatus, IsEmptyForWhatIsAbsent) {
    const TemporaryFolder folder;
    EXPECT_FALSE(GetStatus(folder / "absent"));
    EXPECT_FALSE(GetStatus(""));
}

TEST(GetStatus, TellsReadOnlyByTheWriteMarks) {
    const TemporaryFolder folder;
    const std::string file = folder.Add("a.txt");
    ASSERT_EQ(chmod(file.c_str(), 0444), 0);
    EXPECT_TRUE(GetStatus(file)->isReadOnly);
    ASSERT_EQ(chmod(file.c_str(), 0644), 0);
    EXPECT_FALSE(GetStatus(file)->isReadOnly);
}

TEST(GetStatus, FollowsLinksAndKnowsTheSameFileAgain) {
    const TemporaryFolder folder;
    const std::string file = folder.Add("a.txt", "abc");
    const std::string other = folder.Add("b.txt", "abc");
    Link(file, folder / "link");
    const auto one = GetStatus(file), same = GetStatus(folder / "link"), two = GetStatus(other);
    ASSERT_TRUE(one && same && two);
    EXPECT_TRUE(same->isRegular);
    EXPECT_EQ(one->identity, same->identity);
    EXPECT_EQ(one->volume, same->volume);
    EXPECT_NE(one->identity, two->identity);
}

TEST(SetTimes, KeepsAHundredNanosecondsAndTimesBefore1970) {
    const TemporaryFolder folder;
    const std::string file = folder.Add("a.txt");
    for (const std::uint64_t ticks : {116'444'736'000'000'001ull, 116'000'000'000'000'000ull}) {
        if (!SetTimes(file, FileTime{ticks + 20'000'000}, FileTime{ticks})) FAIL() << ticks;
        EXPECT_EQ(GetStatus(file)->written.ticks, ticks);
        EXPECT_EQ(GetStatus(file)->accessed.ticks, ticks + 20'000'000);
    }
}

TEST(SetTimes, LeavesATimeThatIsNotGiven) {
    const TemporaryFolder folder;
    const std::string file = folder.Add("a.txt");
    ASSERT_TRUE(SetTimes(file, FileTime{130'000'000'000'000'000}, FileTime{131'000'000'000'000'000}));
    ASSERT_TRUE(SetTimes(file, {}, FileTime{132'000'000'000'000'000}));
    EXPECT_EQ(GetStatus(file)->accessed.ticks, 130'000'000'000'000'000u);
    EXPECT_EQ(GetStatus(file)->written.ticks, 132'000'000'000'000'000u);
}

TEST(SetTimes, FailsForWhatIsAbsent) {
    const TemporaryFolder folder;
    EXPECT_FALSE(SetTimes(folder / "absent", CurrentFileTime(), CurrentFileTime()));
}

TEST(IsHidden, HoldsForNamesWithALeadingDot) {
    EXPECT_TRUE(IsHidden("/a/.b"));
    EXPECT_TRUE(IsHidden(".b"));
    EXPECT_FALSE(IsHidden("/a/b"));
    EXPECT_FALSE(IsHidden("/.a/b"));
    EXPECT_FALSE(IsHidden("/a/."));
    EXPECT_FALSE(IsHidden(".."));
}

TEST(SetHidden, IsDoneWhereNamesTellWhatIsHidden) {
    const TemporaryFolder folder;
    const std::string file = folder.Add("KM.log");
    EXPECT_TRUE(SetHidden(file));
    EXPECT_TRUE(Exists(file));
}

// ---- folders

TEST(ListFolder, OrdersNamesWithoutRegardToCase) {
    const TemporaryFolder folder;
    for (const char* name : {"b.jpg", "A.jpg", "a.txt", "C", "_", "10.txt", "B.jpg"}) folder.Add(name);
    FileResult result = FileResult::Failed;
    EXPECT_THAT(Names(ListFolder(folder.Path(), &result)),
                ElementsAre("10.txt", "_", "A.jpg", "a.txt", "B.jpg", "b.jpg", "C"));
    EXPECT_EQ(result, FileResult::Done);
}

TEST(ListFolder, TellsFoldersLinksAndHiddenNamesApart) {
    const TemporaryFolder folder;
    const std::string sub = folder.AddFolder("sub");
    Link(sub, folder / "linkToFolder");
    Link(folder.Add(".hidden"), folder / "linkToFile");
    Link(folder / "nowhere", folder / "broken");
    const auto entries = ListFolder(folder.Path());
    ASSERT_EQ(entries.size(), 5u);
    const auto check = [&](const char* name, bool isFolder, bool isLink, bool isHidden) {
        const FolderEntry* entry = Find(entries, name);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_EQ(entry->isFolder, isFolder) << name;
        EXPECT_EQ(entry->isLink, isLink) << name;
        EXPECT_EQ(entry->isHidden, isHidden) << name;
    };
    check("sub", true, false, false);
    check("linkToFolder", true, true, false);
    check("linkToFile", false, true, false);
    check("broken", false, true, false);
    check(".hidden", false, false, true);
}

TEST(ListFolder, IsEmptyAndTellsWhyWhenThereIsNoFolder) {
    const TemporaryFolder folder;
    FileResult result = FileResult::Done;
    EXPECT_THAT(ListFolder(folder / "absent", &result), IsEmpty());
    EXPECT_EQ(result, FileResult::NotFound);
    EXPECT_THAT(ListFolder(folder.Add("file"), &result), IsEmpty());
    EXPECT_EQ(result, FileResult::NotFound);
    EXPECT_THAT(ListFolder(folder.AddFolder("empty"), &result), IsEmpty());
    EXPECT_EQ(result, FileResult::Done);
}

TEST(ListFolder, GivesNamesThatAreNotUtf8AsTheyAre) {
    const TemporaryFolder folder;
    const std::string name = "\x95\x5C\xFF.jpg";
    folder.Add(name, "abc");
    const auto entries = ListFolder(folder.Path());
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].name, name);
    EXPECT_EQ(ReadWholeFile(folder / entries[0].name), "abc");
}

TEST(MakeFolder, MakesOneLevel) {
    const TemporaryFolder folder;
    EXPECT_EQ(MakeFolder(folder / "a"), FileResult::Done);
    EXPECT_TRUE(IsFolder(folder / "a"));
    EXPECT_EQ(MakeFolder(folder / "a"), FileResult::Exists);
    EXPECT_EQ(MakeFolder(folder / "b/c"), FileResult::NotFound);
    EXPECT_EQ(MakeFolder(folder.Add("file")), FileResult::Exists);
    EXPECT_EQ(MakeFolder(folder / "file/c"), FileResult::NotFound);
    EXPECT_EQ(MakeFolder(""), FileResult::NotFound);
}

TEST(MakeFolder, RefusesANameThatIsTooLong) {
    const TemporaryFolder folder;
    EXPECT_EQ(MakeFolder(folder / std::string(255, 'a')), FileResult::Done);
    EXPECT_EQ(MakeFolder(folder / std::string(256, 'a')), FileResult::Failed);
}

TEST(RemoveFile, RemovesFilesAndLeavesFolders) {
    const TemporaryFolder folder;
    const std::string file = folder.Add("a.txt");
    EXPECT_EQ(RemoveFile(file), FileResult::Done);
    EXPECT_FALSE(Exists(file));
    EXPECT_EQ(RemoveFile(file), FileResult::NotFound);
    EXPECT_NE(RemoveFile(folder.AddFolder("sub")), FileResult::Done);
    EXPECT_TRUE(IsFolder(folder / "sub"));
}

TEST(RemoveFolderTree, TakesEverythingBelow) {
    const TemporaryFolder folder;
    const std::string top = folder.AddFolder("top");
    folder.AddFolder("top/a");
    folder.AddFolder("top/a/b");
    folder.Add("top/a/b/c.txt");
    folder.Add("top/.hidden");
    EXPECT_EQ(RemoveFolderTree(top), FileResult::Done);
    EXPECT_FALSE(Exists(top));
    EXPECT_EQ(RemoveFolderTree(top), FileResult::NotFound);
}

TEST(RemoveFolderTree, NeverFollowsALinkOutOfTheTree) {
    const TemporaryFolder folder;
    const std::string outside = folder.AddFolder("outside");
    const std::string precious = folder.Add("outside/a.jpg", "x");
    const std::string tree = folder.AddFolder("tree");
    Link(outside, folder / "tree/link");
    Link(outside, folder / "direct");
    EXPECT_EQ(RemoveFolderTree(tree), FileResult::Done);
    EXPECT_EQ(RemoveFolderTree(folder / "direct"), FileResult::Done);
    EXPECT_FALSE(Exists(folder / "direct"));
    EXPECT_TRUE(Exists(precious));
}

TEST(RemoveFolderTree, RefusesAFile) {
    const TemporaryFolder folder;
    const std::string file = folder.Add("a.txt");
    EXPECT_EQ(RemoveFolderTree(file), FileResult::Failed);
    EXPECT_TRUE(Exists(file));
}

TEST(Rename, MovesAndReplaces) {
    const TemporaryFolder folder;
    const std::string from = folder.Add("a.txt", "new");
    const std::string to = folder.Add("b.txt", "old");
    EXPECT_EQ(Rename(from, to), FileResult::Done);
    EXPECT_FALSE(Exists(from));
    EXPECT_EQ(ReadWholeFile(to), "new");
    EXPECT_EQ(Rename(from, to), FileResult::NotFound);
    EXPECT_EQ(Rename(to, folder / "absent/b.txt"), FileResult::NotFound);
}

}  // namespace
}  // namespace kalmora::files
