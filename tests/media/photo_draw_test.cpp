#include <gtest/gtest.h>

#include <filesystem>

#include "exif_builder.h"
#include "media/photo.h"
#include "media/preview_reader.h"
#include "photo_fixture.h"
#include "picture_files.h"
#include "pictures/picture_cache.h"
#include "pictures/picture_painter.h"
#include "platform/image.h"
#include "png_builder.h"
#include "recording_canvas.h"

namespace kalmora {
namespace {

using test::ExifBuilder;
using test::RecordingCanvas;

class PhotoDrawTest : public test::PhotoTest {
protected:
    PhotoDrawTest() { Pictures().Clear(); }

    CPhoto Image(unsigned width, unsigned height, int x = 100, int y = 200) {
        return {folder.Add("a.jpg", test::DecodableJpeg(width, height)), x, y, CPhoto::Measure::Later};
    }
    CPhoto Text(int x = 100, int y = 200) {
        return {folder.Add("a.txt", "[Memo] milk"), x, y, CPhoto::Measure::Later};
    }
    CPhoto Movie(unsigned width, unsigned height, int x = 100, int y = 200) {
        const std::string frame = folder.Add("frame.jpg", test::DecodableJpeg(width, height));
        stills.picture = frame;
        SetMovieStills(&stills);
        return {folder.Add("a.mpg", "movie"), x, y, CPhoto::Measure::Later};
    }
    static Rect Drawn(const CPhoto& photo) {
        return {photo.drawnX, photo.drawnY, photo.displayWidth, photo.displayHeight};
    }
    // What the canvas got must be what the object reports.
    void ExpectPicture(const CPhoto& photo, const Rect& area) {
        EXPECT_EQ(Drawn(photo), area);
        ASSERT_FALSE(canvas.pictures.empty());
        EXPECT_EQ(canvas.pictures[0].area, area);
    }
    void ExpectCard(const CPhoto& photo, const Rect& area) {
        EXPECT_EQ(Drawn(photo), area);
        ASSERT_EQ(canvas.cards.size(), 1u);
        EXPECT_EQ(canvas.cards[0].area, area);
        ASSERT_EQ(canvas.blocks.size(), 1u);
        EXPECT_EQ(canvas.blocks[0].text, "[Memo] milk");
    }

    struct OneStill : MovieStills {
        std::string StillOf(const std::string&) override { return picture; }
        std::string picture;
    };

    OneStill stills;
    RecordingCanvas canvas;
    DrawContext context{canvas};
};

TEST_F(PhotoDrawTest, ToAWidthKeepsTheShape) {
    CPhoto image = Image(401, 200);
    image.DrawScaledToWidth(context, 150);
    ExpectPicture(image, {100, 200, 150, 200 * 150 / 401});
}

TEST_F(PhotoDrawTest, ToAHeightKeepsTheShape) {
    CPhoto image = Image(401, 200);
    image.DrawScaledToHeight(context, 75);
    ExpectPicture(image, {100, 200, 401 * 75 / 200, 75});
}

TEST_F(PhotoDrawTest, StretchedIgnoresTheShape) {
    CPhoto image = Image(401, 200);
    image.DrawStretched(context, 50, 300);
    ExpectPicture(image, {100, 200, 50, 300});
}

TEST_F(PhotoDrawTest, FittedCentresAWideImageVertically) {
    CPhoto image = Image(400, 200);
    image.DrawFitted(context, 201, 301);
    ExpectPicture(image, {100, 200 + (301 - 100) / 2, 201, 100});
}

TEST_F(PhotoDrawTest, FittedCentresATallImageHorizontally) {
    CPhoto image = Image(200, 400);
    image.DrawFitted(context, 301, 201);
    ExpectPicture(image, {100 + (301 - 100) / 2, 200, 100, 201});
}

TEST_F(PhotoDrawTest, FittedTakesTheHeightWhenTheShapesAgree) {
    CPhoto image = Image(300, 100);
    image.DrawFitted(context, 90, 30);
    ExpectPicture(image, {100, 200, 90, 30});
}

TEST_F(PhotoDrawTest, FittedDoesNotCentreAMovie) {
    CPhoto wide = Movie(400, 200);
    wide.DrawFitted(context, 201, 301);
    ExpectPicture(wide, {100, 200, 201, 100});
}

TEST_F(PhotoDrawTest, FittedIntoNoBoxPaintsNothing) {
    CPhoto image = Image(400, 200);
    image.DrawFitted(context, 0, 100);
    image.DrawFitted(context, 100, -1);
    EXPECT_TRUE(canvas.IsEmpty());
}

TEST_F(PhotoDrawTest, InAnAreaStandsAtItsFractionOf2000) {
    CPhoto image = Image(400, 200, 500, 2000);
    image.DrawInArea(context, 1000, 800);
    ExpectPicture(image, {(1000 - 240) * 500 / 2000, 800 - 120, 240, 120});
}

class EstimatedSize : public PhotoDrawTest, public testing::WithParamInterface<std::pair<int, int>> {};
INSTANTIATE_TEST_SUITE_P(Likes, EstimatedSize,
                         testing::Values(std::pair(248, 480), std::pair(247, 432), std::pair(128, 288),
                                         std::pair(0, 240), std::pair(-128, 192), std::pair(-248, 48)));

TEST_P(EstimatedSize, ScalesTheLongerSideOfAnImage) {
    CPhoto image = Image(400, 200, 0, 0);
    image.estimationsRead = true;
    image.estimations.like = GetParam().first;
    image.DrawInArea(context, 1000, 800);
    EXPECT_EQ(image.displayWidth, GetParam().second);
    EXPECT_EQ(image.displayHeight, GetParam().second / 2);
    State().settings.UseEstimation = false;
    image.DrawInArea(context, 1000, 800);
    EXPECT_EQ(image.displayWidth, 240);
}

TEST_F(PhotoDrawTest, WithoutAThumbnailSizeAnEstimatedImageIs40Pixels) {
    State().settings.ThumbnailMaxSize = 0;
    CPhoto image = Image(400, 200, 0, 0);
    image.DrawInArea(context, 1000, 800);
    ExpectPicture(image, {0, 0, 40, 20});
    State().settings.UseEstimation = false;
    image.DrawInArea(context, 1000, 800);
    EXPECT_EQ(image.displayWidth, 0);
}

TEST_F(PhotoDrawTest, AMovieKeepsThePlainSize) {
    CPhoto movie = Movie(400, 200, 0, 0);
    movie.estimationsRead = true;
    movie.estimations.like = 248;
    movie.DrawInArea(context, 1000, 800);
    ExpectPicture(movie, {0, 0, 240, 120});
}

TEST_F(PhotoDrawTest, AMovieHasItsMarkInTheLowerRightCorner) {
    State().settings.ProgramFolder = folder.Path();
    std::filesystem::create_directory(folder / "Res");
    folder.Add("Res/movie.png", test::PngOf(""));
    CPhoto movie = Movie(400, 200, 0, 0);
    movie.DrawScaledToWidth(context, 100);
    ASSERT_EQ(canvas.pictures.size(), 2u);
    EXPECT_EQ(canvas.pictures[1].area, (Rect{100 - 5 - 1, 50 - 5 - 1, 1, 1}));
}

TEST_F(PhotoDrawTest, AMovieWithoutAStillIsNotPainted) {
    CPhoto movie(folder.Add("a.mpg", "movie"));
    movie.DrawInArea(context, 1000, 800);
    movie.DrawStretched(context, 100, 100);
    EXPECT_TRUE(canvas.IsEmpty());
    EXPECT_EQ(movie.displayWidth, 0);
    EXPECT_EQ(movie.displayHeight, 0);
    CPhoto later = Movie(400, 200);
    later.DrawScaledToWidth(context, 100);
    EXPECT_EQ(canvas.pictures.size(), 1u);
}

TEST_F(PhotoDrawTest, AnUnreadablePictureIsNotPaintedAndHasNoSize) {
    CPhoto broken(folder.Add("broken.jpg", "no picture"));
    broken.DrawScaledToWidth(context, 100);
    EXPECT_EQ(broken.displayWidth, 0);
    CPhoto gone("/absent/a.jpg");
    gone.DrawFitted(context, 100, 100);
    gone.DrawScaledToHeight(context, 100);
    gone.DrawStretched(context, 100, 100);
    gone.DrawInArea(context, 100, 100);
    gone.Draw(context);
    EXPECT_EQ(gone.displayWidth, 0);
    EXPECT_EQ(gone.displayHeight, 0);
    EXPECT_TRUE(canvas.IsEmpty());
}

TEST_F(PhotoDrawTest, NothingInvisibleIsPainted) {
    CPhoto image = Image(400, 200), text = Text();
    for (CPhoto* photo : {&image, &text}) {
        photo->visible = 0;
        photo->Draw(context);
        photo->DrawScaledToWidth(context, 100);
        photo->DrawScaledToHeight(context, 100);
        photo->DrawFitted(context, 100, 100);
        photo->DrawStretched(context, 100, 100);
        photo->DrawInArea(context, 100, 100);
        EXPECT_EQ(photo->displayWidth, -1);
    }
    EXPECT_TRUE(canvas.IsEmpty());
}

// ---- text cards

TEST_F(PhotoDrawTest, ACardToAWidthIsThreeQuartersAsHigh) {
    CPhoto text = Text();
    text.DrawScaledToWidth(context, 101);
    ExpectCard(text, {100, 200, 101, 101 * 768 / 1024});
}

TEST_F(PhotoDrawTest, ACardToAHeightIsFourThirdsAsWide) {
    CPhoto text = Text();
    text.DrawScaledToHeight(context, 101);
    ExpectCard(text, {100, 200, 101 * 1024 / 768, 101});
}

TEST_F(PhotoDrawTest, ACardStretchedOrFittedFillsTheBox) {
    CPhoto stretched = Text(), fitted = Text();
    stretched.DrawStretched(context, 50, 300);
    ExpectCard(stretched, {100, 200, 50, 300});
    canvas = RecordingCanvas();
    fitted.DrawFitted(context, 60, 310);
    ExpectCard(fitted, {100, 200, 60, 310});
}

TEST_F(PhotoDrawTest, ACardInAnAreaHasTheThumbnailSize) {
    CPhoto text = Text(1000, 2000);
    text.DrawInArea(context, 1000, 800);
    ExpectCard(text, {(1000 - 240) / 2, 800 - 180, 240, 180});
}

TEST_F(PhotoDrawTest, ACardWithoutItsFileIsNotPainted) {
    CPhoto text = Text();
    std::filesystem::remove(text.path);
    text.DrawStretched(context, 100, 100);
    EXPECT_TRUE(canvas.IsEmpty());
}

TEST_F(PhotoDrawTest, ACardHasTheColoursOfItsKindWhateverTheCaseOfTheHead) {
    State().settings.TextStyles[static_cast<std::size_t>(TextKind::Memo)].back = {1, 2, 3};
    CPhoto text(folder.Add("b.txt", "[MEMO] milk"));
    text.DrawStretched(context, 100, 100);
    ASSERT_EQ(canvas.cards.size(), 1u);
    EXPECT_EQ(canvas.cards[0].fill, (Color{1, 2, 3}));
}

TEST_F(PhotoDrawTest, AnythingElseIsACardOfItsBytes) {
    CPhoto music(folder.Add("a.mp3", "ID3 a song"));
    music.DrawStretched(context, 100, 100);
    ASSERT_EQ(canvas.blocks.size(), 1u);
    EXPECT_EQ(canvas.blocks[0].text, "ID3 a song");
}

// ---- Draw

TEST_F(PhotoDrawTest, AgainPaintsAPictureInTheSizeThatItHas) {
    CPhoto image = Image(400, 200);
    image.DrawScaledToWidth(context, 80);
    image.layoutX = 7;
    canvas = RecordingCanvas();
    image.Draw(context);
    ExpectPicture(image, {7, 200, 80, 40});
}

TEST_F(PhotoDrawTest, AgainPaintsACardInAnAreaOf1024By768) {
    CPhoto text = Text(2000, 1000);
    text.Draw(context);
    ExpectCard(text, {1024 - 240, (768 - 180) / 2, 240, 180});
}

TEST_F(PhotoDrawTest, APictureOfUnknownSizeIsNotPainted) {
    CPhoto image = Image(400, 200);
    image.Draw(context);
    EXPECT_TRUE(canvas.IsEmpty());
}

// ---- beside what a cell shows

// Stripes that no two scalings draw alike.
std::string StripedPicture(const std::string& path, Size size) {
    const auto surface = Surface::Create(size, 1.0);
    const auto canvas = surface->Draw();
    for (int x = 0; x < size.width; ++x)
        canvas->FillRect({x, 0, 1, size.height}, Color{static_cast<std::uint8_t>(x * 7), 0, 90});
    for (int y = 0; y < size.height; y += 3)
        canvas->FillRect({0, y, size.width, 1}, Color{0, static_cast<std::uint8_t>(y * 5), 0});
    surface->SavePng(path);
    return path;
}

TEST_F(PhotoDrawTest, ACellOfTheSameBoxShowsTheSamePixels) {
    State().settings.ProgramFolder = folder.Path();
    std::filesystem::create_directory(folder / "Res");
    folder.Add("Res/movie.png", test::PngOf(""));
    stills.picture = StripedPicture(folder / "a.png", {400, 300});
    SetMovieStills(&stills);
    const Rect box{10, 20, 200, 150};
    for (const std::string& path : {stills.picture, folder.Add("a.mpg", "movie")}) {
        for (const double scale : {1.0, 2.0}) {
            const auto scatter = Surface::Create({240, 200}, scale),
                       cell = Surface::Create({240, 200}, scale);
            CPhoto photo(path, box.x, box.y, CPhoto::Measure::Later);
            photo.DrawStretched(DrawContext(*scatter->Draw()), box.width, box.height);
            const PreparedPicture prepared =
                PreparePicture({path, photo.kind, PictureFileOf(path, photo.kind), {}},
                               {box.width, box.height}, scale, kCellStyle);
            EXPECT_TRUE(DrawPicture(*cell->Draw(), box, prepared, kCellStyle));
            for (int y = 0; y < 200 * scale; ++y)
                for (int x = 0; x < 240 * scale; ++x)
                    ASSERT_EQ(scatter->PixelAt(x, y), cell->PixelAt(x, y)) << x << ' ' << y << ' ' << path;
            EXPECT_NE(cell->PixelAt(static_cast<int>(20 * scale), static_cast<int>(30 * scale)),
                      cell->PixelAt(0, 0));
        }
    }
}

// ---- how much is decoded

TEST_F(PhotoDrawTest, DecodesThePixelsOfTheSurface) {
    for (const double scale : {1.0, 2.0}) {
        Pictures().Clear();
        RecordingCanvas sharp(scale);
        CPhoto image = Image(2000, 1000);
        image.DrawScaledToWidth(DrawContext(sharp), 200);
        ASSERT_EQ(sharp.pictures.size(), 1u);
        EXPECT_GE(sharp.pictures[0].decoded.width, static_cast<int>(200 * scale));
        EXPECT_LE(sharp.pictures[0].decoded.width, static_cast<int>(500 * scale));
    }
}

TEST_F(PhotoDrawTest, DecodesEnoughForAPictureThatIsStretched) {
    CPhoto image = Image(2000, 1000);
    image.DrawStretched(context, 100, 400);
    ASSERT_EQ(canvas.pictures.size(), 1u);
    EXPECT_GE(canvas.pictures[0].decoded.height, 400);
}

class SmallPreviewTest : public PhotoDrawTest {
protected:
    SmallPreviewTest() { Pictures().UsePreviews(&ExifPreviews()); }
    ~SmallPreviewTest() override {
        Pictures().UsePreviews(nullptr);
        Pictures().Clear();
    }
    // A photo of 1600 by 1200 with a thumbnail of 40 by 30.
    int DecodedWidth(int width) {
        const std::string tiff = ExifBuilder().EmbeddedJpeg(test::DecodableJpeg(40, 30)).Build();
        CPhoto photo(folder.Add("thumb.jpg", test::DecodableJpeg(1600, 1200, tiff)));
        canvas = RecordingCanvas();
        photo.DrawScaledToWidth(context, width);
        return canvas.pictures.empty() ? 0 : canvas.pictures[0].decoded.width;
    }
};

TEST_F(SmallPreviewTest, TakesTheEmbeddedThumbnailOnlyWhenItIsEnough) {
    EXPECT_EQ(DecodedWidth(40), 40);
    EXPECT_GE(DecodedWidth(150), 150);
}

TEST_F(SmallPreviewTest, TakesItForAnythingSmallWhenSettingsWantIt) {
    State().settings.UseExifThumbnail = true;
    EXPECT_EQ(DecodedWidth(159), 40);
    EXPECT_GE(DecodedWidth(160), 160);
}

}  // namespace
}  // namespace kalmora
