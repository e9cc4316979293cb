#include "media/maker_note.h"

#include <gtest/gtest.h>

#include "exif_builder.h"

namespace kalmora {
namespace {

std::string Entry(unsigned tag, std::uint32_t value) {
    return test::Word16(ByteOrder::Little, tag) + std::string(6, 'x') +
           test::Word32(ByteOrder::Little, value);
}

MakerNoteValues Walk(const std::string& note) {
    ByteWindow file({reinterpret_cast<const std::uint8_t*>(note.data()), note.size()});
    return WalkMakerNote(file, 0, static_cast<std::uint32_t>(note.size()));
}

const std::string kHead(14, 'h');

TEST(MakerNote, Of26BytesIsSkippedAndOf27HasOneEntry) {
    EXPECT_EQ(Walk(kHead + Entry(0x1031, 5)).mode, 0);
    EXPECT_EQ(Walk(kHead + Entry(0x1031, 5) + "x").mode, 5);
}

TEST(MakerNote, EndsAtTheSecondZeroTagThoughWantedTagsFollow) {
    const std::string zero = Entry(0, 1), wanted = Entry(0x1031, 5) + Entry(0x4000, 1);
    const MakerNoteValues one = Walk(kHead + zero + wanted + "x");
    EXPECT_EQ(one.mode, 5);
    EXPECT_EQ(one.face, 1);
    const MakerNoteValues two = Walk(kHead + zero + zero + wanted + "x");
    EXPECT_EQ(two.mode, 0);
    EXPECT_EQ(two.face, 0);
    const MakerNoteValues between = Walk(kHead + zero + Entry(0x1031, 5) + zero + Entry(0x4000, 1) + "x");
    EXPECT_EQ(between.mode, 5);
    EXPECT_EQ(between.face, 0);
}

TEST(MakerNote, TellsAFaceByTheTagWhateverItsValue) {
    EXPECT_EQ(Walk(kHead + Entry(0x4000, 0) + "x").face, 1);
}

TEST(MakerNote, LeavesOutALaterEntryThatEndsJustAtTheEnd) {
    const std::string first = Entry(7, 7);
    EXPECT_EQ(Walk(kHead + first + Entry(0x1031, 5)).mode, 0);
    EXPECT_EQ(Walk(kHead + first + Entry(0x1031, 5) + "x").mode, 5);
}

TEST(MakerNote, TakesALargeValueAsSigned) {
    EXPECT_EQ(Walk(kHead + Entry(0x1031, 0xFFFFFFFE) + "x").mode, -2);
}

TEST(MakerNote, IsWalkedToItsEndHoweverLong) {
    std::string note = kHead;
    for (int i = 0; i < 5000; ++i) note += Entry(7, 7);
    EXPECT_EQ(Walk(note + Entry(0x1031, 5) + "x").mode, 5);
}

TEST(MakerNote, ThatPassesTheEndOfTheFileGivesWhatIsThere) {
    const std::string note = kHead + Entry(0x1031, 5);
    ByteWindow file({reinterpret_cast<const std::uint8_t*>(note.data()), note.size()});
    EXPECT_EQ(WalkMakerNote(file, 0, 1000).mode, 5);
    EXPECT_EQ(WalkMakerNote(file, 5000, 1000).mode, 0);
}

}  // namespace
}  // namespace kalmora
