#include "import/import_arrivals.h"

#include <utility>

#include "base/log.h"
#include "base/path_names.h"
#include "import/checked_records.h"
#include "media/photo_file.h"
#include "platform/files.h"
#include "rewrite/safe_rewrite.h"
#include "store/data_folder.h"

namespace kalmora {

namespace {

using files::FileResult;

constexpr int kArrivalLengthDigits = 10;
constexpr std::uint64_t kLongestFile = 64u << 20;

enum class Words { Missing, Done, OutOfReach };

// The write that gives a file its words changes the time of the last one.
Words WordsIn(const WordsToCome& one) {
    const auto status = files::GetStatus(one.path);
    if (!status) return files::IsFolder(FolderOfPath(one.path)) ? Words::Done : Words::OutOfReach;
    if (!status->isRegular) return Words::Done;
    if (status->size == one.size && status->written == one.written) return Words::Missing;
    PhotoFile photo(one.path);
    const std::string* const comment = photo.GetComment();
    return comment && comment->ends_with(one.words) ? Words::Done : Words::Missing;
}

// A comment that is too long is so at the next import, too.
bool MayTakeWordsLater(RewriteResult result) {
    return !IsDone(result) && !IsUnsupported(result) && result != RewriteResult::TooLarge &&
           result != RewriteResult::ExifFull;
}

}  // namespace

std::string MakeWordsRecord(const WordsToCome& words) {
    return CheckedRecord(std::to_string(words.size) + ' ' + std::to_string(words.written.ticks) + '\0' +
                             words.path + '\0' + words.words + '\0',
                         kArrivalLengthDigits);
}

std::string MakeMonthRecord(const MonthToCome& month) {
    return CheckedRecord(
        std::to_string(month.year) + ' ' + std::to_string(month.month) + '\0' + month.root + '\0',
        kArrivalLengthDigits);
}

std::vector<WordsToCome> ParseWordsRecords(std::string_view bytes) {
    std::vector<WordsToCome> all;
    while (auto body = TakeCheckedBody(bytes, kArrivalLengthDigits)) {
        const auto size = NumberOf<std::uint64_t>(TakeUpTo(' ', *body));
        const auto written = NumberOf<std::uint64_t>(TakeUpTo('\0', *body));
        WordsToCome one;
        one.path = TakeUpTo('\0', *body);
        one.words = TakeUpTo('\0', *body);
        if (!size || !written || !files::IsAbsolute(one.path) || one.words.empty()) break;
        one.size = *size;
        one.written = {*written};
        all.push_back(std::move(one));
    }
    return all;
}

std::vector<MonthToCome> ParseMonthRecords(std::string_view bytes) {
    std::vector<MonthToCome> all;
    while (auto body = TakeCheckedBody(bytes, kArrivalLengthDigits)) {
        const auto year = NumberOf<int>(TakeUpTo(' ', *body)), month = NumberOf<int>(TakeUpTo('\0', *body));
        std::string root(TakeUpTo('\0', *body));
        if (!year || !month || *month < 1 || *month > 12 || !files::IsAbsolute(root)) break;
        all.push_back({std::move(root), *year, *month});
    }
    return all;
}

void ArrivalJournal::Records::Add(const std::string& record) {
    if (!file.IsOpen() || file.WriteAt(end, record) != FileResult::Done) return;
    end += record.size();
    isFlushed = false;
}

void ArrivalJournal::Records::Keep(const std::string& records) {
    if (file.WriteAt(0, records) != FileResult::Done || file.Resize(records.size()) != FileResult::Done) {
        Log("an import's journal could not be shortened");
        return;
    }
    pending = end = records.size();
    isFlushed = false;
}

void ArrivalJournal::Records::Clear() {
    if (file.IsOpen() && end > pending) file.Resize(pending);
    end = pending;
}

void ArrivalJournal::Records::Flush() {
    if (!std::exchange(isFlushed, true)) file.FlushContent();
}

bool ArrivalJournal::Open(const std::string& tempFolder) {
    tempFolder_ = tempFolder;
    if (tempFolder.empty() || (!files::IsFolder(tempFolder) && !MakeDirectories(tempFolder))) return false;
    if (months_.file.OpenOrMake(files::Join(tempFolder, "import.months")) == FileResult::Done &&
        months_.file.TryLock() == files::EditFile::Lock::Taken &&
        words_.file.OpenOrMake(files::Join(tempFolder, "import.words")) == FileResult::Done) {
        ReadMonths();
        ReadWords();
        return true;
    }
    months_.file.Close();
    words_.file.Close();
    return false;
}

bool ArrivalJournal::HasWords() const {
    const auto status = words_.file.Status();
    return status && status->size > 0;
}

int ArrivalJournal::Recover() {
    if (!months_.file.IsOpen()) return 0;
    // A photo whose words were being written is whole before it is asked for them.
    const std::vector<WordsToCome> noted = ParseWordsRecords(ReadFromStart(words_.file, kLongestFile));
    if (!noted.empty()) RecoverRewrites(tempFolder_);
    std::vector<WordsToCome> missing;
    std::vector<PhotoFile> photos;
    std::vector<std::string> words;
    std::set<std::string> seen;  // noted once for a move by name and once for a copy
    std::string pending;
    int pendingCount = 0;
    const auto keep = [&](const WordsToCome& one, const char* why) {
        Log("words of an import that was cut off stay pending (%s): %s", why, one.path.c_str());
        pending += MakeWordsRecord(one);
        ++pendingCount;
    };
    for (const WordsToCome& one : noted) {
        if (!seen.insert(one.path).second) continue;
        const Words state = WordsIn(one);
        if (state == Words::OutOfReach) keep(one, "its folder is away");
        if (state != Words::Missing) continue;
        missing.push_back(one);
        photos.emplace_back(one.path);
        words.push_back(one.words);
    }
    if (!photos.empty()) {
        Log("words of an import that was cut off: %zu files", photos.size());
        const std::vector<RewriteResult> results = AppendCommentAll(photos, words);
        for (std::size_t i = 0; i < results.size(); ++i)
            if (MayTakeWordsLater(results[i])) keep(missing[i], NameOf(results[i]));
    }
    if (HasWords()) words_.Keep(pending);
    return pendingCount;
}

void ArrivalJournal::ReadMonths() {
    const std::string months = ReadFromStart(months_.file, kLongestFile);
    for (const MonthToCome& month : ParseMonthRecords(months)) {
        months_.end += MakeMonthRecord(month).size();
        known_.insert(month);
    }
    // What is behind the last whole record goes.
    if (months_.end < months.size()) months_.file.Resize(months_.end);
}

void ArrivalJournal::ReadWords() {
    for (const WordsToCome& one : ParseWordsRecords(ReadFromStart(words_.file, kLongestFile)))
        words_.end += MakeWordsRecord(one).size();
    words_.pending = words_.end;
}

void ArrivalJournal::AddMonth(const MonthToCome& month) {
    if (known_.insert(month).second) months_.Add(MakeMonthRecord(month));
}

void ArrivalJournal::AddWords(const WordsToCome& words) { words_.Add(MakeWordsRecord(words)); }

void ArrivalJournal::Flush() {
    months_.Flush();
    words_.Flush();
}

void ArrivalJournal::ClearWords() { words_.Clear(); }

void ArrivalJournal::ClearMonths(const std::set<MonthToCome>& pending) {
    if (!months_.file.IsOpen() || known_ == pending) return;
    std::string records;
    for (const MonthToCome& month : pending) records += MakeMonthRecord(month);
    months_.Keep(records);
    known_ = pending;
}

}  // namespace kalmora
