#include "platform/posix/places.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/path_names.h"
#include "platform/files.h"
#include "scoped_variable.h"
#include "support/temporary_folder.h"

namespace kalmora::files {
namespace {

using test::ScopedVariable;
using test::TemporaryFolder;

TEST(ExecutablePath, IsThisVeryProgram) {
    EXPECT_TRUE(IsAbsolute(ExecutablePath()));
    EXPECT_TRUE(Exists(ExecutablePath()));
    EXPECT_EQ(FolderOfPath(ExecutablePath()), ExecutableFolder());
    EXPECT_EQ(GetStatus(ExecutablePath())->identity, GetStatus("/proc/self/exe")->identity);
}

TEST(PhysicalPath, FollowsTheFoldersButNotTheLastName) {
    const TemporaryFolder folder;
    folder.AddFolder("real");
    ASSERT_EQ(symlink("real", (folder / "link").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", (folder / "real/end").c_str()), 0);
    const std::string real = PhysicalPath(folder / "real");
    EXPECT_EQ(PhysicalPath(folder / "link/end"), real + "/end");
    EXPECT_EQ(PhysicalPath(folder / "link/."), real);
    EXPECT_EQ(PhysicalPath("/no/such/../folder/x"), "/no/folder/x");
}

TEST(UserDataFolder, FollowsTheDesktopsVariable) {
    const ScopedVariable data("XDG_DATA_HOME", "/somewhere/data");
    EXPECT_EQ(UserDataFolder(), "/somewhere/data/kalmora");
}

TEST(UserDataFolder, LiesInTheHomeWhenTheVariableIsEmptyOrRelative) {
    const ScopedVariable home("HOME", "/home/anybody");
    for (const char* value : {"", "data"}) {
        const ScopedVariable data("XDG_DATA_HOME", value);
        EXPECT_EQ(UserDataFolder(), "/home/anybody/.local/share/kalmora");
    }
}

TEST(IsFolderWritable, HoldsForFoldersOfOurOwnOnly) {
    const TemporaryFolder folder;
    EXPECT_TRUE(IsFolderWritable(folder.Path()));
    EXPECT_FALSE(IsFolderWritable(folder / "absent"));
    EXPECT_FALSE(IsFolderWritable(folder.Add("file")));
    const std::string guarded = folder.AddFolder("guarded");
    ASSERT_EQ(chmod(guarded.c_str(), 0555), 0);
    EXPECT_EQ(IsFolderWritable(guarded), geteuid() == 0) << "only root writes everywhere";
}

TEST(Environment, IsEmptyForWhatIsUnset) {
    const ScopedVariable set("KALMORA_TEST_VARIABLE", "value");
    EXPECT_EQ(Environment("KALMORA_TEST_VARIABLE"), "value");
    EXPECT_EQ(Environment("KALMORA_TEST_VARIABLE_UNSET"), "");
}

TEST(FindProgram, TakesTheFirstExecutableFileInPath) {
    const TemporaryFolder folder;
    folder.AddFolder("a");
    folder.AddFolder("b");
    folder.AddFolder("c");
    folder.Add("a/tool", "#!/bin/sh\n");  // not executable
    folder.AddFolder("b/tool");           // a folder
    const std::string tool = folder.Add("c/tool", "#!/bin/sh\n");
    ASSERT_EQ(chmod(tool.c_str(), 0755), 0);
    const ScopedVariable path("PATH", folder / "a" + ":" + (folder / "b") + ":" + (folder / "c"));
    EXPECT_EQ(FindProgram("tool"), tool);
    EXPECT_EQ(FindProgram("other"), "");
    EXPECT_EQ(FindProgram(""), "");
}

TEST(FindProgram, LooksAtAPathWithoutTheVariable) {
    EXPECT_EQ(FindProgram("/bin/sh"), "/bin/sh");
    EXPECT_EQ(FindProgram("/bin/no-such-program"), "");
    EXPECT_EQ(FindProgram("/bin"), "");
}

TEST(FindCameraCard, IsTheFirstMediumWithADcimFolder) {
    const TemporaryFolder root;
    root.AddFolder("empty");
    root.AddFolder("media");
    root.AddFolder("media/A-BACKUP");
    root.AddFolder("media/B-CARD");
    root.AddFolder("media/B-CARD/DCIM");
    root.AddFolder("media/C-CARD");
    root.AddFolder("media/C-CARD/DCIM");
    EXPECT_EQ(FindCameraCardBelow({root / "absent", root / "empty", root / "media"}),
              root / "media/B-CARD/DCIM");
}

TEST(FindCameraCard, TakesSmallLettersToo) {
    const TemporaryFolder root;
    root.AddFolder("CARD");
    root.AddFolder("CARD/dcim");
    EXPECT_EQ(FindCameraCardBelow({root.Path()}), root / "CARD/dcim");
}

TEST(FindCameraCard, IsEmptyWithoutACard) {
    const TemporaryFolder root;
    root.AddFolder("DISK");
    root.Add("DISK/DCIM", "a file of that name is no card");
    root.Add("DCIM");
    EXPECT_EQ(FindCameraCardBelow({root.Path()}), "");
    EXPECT_EQ(FindCameraCardBelow({}), "");
}

TEST(MakeTemporaryFolder, MakesAFreshOneEachTime) {
    const TemporaryFolder one, two;
    EXPECT_TRUE(IsFolder(one.Path()));
    EXPECT_NE(one.Path(), two.Path());
    EXPECT_TRUE(ListFolder(one.Path()).empty());
}

TEST(MakeTemporaryFolder, LiesBelowTheVariable) {
    const TemporaryFolder parent;
    const ScopedVariable variable("TMPDIR", parent.Path());
    const TemporaryFolder child;
    EXPECT_EQ(FolderOfPath(child.Path()), parent.Path());
}

}  // namespace
}  // namespace kalmora::files
