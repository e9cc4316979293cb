#include "import/import_same.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "base/dates.h"
#include "media/photo_file.h"
#include "platform/files.h"
#include "platform/transfer.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

bool HaveSameSecond(const SystemTime& a, const SystemTime& b) {
    return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour &&
           a.minute == b.minute && a.second == b.second;
}

// True when so many bytes of the two, each from its own place on, are the same.
bool HaveSameBytesAt(const files::InputFile& a, std::uint64_t atA, const files::InputFile& b,
                     std::uint64_t atB, std::uint64_t length) {
    constexpr std::size_t kBlock = 1u << 18;
    std::vector<std::uint8_t> blockA(kBlock), blockB(kBlock);
    for (std::uint64_t done = 0; done < length;) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, length - done));
        if (a.ReadAt(atA + done, {blockA.data(), wanted}) != wanted ||
            b.ReadAt(atB + done, {blockB.data(), wanted}) != wanted ||
            std::memcmp(blockA.data(), blockB.data(), wanted) != 0)
            return false;
        done += wanted;
    }
    return true;
}

// The comparison with what the source would be once the change has been made.
bool HoldsChanged(const std::string& existing, const std::string& source, const FileChange& change) {
    files::InputFile was, is;
    if (!was.Open(source) || !is.Open(existing)) return false;
    const std::uint64_t end = change.offset + change.oldLength;
    const std::uint64_t grown = change.offset + change.content.size();
    if (end > was.Size() || is.Size() != was.Size() - change.oldLength + change.content.size()) return false;
    std::string middle(change.content.size(), '\0');
    return is.ReadAt(change.offset, {reinterpret_cast<std::uint8_t*>(middle.data()), middle.size()}) ==
               middle.size() &&
           middle == change.content && HaveSameBytesAt(was, 0, is, 0, change.offset) &&
           HaveSameBytesAt(was, end, is, grown, was.Size() - end);
}

}  // namespace

int CompareImportFiles(const std::string& a, const std::string& b) {
    SystemTime dateOfA, dateOfB;
    if (PhotoFile(a).ReadShotDate(dateOfA) && PhotoFile(b).ReadShotDate(dateOfB) &&
        (HaveSameSecond(dateOfA, dateOfB) || CompareSystemTimes(dateOfA, dateOfB) == 0))
        return 0;  // whatever their sizes: meant, and held by CompareImportFilesTest.SameSecondIsTheSameFile
    const std::uint32_t sizeOfA = GetFileSizeValue(a), sizeOfB = GetFileSizeValue(b);
    return sizeOfA == sizeOfB ? 0 : sizeOfA > sizeOfB ? 1 : -1;
}

IncomingContent::IncomingContent(const std::string& source, const std::string& words)
    : source_(source), words_(words), status_(files::GetStatus(source)) {}

const FileChange* IncomingContent::Change() {
    if (!isPlanned_ && !words_.empty()) {
        PhotoFile photo(source_);
        FileChange change;
        if (photo.PlanAppendComment(words_, change) == RewriteResult::Written) change_ = std::move(change);
    }
    isPlanned_ = true;
    return change_ ? &*change_ : nullptr;
}

bool IncomingContent::MayHaveSize(std::uint64_t size) {
    if (!status_ || !status_->isRegular) return false;
    if (status_->size == size) return true;
    const FileChange* const change = Change();
    return change && status_->size - change->oldLength + change->content.size() == size;
}

bool IncomingContent::IsHeldBy(const std::string& existing) {
    const auto status = files::GetStatus(existing);
    if (!status || !status->isRegular || !MayHaveSize(status->size)) return false;
    if (status->volume == status_->volume && status->identity == status_->identity) return true;
    if (status->size == status_->size && files::HaveSameBytes(source_, existing)) return true;
    const FileChange* const change = Change();
    return change && HoldsChanged(existing, source_, *change);
}

}  // namespace kalmora
