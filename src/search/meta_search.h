// Holding a query against the records of a day.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "index/day_index.h"
#include "search/query.h"
#include "search/word_finder.h"

namespace kalmora {

// The records of a day that a query has found. They are pointed at and not copied; the day stays in memory
// for as long as a caller has this.
struct FoundDay {
    std::shared_ptr<const DayIndex> day;   // never null
    std::vector<std::uint32_t> positions;  // in day->entries, ascending; so by path
    const IndexEntry& Entry(std::size_t i) const { return *day->entries[positions[i]]; }
};
using FoundDays = std::vector<FoundDay>;

// A query made ready for records by the hundred thousand. Immutable; any thread.
class QueryMatcher {
public:
    explicit QueryMatcher(Query query);

    const Query& TheQuery() const { return query_; }
    bool Matches(const IndexEntry& entry) const;
    // Appends the day with the records that match, when there are any.
    void MetaSearch(const std::shared_ptr<const DayIndex>& day, FoundDays& found) const;

private:
    class Folder;
    bool PassesNumbers(const IndexEntry& entry) const;
    bool PassesWords(const IndexEntry& entry, const Folder& folder) const;
    bool PassesTests(const IndexEntry& entry) const;
    bool LiesInWindow(int hour) const;
    bool HasAllWords(const IndexEntry& entry, const Folder& folder) const;
    bool HasAnyWord(const IndexEntry& entry, const Folder& folder) const;

    Query query_;
    std::vector<WordFinder> words_;  // each once
    bool hasTests_ = false;          // of the record's numbers
};

}  // namespace kalmora
