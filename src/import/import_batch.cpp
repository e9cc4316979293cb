#include "import/import_batch.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/log.h"
#include "base/path_names.h"
#include "platform/files.h"
#include "store/data_folder.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

using files::FileResult;
using files::NewCopy;

constexpr std::size_t kMostCopies = 256;  // each is an open file until it appears
constexpr std::size_t kMostFiles = 512;
constexpr std::uint64_t kMostBytes = 256u << 20;
constexpr int kMostAttempts = 1000;  // at a name, while others take one after the other

bool IsSameFile(const std::string& a, const std::string& b) {
    const auto one = files::GetStatus(a), other = files::GetStatus(b);
    return one && other && one->volume == other->volume && one->identity == other->identity;
}

// True when the two are one file under two names, as a move leaves it that is killed where a file system has
// to do it in two steps. Folders that are one under two names make one name of it.
bool IsSecondName(const std::string& source, const std::string& existing) {
    return !existing.empty() && !files::IsLink(source) && !files::IsLink(existing) &&
           IsSameFile(source, existing) && !IsSameFile(FolderOfPath(source), FolderOfPath(existing));
}

// One of the two passes over a file that moves to another volume: it is copied, then compared.
class HalfOfATransfer final : public TransferListener {
public:
    enum class Half { First, Second, Whole };
    HalfOfATransfer(TransferListener* whole, Half half) : whole_(whole), half_(half) {}
    bool OnTransfer(double fraction) override {
        if (!whole_) return true;
        if (half_ == Half::Whole) return whole_->OnTransfer(fraction);
        return whole_->OnTransfer(fraction / 2 + (half_ == Half::Second ? 0.5 : 0));
    }

private:
    TransferListener* const whole_;
    const Half half_;
};

void LogFailure(const ImportedFile& file) {
    if (IsFailure(file.result))
        Log("not imported (%s): %s", NameOf(file.result), file.source.c_str());
    else if (file.sourceStays)
        Log("imported, source stays: %s", file.source.c_str());
}

}  // namespace

void ImportBatch::AddFinished(ImportedFile file) {
    files_.push_back(std::move(file));
    if (files_.size() >= kMostFiles) Finish();
}

void ImportBatch::Add(ImportedFile file, const std::string& dayFolder, Source source,
                      std::vector<Companion> companions) {
    const TargetNames::Incoming incoming{file.source, file.words};
    std::vector<TargetNames::Companion> beside;
    for (const Companion& one : companions)
        beside.push_back({{one.file.source, one.file.words}, one.stemLength});
    int number = 0;
    if (!companions.empty()) {
        TargetNames::Choice choice = names_.Choose(incoming, dayFolder, beside);
        if (choice.mustWait) {
            Finish();
            choice = names_.Choose(incoming, dayFolder, beside);
        }
        number = choice.number;
    }
    for (std::size_t i = 0; i < companions.size(); ++i)
        Place(std::move(companions[i].file), dayFolder, source,
              [&] { return names_.ChooseBeside(beside[i], dayFolder, number); });
    const std::string name = GetFileName(incoming.source), extension = GetExtension(name);
    const std::size_t stemLength = name.size() - (extension.empty() ? 0 : extension.size() + 1);
    Place(std::move(file), dayFolder, source, [&] {
        return number > 0 ? names_.ChooseBeside({incoming, stemLength}, dayFolder, number)
                          : names_.Choose(incoming, dayFolder);
    });
}

void ImportBatch::Place(ImportedFile file, const std::string& dayFolder, Source source,
                        const Choose& choose) {
    file.result = TryPlaces(file, dayFolder, source, choose);
    // A copy that was begun finds its file by its place, and that comes with the next line.
    files_.push_back(std::move(file));
    if (waiting_.size() >= kMostCopies || bytes_ >= kMostBytes || files_.size() >= kMostFiles) Finish();
}

ImportResult ImportBatch::TryPlaces(ImportedFile& file, const std::string& dayFolder, Source source,
                                    const Choose& choose) {
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        const TargetNames::Choice choice = choose();
        if (choice.mustWait) {
            Finish();
            continue;
        }
        file.existing = choice.existing;
        if (choice.path.empty() && source == Source::Goes && IsSecondName(file.source, choice.existing) &&
            files::RemoveFile(file.source) == FileResult::Done) {
            file.target = choice.existing;
            return ImportResult::Moved;
        }
        if (choice.path.empty()) return choice.why;
        // A file that its owner has protected is copied and not taken away.
        if (source == Source::Stays || file.isProtected) return StartCopy(file, dayFolder, source, choice);
        const auto moved = MoveByName(file, choice);
        if (!moved) return StartCopy(file, dayFolder, source, choice);
        if (*moved != ImportResult::Taken) return *moved;
        // Another program took that name first.
    }
    return ImportResult::Taken;
}

// Empty when the file cannot get there by another name alone.
std::optional<ImportResult> ImportBatch::MoveByName(ImportedFile& file,
                                                    const TargetNames::Choice& choice) const {
    // A link would point elsewhere from its new place: what it points at is copied, and the link goes.
    if (files::IsLink(file.source)) return std::nullopt;
    if (arrivals_ && !file.words.empty())
        if (const auto status = files::GetStatus(file.source))
            arrivals_->AddWords({choice.path, file.words, status->size, status->written});
    switch (files::RenameNew(file.source, choice.path)) {
        case FileResult::Done:
            file.target = choice.path;
            return ImportResult::Moved;
        case FileResult::Exists:
            return ImportResult::Taken;
        case FileResult::NotFound:
            return files::Exists(file.source) ? ImportResult::Failed : ImportResult::Gone;
        case FileResult::Denied:
        case FileResult::NoSpace:
        case FileResult::Failed:
            break;
    }
    return std::nullopt;
}

ImportResult ImportBatch::StartCopy(ImportedFile& file, const std::string& dayFolder, Source source,
                                    const TargetNames::Choice& choice) {
    const auto status = files::GetStatus(file.source);
    if (!status) return ImportResult::Gone;
    // Half a copy of what will not fit would only wear the disk and push others out.
    if (const auto free = files::FreeSpace(dayFolder); free && *free < status->size)
        return ImportResult::NoSpace;
    Waiting waiting;
    HalfOfATransfer listener(
        transfer_, source == Source::Goes ? HalfOfATransfer::Half::First : HalfOfATransfer::Half::Whole);
    if (const FileResult made = waiting.copy.Make(file.source, dayFolder, &listener);
        made != FileResult::Done) {
        const auto now = files::GetStatus(file.source);
        if (!now) return ImportResult::Gone;
        return now->size != status->size ? ImportResult::Changed : ImportResultOf(made);
    }
    waiting.index = files_.size();
    waiting.folder = dayFolder;
    waiting.goes = source == Source::Goes;
    file.target = choice.path;
    names_.Reserve(choice.path, file.source);
    bytes_ += status->size;
    waiting_.push_back(std::move(waiting));
    return ImportResult::Copied;
}

// Flushes all copies and lets go of those that are not what they should be.
void ImportBatch::CheckCopies() {
    std::vector<NewCopy*> copies;
    copies.reserve(waiting_.size());
    for (Waiting& one : waiting_) copies.push_back(&one.copy);
    const std::vector<FileResult> flushed = files::FlushCopies(copies);
    HalfOfATransfer listener(transfer_, HalfOfATransfer::Half::Second);
    for (std::size_t i = 0; i < waiting_.size(); ++i) {
        ImportedFile& file = files_[waiting_[i].index];
        if (flushed[i] != FileResult::Done) {
            file.result = ImportResultOf(flushed[i]);
        } else if (!files::Exists(file.source)) {
            // The card was pulled, and the copy is whole: now it is the only one.
            waiting_[i].goes = false;
        } else if (!waiting_[i].copy.IsSourceUntouched()) {
            file.result = ImportResult::Changed;
        } else if (waiting_[i].goes && !waiting_[i].copy.HoldsSameBytes(&listener)) {
            if (files::Exists(file.source)) file.result = ImportResult::Failed;
            waiting_[i].goes = false;
        }
    }
    std::erase_if(waiting_, [this](const Waiting& one) {
        ImportedFile& file = files_[one.index];
        if (file.result != ImportResult::Copied) file.target.clear();
        return file.result != ImportResult::Copied;
    });
}

// Before the first of them appears, so that a kill at any moment from then on can be mended.
void ImportBatch::RecordMoves() {
    if (!journal_) return;
    std::vector<MoveRecord> records;
    for (const Waiting& one : waiting_)
        if (const ImportedFile& file = files_[one.index]; one.goes)
            records.push_back({file.source, file.target, one.copy.Source().size, one.copy.Source().written});
    if (!records.empty()) journal_->Write(records);
}

void ImportBatch::RecordWords(const Waiting& one) {
    const ImportedFile& file = files_[one.index];
    if (arrivals_ && !file.words.empty())
        arrivals_->AddWords({file.target, file.words, one.copy.Source().size, one.copy.Source().written});
}

void ImportBatch::LetAppear(Waiting& waiting) {
    ImportedFile& file = files_[waiting.index];
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        const FileResult appeared = waiting.copy.Appear(file.target);
        waiting.appeared = appeared == FileResult::Done;
        if (appeared != FileResult::Exists) {
            file.result = ImportResultOf(appeared);
            return;
        }
        // Another program put something there since the name was chosen.
        const TargetNames::Choice choice = names_.Choose({file.source, file.words}, waiting.folder);
        file.existing = choice.existing;
        if (choice.path.empty()) {
            file.result = choice.why;
            return;
        }
        file.target = choice.path;
        RecordWords(waiting);
    }
    file.result = ImportResult::Taken;
}

void ImportBatch::RemoveSources() {
    std::set<std::string> folders;
    for (const Waiting& one : waiting_)
        if (one.goes && one.appeared) folders.insert(one.folder);
    if (folders.empty()) return;
    const std::vector<std::string> toFlush(folders.begin(), folders.end());
    const bool areSafe = files::FlushFolders(toFlush) == FileResult::Done;
    for (Waiting& one : waiting_) {
        if (!one.goes || !one.appeared) continue;
        ImportedFile& file = files_[one.index];
        // A file that its owner has protected is copied and not taken away.
        const bool goes = areSafe && !one.copy.Source().isReadOnly && one.copy.IsSourceUntouched() &&
                          files::RemoveFile(file.source) == FileResult::Done;
        file.sourceStays = !goes;
        if (goes) file.result = ImportResult::Moved;
    }
    if (journal_) journal_->Clear();
}

void ImportBatch::Finish() {
    if (files_.empty()) return;
    CheckCopies();
    RecordMoves();
    for (const Waiting& one : waiting_) RecordWords(one);
    if (arrivals_) arrivals_->Flush();
    names_.ForgetReserved();
    for (Waiting& one : waiting_) {
        LetAppear(one);
        if (!one.appeared) files_[one.index].target.clear();
    }
    RemoveSources();
    waiting_.clear();
    bytes_ = 0;
    for (const ImportedFile& file : files_) LogFailure(file);
    // The listener may add more files: the batch is empty by then.
    std::vector<ImportedFile> finished = std::exchange(files_, {});
    listener_.OnFinished(finished);
}

}  // namespace kalmora
