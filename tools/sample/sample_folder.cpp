#include "sample_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fstream>
#include <set>

namespace sample {

namespace fs = std::filesystem;

namespace {

constexpr const char* markerName = ".kalmora-sample";
constexpr const char* markerHead = "kalmora-sample 1";
constexpr const char* completeLine = "complete";  // the last line, once all is written

// Empty, or the reason of the system.
std::string WriteFile(const fs::path& path, int mode, const void* bytes, std::size_t size) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | mode, 0644);
    if (file < 0) {
        return std::strerror(errno);
    }
    const char* at = static_cast<const char*>(bytes);
    while (size > 0) {
        const ssize_t done = write(file, at, size);
        if (done < 0 && errno == EINTR) {
            continue;
        }
        if (done < 0) {
            const std::string reason = std::strerror(errno);
            close(file);
            return reason;
        }
        at += done;
        size -= static_cast<std::size_t>(done);
    }
    return close(file) == 0 ? "" : std::strerror(errno);
}

void SetTimes(const fs::path& path, const Stamp& stamp) {
    std::tm local{};
    local.tm_year = stamp.year - 1900;
    local.tm_mon = stamp.month - 1;
    local.tm_mday = stamp.day;
    local.tm_hour = stamp.hour;
    local.tm_min = stamp.minute;
    local.tm_sec = stamp.second;
    local.tm_isdst = -1;
    timespec times[2] = {};
    times[0].tv_sec = times[1].tv_sec = std::mktime(&local);
    utimensat(AT_FDCWD, path.c_str(), times, 0);
}

}  // namespace

SampleFolder::SampleFolder(const std::string& path) {
    std::error_code error;
    root_ = fs::absolute(path, error).lexically_normal();
    if (!root_.has_filename() && root_.has_relative_path()) {
        root_ = root_.parent_path();  // without the separator at its end
    }
}

SampleFolder::State SampleFolder::Prepare(const std::string& month) {
    month_ = month;
    std::error_code error;
    fs::create_directories(root_, error);
    if (error) {
        Fail("cannot make " + root_.string() + ": " + error.message());
        return State::Unusable;
    }
    if (std::ifstream marker(root_ / markerName); marker) {
        std::string head;
        std::string madeFor;
        std::getline(marker, head);
        std::getline(marker, madeFor);
        if (head != markerHead) {
            return State::Foreign;
        }
        std::vector<std::string> earlier;
        bool complete = false;
        for (std::string line; std::getline(marker, line);) {
            complete = line == completeLine;
            earlier.push_back(line);
        }
        if (complete && madeFor == month) {
            return State::Current;
        }
        ClearEarlier(earlier);
    } else if (fs::directory_iterator(root_, error) != fs::directory_iterator() || error) {
        if (error) {
            Fail("cannot read " + root_.string() + ": " + error.message());
            return State::Unusable;
        }
        return State::Foreign;
    }
    fs::remove(root_ / markerName, error);
    return Note(std::string(markerHead) + "\n" + month_ + "\n") ? State::Empty : State::Unusable;
}

// Removes what an earlier run made. The day indexes beside it are caches of what is gone and go too;
// folders are removed when nothing is left in them.
void SampleFolder::ClearEarlier(const std::vector<std::string>& files) {
    std::error_code error;
    std::set<fs::path> folders;
    for (const std::string& file : files) {
        const fs::path relative = fs::path(file).lexically_normal();
        if (relative.is_absolute() || relative.empty() || *relative.begin() == "..") {
            continue;  // not a line that this program wrote
        }
        fs::remove(root_ / relative, error);
        for (fs::path folder = relative.parent_path(); !folder.empty(); folder = folder.parent_path()) {
            folders.insert(folder);
        }
    }
    // Deeper folders stand behind their parents, so the walk goes backwards.
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
        fs::remove(root_ / *folder / "$calendar.cidx", error);
        if (fs::is_empty(root_ / *folder, error) && !error) {
            fs::remove(root_ / *folder, error);
        }
    }
}

void SampleFolder::Write(const std::string& relative, const std::vector<std::uint8_t>& bytes,
                         const Stamp& time) {
    if (failed_) {
        return;
    }
    const fs::path path = root_ / relative;
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error) {
        Fail("cannot make " + path.parent_path().string() + ": " + error.message());
        return;
    }
    // Noted first: a run that is cut short here must be able to find the file again.
    if (!Note(relative + "\n")) {
        return;
    }
    if (const std::string reason = WriteFile(path, O_TRUNC, bytes.data(), bytes.size()); !reason.empty()) {
        Fail("cannot write " + path.string() + ": " + reason);
        return;
    }
    SetTimes(path, time);
}

bool SampleFolder::Note(const std::string& lines) {
    const fs::path path = root_ / markerName;
    std::string reason;
    {
        const std::lock_guard lock(mutex_);
        reason = WriteFile(path, O_APPEND, lines.data(), lines.size());
    }
    if (!reason.empty()) {
        Fail("cannot write " + path.string() + ": " + reason);
    }
    return reason.empty();
}

bool SampleFolder::Finish() { return Note(std::string(completeLine) + "\n"); }

void SampleFolder::Fail(const std::string& message) {
    const std::lock_guard lock(mutex_);
    if (!failed_) {
        error_ = message;
        failed_ = true;
    }
}

std::string SampleFolder::Error() const {
    const std::lock_guard lock(mutex_);
    return error_;
}

std::string SampleFolder::Absolute(const std::string& relative) const { return (root_ / relative).string(); }

}  // namespace sample
