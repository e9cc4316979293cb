#include "rewrite/safe_rewrite.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "base/log.h"
#include "platform/edit_file.h"
#include "rewrite/rewrite_journal.h"
#include "rewrite/temp_folder.h"
#include "store/data_folder.h"
#include "store/store_fixture.h"
#include "support/machine.h"
#include "support/permissions.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SafeRewriteTest : public StoreTest {
protected:
    SafeRewriteTest() { State().settings.TempFolder = At("Temp"); }
    ~SafeRewriteTest() override {
        State().settings.TempFolder.clear();
        OpenLog("");
    }

    static PlanChange Change(std::uint64_t offset, std::uint64_t oldLength, std::string content) {
        return [=](FileChange& change) {
            change.offset = offset;
            change.oldLength = oldLength;
            change.content = content;
            return RewriteResult::Written;
        };
    }
    std::vector<std::string> InTemp() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(At("Temp")))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string Log() const { return ContentOf(At("log")); }
};

// What a run leaves when it ends between its record and its end.
class CutOffTest : public SafeRewriteTest {
protected:
    CutOffTest() { std::filesystem::create_directory(At("Temp")); }

    RewriteRecord RecordOf(const std::string& path, RewriteRecord::Strategy strategy) const {
        RewriteRecord record;
        record.strategy = strategy;
        record.path = path;
        const auto status = files::GetStatus(path);
        if (status) {
            record.oldSize = status->size;
            record.volume = status->volume;
            record.identity = status->identity;
            record.accessed = status->accessed;
            record.written = status->written;
        }
        return record;
    }
    void Leave(const std::vector<RewriteRecord>& records) const {
        RewriteJournal journal;
        ASSERT_EQ(journal.Open(At("Temp")), files::FileResult::Done);
        ASSERT_EQ(journal.Write(records), files::FileResult::Done);
    }
    // "old words" becoming "new words" at the beginning of the file.
    RewriteRecord InPlaceRecord(const std::string& path) const {
        RewriteRecord record = RecordOf(path, RewriteRecord::Strategy::InPlace);
        record.newSize = record.oldSize;
        record.oldLength = 3;
        record.oldBytes = "old";
        record.newBytes = "new";
        return record;
    }
    // "old words" becoming "newer words", with its copy.
    RewriteRecord CopiedRecord(const std::string& path) const {
        RewriteRecord record = RecordOf(path, RewriteRecord::Strategy::Copied);
        record.oldSize = 9;
        record.newSize = 11;
        record.oldLength = 3;
        record.newBytes = "newer";
        record.copyName = "$" + std::filesystem::path(path).filename().string();
        Put("Temp/" + record.copyName, "old words");
        return record;
    }
    bool IsJournalClear() const {
        RewriteJournal journal;
        return journal.Open(At("Temp")) == files::FileResult::Done && journal.Read().empty();
    }
};

TEST_F(SafeRewriteTest, ChangesOneStretchAndNothingElse) {
    const std::string path = Put("a.bin", "0123456789");
    EXPECT_EQ(SafeRewrite(path, Change(2, 3, "abc")), RewriteResult::Written);
    EXPECT_EQ(ContentOf(path), "01abc56789");
    EXPECT_EQ(SafeRewrite(path, Change(2, 3, "longer")), RewriteResult::Written);
    EXPECT_EQ(ContentOf(path), "01longer56789");
    EXPECT_EQ(SafeRewrite(path, Change(2, 6, "")), RewriteResult::Written);
    EXPECT_EQ(ContentOf(path), "0156789");
    EXPECT_EQ(SafeRewrite(path, Change(7, 0, "end")), RewriteResult::Written);
    EXPECT_EQ(ContentOf(path), "0156789end");
    EXPECT_EQ(SafeRewrite(path, Change(0, 10, "")), RewriteResult::Written);
    EXPECT_EQ(ContentOf(path), "");
    EXPECT_EQ(SafeRewrite(path, Change(0, 0, "back")), RewriteResult::Written);
    EXPECT_EQ(ContentOf(path), "back");
    EXPECT_THAT(InTemp(), ElementsAre("rewrite.journal", "rewrite.lock"));
}

TEST_F(SafeRewriteTest, LargeStretchesAndLargeFilesGoTheSameWay) {
    const std::string old(3u << 20, 'o');
    for (const auto& [offset, length, added] : {std::tuple{5u, 4096u, 8192u},
                                                {4096u, 0u, 4096u},
                                                {1u, 2u << 20, 2u << 20},
                                                {0u, 0u, 3u << 20},
                                                {100u, 2u << 20, 10u},
                                                {(3u << 20) - 1, 1u, 4097u}}) {
        const std::string path = Put("a.bin", old), fresh(added, 'n');
        ASSERT_EQ(SafeRewrite(path, Change(offset, length, fresh)), RewriteResult::Written);
        std::string expected = old;
        expected.replace(offset, length, fresh);
        EXPECT_TRUE(ContentOf(path) == expected) << offset << ' ' << length << ' ' << added;
    }
}

TEST_F(SafeRewriteTest, StaysTheSameFileUnderBothOfItsNames) {
    const std::string path = Put("a.bin", "old words");
    std::filesystem::create_hard_link(path, At("b.bin"));
    std::filesystem::create_symlink(path, At("c.bin"));
    const auto before = files::GetStatus(path);
    EXPECT_EQ(SafeRewrite(At("c.bin"), Change(0, 3, "newer")), RewriteResult::Written);
    EXPECT_EQ(ContentOf(At("b.bin")), "newer words");
    const auto after = files::GetStatus(path);
    EXPECT_EQ(after->identity, before->identity);
    EXPECT_EQ(after->created, before->created);
}

TEST_F(SafeRewriteTest, LastWriteIsTheLocalClockOrTheMoment) {
    const std::string path = Put("a.bin", "old words");
    files::SetTimes(path, FileTime{123'456'789'000'000'000}, FileTime{123'456'000'000'000'000});
    for (const char* content : {"new", "newer", "newer"}) {
        EXPECT_TRUE(IsDone(SafeRewrite(path, Change(0, ContentOf(path).find(' '), content))));
        EXPECT_EQ(files::GetStatus(path)->written.ticks, 128'710'449'302'500'000u) << content;
    }
    const std::uint64_t before = CurrentFileTime().ticks;
    EXPECT_EQ(SafeRewrite(path,
                          [](FileChange& change) {
                              change.content = "x";
                              change.stamp = Stamp::Now;
                              return RewriteResult::Written;
                          }),
              RewriteResult::Written);
    EXPECT_GE(files::GetStatus(path)->written.ticks, before);
}

TEST_F(SafeRewriteTest, LastAccessStays) {
    const std::string path = Put("a.bin", "old words");
    files::SetTimes(path, FileTime{123'456'789'000'000'000}, FileTime{123'456'000'000'000'000});
    for (const char* content : {"new", "newer", "newer"}) {
        EXPECT_TRUE(IsDone(SafeRewrite(path, Change(0, 3, content))));
        EXPECT_EQ(files::GetStatus(path)->accessed.ticks, 123'456'789'000'000'000u) << content;
    }
}

TEST_F(SafeRewriteTest, WhatThePlanSaysEndsIt) {
    OpenLog(At("log"));
    const std::string path = Put("a.bin", "old words");
    for (const RewriteResult result :
         {RewriteResult::Unsupported, RewriteResult::TooLarge, RewriteResult::Failed}) {
        EXPECT_EQ(SafeRewrite(path, [&](FileChange&) { return result; }), result);
        EXPECT_THAT(Log(), testing::HasSubstr("not written (" + std::string(NameOf(result)) + "): " + path));
    }
    EXPECT_EQ(ContentOf(path), "old words");
}

TEST_F(SafeRewriteTest, EachResultHasAName) {
    std::vector<std::string> names;
    for (int i = 0; i <= static_cast<int>(RewriteResult::Failed); ++i)
        names.emplace_back(NameOf(static_cast<RewriteResult>(i)));
    EXPECT_THAT(names,
                ElementsAre("written", "unchanged", "unreadable", "unsupported", "unsupported", "unsupported",
                            "unsupported", "unsupported", "unsupported", "too large", "too large", "denied",
                            "no space", "in use", "changed meanwhile", "failed"));
}

TEST_F(SafeRewriteTest, WhatCannotBeChangedWithoutGuessingHasAReasonOfItsOwn) {
    std::set<std::string> reasons;
    for (int i = 0; i <= static_cast<int>(RewriteResult::Failed); ++i)
        if (const char* reason = ReasonOf(static_cast<RewriteResult>(i))) reasons.insert(reason);
    EXPECT_THAT(reasons, testing::SizeIs(6));
    EXPECT_STREQ(ReasonOf(RewriteResult::MakerNoteUnclear), "its maker note could not be followed");
    EXPECT_EQ(ReasonOf(RewriteResult::TooLarge), nullptr);
    EXPECT_EQ(ReasonOf(RewriteResult::Denied), nullptr);
}

TEST_F(SafeRewriteTest, FileThatCannotBeWrittenIsLeft) {
    const auto plan = Change(0, 3, "new");
    EXPECT_EQ(SafeRewrite(At("absent"), plan), RewriteResult::Unreadable);
    EXPECT_EQ(SafeRewrite(home, plan), RewriteResult::Unreadable);
    EXPECT_EQ(SafeRewrite("", plan), RewriteResult::Unreadable);
    EXPECT_EQ(SafeRewrite("/dev/null", plan), RewriteResult::Unreadable);
    const std::string path = Put("a.bin", "old words");
    test::MakeReadOnly(path);
    EXPECT_EQ(SafeRewrite(path, plan), RewriteResult::Denied);
    EXPECT_EQ(ContentOf(path), "old words");
    const std::string pipe = At("pipe");
    ASSERT_TRUE(test::MakePipe(pipe));
    EXPECT_FALSE(IsDone(SafeRewrite(pipe, plan)));
}

TEST_F(SafeRewriteTest, WithoutATempFolderNothingIsTouched) {
    const std::string path = Put("a.bin", "old words");
    Put("file");
    for (const std::string& temp : {std::string(), At("file"), At("file/Temp")}) {
        State().settings.TempFolder = temp;
        EXPECT_FALSE(IsDone(SafeRewrite(path, Change(0, 3, "new")))) << temp;
        EXPECT_EQ(ContentOf(path), "old words");
    }
}

TEST_F(SafeRewriteTest, FileThatAnotherHasLockedIsInUse) {
    const std::string path = Put("a.bin", "old words");
    files::EditFile other;
    ASSERT_EQ(other.Open(path), files::FileResult::Done);
    ASSERT_EQ(other.TryLock(), files::EditFile::Lock::Taken);
    EXPECT_EQ(SafeRewrite(path, Change(0, 3, "new")), RewriteResult::InUse);
    other.Close();
    EXPECT_EQ(SafeRewrite(path, Change(0, 3, "new")), RewriteResult::Written);
}

TEST_F(SafeRewriteTest, FileThatIsReplacedWhileItIsLookedAtIsLeft) {
    const std::string path = Put("a.bin", "old words");
    for (const char* content : {"new", "newer"}) {
        EXPECT_EQ(SafeRewrite(path,
                              [&](FileChange& change) {
                                  Put("b.bin", "another program's");
                                  std::filesystem::rename(At("b.bin"), path);
                                  change.oldLength = 3;
                                  change.content = content;
                                  return RewriteResult::Written;
                              }),
                  RewriteResult::Changed);
        EXPECT_EQ(ContentOf(path), "another program's");
    }
}

TEST_F(SafeRewriteTest, FileThatIsWrittenWhileItIsLookedAtIsLeft) {
    const std::string path = Put("a.bin", "old words");
    for (const char* content : {"new", "newer"}) {
        EXPECT_EQ(SafeRewrite(path,
                              [&](FileChange& change) {
                                  Put("a.bin", "longer than it was");
                                  change.oldLength = 3;
                                  change.content = content;
                                  return RewriteResult::Written;
                              }),
                  RewriteResult::Changed);
        EXPECT_EQ(ContentOf(path), "longer than it was");
        Put("a.bin", "old words");
    }
}

TEST_F(SafeRewriteTest, StretchThatLeavesTheFileIsRefused) {
    const std::string path = Put("a.bin", "old words");
    EXPECT_EQ(SafeRewrite(path, Change(10, 0, "x")), RewriteResult::Changed);
    EXPECT_EQ(SafeRewrite(path, Change(5, 5, "x")), RewriteResult::Changed);
    EXPECT_EQ(SafeRewrite(path, Change(5, UINT64_MAX, "x")), RewriteResult::Changed);
    EXPECT_EQ(ContentOf(path), "old words");
}

TEST_F(SafeRewriteTest, ScratchFilesOfEarlierWorkGo) {
    Put("Temp/$old.jpg");
    Put("Temp/kept.jpg");
    EXPECT_EQ(SafeRewrite(Put("a.bin", "old words"), Change(0, 3, "new")), RewriteResult::Written);
    EXPECT_THAT(InTemp(), ElementsAre("kept.jpg", "rewrite.journal", "rewrite.lock"));
}

TEST_F(SafeRewriteTest, ManyGiveEachItsResult) {
    std::vector<std::string> paths;
    for (int i = 0; i < 100; ++i)
        paths.push_back(i % 10 == 9 ? At("absent") : Put("f" + std::to_string(i), "old words"));
    const std::vector<RewriteResult> results =
        SafeRewriteAll(paths, [](std::size_t index, FileChange& change) {
            change.oldLength = 3;
            change.content = index % 3 == 0 ? "newer" : "new";
            return index % 7 == 6 ? RewriteResult::Unsupported : RewriteResult::Written;
        });
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (i % 10 == 9) {
            EXPECT_EQ(results[i], RewriteResult::Unreadable);
        } else if (i % 7 == 6) {
            EXPECT_EQ(results[i], RewriteResult::Unsupported);
            EXPECT_EQ(ContentOf(paths[i]), "old words");
        } else {
            EXPECT_EQ(results[i], RewriteResult::Written);
            EXPECT_EQ(ContentOf(paths[i]), i % 3 == 0 ? "newer words" : "new words");
        }
    }
}

TEST_F(SafeRewriteTest, FileThatIsInTheListTwiceIsChangedTwice) {
    const std::string path = Put("a.bin", "0");
    std::filesystem::create_hard_link(path, At("b.bin"));
    const std::vector<std::string> paths{path, At("b.bin"), path};
    SafeRewriteAll(paths, [&](std::size_t, FileChange& change) {
        change.oldLength = 1;
        change.content = std::string(1, static_cast<char>(ContentOf(path)[0] + 1));
        return RewriteResult::Written;
    });
    EXPECT_EQ(ContentOf(path), "3");
}

TEST_F(SafeRewriteTest, TwoThreadsWriteOneAfterTheOther) {
    const std::string path = Put("a.bin", "0");
    constexpr int kTurns = 40;
    const auto count = [&] {
        for (int i = 0; i < kTurns; ++i)
            while (SafeRewrite(path, [&](FileChange& change) {
                       const std::string old = ContentOf(path);
                       change.oldLength = old.size();
                       change.content = std::to_string(std::stoi(old) + 1);
                       return RewriteResult::Written;
                   }) != RewriteResult::Written) {
            }
    };
    std::thread other(count);
    count();
    other.join();
    EXPECT_EQ(ContentOf(path), std::to_string(2 * kTurns));
}

// ---- what an earlier run left
TEST_F(CutOffTest, TornFileIsRestored) {
    const std::string path = Put("a.bin", "old words");
    for (const char* torn : {"ned words", "old words", "new words"}) {
        Put("a.bin", "old words");
        Leave({InPlaceRecord(path)});
        Put("a.bin", torn);
        const bool isTorn = std::string_view(torn).starts_with("ned");
        EXPECT_EQ(RecoverRewrites(At("Temp")), isTorn ? 1 : 0) << torn;
        EXPECT_EQ(ContentOf(path), isTorn ? "old words" : torn);
        EXPECT_TRUE(IsJournalClear());
    }
}

TEST_F(CutOffTest, FileIsRestoredFromItsCopy) {
    const std::string path = Put("a.bin", "old words");
    for (const char* torn : {"newerords", "newer wor", "n", "", "old words", "newer words"}) {
        Put("a.bin", torn);
        Leave({CopiedRecord(path)});
        RecoverRewrites(At("Temp"));
        EXPECT_EQ(ContentOf(path), std::string_view(torn) == "newer words" ? "newer words" : "old words")
            << torn;
        EXPECT_THAT(InTemp(), ElementsAre("rewrite.journal", "rewrite.lock")) << torn;
    }
}

TEST_F(CutOffTest, FileThatAnEarlierVersionLeftToAProgramIsRestored) {
    for (const char* left : {"old words", "old wo", "the program's", ""}) {
        const std::string path = Put("a.bin", "old words");
        RewriteRecord record = RecordOf(path, RewriteRecord::Strategy::Tool);
        record.copyName = "$a.bin";
        Put("Temp/$a.bin", "old words");
        Leave({record});
        std::ofstream(path, std::ios::binary) << left;
        RecoverRewrites(At("Temp"));
        EXPECT_EQ(ContentOf(path), "old words") << left;
        EXPECT_THAT(InTemp(), ElementsAre("rewrite.journal", "rewrite.lock")) << left;
    }
}

TEST_F(CutOffTest, FileThatHasGoneComesBackFromItsCopy) {
    const std::string path = Put("a.bin", "old words");
    Leave({CopiedRecord(path)});
    std::filesystem::remove(path);
    EXPECT_EQ(RecoverRewrites(At("Temp")), 1);
    EXPECT_EQ(ContentOf(path), "old words");
}

TEST_F(CutOffTest, FileOfAnotherHandStaysAndSoDoesTheCopy) {
    const std::string path = Put("a.bin", "another program's");
    Leave({CopiedRecord(path)});
    EXPECT_EQ(RecoverRewrites(At("Temp")), 0);
    EXPECT_EQ(ContentOf(path), "another program's");
    EXPECT_EQ(ContentOf(At("Temp/kept-a.bin")), "old words");
    Put("a.bin", "XXX words");
    Leave({InPlaceRecord(path)});
    EXPECT_EQ(RecoverRewrites(At("Temp")), 0);
    EXPECT_EQ(ContentOf(path), "XXX words");
}

TEST_F(CutOffTest, NoteAboutADriveThatIsAwayWaits) {
    const std::string path = Put("card/a.bin", "newer");
    Leave({CopiedRecord(path)});
    std::filesystem::rename(At("card"), At("away"));
    EXPECT_EQ(RecoverRewrites(At("Temp")), 0);
    EXPECT_FALSE(IsJournalClear());
    EXPECT_TRUE(files::Exists(At("Temp/$a.bin"))) << "the sweep passes it over";
    // Other rewrites go on meanwhile, and keep the record.
    EXPECT_EQ(SafeRewrite(Put("b.bin", "old words"), Change(0, 3, "new")), RewriteResult::Written);
    EXPECT_EQ(SweepTempFolder(At("Temp")), 0);
    std::filesystem::rename(At("away"), At("card"));
    EXPECT_EQ(RecoverRewrites(At("Temp")), 1);
    EXPECT_EQ(ContentOf(path), "old words");
    EXPECT_TRUE(IsJournalClear());
}

TEST_F(CutOffTest, NextRewriteRecoversWhatWasLeft) {
    const std::string path = Put("a.bin", "old words");
    Leave({InPlaceRecord(path)});
    Put("a.bin", "nld words");
    EXPECT_EQ(SafeRewrite(Put("b.bin", "old words"), Change(0, 3, "new")), RewriteResult::Written);
    EXPECT_EQ(ContentOf(path), "old words");
}

TEST_F(CutOffTest, SettlingAFolderThatIsNotThereDoesNothing) {
    EXPECT_EQ(RecoverRewrites(At("absent")), 0);
    EXPECT_FALSE(files::Exists(At("absent")));
    EXPECT_EQ(RecoverRewrites(""), 0);
}

// A photo that a killed run had left half-written was read as a broken one.
TEST_F(CutOffTest, ReaderFindsEveryFileWhole) {
    const std::string record = Put("a.bin", "old words"), copied = Put("b.bin", "old words");
    Leave({InPlaceRecord(record), CopiedRecord(copied)});
    Put("a.bin", "nld words");
    Put("b.bin", "newer wor");
    EXPECT_THAT(RecoverBeforeReading(At("Temp")), IsEmpty());
    EXPECT_EQ(ContentOf(record), "old words");
    EXPECT_EQ(ContentOf(copied), "old words");
    EXPECT_TRUE(IsJournalClear());
}

TEST_F(CutOffTest, ReaderMakesNothingWhereNothingIsToBeDone) {
    EXPECT_THAT(RecoverBeforeReading(At("absent")), IsEmpty());
    EXPECT_FALSE(files::Exists(At("absent")));
    EXPECT_THAT(RecoverBeforeReading(At("Temp")), IsEmpty());
    EXPECT_THAT(InTemp(), IsEmpty());
    Put("Temp/rewrite.journal", "no journal");
    EXPECT_THAT(RecoverBeforeReading(At("Temp")), IsEmpty());
    EXPECT_THAT(InTemp(), ElementsAre("rewrite.journal"));
}

TEST_F(CutOffTest, ReaderGetsThePathsThatCannotBeRecoveredNow) {
    const std::string away = Put("card/b.bin", "newer");
    Leave({CopiedRecord(away)});
    std::filesystem::rename(At("card"), At("away"));
    EXPECT_THAT(RecoverBeforeReading(At("Temp")), ElementsAre(away));
}

TEST_F(CutOffTest, ReaderWaitsForWhoeverIsWriting) {
    const std::string path = Put("a.bin", "old words");
    Leave({InPlaceRecord(path)});
    Put("a.bin", "nld words");
    files::FileLock other;
    ASSERT_EQ(LockTempFolder(At("Temp"), other), files::FileResult::Done);
    std::atomic<bool> isWritten = false;
    std::thread writer([&] {
        Put("a.bin", "new words");
        isWritten = true;
        other.Release();
    });
    EXPECT_THAT(RecoverBeforeReading(At("Temp")), IsEmpty());
    EXPECT_TRUE(isWritten);
    writer.join();
    EXPECT_EQ(ContentOf(path), "new words");
}

// ---- others at work in the same folder
TEST_F(CutOffTest, FolderInWhichAnotherWritesIsLeftAlone) {
    const std::string path = Put("a.bin", "nld words");
    Put("Temp/$other.jpg");
    Leave({InPlaceRecord(path)});
    files::FileLock other;
    ASSERT_EQ(LockTempFolder(At("Temp"), other), files::FileResult::Done);
    EXPECT_EQ(RecoverRewrites(At("Temp")), 0);
    EXPECT_EQ(SweepTempFolder(At("Temp")), 0);
    EXPECT_TRUE(PrepareTempFolder(At("Temp")));
    EXPECT_TRUE(files::Exists(At("Temp/$other.jpg")));
    EXPECT_EQ(ContentOf(path), "nld words");
    other.Release();
    EXPECT_EQ(RecoverRewrites(At("Temp")), 1);
    EXPECT_EQ(ContentOf(path), "old words");
    EXPECT_FALSE(files::Exists(At("Temp/$other.jpg")));
}

// A process writes again and again while this one starts and stops; killed in the end, it leaves nothing
// torn.
TEST_F(CutOffTest, StartAndStopDoNotDisturbAnotherProcess) {
    const std::string path = Put("a.bin", std::string(200'000, 'a')), ready = At("ready");
    test::ChildProcess writer([&] {
        for (char letter = 'b';; letter = letter == 'z' ? 'b' : static_cast<char>(letter + 1)) {
            // Of another length each time, so that it needs its copy.
            const std::string content(200'000 + static_cast<std::size_t>(letter), letter);
            const RewriteResult result = SafeRewrite(path, [&](FileChange& change) {
                change.oldLength = files::GetStatus(path)->size;
                change.content = content;
                return RewriteResult::Written;
            });
            if (result != RewriteResult::Written) return 1;
            files::AppendToFile(ready, "x");
        }
    });
    const auto written = [&] {
        const auto status = files::GetStatus(ready);
        return status ? status->size : 0;
    };
    constexpr std::uint64_t kWrites = 60;
    int starts = 0;
    while (written() < kWrites && writer.IsRunning()) {
        RecoverRewrites(At("Temp"));
        PrepareTempFolder(At("Temp"));
        SweepTempFolder(At("Temp"));
        ++starts;
    }
    EXPECT_GE(written(), kWrites) << "the writer was refused";
    EXPECT_GT(starts, 0);
    writer.Kill();
    RecoverRewrites(At("Temp"));
    const std::string content = ContentOf(path);
    EXPECT_EQ(content.find_first_not_of(content[0]), std::string::npos);
    EXPECT_EQ(content.size(), 200'000 + static_cast<std::size_t>(content[0]));
}

// Who asks again at once gets the folder after those who wait.
TEST_F(CutOffTest, WhoWaitsGetsItsTurn) {
    constexpr int kTurns = 20;
    std::atomic<bool> stop{false};
    std::atomic<int> greedy{0};
    std::thread other([&] {
        while (!stop) {
            files::FileLock lock;
            if (LockTempFolder(At("Temp"), lock) == files::FileResult::Done) ++greedy;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    while (greedy == 0) std::this_thread::yield();
    const int before = greedy;
    for (int i = 0; i < kTurns; ++i) {
        files::FileLock lock;
        ASSERT_EQ(LockTempFolder(At("Temp"), lock), files::FileResult::Done);
    }
    EXPECT_LE(greedy - before, 3 * kTurns);
    stop = true;
    other.join();
}

}  // namespace
}  // namespace kalmora
