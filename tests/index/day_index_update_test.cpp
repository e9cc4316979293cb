// What happens when the index and the files disagree.
#include "base/log.h"
#include "index_fixture.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DayIndexUpdate : public IndexTest {
protected:
    // A day that is loaded, with "a.txt" and "b.txt" in it, both of one time.
    DayIndexUpdate() {
        Touch(PutInDay("a.txt", "cat"), 0);
        Touch(PutInDay("b.txt", "dog"), 0);
        day = LoadDay();
    }
    void Update() {
        day.dataRoot = root;
        EXPECT_TRUE(day.Update(2008, 11, 13, interrupt.Token()));
    }
    // Whether the update wrote the file: its content is marked before.
    bool Writes() {
        const std::string before = IndexOf();
        Touch(IndexPath(), 7);
        const FileTime marked = files::GetStatus(IndexPath())->written;
        Update();
        return files::GetStatus(IndexPath())->written != marked || IndexOf() != before;
    }
    std::string CommentOf(std::string_view name) const {
        const EntryPointer entry = day.Find(PathOf(name));
        return entry ? entry->comment : "(none)";
    }

    DayIndex day;
};

TEST_F(DayIndexUpdate, FileOfTheSameTimeIsServedAfterALoadAndKeptByAnUpdate) {
    Touch(PutInDay("a.txt", "bird"), 0);  // other content, same time: it is not read
    EXPECT_EQ(LoadDay().Find(PathOf("a.txt"))->comment, "cat");
    EXPECT_FALSE(Writes());
    EXPECT_EQ(CommentOf("a.txt"), "cat");
}

TEST_F(DayIndexUpdate, FileOfAnotherTimeIsServedAsItWasAndReadAgainByAnUpdate) {
    Touch(PutInDay("a.txt", "bird"), 1);
    EXPECT_EQ(LoadDay().Find(PathOf("a.txt"))->comment, "cat");
    EXPECT_TRUE(Writes());
    EXPECT_EQ(CommentOf("a.txt"), "bird");
    EXPECT_EQ(LoadDay().Find(PathOf("a.txt"))->comment, "bird");
}

TEST_F(DayIndexUpdate, TouchedFileIsReadAgainThoughNothingElseChanged) {
    Touch(PathOf("a.txt"), 1);
    const std::string before = IndexOf();
    Update();
    EXPECT_NE(IndexOf(), before);
}

TEST_F(DayIndexUpdate, ClockThatJumpedBackMakesAFileStaleToo) {
    Touch(PutInDay("a.txt", "bird"), 0);
    ASSERT_TRUE(files::SetTimes(PathOf("a.txt"), FileTime{125'000'000'000'000'000u},
                                FileTime{125'000'000'000'000'000u}));
    Update();
    EXPECT_EQ(CommentOf("a.txt"), "bird");
}

TEST_F(DayIndexUpdate, RecordThatABrokenOffReadingLeftIsMendedThoughItsTimeIsRight) {
    const std::string taken = "DATE=2008/11/13 18:42:7\n", size = "SIZE=240,180\n";
    Touch(PutInDay("p.jpg", PhotoTaken("2008:11:13 18:42:07")), 0);
    Update();
    const std::string good = IndexOf();
    ASSERT_NE(good.find(taken), std::string::npos) << good;
    ASSERT_NE(good.find(size), std::string::npos) << good;
    const auto with = [&good](std::string_view line, std::string_view other) {
        std::string text = good;
        return text.replace(text.rfind(line), line.size(), other);
    };
    const std::string bad[] = {with(size, "SIZE=-1,-1\n"),
                               with(size, "SIZE=240,-5\n"),
                               with(size, "SIZE=10001,180\n"),
                               with(taken, "DATE=0/0/0 0:0:0\n"),
                               with(taken, "DATE=2008/13/1 1:1:1\n"),
                               with(taken, "DATE=2008/2/30 1:1:1\n"),
                               with(taken, "DATE=2008/11/13 24:0:0\n")};
    for (const std::string& text : bad) {
        PutInDay(kIndexFileName, text);
        day = LoadDay();
        EXPECT_TRUE(Writes()) << text;
        EXPECT_NE(IndexOf().find(taken), std::string::npos) << IndexOf();
        EXPECT_NE(IndexOf().find(size), std::string::npos) << IndexOf();
    }
}

TEST_F(DayIndexUpdate, PhotoThatItselfTellsNonsenseIsNotWrittenEachTime) {
    Touch(PutInDay("odd.jpg", PhotoTaken("2008:11:13 99:42:07")), 0);
    Touch(PutInDay("broken.jpg", "no picture"), 0);
    Touch(PutInDay("no_extension"), 0);
    Update();
    day = LoadDay();
    EXPECT_FALSE(Writes());
}

TEST_F(DayIndexUpdate, NewFileIsNotSeenAfterALoadAndReadByAnUpdate) {
    PutInDay("c.txt", "new");
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.txt", "b.txt"));
    EXPECT_TRUE(Writes());
    EXPECT_THAT(NamesOf(day), ElementsAre("a.txt", "b.txt", "c.txt"));
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.txt", "b.txt", "c.txt"));
}

TEST_F(DayIndexUpdate, FileThatHasGoneIsServedAfterALoadAndDroppedByAnUpdate) {
    files::RemoveFile(PathOf("a.txt"));
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.txt", "b.txt"));
    EXPECT_TRUE(Writes());
    EXPECT_THAT(NamesOf(day), ElementsAre("b.txt"));
    EXPECT_THAT(IndexOf(), testing::Not(testing::HasSubstr("a.txt")));
}

TEST_F(DayIndexUpdate, DayWhoseFolderHasGoneIsEmpty) {
    files::RemoveFolderTree(DayFolder());
    EXPECT_THAT(LoadDay().entries, IsEmpty());
    Update();
    EXPECT_THAT(day.entries, IsEmpty());
    EXPECT_FALSE(files::Exists(DayFolder()));
}

TEST_F(DayIndexUpdate, DroppedFileLeavesTheOrderOfTimeWithTheNextLoad) {
    files::RemoveFile(PathOf("a.txt"));
    Update();
    EXPECT_EQ(day.timeOrder.size(), 2u);
    EXPECT_EQ(LoadDay().timeOrder.size(), 1u);
}

TEST_F(DayIndexUpdate, FileThatComesBackStandsOnceInTheFile) {
    files::RemoveFile(PathOf("a.txt"));
    Update();
    PutInDay("a.txt", "back");
    Update();
    EXPECT_EQ(day.timeOrder.size(), 2u);
    const std::string text = IndexOf();
    const std::size_t first = text.find("FILE=a.txt");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(text.find("FILE=a.txt", first + 1), std::string::npos);
}

TEST_F(DayIndexUpdate, FileBehindASubFolderKeepsItsRecord) {
    PutInDay("aa/inside.txt");
    Update();
    // "b.txt" comes after the folder and is not visited, but it is there.
    EXPECT_THAT(NamesOf(day), ElementsAre("a.txt", "aa/inside.txt", "b.txt"));
    Touch(PutInDay("b.txt", "changed"), 5);
    Update();
    EXPECT_EQ(CommentOf("b.txt"), "dog");
}

TEST_F(DayIndexUpdate, LinkThatLeadsNowhereHasARecordAfterALoadAndNoneAfterAnUpdate) {
    std::filesystem::create_symlink(At("nowhere.txt"), PathOf("link.txt"));
    EXPECT_FALSE(Writes());
    EXPECT_THAT(NamesOf(day), ElementsAre("a.txt", "b.txt"));
    files::RemoveFile(IndexPath());
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.txt", "b.txt", "link.txt"));
    day = LoadDay();
    EXPECT_TRUE(Writes());
    EXPECT_THAT(NamesOf(day), ElementsAre("a.txt", "b.txt"));
    EXPECT_FALSE(Writes());  // and so it stays
    Put("nowhere.txt", "bird");
    EXPECT_TRUE(Writes());
    EXPECT_EQ(CommentOf("link.txt"), "bird");
}

TEST_F(DayIndexUpdate, ManyLostFilesAreDroppedTogether) {
    for (int i = 0; i < 500; ++i) PutInDay("n" + std::to_string(i) + ".txt");
    Update();
    for (int i = 0; i < 500; i += 2) files::RemoveFile(PathOf("n" + std::to_string(i) + ".txt"));
    Update();
    EXPECT_EQ(day.entries.size(), 252u);
    EXPECT_EQ(LoadDay().entries.size(), 252u);
}

TEST_F(DayIndexUpdate, UnchangedDayIsNotWritten) { EXPECT_FALSE(Writes()); }

TEST_F(DayIndexUpdate, IndexThatCannotBeWrittenIsTriedAgainTheNextTime) {
    PutInDay("c.txt");
    files::RemoveFile(IndexPath());
    MakeFolder(IndexPath().substr(home.size() + 1));
    Update();
    EXPECT_TRUE(day.dirty);
    files::RemoveFolderTree(IndexPath());
    Update();
    EXPECT_FALSE(day.dirty);
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.txt", "b.txt", "c.txt"));
}

TEST_F(DayIndexUpdate, WithoutALoadEveryFileIsReadAsNew) {
    PutIndex("FILE=a.txt\nCOMM=from the index\n-\n");
    DayIndex fresh;
    fresh.dataRoot = root;
    fresh.Update(2008, 11, 13);
    EXPECT_EQ(fresh.Find(PathOf("a.txt"))->comment, "cat");
    EXPECT_EQ(fresh.entries.size(), 2u);
}

TEST_F(DayIndexUpdate, InterruptLeavesTheFileAsItIs) {
    PutInDay("c.txt");
    const std::string before = IndexOf();
    interrupt.RequestStop();
    Update();
    EXPECT_EQ(IndexOf(), before);
}

TEST_F(DayIndexUpdate, RootlessDayDoesNothing) {
    State().settings.DataDirectory.clear();
    DayIndex rootless;
    EXPECT_TRUE(rootless.Update(2008, 11, 13));
    EXPECT_THAT(rootless.entries, IsEmpty());
}

TEST_F(DayIndexUpdate, IsToldInTheLog) {
    ASSERT_TRUE(OpenLog(At("log.dat")));
    Update();
    OpenLog("");
    EXPECT_THAT(ContentOf(At("log.dat")), testing::HasSubstr("Update: 2008/11/13"));
    EXPECT_THAT(ContentOf(At("log.dat")), testing::HasSubstr("UpdateIndex: " + DayFolder()));
}

}  // namespace
}  // namespace kalmora
