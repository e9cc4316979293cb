#include "search/meta_search.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "platform/text.h"

namespace kalmora {

namespace {

constexpr int kDay = 24;  // hours

bool IsAskedFor(int value) { return value > 0; }

// Longer than one byte of code page 932, as comments are measured throughout. One character of that page
// takes three bytes here at most.
bool IsSearchable(const std::string& comment) {
    return comment.size() > 3 || (comment.size() > 1 && text::Cp932Length(comment) > 1);
}

}  // namespace

// What the paths of a day have in common, looked through once for all of its records.
class QueryMatcher::Folder {
public:
    Folder(std::string_view path, const std::vector<WordFinder>& words) : path_(path) {
        holds_.reserve(words.size());
        for (const WordFinder& word : words) holds_.push_back(word.IsInPath(path_));
    }

    bool IsInPath(const std::string& path, const std::vector<WordFinder>& words, std::size_t word) const {
        if (!path.starts_with(path_)) return words[word].IsInPath(path);
        if (holds_[word]) return true;
        // A word may begin in the folder and end behind it.
        const std::size_t reach = words[word].Word().empty() ? 0 : words[word].Word().size() - 1;
        return words[word].IsInPath(
            std::string_view(path).substr(path_.size() - std::min(path_.size(), reach)));
    }

private:
    std::string_view path_;
    std::vector<bool> holds_;  // by word
};

QueryMatcher::QueryMatcher(Query query) : query_(std::move(query)) {
    std::unordered_set<std::string_view> known;
    for (const std::string& word : query_.words)
        if (known.insert(word).second) words_.emplace_back(word);
    // A negative mode or flash is no test of its own, but where there is another one it is held against the
    // record too: meant, and held by QueryTests.NegativeModeCountsBesideAnotherTest.
    hasTests_ = query_.wantPublic || query_.wantPrivate || query_.wantGood || query_.wantBad ||
                query_.wantLike || query_.wantDislike || query_.wantFace || IsAskedFor(query_.modeValue) ||
                IsAskedFor(query_.flashValue) || query_.iso.given || query_.shutter.given ||
                query_.brightness.given || query_.aperture.given;
}

bool QueryMatcher::PassesTests(const IndexEntry& entry) const {
    const Query& q = query_;
    if (q.wantPublic && entry.rating2 <= 0) return false;
    if (q.wantPrivate && entry.rating2 >= 0) return false;
    if (q.wantGood && entry.rating3 <= 0) return false;
    if (q.wantBad && entry.rating3 >= 0) return false;
    if (q.wantLike && entry.rating1 <= 0) return false;
    if (q.wantDislike && entry.rating1 >= 0) return false;
    if (q.wantFace && entry.faceCount <= 0) return false;
    if (q.modeValue != 0 && entry.mode != q.modeValue) return false;
    if (q.flashValue != 0 && entry.value4 != q.flashValue) return false;
    if (q.iso.given && !q.iso.Holds(entry.value1)) return false;
    if (q.aperture.given && !q.aperture.Holds(entry.value8)) return false;
    if (q.brightness.given && !q.brightness.Holds(entry.value3)) return false;
    return !q.shutter.given || q.shutter.Holds(entry.value2);
}

bool QueryMatcher::LiesInWindow(int hour) const {
    if (query_.time.Holds(hour)) return true;
    return query_.time.high > kDay && hour < query_.time.high - kDay;
}

bool QueryMatcher::HasAllWords(const IndexEntry& entry, const Folder& folder) const {
    const bool isSearchable = IsSearchable(entry.comment);
    for (std::size_t i = 0; i < words_.size(); ++i) {
        if (folder.IsInPath(entry.path, words_, i)) continue;
        if (!isSearchable || !words_[i].IsInComment(entry.comment)) return false;
    }
    return true;
}

// The words in their order. One that stands in the path ends the attempt, and the record is left out, even
// where a later word stands in its comment: meant, and held by QueryOrMode.WordInThePathLeavesTheRecordOut.
bool QueryMatcher::HasAnyWord(const IndexEntry& entry, const Folder& folder) const {
    const bool isSearchable = IsSearchable(entry.comment);
    for (std::size_t i = 0; i < words_.size(); ++i) {
        if (folder.IsInPath(entry.path, words_, i)) return false;
        if (isSearchable && words_[i].IsInComment(entry.comment)) return true;
    }
    return false;
}

bool QueryMatcher::Matches(const IndexEntry& entry, const Folder& folder) const {
    if (entry.path.empty()) return false;
    // Alternatives push the tests aside, though the user wrote them down: meant, and held by
    // QueryOrMode.TestsDoNotCount.
    const bool counts = hasTests_ && !query_.orMode;
    if (counts && !PassesTests(entry)) return false;
    if (query_.time.given && !LiesInWindow(entry.date.hour)) return false;
    if (words_.empty()) return counts || query_.time.given;
    return query_.orMode ? HasAnyWord(entry, folder) : HasAllWords(entry, folder);
}

bool QueryMatcher::Matches(const IndexEntry& entry) const { return Matches(entry, Folder({}, words_)); }

void QueryMatcher::MetaSearch(const std::shared_ptr<const DayIndex>& day, FoundDays& found) const {
    if (day->entries.empty()) return;
    const Folder folder(day->folder, words_);
    std::vector<std::uint32_t> positions;
    for (std::size_t i = 0; i < day->entries.size(); ++i)
        if (Matches(*day->entries[i], folder)) positions.push_back(static_cast<std::uint32_t>(i));
    if (!positions.empty()) found.push_back({day, std::move(positions)});
}

}  // namespace kalmora
