#include "media/estimation_writer.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace kalmora {
namespace {

constexpr CalendarDate kSixth{2008, 5, 6}, kSeventh{2008, 5, 7};

// A photo's text and values under one rating after the other.
struct RatedText {
    std::string text;
    Estimations values;

    RatedText& Say(EstimateType type, const CalendarDate& day = kSixth) {
        const EstimateStep step = StepEstimate(text, values, type, day);
        text = step.text;
        values = step.values;
        // What is written is what is read.
        EXPECT_EQ(ParseEstimations(text), values);
        return *this;
    }
};

std::string LineOf(const std::string& elements) { return "\n<estimations>" + elements + "</estimations>"; }

struct FirstRating {
    EstimateType type;
    const char* axis;
    int value;
    Estimations after;
};

void PrintTo(const FirstRating& row, std::ostream* out) { *out << row.axis << ' ' << row.value; }

class EachRating : public testing::TestWithParam<FirstRating> {};
INSTANTIATE_TEST_SUITE_P(StepEstimate, EachRating,
                         testing::Values(FirstRating{EstimateType::Like, "like", 128, {.like = 128}},
                                         FirstRating{EstimateType::Public, "privacy", 128, {.privacy = 128}},
                                         FirstRating{EstimateType::Good, "good", 128, {.good = 128}},
                                         FirstRating{EstimateType::Dislike, "like", -128, {.like = -128}},
                                         FirstRating{
                                             EstimateType::Private, "privacy", -128, {.privacy = -128}},
                                         FirstRating{EstimateType::Bad, "good", -128, {.good = -128}}));

TEST_P(EachRating, MakesABlockAtTheEndOfATextWithout) {
    const FirstRating& row = GetParam();
    const EstimateStep step = StepEstimate("typed by hand", {}, row.type, kSixth);
    const std::string value = std::to_string(row.value);
    EXPECT_EQ(step.text, "typed by hand" + LineOf("<estimation type='" + std::string(row.axis) + "' value='" +
                                                  value + "' last='128'><log date='2008/05/06' value='" +
                                                  value + "'/></estimation>"));
    EXPECT_EQ(step.values, row.after);
    EXPECT_EQ(ParseEstimations(step.text), row.after);
}

TEST_P(EachRating, OnAnAxisThatWasNeverRatedComesFirstInTheBlock) {
    const FirstRating& row = GetParam();
    const bool isLike = std::string(row.axis) == "like";
    RatedText photo;
    photo.Say(isLike ? EstimateType::Good : EstimateType::Like);
    const std::string before = photo.text.substr(std::string("\n<estimations>").size());
    photo.Say(row.type, kSeventh);
    const std::string value = std::to_string(row.value);
    EXPECT_EQ(photo.text, "\n<estimations><estimation type='" + std::string(row.axis) + "' value='" + value +
                              "' last='128'><log date='2008/05/07' value='" + value + "'/></estimation>" +
                              before);
}

// The example of the format's description, to the byte.
TEST(StepEstimate, OfTwoDaysIsNewestFirst) {
    RatedText photo;
    photo.Say(EstimateType::Like).Say(EstimateType::Like, kSeventh).Say(EstimateType::Bad, kSeventh);
    EXPECT_EQ(
        photo.text,
        "\n<estimations><estimation type='good' value='-128' last='128'><log date='2008/05/07' value='-128'/>"
        "</estimation><estimation type='like' value='192' last='64'><log date='2008/05/07' value='192'/>"
        "<log date='2008/05/06' value='128'/></estimation></estimations>");
}

TEST(StepEstimate, OfThreeLikesHalvesItsSteps) {
    RatedText photo;
    EXPECT_EQ(photo.Say(EstimateType::Like).values.like, 128);
    EXPECT_EQ(photo.Say(EstimateType::Like).values.like, 192);
    EXPECT_NE(photo.text.find("value='192' last='64'"), std::string::npos);
    EXPECT_EQ(photo.Say(EstimateType::Like).values.like, 224);
    EXPECT_EQ(photo.text,
              LineOf("<estimation type='like' value='224' last='32'><log date='2008/05/06' value='224'/>"
                     "<log date='2008/05/06' value='192'/><log date='2008/05/06' value='128'/>"
                     "</estimation>"));
}

TEST(StepEstimate, GoesOnByOneWithoutABound) {
    for (const auto& [type, sign] : {std::pair{EstimateType::Like, 1}, {EstimateType::Dislike, -1}}) {
        RatedText photo;
        for (const int value : {128, 192, 224, 240, 248, 252, 254, 255, 256, 257, 258})
            EXPECT_EQ(photo.Say(type).values.like, sign * value);
    }
}

TEST(StepEstimate, InTheOtherDirectionGoesOnHalvingAndThroughZero) {
    RatedText photo;
    EXPECT_EQ(photo.Say(EstimateType::Like).values.like, 128);
    EXPECT_EQ(photo.Say(EstimateType::Dislike).values.like, 64);
    EXPECT_EQ(photo.Say(EstimateType::Dislike).values.like, 32);
    std::vector<int> values;
    for (int i = 0; i < 8; ++i) values.push_back(photo.Say(EstimateType::Dislike).values.like);
    EXPECT_EQ(values, (std::vector<int>{16, 8, 4, 2, 1, 0, -1, -2}));
}

TEST(StepEstimate, OfPrivateAfterPublicIsStillPublic) {
    RatedText photo;
    EXPECT_EQ(photo.Say(EstimateType::Public).values.privacy, 128);
    EXPECT_EQ(photo.Say(EstimateType::Private).values.privacy, 64);
    EXPECT_EQ(RatedText{}.Say(EstimateType::Private).values.privacy, -128);
}

TEST(StepEstimate, LeavesTheOtherAxesAndTheWordsAround) {
    RatedText photo;
    photo.text = "in front";
    photo.Say(EstimateType::Good).Say(EstimateType::Private).Say(EstimateType::Like);
    photo.text += "behind";
    const std::string before = photo.text;
    photo.Say(EstimateType::Good);
    EXPECT_EQ(photo.values, (Estimations{.like = 128, .good = 192, .privacy = -128}));
    std::string expected = before;
    const std::string head = "<estimation type='good' value='128' last='128'>";
    expected.replace(expected.find(head), head.size(),
                     "<estimation type='good' value='192' last='64'><log date='2008/05/06' value='192'/>");
    EXPECT_EQ(photo.text, expected);
}

TEST(StepEstimate, OfClearTakesTheBlockAndWhatStandsInFront) {
    RatedText photo{"my words", {}};
    photo.Say(EstimateType::Like).Say(EstimateType::Bad);
    photo.text += "and these stay";
    photo.Say(EstimateType::Clear);
    EXPECT_EQ(photo.text, "and these stay");
    EXPECT_EQ(photo.values, Estimations{});
    EXPECT_EQ(photo.Say(EstimateType::Dislike).values.like, -128) << "as if it had never been rated";
}

TEST(StepEstimate, OfClearWithoutABlockChangesNothing) {
    for (const char* text : {"", "my words", "</estimations>"}) {
        const EstimateStep step = StepEstimate(text, {}, EstimateType::Clear, kSixth);
        EXPECT_EQ(step.text, text);
        EXPECT_EQ(step.values, Estimations{});
    }
}

TEST(StepEstimate, OfClearWithoutTheEndOfTheBlockComesBackWithTheNextReading) {
    const std::string text = "words<estimations><estimation type='like' value='192' last='64'>";
    const EstimateStep step = StepEstimate(text, {.like = 192}, EstimateType::Clear, kSixth);
    EXPECT_EQ(step.text, text);
    EXPECT_EQ(step.values, Estimations{});
    EXPECT_EQ(ParseEstimations(step.text).like, 192);
}

TEST(StepEstimate, OfAHeadThatCannotBeReadStaysAtZero) {
    for (const char* head :
         {"<estimation type='like' value='x' last='64'>", "<estimation type='like' value='192'>",
          "<estimation type='like'>", "<estimation type='like' value='192' last='+-1'>",
          "<estimation type='like' value='99999999999' last='1'>"}) {
        RatedText photo{LineOf(std::string(head) + "</estimation>"), {}};
        photo.values = ParseEstimations(photo.text);
        for (int i = 0; i < 2; ++i) {
            const EstimateStep step = StepEstimate(photo.text, photo.values, EstimateType::Like, kSixth);
            EXPECT_EQ(step.values.like, 0) << head;
            EXPECT_NE(step.text.find("<estimations><estimation type='like' value='0' last='0'>"
                                     "<log date='2008/05/06' value='0'/>"),
                      std::string::npos)
                << step.text;
            photo.text = step.text;
        }
    }
}

TEST(StepEstimate, ReadsAHeadAsAScanDoes) {
    const EstimateStep step =
        StepEstimate(LineOf("<estimation type='like'  value=' +10' \n last='6'></estimation>"), {},
                     EstimateType::Like, kSixth);
    EXPECT_EQ(step.values.like, 13);
    EXPECT_EQ(
        step.text,
        LineOf(
            "<estimation type='like' value='13' last='3'><log date='2008/05/06' value='13'/></estimation>"));
}

TEST(StepEstimate, OfAnElementWithoutEndTakesItsHeadAway) {
    const EstimateStep step = StepEstimate(" <estimations><estimation type='like' value='10' last='6'", {},
                                           EstimateType::Like, kSixth);
    EXPECT_EQ(
        step.text,
        " <estimations><estimation type='like' value='13' last='3'><log date='2008/05/06' value='13'/>");
}

// An element at the very beginning is not seen by a reading, so a second one is made.
TEST(StepEstimate, DoesNotSeeAnElementAtTheVeryBeginning) {
    const std::string text = "<estimation type='like' value='5' last='1'><estimations></estimations>";
    const EstimateStep step = StepEstimate(text, {}, EstimateType::Like, kSixth);
    EXPECT_EQ(step.values.like, 128);
    EXPECT_EQ(step.text.find(text.substr(0, 40)), 0u);
}

TEST(StepEstimate, OfForeignNumbersStaysInsideItsRange) {
    constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();
    for (const int value : {kMost, kLeast, 0})
        for (const int last : {kMost, kLeast, kMost - 1, -1, -2, -3}) {
            const std::string text = LineOf("<estimation type='good' value='" + std::to_string(value) +
                                            "' last='" + std::to_string(last) + "'></estimation>");
            for (const EstimateType type : {EstimateType::Good, EstimateType::Bad}) {
                const EstimateStep step = StepEstimate(text, ParseEstimations(text), type, kSixth);
                EXPECT_EQ(ParseEstimations(step.text), step.values) << text;
            }
        }
    const EstimateStep step = StepEstimate(
        LineOf("<estimation type='good' value='10' last='-3'></estimation>"), {}, EstimateType::Good, kSixth);
    EXPECT_EQ(step.values.good, 9) << "-1 is what is left of half of -3 and a half";
}

TEST(StepEstimate, EndsAtAZeroByteAndKeepsAnyOther) {
    std::string bytes;
    for (int c = 1; c < 256; ++c) bytes.push_back(static_cast<char>(c));
    const EstimateStep step = StepEstimate(bytes + std::string("\0gone", 5), {}, EstimateType::Like, kSixth);
    EXPECT_EQ(step.text.substr(0, 255), bytes);
    EXPECT_EQ(step.text.find("gone"), std::string::npos);
}

TEST(StepEstimate, OfATypeThatIsNoneChangesNothing) {
    for (const int type : {0, 8, -1, 1000}) {
        const EstimateStep step = StepEstimate("words", {.like = 5}, static_cast<EstimateType>(type), kSixth);
        EXPECT_EQ(step.text, "words");
        EXPECT_EQ(step.values.like, 5);
    }
}

}  // namespace
}  // namespace kalmora
