#include "import/import_journal.h"

#include <optional>

#include "base/log.h"
#include "base/path_names.h"
#include "import/checked_records.h"
#include "platform/files.h"
#include "platform/transfer.h"
#include "store/data_folder.h"

namespace kalmora {

namespace {

using files::FileResult;

constexpr std::string_view kMagic = "KMIMPORT1 ";
constexpr int kMoveLengthDigits = 20;
constexpr std::uint64_t kLongestBody = 16u << 20;
constexpr std::uint64_t kLongestHead = 64;

std::optional<MoveRecord> TakeMoveRecord(std::string_view& rest) {
    const auto size = NumberOf<std::uint64_t>(TakeUpTo(' ', rest));
    const auto written = NumberOf<std::uint64_t>(TakeUpTo('\0', rest));
    MoveRecord record;
    record.source = TakeUpTo('\0', rest);
    record.target = TakeUpTo('\0', rest);
    if (!size || !written || !files::IsAbsolute(record.source) || !files::IsAbsolute(record.target))
        return std::nullopt;
    record.size = *size;
    record.written = {*written};
    return record;
}

// True when the source was removed because its copy is there.
bool RecoverMove(const MoveRecord& record) {
    const auto source = files::GetStatus(record.source), target = files::GetStatus(record.target);
    const bool areBothThere = source && target && source->isRegular && target->isRegular &&
                              source->size == record.size && source->written == record.written &&
                              target->size == record.size;
    if (!areBothThere || source->isReadOnly) return false;
    // One file under two names is no copy of itself.
    if (source->volume == target->volume && source->identity == target->identity) return false;
    if (!files::HaveSameBytes(record.source, record.target)) return false;
    const std::string folder = FolderOfPath(record.target);
    return files::FlushFolders({&folder, 1}) == FileResult::Done &&
           files::RemoveFile(record.source) == FileResult::Done;
}

}  // namespace

std::string MakeImportJournal(std::span<const MoveRecord> records) {
    std::string body;
    for (const MoveRecord& record : records) {
        body += std::to_string(record.size) + ' ' + std::to_string(record.written.ticks) + '\0';
        body += record.source + '\0' + record.target + '\0';
    }
    return std::string(kMagic) + CheckedRecord(body, kMoveLengthDigits);
}

std::vector<MoveRecord> ParseImportJournal(std::string_view bytes) {
    if (!bytes.starts_with(kMagic)) return {};
    bytes.remove_prefix(kMagic.size());
    const auto checked = TakeCheckedBody(bytes, kMoveLengthDigits);
    if (!checked || checked->size() > kLongestBody) return {};
    std::string_view body = *checked;
    std::vector<MoveRecord> records;
    while (!body.empty()) {
        auto record = TakeMoveRecord(body);
        if (!record) return {};
        records.push_back(std::move(*record));
    }
    return records;
}

bool ImportJournal::Open(const std::string& tempFolder) {
    if (tempFolder.empty() || (!files::IsFolder(tempFolder) && !MakeDirectories(tempFolder))) return false;
    if (file_.OpenOrMake(files::Join(tempFolder, "import.journal")) != FileResult::Done) return false;
    if (file_.TryLock() == files::EditFile::Lock::Taken) return true;
    file_.Close();
    return false;
}

int ImportJournal::Recover() {
    const std::string bytes = ReadFromStart(file_, kLongestHead + kLongestBody);
    if (bytes.empty()) return 0;
    int removed = 0;
    for (const MoveRecord& record : ParseImportJournal(bytes)) {
        const bool isRemoved = RecoverMove(record);
        Log("move that was cut off: %s %s", record.source.c_str(), isRemoved ? "removed" : "left");
        if (isRemoved) ++removed;
    }
    Clear();
    return removed;
}

FileResult ImportJournal::Write(std::span<const MoveRecord> records) {
    const std::string bytes = MakeImportJournal(records);
    const FileResult written = file_.WriteAt(0, bytes);
    return written == FileResult::Done ? file_.FlushContent() : written;
}

// Not flushed: a record that is back after a power cut names two files that are the same, one of them too
// many.
void ImportJournal::Clear() { file_.Resize(0); }

}  // namespace kalmora
