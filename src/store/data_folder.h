// The data folder: one folder a day in a tree of years and months, under one root or under two.
//
//   <root>/2008/200811/2008_1113/        numbers in decimal, padded with zeros
//
// The folder of a file is its date. Paths are UTF-8 with the platform's separators.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/dates.h"

namespace kalmora {

// They chain downward: without a day (0 or less) the month's folder comes back, without a month the year's.
std::string MakeYearFolderPath(std::string_view root, int year);
std::string MakeMonthFolderPath(std::string_view root, int year, int month);
std::string MakeDayFolderPath(std::string_view root, int year, int month, int day);

// The date of a path below DataDirectory or OtherDirectory; the roots are compared case-sensitively and
// either separator is understood. The year is the one in the day folder's name, whatever the year folder is
// called. A path that ends above the day folder gives what stands in it: the missing month or day is 0. Empty
// when the path is in neither root or no number follows. Any thread.
std::optional<CalendarDate> ParsePathDate(std::string_view path);

// The root in use: DataDirectory. With AllowMultiDataDirectory the first of DataDirectories that stands now
// (so the first drive that is plugged in wins), or the first of all: nothing is made in its place. With an
// empty list DataDirectory becomes "files" in the program folder, made and listed when it is missing. Any
// thread; looks at the disk.
std::string CurrentDataRoot();

// Copies of the two roots, safe against a CurrentDataRoot on another thread. The main one is RunDataDirectory
// while that is set (the command line's choice for this run, never saved). OtherRoot is empty unless
// UseOtherFolder is set and the folder stands.
std::string MainRoot();
std::string OtherRoot();
// Sets DataDirectory alone.
void SetMainRoot(const std::string& root);

// Empties DataDirectories, at the program's end.
void ClearDataFolders();

// Makes every missing folder of the path. False for an empty path, when a file stands in the way, or when a
// folder cannot be made; the folders made until then stay. Any thread; two callers may make the same path.
bool MakeDirectories(std::string_view path);

}  // namespace kalmora
