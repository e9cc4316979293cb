#include "base/path_names.h"

#include <gtest/gtest.h>

namespace kalmora {
namespace {

TEST(FolderOfPath, IsWhatStandsBeforeTheLastSeparator) {
    EXPECT_EQ(FolderOfPath("/a/b/c"), "/a/b");
    EXPECT_EQ(FolderOfPath("/a"), "/");
    EXPECT_EQ(FolderOfPath("a"), ".");
    EXPECT_EQ(FolderOfPath(""), ".");
}

TEST(IsBelow, GoesByWholeNamesAndEitherSeparator) {
    EXPECT_TRUE(IsBelow("/data/2008/a.jpg", "/data"));
    EXPECT_TRUE(IsBelow("\\data\\a.jpg", "/data"));
    EXPECT_FALSE(IsBelow("/database/a.jpg", "/data"));
    EXPECT_FALSE(IsBelow("/data", "/data"));
    EXPECT_FALSE(IsBelow("/dat", "/data"));
    EXPECT_FALSE(IsBelow("/data", ""));
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

TEST(Join, PutsOneSeparatorBetweenFolderAndName) {
    EXPECT_EQ(files::Join("/data", "2008"), "/data/2008");
    EXPECT_EQ(files::Join("/data/", "2008"), "/data/2008");
    EXPECT_EQ(files::Join("/data/", "/2008"), "/data/2008");
    EXPECT_EQ(files::Join("/", "data"), "/data");
}

TEST(Join, GivesTheNameAloneForAnEmptyFolder) { EXPECT_EQ(files::Join("", "a.jpg"), "a.jpg"); }

TEST(Join, GivesTheFolderAloneForAnEmptyName) { EXPECT_EQ(files::Join("/data", ""), "/data"); }

}  // namespace
}  // namespace kalmora
