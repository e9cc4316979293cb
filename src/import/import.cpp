#include "import/import.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "base/log.h"
#include "base/path_names.h"
#include "import/import_arrivals.h"
#include "import/import_batch.h"
#include "import/import_companions.h"
#include "import/import_room.h"
#include "import/import_source.h"
#include "import/import_walk.h"
#include "index/day_index.h"
#include "index/index_manager.h"
#include "index/index_tree.h"
#include "index/month_index.h"
#include "media/photo_file.h"
#include "platform/abandoned_files.h"
#include "platform/files.h"
#include "platform/transfer.h"
#include "state/app_state.h"
#include "store/data_folder.h"
#include "store/file_helpers.h"
#include "store/shortcuts.h"

namespace kalmora {

namespace {

constexpr std::size_t kMostForIndex = 4096;  // paths: each day's index is read and written once for them

// Those whose data folder is away just now.
std::set<MonthToCome> OutOfReach(const std::set<MonthToCome>& months) {
    std::set<MonthToCome> away;
    for (const MonthToCome& one : months)
        if (!files::IsFolder(one.root)) away.insert(one);
    for (const MonthToCome& one : away)
        Log("index of %d/%d stays pending: no folder %s", one.year, one.month, one.root.c_str());
    return away;
}

// Nobody comes by later to do it on the command line, as the window's idle refresh does. Months that stand in
// the memory of this program learn of it, too. False when it was stopped, or when an index file could not be
// written.
bool UpdateMonths(const std::set<MonthToCome>& toIndex, const WorkContext& context) {
    std::map<std::string, std::vector<CalendarDate>> months;  // by data folder
    for (const MonthToCome& one : toIndex) months[one.root].push_back({one.year, one.month, 0});
    bool areWritten = true;
    for (const auto& [root, dates] : months)
        areWritten &= RunOverMonths(
            dates, context.stop, [&root = root, &context](const CalendarDate& date, IndexBatch& batch) {
                if (root == MainIndex().dataRoot)
                    if (const MonthPointer known = MainIndex().FindMonth(date.year, date.month);
                        known && known->IsLoaded(0))
                        return known->Update(0, batch);
                MonthIndex month(date.year, date.month, root, context);
                return month.Load(0, batch) && month.Update(0, batch);
            });
    return areWritten;
}

// True when the journal holds no months any more but those whose data folder is away.
bool UpdateNotedMonths(ArrivalJournal& arrivals, std::set<MonthToCome> months, const WorkContext& context) {
    const std::set<MonthToCome> away = OutOfReach(months);
    for (const MonthToCome& one : away) months.erase(one);
    if (!UpdateMonths(months, context)) return false;
    arrivals.ClearMonths(away);
    return true;
}

// Also when this import is then refused: a move that was killed may have taken its source away already.
void FinishFormerImport(const WorkContext& context, ImportSummary& summary) {
    ArrivalJournal former;
    if (!former.Open(State().settings.TempFolder)) return;
    // Whether an original may go depends on the bytes of its copy, which the words change.
    if (ImportJournal moves; former.HasWords() && moves.Open(State().settings.TempFolder)) moves.Recover();
    summary.wordsPending = former.Recover();
    UpdateNotedMonths(former, former.Months(), context);
}

// ---- the import itself

class Importer final : public WalkListener, private BatchListener, private TransferListener {
public:
    Importer(const ImportOptions& options, ImportSummary& summary)
        : options_(options),
          summary_(summary),
          links_(options.naming, TargetNames::Form::Shortcut, options.sameBy),
          rehearsed_(options.naming,
                     options.source == ImportOptions::Source::GetsShortcut ? TargetNames::Form::Shortcut
                                                                           : TargetNames::Form::File,
                     options.sameBy, TargetNames::OnReserved::CompareSources),
          batch_(TargetNames(options.naming, TargetNames::Form::File, options.sameBy), *this) {
        if (IsRehearsal()) return;
        batch_.UseListener(this);
        if (arrivals_.Open(State().settings.TempFolder)) batch_.UseArrivals(&arrivals_);
        former_ = toIndex_ = arrivals_.Months();
        if (options.source == ImportOptions::Source::Goes && journal_.Open(State().settings.TempFolder)) {
            journal_.Recover();
            batch_.UseJournal(&journal_);
        }
    }

    void OnFile(const SourceFile& file, const std::vector<std::string>& siblings) override;
    void OnNews(const std::string& folder, FolderNews news) override;
    void OnLeft(const std::string& folder) override;
    void Finish();

private:
    // A file that is on its way, and what goes with it.
    struct Group {
        ImportedFile file;
        std::vector<ImportBatch::Companion> companions;
    };
    bool IsRehearsal() const { return options_.run == ImportOptions::Run::Rehearsal; }
    // False when nothing is to be done with the file; its result says why.
    bool Describe(const std::string& path, ImportedFile& file) const;
    std::optional<SystemTime> DateOf(const ImportedFile& file);
    void AddCompanions(const std::string& folder, Group& group);
    void Take(Group group, bool isBehindLink);
    void Rehearse(Group group, const std::string& dayFolder, bool goes);
    void MakeLinks(Group group, const std::string& dayFolder);
    void MakeLink(ImportedFile file, const TargetNames::Choice& choice);
    std::string FolderOfDay(const ImportedFile& file) const {
        return MakeDayFolderPath(options_.root, file.day.year, file.day.month, file.day.day);
    }
    CalendarDate DayOf(const SystemTime& taken) const {
        const SystemTime day = ApplyDayEnd(taken, options_.dayEnd);
        return {day.year, day.month, day.day};
    }
    std::string WordsFor(const ImportedFile& file) const;
    void WriteWords(std::span<ImportedFile> files);
    void OnFinished(std::span<ImportedFile> files) override;
    bool OnTransfer(double fraction) override;
    void Report(const ImportedFile& file);
    void ShowCourse(double fraction) const;
    void AddToIndex(const std::string& path);
    void UpdateIndex();
    void RemoveEmptyFolders();
    void SweepOnce(const std::string& dayFolder);

    const ImportOptions& options_;
    ImportSummary& summary_;
    ImportJournal journal_;
    ArrivalJournal arrivals_;
    TargetNames links_, rehearsed_;
    ImportBatch batch_;
    std::string folder_;           // that the gauge names: of the file that is on its way
    std::string companionFolder_;  // of companions_
    FolderCompanions companions_;
    std::vector<std::string> forIndex_;
    std::vector<std::string> leftFolders_;        // walked, and to be removed when they are empty
    std::set<std::string> arrivedIn_;             // day folders
    std::set<MonthToCome> toIndex_;               // where something lies that an index may lack
    std::set<MonthToCome> former_;                // of them, those that former imports have left
    std::map<std::string, SystemTime> unsigned_;  // phone pictures whose source could not be written
};

void Importer::OnNews(const std::string& folder, FolderNews news) {
    ImportedFile report;
    report.source = folder;
    report.isFolder = true;
    switch (news) {
        case FolderNews::Followed:
            report.result = ImportResult::Followed;
            break;
        case FolderNews::VisitedOnce:
            report.result = ImportResult::VisitedOnce;
            break;
        case FolderNews::Junk:
            report.result = ImportResult::PassedOver;
            break;
        case FolderNews::Unreadable:
            report.result = ImportResult::Unreadable;
            if (std::ranges::find(options_.sources, folder) != options_.sources.end()) {
                summary_.end = ImportEnd::Unreadable;
                summary_.refused = folder;
            }
            break;
        case FolderNews::MeetsTarget:
            report.result = ImportResult::MeetsTarget;
            break;
    }
    batch_.AddFinished(std::move(report));
}

void Importer::OnLeft(const std::string& folder) {
    // Whatever is to become of the sources, also of the import folder itself: meant, and held by
    // ImportFolderTest.EmptyFoldersGoAlsoWhenFilesAreCopied.
    leftFolders_.push_back(folder);
    RemoveEmptyFolders();
}

void Importer::RemoveEmptyFolders() {
    if (IsRehearsal() || !batch_.IsEmpty()) return;  // not empty yet
    for (const std::string& folder : leftFolders_) files::RemoveEmptyFolder(folder);
    leftFolders_.clear();
}

bool Importer::Describe(const std::string& path, ImportedFile& file) const {
    file.source = path;
    file.kind = ClassifyFile(path);
    const auto status = files::GetStatus(path);
    if (!status || !status->isRegular || IsLeftAlone(GetFileName(path))) {
        file.result = status ? ImportResult::PassedOver : ImportResult::Gone;
        return false;
    }
    file.bytes = status->size;
    file.isProtected = IsReadOnly(path);  // logs it, too
    file.words = WordsFor(file);
    return true;
}

std::optional<SystemTime> Importer::DateOf(const ImportedFile& file) {
    const auto phone = PhoneNameDate(GetFileName(file.source));
    if (!phone) return DateOfSource(file.source);
    Log("[ades] %d/%02d/%02d %02d:%02d:%02d", phone->year, phone->month, phone->day, phone->hour,
        phone->minute, phone->second);
    if (IsRehearsal()) return phone;
    const RewriteResult result = WritePhoneDate(file.source, *phone);
    if (!IsDone(result) && file.kind == ObjectKind::Image) unsigned_[file.source] = *phone;
    return phone;
}

void Importer::OnFile(const SourceFile& source, const std::vector<std::string>& siblings) {
    const std::string folder = FolderOfPath(source.path), name = GetFileName(source.path);
    if (folder != companionFolder_ || siblings.size() == 1) {
        companionFolder_ = folder;
        companions_ = FolderCompanions(siblings);
    }
    if (companions_.IsCompanion(name)) return;  // it comes with its photo
    Group group;
    if (!Describe(source.path, group.file)) {
        batch_.AddFinished(std::move(group.file));
    } else if (const auto taken = DateOf(group.file)) {
        group.file.taken = *taken;
        group.file.day = DayOf(*taken);
        AddCompanions(folder, group);
        return Take(std::move(group), source.isBehindLink);
    } else {
        group.file.result = files::Exists(source.path) ? ImportResult::Failed : ImportResult::Gone;
        batch_.AddFinished(std::move(group.file));
    }
    // Without their photo they are files like others.
    const std::vector<CompanionName> alone = companions_.Of(name);
    for (const CompanionName& one : alone) {
        OnFile({files::Join(folder, one.name), source.isBehindLink}, {one.name});
        companionFolder_.clear();
    }
}

void Importer::AddCompanions(const std::string& folder, Group& group) {
    for (const CompanionName& one : companions_.Of(GetFileName(group.file.source))) {
        ImportedFile file;
        if (!Describe(files::Join(folder, one.name), file)) {
            batch_.AddFinished(std::move(file));
            continue;
        }
        file.taken = group.file.taken;
        file.day = group.file.day;
        group.companions.push_back({std::move(file), one.stemLength});
    }
}

void Importer::Take(Group group, bool isBehindLink) {
    const std::string dayFolder = FolderOfDay(group.file);
    const bool wantsToGo = options_.source == ImportOptions::Source::Goes;
    const bool goes = wantsToGo && !isBehindLink;
    group.file.sourceStays = wantsToGo && !goes;
    for (ImportBatch::Companion& one : group.companions) one.file.sourceStays = wantsToGo && !goes;
    if (IsRehearsal()) return Rehearse(std::move(group), dayFolder, goes);
    SweepOnce(dayFolder);
    folder_ = FolderOfPath(group.file.source);
    arrivals_.AddMonth({options_.root, group.file.day.year, group.file.day.month});
    if (options_.source == ImportOptions::Source::GetsShortcut) return MakeLinks(std::move(group), dayFolder);
    batch_.Add(std::move(group.file), dayFolder,
               goes ? ImportBatch::Source::Goes : ImportBatch::Source::Stays, std::move(group.companions));
}

std::vector<TargetNames::Companion> NamesOf(std::span<const ImportBatch::Companion> companions) {
    std::vector<TargetNames::Companion> names;
    for (const ImportBatch::Companion& one : companions)
        names.push_back({{one.file.source, one.file.words}, one.stemLength});
    return names;
}

void Importer::Rehearse(Group group, const std::string& dayFolder, bool goes) {
    const auto finish = [&](ImportedFile& file, const TargetNames::Choice& choice) {
        file.existing = choice.existing;
        file.target = choice.path;
        if (choice.path.empty())
            file.result = choice.why;
        else if (options_.source == ImportOptions::Source::GetsShortcut)
            file.result = ImportResult::Linked, file.target += ".lnk";
        else
            file.result = goes && !file.isProtected ? ImportResult::Moved : ImportResult::Copied;
        if (goes && file.isProtected && HasArrived(file.result)) file.sourceStays = true;
        if (!choice.path.empty()) rehearsed_.Reserve(choice.path, file.source);
        batch_.AddFinished(std::move(file));
    };
    const std::vector<TargetNames::Companion> beside = NamesOf(group.companions);
    const auto choice = rehearsed_.Look({group.file.source, group.file.words}, dayFolder, beside);
    for (std::size_t i = 0; i < beside.size(); ++i)
        finish(group.companions[i].file, rehearsed_.LookBeside(beside[i], dayFolder, choice.number));
    finish(group.file, choice);
}

// On first access to a day, removes scratch files that a killed import left there.
void Importer::SweepOnce(const std::string& dayFolder) {
    if (!arrivedIn_.insert(dayFolder).second) return;
    for (const files::FolderEntry& entry : files::ListFolder(dayFolder))
        if (!entry.isFolder && files::HasScratchName(entry.name))
            files::RemoveAbandoned(dayFolder, entry.name);
}

void Importer::MakeLinks(Group group, const std::string& dayFolder) {
    const std::vector<TargetNames::Companion> beside = NamesOf(group.companions);
    const auto choice = links_.Choose({group.file.source}, dayFolder, beside);
    for (std::size_t i = 0; i < beside.size(); ++i)
        MakeLink(std::move(group.companions[i].file),
                 links_.ChooseBeside(beside[i], dayFolder, choice.number));
    MakeLink(std::move(group.file), choice);
}

void Importer::MakeLink(ImportedFile file, const TargetNames::Choice& choice) {
    file.existing = choice.existing;
    file.result = choice.path.empty() ? choice.why : ImportResult::Linked;
    file.bytes = 0;
    if (!choice.path.empty()) {
        // The index gets the path without ".lnk", where there is no file, until an update drops it: intended,
        // and held by ImportShortcutTest.IndexHasThePathBesideTheLink.
        AddToIndex(choice.path);
        file.target = choice.path + ".lnk";
        if (!CreateShortcut(file.target, file.source)) {
            file.result = ImportResult::Denied;
            file.target.clear();
        }
    }
    batch_.AddFinished(std::move(file));
}

// A shortcut takes no words: the file that it leads to stays as it is.
std::string Importer::WordsFor(const ImportedFile& file) const {
    if (file.kind != ObjectKind::Image || options_.source == ImportOptions::Source::GetsShortcut) return {};
    std::string words;
    if (options_.addComment && !options_.comment.empty()) words = options_.comment + "\r\n";
    if (options_.addFolderName) words += GetFileName(FolderOfPath(file.source));
    return words;
}

void Importer::WriteWords(std::span<ImportedFile> files) {
    std::vector<PhotoFile> photos;
    std::vector<std::string> words;
    std::vector<ImportedFile*> owners;
    for (ImportedFile& file : files) {
        if (!HasArrived(file.result) || file.kind != ObjectKind::Image || file.result == ImportResult::Linked)
            continue;
        if (const auto signedLate = unsigned_.extract(file.source))
            WritePhoneDate(file.target, signedLate.mapped());
        if (file.words.empty()) continue;
        photos.emplace_back(file.target);
        words.push_back(file.words);
        owners.push_back(&file);
    }
    if (photos.empty()) return;
    const std::vector<RewriteResult> results = AppendCommentAll(photos, words);
    for (std::size_t i = 0; i < owners.size(); ++i) owners[i]->commentResult = results[i];
}

void Importer::OnFinished(std::span<ImportedFile> files) {
    if (!IsRehearsal()) {
        WriteWords(files);
        arrivals_.ClearWords();
    }
    for (const ImportedFile& file : files) {
        const bool isInIndex = file.result == ImportResult::Linked || IsRehearsal();
        if (HasArrived(file.result) && !isInIndex && (options_.addFolderName || options_.addComment))
            AddToIndex(file.target);
        Report(file);
    }
}

void Importer::Report(const ImportedFile& file) {
    ++summary_.counts[file.result];
    // A picture of a kind that takes no words has come in all the same.
    const bool lacksWords =
        file.commentResult && !IsDone(*file.commentResult) && !IsUnsupported(*file.commentResult);
    if (IsFailure(file.result) || lacksWords) ++summary_.failures;
    if (HasArrived(file.result)) {
        ++summary_.taken;
        summary_.bytes += file.bytes;
        summary_.months.insert({file.day.year, file.day.month});
    } else if (file.result == ImportResult::Differs) {
        ++summary_.differing;
    } else if (!IsFailure(file.result)) {
        ++summary_.passedOver;
    }
    // A file that is there may be one that a killed import has left outside the index.
    if (file.day.day > 0 && !IsFailure(file.result))
        toIndex_.insert({options_.root, file.day.year, file.day.month});
    options_.arrivals->OnFile(file);
    if (file.isFolder) return;
    ++State().run.ImportDone;
    folder_ = FolderOfPath(file.source);
    ShowCourse(0);
}

// `fraction`: of the file that is on its way.
void Importer::ShowCourse(double fraction) const {
    const int done = State().run.ImportDone, total = std::max<int>(State().run.ImportTotal, done);
    const double ratio = total > 0 ? std::min(1.0, (done + fraction) / total) : 0;
    ReportProgress(*options_.context.progress, ratio, "%d/%d = %.2lf%% (%s)", done, total, ratio * 100,
                   folder_.c_str());
}

bool Importer::OnTransfer(double fraction) {
    ShowCourse(fraction);
    if (!options_.context.stop.IsStopped()) return true;
    summary_.end = ImportEnd::Interrupted;
    return false;
}

void Importer::AddToIndex(const std::string& path) {
    forIndex_.push_back(path);
    if (forIndex_.size() >= kMostForIndex) AddFilesToIndex(std::exchange(forIndex_, {}));
}

void Importer::UpdateIndex() {
    if (options_.index == ImportOptions::Index::UpToDate)
        summary_.isIndexed = UpdateNotedMonths(arrivals_, toIndex_, options_.context);
    else
        arrivals_.ClearMonths(former_);
}

void Importer::Finish() {
    batch_.Finish();
    if (IsRehearsal()) return;
    RemoveEmptyFolders();
    AddFilesToIndex(std::exchange(forIndex_, {}));
    // The card may be wiped as soon as the import says that it is done.
    std::vector<std::string> folders;
    for (const std::string& folder : arrivedIn_)
        if (files::IsFolder(folder)) folders.push_back(folder);
    files::FlushFolders(folders);
    if (summary_.end != ImportEnd::Interrupted) UpdateIndex();
}

}  // namespace

ArrivalListener& NoArrivals() {
    class NoListener final : public ArrivalListener {
        void OnFile(const ImportedFile&) override {}
    };
    static auto* const none = new NoListener;  // workers may outlive main
    return *none;
}

ImportOptions ImportOptionsOfSettings() {
    const AppState& state = State();
    ImportOptions options;
    options.sources = {state.settings.ImportDirectory};
    options.root = MainRoot();
    // Shortcuts come first: with both flags set nothing is removed.
    options.source = state.settings.ImportAsShortcutFile ? ImportOptions::Source::GetsShortcut
                     : state.settings.RemoveImportFiles  ? ImportOptions::Source::Goes
                                                         : ImportOptions::Source::Stays;
    options.naming = state.settings.RenameFileWhenMove ? Naming::Number : Naming::Keep;
    options.addFolderName = state.settings.InsertOriginalPathToExif;
    options.addComment = state.run.ImportCommentOn == 1;
    options.comment = state.run.ImportComment;
    options.dayEnd = state.settings.DayEndTimeForScrap;
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
    state.run.ImportTotal = 0;
    state.run.ImportDone = 0;
    if (options.run == ImportOptions::Run::ForReal) FinishFormerImport(options.context, summary);
    if (!AreSourcesGood(options, summary)) return summary;
    const SourceCount count = CountSources(options);
    if (!count.meetsTarget.empty()) {
        summary.end = ImportEnd::MeetsTarget;
        summary.refused = count.meetsTarget;
        return summary;
    }
    summary.total = count.files;
    state.run.ImportTotal = count.files;
    if (!HasRoom(options, count, summary)) {
        Log("import needs %llu bytes, free are %llu", static_cast<unsigned long long>(summary.neededBytes),
            static_cast<unsigned long long>(summary.freeBytes));
        summary.end = ImportEnd::NoSpace;
        return summary;
    }
    Importer importer(options, summary);
    if (!SourceWalk(importer, options.root, options.context.stop).Walk(options.sources))
        summary.end = ImportEnd::Interrupted;
    importer.Finish();
    summary.done = state.run.ImportDone;
    return summary;
}

}  // namespace kalmora
