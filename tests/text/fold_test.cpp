#include <gtest/gtest.h>

#include "code_page_facts.h"
#include "text/text.h"

namespace kalmora::text {
namespace {

TEST(Fold, AgreesWithTheMeasuredTable) {
    const auto rows = test::CodePageFacts();
    if (rows.empty()) GTEST_SKIP() << "no shared/text/cp932_fold.tsv beside the project";
    for (const auto& row : rows) {
        std::string character;
        AppendUtf8(character, row.character);
        ASSERT_EQ(Fold(character), FromCp932(row.folded)) << std::hex << static_cast<unsigned>(row.character);
        ASSERT_EQ(ToCp932(Fold(character)), ToCp932(FromCp932(row.folded)));
    }
}

TEST(Fold, BringsTheFormsOfAWordTogether) {
    for (const char* text : {"カメラ", "かめら", "ｶﾒﾗ"}) EXPECT_EQ(Fold(text), "ｶﾒﾗ");
    for (const char* text : {"ガーデン", "がーでん", "ｶﾞｰﾃﾞﾝ"}) EXPECT_EQ(Fold(text), "ｶﾞｰﾃﾞﾝ");
    for (const char* text : {"ＣＡＭＥＲＡ", "camera", "Camera", "ｃａｍｅｒａ"})
        EXPECT_EQ(Fold(text), "camera");
}

TEST(Fold, MakesPunctuationAndBlanksHalfWidth) {
    EXPECT_EQ(Fold("「あ、い。」　！"), "｢ｱ､ｲ｡｣ !");
    EXPECT_EQ(Fold("２００８／１１"), "2008/11");
}

TEST(Fold, KeepsSmallKanaSmallAndKanjiAsTheyAre) {
    EXPECT_EQ(Fold("きゃっと"), "ｷｬｯﾄ");
    EXPECT_EQ(Fold("写真"), "写真");
}

TEST(Fold, MakesLettersOfEveryAlphabetSmall) {
    EXPECT_EQ(Fold("ΑΩ АЯ"), "αω ая");
    EXPECT_EQ(Fold("ÉÀŁ"), "éàł");
    EXPECT_EQ(Fold("AZaz@[`{"), "azaz@[`{");
}

TEST(Fold, LeavesTheAngstromSignThatTheTableHasAsASymbol) { EXPECT_EQ(Fold("\u212B\u00C5"), "\u212B\u00E5"); }

TEST(Fold, LeavesSymbolsWhoseHalfWidthFormHasNoCode) { EXPECT_EQ(Fold("○□→←↑↓│"), "○□→←↑↓│"); }

TEST(Fold, TakesTheSignsOfOtherSystemsForTheirTwins) {
    EXPECT_EQ(Fold("〜−‖"), Fold("～－∥"));
    EXPECT_EQ(Fold("〜"), "~");
}

TEST(Fold, LeavesWhatHasNoCase) {
    EXPECT_EQ(Fold("😀"), "😀");
    EXPECT_EQ(Fold("a\xFF\xE3"), "a\xFF\xE3");
    EXPECT_EQ(Fold(""), "");
    EXPECT_EQ(Fold(std::string("A\0B", 3)), std::string("a\0b", 3));
}

TEST(Fold, OfAFoldedTextIsTheSameText) {
    for (char32_t value = 1; value < 0x10000; ++value) {
        if (value == 0xD800) value = 0xE000;
        std::string character;
        AppendUtf8(character, value);
        const std::string folded = Fold(character);
        ASSERT_EQ(Fold(folded), folded) << std::hex << static_cast<unsigned>(value);
    }
}

}  // namespace
}  // namespace kalmora::text
