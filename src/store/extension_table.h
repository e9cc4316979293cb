// What a file is, by its extension: the user's table extension.dat.
//
// The file is text as own_text.h has it. "[IMAGE]", "[MOVIE]", "[TEXT]", "[MUSIC]" and "[MUSIC_LIST]" open a
// section; each other line is one extension, without the dot; lines beginning with "#" and empty lines say
// nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/own_text.h"

namespace kalmora {

// The numbers are those of the table, of commands and of logs.
enum class ObjectKind : int {
    Unknown = -1,
    Text = 1,
    Image = 2,
    Music = 3,
    MusicList = 4,
    Movie = 5,
    Shortcut = 10,  // "lnk", built in: no table can change it
};

// Loads the table in place of the one in memory. A missing file is first written with the default table; when
// that fails, and when a file is there but cannot be read, the table is empty. Of a file longer than 1 MiB
// the rest is not read.
FileRead LoadExtensionTable(const std::string& path);
// Writes the table in memory, with a heading that explains it. False when the file cannot be
// written; one that cannot be read is left alone.
bool SaveExtensionTable(const std::string& path);
// The same on bytes.
void ReadExtensionTableText(std::string_view bytes);
std::string MakeExtensionTableText();
// Empties the table; for tests. In the program workers need it for as long as the process lives.
void ClearExtensionTable();

// By the extension of at most 8 bytes (counted in code page 932), case ignored; no look at the disk.
ObjectKind ClassifyFile(std::string_view path);

// The extensions of a kind in file order, as they are written in the table.
std::vector<std::string> ExtensionsOf(ObjectKind kind);

// All of these may be called from any thread.

}  // namespace kalmora
