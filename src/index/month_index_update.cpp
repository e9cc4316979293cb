// Comparing a month with its folders.
#include "base/dates.h"
#include "base/log.h"
#include "index/index_batch.h"
#include "index/month_index.h"
#include "platform/clock.h"

namespace kalmora {

void MonthIndex::StampUpdate() { lastUpdateSeconds = static_cast<int>(UptimeMs() / 1000); }

bool MonthIndex::UpdateDay(int day, IndexBatch& batch, const StopToken& work) {
    const bool wasLoaded = IsLoaded(day);
    SetLoaded(day, false);
    const auto records = std::make_shared<DayIndex>(*Day(day));
    records->dataRoot = dataRoot;
    bool finished = false;
    {
        const DayInUpdate inUpdate(*this, day);
        finished = records->UpdateUnwritten(year, month, day, work);
    }
    // What a stopped update has read of a day that was not in memory is a part of it: the next one who wants
    // the day reads its index file, or the rest would be missing.
    if (finished || wasLoaded) Publish(day, records);
    if (finished) batch.Add(records);
    return finished;
}

bool MonthIndex::UpdateAll(IndexBatch& batch, const StopToken& work) {
    const int days = DaysInMonth(year, month);
    bool finished = true;
    for (int day = 1; day <= days; ++day) {
        if (work.IsStopped()) {
            finished = false;
            break;
        }
        const double ratio = static_cast<double>(day - 1) / days;
        ReportProgress(*context.progress, ratio, "Updating (%04d/%02d)", year, month);
        context.progress->OnUpdateProgress(ratio);
        finished &= UpdateDay(day, batch, work);
    }
    const bool isStopped = !finished && work.IsStopped();
    ReportProgress(*context.progress, 1, isStopped ? "Canceled. (%04d/%02d)" : "Updated. (%04d/%02d)", year,
                   month);
    context.progress->OnUpdateProgress(1);
    return finished;
}

bool MonthIndex::UpdateIn(int day, IndexBatch& batch, Writing writing, const StopToken& work) {
    busy = true;
    Log("Update [%d/%d/%d]", year, month, day);
    if (!gate_.Acquire("[Month]Update")) return false;
    bool finished = true;
    if (day <= 0) {
        finished = UpdateAll(batch, work);
    } else if (day <= kDays) {
        ReportProgress(*context.progress, 0, "Updating (%04d/%02d/%02d)", year, month, day);
        finished = UpdateDay(day, batch, work);
        const bool isStopped = !finished && work.IsStopped();
        ReportProgress(*context.progress, 1,
                       isStopped ? "Canceled. (%04d/%02d/%02d)" : "Updated. (%04d/%02d/%02d)", year, month,
                       day);
    }
    if (writing == Writing::Now) batch.Finish();
    if (finished) StampUpdate();
    busy = false;
    gate_.Release();
    return finished;
}

bool MonthIndex::Update(int day) { return Update(day, BeginWork()); }

bool MonthIndex::Update(int day, const StopToken& work) {
    IndexBatch batch;
    return UpdateIn(day, batch, Writing::Now, work);
}

bool MonthIndex::Update(int day, IndexBatch& batch) {
    return UpdateIn(day, batch, Writing::Later, BeginWork());
}

void MonthIndex::WriteLoadedDays() {
    const StopToken work = BeginWork();
    IndexBatch batch;
    const int days = DaysInMonth(year, month);
    for (int day = 1; day <= days; ++day) {
        if (work.IsStopped()) break;
        if (!IsLoaded(day)) continue;
        batch.Add(Day(day));
        StampUpdate();
    }
    batch.Finish();
}

}  // namespace kalmora
