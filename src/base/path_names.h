// Arithmetic on path names: nothing here looks at the disk. Any thread.
#pragma once

#include <string>
#include <string_view>

#include "platform/path_separator.h"

namespace kalmora {

namespace files {

// "folder/name"; no separator is doubled. An empty folder gives the name alone.
std::string Join(std::string_view folder, std::string_view name);
// Changes each of the other platform's separators into this platform's.
std::string WithPlatformSeparators(std::string_view path);

}  // namespace files

// What stands before the last separator; "." when there is none, "/" for what lies in the root.
std::string FolderOfPath(const std::string& path);
// What stands behind the last separator.
std::string NameOfPath(const std::string& path);
// True for what lies in a folder, at whatever depth, by their names. Either platform's separator is one, as
// in paths that an index of the other platform holds.
bool IsBelow(std::string_view path, std::string_view folder);
// Takes out ".", "..", and doubled separators. ".." at the root stays at the root.
std::string NormalizePath(const std::string& path);
// The way from a folder to a path, both absolute: "../2008_1114/a.jpg". Empty when it is the folder itself.
std::string RelativePath(const std::string& folder, const std::string& path);

}  // namespace kalmora
