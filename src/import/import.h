// Import: files come into the calendar, each into the folder of its day.
//
// By two roads: folders with all that lies below them (a camera card) and files that were named or dropped as
// a whole, and single files that were dropped on a day in the window. A file's day is that of its shooting
// date or else of its file, and for somebody who stays up late the small hours belong to the day before. What
// is told by whom: progress by OnProgress (index_progress.h), each file by ImportOptions::onFile. Ctrl+C on
// the command line ends an import at the next file (index_stop.h).
//
// However an import ends, by a kill too, no file is lost: started again it finds what is there already, gives
// it the words that it lacks and its place in the index, and goes on behind it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "import/import_names.h"
#include "import/import_result.h"
#include "state/period.h"

namespace kalmora {

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
    // A rehearsal touches nothing and tells of each file what would become of it.
    enum class Run { ForReal, Rehearsal };
    Run run = Run::ForReal;
    // What became of a file; called on the importing thread.
    std::function<void(const ImportedFile& file)> onFile = {};
};

// By the settings, and by what was typed into the import dialog. GUI thread.
ImportOptions ImportOptionsOfSettings();

enum class ImportEnd {
    Finished,
    Unreadable,   // a source that is a folder cannot be listed
    NoSource,     // a source is an empty name or does not stand, or there is none; nothing was touched
    MeetsTarget,  // a source holds the data folder or lies in it, or a link in it does; nothing was touched
    NoSpace,      // it would not fit; nothing was touched
    Interrupted
};

struct ImportSummary {
    ImportEnd end = ImportEnd::Finished;
    std::string refused;                 // of Unreadable, NoSource and MeetsTarget: what it is about
    int total = 0, done = 0;             // files; also in State().run.ImportTotal and ImportDone
    std::map<ImportResult, int> counts;  // by what became of them
    int taken = 0, passedOver = 0;       // files that have arrived; files and folders that need not
    int differing = 0;                   // files that count as the same as one of their day, and are not
    int failures = 0;                    // files and folders whose result is one, and words not written
    std::uint64_t bytes = 0;             // of what was taken
    bool isIndexed = true;               // false when an index file could not be written at the end
    std::uint64_t neededBytes = 0, freeBytes = 0;  // of NoSpace
    std::set<std::pair<int, int>> months;          // year and month of all that has arrived
};

// Imports the sources: looks at them, counts, looks whether there is room, then takes file by file. Emptied
// folders go. What lies behind a link to a folder is copied and stays in any case. Any thread; one import at
// a time.
ImportSummary RunImport(const ImportOptions& options);

// ---- one file, for the drop on the window. By the settings; they give the new path, or nothing when the
// file is not taken (it is there already, cannot be read, or cannot be written). Any thread.
std::optional<std::string> CopyToDay(const std::string& source, const std::string& root, int year, int month,
                                     int day);
std::optional<std::string> MoveToDay(const std::string& source, const std::string& root, int year, int month,
                                     int day);
// Copies a picture as a background: into the month's folder from the month view, into the day's from the
// day view, with "back_" in front of its name. Nothing for any other view. The source stays.
std::optional<std::string> SetBackgroundFile(const std::string& source, const std::string& root, Level scope,
                                             int year, int month, int day);

}  // namespace kalmora
