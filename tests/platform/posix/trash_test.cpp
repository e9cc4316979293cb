#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.h"
#include "platform/shell.h"
#include "platform/transfer.h"
#include "scoped_variable.h"
#include "support/still_clock.h"
#include "support/temporary_folder.h"

namespace kalmora::shell {
namespace {

using test::ScopedVariable;
using test::TemporaryFolder;

class TrashTest : public testing::Test {
protected:
    TrashTest() : variable_("XDG_DATA_HOME", folder.Path() + "/data") {}

    std::optional<std::string> Trashed(std::string_view name) const {
        return files::ReadWholeFile(files::Join(folder / "data/Trash/files", name));
    }
    std::optional<std::string> RecordOf(std::string_view name) const {
        return files::ReadWholeFile(
            files::Join(folder / "data/Trash/info", std::string(name) + ".trashinfo"));
    }

    TemporaryFolder folder;

private:
    ScopedVariable variable_;
    test::StillClock clock_{{2008, 11, 4, 13, 9, 5, 7, 0}};
};

TEST_F(TrashTest, TakesTheFileAndNotesWhereItWas) {
    const std::string path = folder.Add("a.jpg", "picture");
    ASSERT_TRUE(MoveToTrash(path));
    EXPECT_FALSE(files::Exists(path));
    EXPECT_EQ(Trashed("a.jpg"), "picture");
    EXPECT_EQ(RecordOf("a.jpg"), "[Trash Info]\nPath=" + path + "\nDeletionDate=2008-11-13T09:05:07\n");
}

TEST_F(TrashTest, EncodesThePathByteForByte) {
    const std::string path = folder.Add("写 100%\xFF.jpg", "x");
    ASSERT_TRUE(MoveToTrash(path));
    EXPECT_EQ(RecordOf("写 100%\xFF.jpg"), "[Trash Info]\nPath=" + (folder / "%E5%86%99%20100%25%FF.jpg") +
                                               "\nDeletionDate=2008-11-13T09:05:07\n");
}

TEST_F(TrashTest, NumbersFilesOfTheSameName) {
    for (const char* content : {"1", "2", "3"}) ASSERT_TRUE(MoveToTrash(folder.Add("a.jpg", content)));
    EXPECT_EQ(Trashed("a.jpg"), "1");
    EXPECT_EQ(Trashed("a.2.jpg"), "2");
    EXPECT_EQ(Trashed("a.3.jpg"), "3");
    EXPECT_TRUE(RecordOf("a.3.jpg"));
    ASSERT_TRUE(MoveToTrash(folder.Add(".hidden", "x")));
    ASSERT_TRUE(MoveToTrash(folder.Add(".hidden", "y")));
    EXPECT_EQ(Trashed(".hidden.2"), "y");
}

TEST_F(TrashTest, NeverReplacesAFileWhoseNoteWasLost) {
    ASSERT_TRUE(MoveToTrash(folder.Add("a.jpg", "first")));
    ASSERT_EQ(files::RemoveFile(folder / "data/Trash/info/a.jpg.trashinfo"), files::FileResult::Done);
    ASSERT_TRUE(MoveToTrash(folder.Add("a.jpg", "second")));
    EXPECT_EQ(Trashed("a.jpg"), "first");
    EXPECT_FALSE(RecordOf("a.jpg"));
    EXPECT_EQ(Trashed("a.2.jpg"), "second");
}

TEST_F(TrashTest, TakesNamesOfTheGreatestLength) {
    const std::string name = std::string(251, 'n') + ".jpg";
    ASSERT_TRUE(MoveToTrash(folder.Add(name, "x")));
    const auto entries = files::ListFolder(folder / "data/Trash/files");
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_TRUE(entries[0].name.ends_with("n.jpg"));
    EXPECT_TRUE(RecordOf(entries[0].name));
}

TEST_F(TrashTest, TakesALinkAndNotItsTarget) {
    const std::string target = folder.Add("real.jpg", "x");
    ASSERT_EQ(symlink(target.c_str(), (folder / "link.jpg").c_str()), 0);
    ASSERT_TRUE(MoveToTrash(folder / "link.jpg"));
    EXPECT_TRUE(files::Exists(target));
    EXPECT_TRUE(files::ListFolder(folder / "data/Trash/files").front().isLink);
}

TEST_F(TrashTest, TakesAFolderWithAllThatIsInIt) {
    folder.AddFolder("day");
    folder.Add("day/a.jpg", "x");
    ASSERT_TRUE(MoveToTrash(folder / "day"));
    EXPECT_FALSE(files::Exists(folder / "day"));
    EXPECT_EQ(Trashed("day/a.jpg"), "x");
}

TEST_F(TrashTest, IsForTheUserAlone) {
    ASSERT_TRUE(MoveToTrash(folder.Add("a.jpg")));
    struct stat status {};
    ASSERT_EQ(stat((folder / "data/Trash/files").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(TrashTest, RefusesWhatIsNotThere) {
    EXPECT_FALSE(MoveToTrash(folder / "absent.jpg"));
    EXPECT_FALSE(MoveToTrash(folder / "none/a.jpg"));
    EXPECT_FALSE(MoveToTrash(""));
    EXPECT_FALSE(MoveToTrash("/"));
    EXPECT_FALSE(files::Exists(folder / "data/Trash/info/absent.jpg.trashinfo"));
}

TEST_F(TrashTest, LeavesAFileThatCannotBeTakenAwayAndKeepsNoCopy) {
    // No process makes a folder at the top of this volume or removes a file from it.
    EXPECT_FALSE(MoveToTrash("/proc/version"));
    EXPECT_TRUE(files::Exists("/proc/version"));
    EXPECT_FALSE(Trashed("version"));
    EXPECT_FALSE(RecordOf("version"));
}

// Another volume is needed for these: the memory file system is one nearly everywhere.
class OtherVolumeTrashTest : public TrashTest {
protected:
    void SetUp() override {
        const auto here = files::GetStatus(folder.Path());
        const auto there = files::GetStatus("/dev/shm");
        const auto above = files::GetStatus("/dev");
        // In a bare container it may be a folder of /dev: then it is not the top of its volume.
        if (!there || here->volume == there->volume || above->volume == there->volume ||
            !files::IsFolderWritable("/dev/shm"))
            GTEST_SKIP() << "no second volume that this user can write to";
        // The trash of a volume is one for all programs, so two of these tests at once would meet in it.
        lock_ = open("/dev/shm", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ASSERT_EQ(flock(lock_, LOCK_EX), 0);
        top_ = "/dev/shm/.Trash-" + std::to_string(geteuid());
        // What a test that was killed has left.
        for (const char* part : {"/files", "/info", ""}) files::RemoveEmptyFolder(top_ + part);
        if (files::Exists(top_) || files::Exists("/dev/shm/.Trash"))
            GTEST_SKIP() << "another program uses the trash there";
        const ScopedVariable place("TMPDIR", "/dev/shm");
        there_ = files::MakeTemporaryFolder();
    }
    void TearDown() override {
        if (!there_.empty()) {
            files::RemoveFolderTree(there_);
            files::RemoveFolderTree(top_);
        }
        if (lock_ >= 0) close(lock_);
    }
    int lock_ = -1;
    std::string there_, top_;
};

TEST_F(OtherVolumeTrashTest, LiesAtTheTopOfItsVolumeWithARelativePath) {
    const std::string path = files::Join(there_, "a b.jpg");
    ASSERT_EQ(files::WriteWholeFile(path, "x"), files::FileResult::Done);
    ASSERT_TRUE(MoveToTrash(path));
    EXPECT_EQ(files::ReadWholeFile(top_ + "/files/a b.jpg"), "x");
    EXPECT_EQ(files::ReadWholeFile(top_ + "/info/a b.jpg.trashinfo"),
              "[Trash Info]\nPath=" + there_.substr(std::string("/dev/shm/").size()) +
                  "/a%20b.jpg\nDeletionDate=2008-11-13T09:05:07\n");
    EXPECT_FALSE(Trashed("a b.jpg"));
}

TEST_F(OtherVolumeTrashTest, IsNotTrustedWhenItIsALink) {
    folder.AddFolder("elsewhere");
    ASSERT_EQ(symlink((folder / "elsewhere").c_str(), top_.c_str()), 0);
    const std::string path = files::Join(there_, "a.jpg");
    ASSERT_EQ(files::WriteWholeFile(path, "x"), files::FileResult::Done);
    // It travels to the user's own trash instead.
    EXPECT_TRUE(MoveToTrash(path));
    EXPECT_FALSE(files::Exists(path));
    EXPECT_EQ(Trashed("a.jpg"), "x");
    EXPECT_TRUE(files::ListFolder(folder / "elsewhere").empty());
    unlink(top_.c_str());
}

}  // namespace
}  // namespace kalmora::shell
