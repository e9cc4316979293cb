// Dates typed by hand.
#include "app/jump_dialog.h"

#include <gtest/gtest.h>

namespace kalmora {
namespace {

constexpr CalendarDate kNone{-1, -1, -1};

CalendarDate Read(std::string_view text) { return ParseJumpText(text).value_or(kNone); }

TEST(JumpText, EveryFormIsUnderstood) {
    const struct {
        const char* text;
        CalendarDate date;
    } rows[] = {
        {"20081113", {2008, 11, 13}},   {"2008/11/13", {2008, 11, 13}}, {"2008/5/6", {2008, 5, 6}},
        {"2008.11.13", {2008, 11, 13}}, {"2008.5.6", {2008, 5, 6}},     {"200805", {2008, 5, 0}},
        {"2008/05", {2008, 5, 0}},      {"2008/5", {2008, 5, 0}},       {"2008.05", {2008, 5, 0}},
        {"2008.5", {2008, 5, 0}},       {"2008", {2008, 0, 0}},         {"8", {8, 0, 0}},
    };
    for (const auto& row : rows) EXPECT_EQ(Read(row.text), row.date) << row.text;
}

TEST(JumpText, FirstFormThatIsFilledWins) {
    EXPECT_EQ(Read("2008113"), (CalendarDate{2008, 11, 3})) << "three fields without a separator";
    EXPECT_EQ(Read("2008/11/13 and more"), (CalendarDate{2008, 11, 13})) << "the rest does not matter";
    EXPECT_EQ(Read("99999"), (CalendarDate{9999, 9, 0})) << "two fields";
    EXPECT_EQ(Read("2008-11"), kNone) << "three fields, and a month of -1";
    EXPECT_EQ(Read("2008 11 13"), (CalendarDate{2008, 11, 13})) << "blanks before a number do not count";
    EXPECT_EQ(Read("  20081113"), (CalendarDate{2008, 11, 13}));
}

TEST(JumpText, WhatIsNoDateGoesNowhere) {
    for (const char* text :
         {"", " ", "x", "/2008", "2008/13", "2008/2/30", "20081332", "0", "-8", "99999999999999999999"})
        EXPECT_EQ(Read(text), kNone) << text;
}

TEST(JumpText, OnlySoMuchTextIsLookedAt) {
    EXPECT_EQ(Read(std::string(1020, ' ') + "2008/5"), (CalendarDate{2008, 0, 0}));
    EXPECT_EQ(Read(std::string(1024, ' ') + "2008"), kNone);
}

}  // namespace
}  // namespace kalmora
