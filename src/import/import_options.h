// What an import is asked to do, and what it has done.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/work_context.h"
#include "import/import_names.h"
#include "import/import_result.h"

namespace kalmora {

// Who gets each file of an import when it is done with, with any result.
class ArrivalListener {
public:
    virtual ~ArrivalListener() = default;
    virtual void OnFile(const ImportedFile& file) = 0;  // on the importing thread
};

// Takes them and does nothing.
ArrivalListener& NoArrivals();

struct ImportOptions {
    enum class Source { Stays, Goes, GetsShortcut };

    std::vector<std::string> sources;  // absolute: folders with all that lies below them, and single files
    std::string root;                  // the data folder
    Source source = Source::Stays;
    Naming naming = Naming::Keep;
    SameBy sameBy = SameBy::DateOrSize;  // of names that are kept
    bool addFolderName = false;          // the name of the folder that it lay in goes into a photo's comment,
    bool addComment = false;             // and so do these words, in front of it
    std::string comment;
    int dayEnd = 24;  // hours; see ApplyDayEnd
    // Whether the index files of all that has come in are brought up to date at the end, or left to an
    // update.
    enum class Index { LeftToUpdate, UpToDate };
    Index index = Index::LeftToUpdate;
    // A rehearsal touches nothing and reports of each file what would become of it.
    enum class Run { ForReal, Rehearsal };
    Run run = Run::ForReal;
    // Ends it at the next file, or within a large one, which then stays where it is; what has come in by then
    // is safe. And who is shown how far it is.
    WorkContext context = {};
    ArrivalListener* arrivals = &NoArrivals();  // never null; outlives the import
};

enum class ImportEnd {
    Finished,
    Unreadable,   // a source that is a folder cannot be listed
    NoSource,     // a source is an empty name or does not exist, or there is none; nothing was touched
    MeetsTarget,  // a source holds the data folder or lies in it, or a link in it does; nothing was touched
    NoSpace,      // it would not fit; nothing was touched
    Interrupted
};

struct ImportSummary {
    ImportEnd end = ImportEnd::Finished;
    std::string refused;                 // of Unreadable, NoSource and MeetsTarget: what it is about
    int total = 0, done = 0;             // files; also in State().run.ImportTotal and ImportDone
    std::map<ImportResult, int> counts;  // by result
    int taken = 0, passedOver = 0;       // files that have arrived; files and folders that need not
    int differing = 0;                   // files that count as the same as one of their day, and are not
    int failures = 0;                    // files and folders whose result is one, and words not written
    std::uint64_t bytes = 0;             // of what was taken
    int wordsPending = 0;                // photos of former imports that cannot be given their words yet
    bool isIndexed = true;               // false when an index file could not be written at the end
    std::uint64_t neededBytes = 0, freeBytes = 0;  // of NoSpace
    std::set<std::pair<int, int>> months;          // year and month of all that has arrived
};

}  // namespace kalmora
