#include "platform/image.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QPainter>
#include <memory>

#include "platform/qt/decode_limits.h"
#include "platform/qt/pixels.h"
#include "support.h"

namespace kalmora {
namespace {

using namespace test;
using images::Preview;

// Says the same of every file.
class KnownPreview final : public images::PreviewReader {
public:
    explicit KnownPreview(images::EmbeddedPreview answer) : answer_(std::move(answer)) {}
    images::EmbeddedPreview Read(const std::string&, images::WithThumbnail withThumbnail) const override {
        images::EmbeddedPreview answer = answer_;
        if (withThumbnail == images::WithThumbnail::No) answer.thumbnail.clear();
        return answer;
    }

private:
    const images::EmbeddedPreview answer_;
};

class ImageTest : public FolderTest {
protected:
    void UsePreview(images::EmbeddedPreview answer) {
        reader_ = std::make_unique<KnownPreview>(std::move(answer));
    }
    Image Load(const std::string& path, Size wanted, Preview preview = Preview::IfEnough) const {
        return images::Decode(path, wanted, preview, reader_.get()).image;
    }

private:
    std::unique_ptr<KnownPreview> reader_;
};

TEST_F(ImageTest, FormatIsSeenByContentAndNotByName) {
    const std::string path = Write("photo.txt", EncodeJpeg(Quarters(60, 40)));
    EXPECT_EQ(Load(path, Size{}).GetSize(), (Size{60, 40}));
}

TEST_F(ImageTest, WhatIsNoPictureIsEmpty) {
    const Bytes text = {'/', '*', ' ', 'X', 'P', 'M', ' ', '*', '/', '\n'};
    for (const std::string& path :
         {PathOf("absent.jpg"), Write("zero.jpg", {}), Write("zero.png", {}), Write("text.txt", text),
          Write("head.png", {0x89, 'P', 'N', 'G', 13, 10, 26, 10}), Write("head.jpg", {0xFF, 0xD8}),
          Write("drawing.svg", {'<', 's', 'v', 'g', '/', '>'}), PathOf("")}) {
        EXPECT_TRUE(Load(path, Size{10, 10}).IsEmpty()) << path;
        EXPECT_TRUE(Load(path, Size{}).IsEmpty()) << path;
    }
}

TEST_F(ImageTest, EveryFormatShowsTheSamePicture) {
    for (const char* name : {"a.jpg", "a.png", "a.bmp", "a.ppm"}) {
        const Image image = Load(Save(name, Quarters(60, 40), 100), Size{});
        ASSERT_EQ(image.GetSize(), (Size{60, 40})) << name;
        EXPECT_LT(Distance(image.PixelAt(10, 10), kRed), 8) << name;
        EXPECT_LT(Distance(image.PixelAt(50, 30), kWhite), 8) << name;
    }
}

TEST_F(ImageTest, WhatIsNoPictureIsNotTakenForOneThatCannotBeRead) {
    const auto outcome = [](const std::string& path) {
        return images::Decode(path, Size{}, Preview::IfEnough, nullptr).outcome;
    };
    EXPECT_EQ(outcome(Save("a.png", Quarters(8, 8))), images::DecodeOutcome::Decoded);
    EXPECT_EQ(outcome(Write("a.jpg", {1, 2, 3})), images::DecodeOutcome::NoPicture);
    EXPECT_EQ(outcome(PathOf("absent.jpg")), images::DecodeOutcome::Unreadable);
}

TEST_F(ImageTest, NamesThatAreNotUtf8AreReadAsWell) {
    const std::string path = Write("\x82\xA0.png", {});
    const std::string real = Save("a.png", Quarters(8, 8));
    ASSERT_EQ(files::Rename(real, path), files::FileResult::Done);
    EXPECT_EQ(Load(path, Size{}).GetSize(), (Size{8, 8}));
}

TEST_F(ImageTest, CoversWhatIsWantedAndIsAtMostTwiceAsLarge) {
    const QImage photo = Noise(1600, 1200), upright = Noise(700, 1300);
    for (const char* format : {"jpg", "png"})
        for (const QImage* picture : {&photo, &upright}) {
            const std::string path =
                Save(std::string(picture == &photo ? "w." : "h.") + format, *picture, 60);
            for (const Size wanted :
                 {Size{10, 10}, Size{40, 30}, Size{160, 120}, Size{161, 400}, Size{333, 333}, Size{900, 700},
                  Size{1599, 2000}, Size{3000, 3000}, Size{5, 2000}}) {
                const Size picturedAt{picture->width(), picture->height()};
                const Size needed = qt::NeededSize(picturedAt, wanted);
                const Size got = Load(path, wanted).GetSize();
                EXPECT_GE(got.width, needed.width) << path << wanted.width;
                EXPECT_GE(got.height, needed.height) << path << wanted.width;
                // One more pixel, since small sizes are rounded up.
                EXPECT_LE(got.width, std::max(2 * needed.width + 1, (picturedAt.width + 7) / 8));
                EXPECT_LE(got.width, picturedAt.width);
                EXPECT_LE(got.height, picturedAt.height);
            }
        }
}

TEST_F(ImageTest, NeededSizeKeepsTheShapeAndNeverGrows) {
    EXPECT_EQ(qt::NeededSize(Size{4000, 3000}, Size{160, 160}), (Size{160, 120}));
    EXPECT_EQ(qt::NeededSize(Size{3000, 4000}, Size{160, 160}), (Size{120, 160}));
    EXPECT_EQ(qt::NeededSize(Size{4001, 3000}, Size{160, 160}), (Size{160, 120}));
    EXPECT_EQ(qt::NeededSize(Size{100, 50}, Size{1000, 1000}), (Size{100, 50}));
    EXPECT_EQ(qt::NeededSize(Size{100, 50}, Size{0, 10}), (Size{100, 50}));
    EXPECT_EQ(qt::NeededSize(Size{65500, 1}, Size{10, 10}), (Size{10, 1}));
}

TEST_F(ImageTest, TransparentPixelsStayTransparent) {
    QImage image(8, 8, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    image.setPixelColor(4, 4, QColor(255, 0, 0));
    const Image loaded = Load(Save("a.png", image), Size{});
    EXPECT_EQ(loaded.PixelAt(0, 0).alpha, 0);
    const auto surface = Surface::Create(Size{8, 8}, 1);
    surface->Draw()->DrawImage(Rect{0, 0, 8, 8}, loaded);
    EXPECT_EQ(surface->PixelAt(0, 0), kWhite);
    EXPECT_EQ(surface->PixelAt(4, 4), kRed);
}

TEST_F(ImageTest, HugeClaimsAreRefused) {
    Bytes png = {0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R'};
    const Bytes head = {0x7F, 0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 8, 6, 0, 0, 0, 0, 0, 0, 0};
    png.insert(png.end(), head.begin(), head.end());
    EXPECT_TRUE(Load(Write("huge.png", png), Size{10, 10}).IsEmpty());
    Bytes bmp(54, 0);
    bmp[0] = 'B', bmp[1] = 'M', bmp[10] = 54, bmp[14] = 40, bmp[26] = 1, bmp[28] = 24;
    bmp[20] = bmp[24] = 1;  // 65536 by 65536
    EXPECT_TRUE(Load(Write("huge.bmp", bmp), Size{10, 10}).IsEmpty());
    EXPECT_TRUE(
        Load(Write("huge.jpg", WithClaimedSize(EncodeJpeg(Quarters(8, 8)), 65500, 65500)), Size{}).IsEmpty());
}

// ---- orientation

struct OrientationCase {
    int orientation;
    Color upperLeft, upperRight, lowerLeft;  // of the upright picture, stored as Quarters
};

class OrientationTest : public ImageTest, public testing::WithParamInterface<OrientationCase> {};

TEST_P(OrientationTest, PictureStandsUpright) {
    const OrientationCase& expected = GetParam();
    UsePreview({expected.orientation, {}, {}});
    const std::string path = Write("a.jpg", EncodeJpeg(Quarters(320, 160)));
    const bool isSwapped = expected.orientation >= 5;
    for (const Size wanted : {Size{}, Size{80, 80}}) {
        const Image image = Load(path, wanted);
        const Size size = image.GetSize();
        EXPECT_EQ(size.width > size.height, !isSwapped);
        EXPECT_LT(Distance(image.PixelAt(size.width / 4, size.height / 4), expected.upperLeft), 10);
        EXPECT_LT(Distance(image.PixelAt(size.width * 3 / 4, size.height / 4), expected.upperRight), 10);
        EXPECT_LT(Distance(image.PixelAt(size.width / 4, size.height * 3 / 4), expected.lowerLeft), 10);
    }
}

// The stored picture has red, green, blue and white from the upper left to the lower right.
INSTANTIATE_TEST_SUITE_P(AllEight, OrientationTest,
                         testing::Values(OrientationCase{1, kRed, kGreen, kBlue},    //
                                         OrientationCase{2, kGreen, kRed, kWhite},   // mirrored
                                         OrientationCase{3, kWhite, kBlue, kGreen},  // half a turn
                                         OrientationCase{4, kBlue, kWhite, kRed},    // upside down
                                         OrientationCase{5, kRed, kBlue, kGreen},    // transposed
                                         OrientationCase{6, kBlue, kRed, kWhite},    // a quarter right
                                         OrientationCase{7, kWhite, kGreen, kBlue},  // across
                                         OrientationCase{8, kGreen, kWhite, kRed})   // a quarter left
);

TEST_F(ImageTest, SenselessOrientationsAreNone) {
    for (const int orientation : {0, 9, -1, 65535}) {
        UsePreview({orientation, {}, {}});
        EXPECT_EQ(Load(Write("a.jpg", EncodeJpeg(Quarters(32, 16))), Size{}).GetSize(), (Size{32, 16}));
    }
}

TEST_F(ImageTest, WithoutAReaderPicturesStandAsStored) {
    EXPECT_EQ(Load(Write("a.jpg", EncodeJpeg(Quarters(32, 16))), Size{}).GetSize(), (Size{32, 16}));
}

// ---- the embedded thumbnail

QImage Plain(int width, int height, Color color) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(color.red, color.green, color.blue));
    return image;
}

// The picture is red and its thumbnail blue, so that one sees which was taken.
class ThumbnailTest : public ImageTest {
protected:
    void SetThumbnail(const QImage& thumbnail, int orientation = 1) {
        UsePreview({.orientation = orientation, .storedSize = {}, .thumbnail = EncodeJpeg(thumbnail)});
    }
    static bool IsThumbnail(const Image& image) {
        return !image.IsEmpty() && Distance(image.PixelAt(image.GetSize().width / 2, 1), kBlue) < 10;
    }
    const std::string photo_ = Write("a.jpg", EncodeJpeg(Plain(1600, 1200, kRed)));
};

TEST_F(ThumbnailTest, IsTakenWhereItHasThePixels) {
    SetThumbnail(Plain(160, 120, kBlue));
    EXPECT_TRUE(IsThumbnail(Load(photo_, Size{160, 160}, Preview::IfEnough)));
    EXPECT_FALSE(IsThumbnail(Load(photo_, Size{170, 170}, Preview::IfEnough)));
    EXPECT_FALSE(IsThumbnail(Load(photo_, Size{}, Preview::IfEnough)));
    EXPECT_FALSE(IsThumbnail(Load(photo_, Size{20, 20}, Preview::Never)));
}

TEST_F(ThumbnailTest, IsTakenHoweverSmallWhenAlwaysWanted) {
    SetThumbnail(Plain(160, 120, kBlue));
    EXPECT_TRUE(IsThumbnail(Load(photo_, Size{1000, 1000}, Preview::Always)));
    EXPECT_TRUE(IsThumbnail(Load(photo_, Size{}, Preview::Always)));
}

TEST_F(ThumbnailTest, AbsentOrBrokenOnesGiveThePicture) {
    UsePreview({});
    EXPECT_FALSE(IsThumbnail(Load(photo_, Size{100, 100}, Preview::Always)));
    UsePreview({.orientation = 1, .storedSize = {}, .thumbnail = {0xFF, 0xD8, 1, 2, 3}});
    const Image image = Load(photo_, Size{100, 100}, Preview::Always);
    EXPECT_FALSE(image.IsEmpty());
    EXPECT_FALSE(IsThumbnail(image));
}

TEST_F(ThumbnailTest, BlackBarsAreCutAway) {
    const std::string wide = Write("wide.jpg", EncodeJpeg(Plain(1500, 1000, kRed)));
    QImage barred = Plain(160, 120, kBlack);
    QPainter(&barred).fillRect(0, 6, 160, 108, Qt::blue);
    SetThumbnail(barred);
    const Image image = Load(wide, Size{160, 160});
    EXPECT_EQ(image.GetSize(), (Size{160, 107}));
    EXPECT_TRUE(IsThumbnail(image));
}

TEST_F(ThumbnailTest, BarsAtTheSidesAreCutAway) {
    const std::string square = Write("square.jpg", EncodeJpeg(Plain(1000, 1000, kRed)));
    QImage barred = Plain(160, 120, kBlack);
    QPainter(&barred).fillRect(20, 0, 120, 120, Qt::blue);
    SetThumbnail(barred);
    EXPECT_EQ(Load(square, Size{120, 120}).GetSize(), (Size{120, 120}));
    EXPECT_TRUE(IsThumbnail(Load(square, Size{120, 120})));
}

// A black thumbnail of the usual size with an area of the sky in it.
constexpr Color kSky{90, 160, 250};
QImage Barred(const QRect& area) {
    QImage barred = Plain(160, 120, kBlack);
    QPainter(&barred).fillRect(area, QColor(kSky.red, kSky.green, kSky.blue));
    return barred;
}
// The codec mixes the colours of neighbours, so an edge is only nearly the sky.
bool IsSky(Color color) { return Distance(color, kSky) < Distance(color, kBlack) / 4; }

TEST_F(ThumbnailTest, BarsHigherThanTheShapeWantsAreCutAway) {
    const std::string wide = Write("wide.jpg", EncodeJpeg(Plain(1500, 1000, kRed)));
    SetThumbnail(Barred({0, 8, 160, 104}));
    const Image image = Load(wide, Size{100, 100});
    EXPECT_EQ(image.GetSize(), (Size{160, 104}));
    EXPECT_TRUE(IsSky(image.PixelAt(80, 0)));
    EXPECT_TRUE(IsSky(image.PixelAt(80, 103)));
}

TEST_F(ThumbnailTest, BarAtOneEdgeIsCutAwayThere) {
    const std::string wide = Write("wide.jpg", EncodeJpeg(Plain(1500, 1000, kRed)));
    QImage barred = Barred({0, 13, 160, 107});
    QPainter(&barred).fillRect(0, 112, 160, 8, Qt::green);
    SetThumbnail(barred);
    const Image image = Load(wide, Size{100, 100});
    EXPECT_EQ(image.GetSize(), (Size{160, 107}));
    EXPECT_TRUE(IsSky(image.PixelAt(80, 0)));
    EXPECT_LT(Distance(image.PixelAt(80, 101), {0, 255, 0}), 10) << "nothing of the picture goes";
}

TEST_F(ThumbnailTest, BarsOfAFewPercentAreCutAway) {
    SetThumbnail(Barred({4, 0, 152, 120}));
    EXPECT_EQ(Load(photo_, Size{100, 100}).GetSize(), (Size{152, 120}));
    SetThumbnail(Barred({4, 3, 152, 114}));
    const Image image = Load(photo_, Size{100, 100});
    EXPECT_EQ(image.GetSize(), (Size{152, 114}));
    for (const Point edge : {Point{76, 0}, Point{76, 113}, Point{0, 57}, Point{151, 57}})
        EXPECT_TRUE(IsSky(image.PixelAt(edge.x, edge.y))) << edge.x << ", " << edge.y;
}

TEST_F(ThumbnailTest, LineInWhichABarEndsGoesToo) {
    for (const int width : {4, 0}) {
        QImage barred = Barred({width, 0, 160 - 2 * width, 120});
        for (const int x : {width, 159 - width})
            QPainter(&barred).fillRect(x, 0, 1, 120, QColor(36, 64, 100));
        SetThumbnail(barred);
        EXPECT_EQ(Load(photo_, Size{100, 100}).GetSize(), (Size{158 - 2 * width, 120}))
            << width << " black lines beside it";
    }
}

TEST_F(ThumbnailTest, BarAtTheLowerEdgeAloneGivesThePicture) {
    SetThumbnail(Barred({0, 0, 160, 116}));
    EXPECT_LT(Distance(Load(photo_, Size{100, 100}).PixelAt(0, 0), kRed), 10);
}

TEST_F(ThumbnailTest, BlackFrameOfThePictureItselfIsKept) {
    QImage framed = Plain(1600, 1200, kBlack);
    QPainter(&framed).fillRect(40, 30, 1520, 1140, Qt::red);
    const std::string scan = Write("scan.jpg", EncodeJpeg(framed));
    SetThumbnail(Barred({4, 3, 152, 114}));
    const Image image = Load(scan, Size{100, 100});
    const Size size = image.GetSize();
    EXPECT_LT(Distance(image.PixelAt(0, size.height / 2), kBlack), 10);
    EXPECT_LT(Distance(image.PixelAt(size.width / 2, 0), kBlack), 10);
    EXPECT_LT(Distance(image.PixelAt(size.width / 2, size.height / 2), {255, 0, 0}), 10);
}

TEST_F(ThumbnailTest, DarkPictureThatFadesIntoItsEdgesIsTakenWhole) {
    QImage dusk = Plain(160, 120, kBlack);
    for (int y = 5; y < 60; ++y)
        QPainter(&dusk).fillRect(0, y, 160, 120 - 2 * y, QColor(0, std::min(255, 4 * (y - 5)), 0));
    SetThumbnail(dusk);
    const Image image = Load(photo_, Size{100, 100});
    EXPECT_EQ(image.GetSize(), (Size{160, 120}));
    EXPECT_GT(image.PixelAt(80, 60).green, 150);
}

TEST_F(ThumbnailTest, ADifferenceOfTwoPercentIsNoBar) {
    SetThumbnail(Plain(160, 118, kBlue));
    EXPECT_EQ(Load(photo_, Size{100, 100}).GetSize(), (Size{160, 118}));
    SetThumbnail(Plain(160, 112, kBlue));
    EXPECT_EQ(Load(photo_, Size{100, 100}).GetSize(), (Size{149, 112}));
}

TEST_F(ThumbnailTest, OneThatLiesAcrossThePictureIsNotBelieved) {
    SetThumbnail(Plain(120, 160, kBlue));
    EXPECT_FALSE(IsThumbnail(Load(photo_, Size{50, 50}, Preview::Always)));
}

TEST_F(ThumbnailTest, StandsUpright) {
    SetThumbnail(Plain(160, 120, kBlue), 6);
    const Image image = Load(photo_, Size{160, 160});
    EXPECT_TRUE(IsThumbnail(image));
    EXPECT_EQ(image.GetSize(), (Size{120, 160}));
}

// ---- saving

TEST_F(ImageTest, SavedPicturesComeBack) {
    const Image image = qt::MakeImage(Quarters(40, 30));
    ASSERT_TRUE(images::SavePng(image, PathOf("a.png")));
    ASSERT_TRUE(images::SaveJpeg(image, PathOf("a.jpg"), 95));
    EXPECT_EQ(Load(PathOf("a.png"), Size{}).Get()->Get(), Quarters(40, 30));
    EXPECT_LT(Distance(Load(PathOf("a.jpg"), Size{}).PixelAt(5, 5), kRed), 8);
}

TEST_F(ImageTest, JpegQualityTellsInTheSize) {
    const Image image = qt::MakeImage(Noise(100, 100));
    ASSERT_TRUE(images::SaveJpeg(image, PathOf("good.jpg"), 100));
    ASSERT_TRUE(images::SaveJpeg(image, PathOf("poor.jpg"), 10));
    ASSERT_TRUE(images::SaveJpeg(image, PathOf("odd.jpg"), 1000));
    EXPECT_GT(files::GetStatus(PathOf("good.jpg"))->size, 3 * files::GetStatus(PathOf("poor.jpg"))->size);
    EXPECT_EQ(files::GetStatus(PathOf("good.jpg"))->size, files::GetStatus(PathOf("odd.jpg"))->size);
}

TEST_F(ImageTest, TransparencyBecomesWhiteInAJpeg) {
    QImage clear(16, 16, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    ASSERT_TRUE(images::SaveJpeg(qt::MakeImage(clear), PathOf("a.jpg"), 90));
    EXPECT_LT(Distance(Load(PathOf("a.jpg"), Size{}).PixelAt(8, 8), kWhite), 4);
}

TEST_F(ImageTest, SavingSaysWhenItCannot) {
    EXPECT_FALSE(images::SavePng(Image(), PathOf("a.png")));
    EXPECT_FALSE(images::SaveJpeg(Image(), PathOf("a.jpg"), 90));
    EXPECT_FALSE(images::SavePng(qt::MakeImage(Quarters(4, 4)), PathOf("no/such/folder.png")));
}

TEST_F(ImageTest, SurfacesAreSavedWithAllTheirDevicePixels) {
    const auto surface = Surface::Create(Size{30, 20}, 2);
    surface->Draw()->FillRect(Rect{0, 0, 15, 20}, kBlue);
    ASSERT_TRUE(surface->SavePng(PathOf("a.png")));
    const Image image = Load(PathOf("a.png"), Size{});
    EXPECT_EQ(image.GetSize(), (Size{60, 40}));
    EXPECT_EQ(image.PixelAt(29, 0), kBlue);
    EXPECT_EQ(image.PixelAt(30, 0), kWhite);
}

}  // namespace
}  // namespace kalmora
