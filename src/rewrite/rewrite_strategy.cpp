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
using Road = RewriteNote::Road;

constexpr std::size_t kBlock = 1u << 20;

// What a file turns out to be, held against its note.
enum class Standing { Old, New, Torn, Foreign };

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

std::string CopyPath(const RewriteNote& note, const std::string& tempFolder) {
    return files::Join(tempFolder, note.copyName);
}

// The copy that was made before the file was touched; closed when it is missing or cut.
files::InputFile OpenCopy(const RewriteNote& note, const std::string& tempFolder) {
    files::InputFile copy;
    if (note.copyName.empty() || !copy.Open(CopyPath(note, tempFolder))) return {};
    if (copy.Size() != note.oldSize) return {};
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
    Standing Verdict(bool hasOldSize, bool hasNewSize) const {
        if (isOld_ && hasOldSize) return Standing::Old;
        if (isNew_ && hasNewSize) return Standing::New;
        return isOurs_ ? Standing::Torn : Standing::Foreign;
    }

private:
    bool isOld_ = true, isNew_ = true, isOurs_ = true;
};

Standing LookInPlace(const EditFile& file, const RewriteNote& note) {
    if (SizeOf(file) != note.oldSize) return Standing::Foreign;
    const std::string found = ReadString(file, note.offset, note.newBytes.size());
    if (found.size() != note.newBytes.size()) return Standing::Foreign;
    Comparison comparison;
    comparison.Add(found, note.oldBytes, note.newBytes, false);
    return comparison.Verdict(true, true);
}

Standing LookInserted(const EditFile& file, const RewriteNote& note) {
    const std::uint64_t size = SizeOf(file);
    const bool inserted = size == note.newSize;
    if (!inserted && size != note.oldSize) return Standing::Foreign;
    const std::string before =
        inserted ? std::string(static_cast<std::size_t>(note.newSize - note.oldSize), '\0') + note.oldBytes
                 : note.oldBytes;
    const std::string found = ReadString(file, note.offset, before.size());
    if (found.size() != before.size()) return Standing::Foreign;
    Comparison comparison;
    comparison.Add(found, before, inserted ? std::string_view(note.newBytes) : std::string_view(), false);
    // Zeros in front of the old bytes are neither the old file nor the new one.
    const Standing standing = comparison.Verdict(!inserted, inserted);
    return standing == Standing::Torn && !inserted ? Standing::Foreign : standing;
}

// The new file's bytes in a stretch, put together from its copy and the note.
template <typename File>
std::string NewBytesAt(const File& copy, const RewriteNote& note, std::uint64_t offset,
                       std::uint64_t length) {
    std::string bytes;
    const std::uint64_t end = std::min(note.newSize, offset + length);
    const std::uint64_t newEnd = note.offset + note.newBytes.size();
    while (offset < end) {
        if (offset < note.offset) {
            const std::string part = ReadString(copy, offset, std::min(end, note.offset) - offset);
            if (part.empty()) break;
            bytes += part;
            offset += part.size();
        } else if (offset < newEnd) {
            const std::uint64_t count = std::min(end, newEnd) - offset;
            bytes.append(note.newBytes, static_cast<std::size_t>(offset - note.offset),
                         static_cast<std::size_t>(count));
            offset += count;
        } else {
            const std::string part =
                ReadString(copy, offset - newEnd + note.offset + note.oldLength, end - offset);
            if (part.empty()) break;
            bytes += part;
            offset += part.size();
        }
    }
    return bytes;
}

Standing LookCopied(const EditFile& file, const RewriteNote& note, const files::InputFile& copy) {
    const std::uint64_t size = SizeOf(file);
    if (size > std::max(note.oldSize, note.newSize)) return Standing::Foreign;
    Comparison comparison;
    for (std::uint64_t at = 0; at < size; at += kBlock) {
        const std::string found = ReadString(file, at, std::min<std::uint64_t>(kBlock, size - at));
        if (found.empty()) return Standing::Foreign;
        comparison.Add(found, ReadString(copy, at, found.size()), NewBytesAt(copy, note, at, found.size()),
                       true);
    }
    return comparison.Verdict(size == note.oldSize, size == note.newSize);
}

Standing LookAfterTool(const EditFile& file, const RewriteNote& note, const files::InputFile& copy) {
    const auto status = file.Status();
    if (!status) return Standing::Foreign;
    Comparison comparison;
    for (std::uint64_t at = 0; at < status->size; at += kBlock) {
        const std::string found = ReadString(file, at, std::min<std::uint64_t>(kBlock, status->size - at));
        if (found.empty()) return Standing::Foreign;
        comparison.Add(found, ReadString(copy, at, found.size()), {}, false);
    }
    if (comparison.Verdict(status->size == note.oldSize, false) == Standing::Old) return Standing::Old;
    // What the tool was to make nobody knows; but it writes the file itself, so another one is somebody
    // else's.
    const bool same = status->volume == note.volume && status->identity == note.identity;
    return same ? Standing::Torn : Standing::Foreign;
}

FileResult WriteFromCopy(EditFile& file, const RewriteNote& note, const files::InputFile& copy) {
    // What follows stays where it is when the length does.
    const std::uint64_t end =
        note.newSize == note.oldSize ? note.offset + note.newBytes.size() : note.newSize;
    for (std::uint64_t at = note.offset; at < end; at += kBlock) {
        const std::uint64_t length = std::min<std::uint64_t>(kBlock, end - at);
        const std::string bytes = NewBytesAt(copy, note, at, length);
        if (bytes.size() != length) return FileResult::Failed;
        if (const FileResult result = file.WriteAt(at, bytes); result != FileResult::Done) return result;
    }
    return note.newSize < note.oldSize ? file.Resize(note.newSize) : FileResult::Done;
}

bool PutBackFromCopy(EditFile& file, const RewriteNote& note, const std::string& tempFolder) {
    const files::InputFile copy = OpenCopy(note, tempFolder);
    if (!copy.IsOpen()) return false;
    for (std::uint64_t at = 0; at < note.oldSize; at += kBlock) {
        const std::string bytes = ReadString(copy, at, std::min<std::uint64_t>(kBlock, note.oldSize - at));
        // What stands there already is not written: a full disk may have no room for it a second time.
        if (bytes.empty()) return false;
        if (ReadString(file, at, bytes.size()) == bytes) continue;
        if (file.WriteAt(at, bytes) != FileResult::Done) return false;
    }
    return file.Resize(note.oldSize) == FileResult::Done;
}

bool TakeOutInserted(EditFile& file, const RewriteNote& note) {
    const std::uint64_t growth = note.newSize - note.oldSize;
    if (SizeOf(file) == note.oldSize) return true;
    return file.WriteAt(note.offset + growth, note.oldBytes) == FileResult::Done &&
           file.RemoveSpace(note.offset, growth);
}

// A copy that is still worth something goes where no sweep finds it.
void KeepCopy(const RewriteNote& note, const std::string& tempFolder) {
    std::string name = note.copyName;
    while (name.starts_with('$')) name.erase(0, 1);
    constexpr int kMostNames = 1000;
    for (int i = 0; i < kMostNames; ++i) {
        const std::string kept =
            files::Join(tempFolder, "kept" + (i == 0 ? std::string() : std::to_string(i)) + "-" + name);
        if (files::Exists(kept)) continue;
        if (files::Rename(CopyPath(note, tempFolder), kept) == FileResult::Done)
            Log("%s is not the file that was being written; the copy is kept: %s", note.path.c_str(),
                kept.c_str());
        return;
    }
}

void RemoveCopy(const RewriteNote& note, const std::string& tempFolder) {
    if (!note.copyName.empty()) files::RemoveFile(CopyPath(note, tempFolder));
}

// Brings back what stood there, times included, and flushes.
bool PutBack(EditFile& file, const RewriteNote& note, const std::string& tempFolder) {
    bool isBack = false;
    switch (note.road) {
        case Road::InPlace:
            isBack = file.WriteAt(note.offset, note.oldBytes) == FileResult::Done;
            break;
        case Road::Inserted:
            isBack = TakeOutInserted(file, note);
            break;
        case Road::Copied:
        case Road::Tool:
            isBack = PutBackFromCopy(file, note, tempFolder);
            break;
    }
    if (!isBack) return false;
    file.SetTimes(note.accessed, note.written);
    return file.Flush() == FileResult::Done;
}

// Of a file that may have gone: it is then made from its copy.
bool PutBackByPath(const RewriteNote& note, const std::string& tempFolder) {
    EditFile file;
    const FileResult opened = file.Open(note.path);
    if (opened == FileResult::Done) return PutBack(file, note, tempFolder);
    return opened == FileResult::NotFound && !note.copyName.empty() &&
           files::CopyFile(CopyPath(note, tempFolder), note.path) == FileResult::Done;
}

Settled SettleMissing(const RewriteNote& note, const std::string& tempFolder) {
    const std::size_t separator = note.path.rfind(files::kSeparator);
    // A folder that is not there is a drive that is not plugged in.
    if (separator == std::string::npos ||
        !files::IsFolder(note.path.substr(0, std::max<std::size_t>(separator, 1))))
        return Settled::Waits;
    if (note.copyName.empty() || !files::Exists(CopyPath(note, tempFolder))) return Settled::LeftAlone;
    if (!PutBackByPath(note, tempFolder)) return Settled::Waits;
    RemoveCopy(note, tempFolder);
    return Settled::Mended;
}

Standing LookAtFile(const EditFile& file, const RewriteNote& note, const std::string& tempFolder,
                    bool& hasCopy) {
    if (note.road == Road::InPlace) return LookInPlace(file, note);
    if (note.road == Road::Inserted) return LookInserted(file, note);
    const files::InputFile copy = OpenCopy(note, tempFolder);
    hasCopy = copy.IsOpen();
    // The copy goes after the rewrite has been finished, so without one there is nothing to finish.
    if (!hasCopy) return Standing::Foreign;
    return note.road == Road::Copied ? LookCopied(file, note, copy) : LookAfterTool(file, note, copy);
}

// Back to the old bytes; where space was inserted on to the new ones, which needs no help of the file system.
bool Mend(EditFile& file, const RewriteNote& note, const std::string& tempFolder) {
    if (note.road != Road::Inserted) return PutBack(file, note, tempFolder);
    return file.WriteAt(note.offset, note.newBytes) == FileResult::Done && file.Flush() == FileResult::Done;
}

void WaitForTool(const std::string& path) {
    constexpr double kPatienceMs = 10'000;
    for (const double start = UptimeMs(); files::IsOpenForWriting(path) && UptimeMs() - start < kPatienceMs;)
        SleepMs(10);
}

}  // namespace

FileResult ApplyNote(EditFile& file, const RewriteNote& note, const std::string& tempFolder,
                     bool& nothingDone) {
    nothingDone = false;
    if (note.road == Road::InPlace) return file.WriteAt(note.offset, note.newBytes);
    if (note.road == Road::Inserted) {
        nothingDone = !file.InsertSpace(note.offset, note.newSize - note.oldSize);
        return nothingDone ? FileResult::Failed : file.WriteAt(note.offset, note.newBytes);
    }
    const files::InputFile copy = OpenCopy(note, tempFolder);
    if (!copy.IsOpen()) return FileResult::Failed;
    if (const FileResult room = file.Reserve(note.newSize); room != FileResult::Done) return room;
    return WriteFromCopy(file, note, copy);
}

bool HoldsNewBytes(const EditFile& file, const RewriteNote& note, const std::string& tempFolder) {
    if (SizeOf(file) != note.newSize) return false;
    if (note.road == Road::InPlace || note.road == Road::Inserted)
        return ReadString(file, note.offset, note.newBytes.size()) == note.newBytes;
    const files::InputFile copy = OpenCopy(note, tempFolder);
    return copy.IsOpen() && LookCopied(file, note, copy) == Standing::New;
}

Settled SettleNote(const RewriteNote& note, const std::string& tempFolder) {
    // A tool outlives the program that started it and may be at work still.
    if (note.road == Road::Tool) WaitForTool(note.path);
    EditFile file;
    const FileResult opened = file.Open(note.path);
    if (opened == FileResult::NotFound) return SettleMissing(note, tempFolder);
    if (opened != FileResult::Done) return Settled::Waits;
    bool hasCopy = false;
    switch (LookAtFile(file, note, tempFolder, hasCopy)) {
        case Standing::Old:
        case Standing::New:
            RemoveCopy(note, tempFolder);
            return Settled::Whole;
        case Standing::Torn:
            if (!Mend(file, note, tempFolder)) return Settled::Waits;
            RemoveCopy(note, tempFolder);
            return Settled::Mended;
        case Standing::Foreign:
            break;
    }
    if (hasCopy) KeepCopy(note, tempFolder);
    return Settled::LeftAlone;
}

Settled UndoNote(EditFile& file, const RewriteNote& note, const std::string& tempFolder) {
    bool hasCopy = false;
    const Standing standing = LookAtFile(file, note, tempFolder, hasCopy);
    const bool needsCopy = note.road == Road::Copied;
    if (standing == Standing::Foreign && hasCopy == needsCopy) {
        if (hasCopy) KeepCopy(note, tempFolder);
        return Settled::LeftAlone;
    }
    return PutBack(file, note, tempFolder) ? Settled::Mended : Settled::Waits;
}

}  // namespace kalmora
