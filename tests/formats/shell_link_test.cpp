#include "formats/shell_link.h"

#include <gtest/gtest.h>

namespace kalmora {
namespace {

ShellLinkTarget To(const std::string& path, const std::string& relative = "") {
    ShellLinkTarget target;
    target.path = path;
    target.relative = relative;
    return target;
}

TEST(ShellLink, StoresBothPathsAsTheyAreGiven) {
    for (const std::string path : {"/no/写真 表.jpg", "/no/party 😀.jpg", "/no/\x95\x5C\xFF.jpg", "/a\\b"}) {
        const auto paths = ParseShellLink(MakeShellLink(To(path, ".\\写真.jpg")));
        ASSERT_TRUE(paths);
        EXPECT_EQ(paths->absolute, path);
        EXPECT_EQ(paths->relative, ".\\写真.jpg");
    }
}

TEST(ShellLink, NeedsNoRelativePath) {
    const auto paths = ParseShellLink(MakeShellLink(To("/a")));
    ASSERT_TRUE(paths);
    EXPECT_EQ(paths->absolute, "/a");
    EXPECT_EQ(paths->relative, "");
}

TEST(ShellLink, LeavesOutARelativePathThatIsTooLongForTheFormat) {
    const std::string longest = std::string(0xFFFF, 'a');
    EXPECT_EQ(ParseShellLink(MakeShellLink(To("/a", longest)))->relative, longest);
    EXPECT_EQ(ParseShellLink(MakeShellLink(To("/a", longest + 'a')))->relative, "");
}

TEST(ShellLink, SaysWhatItsTargetIs) {
    ShellLinkTarget target = To("/a");
    target.size = 0x12345678;
    const std::string file = MakeShellLink(target);
    target.isFolder = true;
    const std::string folder = MakeShellLink(target);
    EXPECT_EQ(file.substr(24, 4), std::string("\x20\0\0\0", 4));
    EXPECT_EQ(file.substr(52, 4), "\x78\x56\x34\x12");
    EXPECT_EQ(folder.substr(24, 4), std::string("\x10\0\0\0", 4));
    EXPECT_EQ(folder.substr(52, 4), std::string(4, '\0'));
}

TEST(ShellLink, IsEmptyForWhatIsNone) {
    EXPECT_FALSE(ParseShellLink(""));
    EXPECT_FALSE(ParseShellLink(std::string(76, '\0')));
}

TEST(ShellLink, CutShortGivesWhatCanBeReadOfIt) {
    const std::string bytes = MakeShellLink(To("/a", ".\\b"));
    const auto paths = ParseShellLink(std::string_view(bytes).substr(0, bytes.size() - 6));
    ASSERT_TRUE(paths);
    EXPECT_EQ(paths->absolute, "/a");
    EXPECT_EQ(paths->relative, "");
}

}  // namespace
}  // namespace kalmora
