#include "media/exif_block.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "exif_builder.h"
#include "media/exif_block_map.h"

namespace kalmora::exif {
namespace {

using test::ExifBuilder;

constexpr std::uint16_t kDateTime = 0x0132, kMake = 0x010F, kUserComment = 0x9286, kXpComment = 0x9C9C,
                        kMakerNote = 0x927C, kByteType = 1, kAsciiType = 2, kUndefinedType = 7;
constexpr Growth kRoomy{.most = 65527, .step = 4096, .spare = 1024, .overhead = 10};

Edit Words(std::uint16_t tag, std::string value, Home home = Home::Main, std::uint16_t type = kAsciiType) {
    return {home, tag, type, std::move(value)};
}

// An edited block, and what is in it.
struct Edited {
    Edited(const std::string& block, std::vector<Edit> edits, const Growth& growth = kRoomy) {
        result = EditBlock(block, edits, growth, bytes);
    }
    std::string Value(std::uint16_t tag, Home home = Home::Main) const { return ValueIn(bytes, tag, home); }

    static std::string ValueIn(const std::string& block, std::uint16_t tag, Home home = Home::Main) {
        BlockMap map(block);
        if (!map.Follow()) return "unreadable";
        if (home == Home::Exif && !map.exif) return "no directory";
        const Entry* entry = (home == Home::Main ? map.main : *map.exif).Find(tag);
        if (!entry) return "absent";
        if (!entry->IsFar()) return {entry->field.data(), static_cast<std::size_t>(entry->length)};
        return block.substr(map.ValueOf(*entry).begin, entry->length);
    }

    EditResult result;
    std::string bytes;
};

// Places of bytes that differ, as [begin, end) stretches of the shorter one's length.
std::vector<std::pair<std::size_t, std::size_t>> Differences(const std::string& a, const std::string& b) {
    std::vector<std::pair<std::size_t, std::size_t>> found;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (a[i] == b[i]) continue;
        if (!found.empty() && found.back().second == i)
            ++found.back().second;
        else
            found.emplace_back(i, i + 1);
    }
    return found;
}

const std::string kZero(1, '\0');

class EditBlockOfEitherOrder : public testing::TestWithParam<ByteOrder> {
protected:
    // With a maker note, a preview and the GPS directory behind it.
    static std::string Camera() {
        return ExifBuilder(GetParam())
            .Ascii(ExifBuilder::Main, kMake, "Maker of cameras")
            .Ascii(ExifBuilder::Main, kDateTime, "2001:02:03 04:05:06")
            .Undefined(ExifBuilder::Exif, kMakerNote, std::string(300, 'm'))
            .Undefined(ExifBuilder::Exif, kUserComment, std::string(60, 'u'))
            .Ascii(ExifBuilder::Gps, 0x001D, "2001:02:03")
            .EmbeddedJpeg("\xFF\xD8" + std::string(500, 't') + "\xFF\xD9")
            .Build();
    }
};
INSTANTIATE_TEST_SUITE_P(EditBlock, EditBlockOfEitherOrder,
                         testing::Values(ByteOrder::Little, ByteOrder::Big), [](const auto& order) {
                             return order.param == ByteOrder::Big ? "BigEndian" : "LittleEndian";
                         });

TEST_P(EditBlockOfEitherOrder, OfAValueThatFitsChangesItsBytesAlone) {
    const std::string before = Camera(), value = "2008:05:06 07:08:09" + kZero;
    const Edited edited(before, {Words(kDateTime, value)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_EQ(edited.bytes.size(), before.size());
    EXPECT_EQ(edited.Value(kDateTime), value);
    const std::size_t at = before.find("2001:02:03 04:05:06");
    for (const auto& [begin, end] : Differences(before, edited.bytes)) {
        EXPECT_GE(begin, at);
        EXPECT_LE(end, at + value.size());
    }
}

TEST_P(EditBlockOfEitherOrder, OfAShorterValueLeavesNoOldWordsBehindIt) {
    const std::string before = Camera();
    const Edited edited(before, {Words(kUserComment, "short", Home::Exif, kUndefinedType)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_EQ(edited.bytes.size(), before.size());
    EXPECT_EQ(edited.Value(kUserComment, Home::Exif), "short");
    EXPECT_EQ(edited.bytes.find('u'), std::string::npos);
}

TEST_P(EditBlockOfEitherOrder, OfALongerValuePutsItBehindTheBlock) {
    const std::string before = Camera(), value(61, 'n');
    const Edited edited(before, {Words(kUserComment, value, Home::Exif, kUndefinedType)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_EQ(edited.Value(kUserComment, Home::Exif), value);
    // The entry alone changes where the camera wrote: its count and its offset.
    std::size_t changed = 0;
    for (const auto& [begin, end] : Differences(before, edited.bytes)) changed += end - begin;
    EXPECT_LE(changed, 8u);
    EXPECT_GE(edited.bytes.find(value), before.size());
}

TEST_P(EditBlockOfEitherOrder, OfANewEntryMovesItsDirectoryAndNothingElse) {
    const std::string before = Camera(), words("a\0b\0\0\0", 6);
    const Edited edited(before, {Words(kXpComment, words, Home::Main, kByteType)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_EQ(edited.Value(kXpComment), words);
    // Only the header's pointer to the main directory.
    for (const auto& [begin, end] : Differences(before, edited.bytes)) {
        EXPECT_GE(begin, 4u);
        EXPECT_LE(end, 8u);
    }
    for (const std::uint16_t tag : {kMake, kDateTime})
        EXPECT_EQ(edited.Value(tag), Edited::ValueIn(before, tag));
    EXPECT_EQ(edited.Value(kMakerNote, Home::Exif), std::string(300, 'm'));
    EXPECT_EQ(edited.bytes.find("mmm"), before.find("mmm"));
    EXPECT_EQ(edited.bytes.find("ttt"), before.find("ttt"));
    BlockMap map(edited.bytes);
    ASSERT_TRUE(map.Follow());
    EXPECT_TRUE(std::is_sorted(map.main.entries.begin(), map.main.entries.end(),
                               [](const Entry& a, const Entry& b) { return a.tag < b.tag; }));
    EXPECT_NE(map.main.next, 0u) << "the preview's directory is still there";
}

TEST_P(EditBlockOfEitherOrder, GrowsByWholeSteps) {
    const std::string before = Camera();
    const Edited edited(before, {Words(kXpComment, "abcdef", Home::Main, kByteType)});
    EXPECT_EQ((edited.bytes.size() - before.size()) % 4096, 0u);
    const Edited made("", {Words(kXpComment, "abcdef", Home::Main, kByteType)});
    EXPECT_EQ((made.bytes.size() + kRoomy.overhead) % 4096, 0u) << "with what comes into the file around it";
}

TEST_P(EditBlockOfEitherOrder, StaysAsLongAsItIsWhileItsRoomSuffices) {
    std::string block = Camera();
    EXPECT_EQ(Edited(block, {Words(kXpComment, "abcdef", Home::Main, kByteType)}).result, EditResult::Edited);
    block = Edited(block, {Words(kXpComment, "abcdef", Home::Main, kByteType)}).bytes;
    const std::string camera = Camera().substr(8);
    for (std::size_t length = 10; length <= 1000; length += 90) {
        const Edited next(block, {Words(kUserComment, std::string(length, 'n'), Home::Exif, kUndefinedType)});
        ASSERT_EQ(next.result, EditResult::Edited);
        EXPECT_EQ(next.bytes.size(), block.size());
        EXPECT_EQ(next.Value(kUserComment, Home::Exif), std::string(length, 'n'));
        EXPECT_EQ(next.Value(kXpComment), "abcdef");
        EXPECT_EQ(next.Value(kMakerNote, Home::Exif), std::string(300, 'm'));
        EXPECT_EQ(next.Value(kMake), "Maker of cameras" + kZero);
        block = next.bytes;
    }
    const Edited larger(block, {Words(kUserComment, std::string(9000, 'n'), Home::Exif, kUndefinedType)});
    EXPECT_EQ(larger.result, EditResult::Edited);
    EXPECT_GT(larger.bytes.size(), block.size());
    EXPECT_EQ(larger.Value(kUserComment, Home::Exif), std::string(9000, 'n'));
    EXPECT_EQ(larger.Value(kXpComment), "abcdef");
}

TEST_P(EditBlockOfEitherOrder, OfWhatItSaysAlreadyIsUnchanged) {
    const std::string before = Camera();
    EXPECT_EQ(Edited(before, {Words(kMake, "Maker of cameras" + kZero)}).result, EditResult::Unchanged);
    EXPECT_EQ(Edited(before, {Words(kUserComment, std::string(60, 'u'), Home::Exif, kUndefinedType)}).result,
              EditResult::Unchanged);
    const std::string grown = Edited(before, {Words(kXpComment, "abcdef", Home::Main, kByteType)}).bytes;
    EXPECT_EQ(Edited(grown, {Words(kXpComment, "abcdef", Home::Main, kByteType)}).result,
              EditResult::Unchanged);
    EXPECT_EQ(Edited(grown, {Words(kXpComment, "abcdef", Home::Main, kUndefinedType)}).result,
              EditResult::Edited)
        << "of another type";
    EXPECT_EQ(Edited(before, {}).result, EditResult::Unchanged);
    EXPECT_EQ(Edited(before, {Words(kXpComment, "")}).result, EditResult::Unchanged) << "no bytes, no edit";
    EXPECT_EQ(Edited(before, {Words(kXpComment, "x", Home::Main, 99)}).result, EditResult::Unchanged);
}

TEST_P(EditBlockOfEitherOrder, OfAShortValueStandsInItsEntry) {
    const Edited edited(Camera(), {Words(kMake, "abc" + kZero)});
    EXPECT_EQ(edited.Value(kMake), "abc" + kZero);
    const Edited back(edited.bytes, {Words(kMake, "longer again" + kZero)});
    EXPECT_EQ(back.Value(kMake), "longer again" + kZero);
    const Edited numbers(Camera(), {{Home::Main, 0x0128, 3, {}, {2}}, {Home::Main, 0x011A, 5, {}, {300, 1}}});
    EXPECT_EQ(numbers.Value(0x0128), test::Word16(GetParam(), 2));
    EXPECT_EQ(numbers.Value(0x011A), test::Word32(GetParam(), 300) + test::Word32(GetParam(), 1));
}

TEST_P(EditBlockOfEitherOrder, MakesAnExifDirectoryWhereThereIsNone) {
    const std::string before = ExifBuilder(GetParam()).Ascii(ExifBuilder::Main, kMake, "Maker").Build();
    EXPECT_FALSE(HasDirectory(before, Home::Exif));
    const Edited edited(before, {Words(kUserComment, "comment", Home::Exif, kUndefinedType)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_TRUE(HasDirectory(edited.bytes, Home::Exif));
    EXPECT_EQ(edited.Value(kUserComment, Home::Exif), "comment");
    EXPECT_EQ(edited.Value(kMake), "Maker" + kZero);
}

TEST_P(EditBlockOfEitherOrder, EditsManyAtOnce) {
    const std::string stamp = "2008:05:06 07:08:09" + kZero;
    const Edited edited(Camera(),
                        {Words(kDateTime, stamp), Words(0x9003, stamp, Home::Exif),
                         Words(0x9004, stamp, Home::Exif), Words(kMake, "Another maker, of a longer name")});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_EQ(edited.Value(kDateTime), stamp);
    EXPECT_EQ(edited.Value(0x9003, Home::Exif), stamp);
    EXPECT_EQ(edited.Value(0x9004, Home::Exif), stamp);
    EXPECT_EQ(edited.Value(kMake), "Another maker, of a longer name");
    EXPECT_EQ(edited.Value(kMakerNote, Home::Exif), std::string(300, 'm'));
}

TEST_P(EditBlockOfEitherOrder, KeepsAnOddOrderOfEntries) {
    const std::string before = ExifBuilder(GetParam())
                                   .Ascii(ExifBuilder::Main, kDateTime, "2001:02:03 04:05:06")
                                   .Ascii(ExifBuilder::Main, kMake, "Maker")
                                   .Short(ExifBuilder::Main, 0x0112, 6)
                                   .Build();
    const Edited edited(before, {Words(kXpComment, "abcdef", Home::Main, kByteType)});
    BlockMap map(edited.bytes);
    ASSERT_TRUE(map.Follow());
    std::vector<int> tags;
    for (const Entry& entry : map.main.entries) tags.push_back(entry.tag);
    EXPECT_EQ(tags, (std::vector<int>{kDateTime, kMake, 0x0112, kXpComment}));
}

TEST_P(EditBlockOfEitherOrder, DoesNotWriteWhereTwoValuesStandTogether) {
    const ByteOrder order = GetParam();
    const std::string shared = "shared by two entries";
    std::string block = ExifBuilder(order)
                            .Ascii(ExifBuilder::Main, kMake, shared)
                            .Pointing(ExifBuilder::Main, 0x0110, kAsciiType, 22, 0)
                            .Build();
    const std::string place = test::Word32(order, static_cast<std::uint32_t>(block.find(shared)));
    block.replace(8 + 2 + 12 + 8, 4, place);  // the second entry's offset
    ASSERT_EQ(Edited::ValueIn(block, 0x0110), shared + kZero);
    const Edited edited(block, {Words(kMake, "short" + kZero)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_EQ(edited.Value(kMake), "short" + kZero);
    EXPECT_EQ(edited.Value(0x0110), shared + kZero);
}

// Four 16-bit numbers lie at a 32-bit place, which in a big-endian block begins with its high word.
TEST_P(EditBlockOfEitherOrder, LongListOfShortNumbersStandsWhereItsOffsetSays) {
    const std::string numbers = "12345678";
    const std::string before = ExifBuilder(GetParam())
                                   .Ascii(ExifBuilder::Main, kMake, "Maker")
                                   .Raw(ExifBuilder::Exif, 0x9214, 3, 4, numbers)
                                   .Build();
    EXPECT_EQ(Edited::ValueIn(before, 0x9214, Home::Exif), numbers);
    const Edited first(before, {Words(kUserComment, "words", Home::Exif, kUndefinedType)});
    const Edited second(first.bytes, {Words(kXpComment, "abcdef", Home::Main, kByteType)});
    ASSERT_EQ(second.result, EditResult::Edited);
    EXPECT_EQ(second.bytes.size(), first.bytes.size());
    EXPECT_EQ(second.Value(0x9214, Home::Exif), numbers);
}

// Another program has moved the note and not its values: what it reads now, it reads afterwards.
TEST_P(EditBlockOfEitherOrder, DoesNotWriteWhereAMakerNoteSeesAValueOfItsOwn) {
    const ByteOrder order = GetParam();
    const auto blockWith = [order](std::uint32_t place) {
        const std::string note = test::Word16(order, 1) + test::Word16(order, 7) + test::Word16(order, 2) +
                                 test::Word32(order, 20) + test::Word32(order, place) + std::string(40, '\0');
        return ExifBuilder(order)
            .Undefined(ExifBuilder::Exif, kMakerNote, note)
            .Undefined(ExifBuilder::Exif, kUserComment, std::string(60, 'u'))
            .Build();
    };
    const auto place = static_cast<std::uint32_t>(blockWith(0).find("uuu"));
    const std::string before = blockWith(place + 10);
    const Edited edited(before, {Words(kUserComment, "short", Home::Exif, kUndefinedType)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_EQ(edited.Value(kUserComment, Home::Exif), "short");
    EXPECT_EQ(edited.bytes.substr(place, 60), std::string(60, 'u'));
    // Where the note sees the entry itself, a copy of its directory is edited.
    const std::uint32_t entries = place - 54 - 4 - 12;  // in front of the note, which the words follow
    const std::string seen = blockWith(entries);
    const Edited copied(seen, {Words(kUserComment, "short", Home::Exif, kUndefinedType)});
    ASSERT_EQ(copied.result, EditResult::Edited);
    EXPECT_EQ(copied.Value(kUserComment, Home::Exif), "short");
    EXPECT_EQ(copied.bytes.substr(entries, 20), seen.substr(entries, 20));
}

TEST_P(EditBlockOfEitherOrder, DirectoryThatEndsWithTheBlockIsFollowed) {
    const std::string before =
        ExifBuilder(GetParam()).Short(ExifBuilder::Main, 0x0112, 6).WithoutNextOffset().Build();
    const Edited edited(before, {Words(kXpComment, "abcdef", Home::Main, kByteType)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    BlockMap map(edited.bytes);
    ASSERT_TRUE(map.Follow());
    EXPECT_EQ(map.main.next, 0u);
    EXPECT_EQ(edited.Value(0x0112), test::Word16(GetParam(), 6));
}

TEST_P(EditBlockOfEitherOrder, WhatIsNoBlockIsRefused) {
    std::string wrongOrder = Camera(), wrongNumber = Camera(), outside = Camera(), inside = Camera();
    wrongOrder[0] = 'X';
    wrongNumber.replace(2, 2, test::Word16(GetParam(), 43));
    outside.replace(4, 4, test::Word32(GetParam(), static_cast<std::uint32_t>(outside.size() - 1)));
    inside.replace(4, 4, test::Word32(GetParam(), 7));
    for (const std::string& block :
         {wrongOrder, wrongNumber, outside, inside, std::string("II"), Camera().substr(0, 20)}) {
        const Edited edited(block, {Words(kMake, "x")});
        EXPECT_EQ(edited.result, EditResult::Unreadable);
        EXPECT_FALSE(HasDirectory(block, Home::Main));
    }
}

TEST_P(EditBlockOfEitherOrder, ExifDirectoryThatCannotBeFollowedIsNotReplaced) {
    for (const std::uint32_t offset : {0u, 7u, 60'000u, 0xFFFFFFFFu}) {
        const std::string block = ExifBuilder(GetParam())
                                      .Ascii(ExifBuilder::Main, kMake, "Maker")
                                      .Pointing(ExifBuilder::Main, 0x8769, 4, 1, offset)
                                      .Build();
        EXPECT_EQ(Edited(block, {Words(kUserComment, "x", Home::Exif, kUndefinedType)}).result,
                  EditResult::Unreadable)
            << offset;
    }
}

// An entry that points past the end says nothing now; it must not begin to say something.
TEST_P(EditBlockOfEitherOrder, DoesNotGrowUnderAnEntryThatPointsPastTheEnd) {
    const auto blockWith = [](std::uint32_t offset, std::uint32_t length) {
        return ExifBuilder(GetParam())
            .Ascii(ExifBuilder::Main, kMake, "Maker")
            .Pointing(ExifBuilder::Main, 0x0110, kAsciiType, length, offset)
            .Build();
    };
    const Edit edit = Words(kXpComment, "abcdef", Home::Main, kByteType);
    EXPECT_EQ(Edited(blockWith(50, 100), {edit}).result, EditResult::Unreadable);
    EXPECT_EQ(Edited(blockWith(3000, 100), {edit}).result, EditResult::Unreadable);
    EXPECT_EQ(Edited(blockWith(100'000, 100), {edit}).result, EditResult::Edited) << "far behind";
    EXPECT_EQ(Edited(blockWith(50, 100), {Words(kMake, "other" + kZero)}).result, EditResult::Edited)
        << "without growing";
}

TEST_P(EditBlockOfEitherOrder, DoesNotTakeForItsOwnWhatHoldsAnothersBytes) {
    std::string block = Edited(Camera(), {Words(kXpComment, "abcdef", Home::Main, kByteType)}).bytes;
    // Another program has put the preview's directory into our room.
    BlockMap map(block);
    ASSERT_TRUE(map.Follow());
    const std::size_t room = block.size() - 200;
    const std::string directory = test::Word16(GetParam(), 1) + test::Word16(GetParam(), 0x0103) +
                                  test::Word16(GetParam(), 3) + test::Word32(GetParam(), 1) +
                                  test::Word16(GetParam(), 6) + std::string(6, '\0');
    block.replace(room, directory.size(), directory);
    block.replace(map.main.offset + 2 + map.main.entries.size() * 12, 4,
                  test::Word32(GetParam(), static_cast<std::uint32_t>(room)));
    const Edited edited(block, {Words(kXpComment, std::string(700, 'x'), Home::Main, kByteType)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_GT(edited.bytes.size(), block.size());
    EXPECT_EQ(edited.bytes.substr(room, directory.size()), directory);
    EXPECT_EQ(edited.Value(kXpComment), std::string(700, 'x'));
}

TEST_P(EditBlockOfEitherOrder, StopsAtItsLimit) {
    const std::string before = Camera();
    // What the smallest area takes: the directory with one entry more, the words, our sign.
    const auto lengthFor = [&](std::size_t most, std::size_t words) -> std::size_t {
        const Edited edited(before, {Words(kXpComment, std::string(words, 'x'), Home::Main, kByteType)},
                            {.most = most, .step = 4096, .spare = 1024});
        return edited.result == EditResult::Edited ? edited.bytes.size() : 0;
    };
    std::size_t least = before.size();
    while (lengthFor(least, 100) == 0) ++least;
    EXPECT_EQ(lengthFor(least, 100), least);
    EXPECT_EQ(lengthFor(least, 102), 0u);
    EXPECT_EQ(lengthFor(least + 2, 102), least + 2);
    EXPECT_EQ(lengthFor(65527, 65000), 0u);
    EXPECT_NE(lengthFor(65527, 60'000), 0u);
    EXPECT_EQ(Edited(before, {Words(kXpComment, std::string(70'000, 'x'), Home::Main, kByteType)}).result,
              EditResult::TooLarge);
}

TEST_P(EditBlockOfEitherOrder, SurvivesEveryCutAndEveryWrongOffset) {
    const std::string before = Camera();
    const std::vector<Edit> edits{Words(kXpComment, "abcdef", Home::Main, kByteType),
                                  Words(kUserComment, std::string(70, 'n'), Home::Exif, kUndefinedType)};
    for (std::size_t length = 0; length < before.size(); ++length) {
        const Edited edited(before.substr(0, length), edits);
        if (edited.result == EditResult::Edited) {
            EXPECT_EQ(edited.Value(kXpComment), "abcdef") << length;
        }
    }
    for (std::size_t at = 4; at < 200; ++at)
        for (const char byte : {'\0', '\x01', '\x10', '\x7F', '\xFF'}) {
            std::string block = before;
            block[at] = byte;
            const Edited edited(block, edits);
            if (edited.result != EditResult::Edited) continue;
            EXPECT_EQ(edited.Value(kXpComment), "abcdef") << at;
            EXPECT_EQ(edited.Value(kUserComment, Home::Exif), std::string(70, 'n')) << at;
        }
}

TEST(EditBlock, OfNoneMakesALittleEndianOne) {
    const Edited edited("", {Words(kXpComment, "abcdef", Home::Main, kByteType),
                             Words(kUserComment, "comment", Home::Exif, kUndefinedType)});
    ASSERT_EQ(edited.result, EditResult::Edited);
    EXPECT_EQ(edited.bytes.substr(0, 4), std::string("II*\0", 4));
    EXPECT_EQ(edited.Value(kXpComment), "abcdef");
    EXPECT_EQ(edited.Value(kUserComment, Home::Exif), "comment");
    const Edited again(edited.bytes,
                       {Words(kUserComment, std::string(500, 'x'), Home::Exif, kUndefinedType)});
    EXPECT_EQ(again.bytes.size(), edited.bytes.size());
}

}  // namespace
}  // namespace kalmora::exif
