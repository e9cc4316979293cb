// files::AppendToFile.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "platform/files.h"

namespace kalmora::files {

class AppendTest : public testing::Test {
protected:
    ~AppendTest() override { RemoveFolderTree(folder); }

    const std::string folder = MakeTemporaryFolder();
    const std::string path = Join(folder, "a.log");
};

TEST_F(AppendTest, MissingFileIsMadeAndGrows) {
    EXPECT_EQ(AppendToFile(path, "one\n"), FileResult::Done);
    EXPECT_EQ(AppendToFile(path, ""), FileResult::Done);
    EXPECT_EQ(AppendToFile(path, std::string("t\0wo\n", 5)), FileResult::Done);
    EXPECT_EQ(ReadWholeFile(path), std::string("one\nt\0wo\n", 9));
}

TEST_F(AppendTest, FolderOfTheFileIsNotMade) {
    EXPECT_EQ(AppendToFile(Join(folder, "absent/a.log"), "one"), FileResult::NotFound);
    EXPECT_FALSE(Exists(Join(folder, "absent")));
}

TEST_F(AppendTest, FolderTakesNothing) { EXPECT_NE(AppendToFile(folder, "one"), FileResult::Done); }

TEST_F(AppendTest, PipeWithoutAReaderIsNotWaitedFor) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_NE(AppendToFile(path, "one"), FileResult::Done);
}

}  // namespace kalmora::files
