#include "import/import_journal.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>

#include "base/crc32.h"
#include "base/log.h"
#include "platform/files.h"
#include "platform/transfer.h"
#include "store/data_folder.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

using files::FileResult;

constexpr std::string_view kMagic = "KMIMPORT1 ";
constexpr std::size_t kHeadLength = 40;
constexpr std::uint64_t kLongestBody = 16u << 20;

// The number that the whole text is.
template <typename Number>
std::optional<Number> NumberOf(std::string_view text, int base = 10) {
    Number number{};
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size()) return std::nullopt;
    return number;
}

// What comes before the end mark, which is taken too; empty, and the rest gone, when there is none.
std::string_view TakeUpTo(char end, std::string_view& rest) {
    const std::size_t at = rest.find(end);
    if (at == std::string_view::npos) {
        rest = {};
        return {};
    }
    const std::string_view text = rest.substr(0, at);
    rest.remove_prefix(at + 1);
    return text;
}

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
    const std::string folder =
        record.target.substr(0, record.target.size() - GetFileName(record.target).size() - 1);
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
    char head[kHeadLength + 1];
    std::snprintf(head, sizeof head, "%s%08x %020zu\n", kMagic.data(), Crc32(body), body.size());
    return head + body;
}

std::vector<MoveRecord> ParseImportJournal(std::string_view bytes) {
    if (bytes.size() < kHeadLength || !bytes.starts_with(kMagic) || bytes[kHeadLength - 1] != '\n') return {};
    constexpr std::size_t kSumLength = 8;
    const auto sum = NumberOf<std::uint32_t>(bytes.substr(kMagic.size(), kSumLength), 16);
    const std::size_t lengthAt = kMagic.size() + kSumLength + 1;
    const auto length = NumberOf<std::uint64_t>(bytes.substr(lengthAt, kHeadLength - 1 - lengthAt));
    if (!sum || !length || *length > kLongestBody || *length > bytes.size() - kHeadLength) return {};
    std::string_view body = bytes.substr(kHeadLength, static_cast<std::size_t>(*length));
    if (Crc32(body) != *sum) return {};
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
    const auto status = file_.Status();
    if (!status || status->size == 0) return 0;
    std::string bytes(static_cast<std::size_t>(std::min(status->size, kHeadLength + kLongestBody)), '\0');
    bytes.resize(file_.ReadAt(0, {reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()}));
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
