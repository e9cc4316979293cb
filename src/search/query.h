// The query language: one line of words and name:value terms that is held against the records of the index.
//
// There are no quotes, brackets or negation. A record has to satisfy everything that is asked, unless the
// word "or" or a tag for meals and drinks turns the words into alternatives. The user's guide teaches it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "index/index_entry.h"

namespace kalmora {

// A query line, folded and split at blanks.
struct QueryTokens {
    // Two blanks side by side and a blank at an end leave an empty token, which is a word like any other.
    std::vector<std::string> tokens;
    bool orMode = false;  // the word "or" was in it; it is no token any more
};

// Folds the line as comments are folded (text::Fold), so that case, width and kind of kana do not matter.
// Line ends at the end go. Other line ends, wide blanks and tabs become blanks, and then each pair of blanks
// becomes one blank, in a single pass. Text of any length and any bytes.
QueryTokens SplitQuery(std::string_view line);

// low <= value < high, while `given`.
struct ValueRange {
    bool given = false;
    int low = 0;
    int high = 0;
    bool Holds(int value) const { return low <= value && value < high; }
};

// A query in the form in which records are held against it. Plain data; whoever has it may share it between
// threads.
struct Query {
    std::vector<std::string> words;  // folded; the words that meals and drinks mean come last
    std::vector<std::string> tags;   // values of the tag: terms
    bool orMode = false;             // words are alternatives, and nothing but them and the time counts
    ValueRange time;                 // hours; a high above 24 reaches into the small hours
    int modeValue = 0;               // 0: not asked for
    int flashValue = 0;              // 0: not asked for
    ValueRange iso, shutter, brightness, aperture;  // as CameraValues has them
    bool wantPublic = false, wantPrivate = false, wantGood = false, wantBad = false, wantLike = false,
         wantDislike = false, wantFace = false;

    // What running the query does to the display modes, so that what it finds is not hidden again.
    std::optional<bool> setsGoodMode;
    enum class PublicModeChange { None, OneIfSet, Off } publicModeChange = PublicModeChange::None;
};

// Takes the terms out of the tokens; what is left are the words, in their order. Of a term that is given
// twice the last one counts, but tags add up. A value is cut at 99 bytes; one that says nothing sensible is
// 0.
Query ParseQuery(const QueryTokens& tokens);
inline Query ParseQuery(std::string_view line) { return ParseQuery(SplitQuery(line)); }

// Sets GoodMode and PublicMode as the query wants them. They stay so when the search has ended.
void ApplyModes(const Query& query);

}  // namespace kalmora
