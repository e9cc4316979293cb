// Records that a query finds and records that it does not.
#include "search/meta_search.h"

#include "search/records.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Record At(int hour, int minute = 0) { return {.hour = hour, .minute = minute}; }
Record With(std::int32_t CameraValues::*value, int number) {
    Record record;
    record.values.camera.*value = number;
    return record;
}
Record With(std::int32_t Estimations::*rating, int number) {
    Record record;
    record.values.estimations.*rating = number;
    return record;
}

// ---- the window of hours

std::vector<int> HoursOf(const std::string& query) {
    std::vector<int> hours;
    for (int hour = 0; hour < 24; ++hour)
        if (Finds(query, At(hour, 59)) && Finds(query, At(hour))) hours.push_back(hour);
    return hours;
}
std::vector<int> From(int first, int last) {
    std::vector<int> hours;
    for (int hour = first; hour <= last; ++hour) hours.push_back(hour);
    return hours;
}

TEST(QueryTime, WordsStandForHours) {
    EXPECT_EQ(HoursOf("time:morning"), From(6, 11));
    EXPECT_EQ(HoursOf("time:朝"), From(6, 11));
    EXPECT_EQ(HoursOf("time:afternoon"), From(11, 17));
    std::vector<int> night = From(0, 3);
    for (const int hour : From(18, 23)) night.push_back(hour);
    EXPECT_EQ(HoursOf("time:night"), night);
    EXPECT_EQ(HoursOf("time:夜"), night);
    EXPECT_EQ(HoursOf("time: 夜"), night);
}

TEST(QueryTime, NoonDiffersFromHiru) {
    EXPECT_EQ(HoursOf("time:noon"), From(11, 13));
    EXPECT_EQ(HoursOf("time:昼"), From(12, 17));
}

TEST(QueryTime, WindowMayReachPastMidnight) {
    EXPECT_EQ(HoursOf("time:22-26"), (std::vector<int>{0, 1, 22, 23}));
    EXPECT_EQ(HoursOf("time:22-24"), From(22, 23));
    EXPECT_EQ(HoursOf("time:23-25"), (std::vector<int>{0, 23}));
}

TEST(QueryTime, WindowInTheNextDayIsTakenIntoThisOne) {
    EXPECT_EQ(HoursOf("time:25-27"), From(1, 2));
    EXPECT_EQ(HoursOf("time:24-26"), From(0, 1));
    EXPECT_THAT(HoursOf("time:24-24"), IsEmpty());
}

TEST(QueryTime, LowIsInsideAndHighIsNot) {
    EXPECT_EQ(HoursOf("time:9-10"), From(9, 9));
    EXPECT_THAT(HoursOf("time:9-9"), IsEmpty());
    EXPECT_THAT(HoursOf("time:10-9"), IsEmpty());
}

TEST(QueryTime, WhatIsNoWindowFindsNothing) {
    for (const char* query : {"time:9", "time:", "time:x", "time:6~9", "time:dawn", "time:mornings"})
        EXPECT_THAT(HoursOf(query), IsEmpty()) << query;
}

// ---- numbers

TEST(QueryTests, RangesTakeTheLowEndAndLeaveTheHighOne) {
    const struct {
        const char* name;
        std::int32_t CameraValues::*value;
    } ranges[] = {{"iso:", &CameraValues::iso},
                  {"shutter:", &CameraValues::shutter},
                  {"brightness:", &CameraValues::brightness},
                  {"apeture:", &CameraValues::aperture}};
    for (const auto& range : ranges) {
        const std::string query = std::string(range.name) + "100~400";
        EXPECT_FALSE(Finds(query, With(range.value, 99))) << query;
        EXPECT_TRUE(Finds(query, With(range.value, 100))) << query;
        EXPECT_TRUE(Finds(query, With(range.value, 399))) << query;
        EXPECT_FALSE(Finds(query, With(range.value, 400))) << query;
        EXPECT_FALSE(Finds(std::string(range.name) + "100", With(range.value, 100))) << query;
        EXPECT_FALSE(Finds(std::string(range.name) + "x", With(range.value, 0))) << query;
    }
    EXPECT_TRUE(Finds("iso:-3", With(&CameraValues::iso, -1))) << "from -3 up to 0";
}

TEST(QueryTests, ModeAndFlashAreExact) {
    EXPECT_TRUE(Finds("mode:5", With(&CameraValues::mode, 5)));
    EXPECT_FALSE(Finds("mode:5", With(&CameraValues::mode, 4)));
    EXPECT_FALSE(Finds("mode:5", With(&CameraValues::mode, 25)));
    EXPECT_TRUE(Finds("flash:9", With(&CameraValues::flash, 9)));
    EXPECT_FALSE(Finds("flash:9", With(&CameraValues::flash, 1)));
}

TEST(QueryTests, ZeroTestsNothing) {
    for (const char* query : {"mode:0", "flash:0", "mode:x", "flash:x"}) {
        EXPECT_FALSE(Finds(query, Record{})) << query;
        const std::string withWord = std::string(query) + " cat";
        EXPECT_TRUE(Finds(withWord, {.name = "cat.jpg", .values = With(&CameraValues::mode, 3).values}))
            << query;
    }
}

TEST(QueryTests, NegativeModeCountsBesideAnotherTest) {
    EXPECT_FALSE(Finds("mode:-5", With(&CameraValues::mode, -5))) << "by itself it is no test";
    Record liked = With(&Estimations::like, 1);
    EXPECT_FALSE(Finds("mode:-5 tag:like", liked));
    liked.values.camera.mode = -5;
    EXPECT_TRUE(Finds("mode:-5 tag:like", liked));
}

TEST(QueryTests, TagsWantRatingsOfTheirSign) {
    const struct {
        const char* above;
        const char* below;
        std::int32_t Estimations::*rating;
    } tags[] = {{"tag:like", "tag:dislike", &Estimations::like},
                {"tag:public", "tag:private", &Estimations::privacy},
                {"tag:good", "tag:bad", &Estimations::good}};
    for (const auto& tag : tags) {
        EXPECT_TRUE(Finds(tag.above, With(tag.rating, 1))) << tag.above;
        EXPECT_FALSE(Finds(tag.above, With(tag.rating, 0))) << tag.above;
        EXPECT_FALSE(Finds(tag.above, With(tag.rating, -1))) << tag.above;
        EXPECT_TRUE(Finds(tag.below, With(tag.rating, -1))) << tag.below;
        EXPECT_FALSE(Finds(tag.below, With(tag.rating, 0))) << tag.below;
        EXPECT_FALSE(Finds(tag.below, With(tag.rating, 1))) << tag.below;
    }
    EXPECT_TRUE(Finds("tag:face", With(&CameraValues::face, 1)));
    EXPECT_FALSE(Finds("tag:face", With(&CameraValues::face, 0)));
}

TEST(QueryTests, AllHaveToHold) {
    Record record = At(8);
    record.name = "cat.jpg";
    record.values.camera.iso = 200;
    record.values.estimations.like = 64;
    EXPECT_TRUE(Finds("cat iso:100~400 tag:like time:morning", record));
    for (const char* query :
         {"dog iso:100~400 tag:like time:morning", "cat iso:400~800 tag:like time:morning",
          "cat iso:100~400 tag:face time:morning", "cat iso:100~400 tag:like time:night"})
        EXPECT_FALSE(Finds(query, record)) << query;
    EXPECT_TRUE(Finds("iso:100~400 time:morning", record)) << "tests and hours do without a word";
}

TEST(QueryTests, UnknownTagFindsNothing) {
    EXPECT_FALSE(Finds("tag:unknown", Record{}));
    EXPECT_FALSE(Finds("tag:flash", With(&CameraValues::flash, 9)));
    EXPECT_FALSE(Finds("tag:", Record{}));
    EXPECT_TRUE(Finds("tag:unknown a.jpg", Record{})) << "it is dropped, and the word is left";
}

// ---- words

TEST(QueryWords, AllOfThemAreWanted) {
    EXPECT_TRUE(Finds("cat dog", {.comment = "dogs and cats"}));
    EXPECT_FALSE(Finds("cat dog", {.comment = "cats"}));
    EXPECT_TRUE(Finds("cat dog", {.name = "cat.jpg", .comment = "a dog"}));
    EXPECT_TRUE(Finds("cat dog", {.name = "dogcat.jpg"}));
}

TEST(QueryWords, PathIsSearchedInEitherCase) {
    EXPECT_TRUE(Finds("img", {.name = "IMG_0042.JPG"}));
    EXPECT_TRUE(Finds("IMG", {.name = "img_0042.jpg"}));
    EXPECT_TRUE(Finds("g_0042.j", {.name = "IMG_0042.JPG"}));
    EXPECT_FALSE(Finds("img-0042", {.name = "IMG_0042.JPG"}));
}

TEST(QueryWords, FoldersAreSearchedToo) {
    EXPECT_TRUE(Finds("2008_1113", {.name = "a.jpg"}));
    EXPECT_TRUE(Finds("1113/a", {.name = "a.jpg"})) << "across the end of the folder";
    EXPECT_TRUE(Finds("life", {.name = "a.jpg"}));
    EXPECT_TRUE(Finds("walk/", {.name = "walk/a.jpg"}));
    EXPECT_FALSE(Finds("2009", {.name = "a.jpg"}));
}

TEST(QueryWords, NamesOfFilesAreNotFolded) {
    EXPECT_TRUE(Finds("花火", {.name = "花火.jpg"}));
    EXPECT_FALSE(Finds("さくら", {.name = "さくら.jpg"})) << "the word is half-width katakana by now";
    EXPECT_TRUE(Finds("さくら", {.name = "ｻｸﾗ.jpg"}));
}

TEST(QueryWords, CommentIsFoundInEveryWidthAndKind) {
    const Record record{.comment = "ｻｸﾗﾉ花見 2008 canon"};  // as the index folds it
    for (const char* query :
         {"さくら", "サクラ", "ｻｸﾗ", "さクラ", "花見", "２００８", "ＣＡＮＯＮ", "Canon", "さくらの花見"})
        EXPECT_TRUE(Finds(query, record)) << query;
    for (const char* query : {"さくらん", "花火", "２００９"}) EXPECT_FALSE(Finds(query, record)) << query;
}

TEST(QueryWords, CommentOfOneByteIsNotLookedAt) {
    EXPECT_FALSE(Finds("x", {.comment = "x"}));
    EXPECT_TRUE(Finds("x", {.comment = "xy"}));
    EXPECT_FALSE(Finds("ｶ", {.comment = "ｶ"})) << "one byte in the index file";
    EXPECT_TRUE(Finds("花", {.comment = "花"})) << "two bytes in the index file";
    EXPECT_TRUE(Finds("x", {.name = "x.jpg", .comment = "x"})) << "found in the path";
}

TEST(QueryWords, EmptyWordIsInEveryCommentAndInNoPath) {
    EXPECT_TRUE(Finds("a.jpg ", {.comment = "some words"}));
    EXPECT_FALSE(Finds("a.jpg ", {.comment = ""}));
    EXPECT_FALSE(Finds("a.jpg ", {.comment = "x"}));
    EXPECT_TRUE(Finds("  ", {.comment = "some words"}));
    EXPECT_FALSE(Finds("  ", {.comment = ""}));
}

TEST(QueryWords, QueryThatAsksNothingFindsNothing) {
    for (const char* query : {"or", "mode:0", "tag:unknown", "tag:flash flash:0"})
        EXPECT_FALSE(Finds(query, {.comment = "some words"})) << query;
}

TEST(QueryWords, RecordWithoutAPathIsPassedOver) {
    EXPECT_FALSE(Finds("words", {.name = "", .comment = "some words"}));
    EXPECT_FALSE(Finds("time:0-24", {.name = ""}));
}

// ---- alternatives

TEST(QueryOrMode, AnyWordInTheCommentWillDo) {
    EXPECT_TRUE(Finds("cat or dog", {.comment = "a cat"}));
    EXPECT_TRUE(Finds("cat or dog", {.comment = "a dog"}));
    EXPECT_FALSE(Finds("cat or dog", {.comment = "a bird"}));
    EXPECT_TRUE(Finds("or cat dog", {.comment = "a dog"}));
    EXPECT_FALSE(Finds("cat or dog", {.comment = "c"}));
}

TEST(QueryOrMode, WordInThePathLeavesTheRecordOut) {
    EXPECT_FALSE(Finds("cat or dog", {.name = "cat.jpg", .comment = "a dog"}));
    EXPECT_FALSE(Finds("cat or dog", {.name = "cat.jpg", .comment = "a cat"}));
    EXPECT_FALSE(Finds("cat or dog", {.name = "dog.jpg"}));
    // Only as far as the words are tried: the first one has matched.
    EXPECT_TRUE(Finds("cat or dog", {.name = "dog.jpg", .comment = "a cat"}));
    EXPECT_FALSE(Finds("tag:meal", {.name = "dinner.jpg", .comment = "no word of it"}));
    EXPECT_TRUE(Finds("tag:meal", {.name = "dinner.jpg", .comment = "lunch with us"}));
    EXPECT_FALSE(Finds("tag:meal", {.name = "breakfast.jpg", .comment = "lunch with us"}));
}

TEST(QueryOrMode, MealsAndDrinksAreFoundInComments) {
    for (const char* meal : {"breakfast", "lunch", "dinner"}) {
        EXPECT_TRUE(Finds("tag:meal", {.comment = std::string("our ") + meal}));
        EXPECT_TRUE(Finds("tag:食事", {.comment = std::string("our ") + meal}));
        EXPECT_FALSE(Finds("tag:sake", {.comment = std::string("our ") + meal}));
    }
    for (const char* drink : {"sake", "wine", "beer"})
        EXPECT_TRUE(Finds("tag:酒", {.comment = std::string("some ") + drink}));
}

TEST(QueryOrMode, TestsDoNotCount) {
    EXPECT_TRUE(Finds("tag:meal tag:like", {.comment = "lunch"})) << "the user has not rated it as liked";
    EXPECT_TRUE(Finds("cat or dog iso:100~200", {.comment = "a dog"}));
    EXPECT_FALSE(Finds("or tag:like", With(&Estimations::like, 64))) << "without a word nothing is left";
}

TEST(QueryOrMode, HoursCount) {
    EXPECT_TRUE(Finds("cat or dog time:9-12", {.comment = "a dog", .hour = 9}));
    EXPECT_FALSE(Finds("cat or dog time:9-12", {.comment = "a dog", .hour = 12}));
    EXPECT_TRUE(Finds("or time:9-12", At(9))) << "hours alone";
}

// ---- results

TEST(MetaSearch, ResultIsInTheOrderOfThePaths) {
    DayOfRecords day;
    for (const char* name : {"c.jpg", "a.jpg", "B.jpg", "d.txt"}) day.Add({.name = name});
    EXPECT_THAT(day.Find("jpg"), ElementsAre("B.jpg", "a.jpg", "c.jpg"));
    EXPECT_THAT(day.Find("txt"), ElementsAre("d.txt"));
    EXPECT_THAT(day.Find("gif"), IsEmpty());
}

TEST(MetaSearch, DayWithoutAMatchIsNotInTheResult) {
    FoundDays found;
    const QueryMatcher matcher(ParseQuery("cat"));
    matcher.MetaSearch(DayOfRecords().Add({.name = "dog.jpg"}).Make(), found);
    matcher.MetaSearch(std::make_shared<DayIndex>(), found);
    EXPECT_THAT(found, IsEmpty());
}

TEST(MetaSearch, RecordsArePointedAtAndNotCopied) {
    const auto day = DayOfRecords().Add({.name = "cat.jpg"}).Make();
    FoundDays found;
    QueryMatcher(ParseQuery("cat")).MetaSearch(day, found);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].day, day);
    EXPECT_EQ(&found[0].Entry(0), day->entries[0].get());
}

}  // namespace
}  // namespace kalmora
