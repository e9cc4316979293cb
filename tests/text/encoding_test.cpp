#include "text/encoding.h"

#include <gtest/gtest.h>

#include <string>

#include "text/text.h"

namespace kalmora {
namespace {

using namespace std::string_literals;

const std::string kUtf8Text = "今日は海へ行った。\n写真を三枚とった。";
const std::string kEucJpText =
    "\xBA\xA3\xC6\xFC\xA4\xCF\xB3\xA4\xA4\xD8\xB9\xD4\xA4\xC3\xA4\xBF\xA1\xA3\n"
    "\xBC\xCC\xBF\xBF\xA4\xF2\xBB\xB0\xCB\xE7\xA4\xC8\xA4\xC3\xA4\xBF\xA1\xA3";
const std::string kShiftJisText =
    "\x8D\xA1\x93\xFA\x82\xCD\x8A\x43\x82\xD6\x8D\x73\x82\xC1\x82\xBD\x81\x42\n"
    "\x8E\xCA\x90\x5E\x82\xF0\x8E\x4F\x96\x87\x82\xC6\x82\xC1\x82\xBD\x81\x42";
const std::string kIso2022JpText = "\x1B$B:#F|$O3$$X9T$C$?!#\x1B(B\n\x1B$B<L??$r;0Kg$H$C$?!#\x1B(B";

TEST(DetectEncoding, AByteOrderMarkDecides) {
    EXPECT_EQ(DetectEncoding("\xFF\xFE\x00\x30"s), 4);
    EXPECT_EQ(DetectEncoding("\xFE\xFF\x30\x00"s), 7);
    EXPECT_EQ(DetectEncoding("\xEF\xBB\xBF" + kShiftJisText), 5);
    EXPECT_EQ(DetectEncoding("\xFF\xFE"s), 4);
    EXPECT_EQ(DetectEncoding("\xEF\xBB\xBF"s), 5);
}

TEST(DetectEncoding, EachEncodingIsFoundByWhatItExplains) {
    EXPECT_EQ(DetectEncoding(kShiftJisText), 0);
    EXPECT_EQ(DetectEncoding(kIso2022JpText), 2);
    EXPECT_EQ(DetectEncoding(kEucJpText), 3);
    EXPECT_EQ(DetectEncoding(kUtf8Text), 5);
}

TEST(DetectEncoding, TwoCharactersAreEnough) {
    EXPECT_EQ(DetectEncoding("日本"), 5);
    EXPECT_EQ(DetectEncoding("\xC6\xFC\xCB\xDC"), 3);
    EXPECT_EQ(DetectEncoding("\x93\xFA\x96\x7B"), 0);
    EXPECT_EQ(DetectEncoding("\x1B$BF|K\\\x1B(B"), 2);
}

TEST(DetectEncoding, PlainTextIsUndecided) {
    EXPECT_EQ(DetectEncoding(""), 0);
    EXPECT_EQ(DetectEncoding("plain text, nothing else\n"), 0);
    EXPECT_EQ(DetectEncoding("\x1B(B plain \x1B(J"), 0);
    EXPECT_EQ(DetectEncoding("\0\0\0"s), 0);
}

TEST(DetectEncoding, BytesThatNoDecoderReadsAreUndecided) {
    EXPECT_EQ(DetectEncoding("\x80\xFF\x80\xFF"), 0);
    EXPECT_EQ(DetectEncoding("a\x85"), 0);
}

TEST(DetectEncoding, AccentedLettersOfUtf8AreNoKanji) {
    for (const char* note :
         {"caf\u00E9", "10\u00B0", "Fr\u00FChst\u00FCck mit K\u00E4se", "\u00E9", "na\u00EFve\n"})
        EXPECT_EQ(DetectEncoding(note), 5) << note;
    EXPECT_EQ(DecodeText("Fr\u00FChst\u00FCck mit K\u00E4se"), "Fr\u00FChst\u00FCck mit K\u00E4se");
}

TEST(DetectEncoding, OneByteThatIsNoUtf8LeavesTheDecisionToTheCounts) {
    EXPECT_EQ(DetectEncoding("caf\xC3\xA9 \x93\xFA\x96\x7B"), 0);
    EXPECT_EQ(DetectEncoding("caf\xC3"), 0);
    EXPECT_EQ(DetectEncoding(kUtf8Text + "\xE3"), 5) << "nearly all of it is UTF-8";
}

TEST(DetectEncoding, HalfWidthKatakanaAreNoEucJp) {
    EXPECT_EQ(DetectEncoding("\xB6\xC0\xB6\xC5"), 0);
    EXPECT_EQ(DetectEncoding("\xB1\xB2\xB3\xB4"), 0);
    EXPECT_EQ(DetectEncoding("\xC3\xBD\xC4"), 0);
    EXPECT_EQ(DetectEncoding("[Memo]\n\xB6\xB2\xD3\xC9 \xB6\xB3\n"), 0);
    EXPECT_EQ(DetectEncoding("\xA4\xC7\xA4\xB9"), 3) << "hiragana of EUC-JP, all of it in the same range";
}

TEST(DetectEncoding, HiraganaOfUtf8IsExplainedByCodePage932Too) {
    EXPECT_EQ(DetectEncoding("\xE3\x81\x82\xE3\x81\x84"), 5);
}

TEST(DetectEncoding, ALongLineOfUtf8MayBeCutInTheMiddleOfACharacter) {
    std::string line(4095, 'x');
    EXPECT_EQ(DetectEncoding("\u00E9" + line + "\xC3"), 5);
    EXPECT_EQ(DetectEncoding("\u00E9" + line + "\xF0\x9F\x98"), 5);
    EXPECT_NE(DetectEncoding("\u00E9" + line + "\xC3" + "xxx"), 5);
}

TEST(DetectEncoding, ALongTextCutInTheMiddleOfACharacterIsJudgedLikeTheWhole) {
    const auto longText = [](const std::string& part) {
        std::string text;
        while (text.size() < 5000) text += part + "\n";
        return text;
    };
    const std::string utf8 = longText(kUtf8Text), euc = longText(kEucJpText),
                      shiftJis = longText(kShiftJisText);
    for (std::size_t length = 4900; length <= 5000; ++length) {
        EXPECT_EQ(DetectEncoding(utf8.substr(0, length)), 5) << length;
        EXPECT_EQ(DetectEncoding(euc.substr(0, length)), 3) << length;
        EXPECT_EQ(DetectEncoding(shiftJis.substr(0, length)), 0) << length;
    }
}

TEST(DecodeText, EachEncodingBecomesTheSameText) {
    EXPECT_EQ(DecodeText(kUtf8Text), kUtf8Text);
    EXPECT_EQ(DecodeText(kEucJpText), kUtf8Text);
    EXPECT_EQ(DecodeText(kShiftJisText), kUtf8Text);
    EXPECT_EQ(DecodeText(kIso2022JpText), kUtf8Text);
}

TEST(DecodeText, TheByteOrderMarkIsDropped) {
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF" + kUtf8Text), kUtf8Text);
    EXPECT_EQ(DecodeText("\xFF\xFE" + text::ToUtf16(kUtf8Text, false)), kUtf8Text);
    EXPECT_EQ(DecodeText("\xFE\xFF" + text::ToUtf16(kUtf8Text, true)), kUtf8Text);
    EXPECT_EQ(DecodeText("\xFF\xFE"s), "");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF"s), "");
}

TEST(DecodeText, AMarkOfAnotherEncodingIsNotDropped) {
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF", kEncodingEucJp), text::FromEucJp("\xEF\xBB\xBF"));
}

TEST(DecodeText, HalfACharacterAtTheEndOfUtf16DoesNoHarm) {
    EXPECT_TRUE(text::IsValidUtf8(DecodeText("\xFF\xFE\x42\x30\x44"s)));
    EXPECT_TRUE(text::IsValidUtf8(DecodeText("\xFF\xFE\x00\xD8"s)));
}

TEST(EncodeText, TextOfTheCodePageIsWrittenInIt) {
    EXPECT_EQ(EncodeText(kUtf8Text), kShiftJisText);
    EXPECT_EQ(EncodeText("plain\n"), "plain\n");
    EXPECT_EQ(EncodeText(""), "");
}

TEST(EncodeText, TextBeyondTheCodePageIsWrittenAsMarkedUtf8) {
    EXPECT_EQ(EncodeText("海 😀"), "\xEF\xBB\xBF海 😀");
}

TEST(EncodeText, WhatIsWrittenIsReadBackAsItWas) {
    for (const std::string& text :
         {"ｱｲｳｴ"s, "é"s, "café"s, "ﾃｽﾄ"s, "～①㈱"s, "\xEF\xBB\xBF marked"s, "\x1B$B!!"s, kUtf8Text})
        EXPECT_EQ(DecodeText(EncodeText(text)), text) << text;
}

}  // namespace
}  // namespace kalmora
