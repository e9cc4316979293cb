#include "store/shortcuts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/path_names.h"
#include "platform/files.h"
#include "support/temporary_folder.h"
#include "text/text.h"

namespace kalmora {
namespace {

using test::TemporaryFolder;
using testing::Optional;

std::string Number(std::uint64_t value, int bytes) {
    std::string out;
    for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
    return out;
}

std::string Wide(std::string_view text) { return text::ToUtf16(text, false); }

// A shortcut as other programs write it, part by part.
struct ForeignShortcut {
    std::string idList;  // the list without its length; none when empty
    bool hasInfo = false;
    bool isInfoWide = false;             // the block has the two wide offsets
    std::string localNarrow, localWide;  // narrow: bytes; wide: UTF-8
    std::string suffixNarrow, suffixWide;
    std::string shareNarrow, shareWide;  // a network share in place of a local path
    std::string name, relative, workingFolder;
    bool isWide = true;
    std::uint32_t moreFlags = 0;
    std::string tail;

    std::string Share() const {
        const std::string narrow = shareNarrow + '\0';
        const std::uint32_t header = shareWide.empty() ? 0x14 : 0x1C;
        const std::string wide = shareWide.empty() ? "" : Wide(shareWide) + Number(0, 2);
        std::string share = Number(header + narrow.size() + wide.size(), 4) + Number(2, 4) +
                            Number(header, 4) + Number(0, 4) + Number(0x20000, 4);
        if (!shareWide.empty()) share += Number(header + narrow.size(), 4) + Number(0, 4);
        return share + narrow + wide;
    }

    std::string Info() const {
        const bool isLocal = shareNarrow.empty();
        const std::uint32_t header = isInfoWide ? 0x24 : 0x1C;
        const std::string volume =
            isLocal ? Number(0x11, 4) + Number(3, 4) + Number(0x1234, 4) + Number(0x10, 4) + '\0' : "";
        const std::string share = isLocal ? "" : Share();
        const std::string narrow = isLocal ? localNarrow + '\0' : "";
        const std::string suffix = suffixNarrow + '\0';
        const std::string wide = isInfoWide && isLocal ? Wide(localWide) + Number(0, 2) : "";
        const std::string wideSuffix = isInfoWide ? Wide(suffixWide) + Number(0, 2) : "";
        const std::size_t volumeAt = header, narrowAt = volumeAt + volume.size(),
                          shareAt = narrowAt + narrow.size(), suffixAt = shareAt + share.size(),
                          wideAt = suffixAt + suffix.size(), wideSuffixAt = wideAt + wide.size(),
                          size = wideSuffixAt + wideSuffix.size();
        std::string info = Number(size, 4) + Number(header, 4) + Number(isLocal ? 1 : 2, 4) +
                           Number(isLocal ? volumeAt : 0, 4) + Number(isLocal ? narrowAt : 0, 4) +
                           Number(isLocal ? 0 : shareAt, 4) + Number(suffixAt, 4);
        if (isInfoWide) info += Number(isLocal ? wideAt : 0, 4) + Number(wideSuffixAt, 4);
        return info + volume + narrow + share + suffix + wide + wideSuffix;
    }

    std::string Text(const std::string& text) const {
        const std::string bytes = isWide ? Wide(text) : text::ToCp932(text);
        return Number(isWide ? bytes.size() / 2 : bytes.size(), 2) + bytes;
    }

    std::string Bytes() const {
        std::uint32_t flags = moreFlags | (isWide ? 0x80u : 0u);
        if (!idList.empty()) flags |= 0x1;
        if (hasInfo) flags |= 0x2;
        if (!name.empty()) flags |= 0x4;
        if (!relative.empty()) flags |= 0x8;
        if (!workingFolder.empty()) flags |= 0x10;
        std::string bytes = Number(0x4C, 4) + std::string("\x01\x14\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46", 16) +
                            Number(flags, 4) + std::string(52, '\0');
        if (!idList.empty()) bytes += Number(idList.size(), 2) + idList;
        if (hasInfo) bytes += Info();
        if (!name.empty()) bytes += Text(name);
        if (!relative.empty()) bytes += Text(relative);
        if (!workingFolder.empty()) bytes += Text(workingFolder);
        return bytes + tail;
    }
};

ForeignShortcut WindowsShortcut() {
    ForeignShortcut link;
    link.idList = std::string(300, '\x1F') + Number(0, 2);
    link.hasInfo = true;
    link.localNarrow = "C:\\life\\2008\\200811\\2008_1113\\A.JPG";
    link.name = "a note";
    link.relative = "..\\..\\200811\\2008_1113\\A.JPG";
    link.workingFolder = "C:\\life";
    link.tail = Number(0, 4);
    return link;
}

// ---- what this program writes

TEST(Shortcut, LeadsToItsTarget) {
    const TemporaryFolder folder;
    const std::string target = folder.Add("photo.jpg", "x");
    folder.AddFolder("links");
    ASSERT_TRUE(CreateShortcut(folder / "links/photo.lnk", target));
    EXPECT_THAT(ResolveShortcut(folder / "links/photo.lnk"), Optional(target));
}

TEST(Shortcut, LeadsToAFolderToo) {
    const TemporaryFolder folder;
    const std::string target = folder.AddFolder("2008");
    ASSERT_TRUE(CreateShortcut(folder / "a.lnk", target));
    EXPECT_THAT(ResolveShortcut(folder / "a.lnk"), Optional(target));
}

TEST(Shortcut, KeepsEveryName) {
    const TemporaryFolder folder;
    for (const std::string name : {"写真 表.jpg", "party 😀.jpg", "\x95\x5C\xFF.jpg", "a\\b.jpg", "〜～.jpg",
                                   "100%.jpg", "?*|.jpg", " ", "\xED\xB2\x80"}) {
        const std::string target = folder.Add(name, "x");
        ASSERT_TRUE(CreateShortcut(folder / "link.lnk", target));
        EXPECT_THAT(ResolveShortcut(folder / "link.lnk"), Optional(target)) << name;
        ASSERT_EQ(files::RemoveFile(target), files::FileResult::Done);
        EXPECT_THAT(ResolveShortcut(folder / "link.lnk"), Optional(target)) << name << " (gone)";
    }
}

TEST(Shortcut, StillLeadsToItsTargetAfterBothWereMovedTogether) {
    const TemporaryFolder folder;
    folder.AddFolder("old");
    folder.AddFolder("old/2008");
    folder.AddFolder("old/2009");
    const std::string target = folder.Add("old/2008/a.jpg", "x");
    ASSERT_TRUE(CreateShortcut(folder / "old/2009/a.lnk", target));
    ASSERT_EQ(files::Rename(folder / "old", folder / "new"), files::FileResult::Done);
    EXPECT_THAT(ResolveShortcut(folder / "new/2009/a.lnk"), Optional(folder / "new/2008/a.jpg"));
}

TEST(Shortcut, StillLeadsToItsTargetAfterItWasMovedAlone) {
    const TemporaryFolder folder;
    folder.AddFolder("one");
    folder.AddFolder("one/two");
    const std::string target = folder.Add("a.jpg", "x");
    ASSERT_TRUE(CreateShortcut(folder / "a.lnk", target));
    ASSERT_EQ(files::Rename(folder / "a.lnk", folder / "one/two/a.lnk"), files::FileResult::Done);
    EXPECT_THAT(ResolveShortcut(folder / "one/two/a.lnk"), Optional(target));
}

TEST(Shortcut, GivesTheStoredPathWhenNothingStandsAnywhere) {
    const TemporaryFolder folder;
    ASSERT_TRUE(CreateShortcut(folder / "a.lnk", "/no/such/place/a.jpg"));
    EXPECT_THAT(ResolveShortcut(folder / "a.lnk"), Optional(std::string("/no/such/place/a.jpg")));
}

TEST(Shortcut, LeadsRightFromAFolderThatIsReachedThroughALink) {
    const TemporaryFolder folder;
    folder.AddFolder("deep");
    folder.AddFolder("deep/data");
    // "../a.jpg" from the link's own place is another file than from the folder it names.
    folder.Add("deep/a.jpg", "the wrong one");
    const std::string target = folder.Add("a.jpg", "the right one");
    std::filesystem::create_directory_symlink("deep/data", folder / "data");
    ASSERT_TRUE(CreateShortcut(folder / "data/a.lnk", target));
    const auto found = ResolveShortcut(folder / "data/a.lnk");
    ASSERT_TRUE(found);
    EXPECT_EQ(files::ReadWholeFile(*found), "the right one");
}

TEST(Shortcut, TakesARelativeTargetFromTheCurrentFolder) {
    EXPECT_THAT(ReadShortcut(MakeShortcut("some/file", "/nowhere/at/all"), "/elsewhere"),
                Optional(files::AbsolutePath("some/file")));
}

TEST(Shortcut, ReplacesTheOneBefore) {
    const TemporaryFolder folder;
    ASSERT_TRUE(CreateShortcut(folder / "a.lnk", folder.Add("a.jpg")));
    ASSERT_TRUE(CreateShortcut(folder / "a.lnk", folder.Add("b.jpg")));
    EXPECT_THAT(ResolveShortcut(folder / "a.lnk"), Optional(folder / "b.jpg"));
}

TEST(Shortcut, IsNotMadeWhereNothingCanBeWritten) {
    const TemporaryFolder folder;
    EXPECT_FALSE(CreateShortcut(folder / "none/a.lnk", "/a.jpg"));
    EXPECT_FALSE(CreateShortcut(folder / "a.lnk", ""));
    EXPECT_FALSE(files::Exists(folder / "a.lnk"));
}

TEST(Shortcut, IsWrittenByteForByteAsTheFormatSays) {
    // The target does not exist, so no times and no size get in.
    const std::string bytes = MakeShortcut("/no/表.jpg", "/no");
    ForeignShortcut expected;
    expected.hasInfo = expected.isInfoWide = true;
    expected.localNarrow = "/no/\x95\x5C.jpg";
    expected.localWide = "/no/表.jpg";
    expected.relative = ".\\表.jpg";
    expected.tail = Number(0, 4);
    std::string wanted = expected.Bytes();
    wanted.replace(24, 4, Number(0x20, 4));          // an ordinary file
    wanted.replace(60, 4, Number(1, 4));             // a window of ordinary size
    wanted.replace(76 + 0x24 + 8, 4, Number(0, 4));  // no serial number
    EXPECT_EQ(bytes, wanted);
}

// ---- what others write

TEST(ForeignShortcut, LeadsToItsRelativePathWhenSomethingStandsThere) {
    const TemporaryFolder folder;
    folder.AddFolder("200811");
    folder.AddFolder("200811/2008_1113");
    folder.AddFolder("200812");
    folder.AddFolder("200812/2008_1201");
    const std::string target = folder.Add("200811/2008_1113/A.JPG", "x");
    EXPECT_THAT(ReadShortcut(WindowsShortcut().Bytes(), folder / "200812/2008_1201"), Optional(target));
}

TEST(ForeignShortcut, KeepsTheSeparatorsOfAPathThatCannotStandHere) {
    EXPECT_THAT(ReadShortcut(WindowsShortcut().Bytes(), "/nowhere"),
                Optional(std::string("C:\\life\\2008\\200811\\2008_1113\\A.JPG")));
}

TEST(ForeignShortcut, MayStoreItsTextsNarrow) {
    const TemporaryFolder folder;
    const std::string target = folder.Add("表.jpg", "x");
    ForeignShortcut link = WindowsShortcut();
    link.isWide = false;
    link.relative = ".\\表.jpg";
    link.localNarrow = "C:\\\x95\x5C.jpg";
    EXPECT_THAT(ReadShortcut(link.Bytes(), folder.Path()), Optional(target));
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"), Optional(std::string("C:\\表.jpg")));
}

TEST(ForeignShortcut, PrefersTheWidePathOfTheBlock) {
    ForeignShortcut link = WindowsShortcut();
    link.isInfoWide = true;
    link.localNarrow = "C:\\?.jpg";
    link.localWide = "C:\\😀.jpg";
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"), Optional(std::string("C:\\😀.jpg")));
    link.localWide = "";
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"), Optional(std::string("C:\\?.jpg")));
}

TEST(ForeignShortcut, JoinsTheSuffix) {
    ForeignShortcut link = WindowsShortcut();
    link.localNarrow = "C:\\life";
    link.suffixNarrow = "2008\\A.JPG";
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"), Optional(std::string("C:\\life\\2008\\A.JPG")));
    link.localNarrow = "C:\\";
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"), Optional(std::string("C:\\2008\\A.JPG")));
    link.isInfoWide = true;
    link.localWide = "/data";
    link.suffixWide = "写真.jpg";
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"), Optional(std::string("/data/写真.jpg")));
}

TEST(ForeignShortcut, MayLieOnANetworkShare) {
    ForeignShortcut link = WindowsShortcut();
    link.shareNarrow = "\\\\server\\photos";
    link.suffixNarrow = "2008\\A.JPG";
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"),
                Optional(std::string("\\\\server\\photos\\2008\\A.JPG")));
    link.shareWide = "\\\\server\\写真";
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"),
                Optional(std::string("\\\\server\\写真\\2008\\A.JPG")));
}

TEST(ForeignShortcut, WithoutARelativePathGivesTheAbsoluteOne) {
    ForeignShortcut link = WindowsShortcut();
    link.relative.clear();
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"), Optional(link.localNarrow));
}

TEST(ForeignShortcut, WithoutAnAbsolutePathGivesTheRelativeOne) {
    ForeignShortcut link;
    link.relative = "..\\a.jpg";
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere/at"), Optional(std::string("/nowhere/a.jpg")));
    link.idList = std::string(20, 'x');
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere/at"), Optional(std::string("/nowhere/a.jpg")));
}

TEST(ForeignShortcut, ThatSaysSoHasNoUseForItsBlock) {
    ForeignShortcut link = WindowsShortcut();
    link.moreFlags = 0x100;  // the block is to be passed over; then it is not there either
    link.hasInfo = false;
    link.relative = "a.jpg";
    EXPECT_THAT(ReadShortcut(link.Bytes(), "/nowhere"), Optional(std::string("/nowhere/a.jpg")));
}

TEST(ForeignShortcut, WithoutAnyPathLeadsNowhere) {
    ForeignShortcut link;
    EXPECT_FALSE(ReadShortcut(link.Bytes(), "/"));
    link.name = "a name is no path";
    link.idList = "xx";
    EXPECT_FALSE(ReadShortcut(link.Bytes(), "/"));
}

// ---- what is no shortcut

TEST(ReadShortcut, RefusesWhatIsNoShortcut) {
    EXPECT_FALSE(ReadShortcut("", "/"));
    EXPECT_FALSE(ReadShortcut("L", "/"));
    EXPECT_FALSE(ReadShortcut(std::string(76, '\0'), "/"));
    std::string bytes = WindowsShortcut().Bytes();
    EXPECT_TRUE(ReadShortcut(bytes, "/"));
    for (const std::size_t at : {0u, 4u, 19u}) {
        std::string other = bytes;
        other[at] = static_cast<char>(other[at] ^ 1);
        EXPECT_FALSE(ReadShortcut(other, "/")) << at;
    }
}

TEST(ReadShortcut, SurvivesEveryTruncation) {
    for (const std::string& bytes : {WindowsShortcut().Bytes(), MakeShortcut("/no/写真.jpg", "/no/way")}) {
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const auto target = ReadShortcut(std::string_view(bytes).substr(0, length), "/nowhere");
            if (length < 76) {
                EXPECT_FALSE(target) << length;
            }
        }
        EXPECT_TRUE(ReadShortcut(bytes, "/nowhere"));
    }
}

TEST(ReadShortcut, SurvivesLengthsAndOffsetsThatLie) {
    const std::string good = WindowsShortcut().Bytes();
    for (std::size_t at = 20; at + 4 <= good.size(); ++at)
        for (const std::uint32_t value :
             {0u, 1u, 0x1Bu, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFEu, 0xFFFFFFFFu}) {
            std::string bytes = good;
            bytes.replace(at, 4, Number(value, 4));
            ReadShortcut(bytes, "/nowhere");
        }
}

TEST(ReadShortcut, RefusesAPathThatDoesNotEnd) {
    ForeignShortcut link = WindowsShortcut();
    link.relative.clear();
    link.name.clear();
    link.workingFolder.clear();
    link.tail.clear();
    std::string bytes = link.Bytes();
    // No zero byte from the path to the end of the block.
    const std::size_t path = bytes.find("C:\\life");
    for (std::size_t at = path; at < bytes.size(); ++at) bytes[at] = 'x';
    EXPECT_FALSE(ReadShortcut(bytes, "/nowhere"));
}

TEST(ReadShortcut, TakesNoPathWithAZeroInside) {
    ForeignShortcut link;
    link.relative = std::string("a\0b", 3);
    EXPECT_FALSE(ReadShortcut(link.Bytes(), "/nowhere"));
}

TEST(ReadShortcut, DoesNotBelieveAnInfoBlockThatIsTooSmall) {
    ForeignShortcut link = WindowsShortcut();
    link.idList.clear();
    std::string bytes = link.Bytes();
    bytes.replace(76, 4, Number(0x1B, 4));
    EXPECT_FALSE(ReadShortcut(bytes, "/nowhere"));
}

TEST(ResolveShortcut, IsEmptyForWhatCannotBeRead) {
    const TemporaryFolder folder;
    EXPECT_FALSE(ResolveShortcut(folder / "absent.lnk"));
    EXPECT_FALSE(ResolveShortcut(folder.Path()));
    EXPECT_FALSE(ResolveShortcut(folder.Add("text.lnk", "just a text")));
    EXPECT_FALSE(ResolveShortcut(folder.Add("empty.lnk", "")));
}

}  // namespace
}  // namespace kalmora
