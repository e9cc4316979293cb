#include "index/index_nonsense.h"

#include <string>

#include "base/dates.h"
#include "store/extension_table.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

// No picture is ever fitted into more pixels (the range of ThumbnailMaxSize).
constexpr std::int32_t kLargestSide = 10'000;

bool IsSide(std::int32_t pixels) { return pixels >= 0 && pixels <= kLargestSide; }

bool IsOnACalendar(const SystemTime& date) {
    return date.year >= 1 && date.year <= 8000 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
           date.day <= DaysInMonth(date.year, date.month) && date.hour < 24 && date.minute < 60 &&
           date.second < 60;
}

// Those that IndexEntry::Refresh reads as photos.
bool IsPhotoExtension(const std::string& extension) {
    return extension == "jpg" || extension == "jpeg" || extension == "png";
}

}  // namespace

bool IsNonsense(const IndexEntry& entry) {
    const std::string extension = GetExtension(entry.path);
    if (extension.empty()) return false;  // of such a file nothing but its time is ever known
    // No date at all: a line that is missing, which the record of a text may do without.
    const bool isPhoto = IsPhotoExtension(extension);
    if (!IsOnACalendar(entry.date) && (isPhoto || entry.date != SystemTime{})) return true;
    // A table that no longer lists the extension leaves the photo without a size, and no reading gives it
    // one.
    const bool hasSize = isPhoto && ClassifyFile(entry.path) == ObjectKind::Image;
    return hasSize && (!IsSide(entry.width) || !IsSide(entry.height));
}

}  // namespace kalmora
