#include "views/load/scan_backgrounds.h"

#include <cstddef>
#include <string_view>

#include "platform/files.h"
#include "store/data_folder.h"
#include "store/extension_table.h"
#include "store/shortcuts.h"
#include "text/encoding.h"
#include "text/text.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr std::size_t kLongestListLine = 260;  // bytes; the rest of a longer line counts as a line of its own
constexpr std::size_t kLongestList = 4u << 20;

// A relative name in a list lies beside the list.
std::string ListedPath(std::string_view line, const std::string& listFolder) {
    const std::string name = files::WithPlatformSeparators(line);
    return files::IsAbsolute(name) ? name : files::Join(listFolder, name);
}

void ReadMusicList(CalendarStore& calendar, const std::string& listPath, const std::string& folder,
                   const StopToken& stop) {
    const auto content = files::ReadWholeFile(listPath, kLongestList);
    if (!content) return;
    const std::string text = DecodeText(*content);
    std::string_view rest = text;
    while (!rest.empty() && !stop.IsStopped()) {
        const std::size_t lineEnd = rest.find('\n');
        std::size_t length = lineEnd == std::string_view::npos ? rest.size() : lineEnd + 1;
        if (length > kLongestListLine) length = text::CutAtCharacter(rest, kLongestListLine).size();
        std::string_view line = rest.substr(0, length);
        rest.remove_prefix(length);
        if (line.empty() || line[0] == '\r' || line[0] == '\n' || line[0] == '#' || line[0] == ' ') continue;
        while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.remove_suffix(1);
        const std::string path = ListedPath(line, folder);
        if (files::Exists(path)) calendar.backgrounds.AddMusic(path, true);
    }
}

void ScanFolder(CalendarStore& calendar, const std::string& folder, const StopToken& stop) {
    BackgroundSet& backgrounds = calendar.backgrounds;
    for (const files::FolderEntry& entry : files::ListFolder(folder)) {
        if (stop.IsStopped()) return;
        if (entry.isFolder) continue;
        const std::string path = files::Join(folder, entry.name);
        switch (ClassifyFile(path)) {
            case ObjectKind::Image:
                if (entry.name.starts_with("back")) backgrounds.AddImage(path);
                break;
            case ObjectKind::Shortcut:
                if (const auto target = ResolveShortcut(path);
                    target && ClassifyFile(*target) == ObjectKind::Music && files::Exists(*target))
                    backgrounds.AddMusic(*target, true);
                break;
            case ObjectKind::Music:
                backgrounds.AddMusic(path, true);
                break;
            case ObjectKind::MusicList:
                ReadMusicList(calendar, path, folder, stop);
                break;
            default:
                break;
        }
    }
}

}  // namespace

void ScanBackgrounds(CalendarStore& calendar, const std::string& root, int year, int month,
                     const StopToken& stop) {
    if (month > 0) ScanFolder(calendar, MakeMonthFolderPath(root, year, month), stop);
    // A year's pictures and music also serve its months.
    if (!stop.IsStopped()) ScanFolder(calendar, MakeYearFolderPath(root, year), stop);
    calendar.backgrounds.SetValid();
}

}  // namespace kalmora
