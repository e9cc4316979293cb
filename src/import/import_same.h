// Whether a file to be imported is in the calendar already.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/files.h"
#include "rewrite/safe_rewrite.h"

namespace kalmora {

// What makes two files of one name the same.
enum class SameBy {
    DateOrSize,  // CompareImportFiles
    Content      // every byte
};

// 0 when two files count as the same: both have a shooting date and it is the same to the second, or else
// they have the same size. 1 when a is the larger, -1 when b is. A missing file has size 0. Any thread.
int CompareImportFiles(const std::string& a, const std::string& b);

// What a file will be once it has come in: its bytes or, where there are words, also those that it has when
// the words have been added to its comment. One thread.
class IncomingContent {
public:
    IncomingContent(const std::string& source, const std::string& words);

    bool MayHaveSize(std::uint64_t size);
    // Reads both files when their sizes allow it.
    bool IsHeldBy(const std::string& existing);

private:
    const FileChange* Change();

    const std::string source_, words_;
    const std::optional<files::FileStatus> status_;
    bool isPlanned_ = false;
    std::optional<FileChange> change_;  // what the words change, once it was asked for
};

}  // namespace kalmora
