#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include "stamp.h"

namespace sample {

// The folder that the life-log is made in. A marker file in it notes the month it was made for and every file
// it was given, so that a later run replaces those and leaves everything that the user has added.
class SampleFolder {
public:
    enum class State {
        Empty,     // ready to be filled
        Current,   // exists already, for the same month
        Foreign,   // has content that this program did not make
        Unusable,  // cannot be made or written; Error() says why
    };

    explicit SampleFolder(const std::string& path);

    // Looks at the folder, makes it when it is missing and clears an older sample life-log away.
    State Prepare(const std::string& month);

    // Writes one file, its folders too, and sets its times to the local moment. Any thread. After the first
    // failure nothing more is written.
    void Write(const std::string& relative, const std::vector<std::uint8_t>& bytes, const Stamp& time);
    // Notes that the life-log is complete. False when that could not be written.
    bool Finish();

    bool Failed() const { return failed_; }
    std::string Error() const;
    std::string Absolute(const std::string& relative) const { return (root_ / relative).string(); }

private:
    void ClearEarlier(const std::vector<std::string>& files);
    bool Note(const std::string& lines);
    void SetTimes(const std::string& relative, const Stamp& time) const;
    void Fail(const std::string& message);

    std::filesystem::path root_;
    std::string month_;
    std::atomic<bool> failed_ = false;
    mutable std::mutex mutex_;  // guards error_ and the end of the marker file
    std::string error_;
};

}  // namespace sample
