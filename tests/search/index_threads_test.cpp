// Everything that works on the index at once: no thread waits for ever, no index file is torn, and when all
// is quiet one update makes it right.
#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "base/dates.h"
#include "index/index_fixture.h"
#include "index/index_text.h"
#include "index/update.h"
#include "search/search_run.h"

namespace kalmora {
namespace {

class IndexThreads : public IndexTest {
protected:
    IndexThreads() {
        clock.now = {2008, 12, 1, 15, 10, 0, 0, 0};
        State().settings.NumberOfLoadIndex = 2;
        for (const int month : {11, 12})
            for (const int day : {1, 13})
                for (const char* name : {"a.txt", "b.txt", "c.txt"}) PutIn(month, day, name);
        ResetSearch();
    }
    ~IndexThreads() override { ResetSearch(); }
    std::string PutIn(int month, int day, const std::string& name) {
        const std::string path = files::Join(DayFolder(day, month), name);
        return Put(path.substr(home.size() + 1), "text of " + name);
    }
    // Each job on a thread of its own, so many times.
    static void RunAll(const std::vector<std::function<void(int round)>>& jobs, int rounds) {
        std::vector<std::thread> threads;
        threads.reserve(jobs.size());
        for (const auto& job : jobs)
            threads.emplace_back([&job, rounds] {
                for (int round = 0; round < rounds; ++round) job(round);
            });
        for (std::thread& thread : threads) thread.join();
    }
    // What is on the disk is whole: it is read to its end and written as the same.
    void ExpectWholeIndexes() const {
        for (const int month : {11, 12})
            for (const int day : {1, 13}) {
                const std::string folder = DayFolder(day, month);
                const std::string text = ContentOf(files::Join(folder, kIndexFileName));
                std::vector<EntryPointer> records;
                ASSERT_EQ(ReadIndexText(text, folder, StopToken(), records), IndexReading::Done);
                std::string again = IndexHeader();
                for (const EntryPointer& record : records) AppendIndexRecord(again, *record, folder);
                EXPECT_EQ(again, text);
                for (const files::FolderEntry& entry : files::ListFolder(folder))
                    EXPECT_FALSE(entry.name.starts_with(".kalmora")) << entry.name;
            }
    }
};

void LookAtAll(const IndexManager& manager) {
    for (const MonthPointer& month : manager.Months())
        for (int day = 1; day <= MonthIndex::kDays; ++day) {
            const auto records = month->Day(day);
            for (const EntryPointer& entry : records->entries) {
                ASSERT_TRUE(entry->path.starts_with(records->folder));
                ASSERT_EQ(records->Find(entry->path), entry);
            }
            for (std::size_t i = 1; i < records->timeOrder.size(); ++i)
                ASSERT_LE(CompareSystemTimes(records->timeOrder[i - 1].Date(), records->timeOrder[i].Date()),
                          0);
        }
}

TEST_F(IndexThreads, AllKindsOfWorkAtOnce) {
    IndexManager& index = MainIndex();
    RunAll({[](int) { UpdateMonthOfBothRoots(2008, 11); }, [](int) { UpdateMonthOfBothRoots(2008, 12); },
            [](int) { PreloadIndexes(); }, [&](int round) { index.Load(2008, round % 3 == 0 ? 0 : 11, 0); },
            [&](int round) {
                const std::string path = PutIn(11, 13, "n" + std::to_string(round) + ".txt");
                Touch(path, static_cast<std::uint64_t>(round));
                AddFileToIndex(path);
                if (round % 2 == 1) files::RemoveFile(path);
            },
            [](int) {
                Search("text", SearchScope::View, {Level::Month, 2008, 11, 0}, StopToken());
                Search("text of", SearchScope::View, {Level::Year, 2008, 0, 0}, StopToken());
            },
            [&](int round) {
                LookAtAll(index);
                if (round % 5 == 0) StopIndexing("now and then");
            }},
           20);
    ExpectWholeIndexes();
    // Each call may take back one stop request of those that came last.
    for (int i = 0; i < 4; ++i) UpdateMonthOfBothRoots(2008, 11);
    std::vector<std::string> names{"a.txt", "b.txt", "c.txt"};
    for (int round = 0; round < 20; round += 2) names.push_back("n" + std::to_string(round) + ".txt");
    EXPECT_THAT(NamesOf(LoadDay(13)), testing::UnorderedElementsAreArray(names));
}

TEST_F(IndexThreads, FileThatChangesWhileItIsReadIsRightAfterTheNextUpdate) {
    const std::string path = PathOf("a.txt");
    RunAll({[&](int round) {
                const std::string word = "version" + std::to_string(round);
                // Written in two pieces, so that half of it can be met.
                std::ofstream file(path, std::ios::binary);
                file << word.substr(0, 4) << std::flush << word.substr(4);
                file.close();
                Touch(path, static_cast<std::uint64_t>(round));
            },
            [](int) { UpdateMonthOfBothRoots(2008, 11); }},
           100);
    UpdateMonthOfBothRoots(2008, 11);
    EXPECT_EQ(LoadDay().Find(path)->comment, "version99");
}

// A clock that is set back gives files the times of yesterday; one that is set forward, those of next
// century.
TEST_F(IndexThreads, TimesOfAnyCenturyAreTold) {
    for (const std::uint64_t ticks :
         {116'444'736'000'000'000u, 128'710'000'000'000'000u, 160'000'000'000'000'000u}) {
        const FileTime time{ticks};
        ASSERT_TRUE(files::SetTimes(PathOf("a.txt"), time, time));
        UpdateMonthOfBothRoots(2008, 11);
        EXPECT_EQ(LoadDay().Find(PathOf("a.txt"))->lastWriteTime, time);
    }
}

}  // namespace
}  // namespace kalmora
