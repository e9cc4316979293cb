#include "media/user_comment.h"

#include <gtest/gtest.h>

namespace kalmora {
namespace {

std::string WordsOf(std::string_view bytes, std::uint16_t type = 7) {
    PhotoMetadata metadata;
    metadata.userComment = std::string(bytes);
    metadata.userCommentType = type;
    return UserCommentWords(metadata);
}

using namespace std::string_view_literals;

TEST(UserCommentWords, AreTheBytesBehindTheCode) {
    EXPECT_EQ(WordsOf("ASCII\0\0\0words\0gone"sv), "words");
    EXPECT_EQ(WordsOf("JIS\0\0\0\0\0\x83\x41"sv), "\x83\x41");
    EXPECT_EQ(WordsOf("no code at all"sv), "no code at all");
    EXPECT_EQ(WordsOf("typed text\0"sv, 2), "typed text");
}

TEST(UserCommentWords, OfSixteenBitsBecomeUtf8InEitherOrder) {
    EXPECT_EQ(WordsOf("UNICODE\0w\0o\0r\0d\0"sv), "word");
    EXPECT_EQ(WordsOf("UNICODE\0\0w\0o\0r\0d"sv), "word");
    EXPECT_EQ(WordsOf("UNICODE\0\xFF\xFE\x42\x30"sv), "\u3042");
    EXPECT_EQ(WordsOf("UNICODE\0\xFE\xFF\x30\x42"sv), "\u3042");
    EXPECT_EQ(WordsOf("UNICODE\0a\0\0\0b\0"sv), "a");
    EXPECT_EQ(WordsOf("UNICODE\0a\0b"sv), "a") << "half a unit is none";
    EXPECT_EQ(WordsOf("UNICODE\0"sv), "");
}

TEST(UserCommentWords, BehindAnUndefinedCodeAreKept) {
    EXPECT_EQ(WordsOf("\0\0\0\0\0\0\0\0words\0"sv), "words");
    EXPECT_EQ(WordsOf("\0\0\0\0\0\0\0\0"sv), "");
    EXPECT_EQ(WordsOf("\0\0\0\0"sv), "");
}

TEST(UserCommentWords, OfWhatIsNoTextAreNone) {
    EXPECT_EQ(WordsOf(""sv), "");
    EXPECT_EQ(WordsOf("short"sv), "");
    EXPECT_EQ(WordsOf("ASCII\0\0\0words"sv, 3), "");
}

}  // namespace
}  // namespace kalmora
