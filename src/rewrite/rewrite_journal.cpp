#include "rewrite/rewrite_journal.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/byte_reader.h"
#include "base/crc32.h"

namespace kalmora {

namespace {

using files::FileResult;

constexpr std::string_view kMagic = "KMRWJRN1";
constexpr std::size_t kHeadLength = 24;
constexpr std::uint64_t kLongestBody = 64u << 20;
constexpr std::uint32_t kMostRecords = 1000;
constexpr std::uint64_t kKeptLength = 8u << 20;  // a journal that has grown past it is cut when it is cleared

std::string JournalPath(const std::string& tempFolder) { return files::Join(tempFolder, "rewrite.journal"); }

void Put(std::string& out, std::uint64_t value, int bytes = 8) {
    for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
}

void PutText(std::string& out, std::string_view text) {
    Put(out, text.size());
    out += text;
}

void PutRecord(std::string& out, const RewriteRecord& record) {
    Put(out, static_cast<std::uint32_t>(record.strategy));
    PutText(out, record.path);
    for (const std::uint64_t number : {record.oldSize, record.newSize, record.offset, record.oldLength})
        Put(out, number);
    PutText(out, record.oldBytes);
    PutText(out, record.newBytes);
    PutText(out, record.copyName);
    for (const std::uint64_t number :
         {record.accessed.ticks, record.written.ticks, record.volume, record.identity})
        Put(out, number);
}

// Takes values off the front of the body; what it cannot take leaves it failed for good.
class RecordReader {
public:
    explicit RecordReader(std::string_view body)
        : bytes_({reinterpret_cast<const std::uint8_t*>(body.data()), body.size()}, ByteOrder::Little) {}

    bool Take(RewriteRecord& record) {
        const std::uint64_t strategy = Number();
        record.strategy = static_cast<RewriteRecord::Strategy>(strategy);
        record.path = Text();
        for (std::uint64_t* number : {&record.oldSize, &record.newSize, &record.offset, &record.oldLength})
            *number = Number();
        record.oldBytes = Text();
        record.newBytes = Text();
        record.copyName = Text();
        for (std::uint64_t* number :
             {&record.accessed.ticks, &record.written.ticks, &record.volume, &record.identity})
            *number = Number();
        return isGood_ && strategy >= 1 && strategy <= 4 && !record.path.empty();
    }

private:
    std::uint64_t Number() {
        const auto low = bytes_.U32(at_), high = bytes_.U32(at_ + 4);
        isGood_ = isGood_ && high.has_value();
        if (!isGood_) return 0;
        at_ += 8;
        return std::uint64_t{*high} << 32 | *low;
    }

    std::string Text() {
        const std::uint64_t length = Number();
        isGood_ = isGood_ && length <= bytes_.Length() - at_;
        if (!isGood_) return {};
        const auto text = bytes_.Bytes(at_, static_cast<std::size_t>(length));
        at_ += text.size();
        return {text.begin(), text.end()};
    }

    ByteReader bytes_;
    std::size_t at_ = 0;
    bool isGood_ = true;
};

// The records of a journal of that size, open in any way.
template <typename File>
std::vector<RewriteRecord> RecordsIn(const File& file, std::uint64_t size) {
    std::array<std::uint8_t, kHeadLength> head{};
    if (file.ReadAt(0, head) < head.size()) return {};
    const ByteReader reader(head, ByteOrder::Little);
    if (!reader.StartsWith(0, kMagic)) return {};
    const std::uint64_t length = std::uint64_t{*reader.U32(12)} << 32 | *reader.U32(8);
    const std::uint32_t count = *reader.U32(20);
    if (length > kLongestBody || length + kHeadLength > size || count > kMostRecords) return {};
    std::string body(static_cast<std::size_t>(length), '\0');
    if (file.ReadAt(kHeadLength, {reinterpret_cast<std::uint8_t*>(body.data()), body.size()}) < body.size() ||
        Crc32(body) != *reader.U32(16))
        return {};
    std::vector<RewriteRecord> records;
    RecordReader from(body);
    for (RewriteRecord record; records.size() < kMostRecords && from.Take(record);)
        records.push_back(std::move(record));
    return records;
}

}  // namespace

FileResult RewriteJournal::Open(const std::string& tempFolder) {
    return file_.OpenOrMake(JournalPath(tempFolder));
}

std::vector<RewriteRecord> RewriteJournal::Read() const {
    const auto status = file_.Status();
    return status ? RecordsIn(file_, status->size) : std::vector<RewriteRecord>();
}

FileResult RewriteJournal::Write(std::span<const RewriteRecord> records) {
    body_.assign(kHeadLength, '\0');
    for (const RewriteRecord& record : records) PutRecord(body_, record);
    const std::string_view body = std::string_view(body_).substr(kHeadLength);
    if (body.size() > kLongestBody || records.size() > kMostRecords) return FileResult::Failed;
    std::string head(kMagic);
    Put(head, body.size());
    Put(head, Crc32(body), 4);
    Put(head, records.size(), 4);
    std::copy(head.begin(), head.end(), body_.begin());
    const FileResult written = file_.WriteAt(0, body_);
    return written == FileResult::Done ? file_.FlushContent() : written;
}

FileResult RewriteJournal::Clear(Clearing clearing) {
    FileResult result = file_.WriteAt(0, std::string(kHeadLength, '\0'));
    if (result != FileResult::Done) return result;
    if (const auto status = file_.Status(); status && status->size > kKeptLength)
        result = file_.Resize(kHeadLength);
    return clearing == Clearing::Flushed && result == FileResult::Done ? file_.FlushContent() : result;
}

FileResult LockTempFolder(const std::string& tempFolder, files::FileLock& lock, int timeoutMs) {
    return lock.Acquire(files::Join(tempFolder, "rewrite.lock"), timeoutMs);
}

std::vector<RewriteRecord> PeekAtJournal(const std::string& tempFolder) {
    files::InputFile file;
    if (!file.Open(JournalPath(tempFolder))) return {};
    return RecordsIn(file, file.Size());
}

std::vector<std::string> CopiesInJournal(const std::string& tempFolder) {
    std::vector<std::string> names;
    // Looking must not make a journal where there is none.
    if (!files::Exists(JournalPath(tempFolder))) return names;
    RewriteJournal journal;
    if (journal.Open(tempFolder) != FileResult::Done) return names;
    for (RewriteRecord& record : journal.Read())
        if (!record.copyName.empty()) names.push_back(std::move(record.copyName));
    return names;
}

}  // namespace kalmora
