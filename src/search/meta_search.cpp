#include "search/meta_search.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include "platform/soon_read.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr int kDay = 24;  // hours

bool IsAskedFor(int value) { return value > 0; }

// Longer than one byte of code page 932, as comments are measured throughout. One character of that page
// takes three bytes here at most.
bool IsSearchable(const std::string& comment) {
    return comment.size() > 3 || (comment.size() > 1 && text::Cp932Length(comment) > 1);
}

constexpr std::size_t kBlock = 32;  // records that are on their way at once

void AskForRecord(const IndexEntry& entry) {
    constexpr std::size_t kLine = 64;  // bytes that come together
    const char* const record = reinterpret_cast<const char*>(&entry);
    for (std::size_t offset = 0; offset < sizeof(IndexEntry); offset += kLine) WillSoonRead(record + offset);
}

void AskForTexts(const IndexEntry& entry) {
    WillSoonRead(entry.path.data() + entry.path.size() / 2);  // names are at the end
    WillSoonRead(entry.comment.data());
}

}  // namespace

// What the paths of a day have in common, looked through once for all of its records.
class QueryMatcher::Folder {
public:
    Folder(std::string_view path, const std::vector<WordFinder>& words) : length_(path.size()) {
        words_.reserve(words.size());
        for (const WordFinder& word : words) {
            // A word may begin in the folder and end behind it.
            const std::size_t reach = word.Word().empty() ? 0 : word.Word().size() - 1;
            words_.push_back({word.IsInPath(path), length_ - std::min(length_, reach)});
        }
    }
    // Of records in the order of their paths.
    static bool HoldsAll(const std::string& folder, const std::vector<EntryPointer>& entries) {
        return entries.front()->path.starts_with(folder) && entries.back()->path.starts_with(folder);
    }

    // The path begins with the folder.
    bool IsInPath(const std::string& path, const std::vector<WordFinder>& words, std::size_t word) const {
        const Word& known = words_[word];
        return known.isInFolder || words[word].IsInPath(std::string_view(path).substr(known.from));
    }

private:
    struct Word {
        bool isInFolder;
        std::size_t from;  // where in a path the word may begin that is not in the folder
    };
    std::size_t length_;
    std::vector<Word> words_;
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
    if (q.wantPublic && entry.estimations.privacy <= 0) return false;
    if (q.wantPrivate && entry.estimations.privacy >= 0) return false;
    if (q.wantGood && entry.estimations.good <= 0) return false;
    if (q.wantBad && entry.estimations.good >= 0) return false;
    if (q.wantLike && entry.estimations.like <= 0) return false;
    if (q.wantDislike && entry.estimations.like >= 0) return false;
    if (q.wantFace && entry.camera.face <= 0) return false;
    if (q.modeValue != 0 && entry.camera.mode != q.modeValue) return false;
    if (q.flashValue != 0 && entry.camera.flash != q.flashValue) return false;
    if (q.iso.given && !q.iso.Holds(entry.camera.iso)) return false;
    if (q.aperture.given && !q.aperture.Holds(entry.camera.aperture)) return false;
    if (q.brightness.given && !q.brightness.Holds(entry.camera.brightness)) return false;
    return !q.shutter.given || q.shutter.Holds(entry.camera.shutter);
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

// The words in their order. One that is in the path ends the attempt, and the record is left out, even
// where a later word is in its comment: intended, and held by QueryOrMode.WordInThePathLeavesTheRecordOut.
bool QueryMatcher::HasAnyWord(const IndexEntry& entry, const Folder& folder) const {
    const bool isSearchable = IsSearchable(entry.comment);
    for (std::size_t i = 0; i < words_.size(); ++i) {
        if (folder.IsInPath(entry.path, words_, i)) return false;
        if (isSearchable && words_[i].IsInComment(entry.comment)) return true;
    }
    return false;
}

bool QueryMatcher::PassesNumbers(const IndexEntry& entry) const {
    // Alternatives push the tests aside, though the user wrote them down: meant, and held by
    // QueryOrMode.TestsDoNotCount.
    if (hasTests_ && !query_.orMode && !PassesTests(entry)) return false;
    return !query_.time.given || LiesInWindow(entry.date.hour);
}

bool QueryMatcher::PassesWords(const IndexEntry& entry, const Folder& folder) const {
    if (entry.path.empty()) return false;
    if (words_.empty()) return (hasTests_ && !query_.orMode) || query_.time.given;
    return query_.orMode ? HasAnyWord(entry, folder) : HasAllWords(entry, folder);
}

bool QueryMatcher::Matches(const IndexEntry& entry) const {
    return PassesNumbers(entry) && PassesWords(entry, Folder({}, words_));
}

void QueryMatcher::MetaSearch(const std::shared_ptr<const DayIndex>& day, FoundDays& found) const {
    const std::vector<EntryPointer>& entries = day->entries;
    if (entries.empty()) return;
    const bool isCommon = Folder::HoldsAll(day->folder, entries);
    const Folder folder(isCommon ? std::string_view(day->folder) : std::string_view(), words_);
    std::vector<std::uint32_t> positions;
    // Records and their texts lie all over the memory, and waiting for one after the other would take most of
    // the time. So a block of them is asked for at once, then looked through for its numbers, which asks for
    // the texts of those that pass, and then for its words.
    std::array<std::uint32_t, kBlock> passed;
    for (std::size_t first = 0; first < entries.size(); first += kBlock) {
        const std::size_t end = std::min(entries.size(), first + kBlock);
        for (std::size_t i = first; i < end; ++i) AskForRecord(*entries[i]);
        std::size_t count = 0;
        for (std::size_t i = first; i < end; ++i) {
            if (!PassesNumbers(*entries[i])) continue;
            AskForTexts(*entries[i]);
            passed[count++] = static_cast<std::uint32_t>(i);
        }
        for (std::size_t i = 0; i < count; ++i)
            if (PassesWords(*entries[passed[i]], folder)) positions.push_back(passed[i]);
    }
    if (!positions.empty()) found.push_back({day, std::move(positions)});
}

}  // namespace kalmora
