#include "views/load/day_listing.h"

#include <set>
#include <utility>

#include "base/log.h"
#include "platform/files.h"
#include "store/extension_table.h"
#include "store/file_helpers.h"
#include "store/shortcuts.h"
#include "views/load/search_view.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr int kDeepestFolder = 64;

class Walk {
public:
    Walk(const StopToken& stop, const std::function<void(const std::string& path)>& found)
        : stop_(stop), found_(found) {}

    void Folder(const std::string& folder, int depth) {
        if (depth > kDeepestFolder) return;
        for (const files::FolderEntry& entry : files::ListFolder(folder)) {
            if (stop_.IsStopped()) return;
            const std::string path = files::Join(folder, entry.name);
            if (!entry.isFolder)
                found_(path);
            else if (!entry.isLink || EntersOnce(path))
                Folder(path, depth + 1);
        }
    }

private:
    // A linked folder is entered the first time it is met, so that links which form a loop end.
    bool EntersOnce(const std::string& path) {
        const auto status = files::GetStatus(path);
        return status && entered_.emplace(status->volume, status->identity).second;
    }

    const StopToken stop_;
    const std::function<void(const std::string& path)>& found_;
    std::set<std::pair<std::uint64_t, std::uint64_t>> entered_;
};

void AddShortcut(const std::string& path, DayListing* listing) {
    const auto target = ResolveShortcut(path);
    if (!target || target->empty()) return;
    const ObjectKind kind = ClassifyFile(*target);
    if (kind == ObjectKind::Text || kind == ObjectKind::Image || kind == ObjectKind::Movie)
        listing->entries.push_back({*target, kind});
    else if (kind == ObjectKind::Music && files::Exists(*target))
        listing->music.push_back(*target);
}

}  // namespace

void DayListing::Add(const std::string& path) {
    const ObjectKind kind = ClassifyFile(path);
    switch (kind) {
        case ObjectKind::Shortcut:
            AddShortcut(path, this);
            break;
        case ObjectKind::Music:
            music.push_back(path);
            break;
        case ObjectKind::Text:
            if (const auto status = files::GetStatus(path); !status)
                break;
            else if (status->isRegular && status->size == 0)
                emptyTexts.push_back(path);
            else
                entries.push_back({path, kind});
            break;
        case ObjectKind::Image:
            // Lower case only here, unlike elsewhere: "Back.jpg" is an ordinary picture of the day.
            if (GetFileName(path).starts_with("back"))
                backgrounds.push_back(path);
            else
                entries.push_back({path, kind});
            break;
        case ObjectKind::Movie:
            entries.push_back({path, kind});
            break;
        default:
            break;
    }
}

void ForEachFile(const std::string& folder, const StopToken& stop,
                 const std::function<void(const std::string& path)>& found) {
    Walk(stop, found).Folder(folder, 0);
}

DayListing ListDayFolder(const std::string& folder, const ViewState& view, const StopToken& stop) {
    if (view.searchResult) return ListFoundFiles(folder, stop);
    DayListing listing;
    ForEachFile(folder, stop, [&](const std::string& path) { listing.Add(path); });
    return listing;
}

DayListing ListFoundFiles(const std::string& folder, const StopToken& stop) {
    DayListing listing;
    ForEachFound(folder, stop, [&](const std::string& path) { listing.Add(path); });
    return listing;
}

std::vector<DayEntry> TakeListing(CalendarStore& calendar, DayListing listing) {
    // A scrap that was never filled vanishes: the empty file is deleted, meant as it is.
    for (const std::string& path : listing.emptyTexts) {
        Log("remove empty text: %s", path.c_str());
        files::RemoveFile(path);
    }
    BackgroundSet& backgrounds = calendar.backgrounds;
    for (const std::string& path : listing.backgrounds) backgrounds.AddImage(path);
    for (const std::string& path : listing.music) backgrounds.AddMusic(path, false);
    for (const DayEntry& entry : listing.entries) calendar.partners.slideShow.AddSlide(entry.path);
    return std::move(listing.entries);
}

}  // namespace kalmora
