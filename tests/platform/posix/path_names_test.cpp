#include "platform/posix/path_names.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "temporary_folder.h"

namespace kalmora {
namespace {

TEST(FolderOfPath, IsWhatStandsBeforeTheLastSeparator) {
    EXPECT_EQ(FolderOfPath("/a/b/c"), "/a/b");
    EXPECT_EQ(FolderOfPath("/a"), "/");
    EXPECT_EQ(FolderOfPath("a"), ".");
    EXPECT_EQ(FolderOfPath(""), ".");
}

TEST(NormalizePath, TakesOutDotsAndDoubledSeparators) {
    const struct {
        const char *path, *normalized;
    } cases[] = {
        {"/a/./b//c/", "/a/b/c"}, {"/a/../b", "/b"},   {"/../a", "/a"}, {"a/../..", ".."},
        {"../../a", "../../a"},   {"a/b/../c", "a/c"}, {"", "."},       {"/", "/"},
    };
    for (const auto& c : cases) EXPECT_EQ(NormalizePath(c.path), c.normalized) << c.path;
}

TEST(RelativePath, LeadsFromTheFolderToThePath) {
    EXPECT_EQ(RelativePath("/d/2008/200811/2008_1113", "/d/2008/200811/2008_1114/a.jpg"),
              "../2008_1114/a.jpg");
    EXPECT_EQ(RelativePath("/d", "/d/a.jpg"), "a.jpg");
    EXPECT_EQ(RelativePath("/d/e", "/f"), "../../f");
    EXPECT_EQ(RelativePath("/", "/f"), "f");
    EXPECT_EQ(RelativePath("/d", "/d"), "");
    EXPECT_EQ(RelativePath("/da", "/d/a"), "../d/a");
}

TEST(PhysicalPath, FollowsTheFoldersButNotTheLastName) {
    const test::TemporaryFolder folder;
    folder.AddFolder("real");
    ASSERT_EQ(symlink("real", (folder / "link").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", (folder / "real/end").c_str()), 0);
    const std::string real = PhysicalPath(folder / "real");
    EXPECT_EQ(PhysicalPath(folder / "link/end"), real + "/end");
    EXPECT_EQ(PhysicalPath(folder / "link/."), real);
    EXPECT_EQ(PhysicalPath("/no/such/../folder/x"), "/no/folder/x");
}

}  // namespace
}  // namespace kalmora
