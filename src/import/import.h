// Import: files come into the calendar, each into the folder of its day.
//
// In two ways: folders with all that lies below them (a camera card) and files that were named or dropped as
// a whole, and single files that were dropped on a day in the window. A file's day is that of its shooting
// date or else of its file, and for a user who stays up late the hours after midnight belong to the day
// before.
//
// However an import ends, by a kill too, no file is lost: started again it finds what is there already, gives
// it the words that it lacks and its place in the index, and continues behind it.
#pragma once

#include <optional>
#include <string>

#include "base/transfer_listener.h"
#include "import/import_options.h"
#include "state/period.h"

namespace kalmora {

// By the settings, and by what was typed into the import dialog. GUI thread.
ImportOptions ImportOptionsOfSettings();

// Imports the sources: looks at them, counts, looks whether there is room, then takes file by file. Emptied
// folders go. What lies behind a link to a folder is copied and stays in any case. Any thread; one import at
// a time.
ImportSummary RunImport(const ImportOptions& options);

// ---- one file, for the drop on the window. By the settings; they give the new path, or nothing when the
// file is not taken (it is there already, cannot be read, or cannot be written, or the listener, which may be
// null, has ended it). Any thread.
std::optional<std::string> CopyToDay(const std::string& source, const std::string& root, int year, int month,
                                     int day, TransferListener* listener = nullptr);
std::optional<std::string> MoveToDay(const std::string& source, const std::string& root, int year, int month,
                                     int day, TransferListener* listener = nullptr);
// Copies a picture as a background: into the month's folder from the month view, into the day's from the
// day view, with "back_" in front of its name. Nothing for any other view. The source stays.
std::optional<std::string> SetBackgroundFile(const std::string& source, const std::string& root, Level scope,
                                             int year, int month, int day);

}  // namespace kalmora
