#include "search/word_finder.h"

#include <cstring>
#include <utility>

namespace kalmora {

namespace {

constexpr char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

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

bool HasZeroByte(std::uint64_t eight) {
    return ((eight - 0x0101010101010101u) & ~eight & 0x8080808080808080u) != 0;
}

}  // namespace

WordFinder::WordFinder(std::string word) : word_(std::move(word)) {
    for (char& c : word_) c = Small(c);
    for (std::size_t i = 1; i < word_.size(); ++i)
        if (Commonness(word_[i]) < Commonness(word_[rarest_])) rarest_ = i;
    if (word_.empty()) return;
    const char rarest = word_[rarest_];
    const std::uint64_t inEachByte = 0x0101010101010101u;
    probes_ = inEachByte * static_cast<unsigned char>(rarest);
    caseBits_ = rarest >= 'a' && rarest <= 'z' ? inEachByte * ('a' - 'A') : 0;
}

bool WordFinder::IsInComment(std::string_view comment) const {
    if (word_.empty()) return true;
    if (word_.size() > comment.size()) return false;
    const char* at = comment.data() + rarest_;
    const char* const end = comment.data() + comment.size() - (word_.size() - 1 - rarest_);
    while ((
        at = static_cast<const char*>(std::memchr(at, word_[rarest_], static_cast<std::size_t>(end - at))))) {
        if (std::memcmp(at - rarest_, word_.data(), word_.size()) == 0) return true;
        if (++at == end) return false;
    }
    return false;
}

// What is searched of a path is a name of some twenty bytes, too short to call anybody for: eight bytes at a
// time, without a branch for each of them.
bool WordFinder::IsInPath(std::string_view path) const {
    if (word_.empty() || word_.size() > path.size()) return false;
    const char* at = path.data() + rarest_;
    const char* const end = path.data() + path.size() - (word_.size() - 1 - rarest_);
    for (; end - at >= 8; at += 8) {
        std::uint64_t eight;
        std::memcpy(&eight, at, sizeof eight);
        if (!HasZeroByte((eight | caseBits_) ^ probes_)) continue;
        for (int i = 0; i < 8; ++i)
            if (StandsAt(at + i - rarest_, word_)) return true;
    }
    for (; at < end; ++at)
        if (StandsAt(at - rarest_, word_)) return true;
    return false;
}

}  // namespace kalmora
