// Loading a day: from its index file, or from its folder.

#include <filesystem>
#include <thread>

#include "index_fixture.h"
#include "support/machine.h"
#include "support/permissions.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using DayIndexLoad = IndexTest;
using DayIndexFolder = IndexTest;

constexpr char kRecord[] = "FILE=gone.jpg\nSIZE=1,2\nTIME=(1,2)\nDATE=2008/11/13 1:2:3\nCOMM=cat\n-\n";

TEST_F(DayIndexLoad, GoodIndexIsServedWithoutALookAtTheFiles) {
    PutInDay("new.jpg", PhotoTaken("2008:11:13 10:00:00"));
    const std::string index = PutIndex(kRecord);
    Touch(index, 1);
    const DayIndex day = LoadDay();
    EXPECT_THAT(NamesOf(day), ElementsAre("gone.jpg"));
    EXPECT_EQ(day.entries.front()->comment, "cat");
    EXPECT_FALSE(day.dirty);
    EXPECT_EQ(files::GetStatus(index)->written.ticks, 128'710'000'010'000'000u);  // not written
}

TEST_F(DayIndexLoad, HeaderAloneIsAnEmptyDayWhateverTheFolderHolds) {
    PutInDay("new.jpg", PhotoTaken("2008:11:13 10:00:00"));
    PutIndex("");
    EXPECT_THAT(LoadDay().entries, IsEmpty());
    EXPECT_EQ(IndexOf(), "# Calendar Index [0.99]\n");
}

TEST_F(DayIndexLoad, FileWithoutAByteIsAnEmptyDay) {
    PutInDay("new.jpg", PhotoTaken("2008:11:13 10:00:00"));
    PutInDay(kIndexFileName, "");
    EXPECT_THAT(LoadDay().entries, IsEmpty());
    EXPECT_EQ(IndexOf(), "");
}

TEST_F(DayIndexLoad, MissingIndexIsMadeFromTheFolder) {
    PutInDay("b.jpg", PhotoTaken("2008:11:13 08:00:00", 200));
    PutInDay("a.jpg", PhotoTaken("2008:11:13 09:00:00"));
    Touch(PathOf("a.jpg"), 0);
    Touch(PathOf("b.jpg"), 0);
    const DayIndex day = LoadDay();
    EXPECT_THAT(NamesOf(day), ElementsAre("a.jpg", "b.jpg"));
    EXPECT_FALSE(day.dirty);
    // In the order of time, with the size fitted into the largest thumbnail.
    EXPECT_EQ(IndexOf(),
              "# Calendar Index [0.99]\n"
              "FILE=b.jpg\nSIZE=240,180\nTIME=(1C94510,250A6000)\nDATE=2008/11/13 8:0:0\nEVAL=0,0,0\nFACE=0\n"
              "MODE=0\nVALS=200,0,0,0,0\nCOMM=\n-\n"
              "FILE=a.jpg\nSIZE=240,180\nTIME=(1C94510,250A6000)\nDATE=2008/11/13 9:0:0\nEVAL=0,0,0\nFACE=0\n"
              "MODE=0\nVALS=0,0,0,0,0\nCOMM=\n-\n");
}

TEST_F(DayIndexLoad, OtherVersionIsMadeAnew) {
    PutInDay("a.jpg", PhotoTaken("2008:11:13 09:00:00"));
    for (const char* text : {"# Calendar Index [1.00]\nFILE=old.jpg\n-\n", "nonsense\n", "\n"}) {
        PutInDay(kIndexFileName, text);
        EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.jpg")) << text;
        EXPECT_THAT(IndexOf(), testing::StartsWith("# Calendar Index [0.99]\nFILE=a.jpg\n")) << text;
    }
}

TEST_F(DayIndexLoad, BytesOfEveryKindAreReadOrMadeAnew) {
    PutInDay("a.jpg", PhotoTaken("2008:11:13 09:00:00"));
    std::string noise;
    for (int i = 0; i < 5000; ++i) noise += static_cast<char>(i * i * 7 >> 3);
    PutInDay(kIndexFileName, noise);
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.jpg"));
    PutIndex(noise + "\nFILE=b.jpg\n-\n");
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("b.jpg"));
}

TEST_F(DayIndexLoad, DayWithoutAFolderIsEmptyAndLoaded) {
    const DayIndex day = LoadDay();
    EXPECT_THAT(day.entries, IsEmpty());
    EXPECT_EQ(day.folder, "");
    EXPECT_FALSE(HasIndex());
}

TEST_F(DayIndexLoad, WithoutARootItFails) {
    State().settings.DataDirectory.clear();
    DayIndex day;
    EXPECT_FALSE(day.Load(2008, 11, 13));
}

TEST_F(DayIndexLoad, EmptyRootMeansTheOneInUse) {
    PutIndex(kRecord);
    DayIndex day;
    EXPECT_TRUE(day.Load(2008, 11, 13));
    EXPECT_THAT(NamesOf(day), ElementsAre("gone.jpg"));
}

TEST_F(DayIndexLoad, FolderThatCannotBeWrittenServesFromMemory) {
    PutInDay("a.jpg", PhotoTaken("2008:11:13 09:00:00"));
    MakeFolder(IndexPath().substr(home.size() + 1));  // nothing can be written in its place
    const DayIndex day = LoadDay();
    EXPECT_THAT(NamesOf(day), ElementsAre("a.jpg"));
    EXPECT_TRUE(day.dirty);
}

TEST_F(DayIndexLoad, WriteProtectedIndexStaysAsItIs) {
    PutInDay("a.jpg", PhotoTaken("2008:11:13 09:00:00"));
    const std::string index = PutInDay(kIndexFileName, "nonsense\n");
    test::MakeReadOnly(index);
    const DayIndex day = LoadDay();
    EXPECT_THAT(NamesOf(day), ElementsAre("a.jpg"));
    EXPECT_TRUE(day.dirty);
    EXPECT_EQ(IndexOf(), "nonsense\n");
}

TEST_F(DayIndexLoad, LinkInPlaceOfTheIndexIsReplacedAndWhatItPointsAtStays) {
    PutInDay("a.jpg", PhotoTaken("2008:11:13 09:00:00"));
    const std::string outside = Put("diary.txt", "dear diary");
    std::filesystem::create_symlink(outside, IndexPath());
    LoadDay();
    EXPECT_EQ(ContentOf(outside), "dear diary");
    EXPECT_FALSE(std::filesystem::is_symlink(IndexPath()));
}

TEST_F(DayIndexLoad, StopWhileReadingEndsItAndWritesNothing) {
    // Long enough that the request arrives while it is read.
    std::string records;
    for (int i = 0; i < 200000; ++i) records += "FILE=" + std::to_string(i) + "\n-\n";
    PutIndex(records);
    DayIndex day;
    day.dataRoot = root;
    StopSource stop;
    std::thread stopper([&] { stop.RequestStop(); });
    const bool loaded = day.Load(2008, 11, 13, stop.Token());
    stopper.join();
    EXPECT_FALSE(loaded);
    EXPECT_LT(day.entries.size(), 200000u);
    EXPECT_EQ(IndexOf().size(), records.size() + 24);
}

TEST_F(DayIndexLoad, InterruptWhileMadeFromTheFolderWritesNothing) {
    PutInDay("a.jpg", PhotoTaken("2008:11:13 09:00:00"));
    interrupt.RequestStop();
    DayIndex day;
    day.dataRoot = root;
    EXPECT_FALSE(day.Load(2008, 11, 13, interrupt.Token()));
    EXPECT_FALSE(HasIndex());
}

TEST_F(DayIndexLoad, TimeOrderIsByDate) {
    PutIndex(
        "FILE=c.jpg\nDATE=2008/11/13 3:0:0\n-\nFILE=a.jpg\nDATE=2008/11/13 1:0:0\n-\n"
        "FILE=b.jpg\nDATE=2007/11/13 9:0:0\n-\n");
    const DayIndex day = LoadDay();
    ASSERT_EQ(day.timeOrder.size(), 3u);
    EXPECT_EQ(day.timeOrder[0].Path(), PathOf("b.jpg"));
    EXPECT_EQ(day.timeOrder[1].Path(), PathOf("a.jpg"));
    EXPECT_EQ(day.timeOrder[2].Path(), PathOf("c.jpg"));
    EXPECT_THAT(NamesOf(day), ElementsAre("a.jpg", "b.jpg", "c.jpg"));
}

TEST_F(DayIndexLoad, OfTwoRecordsOfOneFileTheLastOneStands) {
    PutIndex("FILE=a.jpg\nCOMM=one\n-\nFILE=b.jpg\n-\nFILE=a.jpg\nCOMM=two\n-\n");
    const DayIndex day = LoadDay();
    EXPECT_THAT(NamesOf(day), ElementsAre("a.jpg", "b.jpg"));
    EXPECT_EQ(day.Find(PathOf("a.jpg"))->comment, "two");
}

TEST_F(DayIndexLoad, IndexOfTheOtherPlatformIsReadAndWrittenBackInOurs) {
    PutInDay("花火.jpg", PhotoTaken("2008:11:13 09:00:00"));
    PutInDay("new.jpg", PhotoTaken("2008:11:13 10:00:00"));
    const FileTime written = files::GetStatus(PathOf("花火.jpg"))->written;
    char time[40];
    std::snprintf(time, sizeof time, "TIME=(%X,%X)\r\n", written.High(), written.Low());
    PutInDay(kIndexFileName,
             "# Calendar Index [0.99]\r\nFILE=\x89\xD4\x89\xCE.jpg\r\nSIZE=640,480\r\n" + std::string(time) +
                 "DATE=2008/11/13 9:0:0\r\nEVAL=1,2,3\r\nFACE=0\r\nMODE=0\r\nVALS=0,0,0,0,0\r\n"
                 "COMM=\xB6\xDF\xB2\r\n-\r\n");
    DayIndex day = LoadDay();
    ASSERT_THAT(NamesOf(day), ElementsAre("花火.jpg"));
    EXPECT_EQ(day.entries.front()->comment, "ｶﾟｲ");
    day.dataRoot = root;
    day.Update(2008, 11, 13);
    EXPECT_THAT(NamesOf(day), ElementsAre("new.jpg", "花火.jpg"));
    const std::string text = IndexOf();
    EXPECT_EQ(text.find('\r'), std::string::npos);
    EXPECT_THAT(text, testing::HasSubstr("FILE=\x89\xD4\x89\xCE.jpg\nSIZE=640,480\n"));
    EXPECT_THAT(text, testing::HasSubstr("EVAL=1,2,3\n"));
    EXPECT_THAT(text, testing::HasSubstr("COMM=\xB6\xDF\xB2\n-\n"));
}

// ---- the folder walk

TEST_F(DayIndexFolder, CertainExtensionsAreLeftOut) {
    for (const char* name : {"a.jpg", "b.LOG", "c.log", "Thumbs.db", "x.cidx", "KM2008.log", "noextension",
                             "d.txt", "e.verylongext"})
        PutInDay(name);
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.jpg", "d.txt", "e.verylongext", "noextension"));
}

TEST_F(DayIndexFolder, WalkEndsAfterTheFirstSubFolder) {
    for (const char* name :
         {"a.txt", "B.txt", "c/inside.txt", "c/zz/deep.txt", "c/zzz.txt", "d.txt", "e/other.txt"})
        PutInDay(name);
    // "zzz.txt" comes after "zz" and "d.txt" after "c".
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("B.txt", "a.txt", "c/inside.txt", "c/zz/deep.txt"));
}

TEST_F(DayIndexFolder, FolderWithTheIndexNameIsPassedOver) {
    PutInDay("$calendar.cidx/inside.txt");
    PutInDay("a.txt");
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.txt"));
}

TEST_F(DayIndexFolder, LinkedFoldersAreWalkedOnceAsTheyAreShown) {
    PutInDay("z.txt");
    MakeFolder("outside");
    files::WriteWholeFile(At("outside/b.txt"), "bird");
    std::filesystem::create_directory_symlink(At("outside"), PathOf("link"));
    std::filesystem::create_directory_symlink(At("outside"), PathOf("other"));
    std::filesystem::create_directory_symlink(At("outside"), At("outside/round"));
    const DayIndex day = LoadDay();
    ASSERT_EQ(day.entries.size(), 2u);
    const std::string linked = day.entries.front()->path.substr(day.folder.size() + 1);
    EXPECT_TRUE(linked == "link/b.txt" || linked == "other/b.txt") << linked;
    EXPECT_EQ(day.entries.back()->path, PathOf("z.txt"));
    EXPECT_EQ(day.entries.front()->comment, "bird");
}

TEST_F(DayIndexLoad, CommentsAreCutWhereTheReaderWouldRefuseTheFile) {
    PutInDay("a.txt", std::string(2000, 'x'));
    PutInDay("b.txt", std::string(30, 'y'));
    const DayIndex day = LoadDay();
    const std::string whole = day.MakeText(), cut = day.MakeText(1500);
    EXPECT_EQ(day.MakeText(whole.size()), whole);
    EXPECT_LE(cut.size(), 1500u);
    EXPECT_THAT(cut, HasSubstr("FILE=a.txt\n"));
    EXPECT_THAT(cut, HasSubstr("COMM=" + std::string(1024, 'x') + "\n"));
    EXPECT_THAT(cut, HasSubstr("COMM=" + std::string(30, 'y') + "\n"));
    EXPECT_EQ(day.MakeText(100), "");
}

TEST_F(DayIndexFolder, NestingHasAnEnd) {
    std::string deep;
    for (int i = 0; i < 100; ++i) deep += "d/";
    PutInDay(deep + "bottom.txt");
    PutInDay("a.txt");
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("a.txt"));
}

TEST_F(DayIndexFolder, WhatIsNoOrdinaryFileDoesNotBlock) {
    PutInDay("a.txt");
    ASSERT_TRUE(test::MakePipe(PathOf("pipe.txt")));
    const DayIndex day = LoadDay();
    EXPECT_THAT(NamesOf(day), ElementsAre("a.txt", "pipe.txt"));
    EXPECT_EQ(day.Find(PathOf("pipe.txt"))->comment, "");
}

TEST_F(DayIndexFolder, WhatAKilledWriterLeftIsRemovedAfterAnHour) {
    // No process has such a number.
    const std::string old = PutInDay(".kalmora-2147480000-7.cidx", "half"),
                      young = PutInDay(".kalmora-2147480000-8.cidx", "half"),
                      own = PutInDay(".kalmora-" + std::to_string(test::OwnProcessId()) + "-9.cidx", "half"),
                      other = PutInDay(".kalmora-x-1.cidx", "x");
    for (const std::string& path : {old, own, other}) Touch(path, 0);
    EXPECT_THAT(LoadDay().entries, IsEmpty());
    EXPECT_FALSE(files::Exists(old));
    EXPECT_TRUE(files::Exists(young));
    EXPECT_TRUE(files::Exists(own));
    EXPECT_TRUE(files::Exists(other));
}

TEST_F(DayIndexFolder, MissingFolderFails) {
    DayIndex day;
    EXPECT_FALSE(day.LoadFolder(At("nowhere")));
    EXPECT_FALSE(day.LoadFolder(""));
}

TEST_F(DayIndexFolder, NamesOutsideTheCodePageComeBack) {
    for (const char* name : {"😀.txt", "été.txt", "back\\slash.txt", "new\nline.txt", "bad\xFF.txt"})
        PutInDay(name);
    const auto names = NamesOf(LoadDay());
    EXPECT_EQ(names.size(), 5u);
    EXPECT_EQ(NamesOf(LoadDay()), names);  // now from the file
}

// ---- adding and writing

using DayIndexAdd = IndexTest;

TEST_F(DayIndexAdd, NewFileIsReadAndTakesItsPlaceInTime) {
    PutInDay("b.jpg", PhotoTaken("2008:11:13 10:00:00"));
    DayIndex day = LoadDay();
    const std::string early = PutInDay("c.jpg", PhotoTaken("2008:11:13 09:00:00"));
    const EntryPointer entry = day.Add(early);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->date.hour, 9);
    EXPECT_TRUE(day.dirty);
    EXPECT_THAT(NamesOf(day), ElementsAre("b.jpg", "c.jpg"));
    EXPECT_EQ(day.timeOrder.front().Path(), early);
    EXPECT_TRUE(day.Write());
    EXPECT_FALSE(day.dirty);
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("b.jpg", "c.jpg"));
}

TEST_F(DayIndexAdd, KnownFileThatHasNotChangedIsNotRead) {
    const std::string path = PutInDay("a.txt", "cat");
    Touch(path, 0);
    DayIndex day = LoadDay();
    PutInDay("a.txt", "dog");
    Touch(path, 0);
    EXPECT_EQ(day.Add(path)->comment, "cat");
    EXPECT_FALSE(day.dirty);
}

TEST_F(DayIndexAdd, StaleFileIsReadAgainAndKeepsItsPlaceInTime) {
    PutInDay("a.jpg", PhotoTaken("2008:11:13 08:00:00"));
    PutInDay("b.jpg", PhotoTaken("2008:11:13 09:00:00"));
    Touch(PathOf("a.jpg"), 0);
    DayIndex day = LoadDay();
    PutInDay("a.jpg", PhotoTaken("2008:11:13 23:00:00"));
    Touch(PathOf("a.jpg"), 1);
    EXPECT_EQ(day.Add(PathOf("a.jpg"))->date.hour, 23);
    EXPECT_TRUE(day.dirty);
    EXPECT_EQ(day.timeOrder.front().Path(), PathOf("a.jpg"));
    day.Write();
    EXPECT_EQ(LoadDay().timeOrder.back().Path(), PathOf("a.jpg"));
}

TEST_F(DayIndexAdd, FileThatCannotBeReadHasARecordToo) {
    MakeFolder("files/2008/200811/2008_1113");
    DayIndex day = LoadDay();
    const EntryPointer entry = day.Add(PathOf("not yet.lnk"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->width, -1);
    EXPECT_TRUE(day.Write());
    EXPECT_THAT(NamesOf(LoadDay()), ElementsAre("not yet.lnk"));
}

TEST_F(DayIndexAdd, CopiesShareTheirRecords) {
    PutInDay("a.txt", "cat");
    const DayIndex day = LoadDay();
    const DayIndex copy = day;
    EXPECT_EQ(copy.entries.front(), day.entries.front());
}

using DayIndexWrite = IndexTest;

TEST_F(DayIndexWrite, NothingIsWrittenWhileMemoryAndFileAgree) {
    PutIndex("FILE=a.jpg\n-\n");
    DayIndex day = LoadDay();
    files::RemoveFile(IndexPath());
    EXPECT_TRUE(day.Write());
    EXPECT_FALSE(HasIndex());
}

TEST_F(DayIndexWrite, DayWithoutAFolderIsNotWritten) {
    DayIndex unloaded;
    unloaded.dirty = true;
    EXPECT_FALSE(unloaded.Write());
    PutInDay("a.txt");
    DayIndex day = LoadDay();
    day.dirty = true;
    files::RemoveFolderTree(DayFolder());
    EXPECT_TRUE(day.Write());
    EXPECT_FALSE(files::Exists(DayFolder()));
}

TEST_F(DayIndexWrite, FailureKeepsTheOldFileAndTheDirtyMark) {
    PutInDay("a.txt");
    DayIndex day = LoadDay();
    const std::string old = IndexOf();
    test::MakeReadOnly(IndexPath());
    PutInDay("b.txt");
    day.Add(PathOf("b.txt"));
    EXPECT_FALSE(day.Write());
    EXPECT_TRUE(day.dirty);
    EXPECT_EQ(IndexOf(), old);
    test::MakeWritable(IndexPath());
    EXPECT_TRUE(day.Write());
    EXPECT_NE(IndexOf(), old);
}

TEST_F(DayIndexWrite, LeavesNothingBesideTheIndex) {
    PutInDay("a.txt");
    LoadDay();
    EXPECT_EQ(files::ListFolder(DayFolder()).size(), 2u);
}

TEST_F(DayIndexWrite, BigDayIsWrittenWhole) {
    constexpr int kFiles = 3000;
    for (int i = 0; i < kFiles; ++i) PutInDay(std::to_string(i) + ".txt", "text " + std::to_string(i));
    EXPECT_EQ(LoadDay().entries.size(), static_cast<std::size_t>(kFiles));
    const DayIndex again = LoadDay();
    EXPECT_EQ(again.entries.size(), static_cast<std::size_t>(kFiles));
    EXPECT_EQ(again.Find(PathOf("2999.txt"))->comment, "text 2999");
}

}  // namespace
}  // namespace kalmora
