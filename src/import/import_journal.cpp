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

// What stands before the end mark, which is taken too; empty, and the rest gone, when there is none.
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

std::optional<ImportNote> TakeNote(std::string_view& rest) {
    const auto size = NumberOf<std::uint64_t>(TakeUpTo(' ', rest));
    const auto written = NumberOf<std::uint64_t>(TakeUpTo('\0', rest));
    ImportNote note;
    note.source = TakeUpTo('\0', rest);
    note.target = TakeUpTo('\0', rest);
    if (!size || !written || !files::IsAbsolute(note.source) || !files::IsAbsolute(note.target))
        return std::nullopt;
    note.size = *size;
    note.written = {*written};
    return note;
}

// True when the source went because its copy stands.
bool SettleNote(const ImportNote& note) {
    const auto source = files::GetStatus(note.source), target = files::GetStatus(note.target);
    const bool areBothThere = source && target && source->isRegular && target->isRegular &&
                              source->size == note.size && source->written == note.written &&
                              target->size == note.size;
    if (!areBothThere || source->isReadOnly) return false;
    // One file under two names is no copy of itself.
    if (source->volume == target->volume && source->identity == target->identity) return false;
    if (!files::HaveSameBytes(note.source, note.target)) return false;
    const std::string folder =
        note.target.substr(0, note.target.size() - GetFileName(note.target).size() - 1);
    return files::FlushFolders({&folder, 1}) == FileResult::Done &&
           files::RemoveFile(note.source) == FileResult::Done;
}

}  // namespace

std::string MakeImportJournal(std::span<const ImportNote> notes) {
    std::string body;
    for (const ImportNote& note : notes) {
        body += std::to_string(note.size) + ' ' + std::to_string(note.written.ticks) + '\0';
        body += note.source + '\0' + note.target + '\0';
    }
    char head[kHeadLength + 1];
    std::snprintf(head, sizeof head, "%s%08x %020zu\n", kMagic.data(), Crc32(body), body.size());
    return head + body;
}

std::vector<ImportNote> ParseImportJournal(std::string_view bytes) {
    if (bytes.size() < kHeadLength || !bytes.starts_with(kMagic) || bytes[kHeadLength - 1] != '\n') return {};
    constexpr std::size_t kSumLength = 8;
    const auto sum = NumberOf<std::uint32_t>(bytes.substr(kMagic.size(), kSumLength), 16);
    const std::size_t lengthAt = kMagic.size() + kSumLength + 1;
    const auto length = NumberOf<std::uint64_t>(bytes.substr(lengthAt, kHeadLength - 1 - lengthAt));
    if (!sum || !length || *length > kLongestBody || *length > bytes.size() - kHeadLength) return {};
    std::string_view body = bytes.substr(kHeadLength, static_cast<std::size_t>(*length));
    if (Crc32(body) != *sum) return {};
    std::vector<ImportNote> notes;
    while (!body.empty()) {
        auto note = TakeNote(body);
        if (!note) return {};
        notes.push_back(std::move(*note));
    }
    return notes;
}

bool ImportJournal::Open(const std::string& tempFolder) {
    if (tempFolder.empty() || (!files::IsFolder(tempFolder) && !MakeDirectories(tempFolder))) return false;
    if (file_.OpenOrMake(files::Join(tempFolder, "import.journal")) != FileResult::Done) return false;
    if (file_.TryLock() == files::EditFile::Lock::Taken) return true;
    file_.Close();
    return false;
}

int ImportJournal::Settle() {
    const auto status = file_.Status();
    if (!status || status->size == 0) return 0;
    std::string bytes(static_cast<std::size_t>(std::min(status->size, kHeadLength + kLongestBody)), '\0');
    bytes.resize(file_.ReadAt(0, {reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()}));
    int removed = 0;
    for (const ImportNote& note : ParseImportJournal(bytes)) {
        const bool isSettled = SettleNote(note);
        Log("move that was cut off: %s %s", note.source.c_str(), isSettled ? "removed" : "left");
        if (isSettled) ++removed;
    }
    Clear();
    return removed;
}

FileResult ImportJournal::Write(std::span<const ImportNote> notes) {
    const std::string bytes = MakeImportJournal(notes);
    const FileResult written = file_.WriteAt(0, bytes);
    return written == FileResult::Done ? file_.FlushContent() : written;
}

// Not flushed: a note that comes back tells of files that are the same, and one of them too many.
void ImportJournal::Clear() { file_.Resize(0); }

}  // namespace kalmora
