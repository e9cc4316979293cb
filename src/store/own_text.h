// The program's own text files: settings, key files, extension table. How they are read and replaced without
// losing what their user wrote. Any thread.
//
// The form that these files are made in is code page 932 with "&#xHEX;" for what that lacks. An editor may
// have saved one as UTF-8: with a byte-order mark, or by what IsUtf8Text (encoding.h) says. Both are read,
// and a file keeps the one it has.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace kalmora {

enum class FileRead {
    Read,
    Missing,     // nothing of this name is there
    Unreadable,  // something is, but it cannot be read: denied, broken, a folder, a link to a disk that is
                 // away
};

struct OwnText {
    FileRead result = FileRead::Missing;
    std::string bytes;  // in code page 932 with escapes, whatever the file has
};

// At most `limit` bytes of the file.
OwnText ReadOwnText(const std::string& path, std::size_t limit);

// Replaces the file with this text, which is in code page 932 with escapes; a file in UTF-8 gets it in UTF-8.
// What is there and cannot be read is left alone (Denied).
files::FileResult ReplaceOwnText(const std::string& path, std::string_view bytes);

}  // namespace kalmora
