#include "media/png_text_file.h"

#include <gtest/gtest.h>

#include "png_builder.h"
#include "support/temporary_folder.h"

namespace kalmora {
namespace {

using test::PngChunk;
using test::PngHeader;
using test::PngOf;
using test::PngText;

struct Parsed {
    explicit Parsed(const std::string& bytes) {
        ByteWindow window({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
        good = png.Parse(window);
    }
    std::string Text(std::string_view keyword) const {
        const std::string* text = png.GetText(keyword);
        return text ? *text : "absent";
    }
    PngTextFile png;
    bool good = false;
};

const std::string kSignature(test::kPngSignature);

TEST(PngTextFile, ReadsTheTextsOfAFile) {
    const test::TemporaryFolder folder;
    PngTextFile png;
    ASSERT_TRUE(
        png.Parse(folder.Add("a.png", PngOf(PngText("Comment", "hello") + PngText("Property", "<e>")))));
    ASSERT_NE(png.GetText(kPngComment), nullptr);
    EXPECT_EQ(*png.GetText(kPngComment), "hello");
    EXPECT_EQ(*png.GetText(kPngProperty), "<e>");
    EXPECT_EQ(png.GetText(kPngSoftware), nullptr);
    EXPECT_EQ(png.GetText(kPngCreationTime), nullptr);
    EXPECT_EQ(png.Path(), folder / "a.png");
}

TEST(PngTextFile, HasNothingUnderAnEmptyKeyword) {
    const Parsed parsed(PngOf(PngText("", "text")));
    EXPECT_TRUE(parsed.good);
    EXPECT_EQ(parsed.Text(""), "absent");
}

TEST(PngTextFile, KeepsEveryKeywordInTheirOrder) {
    const Parsed parsed(PngOf(PngText("Title", "t") + PngText("Author", "a") + PngText("b", "c")));
    std::string keywords;
    for (const auto& [keyword, text] : parsed.png.Texts()) keywords += keyword + ' ';
    EXPECT_EQ(keywords, "Author Title b ");
}

TEST(PngTextFile, TakesTheLaterOfTwoTexts) {
    EXPECT_EQ(Parsed(PngOf(PngText("Comment", "old") + PngText("Comment", "new"))).Text("Comment"), "new");
}

TEST(PngTextFile, DoesNotSeeATextBehindThePixels) {
    const Parsed parsed(kSignature + PngHeader() + test::PngPixels() + PngText("Comment", "late") +
                        PngChunk("IEND", ""));
    EXPECT_TRUE(parsed.good);
    EXPECT_EQ(parsed.Text("Comment"), "absent");
}

TEST(PngTextFile, IsGoodWithoutPixelsAndWithoutAnEnd) {
    EXPECT_TRUE(Parsed(kSignature + PngHeader() + PngChunk("IEND", "")).good);
    const Parsed parsed(kSignature + PngHeader() + PngText("Comment", "hello"));
    EXPECT_TRUE(parsed.good);
    EXPECT_EQ(parsed.Text("Comment"), "hello");
    EXPECT_TRUE(Parsed(kSignature).good);
}

TEST(PngTextFile, PassesChunksOfAnyOtherKind) {
    const Parsed parsed(PngOf(PngChunk("iTXt", "Comment") + PngChunk("zTXt", "Comment") +
                              PngChunk("tEXT", std::string("Comment\0no", 10)) +
                              PngChunk("abcd", std::string(100'000, 'x')) + PngText("Comment", "hello")));
    EXPECT_TRUE(parsed.good);
    EXPECT_EQ(parsed.Text("Comment"), "hello");
    EXPECT_EQ(parsed.png.Texts().size(), 1u);
}

TEST(PngTextFile, DoesNotLookAtChecksums) {
    std::string chunk = PngText("Comment", "hello");
    chunk.back() = static_cast<char>(chunk.back() + 1);
    EXPECT_EQ(Parsed(PngOf(chunk)).Text("Comment"), "hello");
}

TEST(PngTextFile, IsBadWhenALengthPassesTheEnd) {
    for (const std::uint32_t length : {60u, 0x7FFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFF8u}) {
        for (const char* rest : {"tEXtComment", "abcdComment"}) {
            std::string file = kSignature + PngHeader();
            file += test::Word32(ByteOrder::Big, length);
            file += rest;
            EXPECT_FALSE(Parsed(file).good) << rest << length;
        }
    }
}

TEST(PngTextFile, IsBadWhenCutInsideAChunk) {
    const std::string whole = kSignature + PngHeader() + PngText("Comment", "hello");
    const std::size_t headerEnd = kSignature.size() + PngHeader().size();
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const bool atBorder = length == kSignature.size() || length == headerEnd || length == whole.size();
        EXPECT_EQ(Parsed(whole.substr(0, length)).good, atBorder) << length;
    }
}

TEST(PngTextFile, IsBadWithoutTheSignature) {
    const test::TemporaryFolder folder;
    PngTextFile png;
    EXPECT_FALSE(png.Parse(folder / "absent.png"));
    EXPECT_FALSE(png.Parse(folder.Add("b.png", test::JpegOf(""))));
    std::string wrong = PngOf(PngText("Comment", "hello"));
    wrong[4] = '\n';
    EXPECT_FALSE(Parsed(wrong).good);
}

TEST(PngTextFile, ForgetsTheTextsOfTheFileBefore) {
    const test::TemporaryFolder folder;
    PngTextFile png;
    ASSERT_TRUE(png.Parse(folder.Add("a.png", PngOf(PngText("Comment", "hello")))));
    EXPECT_FALSE(png.Parse(folder / "absent.png"));
    EXPECT_EQ(png.GetText("Comment"), nullptr);
}

TEST(PngTextFile, CutsAKeywordAt80Bytes) {
    const std::string keyword80(80, 'k'), keyword81(81, 'k');
    EXPECT_EQ(Parsed(PngOf(PngText(keyword80, "text"))).Text(keyword80), "text");
    const Parsed longer(PngOf(PngText(keyword81, "text")));
    EXPECT_EQ(longer.Text(keyword80), "text");
    EXPECT_EQ(longer.Text(keyword81), "absent");
}

TEST(PngTextFile, TakesAChunkWithoutAZeroForAKeywordWithoutText) {
    EXPECT_EQ(Parsed(PngOf(PngChunk("tEXt", "Comment"))).Text("Comment"), "");
    EXPECT_TRUE(Parsed(PngOf(PngChunk("tEXt", ""))).good);
}

TEST(PngTextFile, KeepsTheBytesOfATextAsTheyAre) {
    const std::string bytes("\x83\x4A\0\xFF\n", 5);
    EXPECT_EQ(Parsed(PngOf(PngText("Comment", bytes))).Text("Comment"), bytes);
}

TEST(PngTextFile, RefusesMoreTextThanAnyoneWrites) {
    const std::string half(8u << 20, 't');
    EXPECT_TRUE(Parsed(PngOf(PngText("a", half))).good);
    EXPECT_FALSE(Parsed(PngOf(PngText("a", half) + PngText("b", half))).good);
}

TEST(PngTextFile, RefusesAFileOfCountlessChunks) {
    std::string chunks;
    for (int i = 0; i < 100'000; ++i) chunks.append("\0\0\0\0abcd....", 12);
    EXPECT_FALSE(Parsed(kSignature + chunks).good);
    EXPECT_TRUE(Parsed(kSignature + chunks.substr(12)).good);
}

}  // namespace
}  // namespace kalmora
