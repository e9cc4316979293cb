// Replacing the content of files: written beside, flushed, renamed over the old one.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/file_errors.h"
#include "platform/posix/scratch_names.h"
#include "platform/posix/write_all.h"
#include "platform/transfer.h"

namespace kalmora::files {

namespace {

// The file that a link names, so that replacing the content does not replace the link.
std::string WithLinkFollowed(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return path;
    char* resolved = realpath(path.c_str(), nullptr);
    if (!resolved) return path;
    std::string target = resolved;
    std::free(resolved);
    return target;
}

// A new file that is going to replace another one. What is not finished is removed again.
class ReplacingFile {
public:
    explicit ReplacingFile(std::string target) : target_(std::move(target)) {}
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;
    ~ReplacingFile() {
        file_.Close();
        if (!made_.empty()) unlink(made_.c_str());
    }

    bool Write(std::string_view content) {
        struct stat old {};
        const bool hadOld = lstat(target_.c_str(), &old) == 0 && !S_ISLNK(old.st_mode);
        if (hadOld && !S_ISREG(old.st_mode)) return Fail(FileResult::Failed);
        // Renaming would go past the protection of the file itself.
        if (hadOld && (old.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return Fail(FileResult::Denied);
        std::string made;
        file_ = MakeScratchFile(FolderOfPath(target_), 0666, made);
        if (!file_) return FailWithError();
        made_ = std::move(made);
        if (!WriteAll(file_.Get(), content)) return FailWithError();
        if (hadOld) {
            if (old.st_uid != geteuid() || old.st_gid != getegid()) {
                // Only a privileged program may give a file away; any other keeps it for its own user.
                if (fchown(file_.Get(), old.st_uid, old.st_gid) != 0) errno = 0;
            }
            if (fchmod(file_.Get(), old.st_mode & 07777) != 0) return FailWithError();
        }
        return true;
    }
    bool Flush() { return IsGood() && (fsync(file_.Get()) == 0 || FailWithError()); }
    // Flushes all that its whole file system has in hand. False when that system cannot do so.
    bool FlushFileSystem() { return syncfs(file_.Get()) == 0; }
    bool Replace() {
        if (!IsGood()) return false;
        if (!file_.Close() || rename(made_.c_str(), target_.c_str()) != 0) return FailWithError();
        made_.clear();
        return true;
    }

    bool IsGood() const { return result_ == FileResult::Done; }
    FileResult Result() const { return result_; }
    const std::string& Target() const { return target_; }
    // Which file system the new file is on.
    dev_t Volume() const {
        struct stat status {};
        return fstat(file_.Get(), &status) == 0 ? status.st_dev : dev_t{};
    }

private:
    bool Fail(FileResult result) {
        result_ = result;
        return false;
    }
    bool FailWithError() { return Fail(ResultOfError(errno == 0 ? EIO : errno)); }

    std::string target_, made_;
    Descriptor file_;
    FileResult result_ = FileResult::Done;
};

// One by one where they are few: flushing a file system also waits for what other programs have written.
void FlushTogether(std::vector<std::unique_ptr<ReplacingFile>>& files) {
    constexpr std::size_t kFew = 2;
    const bool few = files.size() <= kFew;
    std::vector<dev_t> flushed;
    for (const auto& file : files) {
        if (!file->IsGood()) continue;
        const dev_t volume = file->Volume();
        if (std::find(flushed.begin(), flushed.end(), volume) != flushed.end()) continue;
        if (!few && file->FlushFileSystem())
            flushed.push_back(volume);
        else
            file->Flush();
    }
}

}  // namespace

FileResult WriteWholeFile(const std::string& path, std::string_view content) {
    ReplacingFile file(WithLinkFollowed(path));
    if (file.Write(content) && file.Flush() && file.Replace()) {
        // Not every file system can; the content is safe already.
        const std::string folder = FolderOfPath(file.Target());
        FlushFolders({&folder, 1});
    }
    return file.Result();
}

std::vector<FileResult> WriteWholeFiles(std::span<const NewContent> contents) {
    std::vector<std::unique_ptr<ReplacingFile>> files;
    files.reserve(contents.size());
    for (const NewContent& content : contents) {
        files.push_back(std::make_unique<ReplacingFile>(content.path));
        files.back()->Write(content.content);
    }
    FlushTogether(files);
    std::vector<FileResult> results;
    results.reserve(files.size());
    for (const auto& file : files) {
        file->Replace();
        results.push_back(file->Result());
    }
    return results;
}

}  // namespace kalmora::files
