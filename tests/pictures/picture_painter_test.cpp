#include "pictures/picture_painter.h"

#include <gtest/gtest.h>

#include "media/recording_canvas.h"
#include "pictures/movie_stills.h"
#include "support/temporary_folder.h"

namespace kalmora {
namespace {

using test::RecordingCanvas;
using Look = PreparedPicture::Look;

TEST(FitInBox, WidePictureIsCentredVertically) {
    EXPECT_EQ(FitInBox({200, 100}, {10, 10, 100, 80}), (Rect{10, 25, 100, 50}));
}

TEST(FitInBox, TallPictureIsCentredHorizontally) {
    EXPECT_EQ(FitInBox({100, 200}, {0, 0, 100, 80}), (Rect{30, 0, 40, 80}));
}

TEST(FitInBox, MarginBelowThreeCountsAsNone) {
    EXPECT_EQ(FitInBox({100, 75}, {0, 0, 100, 80}), (Rect{0, 0, 100, 80})) << "a margin of 2";
    EXPECT_EQ(FitInBox({100, 74}, {0, 0, 100, 80}), (Rect{0, 3, 100, 74})) << "a margin of 3";
}

TEST(FitInBox, PictureWithoutASizeHasNoPlace) {
    EXPECT_TRUE(FitInBox({0, 100}, {0, 0, 100, 80}).IsEmpty());
    EXPECT_TRUE(FitInBox({100, 100}, {0, 0, 0, 80}).IsEmpty());
}

PreparedPicture Prepared(const std::string& path, ObjectKind kind, const PaintStyle& style) {
    return PreparePicture({path, kind, PictureFileOf(path, kind), {}}, {100, 80}, 1.0, style);
}

TEST(PicturePainter, OtherKindsAreACardOfTheirPathInACell) {
    const test::TemporaryFolder folder;
    const std::string music = folder.Add("a.mp3", "ID3 a song");
    RecordingCanvas canvas;
    const PreparedPicture prepared = Prepared(music, ObjectKind::Music, kCellStyle);
    EXPECT_TRUE(DrawPicture(canvas, {10, 20, 100, 80}, prepared, kCellStyle));
    ASSERT_EQ(canvas.cards.size(), 1u);
    EXPECT_EQ(canvas.cards[0].area, (Rect{10, 20, 100, 80}));
    ASSERT_EQ(canvas.blocks.size(), 1u);
    EXPECT_EQ(canvas.blocks[0].text, music);
    EXPECT_EQ(Prepared(music, ObjectKind::Music, kPhotoStyle).text, "ID3 a song") << "a photo shows the text";
}

TEST(PicturePainter, ACellWantsTheHeadOfATextAsItIsWritten) {
    const test::TemporaryFolder folder;
    const std::string text = folder.Add("a.txt", "[MEMO] milk");
    EXPECT_EQ(Prepared(text, ObjectKind::Text, kPhotoStyle).textKind, TextKind::Memo);
    EXPECT_EQ(Prepared(text, ObjectKind::Text, kCellStyle).textKind, TextKind::Schedule);
}

TEST(PicturePainter, NothingIsDrawnOfWhatCannotBeRead) {
    const test::TemporaryFolder folder;
    RecordingCanvas canvas;
    for (const PaintStyle& style : {kPhotoStyle, kCellStyle}) {
        EXPECT_EQ(Prepared(folder / "gone.txt", ObjectKind::Text, style).look, Look::Nothing);
        EXPECT_EQ(Prepared(folder / "gone.jpg", ObjectKind::Image, style).look, Look::Nothing);
        EXPECT_EQ(Prepared(folder / "a.mpg", ObjectKind::Movie, style).look, Look::Nothing);
        EXPECT_FALSE(DrawPicture(canvas, {0, 0, 100, 80}, PreparedPicture{}, style));
    }
    EXPECT_TRUE(canvas.IsEmpty());
}

TEST(PicturePainter, APictureThatIsNotInMemoryIsIncompleteWhereNobodyWaits) {
    const test::TemporaryFolder folder;
    const std::string picture = folder.Add("a.jpg", "");
    const PictureSource source{picture, ObjectKind::Image, picture, {}};
    const PreparedPicture later = PreparePicture(source, {100, 80}, 1.0, kCellStyle, Decode::Later);
    EXPECT_FALSE(later.complete);
    EXPECT_EQ(later.look, Look::Nothing);
    EXPECT_TRUE(PreparePicture(source, {100, 80}, 1.0, kCellStyle).complete) << "nothing more will come";
}

TEST(PicturePainter, AMovieHasThePictureThatItsStillsAreAskedFor) {
    struct Stills : MovieStills {
        std::string StillOf(const std::string& moviePath) override { return moviePath + ".jpg"; }
    } stills;
    EXPECT_EQ(PictureFileOf("/a.mpg", ObjectKind::Movie), "");
    SetMovieStills(&stills);
    EXPECT_EQ(PictureFileOf("/a.mpg", ObjectKind::Movie), "/a.mpg.jpg");
    SetMovieStills(nullptr);
    EXPECT_EQ(PictureFileOf("/a.jpg", ObjectKind::Image), "/a.jpg");
    EXPECT_EQ(PictureFileOf("/a.txt", ObjectKind::Text), "");
}

}  // namespace
}  // namespace kalmora
