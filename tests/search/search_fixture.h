// What the tests of the search run share: a life-log on the disk, and the names of what is found in it.
#pragma once

#include "index/index_fixture.h"
#include "search/search_run.h"

namespace kalmora {

inline bool Never() { return false; }

class SearchTest : public IndexTest {
protected:
    SearchTest() {
        ResetSearch();
        State().view.AllViewMode = 0;
        State().view.TargetYear = 2008;
        State().view.TargetMonth = 11;
        State().view.TargetDay = 13;
    }
    ~SearchTest() override {
        ResetSearch();
        State().view.AllViewMode = State().settings.GoodMode = State().settings.PublicMode = 0;
    }

    // A note of that day with this text.
    std::string PutNote(const CalendarDate& date, const std::string& name, std::string_view text) const {
        const std::string path = files::Join(DayFolder(date.day, date.month, date.year), name);
        return Put(path.substr(home.size() + 1), text);
    }
    static std::vector<std::string> NamesOf(const FoundDays& found) {
        std::vector<std::string> names;
        for (const FoundDay& day : found)
            for (std::size_t i = 0; i < day.positions.size(); ++i)
                names.push_back(day.Entry(i).path.substr(day.day->folder.size() + 1));
        return names;
    }
    static std::size_t Count(const ProgressTexts& progress, std::string_view head) {
        return static_cast<std::size_t>(
            std::count_if(progress.texts.begin(), progress.texts.end(),
                          [&](const std::string& text) { return text.starts_with(head); }));
    }
    static SearchView Month(int month = 11, int year = 2008) { return {kMonthly, year, month, 13}; }
    static SearchView Year(int year = 2008) { return {kYearly, year, 11, 13}; }
    static SearchView Day(int day = 13) { return {kDaily, 2008, 11, day}; }
    static std::vector<std::string> Find(const std::string& query, const SearchView& view,
                                         SearchScope scope = SearchScope::View) {
        return NamesOf(*Search(query, scope, view, Never));
    }
};

}  // namespace kalmora
