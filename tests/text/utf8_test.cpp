#include <gtest/gtest.h>

#include "text/text.h"

namespace kalmora::text {
namespace {

std::string Encoded(char32_t value) {
    std::string out;
    AppendUtf8(out, value);
    return out;
}

std::span<const std::uint8_t> AsBytes(const std::string& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

TEST(Utf8, ComesBackForEveryCodePoint) {
    for (char32_t value = 1; value <= 0x10FFFF; ++value) {
        if (value == 0xD800) value = 0xE000;
        const std::string bytes = Encoded(value);
        ASSERT_TRUE(IsValidUtf8(bytes)) << std::hex << static_cast<unsigned>(value);
        const CodePoint point = DecodeUtf8(bytes, 0);
        ASSERT_EQ(point.value, value);
        ASSERT_EQ(static_cast<std::size_t>(point.length), bytes.size());
    }
}

TEST(Utf8, TakesEveryIllFormedByteAsARawByte) {
    const std::string_view illFormed[] = {
        "\x80",
        "\xBF",
        "\xC0\xAF",
        "\xC1\xBF",
        "\xC2",
        "\xC2\x41",
        "\xE0\x80\x80",
        "\xE0\x9F\xBF",
        "\xE3\x81",
        "\xED\xA0\x80",
        "\xED\xBF\xBF",
        "\xF0\x8F\xBF\xBF",
        "\xF0\x9F\x98",
        "\xF4\x90\x80\x80",
        "\xF5\x80\x80\x80",
        "\xFE",
        "\xFF",
    };
    for (const std::string_view bytes : illFormed) {
        const CodePoint point = DecodeUtf8(bytes, 0);
        EXPECT_EQ(point.length, 1);
        EXPECT_EQ(point.value, 0xDC00u + static_cast<unsigned char>(bytes[0]));
        EXPECT_FALSE(IsValidUtf8(bytes));
    }
}

TEST(Utf8, TakesTheNeighboursOfEveryBound) {
    for (const std::string_view bytes :
         {"\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF",
          "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(IsValidUtf8(bytes));
        EXPECT_EQ(static_cast<std::size_t>(DecodeUtf8(bytes, 0).length), bytes.size());
    }
}

TEST(Utf8, IsFoundInvalidWhereverTheBadByteStands) {
    for (std::size_t at = 0; at < 40; ++at) {
        std::string text(40, 'a');
        text[at] = '\xFF';
        EXPECT_FALSE(IsValidUtf8(text)) << at;
    }
    EXPECT_TRUE(IsValidUtf8(std::string(40, 'a')));
    EXPECT_TRUE(IsValidUtf8(""));
}

TEST(DecodeUtf8, GivesNothingPastTheEnd) {
    EXPECT_EQ(DecodeUtf8("a", 1).length, 0);
    EXPECT_EQ(DecodeUtf8("", 0).length, 0);
    EXPECT_EQ(DecodeUtf8("a", 100).length, 0);
}

TEST(AppendUtf8, WritesTheByteThatARawByteStandsFor) {
    EXPECT_EQ(Encoded(0xDC80), "\x80");
    EXPECT_EQ(Encoded(0xDCFF), "\xFF");
}

TEST(AppendUtf8, ReplacesWhatIsNoCharacter) {
    EXPECT_EQ(Encoded(0xD800), "\xEF\xBF\xBD");
    EXPECT_EQ(Encoded(0xDC7F), "\xEF\xBF\xBD");
    EXPECT_EQ(Encoded(0xDD00), "\xEF\xBF\xBD");
    EXPECT_EQ(Encoded(0x110000), "\xEF\xBF\xBD");
}

TEST(ToDisplay, ReplacesRawBytesAndNothingElse) {
    EXPECT_EQ(ToDisplay("写真\xFF.jpg"), "写真\xEF\xBF\xBD.jpg");
    EXPECT_EQ(ToDisplay("a\xE3\x81"), "a\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(ToDisplay("plain"), "plain");
    EXPECT_EQ(ToDisplay("😀"), "😀");
}

TEST(CutAtCharacter, NeverSplitsACharacter) {
    const std::string text = "a\u00E9日😀";  // 1 + 2 + 3 + 4 bytes
    const std::size_t lengths[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 10};
    for (std::size_t most = 0; most < std::size(lengths); ++most)
        EXPECT_EQ(CutAtCharacter(text, most), text.substr(0, lengths[most])) << most;
}

TEST(CutAtCharacter, CutsRawBytesAnywhere) {
    EXPECT_EQ(CutAtCharacter("\x80\x81\x82\x83", 2), "\x80\x81");
    EXPECT_EQ(CutAtCharacter("\xE3\x81", 1), "\xE3");
    EXPECT_EQ(CutAtCharacter("", 5), "");
}

TEST(Utf16, ComesBackInBothOrders) {
    const std::string text = "a\u00E9日😀\n";
    for (const bool bigEndian : {false, true})
        EXPECT_EQ(FromUtf16(AsBytes(ToUtf16(text, bigEndian)), bigEndian), text);
    EXPECT_EQ(ToUtf16("a日", false), std::string("a\0\xE5\x65", 4));
    EXPECT_EQ(ToUtf16("a日", true), std::string("\0a\x65\xE5", 4));
    EXPECT_EQ(ToUtf16("😀", true), std::string("\xD8\x3D\xDE\0", 4));
}

TEST(Utf16, ReplacesLoneSurrogatesAndDropsHalfAUnit) {
    EXPECT_EQ(FromUtf16(AsBytes("\xD8\x3D"), true), "\uFFFD");
    EXPECT_EQ(FromUtf16(AsBytes(std::string("\xD8\x3D\0a", 4)), true), "\uFFFDa");
    EXPECT_EQ(FromUtf16(AsBytes("\xDE\xFF\xD8\x3D"), true), "\uFFFD\uFFFD");
    EXPECT_EQ(FromUtf16(AsBytes("\xD8\x3D\xD8\x3D\xDE\x01"), true), "\uFFFD\xF0\x9F\x98\x81");
    EXPECT_EQ(FromUtf16(AsBytes(std::string("\0a\0", 3)), true), "a");
    EXPECT_EQ(FromUtf16({}, true), "");
}

TEST(Utf16, ReplacesRawBytes) { EXPECT_EQ(ToUtf16("\xFF", true), "\xFF\xFD"); }

TEST(NoCase, IgnoresTheCaseOfAsciiLettersOnly) {
    EXPECT_TRUE(EqualsNoCase("Photo.JPG", "pHOTO.jpg"));
    EXPECT_TRUE(EqualsNoCase("", ""));
    EXPECT_FALSE(EqualsNoCase("a", "ab"));
    EXPECT_FALSE(EqualsNoCase("@", "`")) << "neighbours of the letters differ by the same bit";
    EXPECT_FALSE(EqualsNoCase("[", "{"));
    EXPECT_FALSE(EqualsNoCase("É", "é"));
    EXPECT_TRUE(StartsWithNoCase("BACKground.jpg", "back"));
    EXPECT_TRUE(StartsWithNoCase("a", ""));
    EXPECT_FALSE(StartsWithNoCase("bac", "back"));
}

TEST(FindNoCase, GivesTheFirstPlace) {
    EXPECT_EQ(FindNoCase("one TWO two", "two"), 4u);
    EXPECT_EQ(FindNoCase("aab", "AB"), 1u);
    EXPECT_EQ(FindNoCase("写真 JPG", "jpg"), 7u);
    EXPECT_EQ(FindNoCase("abc", "abc"), 0u);
    EXPECT_EQ(FindNoCase("abc", "bc"), 1u);
    EXPECT_EQ(FindNoCase("abc", ""), 0u);
    EXPECT_EQ(FindNoCase("abc", "abcd"), std::string_view::npos);
    EXPECT_EQ(FindNoCase("abc", "x"), std::string_view::npos);
    EXPECT_EQ(FindNoCase("", "x"), std::string_view::npos);
}

}  // namespace
}  // namespace kalmora::text
