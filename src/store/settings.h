// kalmora.ini: every user setting, one "Key=Value" a line; read into State() before other threads run,
// written at the end of the program.
//
// The file is code page 932 text with LF line ends; characters that the code page lacks are written as
// "&#xHEX;". "[Main]" and the like are for the human reader only: a key is found wherever it stands, and its
// case does not matter. A line is at most 255 bytes long, and what stands behind is a line of its own.
#pragma once

#include <string>
#include <string_view>

namespace kalmora {

// Gives every setting its default. ProgramFolder must be set: most paths lie below it. The target date is
// today; outside programs and the camera card are looked for on the disk.
void ResetSettingsToDefaults();

// Defaults, then what the file says, then the repairs. False when the file cannot be opened, which is the
// first run: the default data folder is then made and listed, and nothing is repaired. Nothing in a file can
// make it fail: what is not understood leaves the default standing.
bool LoadSettings(const std::string& path);

// The repairs alone: values out of range get a usable one (not always the default), DataDirectory becomes the
// root in use, and DayEndTimeForScrap is brought above 12 by adding a day, below 48 by taking one off.
void RepairSettings();

// Replaces the file; false leaves the old one as it was. The settings that only the user writes by hand
// (ShellExecute, TwitterURL and the like) are not written, and so are lost from the file.
bool SaveSettings(const std::string& path);

// The same on bytes: what a file of this content says, onto State() as it stands, without defaults and
// repairs; and the content that SaveSettings writes.
void ReadSettingsText(std::string_view bytes);
std::string MakeSettingsText();

}  // namespace kalmora
