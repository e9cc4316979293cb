// Comparing a month with its folders.
#include "base/dates.h"
#include "base/log.h"
#include "index/index_batch.h"
#include "index/index_progress.h"
#include "index/index_stop.h"
#include "index/month_index.h"
#include "platform/clock.h"

namespace kalmora {

void MonthIndex::NoteUpdateTime() { lastUpdateSeconds = static_cast<int>(UptimeMs() / 1000); }

void MonthIndex::UpdateDay(int day, IndexBatch& batch) {
    const bool wasLoaded = IsLoaded(day);
    SetLoaded(day, false);
    const auto records = std::make_shared<DayIndex>(*Day(day));
    records->dataRoot = dataRoot;
    bool finished = false;
    {
        const DayAtWork atWork(*this, *records);
        finished = records->UpdateUnwritten(year, month, day);
    }
    // What a stopped update has read of a day that was not in memory is a part of it: whoever wants the day
    // next reads its index file, or he would not see the rest.
    if (finished || wasLoaded) Publish(day, records);
    if (finished) batch.Add(records);
}

bool MonthIndex::UpdateAll(IndexBatch& batch, const Work& work) {
    const int days = DaysInMonth(year, month);
    bool finished = true;
    for (int day = 1; day <= days; ++day) {
        finished = !work.IsStopped() && !IsIndexingInterrupted();
        if (!finished) break;
        const double ratio = static_cast<double>(day - 1) / days;
        TellProgress(ratio, "Updating (%04d/%02d)", year, month);
        TellUpdateProgress(ratio);
        UpdateDay(day, batch);
    }
    TellProgress(1, finished ? "Updated. (%04d/%02d)" : "Canceled. (%04d/%02d)", year, month);
    TellUpdateProgress(1);
    return finished;
}

bool MonthIndex::UpdateIn(int day, IndexBatch& batch, Writing writing, const Work& work) {
    busy = true;
    Log("Update [%d/%d/%d]", year, month, day);
    if (!gate_.Acquire("[Month]Update")) return false;
    bool finished = true;
    if (day <= 0) {
        finished = UpdateAll(batch, work);
    } else if (day <= kDays) {
        TellProgress(0, "Updating (%04d/%02d/%02d)", year, month, day);
        UpdateDay(day, batch);
        TellProgress(1, "Updated. (%04d/%02d/%02d)", year, month, day);
    }
    if (writing == Writing::Now) batch.Finish();
    if (finished) NoteUpdateTime();
    busy = false;
    gate_.Release();
    return finished;
}

bool MonthIndex::Update(int day) { return Update(day, Work(*this)); }

bool MonthIndex::Update(int day, const Work& work) {
    IndexBatch batch;
    return UpdateIn(day, batch, Writing::Now, work);
}

bool MonthIndex::Update(int day, IndexBatch& batch) {
    return UpdateIn(day, batch, Writing::Later, Work(*this));
}

void MonthIndex::WriteLoadedDays() {
    const Work work(*this);
    IndexBatch batch;
    const int days = DaysInMonth(year, month);
    for (int day = 1; day <= days; ++day) {
        if (work.IsStopped()) break;
        if (!IsLoaded(day)) continue;
        batch.Add(Day(day));
        NoteUpdateTime();
    }
    batch.Finish();
}

}  // namespace kalmora
