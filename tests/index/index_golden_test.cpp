// Index files as other programs, other versions and accidents leave them, and what is written back of each.
//
// golden/NAME.cidx is read as the index of 13 November 2008, golden/NAME.written is what comes of it.
#include <filesystem>

#include "index_fixture.h"
#include "source_folder.h"

namespace kalmora {
namespace {

using IndexGolden = IndexTest;

TEST_F(IndexGolden, EachFileIsReadByTheRulesAndWrittenBackToTheByte) {
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(SourceFolder(__FILE__) / "golden")) {
        if (file.path().extension() != ".cidx") continue;
        SCOPED_TRACE(file.path().stem());
        PutInDay(kIndexFileName, ContentOf(file.path()));
        const std::string expected =
            ContentOf(std::filesystem::path(file.path()).replace_extension("written"));
        DayIndex day = LoadDay();
        EXPECT_FALSE(day.dirty);
        EXPECT_EQ(IndexOf(), ContentOf(file.path()));  // a load writes nothing
        day.dirty = true;
        EXPECT_TRUE(day.Write());
        EXPECT_EQ(IndexOf(), expected);
        // What the program has written it reads as the same.
        DayIndex again = LoadDay();
        again.dirty = true;
        EXPECT_TRUE(again.Write());
        EXPECT_EQ(IndexOf(), expected);
        ++count;
    }
    EXPECT_GE(count, 18);
}

// ---- files that are no index at all

TEST_F(IndexGolden, LineOfAGigabyteIsReadUpToALimit) {
    const std::string path = PutIndex("FILE=a.jpg\nSIZE=1,2\n-\nFILE=b.jpg\nCOMM=");
    std::filesystem::resize_file(path, std::uintmax_t{1} << 30);  // the rest are zeros that take no room
    const DayIndex day = LoadDay();
    EXPECT_THAT(NamesOf(day), testing::ElementsAre("a.jpg"));
    const std::string name = PutIndex("FILE=");
    std::filesystem::resize_file(name, std::uintmax_t{1} << 30);
    EXPECT_THAT(LoadDay().entries, testing::IsEmpty());
}

TEST_F(IndexGolden, HeaderOfAGigabyteIsNone) {
    PutInDay("a.txt", "cat");
    const std::string path = PutInDay(kIndexFileName, "#");
    std::filesystem::resize_file(path, std::uintmax_t{1} << 30);
    EXPECT_THAT(NamesOf(LoadDay()), testing::ElementsAre("a.txt"));
    EXPECT_LT(IndexOf().size(), 1000u);
}

}  // namespace
}  // namespace kalmora
