#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include "code_page_facts.h"
#include "text/text.h"

namespace kalmora::text {
namespace {

std::string Utf8Of(char32_t value) {
    std::string out;
    AppendUtf8(out, value);
    return out;
}

TEST(Cp932, AgreesWithTheMeasuredTableBothWays) {
    const auto rows = test::CodePageFacts();
    if (rows.empty()) GTEST_SKIP() << "no shared/text/cp932_fold.tsv beside the project";
    ASSERT_EQ(rows.size(), 9795u);
    std::map<char32_t, std::set<std::string>> codes;
    for (const auto& row : rows) codes[row.character].insert(row.code);
    int canonicalOnly = 0;
    for (const auto& row : rows) {
        ASSERT_EQ(FromCp932(row.code), Utf8Of(row.character));
        const std::string back = ToCp932(Utf8Of(row.character));
        ASSERT_TRUE(codes[row.character].contains(back)) << std::hex << static_cast<unsigned>(row.character);
        if (back != row.code) ++canonicalOnly;
        ASSERT_TRUE(FitsCp932(Utf8Of(row.character)));
        ASSERT_EQ(Cp932Length(Utf8Of(row.character)), row.code.size());
    }
    EXPECT_EQ(canonicalOnly, 398);
    // What is not in the table has no code.
    int withCode = 0;
    for (char32_t value = 1; value <= 0x10FFFF; ++value) {
        if (value == 0xD800) value = 0xE000;
        if (FitsCp932(Utf8Of(value))) ++withCode;
    }
    EXPECT_EQ(withCode, static_cast<int>(codes.size()) + 3)
        << "three characters of other systems are taken too";
}

TEST(Cp932, WritesTheCanonicalCodeOfADuplicate) {
    const struct {
        const char *from, *canonical;
    } duplicates[] = {
        {"\x87\x90", "\x81\xE0"},  // row 13 repeats a mathematical sign
        {"\xFA\x4A", "\x87\x54"},  // the IBM rows repeat a Roman number of row 13
        {"\xED\x40", "\xFA\x5C"},  // rows ED and EE repeat the IBM rows
        {"\xEE\xEF", "\xFA\x40"}, {"\xEE\xF9", "\x81\xCA"}, {"\xFA\x5B", "\x81\xE6"},
    };
    for (const auto& d : duplicates) {
        EXPECT_EQ(ToCp932(FromCp932(d.from)), d.canonical);
        EXPECT_EQ(FromCp932(d.from), FromCp932(d.canonical));
    }
}

TEST(Cp932, IsTheWindowsTable) {
    EXPECT_EQ(FromCp932("\x81\x60"), "～");
    EXPECT_EQ(FromCp932("\x81\x7C"), "－");
    EXPECT_EQ(FromCp932("\x81\x61"), "∥");
    EXPECT_EQ(FromCp932("\x87\x40"), "①");
    EXPECT_EQ(FromCp932("\xFB\xFC"), "髙");
    EXPECT_EQ(FromCp932("\x5C\x7E"), "\\~");
    EXPECT_EQ(FromCp932("\x95\x5C"), "表");
    EXPECT_EQ(FromCp932("\x80"), "\u0080");
    EXPECT_EQ(ToCp932("\u0080"), "\x80");
    EXPECT_EQ(FromCp932("\xF0\x40\xF9\xFC"), "\uE000\uE757");
    EXPECT_EQ(ToCp932("\uE000\uE757"), "\xF0\x40\xF9\xFC");
}

TEST(Cp932, AcceptsTheSignsOfOtherSystems) {
    EXPECT_EQ(ToCp932("〜−‖"), "\x81\x60\x81\x7C\x81\x61");
    EXPECT_TRUE(FitsCp932("〜−‖"));
}

TEST(Cp932, KeepsBytesThatAreNoCharacter) {
    const std::string_view broken[] = {
        "\xA0",     "\xFD",         "\xFE",      "\xFF",     "\x81",         "abc\x81",          "\x81\x20",
        "\x81\x7F", "\x81\xFD",     "\x85\x40",  "\x81\xAD", "\xEB\x9F\x41", "\x82\x40\x82\xA0", "\xFC\xFC",
        "\x81\n",   "\xEF\x81\xFF", "\x81\x00x",
    };
    for (const std::string_view bytes : broken) {
        EXPECT_EQ(ToCp932(FromCp932(bytes)), bytes);
        EXPECT_EQ(ToCp932(FromCp932(bytes, Escapes::Resolve)), bytes);
    }
    EXPECT_EQ(FromCp932("\xFF"), "\xFF");
    EXPECT_EQ(FromCp932("\x81\x20"), "\x81\x20");
}

TEST(Cp932, GoesOnInStepBehindAPairWithoutACharacter) {
    // EB9F is a pair that the table lacks; 82A0 behind it is whole.
    EXPECT_EQ(FromCp932("\xEB\x9F\x82\xA0"), "\xEB\x9Fあ");
}

TEST(Cp932, DoesNotTakeALineFeedForATrailByte) {
    EXPECT_EQ(FromCp932("\x81\n"
                        "a"),
              "\x81\na");
}

TEST(Cp932, PutsAQuestionMarkForWhatItDoesNotHave) {
    EXPECT_EQ(ToCp932("a😀é"), "a??");
    EXPECT_FALSE(FitsCp932("a😀"));
    EXPECT_FALSE(FitsCp932("\u00A0"));
    EXPECT_FALSE(FitsCp932("\xFF"));
    EXPECT_TRUE(FitsCp932("写真 abc"));
    EXPECT_TRUE(FitsCp932(""));
}

TEST(Cp932Length, CountsTwoForACharacterWithoutACode) {
    EXPECT_EQ(Cp932Length("abc"), 3u);
    EXPECT_EQ(Cp932Length("写真"), 4u);
    EXPECT_EQ(Cp932Length("ｶﾞ"), 2u);
    EXPECT_EQ(Cp932Length("😀"), 2u);
    EXPECT_EQ(Cp932Length("\xFF"), 1u);
    EXPECT_EQ(Cp932Length(""), 0u);
}

// ---- escapes

TEST(Cp932Escapes, NameWhatTheCodePageLacks) {
    EXPECT_EQ(ToCp932("a😀b", Escapes::Resolve), "a&#x1F600;b");
    EXPECT_EQ(FromCp932("a&#x1F600;b", Escapes::Resolve), "a😀b");
    EXPECT_EQ(ToCp932("é", Escapes::Resolve), "&#xE9;");
    EXPECT_EQ(FromCp932("&#xe9;", Escapes::Resolve), "é");
}

TEST(Cp932Escapes, KeepALiteralEscape) {
    EXPECT_EQ(ToCp932("&#x41;", Escapes::Resolve), "&#x26;#x41;");
    EXPECT_EQ(FromCp932("&#x26;#x41;", Escapes::Resolve), "&#x41;");
    EXPECT_EQ(ToCp932("&#x41;", Escapes::Keep), "&#x41;");
    EXPECT_EQ(FromCp932("&#x41;", Escapes::Keep), "&#x41;");
}

TEST(Cp932Escapes, NameTheBytesOfAFileNameThatIsNoText) {
    EXPECT_EQ(ToCp932("a\xFF.jpg", Escapes::Resolve), "a&#xDCFF;.jpg");
    EXPECT_EQ(FromCp932("a&#xDCFF;.jpg", Escapes::Resolve), "a\xFF.jpg");
}

TEST(Cp932Escapes, KeepTheSignsOfOtherSystemsApart) {
    EXPECT_EQ(ToCp932("〜", Escapes::Resolve), "&#x301C;");
    EXPECT_EQ(FromCp932("&#x301C;\x81\x60", Escapes::Resolve), "〜～");
}

TEST(Cp932Escapes, LeaveWhatOnlyLooksLikeOne) {
    for (const std::string_view text :
         {"&", "&#", "&#x", "&#x;", "&#x41", "&#xG;", "&#41;", "&#x0;", "&#x110000;", "&#xD800;", "&#xDC7F;",
          "&#xDFFF;", "&#x0000041;", "&amp;", "& #x41;", "&#X41;"})
        EXPECT_EQ(FromCp932(text, Escapes::Resolve), text);
    EXPECT_EQ(FromCp932("&&#x41;", Escapes::Resolve), "&A");
    EXPECT_EQ(FromCp932("&#x&#x41;", Escapes::Resolve), "&#xA");
    EXPECT_EQ(FromCp932("&#x10FFFF;", Escapes::Resolve), "\U0010FFFF");
    EXPECT_EQ(FromCp932("&#x000041;", Escapes::Resolve), "A");
}

TEST(Cp932Escapes, BringBackAnyTextWhatever) {
    std::mt19937 random(20081113);
    const std::string_view pieces[] = {"&", "#",  "x",  "&#x",  "26;", ";",    "41;",  "日", "表", "😀",
                                       "é", "〜", "～", "\xFF", "ｶ",   "\x81", "\xE3", "\\", "\n", "\uE000"};
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (auto i = random() % 12; i > 0; --i) text += pieces[random() % std::size(pieces)];
        ASSERT_EQ(FromCp932(ToCp932(text, Escapes::Resolve), Escapes::Resolve), text) << round;
    }
}

TEST(Cp932Escapes, BringBackAnyBytesWhatever) {
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        std::string text(random() % 12, '\0');
        for (char& c : text) c = static_cast<char>(random());
        ASSERT_EQ(FromCp932(ToCp932(text, Escapes::Resolve), Escapes::Resolve), text) << round;
    }
}

TEST(Cp932, MayBeUsedByManyThreadsFromTheFirstCallOn) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int round = 0; round < 1000; ++round) {
                EXPECT_EQ(ToCp932("写真"), "\x8E\xCA\x90\x5E");
                EXPECT_EQ(FromCp932("\x8E\xCA\x90\x5E"), "写真");
                EXPECT_EQ(Fold("写真ガÉ"), "写真ｶﾞé");
            }
        });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace kalmora::text
