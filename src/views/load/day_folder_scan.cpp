#include "views/load/day_folder_scan.h"

#include <set>
#include <utility>

#include "base/log.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "state/app_state.h"
#include "store/extension_table.h"
#include "views/load/search_view.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

constexpr int kDeepestFolder = 64;

class Walk {
public:
    Walk(const std::function<bool()>& stopped, const std::function<void(DayEntry)>& found)
        : stopped_(stopped), found_(found) {}

    void Folder(const std::string& folder, int depth) {
        if (depth > kDeepestFolder) return;
        for (const files::FolderEntry& entry : files::ListFolder(folder)) {
            if (stopped_()) return;
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
                Calendar().backgrounds.AddMusic(path, false);
                break;
            case ObjectKind::Text:
                // A scrap that was never filled vanishes: the empty file is deleted, meant as it stands.
                if (const auto status = files::GetStatus(path); !status)
                    break;
                else if (status->isRegular && status->size == 0) {
                    Log("remove empty text: %s", path.c_str());
                    files::RemoveFile(path);
                    break;
                }
                Tell(path, kind);
                break;
            case ObjectKind::Image:
                // Lower case only here, unlike elsewhere: "Back.jpg" is an ordinary picture of the day.
                if (name.starts_with("back")) {
                    Calendar().backgrounds.AddImage(path);
                    break;
                }
                Tell(path, kind);
                break;
            case ObjectKind::Movie:
                Tell(path, kind);
                break;
            default:
                break;
        }
    }

    void Shortcut(const std::string& path) {
        const auto target = shell::ResolveShortcut(path);
        if (!target || target->empty()) return;
        const ObjectKind kind = ClassifyFile(*target);
        if (kind == ObjectKind::Text || kind == ObjectKind::Image || kind == ObjectKind::Movie)
            Tell(*target, kind);
        else if (kind == ObjectKind::Music && files::Exists(*target))
            Calendar().backgrounds.AddMusic(*target, false);
    }

    void Tell(const std::string& path, ObjectKind kind) {
        Calendar().partners.slideShow.AddSlide(path);
        found_({path, kind});
    }

    const std::function<bool()>& stopped_;
    const std::function<void(DayEntry)>& found_;
    std::set<std::pair<std::uint64_t, std::uint64_t>> entered_;
};

}  // namespace

void ScanDayFolder(const std::string& folder, const std::function<bool()>& stopped,
                   const std::function<void(DayEntry)>& found) {
    if (View().searchResult) return ScanFoundFiles(folder, stopped, found);
    Walk(stopped, found).Folder(folder, 0);
}

void ScanFoundFiles(const std::string& folder, const std::function<bool()>& stopped,
                    const std::function<void(DayEntry)>& found) {
    Walk walk(stopped, found);
    ForEachFound(folder, stopped, [&](const std::string& path) { walk.FoundFile(path); });
}

}  // namespace kalmora
