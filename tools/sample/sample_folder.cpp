#include "sample_folder.h"

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

}  // namespace

SampleFolder::SampleFolder(const std::string& path) {
    std::error_code error;
    root_ = fs::absolute(path, error).lexically_normal();
    // Without the separator at its end.
    if (!root_.has_filename() && root_.has_relative_path()) root_ = root_.parent_path();
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
        std::string head, madeFor;
        std::getline(marker, head);
        std::getline(marker, madeFor);
        if (head != markerHead) return State::Foreign;
        std::vector<std::string> earlier;
        for (std::string line; std::getline(marker, line);) earlier.push_back(line);
        if (!earlier.empty() && earlier.back() == completeLine && madeFor == month) return State::Current;
        ClearEarlier(earlier);
    } else if (fs::directory_iterator(root_, error) != fs::directory_iterator() || error) {
        if (!error) return State::Foreign;
        Fail("cannot read " + root_.string() + ": " + error.message());
        return State::Unusable;
    }
    fs::remove(root_ / markerName, error);
    return Note(std::string(markerHead) + "\n" + month_ + "\n") ? State::Empty : State::Unusable;
}

// Removes what an earlier run made. The day indexes beside it are caches of what is gone and go too; folders
// are removed when nothing is left in them.
void SampleFolder::ClearEarlier(const std::vector<std::string>& files) {
    std::error_code error;
    std::set<fs::path> folders;
    for (const std::string& file : files) {
        const fs::path relative = fs::path(file).lexically_normal();
        // Not a line that this program wrote.
        if (relative.is_absolute() || relative.empty() || *relative.begin() == "..") continue;
        fs::remove(root_ / relative, error);
        for (fs::path folder = relative.parent_path(); !folder.empty(); folder = folder.parent_path()) {
            folders.insert(folder);
        }
    }
    // Deeper folders come after their parents, so the walk goes backwards.
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
        fs::remove(root_ / *folder / "$calendar.cidx", error);
        if (fs::is_empty(root_ / *folder, error) && !error) fs::remove(root_ / *folder, error);
    }
}

void SampleFolder::Write(const std::string& relative, const std::vector<std::uint8_t>& bytes,
                         const Stamp& time) {
    if (failed_) return;
    const fs::path path = root_ / relative;
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error) return Fail("cannot make " + path.parent_path().string() + ": " + error.message());
    // Noted first: a run that is cut short here must be able to find the file again.
    if (!Note(relative + "\n")) return;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file.fail()) return Fail("cannot write " + path.string());
    SetTimes(relative, time);
}

void SampleFolder::SetTimes(const std::string& relative, const Stamp& stamp) const {
    std::tm local{};
    local.tm_year = stamp.year - 1900;
    local.tm_mon = stamp.month - 1;
    local.tm_mday = stamp.day;
    local.tm_hour = stamp.hour;
    local.tm_min = stamp.minute;
    local.tm_sec = stamp.second;
    local.tm_isdst = -1;
    const auto time = std::chrono::system_clock::from_time_t(std::mktime(&local));
    std::error_code error;
    fs::last_write_time(root_ / relative, std::chrono::file_clock::from_sys(time), error);
}

bool SampleFolder::Note(const std::string& lines) {
    bool written = false;
    {
        const std::lock_guard lock(mutex_);
        std::ofstream marker(root_ / markerName, std::ios::app);
        marker << lines;
        marker.close();
        written = !marker.fail();
    }
    if (!written) Fail("cannot write " + Absolute(markerName));
    return written;
}

bool SampleFolder::Finish() { return Note(std::string(completeLine) + "\n"); }

// Keeps the first message, with the reason that the system gives for it.
void SampleFolder::Fail(const std::string& message) {
    const std::string reason = errno != 0 ? std::string(": ") + std::strerror(errno) : "";
    const std::lock_guard lock(mutex_);
    if (failed_) return;
    error_ = message.find(": ") == std::string::npos ? message + reason : message;
    failed_ = true;
}

std::string SampleFolder::Error() const {
    const std::lock_guard lock(mutex_);
    return error_;
}

}  // namespace sample
