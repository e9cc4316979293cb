#include "index/index_entry.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "media/photo_file.h"
#include "media/placement.h"
#include "platform/files.h"
#include "store/file_helpers.h"
#include "text/encoding.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::size_t kTextRead = 32768;  // bytes of a file that is read as text

bool IsPhotoExtension(std::string_view extension) {
    return extension == "jpg" || extension == "jpeg" || extension == "png";
}

bool IsUsable(const SystemTime& date) { return date.day != 0 && date.year <= 8000 && date.month <= 12; }

void UpToZero(std::string& text) { text.resize(std::min(text.find('\0'), text.size())); }

// One line, in the form in which it is searched. A single byte stays as it is: meant, and held by
// IndexEntryRefresh.CommentOfOneByteIsNotFolded. (Line ends go even then: they would break the index.)
void MakeSearchable(std::string& comment) {
    UpToZero(comment);
    BlankControls(comment);
    if (text::Cp932Length(comment) > 1) comment = text::Fold(comment);
    if (comment.size() > kLongestComment) comment = text::CutAtCharacter(comment, kLongestComment);
}

// The last-write time from before the reading: a file that changes while it is read is then stale at the next
// update. (Reading writes nothing, so no later time of our own could be missed.) Empty for a file that is not
// there.
std::optional<FileTime> TimeBeforeReading(const std::string& path) {
    const auto status = files::GetStatus(path);
    return status ? std::optional(status->written) : std::nullopt;
}

// False when the file is not there; nothing changes then.
bool ReadPhoto(IndexEntry& entry) {
    PhotoFile photo(entry.path);
    std::optional<FileTime> written;
    if (photo.kind != ObjectKind::Image) written = TimeBeforeReading(entry.path);
    const Size size = photo.ImageSize();  // first, so that one look at the file serves everything
    // A look at the open file costs a third of one at its name. None where it could not be opened.
    if (photo.kind == ObjectKind::Image && photo.Metadata().written.ticks != 0)
        written = photo.Metadata().written;
    if (!written) written = TimeBeforeReading(entry.path);
    if (!written) return false;
    entry.lastWriteTime = *written;
    const Size shown = photo.kind == ObjectKind::Image ? ThumbnailSize(size) : Size{-1, -1};
    entry.width = shown.width;
    entry.height = shown.height;
    entry.estimations = photo.GetEstimations();
    entry.camera = photo.Metadata().camera;
    const std::string* comment = photo.GetComment();
    entry.comment = comment ? *comment : std::string();
    entry.date = {};
    if (!photo.ReadShotDate(entry.date) || !IsUsable(entry.date)) photo.GetDate(entry.date);
    return true;
}

// The beginning of any file that is no photo, as text. Of one in two-byte units the zero bytes are no end.
std::string ReadBeginning(const std::string& path) {
    files::InputFile file;
    if (!file.Open(path)) return {};
    std::array<std::uint8_t, kTextRead> buffer;
    std::string bytes(reinterpret_cast<const char*>(buffer.data()), file.ReadAt(0, buffer));
    const int marked = DetectEncoding(std::string_view(bytes).substr(0, 2));
    if (marked != kEncodingUtf16Le && marked != kEncodingUtf16Be) UpToZero(bytes);
    std::string text = DecodeText(bytes);
    // Two bytes end a line on the other platform, and they count as one there.
    std::size_t kept = 0;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (text[at] != '\r' || at + 1 == text.size() || text[at + 1] != '\n') text[kept++] = text[at];
    text.resize(kept);
    return text;
}

void ReadText(IndexEntry& entry) {
    entry.comment = ReadBeginning(entry.path);
    PhotoFile(entry.path).GetDate(entry.date);
}

}  // namespace

bool IndexEntry::IsStale() const {
    const auto status = files::GetStatus(path);
    return !status || status->written != lastWriteTime;
}

bool IndexEntry::Refresh() {
    const std::string extension = GetExtension(path);
    if (IsPhotoExtension(extension)) {
        if (!ReadPhoto(*this)) return false;
    } else {
        const auto written = TimeBeforeReading(path);
        if (!written) return false;
        lastWriteTime = *written;
        if (extension.empty()) return true;
        ReadText(*this);
    }
    MakeSearchable(comment);
    return true;
}

}  // namespace kalmora
