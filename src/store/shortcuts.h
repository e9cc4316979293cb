// Shortcut files (.lnk): made so that they still lead to their target when a data folder is moved, and
// followed. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kalmora {

// Writes linkPath (.lnk) pointing at targetPath; a relative path is stored beside the absolute one. False
// when the file cannot be written.
bool CreateShortcut(const std::string& linkPath, const std::string& targetPath);
// The target: the relative path when something stands there, else the absolute path as stored (which need not
// stand). Empty when the file is no shortcut or stores no path.
std::optional<std::string> ResolveShortcut(const std::string& linkPath);

// The same on bytes: `folder` is the folder that the shortcut lies in.
std::optional<std::string> ReadShortcut(std::string_view bytes, const std::string& folder);
std::string MakeShortcut(const std::string& targetPath, const std::string& linkFolder);

}  // namespace kalmora
