#include "rewrite/safe_rewrite.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <optional>
#include <utility>

#include "base/log.h"
#include "platform/clock.h"
#include "platform/edit_file.h"
#include "platform/files.h"
#include "rewrite/rewrite_journal.h"
#include "rewrite/rewrite_strategy.h"
#include "rewrite/temp_folder.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

using files::EditFile;
using files::FileResult;
using files::FileStatus;
using Strategy = RewriteRecord::Strategy;

constexpr std::size_t kGroupFiles = 32;
constexpr std::size_t kGroupBytes = 8u << 20;           // of what one group's records hold
constexpr std::uint64_t kMostRecordedBytes = 1u << 20;  // of one stretch that is kept in a record
constexpr int kLockWaitMs = 60'000;                     // with others who are writing
constexpr int kRecoveryLockWaitMs = 200;                // another program or thread is recovering
constexpr int kReadingLockWaitMs = 2000;                // with others who are writing what is to be read

RewriteResult ResultOf(FileResult result) {
    switch (result) {
        case FileResult::Done:
            return RewriteResult::Written;
        case FileResult::NotFound:
            return RewriteResult::Unreadable;
        case FileResult::Denied:
            return RewriteResult::Denied;
        case FileResult::NoSpace:
            return RewriteResult::NoSpace;
        case FileResult::Exists:
        case FileResult::Failed:
            break;
    }
    return RewriteResult::Failed;
}

// The clock's fields as they are, without the time zone: meant, see the header.
FileTime LocalClockAsFileTime() {
    using namespace std::chrono;
    const SystemTime now = LocalTime();
    const sys_days day = year{now.year} / month{now.month} / now.day;
    const auto sinceEpoch = day.time_since_epoch() + hours{now.hour} + minutes{now.minute} +
                            seconds{now.second} + milliseconds{now.milliseconds};
    constexpr std::int64_t kMsFrom1601To1970 = 11'644'473'600'000, kTicksPerMs = 10'000;
    const std::int64_t ms = duration_cast<milliseconds>(sinceEpoch).count() + kMsFrom1601To1970;
    return FileTime{static_cast<std::uint64_t>(std::max<std::int64_t>(ms, 0) * kTicksPerMs)};
}

FileTime TimeOf(Stamp stamp) {
    return stamp == Stamp::LocalClock ? LocalClockAsFileTime() : CurrentFileTime();
}

// One file on its way. The file stays open, and locked where the system has locks, until the job goes.
struct Job {
    std::size_t index = 0;
    EditFile file;
    FileStatus before;
    RewriteRecord record;
    std::string nextBytes;  // what follows the inserted stretch
    Stamp stamp = Stamp::LocalClock;
    RewriteResult result = RewriteResult::Failed;
};

bool IsSameFile(const FileStatus& a, const FileStatus& b) {
    return a.volume == b.volume && a.identity == b.identity;
}

// Opens the file and takes what has to be known before it is touched.
RewriteResult OpenJob(const std::string& path, Job& job) {
    if (GetFileName(path).empty()) return RewriteResult::Unreadable;
    if (IsReadOnly(path)) return RewriteResult::Denied;
    if (const FileResult opened = job.file.Open(path); opened != FileResult::Done)
        return opened == FileResult::Failed ? RewriteResult::Unreadable : ResultOf(opened);
    if (job.file.TryLock() == EditFile::Lock::HeldByAnother) return RewriteResult::InUse;
    const auto status = job.file.Status();
    if (!status) return RewriteResult::Unreadable;
    job.before = *status;
    job.record.path = path;
    job.record.oldSize = status->size;
    job.record.accessed = status->accessed;
    job.record.written = status->written;
    job.record.volume = status->volume;
    job.record.identity = status->identity;
    return RewriteResult::Written;
}

// True while the path still names the file that was opened, unwritten since.
bool IsUntouched(const Job& job) {
    const auto opened = job.file.Status(), named = files::GetStatus(job.record.path);
    return opened && named && IsSameFile(*opened, *named) && opened->size == job.before.size &&
           opened->written == job.before.written;
}

std::optional<std::string> ReadStretch(const EditFile& file, std::uint64_t offset, std::uint64_t length) {
    std::string bytes(static_cast<std::size_t>(length), '\0');
    if (file.ReadAt(offset, {reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()}) != bytes.size())
        return std::nullopt;
    return bytes;
}

// Leaves out what stays the same at both ends.
void TrimRecord(RewriteRecord& record) {
    const auto differs = std::mismatch(record.oldBytes.begin(), record.oldBytes.end(),
                                       record.newBytes.begin(), record.newBytes.end())
                             .first;
    const auto head = static_cast<std::size_t>(differs - record.oldBytes.begin());
    const auto last = std::mismatch(record.oldBytes.rbegin(), record.oldBytes.rend(),
                                    record.newBytes.rbegin(), record.newBytes.rend())
                          .first;
    const std::size_t tail =
        std::min(static_cast<std::size_t>(last - record.oldBytes.rbegin()), record.oldBytes.size() - head);
    const std::size_t length = record.oldBytes.size() - head - tail;
    record.oldBytes = record.oldBytes.substr(head, length);
    record.newBytes = record.newBytes.substr(head, length);
    record.offset += head;
    record.oldLength = length;
}

// Chooses the strategy that writes the least. Unchanged when nothing would be written.
RewriteResult ChooseStrategy(Job& job, FileChange& change) {
    RewriteRecord& record = job.record;
    job.stamp = change.stamp;
    if (change.offset > record.oldSize || change.oldLength > record.oldSize - change.offset)
        return RewriteResult::Changed;
    record.copyName = change.copyName.empty() ? "$" + GetFileName(record.path) : change.copyName;
    record.offset = change.offset;
    record.oldLength = change.oldLength;
    record.newBytes = std::move(change.content);
    record.newSize = record.oldSize - record.oldLength + record.newBytes.size();
    record.strategy = Strategy::Copied;
    if (std::max<std::uint64_t>(record.oldLength, record.newBytes.size()) > kMostRecordedBytes)
        return RewriteResult::Written;
    auto old = ReadStretch(job.file, record.offset, record.oldLength);
    if (!old) return RewriteResult::Unreadable;
    if (*old == record.newBytes) return RewriteResult::Unchanged;
    if (record.newSize == record.oldSize) {
        record.strategy = Strategy::InPlace;
        record.oldBytes = std::move(*old);
        TrimRecord(record);
        return RewriteResult::Written;
    }
    if (record.newSize < record.oldSize || (record.newSize - record.oldSize) % kCheapGrowth != 0)
        return RewriteResult::Written;
    const std::size_t unit = job.file.InsertUnit();
    if (unit == 0 || (record.newSize - record.oldSize) % unit != 0) return RewriteResult::Written;
    const std::uint64_t start = record.offset / unit * unit;
    const auto head = ReadStretch(job.file, start, record.offset - start);
    const std::uint64_t end = record.offset + record.oldLength;
    auto next = ReadStretch(job.file, end, std::min<std::uint64_t>(unit, record.oldSize - end));
    if (start >= record.oldSize || !head || !next) return RewriteResult::Written;
    record.strategy = Strategy::Inserted;
    record.oldBytes = *head + *old;
    record.newBytes = *head + record.newBytes;
    record.offset = start;
    record.oldLength = record.oldBytes.size();
    job.nextBytes = std::move(*next);
    return RewriteResult::Written;
}

// Back from the strategy of inserting to the one with a copy.
void UseCopyStrategy(RewriteRecord& record) {
    record.strategy = Strategy::Copied;
    record.oldBytes.clear();
}

// The Temp folder while it is ours: its lock, its journal, and what earlier runs left in it.
class TempSession {
public:
    explicit TempSession(std::string folder) : folder_(std::move(folder)) {}

    const std::string& Folder() const { return folder_; }
    bool IsOpen() const { return lock_.IsHeld(); }

    // Recovers the files of the journal and sweeps the scratch files.
    RewriteResult Open(int lockWaitMs = kLockWaitMs) {
        if (folder_.empty()) return RewriteResult::Failed;
        if (!files::IsFolder(folder_) && !MakeDirectories(folder_)) return RewriteResult::Denied;
        const FileResult locked = LockTempFolder(folder_, lock_, lockWaitMs);
        if (locked == FileResult::Failed) return RewriteResult::InUse;
        FileResult result = locked;
        if (result == FileResult::Done) result = journal_.Open(folder_);
        if (result != FileResult::Done) {
            Close();
            return result == FileResult::NotFound ? RewriteResult::Denied : ResultOf(result);
        }
        Recover();
        SweepScratchFiles(folder_);
        return RewriteResult::Written;
    }
    void Close() {
        pending_.clear();
        journal_ = {};
        lock_.Release();
    }

    // Writes what is to come into the journal. On failure the journal has no record of it.
    FileResult WriteRecords(std::vector<RewriteRecord> records) {
        records.insert(records.end(), pending_.begin(), pending_.end());
        const FileResult result = journal_.Write(records);
        if (result != FileResult::Done) Finish(RewriteJournal::Clearing::Soon);
        return result;
    }
    // What could be neither done nor undone: its record stays.
    void Leave(const RewriteRecord& record) {
        Log("cannot be put back now: %s", record.path.c_str());
        pending_.push_back(record);
    }
    void Finish(RewriteJournal::Clearing clearing) {
        if (pending_.empty())
            journal_.Clear(clearing);
        else
            journal_.Write(pending_);
    }
    int RestoredFiles() const { return restoredFiles_; }
    // What could not be recovered.
    const std::vector<RewriteRecord>& Pending() const { return pending_; }

private:
    void Recover() {
        const std::vector<RewriteRecord> records = journal_.Read();
        if (records.empty()) return;
        // The latest first: of two records of the same file it describes what the other left.
        for (auto record = records.rbegin(); record != records.rend(); ++record) {
            const Recovery recovery = RecoverFile(*record, folder_);
            Log("recovery of %s: %d", record->path.c_str(), static_cast<int>(recovery));
            if (recovery == Recovery::Restored) ++restoredFiles_;
            if (recovery == Recovery::Pending) pending_.push_back(*record);
        }
        Finish(RewriteJournal::Clearing::Flushed);
    }

    std::string folder_;
    files::FileLock lock_;
    RewriteJournal journal_;
    std::vector<RewriteRecord> pending_;
    int restoredFiles_ = 0;
};

// Looks whether the file became what it should, gives it its times; all but the flush.
RewriteResult ApplyAndCheck(Job& job, const std::string& tempFolder, bool& nothingDone) {
    nothingDone = true;
    if (!IsUntouched(job)) return RewriteResult::Changed;
    const FileResult applied = ApplyRewrite(job.file, job.record, tempFolder, nothingDone);
    if (applied != FileResult::Done) return ResultOf(applied);
    const auto named = files::GetStatus(job.record.path);
    if (named && IsSameFile(*named, job.before) && named->size == 0 && job.record.newSize != 0)
        Log("Error: Create File (0byte) %s", job.record.path.c_str());
    if (!HoldsNewBytes(job.file, job.record, tempFolder)) return RewriteResult::Failed;
    if (!job.nextBytes.empty()) {
        const std::uint64_t end = job.record.offset + job.record.newBytes.size();
        if (ReadStretch(job.file, end, job.nextBytes.size()) != job.nextBytes) return RewriteResult::Failed;
    }
    // Not the owner's right to set them is no reason to take the words back.
    job.file.SetTimes(job.before.accessed, TimeOf(job.stamp));
    return RewriteResult::Written;
}

// If another program put another file at the path while this one wrote, that file stays.
RewriteResult LastLook(const Job& job) {
    const auto named = files::GetStatus(job.record.path);
    if (named && IsSameFile(*named, job.before)) return RewriteResult::Written;
    Log("replaced while it was written: %s", job.record.path.c_str());
    return RewriteResult::Changed;
}

// Back to the old file, unless another program has changed it: `result` says so then.
Recovery Undo(TempSession& session, Job& job, RewriteResult& result) {
    const Recovery undone = UndoRewrite(job.file, job.record, session.Folder());
    if (undone == Recovery::Pending) session.Leave(job.record);
    if (undone == Recovery::ChangedByOthers) result = RewriteResult::Changed;
    return undone;
}

// The strategy with a copy: one file by itself.
RewriteResult RunWithCopy(TempSession& session, Job& job) {
    const std::string copy = files::Join(session.Folder(), job.record.copyName);
    if (const FileResult copied = files::CopyFile(job.record.path, copy); copied != FileResult::Done)
        return ResultOf(copied);
    const auto copyStatus = files::GetStatus(copy);
    RewriteResult result = copyStatus && copyStatus->size == job.record.oldSize ? RewriteResult::Written
                                                                                : RewriteResult::Changed;
    if (result == RewriteResult::Written) result = ResultOf(session.WriteRecords({job.record}));
    if (result != RewriteResult::Written) {
        files::RemoveFile(copy);
        return result;
    }
    bool nothingDone = false;
    result = ApplyAndCheck(job, session.Folder(), nothingDone);
    if (result == RewriteResult::Written) result = ResultOf(job.file.Flush());
    Recovery undone = Recovery::AlreadyWhole;
    if (result == RewriteResult::Written)
        result = LastLook(job);
    else if (!nothingDone)
        undone = Undo(session, job, result);
    // The record goes before the copy, so that no record is left without its copy.
    session.Finish(RewriteJournal::Clearing::Flushed);
    if (undone != Recovery::Pending) files::RemoveFile(copy);
    return result;
}

// Files that need no copy, together. Fills their results.
void RunGroup(TempSession& session, std::vector<Job>& jobs) {
    std::vector<RewriteRecord> records;
    records.reserve(jobs.size());
    for (const Job& job : jobs) records.push_back(job.record);
    if (const FileResult recorded = session.WriteRecords(std::move(records)); recorded != FileResult::Done) {
        for (Job& job : jobs) job.result = ResultOf(recorded);
        return;
    }
    std::vector<Job*> written, again;
    for (Job& job : jobs) {
        bool nothingDone = false;
        job.result = ApplyAndCheck(job, session.Folder(), nothingDone);
        if (job.result == RewriteResult::Written)
            written.push_back(&job);
        else if (!nothingDone)
            Undo(session, job, job.result);
        else if (job.record.strategy == Strategy::Inserted && job.result == RewriteResult::Failed)
            again.push_back(&job);
    }
    std::vector<EditFile*> toFlush;
    for (Job* job : written) toFlush.push_back(&job->file);
    const std::vector<FileResult> flushed = files::FlushAll(toFlush);
    for (std::size_t i = 0; i < written.size(); ++i) {
        Job& job = *written[i];
        job.result = flushed[i] == FileResult::Done ? LastLook(job) : ResultOf(flushed[i]);
        if (flushed[i] != FileResult::Done) Undo(session, job, job.result);
    }
    session.Finish(RewriteJournal::Clearing::Soon);
    for (Job* job : again) {
        UseCopyStrategy(job->record);
        job->result = RunWithCopy(session, *job);
    }
}

// Jobs that wait to be run together.
class Group {
public:
    Group(TempSession& session, std::vector<RewriteResult>& results) : session_(session), results_(results) {}

    void Add(Job job) {
        bytes_ += job.record.oldBytes.size() + job.record.newBytes.size();
        jobs_.push_back(std::move(job));
        if (jobs_.size() >= kGroupFiles || bytes_ >= kGroupBytes) Run();
    }
    bool Holds(const std::string& path) const {
        if (jobs_.empty()) return false;
        const auto status = files::GetStatus(path);
        return status && std::any_of(jobs_.begin(), jobs_.end(),
                                     [&](const Job& job) { return IsSameFile(job.before, *status); });
    }
    void Run() {
        RunAndStay();
        session_.Close();  // others get a turn
    }
    // Keeps the folder, for a job that has been opened under its lock and is still to be done.
    void RunAndStay() {
        if (!jobs_.empty()) RunGroup(session_, jobs_);
        for (const Job& job : jobs_) results_[job.index] = job.result;
        jobs_.clear();
        bytes_ = 0;
    }

private:
    TempSession& session_;
    std::vector<RewriteResult>& results_;
    std::vector<Job> jobs_;
    std::size_t bytes_ = 0;
};

void LogResult(const std::string& path, RewriteResult result) {
    if (IsDone(result)) return;
    const char* reason = ReasonOf(result);
    Log("not written (%s%s%s): %s", NameOf(result), reason ? ": " : "", reason ? reason : "", path.c_str());
}

struct ResultWords {
    RewriteResult result;
    const char* name;
    const char* reason;
};
constexpr std::array<ResultWords, 16> kResultWords{{
    {RewriteResult::Written, "written", nullptr},
    {RewriteResult::Unchanged, "unchanged", nullptr},
    {RewriteResult::Unreadable, "unreadable", nullptr},
    {RewriteResult::Unsupported, "unsupported", nullptr},
    {RewriteResult::NotWhole, "unsupported", "its JPEG segments could not be followed up to the picture"},
    {RewriteResult::ExifUnclear, "unsupported", "its Exif block could not be followed"},
    {RewriteResult::MakerNoteUnclear, "unsupported", "its maker note could not be followed"},
    {RewriteResult::IndexUnclear, "unsupported", "its index of further pictures could not be followed"},
    {RewriteResult::TrailerUnclear, "unsupported",
     "data behind the picture count from the start of the file"},
    {RewriteResult::TooLarge, "too large", nullptr},
    {RewriteResult::ExifFull, "too large", "its Exif block has no room for it"},
    {RewriteResult::Denied, "denied", nullptr},
    {RewriteResult::NoSpace, "no space", nullptr},
    {RewriteResult::InUse, "in use", nullptr},
    {RewriteResult::Changed, "changed meanwhile", nullptr},
    {RewriteResult::Failed, "failed", nullptr},
}};

const ResultWords& WordsOf(RewriteResult result) {
    const auto found = std::find_if(kResultWords.begin(), kResultWords.end(),
                                    [result](const ResultWords& words) { return words.result == result; });
    return found == kResultWords.end() ? kResultWords.back() : *found;
}

}  // namespace

const char* NameOf(RewriteResult result) { return WordsOf(result).name; }
const char* ReasonOf(RewriteResult result) { return WordsOf(result).reason; }

RewriteResult SafeRewrite(const std::string& path, const PlanChange& plan) {
    return SafeRewriteAll({&path, 1}, [&plan](std::size_t, FileChange& change) { return plan(change); })
        .front();
}

std::vector<RewriteResult> SafeRewriteAll(
    std::span<const std::string> paths,
    const std::function<RewriteResult(std::size_t index, FileChange& change)>& plan) {
    std::vector<RewriteResult> results(paths.size(), RewriteResult::Failed);
    TempSession session(State().settings.TempFolder);
    Group group(session, results);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (group.Holds(paths[i])) group.Run();
        if (!session.IsOpen()) {
            if (const RewriteResult opened = session.Open(); opened != RewriteResult::Written) {
                std::fill(results.begin() + static_cast<std::ptrdiff_t>(i), results.end(), opened);
                break;
            }
        }
        Job job;
        job.index = i;
        FileChange change;
        results[i] = OpenJob(paths[i], job);
        if (results[i] == RewriteResult::Written) results[i] = plan(i, change);
        if (results[i] == RewriteResult::Written) results[i] = ChooseStrategy(job, change);
        if (results[i] == RewriteResult::Unchanged)
            job.file.SetTimes(job.before.accessed, TimeOf(change.stamp));
        if (results[i] != RewriteResult::Written) continue;
        if (job.record.strategy == Strategy::Copied) {
            group.RunAndStay();
            results[i] = RunWithCopy(session, job);
            job.file.Close();
            session.Close();  // others get a turn
        } else {
            group.Add(std::move(job));
        }
    }
    group.Run();
    for (std::size_t i = 0; i < paths.size(); ++i) LogResult(paths[i], results[i]);
    return results;
}

int RecoverRewrites(const std::string& tempFolder) {
    if (!files::IsFolder(tempFolder)) return 0;
    TempSession session(tempFolder);
    session.Open(kRecoveryLockWaitMs);
    return session.RestoredFiles();
}

std::vector<std::string> RecoverBeforeReading(const std::string& tempFolder) {
    const std::vector<RewriteRecord> records = PeekAtJournal(tempFolder);
    if (records.empty()) return {};
    TempSession session(tempFolder);
    const RewriteResult opened = session.Open(kReadingLockWaitMs);
    std::vector<std::string> torn;
    // Who is still writing after that time has a file in hand that will be whole.
    if (opened == RewriteResult::InUse) return torn;
    for (const RewriteRecord& record : opened == RewriteResult::Written ? session.Pending() : records)
        torn.push_back(record.path);
    return torn;
}

}  // namespace kalmora
