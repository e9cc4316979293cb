#include "search/word_finder.h"

#include <cstring>
#include <utility>

namespace kalmora {

namespace {

constexpr char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
constexpr char Capital(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

// How often a byte is to be expected in comments and paths: the first bytes of kana and kanji most of all,
// then blanks, digits and the letters by their order in English texts.
int Commonness(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0xE3) return 60;
    if (byte >= 0x80) return 5;
    if (c == ' ') return 50;
    if (c == '/' || c == '_' || c == '.') return 20;
    if (c >= '0' && c <= '9') return 25;
    constexpr std::string_view kRareFirst = "qzjxkvbpygfwmucldrhsinoate";
    const std::size_t rank = kRareFirst.find(c);
    return rank == std::string_view::npos ? 1 : 4 + static_cast<int>(rank);
}

bool StandsAt(const char* text, std::string_view word) {
    for (std::size_t i = 0; i < word.size(); ++i)
        if (Small(text[i]) != word[i]) return false;
    return true;
}

}  // namespace

WordFinder::WordFinder(std::string word) : word_(std::move(word)) {
    for (char& c : word_) c = Small(c);
    for (std::size_t i = 1; i < word_.size(); ++i)
        if (Commonness(word_[i]) < Commonness(word_[rarest_])) rarest_ = i;
    if (!word_.empty()) cases_ = {word_[rarest_], Capital(word_[rarest_])};
}

bool WordFinder::IsInComment(std::string_view comment) const {
    if (word_.empty()) return true;
    if (word_.size() > comment.size()) return false;
    const char* at = comment.data() + rarest_;
    const char* const end = comment.data() + comment.size() - (word_.size() - 1 - rarest_);
    while ((at = static_cast<const char*>(std::memchr(at, cases_[0], static_cast<std::size_t>(end - at))))) {
        if (std::memcmp(at - rarest_, word_.data(), word_.size()) == 0) return true;
        if (++at == end) return false;
    }
    return false;
}

bool WordFinder::IsInPath(std::string_view path) const {
    if (word_.empty() || word_.size() > path.size()) return false;
    // What is searched of a path is a name of some twenty letters: a plain walk is the quickest way.
    const char* const end = path.data() + path.size() - (word_.size() - 1 - rarest_);
    for (const char* at = path.data() + rarest_; at != end; ++at)
        if ((*at == cases_[0] || *at == cases_[1]) && StandsAt(at - rarest_, word_)) return true;
    return false;
}

}  // namespace kalmora
