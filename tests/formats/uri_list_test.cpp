#include "formats/uri_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kHost[] = "home";

TEST(UriList, GivesLocalPathsInOrder) {
    EXPECT_THAT(LocalPaths("file:///a/b.jpg\r\nfile:///c.txt\r\n", kHost), ElementsAre("/a/b.jpg", "/c.txt"));
    EXPECT_THAT(LocalPaths("file:///a\nfile:///b", kHost), ElementsAre("/a", "/b"));
}

TEST(UriList, UnescapesBytesWhateverTheirEncoding) {
    EXPECT_THAT(LocalPaths("file:///a%20b/%E4%BB%8A.jpg", kHost), ElementsAre("/a b/今.jpg"));
    EXPECT_THAT(LocalPaths("file:///%82%A0", kHost), ElementsAre("/\x82\xA0"));
    EXPECT_THAT(LocalPaths("file:///100%25%23%3f", kHost), ElementsAre("/100%#?"));
}

TEST(UriList, KnowsThisMachineByItsNames) {
    EXPECT_THAT(LocalPaths("file://localhost/a\r\nfile:/b\r\nFILE:///c\r\nfile://Home/d", kHost),
                ElementsAre("/a", "/b", "/c", "/d"));
    EXPECT_THAT(LocalPaths("file:///a\r\nfile://home/d", ""), ElementsAre("/a"));
}

TEST(UriList, LeavesOutWhatIsNoLocalFile) {
    EXPECT_THAT(
        LocalPaths("# comment\r\nhttp://example.com/a.jpg\r\nfile://elsewhere.invalid/a\r\n/plain/path\r\n"
                   "file:relative\r\nfile://\r\nfile:\r\n\r\n",
                   kHost),
        IsEmpty());
    EXPECT_THAT(LocalPaths("", kHost), IsEmpty());
}

TEST(UriList, TellsWhetherAnythingIsLeftOut) {
    EXPECT_TRUE(AreAllLocalPaths("# comment\r\nfile:///a\r\nfile:///b\r\n", kHost));
    EXPECT_TRUE(AreAllLocalPaths("", kHost));
    EXPECT_FALSE(AreAllLocalPaths("file:///a\r\nhttp://example.com/b\r\n", kHost));
    EXPECT_FALSE(AreAllLocalPaths("file:///a%zz\r\nfile:///b", kHost));
}

TEST(UriList, LeavesOutBrokenEscapesAndZeroBytes) {
    EXPECT_THAT(
        LocalPaths("file:///a%\r\nfile:///a%2\r\nfile:///a%zz\r\nfile:///a%00b\r\nfile:///good", kHost),
        ElementsAre("/good"));
    EXPECT_THAT(LocalPaths(std::string_view("file:///a\0file:///b\0", 20), kHost), ElementsAre("/a", "/b"));
}

TEST(UriList, AddressesComeBackAsTheSamePath) {
    std::string every = "/";
    for (int byte = 1; byte < 256; ++byte) every += static_cast<char>(byte);
    EXPECT_THAT(LocalPaths(FileUri(every), kHost), ElementsAre(every));
    EXPECT_EQ(FileUri("/a b/今.jpg"), "file:///a%20b/%E4%BB%8A.jpg");
}

}  // namespace
}  // namespace kalmora
