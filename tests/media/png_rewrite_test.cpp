#include <gtest/gtest.h>

#include "media/png_text_file.h"
#include "platform/files.h"
#include "png_builder.h"
#include "write_fixture.h"

namespace kalmora {
namespace {

using test::ContentOf;
using test::PngChunk;
using test::PngHeader;
using test::PngOf;
using test::PngPixels;
using test::PngText;

const std::string kPngStart(test::kPngSignature), kPngEnd = PngChunk("IEND", "");

class PngRewrite : public test::WriteTest {
protected:
    // Puts the file, sets the text and rewrites.
    std::string After(const std::string& before, std::string_view keyword, std::string_view text,
                      RewriteResult expected = RewriteResult::Written) {
        const std::string path = folder.Add("a.png", before);
        PngTextFile png;
        EXPECT_TRUE(png.Parse(path));
        png.SetText(keyword, text);
        EXPECT_EQ(png.Rewrite(), expected);
        EXPECT_EQ(FilesInTemp(), 0u);
        return ContentOf(path);
    }
};

TEST_F(PngRewrite, PutsTheFirstTextInFrontOfThePixels) {
    const std::string palette = PngChunk("PLTE", "abcdef"), more = PngChunk("gAMA", "abcd");
    const std::string before = kPngStart + PngHeader() + palette + more + PngPixels() + kPngEnd;
    EXPECT_EQ(After(before, "Comment", "hello"),
              kPngStart + PngHeader() + palette + more + PngText("Comment", "hello") + PngPixels() + kPngEnd);
}

TEST_F(PngRewrite, GrowsByTheChunkAndByNothingElse) {
    const std::string before = PngOf("");
    const std::string after = After(before, "Property", "words");
    EXPECT_EQ(after.size(), before.size() + PngText("Property", "words").size());
    EXPECT_EQ(after.substr(after.size() - PngPixels().size() - kPngEnd.size()), PngPixels() + kPngEnd);
}

TEST_F(PngRewrite, PutsAllTextsWhereTheFirstStoodInTheOrderOfTheirKeywords) {
    const std::string before = kPngStart + PngHeader() + PngText("Title", "t") + PngText("Author", "me") +
                               PngText("Title", "second") + PngChunk("gAMA", "abcd") + PngPixels() + kPngEnd;
    EXPECT_EQ(After(before, "Comment", "new"), kPngStart + PngHeader() + PngText("Author", "me") +
                                                   PngText("Comment", "new") + PngText("Title", "second") +
                                                   PngChunk("gAMA", "abcd") + PngPixels() + kPngEnd);
}

TEST_F(PngRewrite, KeepsHeaderAndPaletteThatStandBetweenTexts) {
    const std::string palette = PngChunk("PLTE", "abcdef");
    const std::string before =
        kPngStart + PngText("B", "1") + PngHeader() + PngText("A", "2") + palette + PngPixels() + kPngEnd;
    EXPECT_EQ(After(before, "Comment", "new"), kPngStart + PngText("A", "2") + PngText("B", "1") +
                                                   PngText("Comment", "new") + PngHeader() + palette +
                                                   PngPixels() + kPngEnd);
}

TEST_F(PngRewrite, TextWithoutItsZeroByteIsNotCutTo80Bytes) {
    const std::string noText = PngChunk("tEXt", std::string(200, 'n')),
                      longKeyword = PngText(std::string(100, 'k'), "text"), empty = PngChunk("tEXt", "");
    const std::string before = kPngStart + PngHeader() + noText + PngText("Author", "me") + longKeyword +
                               empty + PngPixels() + kPngEnd;
    const std::string after = After(before, "Comment", "new");
    EXPECT_EQ(after, kPngStart + PngHeader() + PngText("Author", "me") + PngText("Comment", "new") + noText +
                         longKeyword + empty + PngPixels() + kPngEnd);
    EXPECT_EQ(After(after, "Comment", "new", RewriteResult::Unchanged), after) << "a second time";
}

TEST_F(PngRewrite, WordsStandBesideAChunkThatHasOnlyTheirKeyword) {
    const std::string noText = PngChunk("tEXt", "Comment");
    const std::string path = folder.Add("b.png", After(PngOf(noText), "Comment", "new"));
    EXPECT_EQ(ContentOf(path), PngOf(PngText("Comment", "new") + noText));
    PngTextFile png;
    ASSERT_TRUE(png.Parse(path));
    EXPECT_EQ(*png.GetText("Comment"), "new");
}

// From the first other chunk behind a text on everything is left, so the old text stays beside the new one.
TEST_F(PngRewrite, TextBehindAnotherChunkStays) {
    const std::string rest = PngChunk("gAMA", "abcd") + PngText("Comment", "old") + PngPixels() + kPngEnd;
    const std::string before = kPngStart + PngHeader() + PngText("Author", "me") + rest;
    EXPECT_EQ(After(before, "Comment", "new"),
              kPngStart + PngHeader() + PngText("Author", "me") + PngText("Comment", "new") + rest);
}

TEST_F(PngRewrite, TextBehindThePixelsIsNeitherReadNorTouched) {
    const std::string rest = PngPixels() + PngText("Comment", "late") + kPngEnd;
    const std::string before = kPngStart + PngHeader() + rest;
    PngTextFile png;
    ASSERT_TRUE(png.Parse(folder.Add("a.png", before)));
    EXPECT_EQ(png.GetText("Comment"), nullptr);
    EXPECT_EQ(After(before, "Comment", "early"),
              kPngStart + PngHeader() + PngText("Comment", "early") + rest);
}

TEST_F(PngRewrite, WrongChecksumIsNeitherNoticedNorMended) {
    std::string gamma = PngChunk("gAMA", "abcd"), pixels = PngPixels();
    gamma.back() = static_cast<char>(gamma.back() + 1);
    pixels.back() = static_cast<char>(pixels.back() + 1);
    EXPECT_EQ(After(kPngStart + PngHeader() + gamma + pixels + kPngEnd, "Comment", "x"),
              kPngStart + PngHeader() + gamma + PngText("Comment", "x") + pixels + kPngEnd);
}

TEST_F(PngRewrite, FileWithoutPixelsAndWithoutTextGetsNone) {
    for (const std::string& before : {kPngStart + PngHeader() + kPngEnd, kPngStart + PngHeader(), kPngStart})
        EXPECT_EQ(After(before, "Comment", "x", RewriteResult::Unsupported), before);
}

TEST_F(PngRewrite, FileWithoutPixelsButWithATextGetsTheOthersThere) {
    EXPECT_EQ(After(kPngStart + PngHeader() + PngText("A", "1") + kPngEnd, "Comment", "x"),
              kPngStart + PngHeader() + PngText("A", "1") + PngText("Comment", "x") + kPngEnd);
}

TEST_F(PngRewrite, FileCutBehindAChunkIsLeft) {
    const std::string before = kPngStart + PngHeader() + PngText("A", "1");
    EXPECT_EQ(After(before, "Comment", "x", RewriteResult::Unsupported), before);
}

TEST_F(PngRewrite, FileThatWasCutMeanwhileIsLeft) {
    const std::string path = folder.Add("a.png", PngOf(PngText("A", "1")));
    PngTextFile png;
    ASSERT_TRUE(png.Parse(path));
    png.SetText("Comment", "x");
    const std::string cut = PngOf("").substr(0, 20);
    folder.Add("a.png", cut);
    EXPECT_EQ(png.Rewrite(), RewriteResult::Unsupported);
    EXPECT_EQ(ContentOf(path), cut);
    std::filesystem::remove(path);
    EXPECT_EQ(png.Rewrite(), RewriteResult::Unreadable);
}

TEST_F(PngRewrite, TakesNoEmptyKeyword) {
    const std::string before = PngOf(PngText("A", "1"));
    EXPECT_EQ(After(before, "", "x", RewriteResult::Unchanged), before);
    EXPECT_EQ(After(before, std::string_view("\0b", 2), "x", RewriteResult::Unchanged), before);
}

TEST_F(PngRewrite, CutsAKeywordAt79BytesAndATextAtItsFirstZero) {
    const std::string after = After(PngOf(""), std::string(90, 'k'), std::string_view("seen\0not", 8));
    EXPECT_EQ(after, PngOf(PngText(std::string(79, 'k'), "seen")));
}

TEST_F(PngRewrite, TooMuchTextIsRefused) {
    const std::string before = PngOf("");
    EXPECT_EQ(After(before, "Comment", std::string(17u << 20, 'x'), RewriteResult::TooLarge), before);
    const std::string most((16u << 20) - 8, 'x');
    EXPECT_EQ(After(before, "Comment", most).size(), before.size() + 12 + 8 + most.size());
}

TEST_F(PngRewrite, CopyIsCalledByTheClock) {
    // A folder in the copy's place makes the copy fail, and so its name is known.
    folder.Add("a.png", PngOf(""));
    std::filesystem::create_directories(folder / "Temp/$20080506070809250.png");
    PngTextFile png;
    ASSERT_TRUE(png.Parse(folder / "a.png"));
    png.SetText("Comment", "x");
    EXPECT_FALSE(IsDone(png.Rewrite()));
    EXPECT_EQ(ContentOf(folder / "a.png"), PngOf(""));
    clock.now.milliseconds = 7;
    EXPECT_EQ(png.Rewrite(), RewriteResult::Written);
}

// The other photos' last write is the local clock's fields; a PNG's is the moment.
TEST_F(PngRewrite, GetsTheMomentAsItsLastWrite) {
    const std::string path = folder.Add("a.png", PngOf(""));
    const FileTime created = files::GetStatus(path)->created;
    PngTextFile png;
    ASSERT_TRUE(png.Parse(path));
    png.SetText("Comment", "x");
    const std::uint64_t before = CurrentFileTime().ticks;
    EXPECT_EQ(png.Rewrite(), RewriteResult::Written);
    const auto status = files::GetStatus(path);
    EXPECT_GE(status->written.ticks, before);
    EXPECT_LE(status->written.ticks, CurrentFileTime().ticks);
    EXPECT_EQ(status->created, created);
}

TEST(PngComment, IsCodePage932WhereThatHasItAndUtf8Otherwise) {
    EXPECT_EQ(PngCommentBytes("plain"), "plain");
    EXPECT_EQ(PngCommentBytes("\u3042"), "\x82\xA0");
    EXPECT_EQ(PngCommentBytes("\U0001F600"), "\U0001F600");
}

TEST(PngComment, ComesBackAsItWasWritten) {
    std::string both;
    for (const char* text : {"", "a", "two\r\nlines", "\u3042", "\u8868\u793A", "\u00E9t\u00E9", "\U0001F600",
                             "\u3042\U0001F600", "\uFF71\uFF72\uFF73", "\u00FF", "caf\u00E9 \u3042",
                             "\xEF\xBB\xBFmark", "\u7E3A\u3086\u7E3A", "\u00B0C", "\u2460 \u301C \uFF5E"}) {
        EXPECT_EQ(PngCommentText(PngCommentBytes(text)), text);
        both += text;
    }
    // Half-width letters in code page 932 can look like UTF-8.
    for (int a = 0xFF61; a <= 0xFF9F; ++a)
        for (int b = 0xFF61; b <= 0xFF9F; b += 3) {
            std::string text;
            for (const int c : {a, b})
                text += {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
                         static_cast<char>(0x80 | (c & 0x3F))};
            EXPECT_EQ(PngCommentText(PngCommentBytes(text)), text);
        }
}

}  // namespace
}  // namespace kalmora
