// What was entered in the dialog, as a line.
#include "search/compose_query.h"

#include <gtest/gtest.h>

#include "search/query.h"
#include "text/text.h"

namespace kalmora {
namespace {

HourEntry Picked(int hour) {
    char text[8];
    std::snprintf(text, sizeof text, "%02d", hour);
    return {hour, text};
}
HourEntry Typed(const char* text) { return {-1, text}; }

std::string Hours(const HourEntry& from, const HourEntry& to) {
    SearchEntry entry;
    entry.from = from;
    entry.to = to;
    return ComposeQuery(entry);
}

TEST(ComposeQuery, NothingEnteredIsNoQuery) { EXPECT_EQ(ComposeQuery({}), ""); }

TEST(ComposeQuery, KeywordStandsAsItWasTyped) {
    for (const char* keyword : {"cat", "Cat OR dog", "  ", "さくら　花見", "iso:100~400 cat"}) {
        SearchEntry entry;
        entry.keyword = keyword;
        EXPECT_EQ(ComposeQuery(entry), keyword);
    }
}

TEST(ComposeQuery, PastedKeywordIsOneLine) {
    SearchEntry entry;
    entry.keyword = "cat\r\n";
    entry.flash = true;
    EXPECT_EQ(ComposeQuery(entry), "cat flash:9");
    entry.keyword = "cat\r\ndog\nbird";
    EXPECT_EQ(ComposeQuery(entry), "cat dog bird flash:9");
    entry.keyword = "\n";
    EXPECT_EQ(ComposeQuery(entry), "flash:9");
}

TEST(ComposeQuery, BoxesAddTheirTerms) {
    SearchEntry entry;
    entry.flash = true;
    EXPECT_EQ(ComposeQuery(entry), "flash:9");
    entry.nightMode = true;
    EXPECT_EQ(ComposeQuery(entry), "mode:5 flash:9");
    entry.face = true;
    EXPECT_EQ(ComposeQuery(entry), "tag:face mode:5 flash:9");
    entry = {};
    entry.keyword = "cat";
    entry.face = true;
    EXPECT_EQ(ComposeQuery(entry), "cat tag:face");
}

TEST(ComposeQuery, HoursComeLast) {
    EXPECT_EQ(Hours(Picked(22), Picked(26)), "time:22-26");
    SearchEntry entry;
    entry.keyword = "cat";
    entry.flash = true;
    entry.from = Picked(0);
    entry.to = Picked(36);
    EXPECT_EQ(ComposeQuery(entry), "cat flash:9 time:0-36");
}

TEST(ComposeQuery, HoursMayBeTyped) {
    EXPECT_EQ(Hours(Typed("22"), Typed("26")), "time:22-26");
    EXPECT_EQ(Hours(Typed("9"), Picked(12)), "time:9-12");
    EXPECT_EQ(Hours(Typed(" ９"), Typed("１２時")), "time:9-12") << "wide figures are figures";
    EXPECT_EQ(Hours(Typed("x"), Typed("6")), "time:0-6") << "no number is 0";
    EXPECT_EQ(Hours(Typed("36"), Typed("36")), "time:36-36");
}

TEST(ComposeQuery, HoursThatAreNotThereLeaveTheTimeOut) {
    for (const char* text : {"", "37", "40", "-1", "-5", "99999999999"}) {
        EXPECT_EQ(Hours(Typed(text), Picked(26)), "") << text;
        EXPECT_EQ(Hours(Picked(22), Typed(text)), "") << text;
    }
}

TEST(ComposeQuery, KeywordIsCutAt1023BytesOfTheCodePage) {
    SearchEntry entry;
    entry.keyword = std::string(1023, 'x');
    EXPECT_EQ(ComposeQuery(entry).size(), 1023u);
    entry.keyword += "yz";
    EXPECT_EQ(ComposeQuery(entry), std::string(1023, 'x'));
    entry.keyword.clear();
    for (int i = 0; i < 600; ++i) entry.keyword += "花";
    EXPECT_EQ(text::Cp932Length(ComposeQuery(entry)), 1022u) << "511 characters of two bytes";
    entry.flash = true;
    EXPECT_TRUE(ComposeQuery(entry).ends_with("花 flash:9"));
}

TEST(ComposeQuery, WhatIsComposedReadsAsEntered) {
    SearchEntry entry;
    entry.keyword = "Cat";
    entry.face = entry.nightMode = entry.flash = true;
    entry.from = Picked(22);
    entry.to = Picked(26);
    const Query query = ParseQuery(ComposeQuery(entry));
    EXPECT_EQ(query.words, std::vector<std::string>{"cat"});
    EXPECT_TRUE(query.wantFace);
    EXPECT_EQ(query.modeValue, 5);
    EXPECT_EQ(query.flashValue, 9);
    EXPECT_EQ(query.time.low, 22);
    EXPECT_EQ(query.time.high, 26);
}

}  // namespace
}  // namespace kalmora
