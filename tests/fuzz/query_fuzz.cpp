// Any bytes as a query: it is read and held against records without harm, and what it finds holds its words.

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "search/meta_search.h"
#include "text/text.h"

namespace {

using namespace kalmora;

std::shared_ptr<const DayIndex> MakeDay() {
    auto day = std::make_shared<DayIndex>(2008, 11, 13);
    day->folder = "/life/2008/200811/2008_1113";
    const struct {
        const char* name;
        const char* comment;
        int value, hour;
    } records[] = {{"IMG_0042.JPG", "ｻｸﾗﾉ花見 lunch", 9, 3},
                   {"a", "x", 0, 12},
                   {"lunch.txt", "a cat and a dog, beer", 5, 18},
                   {"walk/猫.png", "", -5, 23}};
    for (const auto& record : records) {
        auto entry = std::make_shared<IndexEntry>();
        entry->path = day->folder + "/" + record.name;
        entry->comment = record.comment;
        entry->camera.mode = entry->camera.iso = entry->camera.shutter = entry->camera.brightness =
            entry->camera.flash = entry->camera.aperture = entry->estimations.like =
                entry->estimations.privacy = entry->estimations.good = record.value;
        entry->date.hour = static_cast<std::uint16_t>(record.hour);
        day->entries.push_back(std::move(entry));
    }
    return day;
}

bool HasWord(const IndexEntry& entry, const std::string& word) {
    const bool inComment =
        text::Cp932Length(entry.comment) > 1 && entry.comment.find(word) != std::string::npos;
    return inComment || (!word.empty() && text::FindNoCase(entry.path, word) != std::string::npos);
}

void Check(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t length) {
    static const std::shared_ptr<const DayIndex> day = MakeDay();
    const std::string_view line(reinterpret_cast<const char*>(bytes), length);
    const QueryTokens split = SplitQuery(line);
    for (const std::string& token : split.tokens)
        Check(token != "or" && token.find(' ') == std::string::npos);
    const Query query = ParseQuery(split);
    for (const std::string& tag : query.tags) Check(tag.size() <= 99);

    const QueryMatcher matcher(query);
    FoundDays found;
    matcher.MetaSearch(day, found);
    Check(found.size() <= 1);
    std::size_t next = 0;
    for (std::size_t i = 0; i < day->entries.size(); ++i) {
        const bool matches =
            !found.empty() && next < found[0].positions.size() && found[0].positions[next] == i;
        if (matches) ++next;
        Check(matches == matcher.Matches(*day->entries[i]));
        if (!matches || query.orMode) continue;
        for (const std::string& word : query.words) Check(HasWord(*day->entries[i], word));
    }
    Check(found.empty() || next == found[0].positions.size());
    return 0;
}
