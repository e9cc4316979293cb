#include "index/month_index.h"

#include <array>
#include <chrono>
#include <future>
#include <thread>

#include "index/index_batch.h"
#include "index_fixture.h"
#include "support/closed_folder.h"

namespace kalmora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MonthTest : public IndexTest {
protected:
    MonthIndex month{2008, 11, root, context};
};
using MonthIndexLoad = MonthTest;
using MonthIndexGate = MonthTest;
using MonthIndexCopy = MonthTest;
using MonthUpdate = MonthTest;

// Waits for what another thread does, with a bound.
template <typename Condition>
bool Eventually(const Condition& condition) {
    for (int i = 0; i < 5000; ++i) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

// Holds the worker of a month at its first progress report until it is released.
class HeldWorker {
public:
    explicit HeldWorker(ProgressProbe& probe) : probe_(probe) {
        probe_.onProgress = [this](double, const std::string&) {
            if (!arrived_.exchange(true)) go_.get_future().wait();
        };
    }
    ~HeldWorker() {
        LetGo();
        probe_.onProgress = nullptr;
    }
    bool Arrived() const { return arrived_; }
    void LetGo() {
        if (!std::exchange(gone_, true)) go_.set_value();
    }

private:
    ProgressProbe& probe_;
    std::atomic<bool> arrived_ = false;
    bool gone_ = false;
    std::promise<void> go_;
};

// A month on which one works and for which a second one waits.
class CrowdedGate {
public:
    CrowdedGate(MonthIndex& month, ProgressProbe& probe)
        : held_(probe), first_(std::async(std::launch::async, [&month] { return month.Load(0); })) {
        if (!Eventually([this] { return held_.Arrived(); })) return;
        // Of two that come, one waits and the other is refused: when that one is back, the first waits.
        for (auto& one : comers_) one = std::async(std::launch::async, [&month] { return month.Load(0); });
        const auto isBack = [](std::future<bool>& one) {
            return one.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        };
        Eventually([&] { return isBack(comers_[0]) || isBack(comers_[1]); });
        refused_ = isBack(comers_[0]) ? 0 : 1;
        hasAWaiter_ = !comers_[refused_].get();
    }
    bool HasAWaiter() const { return hasAWaiter_; }
    // True when both came to the end of their work.
    bool LetGo() {
        held_.LetGo();
        const bool first = first_.get();
        return comers_[1 - refused_].get() && first;
    }

private:
    HeldWorker held_;
    std::future<bool> first_;
    std::array<std::future<bool>, 2> comers_;
    std::size_t refused_ = 0;
    bool hasAWaiter_ = false;
};

// ---- loading

TEST_F(MonthIndexLoad, WholeMonthComesIntoMemoryAndIndexesOntoTheDisk) {
    PutInDay("a.txt", "a", 1);
    PutInDay("b.txt", "b", 30);
    EXPECT_FALSE(month.IsLoaded(0));
    EXPECT_TRUE(month.Load(0));
    EXPECT_TRUE(month.IsLoaded(0));
    EXPECT_THAT(NamesOf(*month.Day(1)), ElementsAre("a.txt"));
    EXPECT_THAT(NamesOf(*month.Day(30)), ElementsAre("b.txt"));
    EXPECT_TRUE(HasIndex(1));
    EXPECT_TRUE(HasIndex(30));
    EXPECT_FALSE(month.Day(1)->dirty);
    EXPECT_FALSE(month.busy);
}

TEST_F(MonthIndexLoad, DaysPastTheMonthsEndStayEmptyAndDoNotCount) {
    MonthIndex february(2007, 2, root, context);
    EXPECT_TRUE(february.Load(0));
    EXPECT_TRUE(february.IsLoaded(0));
    EXPECT_TRUE(february.IsLoaded(28));
    for (const int day : {29, 30, 31}) {
        EXPECT_FALSE(february.IsLoaded(day));
        EXPECT_THAT(february.Day(day)->entries, IsEmpty());
    }
}

TEST_F(MonthIndexLoad, DaysThatAreNoneAreRefused) {
    for (const int day : {-1, 32, 1000}) {
        EXPECT_FALSE(month.IsLoaded(day));
        EXPECT_THAT(month.Day(day)->entries, IsEmpty());
    }
    EXPECT_FALSE(month.Load(32));
    EXPECT_FALSE(month.EnsureDay(0));
}

TEST_F(MonthIndexLoad, OneDayIsLoadedAlone) {
    PutInDay("a.txt");
    EXPECT_TRUE(month.Load(13));
    EXPECT_TRUE(month.IsLoaded(13));
    EXPECT_FALSE(month.IsLoaded(12));
    EXPECT_FALSE(month.IsLoaded(0));
}

TEST_F(MonthIndexLoad, LoadedDayIsNotReadAgain) {
    PutIndex("FILE=a.txt\n-\n");
    month.Load(13);
    PutIndex("FILE=b.txt\n-\n");
    EXPECT_TRUE(month.Load(0));
    EXPECT_TRUE(month.EnsureDay(13));
    EXPECT_THAT(NamesOf(*month.Day(13)), ElementsAre("a.txt"));
}

TEST_F(MonthIndexLoad, TellsItsProgress) {
    const ProgressTexts progress(probe);
    month.Load(0);
    ASSERT_THAT(progress.texts, SizeIs(31));
    EXPECT_EQ(progress.texts.front(), "Loading (2008/11)");
    EXPECT_DOUBLE_EQ(progress.ratios.front(), 0.0);
    EXPECT_DOUBLE_EQ(progress.ratios[15], 0.5);
    EXPECT_EQ(progress.texts.back(), "Loaded. (2008/11)");
    EXPECT_DOUBLE_EQ(progress.ratios.back(), 1.0);
}

TEST_F(MonthIndexLoad, TellsOfOneDay) {
    const ProgressTexts progress(probe);
    month.Load(5);
    month.Load(5);
    EXPECT_THAT(progress.texts,
                ElementsAre("Loading (2008/11/05)", "Loaded. (2008/11/05)", "Loaded. (2008/11/05)"))
        << "a day in memory is not loaded";
    EXPECT_THAT(progress.ratios, ElementsAre(0.0, 1.0, 1.0));
}

TEST_F(MonthIndexLoad, StopEndsItBeforeTheNextDayAndKeepsWhatIsDone) {
    ProgressTexts progress(probe);
    int days = 0;
    probe.onProgress = [&](double ratio, const std::string& text) {
        progress.texts.push_back(text);
        progress.ratios.push_back(ratio);
        if (++days == 3) month.RequestStop();
    };
    EXPECT_FALSE(month.Load(0));
    EXPECT_EQ(progress.texts.back(), "Canceled. (2008/11/00)");
    EXPECT_DOUBLE_EQ(progress.ratios.back(), 1.0);
    EXPECT_TRUE(month.IsLoaded(2));
    EXPECT_FALSE(month.IsLoaded(3));
    EXPECT_FALSE(month.busy);
    probe.onProgress = nullptr;
    EXPECT_TRUE(month.Load(0));  // continues where it was stopped
}

TEST_F(MonthIndexLoad, StoppedLoadHasWrittenTheDaysItFinished) {
    PutInDay("a.txt", "a", 1);
    probe.onProgress = [&, days = 0](double, const std::string&) mutable {
        if (++days == 3) month.RequestStop();
    };
    EXPECT_FALSE(month.Load(0));
    EXPECT_TRUE(HasIndex(1));
}

TEST_F(MonthIndexLoad, StopRequestDoesNotReachTheDayThatIsRead) {
    constexpr std::size_t kFiles = 20'000;
    std::string records;
    for (std::size_t i = 0; i < kFiles; ++i) records += "FILE=" + std::to_string(i) + "\n-\n";
    PutIndex(records);
    std::atomic<bool> done = false;
    std::thread stopper([&] {
        while (!done) month.RequestStop();
    });
    EXPECT_TRUE(month.Load(13));
    done = true;
    stopper.join();
    EXPECT_EQ(month.Day(13)->entries.size(), kFiles);
}

TEST_F(MonthIndexLoad, CallersStopReachesTheDayThatIsRead) {
    PutInDay("a.txt");
    StopSource caller;
    caller.RequestStop();
    EXPECT_FALSE(month.EnsureDay(13, caller.Token()));
    EXPECT_FALSE(month.IsLoaded(13));
}

TEST_F(MonthIndexLoad, StopRequestFromBeforeIsNotForTheNextLoad) {
    month.RequestStop();
    EXPECT_TRUE(month.Load(0));
}

TEST_F(MonthIndexLoad, DayWithoutARootCancels) {
    State().settings.DataDirectory.clear();
    MonthIndex rootless(2008, 11, {}, context);
    const ProgressTexts progress(probe);
    EXPECT_FALSE(rootless.Load(0));
    EXPECT_EQ(progress.texts.back(), "Canceled. (2008/11)");
    EXPECT_FALSE(rootless.Load(4));
    EXPECT_EQ(progress.texts.back(), "Canceled. (2008/11/04)");
}

TEST_F(MonthIndexLoad, BatchIsLeftToTheCaller) {
    PutInDay("a.txt");
    IndexBatch batch;
    EXPECT_TRUE(month.Load(0, batch));
    EXPECT_FALSE(HasIndex());
    EXPECT_TRUE(month.Day(13)->dirty);
    EXPECT_TRUE(batch.Finish());
    EXPECT_TRUE(HasIndex());
    EXPECT_FALSE(month.Day(13)->dirty);
}

TEST_F(MonthIndexLoad, BatchTellsWhatCouldNotBeWritten) {
    PutInDay("a.txt");
    PutInDay("b.txt", "b", 14);
    MakeFolder(IndexPath().substr(home.size() + 1));
    IndexBatch batch;
    month.Load(0, batch);
    EXPECT_FALSE(batch.Finish());
    EXPECT_TRUE(month.Day(13)->dirty);
    EXPECT_FALSE(month.Day(14)->dirty);
    EXPECT_TRUE(HasIndex(14));
}

// ---- the gate

TEST_F(MonthIndexGate, SecondWorkerWaitsForTheFirst) {
    HeldWorker held(probe);
    auto first = std::async(std::launch::async, [&] { return month.Load(0); });
    ASSERT_TRUE(Eventually([&] { return held.Arrived(); }));
    auto second = std::async(std::launch::async, [&] { return month.Load(0); });
    EXPECT_EQ(second.wait_for(std::chrono::milliseconds(200)), std::future_status::timeout);
    held.LetGo();
    EXPECT_TRUE(first.get());
    EXPECT_TRUE(second.get());
}

TEST_F(MonthIndexGate, WaitEndsAfterAboutTwoSeconds) {
    HeldWorker held(probe);
    auto first = std::async(std::launch::async, [&] { return month.Load(0); });
    ASSERT_TRUE(Eventually([&] { return held.Arrived(); }));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(month.Load(0));  // beside the worker that is still there
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, std::chrono::milliseconds(2000));
    EXPECT_LT(waited, std::chrono::seconds(30));
    held.LetGo();
    EXPECT_TRUE(first.get());
}

TEST_F(MonthIndexGate, CallersStopEndsTheWait) {
    HeldWorker held(probe);
    auto first = std::async(std::launch::async, [&] { return month.Load(0); });
    ASSERT_TRUE(Eventually([&] { return held.Arrived(); }));
    StopSource caller;
    auto second =
        std::async(std::launch::async, [&] { return month.Load(0, month.BeginWork(), caller.Token()); });
    caller.RequestStop();
    EXPECT_EQ(second.wait_for(std::chrono::seconds(1)), std::future_status::ready);
    EXPECT_FALSE(second.get());
    held.LetGo();
    EXPECT_TRUE(first.get());
}

TEST_F(MonthIndexGate, ThirdWorkerIsRefusedAtOnce) {
    CrowdedGate gate(month, probe);
    ASSERT_TRUE(gate.HasAWaiter());
    EXPECT_FALSE(month.Load(0));
    EXPECT_FALSE(month.Update(0));
    EXPECT_TRUE(gate.LetGo());
}

// ---- copies

TEST_F(MonthIndexCopy, SharesTheRecordsAndGoesItsOwnWay) {
    PutInDay("a.txt");
    month.Load(13);
    MonthIndex copy(month);
    EXPECT_TRUE(copy.IsLoaded(13));
    EXPECT_EQ(copy.Day(13), month.Day(13));
    copy.Load(0);
    EXPECT_FALSE(month.IsLoaded(0));
    PutInDay("b.txt");
    copy.Update(13);
    EXPECT_THAT(copy.Day(13)->entries, SizeIs(2));
    EXPECT_THAT(month.Day(13)->entries, SizeIs(1));
}

TEST_F(MonthIndexCopy, HasAGateOfItsOwn) {
    HeldWorker held(probe);
    auto worker = std::async(std::launch::async, [&] { return month.Load(0); });
    ASSERT_TRUE(Eventually([&] { return held.Arrived(); }));
    MonthIndex copy(month);
    EXPECT_TRUE(copy.Load(0));
    held.LetGo();
    worker.get();
}

// ---- updating

TEST_F(MonthUpdate, DayByDayAndToldOf) {
    PutInDay("a.txt");
    const ProgressTexts progress(probe);
    EXPECT_TRUE(month.Update(0));
    EXPECT_EQ(progress.texts.front(), "Updating (2008/11)");
    EXPECT_EQ(progress.texts.back(), "Updated. (2008/11)");
    EXPECT_THAT(progress.texts, SizeIs(31));
    EXPECT_TRUE(month.IsLoaded(0));
    EXPECT_TRUE(HasIndex());
}

TEST_F(MonthUpdate, OneDay) {
    PutInDay("a.txt");
    const ProgressTexts progress(probe);
    EXPECT_TRUE(month.Update(13));
    EXPECT_THAT(progress.texts, ElementsAre("Updating (2008/11/13)", "Updated. (2008/11/13)"));
    EXPECT_THAT(progress.ratios, ElementsAre(0.0, 1.0));
    EXPECT_TRUE(month.IsLoaded(13));
    EXPECT_FALSE(month.IsLoaded(12));
}

TEST_F(MonthUpdate, RemembersWhenItWasDone) {
    clock.uptimeMs = 1'234'567;
    month.Update(13);
    EXPECT_EQ(month.lastUpdateSeconds, 1234);
}

TEST_F(MonthUpdate, StopBetweenDaysKeepsWhatIsDone) {
    PutInDay("a.txt", "a", 1);
    PutInDay("b.txt", "b", 20);
    ProgressTexts progress(probe);
    int days = 0;
    probe.onProgress = [&](double, const std::string& text) {
        progress.texts.push_back(text);
        if (++days == 10) month.RequestStop();
    };
    EXPECT_FALSE(month.Update(0));
    EXPECT_EQ(progress.texts.back(), "Canceled. (2008/11)");
    EXPECT_TRUE(HasIndex(1));
    EXPECT_FALSE(HasIndex(20));
    EXPECT_EQ(month.lastUpdateSeconds, 0);
    EXPECT_FALSE(month.busy);
}

TEST_F(MonthUpdate, StopReachesTheDayThatIsUpdated) {
    PutInDay("a.txt");
    PutInDay("b.txt");
    ProgressTexts progress(probe);
    probe.onProgress = [&](double ratio, const std::string& text) {
        progress.texts.push_back(text);
        if (ratio == 0) month.RequestStop();  // the day has begun
    };
    clock.uptimeMs = 5000;
    EXPECT_FALSE(month.Update(13));
    EXPECT_EQ(progress.texts.back(), "Canceled. (2008/11/13)");
    EXPECT_EQ(month.lastUpdateSeconds, 0);
    EXPECT_FALSE(month.IsLoaded(13)) << "a part of the day is not taken for the day";
    EXPECT_FALSE(HasIndex()) << "and not written";
    EXPECT_TRUE(month.EnsureDay(13)) << "as a search does";
    EXPECT_THAT(month.Day(13)->entries, SizeIs(2));
    probe.onProgress = nullptr;
    EXPECT_TRUE(month.Update(13));
    EXPECT_THAT(month.Day(13)->entries, SizeIs(2));
    EXPECT_TRUE(HasIndex());
    EXPECT_FALSE(month.Day(13)->dirty);
}

TEST_F(MonthUpdate, StopWithinTheLastDayIsAStop) {
    PutInDay("a.txt", "a", 1);
    PutInDay("b.txt", "b", 30);
    ProgressTexts progress(probe);
    probe.onProgress = [&](double ratio, const std::string& text) {
        progress.texts.push_back(text);
        if (ratio == 29.0 / 30) month.RequestStop();
    };
    clock.uptimeMs = 5000;
    EXPECT_FALSE(month.Update(0));
    EXPECT_EQ(progress.texts.back(), "Canceled. (2008/11)");
    EXPECT_TRUE(HasIndex(1));
    EXPECT_FALSE(HasIndex(30));
    EXPECT_EQ(month.lastUpdateSeconds, 0);
}

TEST_F(MonthUpdate, FolderThatCannotBeListedIsNoUpdateOfIt) {
    PutInDay("a.txt", "a", 13);
    PutInDay("b.txt", "b", 14);
    const test::ClosedFolder cannotBeListed(DayFolder(13));
    clock.uptimeMs = 5000;
    EXPECT_FALSE(month.Update(13));
    EXPECT_FALSE(month.Update(0));
    EXPECT_TRUE(HasIndex(14)) << "the other days are";
    EXPECT_FALSE(HasIndex(13));
    EXPECT_EQ(month.lastUpdateSeconds, 0);
}

TEST_F(MonthUpdate, RefusedByTheGateStaysBusy) {
    CrowdedGate gate(month, probe);
    ASSERT_TRUE(gate.HasAWaiter());
    month.busy = false;  // whoever holds the gate has set it too
    EXPECT_FALSE(month.Update(1));
    EXPECT_TRUE(month.busy);
    gate.LetGo();
}

TEST_F(MonthUpdate, WriteLoadedDaysWritesWhatIsDirty) {
    PutInDay("a.txt");
    IndexBatch dropped;
    month.Load(0, dropped);
    clock.uptimeMs = 5000;
    month.WriteLoadedDays();
    EXPECT_TRUE(HasIndex());
    EXPECT_EQ(month.lastUpdateSeconds, 5);
}

}  // namespace
}  // namespace kalmora
