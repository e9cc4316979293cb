// WordFinder: one folded word, prepared for being looked for in very many short texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kalmora {

// Immutable; any thread.
class WordFinder {
public:
    explicit WordFinder(std::string word);

    const std::string& Word() const { return word_; }
    // Byte by byte, unchanged: for comments, which are folded as the word is. An empty word is in
    // everything.
    bool IsInComment(std::string_view comment) const;
    // At any byte of a path, letters of ASCII in either case. An empty word is in no path. Nothing else is
    // folded: the names of files are searched as they are written.
    bool IsInPath(std::string_view path) const;

private:
    std::string word_;        // letters of ASCII are small ones
    std::size_t rarest_ = 0;  // the place of its byte that is rarest in texts
    // That byte eight times, and the bit by which a capital differs from it, if it is a letter.
    std::uint64_t probes_ = 0, caseBits_ = 0;
};

}  // namespace kalmora
