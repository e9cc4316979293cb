#include "media/byte_window.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "media/bytes_of.h"
#include "support/temporary_folder.h"

namespace kalmora {
namespace {

std::string Numbered(std::size_t length) {
    std::string bytes(length, '\0');
    for (std::size_t i = 0; i < length; ++i) bytes[i] = static_cast<char>(i * 31 + i / 256);
    return bytes;
}

std::string Text(std::span<const std::uint8_t> bytes) { return {bytes.begin(), bytes.end()}; }

class ByteWindowTest : public testing::Test {
protected:
    test::TemporaryFolder folder;
};

TEST_F(ByteWindowTest, GivesEveryStretchInWhateverOrderItIsAskedFor) {
    const std::string content = Numbered(70'001);
    ByteWindow file;
    ASSERT_TRUE(file.Open(folder.Add("a", content)));
    ByteWindow memory(test::BytesOf(content));
    std::mt19937 random(7);
    for (int i = 0; i < 4000; ++i) {
        const std::size_t offset = random() % 70'500, length = random() % (i % 5 == 0 ? 17'000 : 40);
        if (i % 100 == 0) file.Expect(i % 200 == 0 ? 0 : random() % 40'000);
        const bool whole = length <= ByteWindow::kStretch && offset + length <= content.size();
        const std::string wanted = whole ? content.substr(offset, length) : std::string();
        ASSERT_EQ(Text(file.At(offset, length)), wanted) << offset << ' ' << length;
        ASSERT_EQ(Text(memory.At(offset, length)), wanted) << offset << ' ' << length;
        ASSERT_EQ(file.Has(offset, length), offset + length <= content.size());
        const std::string some = Text(file.Some(offset, length));
        ASSERT_EQ(some.empty(), length == 0 || offset >= content.size());
        ASSERT_EQ(some, offset < content.size() ? content.substr(offset, some.size()) : "");
        ASSERT_LE(some.size(), length);
    }
}

TEST_F(ByteWindowTest, CopiesWhatIsLongerThanAStretch) {
    const std::string content = Numbered(50'000);
    ByteWindow file;
    ASSERT_TRUE(file.Open(folder.Add("a", content)));
    EXPECT_EQ(file.Copy(100, 40'000, 40'000), content.substr(100, 40'000));
    EXPECT_EQ(file.Copy(100, 40'001, 40'000), std::nullopt);
    EXPECT_EQ(file.Copy(10'001, 40'000, 1 << 20), std::nullopt);
    EXPECT_EQ(file.Copy(49'999, 1, 100), content.substr(49'999));
    EXPECT_EQ(file.Copy(50'000, 0, 100), "");
}

TEST_F(ByteWindowTest, HasNothingPastTheEndOfAnyOffset) {
    ByteWindow file;
    ASSERT_TRUE(file.Open(folder.Add("a", "four")));
    EXPECT_TRUE(file.Has(4, 0));
    EXPECT_FALSE(file.Has(4, 1));
    EXPECT_FALSE(file.Has(~std::uint64_t{0}, 2));
    EXPECT_TRUE(file.At(~std::uint64_t{0} - 1, 4).empty());
    EXPECT_TRUE(file.Some(4, 10).empty());
    EXPECT_EQ(Text(file.Some(1, 10)), "our");
}

TEST_F(ByteWindowTest, RefusesWhatIsNoFile) {
    ByteWindow window;
    EXPECT_FALSE(window.Open(folder / "absent"));
    EXPECT_EQ(window.Size(), 0u);
    EXPECT_TRUE(window.At(0, 1).empty());
    EXPECT_FALSE(window.Has(0, 1));
    EXPECT_TRUE(window.At(0, 1).empty());
    EXPECT_FALSE(window.Open(folder.Path()));
}

TEST_F(ByteWindowTest, OpensTheNextFileAfterTheFirst) {
    ByteWindow window;
    ASSERT_TRUE(window.Open(folder.Add("long", Numbered(30'000))));
    EXPECT_EQ(window.At(20'000, 4).size(), 4u);
    ASSERT_TRUE(window.Open(folder.Add("short", "abc")));
    EXPECT_EQ(window.Size(), 3u);
    EXPECT_TRUE(window.At(20'000, 4).empty());
    EXPECT_EQ(Text(window.At(0, 3)), "abc");
}

}  // namespace
}  // namespace kalmora
