#include "base/byte_reader.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace kalmora {
namespace {

constexpr std::size_t kMax = std::numeric_limits<std::size_t>::max();
const std::vector<std::uint8_t> kBytes{0x12, 0x34, 0x56, 0x78, 0x9A};
const ByteReader kLittle(kBytes, ByteOrder::Little);
const ByteReader kBig(kBytes, ByteOrder::Big);

TEST(ByteReader, ReadsNumbersInItsOwnByteOrder) {
    EXPECT_EQ(kLittle.U8(0), 0x12);
    EXPECT_EQ(kLittle.U16(0), 0x3412);
    EXPECT_EQ(kBig.U16(0), 0x1234);
    EXPECT_EQ(kLittle.U32(1), 0x9A785634u);
    EXPECT_EQ(kBig.U32(1), 0x3456789Au);
}

TEST(ByteReader, ANumberMustLieInsideWhole) {
    EXPECT_EQ(kBig.U8(4), 0x9A);
    EXPECT_FALSE(kBig.U8(5));
    EXPECT_EQ(kBig.U16(3), 0x789A);
    EXPECT_FALSE(kBig.U16(4));
    EXPECT_TRUE(kBig.U32(1));
    EXPECT_FALSE(kBig.U32(2));
}

TEST(ByteReader, HugeOffsetsAndLengthsDoNotWrapAround) {
    EXPECT_FALSE(kBig.U8(kMax));
    EXPECT_FALSE(kBig.U16(kMax));
    EXPECT_FALSE(kBig.U32(kMax - 2));
    EXPECT_FALSE(kBig.Has(1, kMax));
    EXPECT_FALSE(kBig.Has(kMax, 1));
    EXPECT_TRUE(kBig.Bytes(1, kMax).empty());
    EXPECT_TRUE(kBig.Bytes(kMax, kMax).empty());
    EXPECT_FALSE(kBig.StartsWith(kMax, "x"));
}

TEST(ByteReader, NothingAtTheEndLiesInside) {
    EXPECT_TRUE(kBig.Has(5, 0));
    EXPECT_FALSE(kBig.Has(6, 0));
    EXPECT_FALSE(kBig.Has(5, 1));
}

TEST(ByteReader, BytesAreAllOfThemOrNone) {
    EXPECT_EQ(kBig.Bytes(1, 4).size(), 4u);
    EXPECT_EQ(kBig.Bytes(1, 4)[0], 0x34);
    EXPECT_TRUE(kBig.Bytes(1, 5).empty());
}

TEST(ByteReader, APartIsCutAtTheEndAndKeepsTheOrder) {
    const ByteReader part = kBig.Sub(2, 2);
    EXPECT_EQ(part.Length(), 2u);
    EXPECT_EQ(part.U16(0), 0x5678);
    EXPECT_FALSE(part.U8(2));
    EXPECT_EQ(kBig.Sub(2, kMax).Length(), 3u);
    EXPECT_EQ(kBig.Sub(2).Length(), 3u);
    EXPECT_EQ(kBig.Sub(5).Length(), 0u);
    EXPECT_EQ(kBig.Sub(kMax, kMax).Length(), 0u);
    EXPECT_EQ(kBig.Sub(1).Order(), ByteOrder::Big);
}

TEST(ByteReader, ATextIsFoundOnlyWhole) {
    const std::vector<std::uint8_t> bytes{'E', 'x', 'i', 'f', 0, 0xFF};
    const ByteReader reader(bytes, ByteOrder::Big);
    EXPECT_TRUE(reader.StartsWith(0, "Exif"));
    EXPECT_TRUE(reader.StartsWith(0, std::string_view("Exif\0\xFF", 6)));
    EXPECT_FALSE(reader.StartsWith(0, std::string_view("Exif\0\0", 6)));
    EXPECT_FALSE(reader.StartsWith(0, std::string_view("Exif\0\xFFx", 7)));
    EXPECT_FALSE(reader.StartsWith(1, "Exif"));
    EXPECT_FALSE(reader.StartsWith(3, std::string_view("f\0\xFFx", 4)));
    EXPECT_TRUE(reader.StartsWith(6, ""));
}

TEST(ByteReader, OneWithoutBytesAnswersNothing) {
    const ByteReader none;
    EXPECT_EQ(none.Length(), 0u);
    EXPECT_FALSE(none.U8(0));
    EXPECT_FALSE(none.U16(0));
    EXPECT_FALSE(none.U32(0));
    EXPECT_TRUE(none.Bytes(0, 1).empty());
    EXPECT_EQ(none.Sub(0).Length(), 0u);
}

}  // namespace
}  // namespace kalmora
