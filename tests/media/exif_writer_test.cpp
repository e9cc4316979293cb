#include "media/exif_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "exif_builder.h"
#include "media/exif_block_map.h"
#include "media/exif_reader.h"
#include "multi_picture_builder.h"
#include "platform/files.h"
#include "write_fixture.h"

namespace kalmora {
namespace {

using exif::Edit;
using test::ContentOf;
using test::ExifBuilder;
using test::ExifSegment;
using test::JpegOf;
using test::JpegSegmentBytes;
using test::JpegWith;

const std::string kJfif = JpegSegmentBytes(0xE0, std::string("JFIF\0\1\2\1\0\x48\0\x96\0\0", 14));

TEST(ExifEdits, OfAUserCommentHaveTheCodeAsciiAndAZeroAtTheEnd) {
    const Edit edit = UserCommentEdit("words");
    EXPECT_EQ(edit.tag, 0x9286);
    EXPECT_EQ(edit.type, 7);
    EXPECT_EQ(edit.value, std::string("ASCII\0\0\0words\0", 14));
    EXPECT_EQ(UserCommentEdit("").value, std::string("ASCII\0\0\0\0", 9));
}

TEST(ExifEdits, OfAnXpCommentAreUtf16WithAZeroWordAtTheEnd) {
    const Edit edit = XpCommentEdit("a\u3042\U0001F600");
    EXPECT_EQ(edit.tag, 0x9C9C);
    EXPECT_EQ(edit.type, 1);
    EXPECT_EQ(edit.value, std::string("a\0\x42\x30\x3D\xD8\x00\xDE\0\0", 10));
    EXPECT_EQ(XpCommentEdit("").value, std::string(2, '\0'));
}

TEST(ExifEdits, OfADateAreThreeTagsWithTheZeroCounted) {
    const ExifEdits edits = DateEdits({2008, 5, 2, 6, 7, 8, 9, 0});
    ASSERT_EQ(edits.size(), 3u);
    constexpr std::array<std::uint16_t, 3> kTags{0x0132, 0x9003, 0x9004};
    for (std::size_t i = 0; i < edits.size(); ++i) {
        EXPECT_EQ(edits[i].tag, kTags[i]);
        EXPECT_EQ(edits[i].type, 2);
        EXPECT_EQ(edits[i].value, std::string("2008:05:06 07:08:09\0", 20));
    }
}

TEST(ExifEdits, OfATextTagHaveNoZeroAtTheEnd) {
    const Edit edit = TextTagEdit(0x010F, "SHARP\u3042");
    EXPECT_EQ(edit.type, 2);
    EXPECT_EQ(edit.value, "SHARP\x82\xA0");
}

class ExifWriter : public test::WriteTest {
protected:
    std::string After(const std::string& before, const ExifEdits& edits,
                      RewriteResult expected = RewriteResult::Written) {
        const std::string path = folder.Add("a.jpg", before);
        EXPECT_EQ(WriteExif(path, edits), expected);
        EXPECT_EQ(FilesInTemp(), 0u);
        return ContentOf(path);
    }
    static PhotoMetadata Metadata(const std::string& jpeg) {
        ByteWindow window({reinterpret_cast<const std::uint8_t*>(jpeg.data()), jpeg.size()});
        PhotoMetadata metadata;
        ReadPhotoMetadata(window, "test", metadata);
        return metadata;
    }
    static const ExifEdits& Words() {
        static const ExifEdits edits{XpCommentEdit("words")};
        return edits;
    }
};

TEST_F(ExifWriter, GivesAPhotoWithoutExifABlockBehindItsHead) {
    const std::string extension = JpegSegmentBytes(0xE0, std::string("JFXX\0\x13", 6)),
                      icc = JpegSegmentBytes(0xE2, "ICC_PROFILE"), xmp = JpegSegmentBytes(0xE1, "http://ns");
    for (const auto& [head, rest] :
         {std::pair{kJfif, icc}, {kJfif + extension, xmp}, {std::string(), icc + xmp}}) {
        const std::string before = JpegOf(head + rest), after = After(before, Words());
        const std::size_t at = 2 + head.size();
        EXPECT_EQ(after.substr(0, at), before.substr(0, at));
        EXPECT_EQ(after.substr(at, 2), "\xFF\xE1");
        EXPECT_EQ(after.substr(at + 4, 6), std::string("Exif\0\0", 6));
        EXPECT_EQ(after.substr(after.size() - (before.size() - at)), before.substr(at));
        EXPECT_EQ(Metadata(after).xpComment, "words");
        EXPECT_EQ((after.size() - before.size()) % 4096, 0u) << "so that a file system can insert it";
    }
}

TEST_F(ExifWriter, GivesANewBlockWhatReadersExpectOfOne) {
    const std::string after = After(JpegOf(kJfif, 640, 480), DateEdits({2008, 5, 2, 6, 7, 8, 9, 0}));
    const std::size_t at = after.find(std::string("Exif\0\0", 6)) + 6;
    const std::string block = after.substr(at);
    exif::BlockMap map(block);
    ASSERT_TRUE(map.Follow());
    std::vector<int> main, photo;
    for (const exif::Entry& entry : map.main.entries) main.push_back(entry.tag);
    for (const exif::Entry& entry : map.exif->entries) photo.push_back(entry.tag);
    EXPECT_EQ(main, (std::vector<int>{0x011A, 0x011B, 0x0128, 0x0132, 0x0213, 0x8769}));
    EXPECT_EQ(photo, (std::vector<int>{0x9000, 0x9003, 0x9004, 0x9101, 0xA000, 0xA001, 0xA002, 0xA003}));
    EXPECT_EQ(map.FieldNumber(*map.exif->Find(0xA002)), 640u);
    EXPECT_EQ(map.FieldNumber(*map.exif->Find(0xA003)), 480u);
    // 72 by 150 pixels an inch, as JFIF has it.
    EXPECT_EQ(block.substr(map.ValueOf(*map.main.Find(0x011A)).begin, 8),
              std::string("\x48\0\0\0\1\0\0\0", 8));
    EXPECT_EQ(block.substr(map.ValueOf(*map.main.Find(0x011B)).begin, 8),
              std::string("\x96\0\0\0\1\0\0\0", 8));
}

TEST_F(ExifWriter, EditsTheBlockThatTheReaderReads) {
    const std::string empty = ExifSegment(std::string("II*\0\x08\0\0\0\0\0\0\0\0\0", 14));
    const std::string xmp = JpegSegmentBytes(0xE1, "http://ns.adobe.com/xap/1.0/");
    const std::string real = ExifSegment(ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").Build());
    const std::string before = JpegOf(kJfif + xmp + empty + real + JpegSegmentBytes(0xED, "Photoshop"));
    const std::string after = After(before, Words());
    EXPECT_EQ(Metadata(after).xpComment, "words");
    EXPECT_EQ(Metadata(after).make, "Maker");
    const std::size_t front = 2 + kJfif.size() + xmp.size() + empty.size();
    EXPECT_EQ(after.substr(0, front), before.substr(0, front));
    const std::string rest = before.substr(front + real.size());
    EXPECT_EQ(after.substr(after.size() - rest.size()), rest);
}

TEST_F(ExifWriter, LeavesEveryOtherByteOfTheFile) {
    const std::string behind = JpegSegmentBytes(0xE2, "ICC_PROFILE") +
                               JpegSegmentBytes(0xED, "Photoshop 3.0") + JpegSegmentBytes(0xFE, "remark");
    const std::string block = ExifBuilder(ByteOrder::Big)
                                  .Ascii(ExifBuilder::Main, 0x010F, "Maker")
                                  .Undefined(ExifBuilder::Exif, 0x927C, std::string(500, 'm'))
                                  .EmbeddedJpeg("\xFF\xD8thumbnail\xFF\xD9")
                                  .Build();
    const std::string before = JpegOf(kJfif + ExifSegment(block) + behind) + "data behind the picture";
    const std::string after = After(before, Words());
    const std::size_t at = 2 + kJfif.size();
    const std::string rest = before.substr(at + 4 + 6 + block.size());
    EXPECT_EQ(after.substr(0, at), before.substr(0, at));
    EXPECT_EQ(after.substr(after.size() - rest.size()), rest);
    // And inside the block all but the pointer to the main directory.
    const std::size_t blockAt = at + 10;
    EXPECT_EQ(after.substr(blockAt, 4), block.substr(0, 4));
    EXPECT_EQ(after.substr(blockAt + 8, block.size() - 8), block.substr(8));
}

TEST_F(ExifWriter, LaterWordsChangeTheBlockAlone) {
    const std::string first =
        After(JpegWith(ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker")), Words());
    const std::string path = folder.Add("b.jpg", first);
    for (int i = 1; i <= 10; ++i) {
        ASSERT_EQ(WriteExif(path, ExifEdits{XpCommentEdit(std::string(i * 20, 'w'))}),
                  RewriteResult::Written);
        EXPECT_EQ(ContentOf(path).size(), first.size());
    }
    EXPECT_EQ(Metadata(ContentOf(path)).xpComment, std::string(200, 'w'));
}

TEST_F(ExifWriter, WordsThatPassTheSegmentAreRefused) {
    const std::string before =
        JpegWith(ExifBuilder().Undefined(ExifBuilder::Exif, 0x927C, std::string(60'000, 'm')));
    EXPECT_EQ(After(before, {UserCommentEdit(std::string(6000, 'x'))}, RewriteResult::ExifFull), before);
    const std::string after = After(before, {UserCommentEdit(std::string(5000, 'x'))});
    EXPECT_NE(after.find(std::string(5000, 'x')), std::string::npos);
    EXPECT_NE(after.find(std::string(60'000, 'm')), std::string::npos);
    EXPECT_EQ(After(JpegOf(""), {UserCommentEdit(std::string(65'500, 'x'))}, RewriteResult::ExifFull),
              JpegOf(""));
    EXPECT_EQ(After(JpegOf(""), {UserCommentEdit(std::string(70'000, 'x'))}, RewriteResult::ExifFull),
              JpegOf(""));
}

TEST_F(ExifWriter, SegmentIsFilledToItsLastByte) {
    std::size_t longest = 0;
    for (std::size_t length = 65'000; length < 65'533; ++length) {
        const std::string path = folder.Add("a.jpg", JpegOf(""));
        if (WriteExif(path, ExifEdits{XpCommentEdit(std::string(length / 2, 'x'))}) != RewriteResult::Written)
            break;
        longest = length;
        const std::string after = ContentOf(path);
        EXPECT_EQ(Metadata(after).xpComment, std::string(length / 2, 'x'));
    }
    EXPECT_GT(longest, 65'300u);
}

TEST_F(ExifWriter, WhatIsNoJpegOrABrokenOneIsLeft) {
    const std::string whole = JpegOf(kJfif);
    for (const std::string& before :
         {std::string(), std::string("words"), std::string("\xFF\xD8"), std::string("\x89PNG\r\n\x1A\n"),
          ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "a TIFF").Build(),
          whole.substr(0, whole.size() - 25), "\xFF\xD8" + kJfif + "\xFF\xD9",
          "\xFF\xD8\xFF\xE1\xFF\xFF" + std::string("Exif\0\0II*\0", 10)})
        EXPECT_EQ(
            After(before, Words(),
                  before.starts_with("\xFF\xD8") ? RewriteResult::NotWhole : RewriteResult::Unsupported),
            before);
    EXPECT_EQ(WriteExif(folder / "absent.jpg", Words()), RewriteResult::Unreadable);
    EXPECT_EQ(WriteExif(folder.Path(), Words()), RewriteResult::Unreadable);
}

TEST_F(ExifWriter, BlockThatCannotBeFollowedIsLeft) {
    std::string broken = ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").Build();
    broken.replace(4, 4, test::Word32(ByteOrder::Little, 60'000));
    const std::string before = JpegOf(kJfif + ExifSegment(broken));
    EXPECT_EQ(After(before, Words(), RewriteResult::ExifUnclear), before);
}

TEST_F(ExifWriter, BlockThatGoesOnInTheNextSegmentIsLeft) {
    const std::string before =
        JpegOf(ExifSegment(ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").Build()) +
               ExifSegment(std::string(400, 'c')));
    EXPECT_EQ(After(before, Words(), RewriteResult::ExifUnclear), before);
}

// The index of further pictures counts from its own place: what lies in front of it may grow, and what
// lies behind it may not.
TEST_F(ExifWriter, PicturesThatAnIndexTellsOfKeepTheirPlaceFromIt) {
    const std::string index = JpegSegmentBytes(0xE2, std::string("MPF\0II*\0\x08\0\0\0", 12));
    const std::string block = ExifSegment(ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").Build());
    const std::string second = JpegOf("", 100, 80);
    const std::string good = JpegOf(block + index) + second, bad = JpegOf(index + block) + second;
    const std::string after = After(good, Words());
    EXPECT_EQ(after.find(second) - after.find("MPF"), good.find(second) - good.find("MPF"));
    EXPECT_EQ(After(bad, Words(), RewriteResult::IndexUnclear), bad);
    EXPECT_EQ(After(JpegOf(index) + second, Words()).find("MPF") > 4096, true)
        << "without Exif the index is behind";
}

TEST_F(ExifWriter, NoteThatTellsOfAPictureBehindTheSegmentKeepsItsPlace) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
        const auto jpegWith = [&](std::uint32_t place) {
            std::string note(100, 'm');
            note.replace(40, 4, test::Word32(order, place));
            return JpegWith(ExifBuilder(order).Undefined(ExifBuilder::Exif, 0x927C, note)) +
                   JpegOf("", 100, 80);
        };
        const std::string some = jpegWith(0);
        const auto place = static_cast<std::uint32_t>(some.rfind("\xFF\xD8") - 12);  // counted from the block
        const std::string pointing = jpegWith(place);
        EXPECT_EQ(After(pointing, Words(), RewriteResult::MakerNoteUnclear), pointing);
        After(jpegWith(place + 1), Words());
    }
}

TEST_F(ExifWriter, StrayBytesInFrontOfTheBlockStay) {
    const std::string block = ExifSegment(ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").Build());
    const std::string before = JpegOf(kJfif + "stray" + block);
    const std::string after = After(before, Words());
    EXPECT_EQ(Metadata(after).xpComment, "words");
    EXPECT_NE(after.find("stray"), std::string::npos);
    const std::string without = JpegOf(kJfif + "stray");
    EXPECT_EQ(After(without, Words(), RewriteResult::NotWhole), without);
}

TEST_F(ExifWriter, KeepsTheFileItsBirthAndItsLastAccess) {
    const std::string path = folder.Add("a.jpg", JpegOf(kJfif));
    files::SetTimes(path, FileTime{123'456'789'000'000'000}, FileTime{123'456'000'000'000'000});
    const auto before = files::GetStatus(path);
    ASSERT_EQ(WriteExif(path, Words()), RewriteResult::Written);
    const auto after = files::GetStatus(path);
    EXPECT_EQ(after->identity, before->identity);
    EXPECT_EQ(after->created, before->created);
    EXPECT_EQ(after->accessed.ticks, 123'456'789'000'000'000u);
    EXPECT_EQ(after->written.ticks, kClockTicks);
}

// A photo with a preview of 600 bytes behind its picture, which the maker note names by place and length
// in its first directory entry, as one family of cameras does. The preview's first byte is given.
std::string WithPreviewBehind(ByteOrder order, char first, std::uint64_t& place, bool fromFileStart) {
    const std::string preview =
        first + std::string("\xD8\xFF\xDB") + std::string(594, 'p') + std::string("\xFF\xD9");
    const auto photoWith = [&](std::uint32_t number) {
        const std::string note =
            fromFileStart
                ? "STMN0100" + test::Word32(order, number) + test::Word32(order, 600) + std::string(40, '\0')
                : test::Word16(order, 1) + test::Word16(order, 0x0081) + test::Word16(order, 7) +
                      test::Word32(order, 600) + test::Word32(order, number) + test::Word32(order, 0);
        return JpegWith(ExifBuilder(order).Undefined(ExifBuilder::Exif, 0x927C, note));
    };
    place = photoWith(0).size();
    constexpr std::uint32_t kBlockAt = 12;
    return photoWith(static_cast<std::uint32_t>(place) - (fromFileStart ? 0 : kBlockAt)) + preview;
}

TEST_F(ExifWriter, PreviewBehindThePictureIsStillFoundAfterTheFirstWords) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big})
        for (const char first : {'\x00', '\x01', '\xFF'})
            for (const bool fromFileStart : {false, true}) {
                std::uint64_t place = 0;
                const std::string before = WithPreviewBehind(order, first, place, fromFileStart);
                const std::string after = After(before, Words());
                const std::uint64_t grown = after.size() - before.size();
                EXPECT_EQ(after.substr(place + grown), before.substr(place));
                const std::uint32_t number = static_cast<std::uint32_t>(place) - (fromFileStart ? 0 : 12);
                const std::string was = test::Word32(order, number),
                                  now = test::Word32(order, number + static_cast<std::uint32_t>(grown));
                const std::size_t at = before.find(was);
                EXPECT_EQ(after.substr(at, 4), now);
                // And nothing else in the block but the pointer to its main directory.
                EXPECT_EQ(after.substr(16 + 4, at - 20), before.substr(16 + 4, at - 20));
                const std::size_t rest = before.find("\xFF\xC0") - at - 4;
                EXPECT_EQ(after.substr(at + 4, rest), before.substr(at + 4, rest));
                const std::string again = After(after, {UserCommentEdit(std::string(9000, 'u'))});
                EXPECT_EQ(
                    again.substr(at, 4),
                    test::Word32(order, number + static_cast<std::uint32_t>(again.size() - before.size())));
            }
}

TEST_F(ExifWriter, ThumbnailThatReachesAByteIntoTheNextSegmentReadsAsItDid) {
    const std::string thumbnail = "\xFF\xD8" + std::string(300, 't') + "\xFF\xD9";
    std::string block =
        ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").EmbeddedJpeg(thumbnail).Build();
    const std::string length = test::Word32(ByteOrder::Little, 304);
    ASSERT_EQ(block.find(length), block.rfind(length));
    block.replace(block.find(length), 4, test::Word32(ByteOrder::Little, 305));
    const std::string before = JpegOf(ExifSegment(block)), after = After(before, Words());
    EXPECT_EQ(Metadata(after).xpComment, "words");
    const std::size_t at = before.find(thumbnail);
    EXPECT_EQ(after.substr(at, 305), before.substr(at, 305));
}

TEST_F(ExifWriter, FillingAtTheEndOfAFullBlockTakesTheWords) {
    for (const char fill : {'\0', '\xFF'}) {
        const std::string camera = ExifBuilder()
                                       .Ascii(ExifBuilder::Main, 0x010F, "Maker")
                                       .Undefined(ExifBuilder::Exif, 0x927C, std::string(44'000, 'm'))
                                       .EmbeddedJpeg("\xFF\xD8" + std::string(300, 't') + "\xFF\xD9")
                                       .Build();
        const std::string block = camera + std::string(65'526 - camera.size(), fill);
        const std::string before = JpegOf(ExifSegment(block)) + "behind", after = After(before, Words());
        EXPECT_EQ(after.size(), before.size()) << "nothing moves";
        EXPECT_EQ(Metadata(after).xpComment, "words");
        EXPECT_EQ(after.substr(20, camera.size() - 8), before.substr(20, camera.size() - 8));
        EXPECT_EQ(after.substr(12 + block.size()), before.substr(12 + block.size()));
        const std::string later = After(after, {UserCommentEdit(std::string(3000, 'u'))});
        EXPECT_EQ(later.size(), before.size());
        EXPECT_EQ(Metadata(later).xpComment, "words");
    }
}

TEST_F(ExifWriter, FillingThatBelongsToAPreviewIsNotFilled) {
    // The dark end of a preview without compression: it is stored in strips.
    const std::string camera = ExifBuilder()
                                   .Undefined(ExifBuilder::Exif, 0x927C, std::string(60'000, 'm'))
                                   .Long(ExifBuilder::Thumbnail, 0x0111, 60'200)
                                   .Long(ExifBuilder::Thumbnail, 0x0117, 65'526 - 60'200)
                                   .Build();
    ASSERT_LT(camera.size(), 60'200u);
    const std::string block = camera + std::string(65'526 - camera.size(), '\0');
    const std::string before = JpegOf(ExifSegment(block));
    EXPECT_EQ(After(before, Words(), RewriteResult::ExifFull), before);
}

TEST_F(ExifWriter, IndexInFrontOfTheBlockTellsWhereThePicturesAreNow) {
    const std::string second = JpegOf("", 100, 80);
    const std::string block = ExifSegment(ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").Build());
    for (const std::string& first : {JpegOf(block), JpegOf(kJfif + block)}) {
        const std::string after = After(test::TwoPictures(first, second), Words());
        EXPECT_EQ(Metadata(after).xpComment, "words");
        const std::size_t header = after.find("MPF") + kMultiPictureHead;
        const auto pictures = ReadMultiPictureIndex(after.substr(header - kMultiPictureHead));
        ASSERT_TRUE(pictures);
        ASSERT_EQ(pictures->size(), 2u);
        EXPECT_EQ(after.substr(header + (*pictures)[1].offset, (*pictures)[1].length), second);
        EXPECT_EQ((*pictures)[0].length, after.size() - second.size());
    }
}

// Another entry that names the main directory as its own keeps what it sees.
TEST_F(ExifWriter, DirectoryThatSomethingElsePointsAtIsNotChanged) {
    for (const unsigned tag : {0x8769u, 0x014Au, 0x8825u}) {
        std::string block = ExifBuilder()
                                .Ascii(ExifBuilder::Main, 0x010F, "Maker")
                                .Ascii(ExifBuilder::Main, 0x9C9C, std::string(40, 'x'))
                                .Long(ExifBuilder::Main, tag, 8)
                                .Build();
        const std::string entry = test::Word16(ByteOrder::Little, tag) +
                                  test::Word16(ByteOrder::Little, test::kLongType) +
                                  test::Word32(ByteOrder::Little, 1);
        ASSERT_NE(block.find(entry), std::string::npos);
        block.replace(block.find(entry) + entry.size(), 4, test::Word32(ByteOrder::Little, 8));
        const std::string before = JpegOf(ExifSegment(block)), after = After(before, Words());
        EXPECT_EQ(Metadata(after).xpComment, "words") << tag;
        EXPECT_EQ(after.substr(20, block.size() - 8), before.substr(20, block.size() - 8)) << tag;
    }
}

TEST_F(ExifWriter, TrailerThatCountsFromTheStartOfTheFileKeepsItsPlace) {
    const std::string before = JpegWith(ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker")) +
                               std::string("AXS!\0\0\1\0\0\0\0\0", 12);
    EXPECT_EQ(After(before, Words(), RewriteResult::TrailerUnclear), before);
}

TEST_F(ExifWriter, NoteWhoseOffsetsCountFromTheStartOfTheFileIsNoReasonToRefuse) {
    // The last value ends with the block, counted so; counted from the block it would pass its end.
    constexpr std::uint32_t kBlockAt = 12, kLength = 500;
    const auto blockWith = [&](std::uint32_t place) {
        const std::string note = std::string("SANYO\0\1\0", 8) + test::Word16(ByteOrder::Little, 1) +
                                 test::Word16(ByteOrder::Little, 0x0100) +
                                 test::Word16(ByteOrder::Little, 7) +
                                 test::Word32(ByteOrder::Little, kLength) +
                                 test::Word32(ByteOrder::Little, place) + test::Word32(ByteOrder::Little, 0);
        return ExifBuilder().Undefined(ExifBuilder::Exif, 0x927C, note).Build() + std::string(kLength, 't');
    };
    const auto place = static_cast<std::uint32_t>(blockWith(0).size()) - kLength + kBlockAt;
    const std::string block = blockWith(place);
    const std::string before = JpegOf(ExifSegment(block)), after = After(before, Words());
    EXPECT_EQ(after.substr(20, block.size() + kBlockAt - 8), before.substr(20, block.size() + kBlockAt - 8));
}

TEST_F(ExifWriter, NoteThatSeemsToTellOfTheMainDirectoryIsNoReasonToRefuse) {
    // Its offsets count from its own start; counted from the block they name the main directory.
    const std::string note = test::Word16(ByteOrder::Big, 1) + test::Word16(ByteOrder::Big, 0x0E00) +
                             test::Word16(ByteOrder::Big, 7) + test::Word32(ByteOrder::Big, 40) +
                             test::Word32(ByteOrder::Big, 12) + test::Word32(ByteOrder::Big, 0) +
                             std::string(40, 'n');
    const std::string block = ExifBuilder(ByteOrder::Big)
                                  .Ascii(ExifBuilder::Main, 0x010F, "Maker")
                                  .Undefined(ExifBuilder::Exif, 0x927C, note)
                                  .Build();
    const std::string before = JpegOf(ExifSegment(block));
    const std::string after = After(before, {UserCommentEdit("words")});
    EXPECT_EQ(after.substr(20, block.size() - 8), before.substr(20, block.size() - 8));
}

TEST(RewriteResults, TellWhyAPhotoIsLeftAlone) {
    EXPECT_STREQ(NameOf(RewriteResult::MakerNoteUnclear), "unsupported");
    EXPECT_STREQ(ReasonOf(RewriteResult::MakerNoteUnclear), "its maker note could not be followed");
    EXPECT_STREQ(NameOf(RewriteResult::ExifFull), "too large");
    EXPECT_EQ(ReasonOf(RewriteResult::Written), nullptr);
    for (const RewriteResult result :
         {RewriteResult::NotWhole, RewriteResult::ExifUnclear, RewriteResult::MakerNoteUnclear,
          RewriteResult::IndexUnclear, RewriteResult::TrailerUnclear}) {
        EXPECT_TRUE(IsUnsupported(result));
        EXPECT_NE(ReasonOf(result), nullptr);
    }
    EXPECT_FALSE(IsUnsupported(RewriteResult::ExifFull));
    EXPECT_FALSE(IsUnsupported(RewriteResult::Unreadable));
}

}  // namespace
}  // namespace kalmora
