#include "media/multi_picture_index.h"

#include <gmock/gmock.h>

#include "multi_picture_builder.h"

namespace kalmora {
namespace {

using test::MultiPictureIndexOf;

// Their lengths and offsets.
std::vector<std::pair<std::uint32_t, std::uint32_t>> PicturesOf(const std::string& payload) {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> all;
    for (const auto& [length, offset] :
         ReadMultiPictureIndex(payload).value_or(std::vector<IndexedPicture>{}))
        all.emplace_back(length, offset);
    return all;
}

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::uint64_t kHeaderAt = 100;

TEST(MultiPictureIndex, IsReadInBothOrders) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big})
        EXPECT_THAT(PicturesOf(MultiPictureIndexOf({{5000, 0}, {700, 4900}}, order)),
                    ElementsAre(Pair(5000, 0), Pair(700, 4900)));
}

TEST(MultiPictureIndex, PicturesBehindTheFirstMoveWithItsEnd) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big})
        for (const int by : {30, -30}) {
            std::string payload = MultiPictureIndexOf({{5000, 0}, {700, 4900}, {80, 5600}}, order);
            ASSERT_TRUE(ShiftMultiPictureIndex(payload, kHeaderAt, {5000, by}));
            EXPECT_THAT(PicturesOf(payload),
                        ElementsAre(Pair(5000 + by, 0), Pair(700, 4900 + by), Pair(80, 5600 + by)));
        }
}

TEST(MultiPictureIndex, BytesInFrontOfTheHeaderMakeTheFirstPictureLongerAlone) {
    std::string payload = MultiPictureIndexOf({{5000, 0}, {700, 4900}});
    ASSERT_TRUE(ShiftMultiPictureIndex(payload, kHeaderAt, {20, 4096}));
    EXPECT_THAT(PicturesOf(payload), ElementsAre(Pair(9096, 0), Pair(700, 4900)));
}

TEST(MultiPictureIndex, BytesBehindTheHeaderMoveThePictures) {
    std::string payload = MultiPictureIndexOf({{5000, 0}, {700, 4900}});
    ASSERT_TRUE(ShiftMultiPictureIndex(payload, kHeaderAt, {300, 4096}));
    EXPECT_THAT(PicturesOf(payload), ElementsAre(Pair(9096, 0), Pair(700, 8996)));
}

TEST(MultiPictureIndex, BytesBetweenTwoPicturesMoveTheLaterOne) {
    std::string payload = MultiPictureIndexOf({{5000, 0}, {700, 4950}, {80, 6000}});
    ASSERT_TRUE(ShiftMultiPictureIndex(payload, kHeaderAt, {5750, 8}));
    EXPECT_THAT(PicturesOf(payload), ElementsAre(Pair(5000, 0), Pair(700, 4950), Pair(80, 6008)));
}

TEST(MultiPictureIndex, PictureThatIsNamedAndNotThereStaysSo) {
    std::string payload = MultiPictureIndexOf({{5000, 0}, {0, 0}, {0, 77}});
    ASSERT_TRUE(ShiftMultiPictureIndex(payload, kHeaderAt, {5000, 9}));
    EXPECT_THAT(PicturesOf(payload), ElementsAre(Pair(5009, 0), Pair(0, 0), Pair(0, 77)));
}

TEST(MultiPictureIndex, WhatCannotBeSaidIsRefused) {
    const std::string good = MultiPictureIndexOf({{5000, 0}, {700, 0xFFFFFFF0}});
    std::string payload = good;
    EXPECT_FALSE(ShiftMultiPictureIndex(payload, kHeaderAt, {5000, 16})) << "past 32 bits";
    EXPECT_EQ(payload, good);
    payload = MultiPictureIndexOf({{5000, 0}, {700, 4900}});
    EXPECT_FALSE(ShiftMultiPictureIndex(payload, kHeaderAt, {5001, 1})) << "inside the second picture";
    EXPECT_FALSE(ShiftMultiPictureIndex(payload, kHeaderAt, {5000, -5001})) << "shorter than nothing";
}

TEST(MultiPictureIndex, BrokenOneIsNone) {
    const std::string good = MultiPictureIndexOf({{5000, 0}, {700, 4900}});
    EXPECT_FALSE(IsMultiPictureIndex("MPF"));
    for (std::size_t length = 0; length < good.size(); ++length) {
        std::string cut = good.substr(0, length);
        EXPECT_THAT(PicturesOf(cut), IsEmpty()) << length;
        EXPECT_FALSE(ShiftMultiPictureIndex(cut, kHeaderAt, {5000, 1})) << length;
    }
    for (const char* broken : {"XXF\0II*\0\x08\0\0\0", "MPF\0IM*\0\x08\0\0\0", "MPF\0II+\0\x08\0\0\0"})
        EXPECT_FALSE(ReadMultiPictureIndex(std::string(broken, 12) + good.substr(12))) << broken;
}

}  // namespace
}  // namespace kalmora
