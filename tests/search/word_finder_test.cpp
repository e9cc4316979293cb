// One word in comments and paths.
#include "search/word_finder.h"

#include <gtest/gtest.h>

#include <random>

#include "text/text.h"

namespace kalmora {
namespace {

TEST(WordFinder, FindsWordsAtBothEndsAndInTheMiddle) {
    const WordFinder zoo("zoo");
    for (const char* text : {"zoo", "zoo of ours", "the zoo", "a zoo here", "zozoo", "zzoo"}) {
        EXPECT_TRUE(zoo.IsInComment(text)) << text;
        EXPECT_TRUE(zoo.IsInPath(text)) << text;
    }
    for (const char* text : {"", "z", "zo", "oo", "z oo", "zo o oo z"}) {
        EXPECT_FALSE(zoo.IsInComment(text)) << text;
        EXPECT_FALSE(zoo.IsInPath(text)) << text;
    }
}

TEST(WordFinder, CaseCountsInCommentsAndNotInPaths) {
    const WordFinder word("zoo");
    EXPECT_FALSE(word.IsInComment("Zoo"));
    EXPECT_TRUE(word.IsInPath("ZoO"));
    EXPECT_TRUE(WordFinder("Zoo").IsInPath("zoo")) << "a word that was not folded";
    EXPECT_FALSE(WordFinder("[").IsInPath("{")) << "no letters: 0x20 apart";
    EXPECT_FALSE(WordFinder("é").IsInPath("É")) << "letters of ASCII alone";
}

TEST(WordFinder, FirstLetterMayComeManyTimesBeforeTheWord) {
    const WordFinder word("aab");
    EXPECT_TRUE(word.IsInComment("aaaaaaaaaaaaab"));
    EXPECT_TRUE(word.IsInPath("AAAAAAAAAAAAAB"));
    EXPECT_FALSE(word.IsInComment("aaaaaaaaaaaaa"));
}

TEST(WordFinder, AgreesWithAPlainSearch) {
    std::mt19937 random(7);
    const std::string letters = "aAbB ｱ";
    const auto text = [&](std::size_t longest) {
        std::string made;
        for (std::size_t length = random() % (longest + 1); made.size() < length;)
            made += letters[random() % letters.size()];
        return made;
    };
    for (int round = 0; round < 20'000; ++round) {
        const std::string folded = text::Fold(text(4)), word = folded.empty() ? "x" : folded;
        const std::string where = text(24);
        const WordFinder finder(word);
        ASSERT_EQ(finder.IsInComment(where), where.find(word) != std::string::npos)
            << word << " in " << where;
        ASSERT_EQ(finder.IsInPath(where), text::FindNoCase(where, word) != std::string::npos)
            << word << " in " << where;
    }
}

}  // namespace
}  // namespace kalmora
