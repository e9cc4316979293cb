#include "search/query.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/take_number.h"
#include "state/app_state.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::string_view kWideBlank = "\xE3\x80\x80";
constexpr std::size_t kLongestValue = 99;  // bytes

// ---- the line

// Every `from` becomes `to`, in one pass from left to right.
void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    std::string replaced;
    replaced.reserve(text.size());
    std::size_t at = 0;
    for (std::size_t found; (found = text.find(from, at)) != std::string::npos; at = found + from.size())
        replaced.append(text, at, found - at).append(to);
    text = replaced.append(text, at);
}

std::vector<std::string> SplitAtBlanks(const std::string& line) {
    std::vector<std::string> pieces;
    std::size_t at = 0;
    for (std::size_t blank; (blank = line.find(' ', at)) != std::string::npos; at = blank + 1)
        pieces.push_back(line.substr(at, blank - at));
    pieces.push_back(line.substr(at));
    return pieces;
}

// ---- values

// Two numbers with a sign between them; what is missing is 0, and so a single number is no range at all:
// nothing lies at or above it and below 0.
ValueRange ReadRange(std::string_view value, char between) {
    ValueRange range;
    range.given = true;
    const auto low = TakeNumber(value);
    if (!low) return range;
    range.low = *low;
    if (value.empty() || value.front() != between) return range;
    value.remove_prefix(1);
    range.high = TakeNumber(value).value_or(0);
    return range;
}

int ReadNumber(std::string_view value) { return TakeNumber(value).value_or(0); }

struct TimeWord {
    std::string_view word;
    int low, high;
};
// Noon is longer in one language than in the other: meant, and held by QueryTime.NoonDiffersFromHiru.
constexpr TimeWord kTimeWords[] = {
    {"朝", 6, 12},  {"morning", 6, 12}, {"昼", 12, 18},        {"noon", 11, 14},
    {"夜", 18, 28}, {"night", 18, 28},  {"afternoon", 11, 18},
};

ValueRange ReadTime(std::string_view value) {
    const auto word = std::find_if(std::begin(kTimeWords), std::end(kTimeWords),
                                   [&](const TimeWord& one) { return one.word == value; });
    ValueRange time =
        word != std::end(kTimeWords) ? ValueRange{true, word->low, word->high} : ReadRange(value, '-');
    // A window that lies in the next day as a whole.
    constexpr int kHoursOfDay = 24;
    if (time.low >= kHoursOfDay && time.high > kHoursOfDay) {
        time.low -= kHoursOfDay;
        time.high -= kHoursOfDay;
    }
    return time;
}

// ---- terms

struct Term {
    std::string_view name;
    bool takesNextToken;  // when it is alone, its value is the token behind it
    void (*take)(Query& query, std::string_view value);
};
// "apeture:" is spelt so: what users are used to typing keeps working.
constexpr Term kTerms[] = {
    {"time:", true, [](Query& query, std::string_view value) { query.time = ReadTime(value); }},
    {"mode:", false, [](Query& query, std::string_view value) { query.modeValue = ReadNumber(value); }},
    {"iso:", false, [](Query& query, std::string_view value) { query.iso = ReadRange(value, '~'); }},
    {"shutter:", false, [](Query& query, std::string_view value) { query.shutter = ReadRange(value, '~'); }},
    {"brightness:", false,
     [](Query& query, std::string_view value) { query.brightness = ReadRange(value, '~'); }},
    {"apeture:", false, [](Query& query, std::string_view value) { query.aperture = ReadRange(value, '~'); }},
    {"flash:", false, [](Query& query, std::string_view value) { query.flashValue = ReadNumber(value); }},
    {"tag:", true, [](Query& query, std::string_view value) { query.tags.emplace_back(value); }},
};

const Term* FindTerm(std::string_view token) {
    const auto term = std::find_if(std::begin(kTerms), std::end(kTerms),
                                   [&](const Term& one) { return token.starts_with(one.name); });
    return term == std::end(kTerms) ? nullptr : term;
}

// ---- tags

void AddMeals(Query& query) {
    query.words.insert(query.words.end(), {"breakfast", "lunch", "dinner"});
    query.orMode = true;
}
void AddDrinks(Query& query) {
    query.words.insert(query.words.end(), {"sake", "wine", "beer"});
    query.orMode = true;
}
void WantPublic(Query& query) {
    query.wantPublic = true;
    if (query.publicModeChange == Query::PublicModeChange::None)
        query.publicModeChange = Query::PublicModeChange::OneIfSet;
}
void WantPrivate(Query& query) {
    query.wantPrivate = true;
    query.publicModeChange = Query::PublicModeChange::Off;
}
void WantGood(Query& query) {
    query.wantGood = true;
    query.setsGoodMode = true;
}
void WantBad(Query& query) {
    query.wantBad = true;
    query.setsGoodMode = false;
}
void Nothing(Query&) {}

struct Tag {
    std::string_view word;
    void (*apply)(Query& query);
};
// "alchol" is spelt so, as "apeture:" is. Flash is asked for by flash:9; its tags are known and do nothing.
constexpr Tag kTags[] = {
    {"食事", AddMeals},
    {"meal", AddMeals},
    {"food", AddMeals},
    {"酒", AddDrinks},
    {"alchol", AddDrinks},
    {"sake", AddDrinks},
    {"public", WantPublic},
    {"private", WantPrivate},
    {"good", WantGood},
    {"bad", WantBad},
    {"like", [](Query& query) { query.wantLike = true; }},
    {"dislike", [](Query& query) { query.wantDislike = true; }},
    {"face", [](Query& query) { query.wantFace = true; }},
    {"flash", Nothing},
    {"noflash", Nothing},
};

// A word that is no tag is dropped: tags are no key words.
void ApplyTag(Query& query, std::string_view word) {
    const auto tag =
        std::find_if(std::begin(kTags), std::end(kTags), [&](const Tag& one) { return one.word == word; });
    if (tag != std::end(kTags)) tag->apply(query);
}

}  // namespace

QueryTokens SplitQuery(std::string_view line) {
    // What is pasted or comes from a file may end with its line's end, which is no part of it.
    std::string text(line.substr(0, line.find_last_not_of("\r\n") + 1));
    ReplaceAll(text, "\r\n", " ");
    ReplaceAll(text, "\n", " ");
    ReplaceAll(text, "\r", " ");
    ReplaceAll(text, kWideBlank, " ");
    ReplaceAll(text, "\t", " ");
    ReplaceAll(text, "  ", " ");
    QueryTokens split;
    split.tokens = SplitAtBlanks(text::Fold(text));
    split.orMode = std::erase(split.tokens, "or") > 0;
    return split;
}

Query ParseQuery(const QueryTokens& split) {
    Query query;
    query.orMode = split.orMode;
    const std::vector<std::string>& tokens = split.tokens;
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        const Term* const term = FindTerm(tokens[at]);
        if (!term) {
            query.words.push_back(tokens[at]);
            continue;
        }
        std::string_view value = std::string_view(tokens[at]).substr(term->name.size());
        if (value.empty() && term->takesNextToken && at + 1 < tokens.size()) value = tokens[++at];
        term->take(query, text::CutAtCharacter(value, kLongestValue));
    }
    // Each tag of meals or drinks adds its words again; having them twice does no harm.
    for (const std::string& tag : std::vector<std::string>(query.tags)) ApplyTag(query, tag);
    return query;
}

void ApplyModes(const Query& query) {
    AppState& state = State();
    if (query.setsGoodMode) state.settings.GoodMode = *query.setsGoodMode ? 1 : 0;
    if (query.publicModeChange == Query::PublicModeChange::Off) state.settings.PublicMode = 0;
    if (query.publicModeChange == Query::PublicModeChange::OneIfSet && state.settings.PublicMode)
        state.settings.PublicMode = 1;
}

}  // namespace kalmora
