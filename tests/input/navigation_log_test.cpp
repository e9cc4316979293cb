#include "input/navigation_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "platform/files.h"
#include "state/app_state.h"
#include "support/still_clock.h"
#include "text/text.h"

namespace kalmora {

class NavigationLogTest : public testing::Test {
protected:
    NavigationLogTest() {
        State().settings.OutputNavigationLog = true;
        State().settings.AllowMultiDataDirectory = false;
        State().settings.DataDirectory = files::Join(folder, "life");
        files::MakeFolder(State().settings.DataDirectory);
    }
    ~NavigationLogTest() override {
        State().settings.OutputNavigationLog = false;
        State().settings.DataDirectory.clear();
        files::RemoveFolderTree(folder);
    }

    std::string Path() const { return files::Join(DayFolder(), "KM20081113.log"); }
    std::string DayFolder() const {
        return files::Join(State().settings.DataDirectory, "2008/200811/2008_1113");
    }
    std::string Log() const { return files::ReadWholeFile(Path()).value_or("(no file)"); }

    const std::string folder = files::MakeTemporaryFolder();
    test::StillClock clock{{2008, 11, 4, 13, 9, 5, 7, 0}};
};

TEST_F(NavigationLogTest, FirstEventOfADayMakesItsFolderAndFile) {
    EXPECT_TRUE(NavigationLog("(Year)\t%04d", 2008));
    EXPECT_EQ(Log(), "[2008/11/13 09:05:07]\t(Year)\t2008\n");
}

TEST_F(NavigationLogTest, EachEventOfAViewAddsALine) {
    for (int reload = 0; reload < 2; ++reload) NavigationLog("(Month)\t%04d/%02d", 2007, 3);
    clock.now.hour = 23;
    NavigationLog("(Day)\t%04d/%02d/%02d", 2007, 3, 9);
    EXPECT_EQ(Log(),
              "[2008/11/13 09:05:07]\t(Month)\t2007/03\n"
              "[2008/11/13 09:05:07]\t(Month)\t2007/03\n"
              "[2008/11/13 23:05:07]\t(Day)\t2007/03/09\n");
}

TEST_F(NavigationLogTest, NextDayHasAFileOfItsOwn) {
    NavigationLog("(Year)\t%04d", 2008);
    clock.now.month = 12;
    clock.now.day = 1;
    NavigationLog("(Year)\t%04d", 2008);
    EXPECT_EQ(Log(), "[2008/11/13 09:05:07]\t(Year)\t2008\n");
    const std::string next =
        files::Join(State().settings.DataDirectory, "2008/200812/2008_1201/KM20081201.log");
    EXPECT_EQ(files::ReadWholeFile(next), "[2008/12/01 09:05:07]\t(Year)\t2008\n");
}

TEST_F(NavigationLogTest, NothingIsWrittenWhileItIsOff) {
    State().settings.OutputNavigationLog = false;
    EXPECT_FALSE(NavigationLog("(Year)\t%04d", 2008));
    EXPECT_FALSE(NavigationLog(nullptr));
    EXPECT_TRUE(files::ListFolder(State().settings.DataDirectory).empty());
}

TEST_F(NavigationLogTest, CallWithoutAFormatSucceedsAndWritesNothing) {
    EXPECT_TRUE(NavigationLog(nullptr));
    EXPECT_TRUE(files::ListFolder(State().settings.DataDirectory).empty());
}

TEST_F(NavigationLogTest, LineFeedAtTheEndOfTheFormatIsDropped) {
    NavigationLog("(Play)\t%s\n", "a.mp3");
    NavigationLog("\n");
    EXPECT_EQ(Log(), "[2008/11/13 09:05:07]\t(Play)\ta.mp3\n[2008/11/13 09:05:07]\t\n");
}

TEST_F(NavigationLogTest, LineFeedOfANameStays) {
    NavigationLog("(Play)\t%s", "a\n");
    EXPECT_EQ(Log(), "[2008/11/13 09:05:07]\t(Play)\ta\n\n");
}

TEST_F(NavigationLogTest, TextIsInCodePage932) {
    NavigationLog("(Play)\t%s", "曲.mp3");
    EXPECT_EQ(Log(), "[2008/11/13 09:05:07]\t(Play)\t\x8B\xC8.mp3\n");
}

TEST_F(NavigationLogTest, TextOutsideOfTheCodePageTurnsTheWholeFileIntoUtf8) {
    NavigationLog("(Play)\t%s", "曲.mp3");
    NavigationLog("(Play)\t%s", "🎵.mp3");
    NavigationLog("(Play)\t%s", "歌.mp3");
    EXPECT_EQ(Log(),
              "\xEF\xBB\xBF[2008/11/13 09:05:07]\t(Play)\t曲.mp3\n"
              "[2008/11/13 09:05:07]\t(Play)\t🎵.mp3\n"
              "[2008/11/13 09:05:07]\t(Play)\t歌.mp3\n");
}

TEST_F(NavigationLogTest, LogTooLongToBeTurnedKeepsItsEncodingAndLosesNoCharacter) {
    NavigationLog("(Year)\t%04d", 2008);
    const std::string head((16u << 20) + 1, '-');
    ASSERT_EQ(files::WriteWholeFile(Path(), head), files::FileResult::Done);
    NavigationLog("(Play)\t%s", "🎵.mp3");
    EXPECT_EQ(Log().substr(head.size()), "[2008/11/13 09:05:07]\t(Play)\t&#x1F3B5;.mp3\n");
}

TEST_F(NavigationLogTest, VeryLongTextIsCutAtAWholeCharacter) {
    std::string title;
    while (title.size() < 0x50000) title += "曲";
    NavigationLog("%s", title.c_str());
    const std::string text = text::FromCp932(Log()).substr(sizeof("[2008/11/13 09:05:07]"));
    EXPECT_EQ(text, title.substr(0, 0x3FFFF / 3 * 3) + "\n");
}

TEST_F(NavigationLogTest, FolderThatCannotBeMadeIsAnAnswer) {
    const std::string year = files::Join(State().settings.DataDirectory, "2008");
    ASSERT_EQ(files::WriteWholeFile(year, "a file"), files::FileResult::Done);
    EXPECT_FALSE(NavigationLog("(Year)\t%04d", 2008));
}

TEST_F(NavigationLogTest, LinesWaitWhileTheDataFolderIsAwayAndNothingIsMadeInItsPlace) {
    const std::string away = files::Join(folder, "unplugged");
    ASSERT_EQ(files::Rename(State().settings.DataDirectory, away), files::FileResult::Done);
    EXPECT_FALSE(NavigationLog("(Year)\t%04d", 2008));
    clock.now.day = 14;
    EXPECT_FALSE(NavigationLog("(Month)\t%04d/%02d", 2008, 11));
    EXPECT_FALSE(files::Exists(State().settings.DataDirectory));

    ASSERT_EQ(files::Rename(away, State().settings.DataDirectory), files::FileResult::Done);
    EXPECT_TRUE(NavigationLog("(Day)\t%04d/%02d/%02d", 2008, 11, 13));
    EXPECT_EQ(Log(), "[2008/11/13 09:05:07]\t(Year)\t2008\n");
    EXPECT_EQ(files::ReadWholeFile(
                  files::Join(State().settings.DataDirectory, "2008/200811/2008_1114/KM20081114.log")),
              "[2008/11/14 09:05:07]\t(Month)\t2008/11\n[2008/11/14 09:05:07]\t(Day)\t2008/11/13\n");
}

TEST_F(NavigationLogTest, OfManyWaitingLinesTheLastThousandAreKept) {
    const std::string away = files::Join(folder, "unplugged");
    ASSERT_EQ(files::Rename(State().settings.DataDirectory, away), files::FileResult::Done);
    for (int line = 0; line < 1500; ++line) NavigationLog("(Play)\t%d", line);
    ASSERT_EQ(files::Rename(away, State().settings.DataDirectory), files::FileResult::Done);
    NavigationLog("(Play)\t1500");
    const std::string log = Log();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1000);
    EXPECT_TRUE(log.starts_with("[2008/11/13 09:05:07]\t(Play)\t501\n"));
    EXPECT_TRUE(log.ends_with("\t1500\n"));
}

TEST_F(NavigationLogTest, FileThatCannotBeWrittenIsPassedOver) {
    NavigationLog("(Year)\t%04d", 2008);
    ASSERT_EQ(files::RemoveFile(Path()), files::FileResult::Done);
    ASSERT_EQ(files::MakeFolder(Path()), files::FileResult::Done);
    EXPECT_TRUE(NavigationLog("(Year)\t%04d", 2008));
    EXPECT_TRUE(NavigationLog("(Play)\t%s", "🎵.mp3"));
    EXPECT_TRUE(files::IsFolder(Path()));
    EXPECT_EQ(files::ListFolder(DayFolder()).size(), 1u);
}

TEST_F(NavigationLogTest, LinesOfTwoThreadsStayWhole) {
    constexpr int kThreads = 4, kLines = 50;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([i] {
            for (int line = 0; line < kLines; ++line) NavigationLog("(Play)\t%s%d", i == 0 ? "🎵" : "曲", i);
        });
    }
    for (std::thread& thread : threads) thread.join();
    const std::string log = Log();
    std::size_t count = 0;
    for (std::size_t at = 3; at < log.size(); ++count) {
        const std::size_t end = log.find('\n', at);
        ASSERT_NE(end, std::string::npos);
        ASSERT_TRUE(log.substr(at, end - at).starts_with("[2008/11/13 09:05:07]\t(Play)\t")) << count;
        at = end + 1;
    }
    EXPECT_EQ(count, static_cast<std::size_t>(kThreads * kLines));
}

}  // namespace kalmora
