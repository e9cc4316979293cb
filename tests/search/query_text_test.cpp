// The line: folding, splitting, "or".
#include "search/query.h"
#include "search/records.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SplitQuery, WordsAreSeparatedByBlanks) {
    EXPECT_THAT(SplitQuery("cat dog").tokens, ElementsAre("cat", "dog"));
    EXPECT_THAT(SplitQuery("cat").tokens, ElementsAre("cat"));
}

TEST(SplitQuery, TabsAndWideBlanksAreBlanks) {
    EXPECT_THAT(SplitQuery("cat\tdog　bird").tokens, ElementsAre("cat", "dog", "bird"));
}

// A pasted keyword found nothing: its line's end was part of the word.
TEST(SplitQuery, LineEndsAreNoPartOfAWord) {
    for (const char* line : {"cat\n", "cat\r\n", "cat\r", "cat\n\n"})
        EXPECT_THAT(SplitQuery(line).tokens, ElementsAre("cat")) << line;
    for (const char* line : {"cat\ndog", "cat\r\ndog", "cat\rdog\n", "cat \ndog"})
        EXPECT_THAT(SplitQuery(line).tokens, ElementsAre("cat", "dog")) << line;
}

TEST(SplitQuery, TwoBlanksAreOneAndFourAreTwo) {
    EXPECT_THAT(SplitQuery("cat  dog").tokens, ElementsAre("cat", "dog"));
    EXPECT_THAT(SplitQuery("cat　\tdog").tokens, ElementsAre("cat", "dog"));
    // One pass: of three blanks one pair becomes one, and two are left.
    EXPECT_THAT(SplitQuery("cat   dog").tokens, ElementsAre("cat", "", "dog"));
    EXPECT_THAT(SplitQuery("cat    dog").tokens, ElementsAre("cat", "", "dog"));
}

TEST(SplitQuery, BlankAtAnEndLeavesAnEmptyToken) {
    EXPECT_THAT(SplitQuery("cat ").tokens, ElementsAre("cat", ""));
    EXPECT_THAT(SplitQuery(" cat").tokens, ElementsAre("", "cat"));
    EXPECT_THAT(SplitQuery("  ").tokens, ElementsAre("", ""));
}

TEST(SplitQuery, LettersAreFoldedAsInComments) {
    EXPECT_THAT(SplitQuery("Cat ＣＡＴ ねこ ネコ ﾈｺ 猫").tokens,
                ElementsAre("cat", "cat", "ﾈｺ", "ﾈｺ", "ﾈｺ", "猫"));
    EXPECT_THAT(SplitQuery("がっこう　パンダ").tokens, ElementsAre("ｶﾞｯｺｳ", "ﾊﾟﾝﾀﾞ"));
}

TEST(SplitQuery, TermsInWideLettersAreTerms) {
    EXPECT_THAT(SplitQuery("ＩＳＯ：１００～４００").tokens, ElementsAre("iso:100~400"));
    EXPECT_THAT(SplitQuery("ＴＩＭＥ：夜").tokens, ElementsAre("time:夜"));
    EXPECT_THAT(SplitQuery("ｔａｇ：食事").tokens, ElementsAre("tag:食事"));
}

TEST(SplitQuery, OnlyTheWordOrTurnsToAlternatives) {
    for (const char* query : {"cat or dog", "Cat OR dog", "cat ｏｒ dog", "or cat dog", "cat dog or"}) {
        const QueryTokens split = SplitQuery(query);
        EXPECT_TRUE(split.orMode) << query;
        EXPECT_THAT(split.tokens, ElementsAre("cat", "dog")) << query;
    }
    for (const char* query : {"o r", "org", "for", "cat o dog", "tag:or", "o"})
        EXPECT_FALSE(SplitQuery(query).orMode) << query;
}

TEST(SplitQuery, EveryOrGoes) {
    EXPECT_THAT(SplitQuery("a or b or c").tokens, ElementsAre("a", "b", "c"));
    EXPECT_THAT(SplitQuery("or").tokens, IsEmpty());
}

TEST(ParseQuery, TermsAreTakenOutAndWordsStayInTheirOrder) {
    const Query query = ParseQuery("one iso:100~400 two tag:like three time:6-9 four");
    EXPECT_THAT(query.words, ElementsAre("one", "two", "three", "four"));
    EXPECT_THAT(query.tags, ElementsAre("like"));
}

TEST(ParseQuery, NamesOfTermsAreMatchedWhole) {
    EXPECT_THAT(ParseQuery("isolation aperture:100~400 times alcohol iso").words,
                ElementsAre("isolation", "aperture:100~400", "times", "alcohol", "iso"));
}

TEST(ParseQuery, TermGivenTwiceCountsAsTheLast) {
    const Query query = ParseQuery("iso:100~400 iso:800~1600 mode:5 mode:7 time:6-9 time:22-26");
    EXPECT_EQ(query.iso.low, 800);
    EXPECT_EQ(query.iso.high, 1600);
    EXPECT_EQ(query.modeValue, 7);
    EXPECT_EQ(query.time.low, 22);
    EXPECT_EQ(query.time.high, 26);
}

TEST(ParseQuery, TagsAddUp) {
    EXPECT_THAT(ParseQuery("tag:like tag:face tag: good").tags, ElementsAre("like", "face", "good"));
}

TEST(ParseQuery, TimeAndTagTakeTheNextTokenWhenTheyStandAlone) {
    const Query query = ParseQuery("time: 夜 tag: face rest");
    EXPECT_EQ(query.time.low, 18);
    EXPECT_TRUE(query.wantFace);
    EXPECT_THAT(query.words, ElementsAre("rest"));
}

TEST(ParseQuery, OtherTermsDoNotTakeTheNextToken) {
    const Query query = ParseQuery("iso: 100~400");
    EXPECT_THAT(query.words, ElementsAre("100~400"));
    EXPECT_TRUE(query.iso.given);
    EXPECT_EQ(query.iso.high, 0);
}

TEST(ParseQuery, TermAtTheEndHasNoValue) {
    const Query time = ParseQuery("time:");
    EXPECT_TRUE(time.time.given);
    EXPECT_EQ(time.time.low, 0);
    EXPECT_EQ(time.time.high, 0);
    EXPECT_THAT(ParseQuery("tag:").words, IsEmpty());
}

TEST(ParseQuery, ValueThatIsNoNumberIsZero) {
    for (const char* query : {"mode:x", "mode:", "mode:x5", "mode:0"})
        EXPECT_EQ(ParseQuery(query).modeValue, 0);
    EXPECT_EQ(ParseQuery("flash:x").flashValue, 0);
    for (const char* query : {"iso:x", "iso:", "iso:~400", "iso:-"}) {
        EXPECT_TRUE(ParseQuery(query).iso.given) << query;
        EXPECT_EQ(ParseQuery(query).iso.low, 0) << query;
        EXPECT_EQ(ParseQuery(query).iso.high, 0) << query;
    }
    EXPECT_EQ(ParseQuery("mode:12abc").modeValue, 12) << "what comes before the rest counts";
}

TEST(ParseQuery, RangesWantATildeAndHoursAHyphen) {
    EXPECT_EQ(ParseQuery("iso:100~400").iso.high, 400);
    EXPECT_EQ(ParseQuery("iso:100-400").iso.high, 0);
    EXPECT_EQ(ParseQuery("time:6-9").time.high, 9);
    EXPECT_EQ(ParseQuery("time:6~9").time.high, 0);
    EXPECT_EQ(ParseQuery("iso:-5~-2").iso.low, -5);
    EXPECT_EQ(ParseQuery("iso:-5~-2").iso.high, -2);
    EXPECT_EQ(ParseQuery("time:9").time.low, 9);
    EXPECT_EQ(ParseQuery("time:9").time.high, 0);
}

TEST(ParseQuery, EachRangeHasItsTerm) {
    const Query query = ParseQuery("shutter:1~2 brightness:3~4 apeture:5~6 iso:7~8");
    EXPECT_EQ(query.shutter.low, 1);
    EXPECT_EQ(query.brightness.low, 3);
    EXPECT_EQ(query.aperture.low, 5);
    EXPECT_EQ(query.iso.low, 7);
    for (const ValueRange& range : {query.shutter, query.brightness, query.aperture, query.iso})
        EXPECT_EQ(range.high, range.low + 1);
}

TEST(ParseQuery, HugeNumberIsTheLargestThereIs) {
    EXPECT_EQ(ParseQuery("mode:99999999999999999999").modeValue, 2147483647);
    EXPECT_EQ(ParseQuery("iso:-99999999999999999999~1").iso.low, -2147483647);
}

TEST(ParseQuery, ValueIsCutAt99Bytes) {
    const std::string zeros(96, '0');
    EXPECT_EQ(ParseQuery("mode:" + zeros + "123").modeValue, 123) << "99 bytes";
    EXPECT_EQ(ParseQuery("mode:" + zeros + "1234").modeValue, 123) << "100 bytes";
    // No character is cut in two.
    const std::string cut = ParseQuery("tag:" + std::string(98, 'x') + "猫").tags.front();
    EXPECT_EQ(cut, std::string(98, 'x'));
    EXPECT_THAT(ParseQuery("tag:" + std::string(100'000, 'x')).words, IsEmpty());
}

TEST(ParseQuery, WordsOfAnyLengthAreKept) {
    const std::string word(100'000, 'x');
    EXPECT_THAT(ParseQuery(word).words, ElementsAre(word));
}

TEST(ParseQuery, MealsAndDrinksAddTheirWordsBehindTheOthers) {
    for (const char* tag : {"食事", "meal", "food"}) {
        const Query query = ParseQuery(std::string("tag:") + tag + " cat");
        EXPECT_THAT(query.words, ElementsAre("cat", "breakfast", "lunch", "dinner")) << tag;
        EXPECT_TRUE(query.orMode) << tag;
    }
    for (const char* tag : {"酒", "alchol", "sake"}) {
        const Query query = ParseQuery(std::string("tag:") + tag + " cat");
        EXPECT_THAT(query.words, ElementsAre("cat", "sake", "wine", "beer")) << tag;
        EXPECT_TRUE(query.orMode) << tag;
    }
    EXPECT_FALSE(ParseQuery("tag:alcohol").orMode);
    EXPECT_EQ(ParseQuery("tag:meal tag:food").words.size(), 6u);
}

TEST(ParseQuery, EachTagHasItsFlag) {
    EXPECT_TRUE(ParseQuery("tag:public").wantPublic);
    EXPECT_TRUE(ParseQuery("tag:private").wantPrivate);
    EXPECT_TRUE(ParseQuery("tag:good").wantGood);
    EXPECT_TRUE(ParseQuery("tag:bad").wantBad);
    EXPECT_TRUE(ParseQuery("tag:like").wantLike);
    EXPECT_TRUE(ParseQuery("tag:dislike").wantDislike);
    EXPECT_TRUE(ParseQuery("tag:face").wantFace);
    for (const char* other : {"tag:flash", "tag:noflash", "tag:likes", "tag:lik", "tag:unknown", "tag:"}) {
        const Query query = ParseQuery(other);
        EXPECT_FALSE(query.wantPublic || query.wantPrivate || query.wantGood || query.wantBad ||
                     query.wantLike || query.wantDislike || query.wantFace || query.orMode)
            << other;
        EXPECT_THAT(query.words, IsEmpty()) << other;
    }
}

class ApplyModesTest : public testing::Test {
protected:
    ~ApplyModesTest() override { State().settings.GoodMode = State().settings.PublicMode = 0; }
    struct Modes {
        int good, isPublic;
        bool operator==(const Modes&) const = default;
    };
    static Modes After(const char* query, Modes before) {
        State().settings.GoodMode = static_cast<std::uint8_t>(before.good);
        State().settings.PublicMode = static_cast<std::uint8_t>(before.isPublic);
        ApplyModes(ParseQuery(query));
        return {State().settings.GoodMode, State().settings.PublicMode};
    }
};

TEST_F(ApplyModesTest, GoodAndBadSetGoodMode) {
    EXPECT_EQ(After("tag:good", {0, 0}), (Modes{1, 0}));
    EXPECT_EQ(After("tag:bad", {1, 1}), (Modes{0, 1}));
    EXPECT_EQ(After("tag:good tag:bad", {1, 0}), (Modes{0, 0}));
    EXPECT_EQ(After("tag:bad tag:good", {0, 0}), (Modes{1, 0}));
}

TEST_F(ApplyModesTest, PublicMakesASetModeOneAndPrivateClearsIt) {
    EXPECT_EQ(After("tag:public", {0, 2}), (Modes{0, 1}));
    EXPECT_EQ(After("tag:public", {0, 0}), (Modes{0, 0}));
    EXPECT_EQ(After("tag:private", {1, 1}), (Modes{1, 0}));
    EXPECT_EQ(After("tag:private tag:public", {0, 1}), (Modes{0, 0}));
}

TEST_F(ApplyModesTest, OtherQueriesLeaveThemAlone) {
    for (const char* query : {"cat", "tag:like tag:face", "good private", "tag:meal"})
        EXPECT_EQ(After(query, {1, 2}), (Modes{1, 2})) << query;
}

}  // namespace
}  // namespace kalmora
