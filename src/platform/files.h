// Files and folders of the machine, in the program's words.
//
// Paths are UTF-8 with the platform's separator; a name that is not valid UTF-8 keeps its raw bytes and works
// in every call here. Every function may be called from any thread. Failure is a value; nothing throws.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/path_names.h"
#include "base/system_time.h"

namespace kalmora::files {

enum class FileResult { Done, NotFound, Denied, NoSpace, Exists, Failed };

struct FolderEntry {
    std::string name;       // without the folder
    bool isFolder = false;  // a link to a folder counts as a folder
    bool isLink = false;
    bool isHidden = false;  // the platform's hidden mark (a leading dot on this one)
};

struct FileTimes {
    FileTime created;  // the birth time; the last-write time where the file system knows no birth time
    FileTime accessed;
    FileTime written;
};

// What a file is by one look at it: one system call.
struct FileStatus {
    bool isFolder = false;
    bool isRegular = false;
    bool isReadOnly = false;
    std::uint64_t size = 0;
    FileTime created;
    FileTime accessed;
    FileTime written;
    std::uint64_t volume = 0;  // with `identity`, the same file under two names has the same pair
    std::uint64_t identity = 0;
};

std::optional<FileStatus> GetStatus(const std::string& path);  // follows links; empty when absent or denied
bool Exists(const std::string& path);                          // folders count
bool IsFolder(const std::string& path);

bool IsAbsolute(std::string_view path);
// Below the current folder when it is relative.
std::string AbsolutePath(const std::string& path);
// Absolute, with the links among its folders followed; the last name is left as it is. Where the folder does
// not exist, the normalized absolute path.
std::string PhysicalPath(const std::string& path);

// All entries but "." and "..", ascending by name without regard to ASCII case (ties: byte order). Empty when
// the folder cannot be read; `result` says why. One pass over the folder, no look at each file.
std::vector<FolderEntry> ListFolder(const std::string& folder, FileResult* result = nullptr);

// One level; Exists when there is one already.
FileResult MakeFolder(const std::string& path);
FileResult RemoveFile(const std::string& path);
FileResult RemoveFolderTree(const std::string& path);
// Inside one file system; replaces what is at `to`.
FileResult Rename(const std::string& from, const std::string& to);
// The kernel's copy where it has one; times are carried over; `to` must not exist. A failed copy leaves
// nothing.
FileResult CopyFile(const std::string& from, const std::string& to);

// Whole content, at most `limit` bytes (a longer file is cut there). Empty optional when it cannot be opened.
std::optional<std::string> ReadWholeFile(const std::string& path, std::size_t limit = 64u << 20);
// Replaces the content: written to a new file beside it, flushed, renamed over the old one. A failure at any
// point leaves the old file as it was.
FileResult WriteWholeFile(const std::string& path, std::string_view content);
// The same for several files with one flush for all of them, which costs little more than one: each is the
// old or the new one at any moment, and power that fails soon after may bring old ones back. A link that
// is there is not followed but replaced. How each file went.
struct NewContent {
    std::string path;
    std::string_view content;
};
std::vector<FileResult> WriteWholeFiles(std::span<const NewContent> contents);
// Adds to the end of the file, which is made when it is missing. What two callers add at once comes one
// after the other. Not flushed: for logs.
FileResult AppendToFile(const std::string& path, std::string_view content);

bool SetTimes(const std::string& path, FileTime accessed, FileTime written);
bool SetHidden(const std::string& path);  // true and nothing done where names say what is hidden
bool IsHidden(const std::string& path);

// A file opened for reading at any place. Not shared between threads.
class InputFile {
public:
    InputFile() = default;
    ~InputFile();
    InputFile(InputFile&& other) noexcept;
    InputFile& operator=(InputFile&& other) noexcept;

    bool Open(const std::string& path);  // regular files only; never blocks on a pipe
    // The same with its first bytes, in one step less: how many there were, as ReadAt counts them. What gives
    // bytes at any place is taken for a file. Empty when it cannot be opened or is none.
    std::optional<std::size_t> OpenAndRead(const std::string& path, std::span<std::uint8_t> head);
    bool IsOpen() const { return handle_ >= 0; }
    // How many bytes were read from offset on; fewer than asked for at the end, 0 past it or on an error.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> into) const;
    std::uint64_t Size() const;
    std::optional<FileStatus> Status() const;  // of the file that is open; empty when none is
    void Close();

private:
    std::intptr_t handle_ = -1;
};

// Where the program itself lies.
std::string ExecutablePath();
std::string ExecutableFolder();
// The folder against which the system understands a relative path; empty when it has gone.
std::string CurrentFolder();
// $XDG_DATA_HOME/kalmora or its default; the place of settings when the program folder cannot be written.
std::string UserDataFolder();
bool IsFolderWritable(const std::string& folder);
// An environment variable; empty when unset.
std::string Environment(const char* name);
// The path of a program found in PATH, or empty.
std::string FindProgram(const std::string& name);
// The first mounted camera card: a folder below the places where this desktop mounts media that holds a DCIM
// folder; gives the path of that DCIM folder, or empty.
std::string FindCameraCard();

// A fresh, empty folder below the system's place for temporary files.
std::string MakeTemporaryFolder();

}  // namespace kalmora::files
