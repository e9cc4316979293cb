// Arithmetic on path names; only PhysicalPath looks at the disk. Any thread.
#pragma once

#include <string>

namespace kalmora {

// What stands before the last separator; "." when there is none, "/" for what lies in the root.
std::string FolderOfPath(const std::string& path);
// What stands behind the last separator.
std::string NameOfPath(const std::string& path);
// Below the current folder when it is relative.
std::string AbsolutePathOf(const std::string& path);
// Takes out ".", "..", and doubled separators. ".." at the root stays at the root.
std::string NormalizePath(const std::string& path);
// Absolute, with the links among its folders followed; the last name is left as it is. Where the folder does
// not stand, the normalized absolute path.
std::string PhysicalPath(const std::string& path);
// The way from a folder to a path, both absolute: "../2008_1114/a.jpg". Empty when it is the folder itself.
std::string RelativePath(const std::string& folder, const std::string& path);

}  // namespace kalmora
