#include "platform/qt/text_block.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <chrono>

#include "platform/qt/fonts.h"
#include "platform/qt/values.h"

namespace kalmora::qt {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

QFont TestFont() { return ResolveFont(Font{"DejaVu Sans", 16}).font; }

int WidthOf(const char* text) {
    return static_cast<int>(std::ceil(QFontMetricsF(TestFont()).horizontalAdvance(ToQt(text)))) + 1;
}

std::vector<std::string> Break(std::string_view text, int width, int maxLines) {
    std::vector<std::string> lines;
    for (const QString& line : BreakIntoLines(ToDisplayText(text), TestFont(), width, maxLines))
        lines.push_back(FromQt(line));
    return lines;
}

TEST(TextBlock, WhatFitsIsOneLine) {
    EXPECT_THAT(Break("one two", WidthOf("one two"), 1), ElementsAre("one two"));
}

TEST(TextBlock, BreaksBetweenWords) {
    EXPECT_THAT(Break("one two three four", WidthOf("three four") - 2, 5),
                ElementsAre("one two", "three", "four"));
}

TEST(TextBlock, BreaksAWordThatIsWiderThanALine) {
    const std::vector<std::string> lines = Break("aaaaaaaaaaaaaaaaaaaa", WidthOf("aaaaaaaa"), 5);
    EXPECT_THAT(lines, ElementsAre("aaaaaaaa", "aaaaaaaa", "aaaa"));
}

TEST(TextBlock, BreaksJapaneseAnywhere) {
    EXPECT_THAT(Break("今日東京駅前", WidthOf("今日東京"), 5), ElementsAre("今日東京", "駅前"));
}

TEST(TextBlock, JapaneseStopsDoNotBeginALine) {
    const std::vector<std::string> lines = Break("今日東京。駅前", WidthOf("今日東京"), 5);
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[0], "今日東");
    EXPECT_TRUE(lines[1].starts_with("京。")) << lines[1];
}

TEST(TextBlock, EveryKindOfLineEndEndsOneLine) {
    EXPECT_THAT(Break("a\nb\r\nc\rd", 500, 10), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(Break("a\n\nb\r\n\r\nc", 500, 10), ElementsAre("a", "", "b", "", "c"));
}

TEST(TextBlock, EllipsisStandsAtTheEndOfTheLastLineThatFits) {
    const std::vector<std::string> lines = Break("one two three four five six", WidthOf("one two"), 2);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "one two");
    EXPECT_TRUE(lines[1].ends_with("...")) << lines[1];
    EXPECT_TRUE(lines[1].starts_with("thr")) << lines[1];
    EXPECT_LE(QFontMetricsF(TestFont()).horizontalAdvance(ToQt(lines[1])), WidthOf("one two"));
}

TEST(TextBlock, EllipsisTellsOfFurtherParagraphsToo) {
    EXPECT_THAT(Break("a\nb\nc", 500, 2), ElementsAre("a", "b..."));
    EXPECT_THAT(Break("a\n\nc", 500, 2), ElementsAre("a", "..."));
}

TEST(TextBlock, EllipsisIsOnTheBaseLine) {
    // The one character for it is in the middle of the line in fonts with Japanese glyphs.
    const QFont font = ResolveFont(Font{"IPAPGothic", 16}).font;
    const QString line = BreakIntoLines(QStringLiteral("one two three"), font, 60, 1).at(0);
    EXPECT_TRUE(line.endsWith(QLatin1Char('.'))) << FromQt(line);
    EXPECT_LE(QFontMetricsF(font).tightBoundingRect(QStringLiteral("...")).bottom(), 2);
    EXPECT_GT(QFontMetricsF(font).tightBoundingRect(QStringLiteral("...")).top(), -4);
}

TEST(TextBlock, EllipsisIsNeverAlone) {
    EXPECT_THAT(Break("Wolf", WidthOf("..") - 1, 1), ElementsAre("W")) << "better a letter without one";
    EXPECT_THAT(Break("\n\nc", 500, 1), IsEmpty());
    EXPECT_THAT(Break("\n\nc", 500, 2), IsEmpty());
    EXPECT_THAT(Break("\n\nc", 500, 3), ElementsAre("", "", "c"));
}

TEST(TextBlock, IndentedLinesAreNarrower) {
    const int width = WidthOf("one two three");
    const LineIndent indent{WidthOf(" three"), 1};
    std::vector<std::string> lines;
    for (const QString& line :
         BreakIntoLines(QStringLiteral("one two three four"), TestFont(), width, 5, indent))
        lines.push_back(FromQt(line));
    EXPECT_THAT(lines, ElementsAre("one two", "three four"));
}

TEST(WithEllipsis, CutsBetweenWholeCharacters) {
    // Each is two code units.
    const QString line = QString::fromUtf8("\U00020B9F\U00020B9F\U00020B9F");
    const QFontMetricsF metrics(TestFont());
    const QString one = line.left(2) + QStringLiteral("...");
    const int least = static_cast<int>(std::ceil(metrics.horizontalAdvance(one)));
    for (int width = least; width < least + 8; ++width) EXPECT_EQ(WithEllipsis(line, metrics, width), one);
}

TEST(TextBlock, LineEndsAtTheVeryEndAreNoFurtherText) {
    EXPECT_THAT(Break("a\nb\n\n", 500, 2), ElementsAre("a", "b"));
    EXPECT_THAT(Break("a\r\n", 500, 1), ElementsAre("a"));
}

TEST(TextBlock, AWidthOfOnePixelStillEnds) {
    const std::vector<std::string> lines = Break("今日は", 1, 50);
    EXPECT_THAT(lines, ElementsAre("今", "日", "は"));
}

TEST(TextBlock, NothingComesOfNothing) {
    EXPECT_THAT(Break("", 100, 5), IsEmpty());
    EXPECT_THAT(Break("text", 0, 5), IsEmpty());
    EXPECT_THAT(Break("text", -10, 5), IsEmpty());
    EXPECT_THAT(Break("text", 100, 0), IsEmpty());
}

TEST(TextBlock, TabsBecomeSpacesAndControlCharactersGo) {
    EXPECT_THAT(Break(std::string_view("a\tb\0c\x01", 6), 500, 5), ElementsAre("a    bc"));
}

TEST(TextBlock, ABookTakesNoLongerThanAPage) {
    const std::string book(20u << 20, 'x');
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Break(book, 200, 10).size(), 10u);
    // Laying out the whole would take many seconds; the bound is wide for slow machines and sanitizers.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
}

}  // namespace
}  // namespace kalmora::qt
