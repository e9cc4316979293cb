// IndexBatch: index files that are written together, with one flush of the disk for all of them.
//
// Making a file safe costs milliseconds, and a year has hundreds of index files; together they cost one wait.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "index/day_index.h"

namespace kalmora {

// One thread. Finish before it goes: what was not finished is not written (and the days stay dirty).
class IndexBatch {
public:
    // Takes a dirty day whose folder stands; any other is passed over. Finishes what it has when it has much.
    void Add(std::shared_ptr<const DayIndex> day);
    // Writes all; each file is the old one or the new one at any moment. Days that were written are no longer
    // dirty. True when every file was written.
    bool Finish();

private:
    void WriteWaiting();
    struct Waiting {
        std::shared_ptr<const DayIndex> day;
        std::string content;
    };
    std::vector<Waiting> waiting_;
    std::size_t bytes_ = 0;
    bool allWritten_ = true;
};

}  // namespace kalmora
