// A file that is changed in place: opened for reading and writing, read, written and flushed at any
// place, so that it stays the same file (identity, links, birth time). And a lock between programs.
//
// No function is called by two threads for the same object. Failure is a value; nothing throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace kalmora::files {

class EditFile {
public:
    enum class Lock { Taken, HeldByAnother };

    EditFile() = default;
    ~EditFile();
    EditFile(EditFile&& other) noexcept;
    EditFile& operator=(EditFile&& other) noexcept;

    // An existing regular file; links are followed. Denied for one whose rights say that it is not to be
    // written, also when the system would let this user write it.
    FileResult Open(const std::string& path);
    // Makes the file when it is missing.
    FileResult OpenOrMake(const std::string& path);
    bool IsOpen() const { return handle_ >= 0; }
    void Close();

    // Keeps other programs that ask for a lock on the file away until Close. HeldByAnother when one of them
    // has it, or a part of it, locked at this moment. A file system without locks gives Taken.
    Lock TryLock();

    std::optional<FileStatus> Status() const;
    // How many bytes were read; fewer than asked for at the end or on an error.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> into) const;
    // All of it or an error; after an error any part of it may be written.
    FileResult WriteAt(std::uint64_t offset, std::string_view bytes);
    FileResult Resize(std::uint64_t size);
    // Sets the space aside that writing up to `size` will take; the size stays. Done where the file system
    // cannot.
    FileResult Reserve(std::uint64_t size);
    // Content, size and times are on the disk when it returns Done.
    FileResult Flush();
    // Content and what is needed to read it back.
    FileResult FlushContent();
    bool SetTimes(FileTime accessed, FileTime written);

    // ---- moving the rest of the file without writing it
    // The unit in which space can be inserted; 0 where the file system cannot do it in one step that a power
    // cut leaves undone or done.
    std::size_t InsertUnit() const;
    // Puts `length` zero bytes in at `offset`, both multiples of the unit; what was there moves back.
    // False: the file is as it was.
    bool InsertSpace(std::uint64_t offset, std::uint64_t length);
    // Takes the bytes out again.
    bool RemoveSpace(std::uint64_t offset, std::uint64_t length);

private:
    friend std::vector<FileResult> FlushAll(std::span<EditFile* const> toFlush);
    std::intptr_t handle_ = -1;
};

// Flushes many files at once, which costs little more than one. In their order.
std::vector<FileResult> FlushAll(std::span<EditFile* const> toFlush);

// False only when it is known that no program has the file open for writing.
bool IsOpenForWriting(const std::string& path);

// A lock that programs and threads share by the name of a file. The file is made and stays.
class FileLock {
public:
    FileLock() = default;
    ~FileLock() { Release(); }
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;

    // Waits at most so long, and in turn: who lets go of it and asks again gets it after those who wait.
    // Denied and the like when the file cannot be made; Failed when the time ran out.
    FileResult Acquire(const std::string& path, int timeoutMs);
    bool IsHeld() const { return handle_ >= 0; }
    void Release();  // also when the program ends, however it does

private:
    std::intptr_t handle_ = -1;
};

}  // namespace kalmora::files
