#include "pictures/text_card.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "media/recording_canvas.h"
#include "support/temporary_folder.h"
#include "text/text.h"

namespace kalmora {
namespace {

struct HeadRow {
    const char* text;
    TextKind anyCase;
    TextKind exact;
};

void PrintTo(const HeadRow& row, std::ostream* out) { *out << '"' << row.text << '"'; }

class CardHead : public testing::TestWithParam<HeadRow> {};
INSTANTIATE_TEST_SUITE_P(Heads, CardHead,
                         testing::Values(HeadRow{"[Schedule]", TextKind::Schedule, TextKind::Schedule},
                                         HeadRow{"[Memo] milk", TextKind::Memo, TextKind::Memo},
                                         HeadRow{"[ToDo]\nmilk", TextKind::ToDo, TextKind::ToDo},
                                         HeadRow{"[Web]", TextKind::Web, TextKind::Web},
                                         HeadRow{"http://example.com", TextKind::Web, TextKind::Web},
                                         HeadRow{"https", TextKind::Web, TextKind::Web},
                                         HeadRow{"[Diary]", TextKind::Schedule, TextKind::Schedule},
                                         HeadRow{"[Mail]", TextKind::Schedule, TextKind::Schedule},
                                         HeadRow{"[", TextKind::Schedule, TextKind::Schedule},
                                         HeadRow{"HTTP://EXAMPLE.COM", TextKind::Web, TextKind::Normal},
                                         HeadRow{"[memo]", TextKind::Memo, TextKind::Schedule},
                                         HeadRow{"[TODO]", TextKind::ToDo, TextKind::Schedule},
                                         HeadRow{"[WEB]", TextKind::Web, TextKind::Schedule},
                                         HeadRow{"[Memo", TextKind::Schedule, TextKind::Schedule},
                                         HeadRow{"\n[Schedule]", TextKind::Normal, TextKind::Normal},
                                         HeadRow{" [Memo]", TextKind::Normal, TextKind::Normal},
                                         HeadRow{"htt", TextKind::Normal, TextKind::Normal},
                                         HeadRow{"plain", TextKind::Normal, TextKind::Normal},
                                         HeadRow{"", TextKind::Normal, TextKind::Normal}));

TEST_P(CardHead, PicksTheKind) {
    EXPECT_EQ(TextKindOf(GetParam().text, HeadMatch::IgnoreCase), GetParam().anyCase);
    EXPECT_EQ(TextKindOf(GetParam().text, HeadMatch::Exact), GetParam().exact);
}

class TextHead : public testing::Test {
protected:
    std::string Read(std::string_view content, std::size_t bytes = kCardTextBytes) {
        return ReadTextHead(folder.Add("a.txt", content), bytes).value_or("absent");
    }
    test::TemporaryFolder folder;
};

TEST_F(TextHead, IsTheWholeOfAShortText) {
    EXPECT_EQ(Read("hello"), "hello");
    EXPECT_EQ(Read(""), "");
    EXPECT_EQ(Read(std::string(4095, 'x')).size(), 4095u);
}

TEST_F(TextHead, OfALongTextIsItsFirst4095Or1000Bytes) {
    EXPECT_EQ(Read(std::string(4096, 'x')).size(), 4095u);
    EXPECT_EQ(Read(std::string(5000, 'x'), kCellTextBytes).size(), 1000u);
}

TEST_F(TextHead, OfAnAbsentFileIsNone) {
    EXPECT_EQ(ReadTextHead(folder / "absent.txt", 100), std::nullopt);
    EXPECT_EQ(ReadTextHead(folder.Path(), 100), std::nullopt);
}

TEST_F(TextHead, OfAHugeFileCostsNoMoreThanItsHead) {
    const std::string path = folder.Add("huge.txt", "begin");
    std::filesystem::resize_file(path, 1'000'000'000);
    EXPECT_EQ(ReadTextHead(path, kCardTextBytes), "begin");  // what follows is zero bytes
}

TEST_F(TextHead, IsDecodedFromTheEncodingOfTheFile) {
    const std::string text = "[Memo] 花火を見に行く\n楽しみ";
    EXPECT_EQ(Read(text::ToCp932(text)), text);
    EXPECT_EQ(Read(text), text);
    EXPECT_EQ(Read("\xEF\xBB\xBF" + text), text);
    EXPECT_EQ(Read("\xFF\xFE" + text::ToUtf16(text, false)), text);
    EXPECT_EQ(Read("\xFE\xFF" + text::ToUtf16(text, true)), text);
    EXPECT_EQ(Read("\x1B$B2V2P\x1B(B ok"), "花火 ok");
}

TEST_F(TextHead, OfAShortUtf8TextWithoutAMarkHasItsAccents) {
    for (const char* note : {"Frühstück mit Käse", "café", "10°"}) EXPECT_EQ(Read(note), note);
    EXPECT_EQ(Read("\xB6\xC0\xB6\xC5"), "ｶﾀｶﾅ");
}

TEST_F(TextHead, DoesNotEndInHalfACharacter) {
    const std::string sentence = "花火を見に行くのが楽しみ。";
    std::string utf8, cp932;
    for (int i = 0; i < 30; ++i) utf8 += sentence;
    cp932 = text::ToCp932(utf8);
    const std::string utf16 = "\xFF\xFE" + text::ToUtf16(utf8, false);
    for (std::size_t bytes = 60; bytes < 75; ++bytes) {
        for (const std::string& encoded : {utf8, cp932, utf16, "a" + utf8, "a" + cp932}) {
            const std::string head = Read(encoded, bytes);
            const std::string whole = encoded.front() == 'a' ? "a" + utf8 : utf8;
            EXPECT_EQ(head, whole.substr(0, head.size())) << bytes;
            EXPECT_TRUE(text::IsValidUtf8(head)) << bytes;
            EXPECT_GT(head.size(), 50u);
        }
    }
}

TEST_F(TextHead, DoesNotEndInPartOfAShiftSequence) {
    const std::string mail = "plain \x1B$B2V2P\x1B(B and more of the same";
    for (std::size_t bytes = 13; bytes < 18; ++bytes) {
        const std::string head = Read(mail, bytes);
        EXPECT_EQ(std::string("plain 花火 and more").substr(0, head.size()), head) << bytes;
    }
}

TEST_F(TextHead, EndsItsLinesWithLineFeeds) { EXPECT_EQ(Read("a\r\nb\rc\nd\r"), "a\nb\nc\nd\n"); }

TEST_F(TextHead, EndsAtAZeroByte) { EXPECT_EQ(Read(std::string("text\0more", 9)), "text"); }

TEST(TextCard, IsARectangleWithTheTextTwoPixelsInside) {
    AppState& state = State();
    const auto styles = state.settings.TextStyles;
    const std::string face = state.settings.MiniFontFace;
    state.settings.TextStyles[static_cast<std::size_t>(TextKind::Memo)] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    state.settings.MiniFontFace = "Mini";
    state.settings.MiniFontHeight = 11;
    test::RecordingCanvas canvas;
    DrawTextCard(canvas, {10, 20, 100, 50}, "milk", TextKind::Memo);
    ASSERT_EQ(canvas.cards.size(), 1u);
    EXPECT_EQ(canvas.cards[0].area, (Rect{10, 20, 100, 50}));
    EXPECT_EQ(canvas.cards[0].fill, (Color{1, 2, 3}));
    EXPECT_EQ(canvas.cards[0].frame, (Color{4, 5, 6}));
    ASSERT_EQ(canvas.blocks.size(), 1u);
    EXPECT_EQ(canvas.blocks[0].area, (Rect{12, 22, 96, 46}));
    EXPECT_EQ(canvas.blocks[0].text, "milk");
    EXPECT_EQ(canvas.blocks[0].font, (Font{"Mini", 11}));
    EXPECT_EQ(canvas.blocks[0].color, (Color{7, 8, 9}));
    state.settings.TextStyles = styles;
    state.settings.MiniFontFace = face;
    state.settings.MiniFontHeight = 12;
}

TEST(TextCard, TooSmallForItsTextIsARectangleAlone) {
    test::RecordingCanvas canvas;
    DrawTextCard(canvas, {0, 0, 4, 50}, "milk", TextKind::Normal);
    EXPECT_EQ(canvas.cards.size(), 1u);
    EXPECT_TRUE(canvas.blocks.empty());
}

TEST(TextCard, LeavesACornerOfTheCardFree) {
    test::RecordingCanvas canvas;
    DrawTextCard(canvas, {10, 20, 100, 80}, "text", TextKind::Memo, {40, 25});
    DrawTextCard(canvas, {10, 20, 100, 80}, "text", TextKind::Memo);
    ASSERT_EQ(canvas.blocks.size(), 2u);
    EXPECT_EQ(canvas.blocks[0].area, (Rect{12, 22, 96, 76}));
    EXPECT_EQ(canvas.blocks[0].corner, (Size{38, 23})) << "as the text's area has it";
    EXPECT_EQ(canvas.blocks[1].corner, Size{});
}

}  // namespace
}  // namespace kalmora
