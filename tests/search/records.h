// What the search's tests share: records made by hand, and what a query finds among them.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "search/meta_search.h"
#include "state/app_state.h"

namespace kalmora {

inline constexpr char kDayFolder[] = "/life/2008/200811/2008_1113";

// A record of the day; the tests fill in what they are about.
struct Record {
    std::string name = "a.jpg";
    std::string comment = {};
    int hour = 12, minute = 0;
    IndexEntry values = {};
};

class DayOfRecords {
public:
    DayOfRecords& Add(Record record) {
        auto entry = std::make_shared<IndexEntry>(record.values);
        entry->path = record.name.empty() ? std::string() : kDayFolder + ("/" + record.name);
        entry->comment = std::move(record.comment);
        entry->date = {2008,
                       11,
                       4,
                       13,
                       static_cast<std::uint16_t>(record.hour),
                       static_cast<std::uint16_t>(record.minute),
                       0,
                       0};
        entries_.push_back(std::move(entry));
        return *this;
    }
    std::shared_ptr<const DayIndex> Make() const {
        auto day = std::make_shared<DayIndex>(2008, 11, 13);
        day->folder = kDayFolder;
        day->entries = entries_;
        std::sort(day->entries.begin(), day->entries.end(),
                  [](const EntryPointer& a, const EntryPointer& b) { return a->path < b->path; });
        return day;
    }
    // The names of the files that the query finds, in the order of the result.
    std::vector<std::string> Find(std::string_view query) const {
        FoundDays found;
        QueryMatcher(ParseQuery(query)).MetaSearch(Make(), found);
        std::vector<std::string> names;
        for (const FoundDay& day : found)
            for (std::size_t i = 0; i < day.positions.size(); ++i)
                names.push_back(day.Entry(i).path.substr(sizeof kDayFolder));
        return names;
    }

private:
    std::vector<EntryPointer> entries_;
};

// Whether the query finds this one record.
inline bool Finds(std::string_view query, const Record& record) {
    return !DayOfRecords().Add(record).Find(query).empty();
}

}  // namespace kalmora
