#include "import/import_walk.h"

#include "index/day_index.h"
#include "platform/abandoned_files.h"
#include "platform/files.h"
#include "platform/transfer.h"
#include "store/file_helpers.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr int kDeepestFolder = 256;  // no one nests deeper, and it has to end

constexpr std::string_view kJunkNames[] = {
    ".AppleDB",
    ".AppleDesktop",
    ".AppleDouble",
    ".DS_Store",
    ".DocumentRevisions-V100",
    ".Spotlight-V100",
    ".TemporaryItems",
    ".Trash",
    ".Trashes",
    ".VolumeIcon.icns",
    ".apdisk",
    ".fseventsd",
    ".localized",
    ".thumbnails",
    ".directory",
    "#recycle",
    "$RECYCLE.BIN",
    "@Recently-Snapshot",
    "@Recycle",
    "@eaDir",
    "Icon\r",
    "RECYCLER",
    "System Volume Information",
    "__MACOSX",
    "desktop.ini",
    "ehthumbs.db",
    "ehthumbs_vista.db",
    "lost+found",
};
constexpr std::string_view kJunkBeginnings[] = {"._", ".Trash-"};

}  // namespace

bool IsJunkName(std::string_view name) {
    for (const std::string_view junk : kJunkNames)
        if (text::EqualsNoCase(name, junk)) return true;
    for (const std::string_view beginning : kJunkBeginnings)
        if (text::StartsWithNoCase(name, beginning)) return true;
    return false;
}

bool IsLeftAlone(const std::string& name) {
    return name == kIndexFileName || files::HasScratchName(name) || IsJunkName(name);
}

SourceWalk::SourceWalk(WalkListener& listener, std::string root, StopToken stop)
    : listener_(listener), root_(std::move(root)), stop_(std::move(stop)) {
    rootFolder_ = IdentityOf(root_);
}

bool SourceWalk::Walk(const std::vector<std::string>& sources) {
    for (const std::string& source : sources) {
        if (stop_.IsStopped()) return false;
        if (files::IsFolder(source)) {
            if (!WalkFolder(source, Way::Direct, 0)) return false;
        } else {
            listener_.OnFile({source}, {GetFileName(source)});
        }
    }
    return WalkLinks();
}

bool SourceWalk::WalkLinks() {
    while (!links_.empty()) {
        const Link link = std::move(links_.front());
        links_.pop_front();
        // Known by what it was when it was found: a move may have emptied its folder and removed it since.
        if (visited_.contains(link.leadsTo))
            listener_.OnNews(link.path, FolderNews::VisitedOnce);
        else if (!WalkFolder(link.path, Way::Linked, 0))
            return false;
    }
    return true;
}

std::optional<SourceWalk::Identity> SourceWalk::IdentityOf(const std::string& folder) {
    const auto status = files::GetStatus(folder);
    return status ? std::optional(Identity{status->volume, status->identity}) : std::nullopt;
}

bool SourceWalk::Visit(const std::string& folder, Way way) {
    const auto identity = IdentityOf(folder);
    FolderNews news = FolderNews::Followed;
    // The sources themselves were compared with the data folder before; a link can lead into its inside.
    if (!identity)
        news = FolderNews::Unreadable;
    else if (identity == rootFolder_ ||
             (way == Way::Linked && (files::LiesIn(folder, root_) || files::LiesIn(root_, folder))))
        news = FolderNews::MeetsTarget;
    else if (!visited_.insert(*identity).second)
        news = FolderNews::VisitedOnce;
    if (news != FolderNews::Followed || way == Way::Linked) listener_.OnNews(folder, news);
    return news == FolderNews::Followed;
}

bool SourceWalk::WalkFolder(const std::string& folder, Way way, int depth) {
    if (depth >= kDeepestFolder) {
        listener_.OnNews(folder, FolderNews::Unreadable);
        return true;
    }
    // What lies below a link is behind it too, but no link itself: it is asked only whether it is new.
    if (!Visit(folder, depth == 0 ? way : Way::Direct)) return true;
    files::FileResult listing = files::FileResult::Done;
    const std::vector<files::FolderEntry> entries = files::ListFolder(folder, &listing);
    if (listing != files::FileResult::Done) {
        listener_.OnNews(folder, FolderNews::Unreadable);
        return true;
    }
    std::vector<std::string> names;
    for (const files::FolderEntry& entry : entries)
        if (!entry.isFolder) names.push_back(entry.name);
    for (const files::FolderEntry& entry : entries) {
        if (stop_.IsStopped()) return false;
        const std::string path = files::Join(folder, entry.name);
        if (!entry.isFolder)
            listener_.OnFile({path, way == Way::Linked}, names);
        else if (IsJunkName(entry.name))
            listener_.OnNews(path, FolderNews::Junk);
        else if (entry.isLink)
            links_.push_back({path, IdentityOf(path).value_or(Identity{})});
        else if (!WalkFolder(path, way, depth + 1))
            return false;
    }
    if (way == Way::Direct) listener_.OnLeft(folder);
    return true;
}

}  // namespace kalmora
