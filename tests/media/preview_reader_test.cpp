#include "media/preview_reader.h"

#include <gtest/gtest.h>

#include "exif_builder.h"
#include "support/temporary_folder.h"

namespace kalmora {
namespace {

using test::ExifBuilder;

const std::string kSmall = "\xFF\xD8" + std::string(9000, 's') + "\xFF\xD9";

class PreviewReaderTest : public testing::Test {
protected:
    images::EmbeddedPreview Read(const std::string& content,
                                 images::WithThumbnail withThumbnail = images::WithThumbnail::Yes) {
        return ExifPreviews().Read(folder.Add("a.jpg", content), withThumbnail);
    }
    test::TemporaryFolder folder;
};

TEST_F(PreviewReaderTest, GivesTurnSizeAndThumbnail) {
    const auto preview = Read(
        test::JpegWith(ExifBuilder().Short(ExifBuilder::Main, 0x0112, 8).EmbeddedJpeg(kSmall), 4000, 3000));
    EXPECT_EQ(preview.orientation, 8);
    EXPECT_EQ(preview.storedSize, (Size{4000, 3000}));
    EXPECT_EQ(std::string(preview.thumbnail.begin(), preview.thumbnail.end()), kSmall);
}

TEST_F(PreviewReaderTest, LeavesTheThumbnailWhereNobodyWantsIt) {
    const auto preview = Read(test::JpegWith(ExifBuilder().EmbeddedJpeg(kSmall)), images::WithThumbnail::No);
    EXPECT_TRUE(preview.thumbnail.empty());
    EXPECT_EQ(preview.storedSize, (Size{640, 480}));
}

TEST_F(PreviewReaderTest, GivesNoThumbnailThatIsCutOrNoJpeg) {
    const std::string whole = test::JpegWith(ExifBuilder().EmbeddedJpeg(kSmall));
    EXPECT_FALSE(Read(whole).thumbnail.empty());
    EXPECT_TRUE(Read(whole.substr(0, 5000)).thumbnail.empty());
    EXPECT_TRUE(Read(test::JpegWith(ExifBuilder().EmbeddedJpeg("no picture"))).thumbnail.empty());
    EXPECT_TRUE(Read(test::JpegWith(ExifBuilder().EmbeddedJpeg("\xFF"))).thumbnail.empty());
}

TEST_F(PreviewReaderTest, TrustsNoLengthPastTheFile) {
    ExifBuilder exif;
    exif.Long(ExifBuilder::Thumbnail, 0x0201, 100).Long(ExifBuilder::Thumbnail, 0x0202, 0xFFFFFFFF);
    EXPECT_TRUE(Read(test::JpegWith(exif)).thumbnail.empty());
}

TEST_F(PreviewReaderTest, OfAFileWithoutMetadataIsUprightAndEmpty) {
    const auto plain = Read(test::JpegOf("", 17, 9));
    EXPECT_EQ(plain.orientation, 1);
    EXPECT_EQ(plain.storedSize, (Size{17, 9}));
    EXPECT_TRUE(plain.thumbnail.empty());
    for (const auto& other :
         {Read(""), Read("text"), ExifPreviews().Read(folder / "absent.jpg", images::WithThumbnail::Yes)}) {
        EXPECT_EQ(other.orientation, 1);
        EXPECT_TRUE(other.storedSize.IsEmpty());
        EXPECT_TRUE(other.thumbnail.empty());
    }
}

}  // namespace
}  // namespace kalmora
