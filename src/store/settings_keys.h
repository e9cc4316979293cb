// The tables behind kalmora.ini: which key is which field, in the reader's order and in the writer's.
#pragma once

#include <span>
#include <string_view>
#include <variant>

#include "state/app_state.h"

namespace kalmora::settings {

struct TextColorField {
    TextKind kind;
    Color TextColors::*part;
};

// Where a value lives in the record; its type says how it is read and written.
using Field =
    std::variant<bool Settings::*, SharedFlag Settings::*, int Settings::*, SharedInt Settings::*,
                 std::string Settings::*, Color Settings::*, TextColorField, WindowRectValue Settings::*>;

enum class Reading {
    Value,        // as the field's type has it
    ProgramPath,  // a path relative to the program folder unless it is absolute
    PlainFolder,  // a folder as it is written, less one trailing separator
    CardFolder,   // the same, but an empty one leaves the camera card that is in now
    DataFolder,   // a path as above less one trailing separator; one of several with AllowMultiDataDirectory
    Nothing,      // takes the line and leaves the value
};

struct ReaderRow {
    // What a line begins with, case ignored. For a flag the value belongs to it, and nothing else can set it.
    std::string_view test;
    Field field;
    Reading reading = Reading::Value;
};

enum class Writing {
    Value,       // as the field's type has it
    ShortPath,   // a path below the program folder from behind that folder
    ToolPath,    // two lines, the whole path and the short one
    DataFolder,  // a short path; one line a folder with AllowMultiDataDirectory
};

struct WriterRow {
    std::string_view section;  // not empty in the first row of a section
    std::string_view key;
    Field field;
    Writing writing = Writing::Value;
};

struct FaceDefault {
    std::string Settings::*field;
    std::string_view face;
};
struct PathDefault {
    std::string Settings::*field;
    std::string_view name;  // in the program folder
};

std::span<const ReaderRow> ReaderRows();
std::span<const WriterRow> WriterRows();
std::span<const FaceDefault> FaceDefaults();
std::span<const PathDefault> PathDefaults();

}  // namespace kalmora::settings
