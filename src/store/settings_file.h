// kalmora.ini: every user setting, one "Key=Value" a line; read into State() before other threads run,
// written at the end of the program.
//
// The file is text as own_text.h has it, with LF line ends. "[Main]" and the like are for the human reader
// only: a key is found wherever it stands, and its case does not matter. A line is as long as it is: a path
// in escapes can have thousands of bytes.
#pragma once

#include <string>
#include <string_view>

#include "store/own_text.h"

namespace kalmora {

// Gives every setting its default. ProgramFolder must be set: most paths lie below it. The target date is
// today; outside programs and the camera card are looked for on the disk.
void ResetSettingsToDefaults();

// Defaults, then what the file says, then the repairs. A missing file is the first run: the default data
// folder is then listed and, unless RunDataDirectory stands in for it, made; nothing is repaired. With a file
// that cannot be read only the defaults are assigned, and nothing is made. Nothing in a file can make it
// fail: what is not understood leaves the default.
FileRead LoadSettings(const std::string& path);

// The repairs alone: values out of range get a usable one (not always the default), DataDirectory becomes the
// root in use, and DayEndTimeForScrap is brought above 12 by adding a day, below 48 by taking one off.
void RepairSettings();

// Replaces the file; false leaves the old one as it was, which is so for one that cannot be read. The
// settings that only the user writes by hand
// (ShellExecute, TwitterURL and the like) are not written, and so are lost from the file.
bool SaveSettings(const std::string& path);

// The same on bytes: what a file of this content says, onto State() as it stands, without defaults and
// repairs; and the content that SaveSettings writes.
void ReadSettingsText(std::string_view bytes);
std::string MakeSettingsText();

}  // namespace kalmora
