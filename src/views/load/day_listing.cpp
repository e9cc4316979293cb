#include "views/load/day_listing.h"

#include <set>
#include <utility>

#include "base/log.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "store/extension_table.h"
#include "store/shortcuts.h"
#include "views/load/search_view.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr int kDeepestFolder = 64;

class Walk {
public:
    explicit Walk(const StopToken& stop) : stop_(stop) {}

    void Folder(const std::string& folder, int depth) {
        if (depth > kDeepestFolder) return;
        for (const files::FolderEntry& entry : files::ListFolder(folder)) {
            if (stop_.IsStopped()) return;
            const std::string path = files::Join(folder, entry.name);
            if (!entry.isFolder)
                File(path, entry.name);
            else if (!entry.isLink || EntersOnce(path))
                Folder(path, depth + 1);
        }
    }

    void FoundFile(const std::string& path) {
        File(path, path.substr(path.find_last_of(files::kSeparator) + 1));
    }

    DayListing Take() { return std::move(listing_); }

private:
    // A linked folder is entered the first time it is met, so that links which form a loop end.
    bool EntersOnce(const std::string& path) {
        const auto status = files::GetStatus(path);
        return status && entered_.emplace(status->volume, status->identity).second;
    }

    void File(const std::string& path, const std::string& name) {
        const ObjectKind kind = ClassifyFile(path);
        switch (kind) {
            case ObjectKind::Shortcut:
                Shortcut(path);
                break;
            case ObjectKind::Music:
                listing_.music.push_back(path);
                break;
            case ObjectKind::Text:
                if (const auto status = files::GetStatus(path); !status)
                    break;
                else if (status->isRegular && status->size == 0)
                    listing_.emptyTexts.push_back(path);
                else
                    listing_.entries.push_back({path, kind});
                break;
            case ObjectKind::Image:
                // Lower case only here, unlike elsewhere: "Back.jpg" is an ordinary picture of the day.
                if (name.starts_with("back")) {
                    listing_.backgrounds.push_back(path);
                    break;
                }
                listing_.entries.push_back({path, kind});
                break;
            case ObjectKind::Movie:
                listing_.entries.push_back({path, kind});
                break;
            default:
                break;
        }
    }

    void Shortcut(const std::string& path) {
        const auto target = ResolveShortcut(path);
        if (!target || target->empty()) return;
        const ObjectKind kind = ClassifyFile(*target);
        if (kind == ObjectKind::Text || kind == ObjectKind::Image || kind == ObjectKind::Movie)
            listing_.entries.push_back({*target, kind});
        else if (kind == ObjectKind::Music && files::Exists(*target))
            listing_.music.push_back(*target);
    }

    const StopToken stop_;
    DayListing listing_;
    std::set<std::pair<std::uint64_t, std::uint64_t>> entered_;
};

}  // namespace

DayListing ListDayFolder(const std::string& folder, const StopToken& stop) {
    if (View().searchResult) return ListFoundFiles(folder, stop);
    Walk walk(stop);
    walk.Folder(folder, 0);
    return walk.Take();
}

DayListing ListFoundFiles(const std::string& folder, const StopToken& stop) {
    Walk walk(stop);
    ForEachFound(folder, stop, [&](const std::string& path) { walk.FoundFile(path); });
    return walk.Take();
}

std::vector<DayEntry> TakeListing(DayListing listing) {
    // A scrap that was never filled vanishes: the empty file is deleted, meant as it is.
    for (const std::string& path : listing.emptyTexts) {
        Log("remove empty text: %s", path.c_str());
        files::RemoveFile(path);
    }
    BackgroundSet& backgrounds = Calendar().backgrounds;
    for (const std::string& path : listing.backgrounds) backgrounds.AddImage(path);
    for (const std::string& path : listing.music) backgrounds.AddMusic(path, false);
    for (const DayEntry& entry : listing.entries) Calendar().partners.slideShow.AddSlide(entry.path);
    return std::move(listing.entries);
}

}  // namespace kalmora
