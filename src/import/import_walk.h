// The walk over what is to be imported: folders with all that lies below them, and single files.
//
// Each folder is visited once, whatever leads there a second time. Links to folders are followed when all
// that lies in the sources themselves has been visited. Nothing that belongs to another program or to the
// machine (the trash, the search cache of a desktop) is entered.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/stop_token.h"

namespace kalmora {

// True for files and folders that machines put on a card beside what its owner has there: the trash, caches
// of pictures and of searches, marks of a desktop.
bool IsJunkName(std::string_view name);

// True for these and for what is no photo either: index files, which belong to their folder, and
// scratch files, which belong to whoever makes them.
bool IsLeftAlone(const std::string& name);

// A file that the walk has found.
struct SourceFile {
    std::string path;
    bool isBehindLink = false;  // its folder belongs elsewhere, and a link led there
};

// What there is to report of a folder.
enum class FolderNews {
    Followed,     // a link to it, and what lies there comes now
    VisitedOnce,  // a link to it or another name of it, and it has been visited
    Junk,         // left alone for its name
    Unreadable,   // it cannot be listed, or lies too deep
    MeetsTarget   // it holds the data folder, or lies in it; left alone
};

// Called on the walking thread, one call at a time.
class WalkListener {
public:
    virtual ~WalkListener() = default;
    // `siblings`: the names of all files of its folder, in order; of a file that was named itself only its
    // own.
    virtual void OnFile(const SourceFile& file, const std::vector<std::string>& siblings) = 0;
    virtual void OnNews(const std::string& folder, FolderNews news) = 0;
    // All that lies in the folder has been visited. Not called for folders behind links.
    virtual void OnLeft(const std::string& folder) = 0;
};

// One thread; one walk an object.
class SourceWalk {
public:
    // `root` is the data folder, in which nothing is visited. A stop ends the walk at the next file.
    SourceWalk(WalkListener& listener, std::string root, StopToken stop = {});

    // Visits the sources, absolute paths without a separator at the end. False when stopped.
    bool Walk(const std::vector<std::string>& sources);

private:
    using Identity = std::pair<std::uint64_t, std::uint64_t>;  // volume and number of a folder
    enum class Way { Direct, Linked };
    bool WalkFolder(const std::string& folder, Way way, int depth);
    bool WalkLinks();
    static std::optional<Identity> IdentityOf(const std::string& folder);
    // True the first time for each folder.
    bool Visit(const std::string& folder, Way way);

    WalkListener& listener_;
    const std::string root_;
    const StopToken stop_;
    std::optional<Identity> rootFolder_;
    std::set<Identity> visited_;
    struct Link {
        std::string path;
        Identity leadsTo;
    };
    std::deque<Link> links_;  // to folders, met and not yet followed
};

}  // namespace kalmora
