#include "media/estimation.h"

#include <gtest/gtest.h>

#include <string>

namespace kalmora {
namespace {

const std::string kTwoAxes =
    "\n<estimations><estimation type='good' value='-128' last='128'><log date='2008/05/07' value='-128'/>"
    "</estimation><estimation type='like' value='192' last='64'><log date='2008/05/07' value='192'/>"
    "<log date='2008/05/06' value='128'/></estimation></estimations>";

std::string Block(const std::string& elements) { return "<estimations>" + elements + "</estimations>"; }

TEST(ParseEstimations, ReadsEachAxisThatWasJudged) {
    EXPECT_EQ(ParseEstimations(kTwoAxes), (Estimations{.like = 192, .good = -128}));
    EXPECT_EQ(ParseEstimations(Block("<estimation type='privacy' value='64' last='64'></estimation>")),
              (Estimations{.privacy = 64}));
}

TEST(ParseEstimations, FindsTheBlockBehindOtherText) {
    EXPECT_EQ(ParseEstimations("typed by hand" + kTwoAxes + "more").like, 192);
}

TEST(ParseEstimations, OfATextWithoutBlockIsZero) {
    EXPECT_EQ(ParseEstimations(""), Estimations{});
    EXPECT_EQ(ParseEstimations("<estimation type='like' value='192' last='64'>"), Estimations{});
    EXPECT_EQ(ParseEstimations(" <Estimations><estimation type='like' value='192'>"), Estimations{});
}

TEST(ParseEstimations, DoesWithoutTheEndOfTheBlock) {
    EXPECT_EQ(ParseEstimations("<estimations><estimation type='like' value='5' last='1'>").like, 5);
}

TEST(ParseEstimations, TakesAnElementAtTheVeryBeginningForMissing) {
    const std::string element = "<estimation type='like' value='5' last='1'>";
    EXPECT_EQ(ParseEstimations(element + "<estimations>").like, 0);
    EXPECT_EQ(ParseEstimations(" " + element + "<estimations>").like, 5);
}

TEST(ParseEstimations, ReadsNumbersAsAScanDoes) {
    const auto like = [](const std::string& value) {
        return ParseEstimations(Block("<estimation type='like' " + value)).like;
    };
    EXPECT_EQ(like("value='-7' last='1'>"), -7);
    EXPECT_EQ(like("  value='+7'"), 7);
    EXPECT_EQ(like("value=' 7'"), 7);
    EXPECT_EQ(like("value='7"), 7);
    EXPECT_EQ(like("value='7x'"), 7);
    EXPECT_EQ(like("value=''"), 0);
    EXPECT_EQ(like("value='x'"), 0);
    EXPECT_EQ(like("value=\"7\""), 0);
    EXPECT_EQ(like("last='1' value='7'"), 0);
    EXPECT_EQ(like("value='+-7'"), 0);
    EXPECT_EQ(like("value='99999999999999999999'"), 0);
    EXPECT_EQ(like(""), 0);
}

TEST(ParseEstimations, TakesTheFirstElementOfAnAxis) {
    EXPECT_EQ(ParseEstimations(Block("<estimation type='like' value='1' last='1'></estimation>"
                                     "<estimation type='like' value='2' last='1'></estimation>"))
                  .like,
              1);
}

TEST(ParseEstimations, EndsAtAZeroByte) {
    EXPECT_EQ(ParseEstimations(Block("") + std::string(1, '\0') + "<estimation type='like' value='1'"),
              Estimations{});
    // The mark-up as 16-bit characters is not found.
    std::string wide;
    for (const char c : kTwoAxes) wide += std::string{c, '\0'};
    EXPECT_EQ(ParseEstimations(wide), Estimations{});
}

struct ScaleRow {
    int like;
    double factor;
};

void PrintTo(const ScaleRow& row, std::ostream* out) { *out << row.like; }

class EstimateScaleRow : public testing::TestWithParam<ScaleRow> {};
INSTANTIATE_TEST_SUITE_P(EachBound, EstimateScaleRow,
                         testing::Values(ScaleRow{0, 1.0}, ScaleRow{255, 2.0}, ScaleRow{248, 2.0},
                                         ScaleRow{247, 1.8}, ScaleRow{240, 1.8}, ScaleRow{239, 1.6},
                                         ScaleRow{224, 1.6}, ScaleRow{223, 1.4}, ScaleRow{192, 1.4},
                                         ScaleRow{191, 1.2}, ScaleRow{128, 1.2}, ScaleRow{127, 1.1},
                                         ScaleRow{64, 1.1}, ScaleRow{63, 1.0}, ScaleRow{1, 1.0},
                                         ScaleRow{-63, 1.0}, ScaleRow{-64, 0.9}, ScaleRow{-127, 0.9},
                                         ScaleRow{-128, 0.8}, ScaleRow{-191, 0.8}, ScaleRow{-192, 0.7},
                                         ScaleRow{-223, 0.7}, ScaleRow{-224, 0.5}, ScaleRow{-239, 0.5},
                                         ScaleRow{-240, 0.4}, ScaleRow{-247, 0.4}, ScaleRow{-248, 0.2},
                                         ScaleRow{-2147483647, 0.2}, ScaleRow{2147483647, 2.0}));

TEST_P(EstimateScaleRow, HasItsFactor) {
    EXPECT_DOUBLE_EQ(EstimateScale(GetParam().like), GetParam().factor);
}

}  // namespace
}  // namespace kalmora
