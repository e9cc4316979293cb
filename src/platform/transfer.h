// Taking files in: copies that appear whole or not at all, names that replace nothing, and the room for them.
//
// No object is used by two threads at once. Failure is a value; nothing throws.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/transfer_listener.h"
#include "platform/files.h"

namespace kalmora::files {

// Bytes that can still be written where the path lies or, when it does not exist yet, will lie. Empty when
// the system does not say.
std::optional<std::uint64_t> FreeSpace(const std::string& path);

// A look at what is at the path itself: a link is not followed.
bool IsLink(const std::string& path);

// True when the path names the folder or something below it, over any links, spellings and mounts:
// the folders themselves are compared, not their names. For a path that does not exist yet, the folder where
// it will lie decides. False when `folder` does not exist.
bool LiesIn(const std::string& path, const std::string& folder);

// Gives a file another name inside its volume, at once and for all who look. Exists when something is at
// `to`: nothing is ever replaced. Failed when `to` lies on another volume.
FileResult RenameNew(const std::string& from, const std::string& to);

// Removes a folder in which nothing is left. Failed when something is.
FileResult RemoveEmptyFolder(const std::string& path);

// All names that were given and taken away in the folders are on the disk when it returns Done. Where they
// are many, by one wait for the volume. Done, too, where the file system flushes no folders.
FileResult FlushFolders(std::span<const std::string> folders);

// True when both can be read and hold the same bytes. What of `b` has been flushed is read from the disk
// where the system lets that be asked for.
bool HaveSameBytes(const std::string& a, const std::string& b);

// A copy that is being written. It has a scratch name (abandoned_files.h) in the folder where it is going to
// appear; one that never appears goes with the object.
class NewCopy {
public:
    NewCopy() = default;
    ~NewCopy();
    NewCopy(NewCopy&& other) noexcept;
    NewCopy& operator=(NewCopy&& other) noexcept;

    // Copies a regular file (a link is followed) with its times and its rights, to which that of its owner to
    // write it is added, in the kernel and by sharing its
    // blocks where the file system can. Nothing is flushed yet. Failed also when the source is no regular
    // file or did not give as many bytes as it has, and when the listener, which may be null, has ended it.
    FileResult Make(const std::string& from, const std::string& folder, TransferListener* listener = nullptr);

    // What the source was when it was opened to be copied.
    const FileStatus& Source() const { return source_; }
    // True while the source's path names the file that was copied and it has not been written since.
    bool IsSourceUntouched() const;
    // Reads both again, the copy as HaveSameBytes does, and compares every byte. False also when the
    // listener, which may be null, has ended it.
    bool HoldsSameBytes(TransferListener* listener = nullptr) const;

    enum class Existing { Keep, Replace };
    // Gives the copy its name. With Keep: Exists when something is there, and the copy can be given
    // another one.
    FileResult Appear(const std::string& path, Existing existing = Existing::Keep);

private:
    friend std::vector<FileResult> FlushCopies(std::span<NewCopy* const> copies);
    void Drop();

    std::string from_, scratch_;
    FileStatus source_;
    std::intptr_t handle_ = -1;
};

// Content, rights and times of all copies are on the disk: one wait for the volume instead of one a file. In
// their order.
std::vector<FileResult> FlushCopies(std::span<NewCopy* const> copies);

}  // namespace kalmora::files
