#include "store/data_folder.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <mutex>

#include "platform/files.h"
#include "state/app_state.h"
#include "text/text.h"

namespace kalmora {

namespace {

// Guards DataDirectory and DataDirectories of AppState once several threads run. Held for copies and changes,
// never while the disk is looked at.
std::mutex rootMutex;

// As "%04d" and "%02d" write it: a minus sign counts as a place.
std::string Padded(int number, int places) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%0*d", places, number);
    return digits;
}

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

// Takes numbers and the separators between them off the front of a text, as long as they are as expected.
class NumberScanner {
public:
    explicit NumberScanner(std::string_view text) : text_(text) {}

    std::optional<int> Number() {
        std::size_t i = text_.find_first_not_of(" \t\n\v\f\r");
        if (i == std::string_view::npos) return std::nullopt;
        const bool negative = text_[i] == '-';
        if (negative || text_[i] == '+') ++i;
        const std::size_t firstDigit = i;
        long long value = 0;
        for (; i < text_.size() && text_[i] >= '0' && text_[i] <= '9'; ++i)
            value = std::min<long long>(value * 10 + (text_[i] - '0'), std::numeric_limits<int>::max());
        if (i == firstDigit) return std::nullopt;
        text_.remove_prefix(i);
        return static_cast<int>(negative ? -value : value);
    }
    bool Separator() { return Take(!text_.empty() && IsSeparator(text_[0])); }
    bool Literal(char c) { return Take(!text_.empty() && text_[0] == c); }

private:
    bool Take(bool matches) {
        if (matches) text_.remove_prefix(1);
        return matches;
    }
    std::string_view text_;
};

std::optional<CalendarDate> ParseBelow(std::string_view path, std::string_view root) {
    if (!IsBelow(path, root)) return std::nullopt;
    NumberScanner scanner(path.substr(root.size() + 1));
    CalendarDate date;
    const auto yearFolder = scanner.Number();
    if (!yearFolder) return std::nullopt;
    date.year = *yearFolder;
    if (!scanner.Separator()) return date;
    const auto monthFolder = scanner.Number();
    if (!monthFolder) return date;
    date.month = *monthFolder % 100;
    if (!scanner.Separator()) return date;
    const auto dayFolderYear = scanner.Number();
    if (!dayFolderYear) return date;
    // The year folder's own number loses: meant, and held by ParsePathDateTest.YearIsThatOfTheDayFolder.
    date.year = *dayFolderYear;
    if (!scanner.Literal('_')) return date;
    if (const auto monthAndDay = scanner.Number()) date.day = *monthAndDay % 100;
    return date;
}

}  // namespace

std::string MakeYearFolderPath(std::string_view root, int year) { return files::Join(root, Padded(year, 4)); }

std::string MakeMonthFolderPath(std::string_view root, int year, int month) {
    std::string yearPath = MakeYearFolderPath(root, year);
    if (month <= 0) return yearPath;
    return files::Join(yearPath, Padded(year, 4) + Padded(month, 2));
}

std::string MakeDayFolderPath(std::string_view root, int year, int month, int day) {
    std::string monthPath = MakeMonthFolderPath(root, year, month);
    if (month <= 0 || day <= 0) return monthPath;
    return files::Join(monthPath, Padded(year, 4) + '_' + Padded(month, 2) + Padded(day, 2));
}

std::optional<CalendarDate> ParsePathDate(std::string_view path) {
    if (const auto date = ParseBelow(path, MainRoot())) return date;
    return ParseBelow(path, State().settings.OtherDirectory);
}

std::string MainRoot() {
    std::lock_guard lock(rootMutex);
    return State().settings.RunDataDirectory.empty() ? State().settings.DataDirectory
                                                     : State().settings.RunDataDirectory;
}

void ClearDataFolders() {
    std::lock_guard lock(rootMutex);
    State().settings.DataDirectories.clear();
}

void SetMainRoot(const std::string& root) {
    std::lock_guard lock(rootMutex);
    State().settings.DataDirectory = root;
}

std::string OtherRoot() {
    const AppState& state = State();
    return state.settings.UseOtherFolder && files::IsFolder(state.settings.OtherDirectory)
               ? state.settings.OtherDirectory
               : std::string();
}

std::string CurrentDataRoot() {
    AppState& state = State();
    if (!state.settings.AllowMultiDataDirectory || !state.settings.RunDataDirectory.empty())
        return MainRoot();

    std::vector<std::string> listed;
    {
        std::lock_guard lock(rootMutex);
        listed = state.settings.DataDirectories;
    }
    for (const std::string& root : listed)
        if (files::IsFolder(root)) return root;

    if (!listed.empty()) return listed.front();

    std::string fallback = files::Join(state.settings.ProgramFolder, "files");
    const bool made = !files::IsFolder(fallback) && MakeDirectories(fallback);
    std::lock_guard lock(rootMutex);
    state.settings.DataDirectory = fallback;
    auto& folders = state.settings.DataDirectories;
    // Another thread may have decided the same at the same time.
    if (made && std::find(folders.begin(), folders.end(), fallback) == folders.end())
        folders.push_back(fallback);
    return fallback;
}

bool MakeDirectories(std::string_view path) {
    // "C:" is a drive and no folder that could be made; where there are no drives, it is a name like any
    // other.
    constexpr bool kHasDrives = files::kSeparator == '\\';
    if (path.empty()) return false;
    for (std::size_t end = 1; end <= path.size(); ++end) {
        const bool last = end == path.size();
        if (!last && path[end] != files::kSeparator) continue;
        if (path[end - 1] == files::kSeparator || (kHasDrives && path[end - 1] == ':')) continue;
        const std::string prefix(path.substr(0, end));
        if (files::IsFolder(prefix)) continue;
        const files::FileResult result = files::MakeFolder(prefix);
        if (result != files::FileResult::Done && !files::IsFolder(prefix)) return false;
    }
    return true;
}

}  // namespace kalmora
