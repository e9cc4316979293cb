#include "store/import.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "base/log.h"
#include "media/photo.h"
#include "platform/abandoned_files.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "platform/transfer.h"
#include "store/data_folder.h"
#include "store/day_index.h"
#include "store/file_helpers.h"
#include "store/import_batch.h"
#include "store/import_source.h"
#include "store/import_walk.h"
#include "store/index_manager.h"
#include "store/index_progress.h"
#include "store/index_stop.h"

namespace kalmora {

namespace {

constexpr std::size_t kMostForIndex = 4096;  // paths: each day's index is read and written once for them

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.size() - GetFileName(path).size() - 1);
}

// Indexes belong to their folder, and scratch files to whoever makes them.
bool IsPassedOver(const std::string& name) {
    return name == kIndexFileName || files::HasScratchName(name) || IsJunkName(name);
}

// ---- the walk before the import

class FileCounter final : public WalkListener {
public:
    void OnFile(const SourceFile& file, const std::vector<std::string>&) override {
        if (const auto status = files::GetStatus(file.path); status && status->isRegular)
            bytes += status->size;
        if (++files % 100 == 0) TellProgress(0, "Import Target = %d files", files);
    }
    void OnNews(const std::string& folder, FolderNews news) override {
        if (news == FolderNews::MeetsTarget) meetsTarget = folder;
    }
    void OnLeft(const std::string&) override {}

    int files = 0;
    std::uint64_t bytes = 0;
    std::string meetsTarget;  // a folder that does
};

std::uint64_t OnDisk(std::uint64_t size) {
    constexpr std::uint64_t kBlock = 4096;
    return (size + kBlock - 1) / kBlock * kBlock;
}

// ---- the import itself

class Importer final : public WalkListener {
public:
    Importer(const ImportOptions& options, ImportSummary& summary)
        : options_(options),
          summary_(summary),
          links_(options.naming, TargetNames::Form::Shortcut),
          batch_(options.naming, [this](std::span<ImportedFile> files) { OnSettled(files); }) {
        if (options.source == ImportOptions::Source::Goes && journal_.Open(State().TempFolder)) {
            journal_.Settle();
            batch_.UseJournal(&journal_);
        }
    }

    // True when it fits, as far as can be told.
    bool HasRoom(const FileCounter& all);
    void OnFile(const SourceFile& file, const std::vector<std::string>& siblings) override;
    void OnNews(const std::string& folder, FolderNews news) override;
    void OnLeft(const std::string& folder) override;
    void Finish();

private:
    void MakeLink(ImportedFile file, const std::string& dayFolder);
    std::string FolderOfDay(const ImportedFile& file) const {
        return MakeDayFolderPath(options_.root, file.day.year, file.day.month, file.day.day);
    }
    CalendarDate DayOf(const SystemTime& taken) const {
        const SystemTime day = ApplyDayEnd(taken, options_.dayEnd);
        return {day.year, day.month, day.day};
    }
    std::string NoteOf(const ImportedFile& file) const;
    void WriteNotes(std::span<ImportedFile> files);
    void OnSettled(std::span<ImportedFile> files);
    void Tell(const ImportedFile& file);
    void AddToIndex(const std::string& path);
    void RemoveEmptyFolders();
    void SweepOnce(const std::string& dayFolder);

    const ImportOptions& options_;
    ImportSummary& summary_;
    ImportJournal journal_;
    TargetNames links_;
    ImportBatch batch_;
    std::vector<std::string> forIndex_;
    std::vector<std::string> leftFolders_;        // walked, and to be removed when they are empty
    std::set<std::string> arrivedIn_;             // day folders
    std::map<std::string, SystemTime> unsigned_;  // phone pictures whose source could not be written
};

// Sums up what the calendar does not have yet.
class RoomCounter final : public WalkListener {
public:
    RoomCounter(const ImportOptions& options) : options_(options), names_(options.naming) {}
    void OnFile(const SourceFile& file, const std::vector<std::string>&) override {
        const auto status = files::GetStatus(file.path);
        const auto taken = status && status->isRegular ? DateOfSource(file.path) : std::nullopt;
        if (!taken || IsPassedOver(GetFileName(file.path))) return;
        const SystemTime day = ApplyDayEnd(*taken, options_.dayEnd);
        const std::string folder = MakeDayFolderPath(options_.root, day.year, day.month, day.day);
        if (!names_.Look(file.path, folder).path.empty()) bytes += OnDisk(status->size);
    }
    void OnNews(const std::string&, FolderNews) override {}
    void OnLeft(const std::string&) override {}

    std::uint64_t bytes = 0;

private:
    const ImportOptions& options_;
    TargetNames names_;
};

bool Importer::HasRoom(const FileCounter& all) {
    MakeDirectories(options_.root);
    const auto rootStatus = files::GetStatus(options_.root);
    const bool isRenamed = options_.source == ImportOptions::Source::Goes && rootStatus &&
                           std::ranges::all_of(options_.sources, [&](const std::string& source) {
                               const auto status = files::GetStatus(source);
                               return status && status->volume == rootStatus->volume;
                           });
    if (isRenamed || options_.source == ImportOptions::Source::GetsShortcut) return true;
    const auto free = files::FreeSpace(options_.root);
    constexpr std::uint64_t kBlock = 4096;
    summary_.freeBytes = free.value_or(0);
    summary_.neededBytes = all.bytes + kBlock * static_cast<std::uint64_t>(all.files);
    if (!free || summary_.neededBytes <= *free) return true;
    // It is tight: what the calendar has already needs no room.
    RoomCounter room(options_);
    SourceWalk(room, options_.root).Walk(options_.sources);
    summary_.neededBytes = room.bytes;
    return summary_.neededBytes <= *free;
}

void Importer::OnNews(const std::string& folder, FolderNews news) {
    ImportedFile told;
    told.source = folder;
    told.isFolder = true;
    switch (news) {
        case FolderNews::Followed:
            told.result = ImportResult::Followed;
            break;
        case FolderNews::VisitedOnce:
            told.result = ImportResult::VisitedOnce;
            break;
        case FolderNews::Junk:
            told.result = ImportResult::PassedOver;
            break;
        case FolderNews::Unreadable:
            told.result = ImportResult::Unreadable;
            if (std::ranges::find(options_.sources, folder) != options_.sources.end()) {
                summary_.end = ImportEnd::Unreadable;
                summary_.refused = folder;
            }
            break;
        case FolderNews::MeetsTarget:
            told.result = ImportResult::MeetsTarget;
            break;
    }
    batch_.AddSettled(std::move(told));
}

void Importer::OnLeft(const std::string& folder) {
    // Whatever is to become of the sources, also of the import folder itself: meant, and held by
    // ImportFolderTest.EmptyFoldersGoAlsoWhenFilesAreCopied.
    leftFolders_.push_back(folder);
    RemoveEmptyFolders();
}

void Importer::RemoveEmptyFolders() {
    if (!batch_.IsEmpty()) return;  // they are not empty yet
    for (const std::string& folder : leftFolders_) files::RemoveEmptyFolder(folder);
    leftFolders_.clear();
}

void Importer::OnFile(const SourceFile& source, const std::vector<std::string>&) {
    const std::string& path = source.path;
    ImportedFile file;
    file.source = path;
    file.kind = static_cast<std::int32_t>(ClassifyFile(path));
    const auto status = files::GetStatus(path);
    if (!status || !status->isRegular || IsPassedOver(GetFileName(path))) {
        file.result = status ? ImportResult::PassedOver : ImportResult::Gone;
        return batch_.AddSettled(std::move(file));
    }
    IsReadOnly(path);  // tells the log
    std::optional<SystemTime> taken = PhoneNameDate(GetFileName(path));
    if (taken) {
        Log("[ades] %d/%02d/%02d %02d:%02d:%02d", taken->year, taken->month, taken->day, taken->hour,
            taken->minute, taken->second);
        const RewriteResult result = WritePhoneDate(path, *taken);
        if (!IsDone(result) && file.kind == kKindImage) unsigned_[path] = *taken;
    } else {
        taken = DateOfSource(path);
    }
    if (!taken) {
        file.result = files::Exists(path) ? ImportResult::Failed : ImportResult::Gone;
        return batch_.AddSettled(std::move(file));
    }
    file.taken = *taken;
    file.day = DayOf(*taken);
    const std::string folder = FolderOfDay(file);
    SweepOnce(folder);
    if (options_.source == ImportOptions::Source::GetsShortcut) return MakeLink(std::move(file), folder);
    const bool goes = options_.source == ImportOptions::Source::Goes && !source.isBehindLink;
    file.sourceStays = options_.source == ImportOptions::Source::Goes && source.isBehindLink;
    batch_.Add(std::move(file), folder, goes ? ImportBatch::Source::Goes : ImportBatch::Source::Stays);
}

// The first time that a day is come to, what a killed import left in it goes.
void Importer::SweepOnce(const std::string& dayFolder) {
    if (!arrivedIn_.insert(dayFolder).second) return;
    for (const files::FolderEntry& entry : files::ListFolder(dayFolder))
        if (!entry.isFolder && files::HasScratchName(entry.name))
            files::RemoveAbandoned(dayFolder, entry.name);
}

void Importer::MakeLink(ImportedFile file, const std::string& dayFolder) {
    const TargetNames::Choice choice = links_.Choose(file.source, dayFolder);
    file.result = choice.path.empty() ? choice.why : ImportResult::Linked;
    if (!choice.path.empty()) {
        // The index gets the path without ".lnk", at which nothing stands, until an update drops it: meant,
        // and held by ImportShortcutTest.IndexHasThePathBesideTheLink.
        AddToIndex(choice.path);
        file.target = choice.path + ".lnk";
        if (!shell::CreateShortcut(file.target, file.source)) {
            file.result = ImportResult::Denied;
            file.target.clear();
        }
    }
    batch_.AddSettled(std::move(file));
}

std::string Importer::NoteOf(const ImportedFile& file) const {
    std::string note;
    if (options_.addComment && !options_.comment.empty()) note = options_.comment + "\r\n";
    if (options_.addFolderName) note += GetFileName(FolderOf(file.source));
    return note;
}

void Importer::WriteNotes(std::span<ImportedFile> files) {
    std::vector<CPhoto> photos;
    std::vector<std::string> notes;
    std::vector<ImportedFile*> owners;
    for (ImportedFile& file : files) {
        if (!HasArrived(file.result) || file.kind != kKindImage || file.result == ImportResult::Linked)
            continue;
        if (const auto signedLate = unsigned_.extract(file.source))
            WritePhoneDate(file.target, signedLate.mapped());
        std::string note = NoteOf(file);
        if (note.empty()) continue;
        photos.emplace_back(file.target);
        notes.push_back(std::move(note));
        owners.push_back(&file);
    }
    if (photos.empty()) return;
    const std::vector<RewriteResult> results = AppendCommentAll(photos, notes);
    for (std::size_t i = 0; i < owners.size(); ++i) owners[i]->note = results[i];
}

void Importer::OnSettled(std::span<ImportedFile> files) {
    WriteNotes(files);
    for (const ImportedFile& file : files) {
        const bool isInIndex = file.result == ImportResult::Linked;
        if (HasArrived(file.result) && !isInIndex && (options_.addFolderName || options_.addComment))
            AddToIndex(file.target);
        Tell(file);
    }
}

void Importer::Tell(const ImportedFile& file) {
    ++summary_.counts[file.result];
    // A picture of a kind that takes no words has come in all the same.
    const bool lacksNote = file.note && !IsDone(*file.note) && *file.note != RewriteResult::Unsupported;
    if (IsFailure(file.result) || lacksNote) ++summary_.failures;
    if (HasArrived(file.result)) summary_.months.insert({file.day.year, file.day.month});
    if (options_.onFile) options_.onFile(file);
    if (file.isFolder) return;
    const int done = ++State().ImportDone, total = std::max<int>(State().ImportTotal, done);
    const double ratio = static_cast<double>(done) / total;
    TellProgress(ratio, "%d/%d = %.2lf%% (%s)", done, total, ratio * 100, FolderOf(file.source).c_str());
}

void Importer::AddToIndex(const std::string& path) {
    forIndex_.push_back(path);
    if (forIndex_.size() >= kMostForIndex) AddFilesToIndex(std::exchange(forIndex_, {}));
}

void Importer::Finish() {
    batch_.Settle();
    RemoveEmptyFolders();
    AddFilesToIndex(std::exchange(forIndex_, {}));
    // The card may be wiped as soon as the import says that it is done.
    std::vector<std::string> folders;
    for (const std::string& folder : arrivedIn_)
        if (files::IsFolder(folder)) folders.push_back(folder);
    files::FlushFolders(folders);
}

}  // namespace

ImportOptions ImportOptionsOfSettings() {
    const AppState& state = State();
    ImportOptions options;
    options.sources = {state.ImportDirectory};
    options.root = MainRoot();
    // Shortcuts come first: with both flags set nothing is removed.
    options.source = state.ImportAsShortcutFile ? ImportOptions::Source::GetsShortcut
                     : state.RemoveImportFiles  ? ImportOptions::Source::Goes
                                                : ImportOptions::Source::Stays;
    options.naming = state.RenameFileWhenMove ? Naming::Number : Naming::Keep;
    options.addFolderName = state.InsertOriginalPathToExif;
    options.addComment = state.ImportCommentOn == 1;
    options.comment = state.ImportComment;
    options.dayEnd = state.DayEndTimeForScrap;
    return options;
}

namespace {

// False when nothing may be imported; the summary says why.
bool AreSourcesGood(const ImportOptions& options, ImportSummary& summary) {
    const auto refuse = [&summary](ImportEnd why, const std::string& what) {
        summary.end = why;
        summary.refused = what;
        Log("import refused (%d): %s", static_cast<int>(why), what.c_str());
        return false;
    };
    if (options.sources.empty()) return refuse(ImportEnd::NoSource, "");
    for (const std::string& source : options.sources)
        if (!files::IsAbsolute(source) || !(files::Exists(source) || files::IsLink(source)))
            return refuse(ImportEnd::NoSource, source);
    for (const std::string& source : options.sources)
        if (files::LiesIn(source, options.root) || files::LiesIn(options.root, source))
            return refuse(ImportEnd::MeetsTarget, source);
    return true;
}

}  // namespace

ImportSummary RunImport(const ImportOptions& given) {
    AppState& state = State();
    ImportOptions options = given;
    for (std::string& source : options.sources)
        while (source.size() > 1 && source.back() == files::kSeparator) source.pop_back();
    ImportSummary summary;
    state.ImportTotal = 0;
    state.ImportDone = 0;
    if (!AreSourcesGood(options, summary)) return summary;
    FileCounter count;
    SourceWalk(count, options.root).Walk(options.sources);
    if (!count.meetsTarget.empty()) {
        summary.end = ImportEnd::MeetsTarget;
        summary.refused = count.meetsTarget;
        return summary;
    }
    Importer importer(options, summary);
    summary.total = count.files;
    state.ImportTotal = count.files;
    if (!importer.HasRoom(count)) {
        Log("import needs %llu bytes, free are %llu", static_cast<unsigned long long>(summary.neededBytes),
            static_cast<unsigned long long>(summary.freeBytes));
        summary.end = ImportEnd::NoSpace;
        return summary;
    }
    if (!SourceWalk(importer, options.root).Walk(options.sources)) summary.end = ImportEnd::Interrupted;
    importer.Finish();
    summary.done = state.ImportDone;
    return summary;
}

}  // namespace kalmora
