#include <gtest/gtest.h>

#include <random>

#include "text/text.h"

namespace kalmora::text {
namespace {

TEST(EucJp, DecodesTextOfAllItsSets) {
    EXPECT_EQ(FromEucJp("abc \xC6\xFC\xCB\xDC\xB8\xEC\n"), "abc 日本語\n");
    EXPECT_EQ(FromEucJp("\xA4\xA2\xA5\xA2"), "あア");
    EXPECT_EQ(FromEucJp("\x8E\xB1\x8E\xDF"), "ｱﾟ");
    EXPECT_EQ(FromEucJp("\xAD\xA1"), "①");
    EXPECT_EQ(FromEucJp("\xA1\xC1"), "～");
    EXPECT_EQ(FromEucJp("\xA1\xA1\xF4\xA6"), "　熙") << "the first and the last of the table";
    EXPECT_EQ(FromEucJp("\xA1\xDF\xA1\xE0"), "×÷")
        << "on both sides of the byte that code page 932 leaves out";
}

TEST(EucJp, PutsAReplacementForWhatItCannotRead) {
    EXPECT_EQ(FromEucJp("\x8F\xB0\xA1x"), "\uFFFDx");
    EXPECT_EQ(FromEucJp("\xC6"), "\uFFFD");
    EXPECT_EQ(FromEucJp("\xC6x"), "\uFFFDx");
    EXPECT_EQ(FromEucJp("\x8E"), "\uFFFD");
    EXPECT_EQ(FromEucJp("\x8E\xE0"), "\uFFFD\uFFFD");
    EXPECT_EQ(FromEucJp("\x8F\xA1"), "\uFFFD\uFFFD");
    EXPECT_EQ(FromEucJp("\xFF\x80"), "\uFFFD\uFFFD");
    EXPECT_EQ(FromEucJp("\xA9\xA1"), "\uFFFD") << "a row without characters";
    EXPECT_EQ(FromEucJp(""), "");
}

TEST(Iso2022Jp, FollowsItsDesignations) {
    EXPECT_EQ(FromIso2022Jp("abc \x1B$B\x46\x7C\x4B\x5C\x38\x6C\x1B(B def"), "abc 日本語 def");
    EXPECT_EQ(FromIso2022Jp("\x1B$@\x46\x7C\x1B(J\\"), "日\\");
    EXPECT_EQ(FromIso2022Jp("\x1B(I\x31\x32\x1B(B1"), "ｱｲ1");
    EXPECT_EQ(FromIso2022Jp("\x1B$(D\x30\x21\x1B(Bx"), "\uFFFDx");
    EXPECT_EQ(FromIso2022Jp("\x1B$B\x2D\x21"), "①");
}

TEST(Iso2022Jp, BeginsEachLineInAscii) { EXPECT_EQ(FromIso2022Jp("\x1B$B\x46\x7C\nabc"), "日\nabc"); }

TEST(Iso2022Jp, PutsAReplacementForWhatItCannotRead) {
    EXPECT_EQ(FromIso2022Jp("\x1B$B\x46"), "\uFFFD");
    EXPECT_EQ(FromIso2022Jp("\x1B$B\x46\x1B(Bx"), "\uFFFDx");
    EXPECT_EQ(FromIso2022Jp("\x1B$B\x29\x21"), "\uFFFD") << "a row without characters";
    EXPECT_EQ(FromIso2022Jp("\x1B(Zx"), "\x1B(Zx") << "an unknown escape is left";
    EXPECT_EQ(FromIso2022Jp("\x80\xFF"), "\uFFFD\uFFFD");
    EXPECT_EQ(FromIso2022Jp("\x1B(I\x7E"), "\uFFFD");
    EXPECT_EQ(FromIso2022Jp("\x1B"), "\x1B");
}

TEST(Iso2022Jp, TakesEightBitKatakana) { EXPECT_EQ(FromIso2022Jp("\xB1"), "ｱ"); }

TEST(OldEncodings, GiveValidTextForAnyBytes) {
    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes(random() % 16, '\0');
        for (char& c : bytes) c = static_cast<char>(random());
        ASSERT_TRUE(IsValidUtf8(FromEucJp(bytes))) << round;
        ASSERT_TRUE(IsValidUtf8(FromIso2022Jp(bytes))) << round;
    }
}

}  // namespace
}  // namespace kalmora::text
