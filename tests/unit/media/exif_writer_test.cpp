#include "media/exif_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "exif_builder.h"
#include "media/exif_block_map.h"
#include "media/exif_reader.h"
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
        const std::string path = folder.Put("a.jpg", before);
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
    const std::string path = folder.Put("b.jpg", first);
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
    EXPECT_EQ(After(before, {UserCommentEdit(std::string(6000, 'x'))}, RewriteResult::TooLarge), before);
    const std::string after = After(before, {UserCommentEdit(std::string(5000, 'x'))});
    EXPECT_NE(after.find(std::string(5000, 'x')), std::string::npos);
    EXPECT_NE(after.find(std::string(60'000, 'm')), std::string::npos);
    EXPECT_EQ(After(JpegOf(""), {UserCommentEdit(std::string(65'500, 'x'))}, RewriteResult::TooLarge),
              JpegOf(""));
    EXPECT_EQ(After(JpegOf(""), {UserCommentEdit(std::string(70'000, 'x'))}, RewriteResult::TooLarge),
              JpegOf(""));
}

TEST_F(ExifWriter, SegmentIsFilledToItsLastByte) {
    std::size_t longest = 0;
    for (std::size_t length = 65'000; length < 65'533; ++length) {
        const std::string path = folder.Put("a.jpg", JpegOf(""));
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
        EXPECT_EQ(After(before, Words(), RewriteResult::Unsupported), before);
    EXPECT_EQ(WriteExif(folder.PathOf("absent.jpg"), Words()), RewriteResult::Unreadable);
    EXPECT_EQ(WriteExif(folder.Path(), Words()), RewriteResult::Unreadable);
}

TEST_F(ExifWriter, BlockThatCannotBeFollowedIsLeft) {
    std::string broken = ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").Build();
    broken.replace(4, 4, test::Word32(ByteOrder::Little, 60'000));
    const std::string before = JpegOf(kJfif + ExifSegment(broken));
    EXPECT_EQ(After(before, Words(), RewriteResult::Unsupported), before);
}

TEST_F(ExifWriter, BlockThatGoesOnInTheNextSegmentIsLeft) {
    const std::string before =
        JpegOf(ExifSegment(ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").Build()) +
               ExifSegment(std::string(400, 'c')));
    EXPECT_EQ(After(before, Words(), RewriteResult::Unsupported), before);
}

// The index of further pictures counts from its own place: what stands in front of it may grow, and what
// stands behind it may not.
TEST_F(ExifWriter, PicturesThatAnIndexTellsOfKeepTheirPlaceFromIt) {
    const std::string index = JpegSegmentBytes(0xE2, std::string("MPF\0II*\0\x08\0\0\0", 12));
    const std::string block = ExifSegment(ExifBuilder().Ascii(ExifBuilder::Main, 0x010F, "Maker").Build());
    const std::string second = JpegOf("", 100, 80);
    const std::string good = JpegOf(block + index) + second, bad = JpegOf(index + block) + second;
    const std::string after = After(good, Words());
    EXPECT_EQ(after.find(second) - after.find("MPF"), good.find(second) - good.find("MPF"));
    EXPECT_EQ(After(bad, Words(), RewriteResult::Unsupported), bad);
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
        EXPECT_EQ(After(pointing, Words(), RewriteResult::Unsupported), pointing);
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
    EXPECT_EQ(After(without, Words(), RewriteResult::Unsupported), without);
}

TEST_F(ExifWriter, KeepsTheFileItsBirthAndItsLastAccess) {
    const std::string path = folder.Put("a.jpg", JpegOf(kJfif));
    files::SetTimes(path, FileTime{123'456'789'000'000'000}, FileTime{123'456'000'000'000'000});
    const auto before = files::GetStatus(path);
    ASSERT_EQ(WriteExif(path, Words()), RewriteResult::Written);
    const auto after = files::GetStatus(path);
    EXPECT_EQ(after->identity, before->identity);
    EXPECT_EQ(after->created, before->created);
    EXPECT_EQ(after->accessed.ticks, 123'456'789'000'000'000u);
    EXPECT_EQ(after->written.ticks, kClockTicks);
}

}  // namespace
}  // namespace kalmora
