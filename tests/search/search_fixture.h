// What the tests of the search run share: a life-log on the disk, and the names of what is found in it.
#pragma once

#include "index/index_fixture.h"
#include "search/search_run.h"

namespace kalmora {

inline const StopToken kNeverStopped;

class SearchTest : public IndexTest {
protected:
    SearchTest() {
        ResetSearch();
        ChangeView([&](ViewState& view) {
            view.scatter = false;
            view.period.date.year = 2008;
            view.period.date.month = 11;
            view.period.date.day = 13;
        });
    }
    ~SearchTest() override {
        ResetSearch();
        ChangeView([](ViewState& view) { view.scatter = false; });
        State().settings.GoodMode = State().settings.PublicMode = 0;
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
    static Period Month(int month = 11, int year = 2008) { return {Level::Month, year, month, 13}; }
    static Period Year(int year = 2008) { return {Level::Year, year, 11, 13}; }
    static Period Day(int day = 13) { return {Level::Day, 2008, 11, day}; }
    static std::vector<std::string> Find(const std::string& query, const Period& view,
                                         SearchScope scope = SearchScope::View) {
        return NamesOf(*Search(query, scope, view, kNeverStopped));
    }
};

}  // namespace kalmora
