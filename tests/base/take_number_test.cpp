// Numbers at the front of a text.
#include "base/take_number.h"

#include <gtest/gtest.h>

namespace kalmora {
namespace {

struct Taken {
    std::optional<int> number;
    std::string_view rest;
    bool operator==(const Taken&) const = default;
};
Taken Take(std::string_view text, std::size_t width = 0) {
    const std::optional<int> number = TakeNumber(text, width);
    return {number, text};
}

TEST(TakeNumber, TakesDigitsAndLeavesTheRest) {
    EXPECT_EQ(Take("12"), (Taken{12, ""}));
    EXPECT_EQ(Take("12-34"), (Taken{12, "-34"}));
    EXPECT_EQ(Take("007x"), (Taken{7, "x"}));
}

TEST(TakeNumber, BlanksAndASignMayStandInFront) {
    EXPECT_EQ(Take(" \t\n12"), (Taken{12, ""}));
    EXPECT_EQ(Take("-12"), (Taken{-12, ""}));
    EXPECT_EQ(Take("+12"), (Taken{12, ""}));
    EXPECT_EQ(Take("--12"), (Taken{std::nullopt, "--12"}));
    EXPECT_EQ(Take("- 12"), (Taken{std::nullopt, "- 12"}));
}

TEST(TakeNumber, NothingIsTakenWhereNoNumberStands) {
    EXPECT_EQ(Take(""), (Taken{std::nullopt, ""}));
    EXPECT_EQ(Take("x1"), (Taken{std::nullopt, "x1"}));
    EXPECT_EQ(Take("  x"), (Taken{std::nullopt, "x"}));
    EXPECT_EQ(Take("-"), (Taken{std::nullopt, "-"}));
}

TEST(TakeNumber, WidthCountsTheSign) {
    EXPECT_EQ(Take("20081113", 4), (Taken{2008, "1113"}));
    EXPECT_EQ(Take("  20081113", 4), (Taken{2008, "1113"}));
    EXPECT_EQ(Take("-20081113", 4), (Taken{-200, "81113"}));
    EXPECT_EQ(Take("12", 4), (Taken{12, ""}));
    EXPECT_EQ(Take("-1", 1), (Taken{std::nullopt, "-1"}));
}

TEST(TakeNumber, NumberTooLargeIsTheLargest) {
    EXPECT_EQ(Take("2147483647"), (Taken{2147483647, ""}));
    EXPECT_EQ(Take("2147483648"), (Taken{2147483647, ""}));
    EXPECT_EQ(Take("-99999999999999999999 "), (Taken{-2147483647, " "}));
}

}  // namespace
}  // namespace kalmora
