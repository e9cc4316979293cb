#include "import/import_source.h"

#include <algorithm>

#include "base/dates.h"
#include "media/exif_writer.h"
#include "media/photo_file.h"
#include "platform/clock.h"
#include "store/file_helpers.h"

namespace kalmora {

namespace {

constexpr std::uint16_t kMakeTag = 0x010F, kModelTag = 0x0110;
constexpr char kPhoneMake[] = "SHARP", kPhoneModel[] = "W-ZERO3 [es]";

bool IsOnACalendar(const SystemTime& date) {
    constexpr int kLastYear = 9999;  // folders have four digits for it
    return date.year >= 1 && date.year <= kLastYear && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
           date.day <= DaysInMonth(date.year, date.month);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::optional<SystemTime> DateOfSource(const std::string& path) {
    PhotoFile photo(path);
    SystemTime date;
    const bool hasDate = photo.kind == ObjectKind::Image || photo.kind == ObjectKind::Text;
    if (hasDate && photo.GetDate(date) && IsOnACalendar(date)) return date;
    const auto ofFile = GetFileDate(path);
    return ofFile && IsOnACalendar(*ofFile) ? ofFile : std::nullopt;
}

std::optional<SystemTime> PhoneNameDate(std::string_view fileName) {
    constexpr std::size_t kLength = 13, kDash = 6;
    if (fileName.size() < kLength || fileName[kDash] != '-') return std::nullopt;
    const auto pair = [&](std::size_t at) {
        return static_cast<std::uint16_t>((fileName[at] - '0') * 10 + (fileName[at + 1] - '0'));
    };
    for (std::size_t at = 0; at < kLength; ++at)
        if (at != kDash && !IsDigit(fileName[at])) return std::nullopt;
    SystemTime date;
    date.year = static_cast<std::uint16_t>(2000 + pair(0));
    date.month = pair(2);
    date.day = pair(4);
    date.hour = pair(7);
    date.minute = pair(9);
    date.second = pair(11);
    if (!IsOnACalendar(date) || date.hour > 23 || date.minute > 59 || date.second > 59) return std::nullopt;
    date.dayOfWeek = static_cast<std::uint16_t>(DayOfWeek(date.year, date.month, date.day));
    return date;
}

RewriteResult WritePhoneDate(const std::string& path, const SystemTime& date) {
    PhotoFile photo(path);
    if (photo.PngTexts()) return photo.SetShotDate(date);
    if (photo.kind != ObjectKind::Image) return RewriteResult::Unsupported;
    ExifEdits edits = DateEdits(date);
    edits.push_back(TextTagEdit(kMakeTag, kPhoneMake));
    edits.push_back(TextTagEdit(kModelTag, kPhoneModel));
    return WriteExif(path, edits);
}

}  // namespace kalmora
