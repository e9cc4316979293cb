#include "rewrite/rewrite_strategy.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string_view>

#include "base/log.h"
#include "platform/clock.h"

namespace kalmora {

namespace {

using files::EditFile;
using files::FileResult;
using Strategy = RewriteRecord::Strategy;

constexpr std::size_t kBlock = 1u << 20;

// What a file turns out to be, held against its record.
enum class FileContent { Old, New, Torn, Foreign };

// Bytes at a place of a file; shorter at its end or on an error.
template <typename File>
std::string ReadString(const File& file, std::uint64_t offset, std::uint64_t length) {
    std::string bytes(static_cast<std::size_t>(length), '\0');
    bytes.resize(file.ReadAt(offset, {reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()}));
    return bytes;
}

std::uint64_t SizeOf(const EditFile& file) {
    const auto status = file.Status();
    return status ? status->size : 0;
}

std::string CopyPath(const RewriteRecord& record, const std::string& tempFolder) {
    return files::Join(tempFolder, record.copyName);
}

// The copy that was made before the file was touched; closed when it is missing or cut.
files::InputFile OpenCopy(const RewriteRecord& record, const std::string& tempFolder) {
    files::InputFile copy;
    if (record.copyName.empty() || !copy.Open(CopyPath(record, tempFolder))) return {};
    if (copy.Size() != record.oldSize) return {};
    return copy;
}

// Collects what a stretch of the file says about the whole.
class Comparison {
public:
    // `zeros`: also a zero byte is a trace of the rewrite, of a block that the disk had not got yet.
    void Add(std::string_view found, std::string_view before, std::string_view after, bool zeros) {
        const bool old = before.starts_with(found), fresh = after.starts_with(found);
        isOld_ = isOld_ && old;
        isNew_ = isNew_ && fresh;
        if (old || fresh) return;
        for (std::size_t i = 0; i < found.size() && isOurs_; ++i)
            isOurs_ = (i < before.size() && found[i] == before[i]) ||
                      (i < after.size() && found[i] == after[i]) || (zeros && found[i] == '\0');
    }
    FileContent Verdict(bool hasOldSize, bool hasNewSize) const {
        if (isOld_ && hasOldSize) return FileContent::Old;
        if (isNew_ && hasNewSize) return FileContent::New;
        return isOurs_ ? FileContent::Torn : FileContent::Foreign;
    }

private:
    bool isOld_ = true, isNew_ = true, isOurs_ = true;
};

FileContent LookInPlace(const EditFile& file, const RewriteRecord& record) {
    if (SizeOf(file) != record.oldSize) return FileContent::Foreign;
    const std::string found = ReadString(file, record.offset, record.newBytes.size());
    if (found.size() != record.newBytes.size()) return FileContent::Foreign;
    Comparison comparison;
    comparison.Add(found, record.oldBytes, record.newBytes, false);
    return comparison.Verdict(true, true);
}

FileContent LookInserted(const EditFile& file, const RewriteRecord& record) {
    const std::uint64_t size = SizeOf(file);
    const bool inserted = size == record.newSize;
    if (!inserted && size != record.oldSize) return FileContent::Foreign;
    const std::string before =
        inserted
            ? std::string(static_cast<std::size_t>(record.newSize - record.oldSize), '\0') + record.oldBytes
            : record.oldBytes;
    const std::string found = ReadString(file, record.offset, before.size());
    if (found.size() != before.size()) return FileContent::Foreign;
    Comparison comparison;
    comparison.Add(found, before, inserted ? std::string_view(record.newBytes) : std::string_view(), false);
    // Zeros in front of the old bytes are neither the old file nor the new one.
    const FileContent content = comparison.Verdict(!inserted, inserted);
    return content == FileContent::Torn && !inserted ? FileContent::Foreign : content;
}

// The new file's bytes in a stretch, put together from its copy and the record.
template <typename File>
std::string NewBytesAt(const File& copy, const RewriteRecord& record, std::uint64_t offset,
                       std::uint64_t length) {
    std::string bytes;
    const std::uint64_t end = std::min(record.newSize, offset + length);
    const std::uint64_t newEnd = record.offset + record.newBytes.size();
    while (offset < end) {
        if (offset < record.offset) {
            const std::string part = ReadString(copy, offset, std::min(end, record.offset) - offset);
            if (part.empty()) break;
            bytes += part;
            offset += part.size();
        } else if (offset < newEnd) {
            const std::uint64_t count = std::min(end, newEnd) - offset;
            bytes.append(record.newBytes, static_cast<std::size_t>(offset - record.offset),
                         static_cast<std::size_t>(count));
            offset += count;
        } else {
            const std::string part =
                ReadString(copy, offset - newEnd + record.offset + record.oldLength, end - offset);
            if (part.empty()) break;
            bytes += part;
            offset += part.size();
        }
    }
    return bytes;
}

FileContent LookCopied(const EditFile& file, const RewriteRecord& record, const files::InputFile& copy) {
    const std::uint64_t size = SizeOf(file);
    if (size > std::max(record.oldSize, record.newSize)) return FileContent::Foreign;
    Comparison comparison;
    for (std::uint64_t at = 0; at < size; at += kBlock) {
        const std::string found = ReadString(file, at, std::min<std::uint64_t>(kBlock, size - at));
        if (found.empty()) return FileContent::Foreign;
        comparison.Add(found, ReadString(copy, at, found.size()), NewBytesAt(copy, record, at, found.size()),
                       true);
    }
    return comparison.Verdict(size == record.oldSize, size == record.newSize);
}

FileContent LookAfterTool(const EditFile& file, const RewriteRecord& record, const files::InputFile& copy) {
    const auto status = file.Status();
    if (!status) return FileContent::Foreign;
    Comparison comparison;
    for (std::uint64_t at = 0; at < status->size; at += kBlock) {
        const std::string found = ReadString(file, at, std::min<std::uint64_t>(kBlock, status->size - at));
        if (found.empty()) return FileContent::Foreign;
        comparison.Add(found, ReadString(copy, at, found.size()), {}, false);
    }
    if (comparison.Verdict(status->size == record.oldSize, false) == FileContent::Old)
        return FileContent::Old;
    // What the tool was to make is not known; but it writes the file itself, so another one is somebody
    // else's.
    const bool same = status->volume == record.volume && status->identity == record.identity;
    return same ? FileContent::Torn : FileContent::Foreign;
}

FileResult WriteFromCopy(EditFile& file, const RewriteRecord& record, const files::InputFile& copy) {
    // What follows stays where it is when the length does.
    const std::uint64_t end =
        record.newSize == record.oldSize ? record.offset + record.newBytes.size() : record.newSize;
    for (std::uint64_t at = record.offset; at < end; at += kBlock) {
        const std::uint64_t length = std::min<std::uint64_t>(kBlock, end - at);
        const std::string bytes = NewBytesAt(copy, record, at, length);
        if (bytes.size() != length) return FileResult::Failed;
        if (const FileResult result = file.WriteAt(at, bytes); result != FileResult::Done) return result;
    }
    return record.newSize < record.oldSize ? file.Resize(record.newSize) : FileResult::Done;
}

bool PutBackFromCopy(EditFile& file, const RewriteRecord& record, const std::string& tempFolder) {
    const files::InputFile copy = OpenCopy(record, tempFolder);
    if (!copy.IsOpen()) return false;
    for (std::uint64_t at = 0; at < record.oldSize; at += kBlock) {
        const std::string bytes = ReadString(copy, at, std::min<std::uint64_t>(kBlock, record.oldSize - at));
        // Bytes that are right already are not written: a full disk may have no room for it a second time.
        if (bytes.empty()) return false;
        if (ReadString(file, at, bytes.size()) == bytes) continue;
        if (file.WriteAt(at, bytes) != FileResult::Done) return false;
    }
    return file.Resize(record.oldSize) == FileResult::Done;
}

bool TakeOutInserted(EditFile& file, const RewriteRecord& record) {
    const std::uint64_t growth = record.newSize - record.oldSize;
    if (SizeOf(file) == record.oldSize) return true;
    return file.WriteAt(record.offset + growth, record.oldBytes) == FileResult::Done &&
           file.RemoveSpace(record.offset, growth);
}

// A copy that is still worth something goes where no sweep finds it.
void KeepCopy(const RewriteRecord& record, const std::string& tempFolder) {
    std::string name = record.copyName;
    while (name.starts_with('$')) name.erase(0, 1);
    constexpr int kMostNames = 1000;
    for (int i = 0; i < kMostNames; ++i) {
        const std::string kept =
            files::Join(tempFolder, "kept" + (i == 0 ? std::string() : std::to_string(i)) + "-" + name);
        if (files::Exists(kept)) continue;
        if (files::Rename(CopyPath(record, tempFolder), kept) == FileResult::Done)
            Log("%s is not the file that was being written; the copy is kept: %s", record.path.c_str(),
                kept.c_str());
        return;
    }
}

void RemoveCopy(const RewriteRecord& record, const std::string& tempFolder) {
    if (!record.copyName.empty()) files::RemoveFile(CopyPath(record, tempFolder));
}

// Puts the old bytes back, times included, and flushes.
bool PutBack(EditFile& file, const RewriteRecord& record, const std::string& tempFolder) {
    bool isBack = false;
    switch (record.strategy) {
        case Strategy::InPlace:
            isBack = file.WriteAt(record.offset, record.oldBytes) == FileResult::Done;
            break;
        case Strategy::Inserted:
            isBack = TakeOutInserted(file, record);
            break;
        case Strategy::Copied:
        case Strategy::Tool:
            isBack = PutBackFromCopy(file, record, tempFolder);
            break;
    }
    if (!isBack) return false;
    file.SetTimes(record.accessed, record.written);
    return file.Flush() == FileResult::Done;
}

// Of a file that may have gone: it is then made from its copy.
bool PutBackByPath(const RewriteRecord& record, const std::string& tempFolder) {
    EditFile file;
    const FileResult opened = file.Open(record.path);
    if (opened == FileResult::Done) return PutBack(file, record, tempFolder);
    return opened == FileResult::NotFound && !record.copyName.empty() &&
           files::CopyFile(CopyPath(record, tempFolder), record.path) == FileResult::Done;
}

Recovery RecoverMissing(const RewriteRecord& record, const std::string& tempFolder) {
    // A folder that is not there is a drive that is not plugged in.
    if (!files::IsFolder(FolderOfPath(record.path))) return Recovery::Pending;
    if (record.copyName.empty() || !files::Exists(CopyPath(record, tempFolder)))
        return Recovery::ChangedByOthers;
    if (!PutBackByPath(record, tempFolder)) return Recovery::Pending;
    RemoveCopy(record, tempFolder);
    return Recovery::Restored;
}

FileContent LookAtFile(const EditFile& file, const RewriteRecord& record, const std::string& tempFolder,
                       bool& hasCopy) {
    if (record.strategy == Strategy::InPlace) return LookInPlace(file, record);
    if (record.strategy == Strategy::Inserted) return LookInserted(file, record);
    const files::InputFile copy = OpenCopy(record, tempFolder);
    hasCopy = copy.IsOpen();
    // The copy goes after the rewrite has been finished, so without one there is nothing to finish.
    if (!hasCopy) return FileContent::Foreign;
    return record.strategy == Strategy::Copied ? LookCopied(file, record, copy)
                                               : LookAfterTool(file, record, copy);
}

// Back to the old bytes; where space was inserted on to the new ones, which needs no help of the file system.
bool Mend(EditFile& file, const RewriteRecord& record, const std::string& tempFolder) {
    if (record.strategy != Strategy::Inserted) return PutBack(file, record, tempFolder);
    return file.WriteAt(record.offset, record.newBytes) == FileResult::Done &&
           file.Flush() == FileResult::Done;
}

void WaitForTool(const std::string& path) {
    constexpr double kLockWaitMs = 10'000;
    for (const double start = UptimeMs(); files::IsOpenForWriting(path) && UptimeMs() - start < kLockWaitMs;)
        SleepMs(10);
}

}  // namespace

FileResult ApplyRewrite(EditFile& file, const RewriteRecord& record, const std::string& tempFolder,
                        bool& nothingDone) {
    nothingDone = false;
    if (record.strategy == Strategy::InPlace) return file.WriteAt(record.offset, record.newBytes);
    if (record.strategy == Strategy::Inserted) {
        nothingDone = !file.InsertSpace(record.offset, record.newSize - record.oldSize);
        return nothingDone ? FileResult::Failed : file.WriteAt(record.offset, record.newBytes);
    }
    const files::InputFile copy = OpenCopy(record, tempFolder);
    if (!copy.IsOpen()) return FileResult::Failed;
    if (const FileResult room = file.Reserve(record.newSize); room != FileResult::Done) return room;
    return WriteFromCopy(file, record, copy);
}

bool HoldsNewBytes(const EditFile& file, const RewriteRecord& record, const std::string& tempFolder) {
    if (SizeOf(file) != record.newSize) return false;
    if (record.strategy == Strategy::InPlace || record.strategy == Strategy::Inserted)
        return ReadString(file, record.offset, record.newBytes.size()) == record.newBytes;
    const files::InputFile copy = OpenCopy(record, tempFolder);
    return copy.IsOpen() && LookCopied(file, record, copy) == FileContent::New;
}

Recovery RecoverFile(const RewriteRecord& record, const std::string& tempFolder) {
    // A tool outlives the program that started it and may be at work still.
    if (record.strategy == Strategy::Tool) WaitForTool(record.path);
    EditFile file;
    const FileResult opened = file.Open(record.path);
    if (opened == FileResult::NotFound) return RecoverMissing(record, tempFolder);
    if (opened != FileResult::Done) return Recovery::Pending;
    bool hasCopy = false;
    switch (LookAtFile(file, record, tempFolder, hasCopy)) {
        case FileContent::Old:
        case FileContent::New:
            RemoveCopy(record, tempFolder);
            return Recovery::AlreadyWhole;
        case FileContent::Torn:
            if (!Mend(file, record, tempFolder)) return Recovery::Pending;
            RemoveCopy(record, tempFolder);
            return Recovery::Restored;
        case FileContent::Foreign:
            break;
    }
    if (hasCopy) KeepCopy(record, tempFolder);
    return Recovery::ChangedByOthers;
}

Recovery UndoRewrite(EditFile& file, const RewriteRecord& record, const std::string& tempFolder) {
    bool hasCopy = false;
    const FileContent content = LookAtFile(file, record, tempFolder, hasCopy);
    const bool needsCopy = record.strategy == Strategy::Copied;
    if (content == FileContent::Foreign && hasCopy == needsCopy) {
        if (hasCopy) KeepCopy(record, tempFolder);
        return Recovery::ChangedByOthers;
    }
    return PutBack(file, record, tempFolder) ? Recovery::Restored : Recovery::Pending;
}

}  // namespace kalmora
