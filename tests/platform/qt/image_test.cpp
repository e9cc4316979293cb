#include "platform/image.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QPainter>
#include <atomic>
#include <thread>

#include "platform/clock.h"
#include "platform/qt/decode_limits.h"
#include "platform/qt/pixels.h"
#include "support.h"

namespace kalmora {
namespace {

using namespace test;
using images::Preview;

// What the hook answers for every file.
images::EmbeddedPreview hookAnswer;
std::atomic<int> hookCalls = 0;

images::EmbeddedPreview AnswerHook(const std::string&, bool withThumbnail) {
    ++hookCalls;
    images::EmbeddedPreview answer = hookAnswer;
    if (!withThumbnail) answer.thumbnail.clear();
    return answer;
}

class ImageTest : public FolderTest {
protected:
    ImageTest() { Reset(); }
    ~ImageTest() override { Reset(); }

    static void Reset() {
        images::CancelPrefetch();
        images::WaitForPrefetch();
        images::SetPreviewReader(nullptr);
        images::SetCacheLimit(std::size_t{256} << 20);
        images::ClearCache();
        hookAnswer = {};
        hookCalls = 0;
    }
    static void SetHook(images::EmbeddedPreview answer) {
        hookAnswer = std::move(answer);
        images::SetPreviewReader(AnswerHook);
        images::ClearCache();
    }
    static std::uint64_t Decodes() { return images::GetCacheStatistics().decodes; }
};

TEST_F(ImageTest, MeasuresEveryFormat) {
    const QImage picture = Quarters(60, 40);
    for (const char* name : {"a.jpg", "a.png", "a.bmp", "a.ppm"})
        EXPECT_EQ(images::Measure(Save(name, picture)), (Size{60, 40})) << name;
}

TEST_F(ImageTest, FormatIsToldByContentAndNotByName) {
    const std::string path = Write("photo.txt", EncodeJpeg(Quarters(60, 40)));
    EXPECT_EQ(images::Load(path, Size{}).GetSize(), (Size{60, 40}));
    EXPECT_EQ(images::Measure(path), (Size{60, 40}));
}

TEST_F(ImageTest, WhatIsNoPictureIsEmpty) {
    const Bytes text = {'/', '*', ' ', 'X', 'P', 'M', ' ', '*', '/', '\n'};
    for (const std::string& path :
         {PathOf("absent.jpg"), Write("zero.jpg", {}), Write("zero.png", {}), Write("text.txt", text),
          Write("head.png", {0x89, 'P', 'N', 'G', 13, 10, 26, 10}), Write("head.jpg", {0xFF, 0xD8}),
          Write("drawing.svg", {'<', 's', 'v', 'g', '/', '>'}), PathOf("")}) {
        EXPECT_TRUE(images::Load(path, Size{10, 10}).IsEmpty()) << path;
        EXPECT_TRUE(images::Load(path, Size{}).IsEmpty()) << path;
        EXPECT_TRUE(images::Measure(path).IsEmpty()) << path;
    }
}

TEST_F(ImageTest, EveryFormatShowsTheSamePicture) {
    for (const char* name : {"a.jpg", "a.png", "a.bmp", "a.ppm"}) {
        const Image image = images::Load(Save(name, Quarters(60, 40), 100), Size{});
        ASSERT_EQ(image.GetSize(), (Size{60, 40})) << name;
        EXPECT_LT(Distance(image.PixelAt(10, 10), kRed), 8) << name;
        EXPECT_LT(Distance(image.PixelAt(50, 30), kWhite), 8) << name;
    }
}

TEST_F(ImageTest, NamesThatAreNotUtf8AreReadAsWell) {
    const std::string path = Write("\x82\xA0.png", {});
    const std::string real = Save("a.png", Quarters(8, 8));
    ASSERT_EQ(files::Rename(real, path), files::FileResult::Done);
    EXPECT_EQ(images::Load(path, Size{}).GetSize(), (Size{8, 8}));
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
                const Size got = images::Load(path, wanted).GetSize();
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
    const Image loaded = images::Load(Save("a.png", image), Size{});
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
    EXPECT_TRUE(images::Load(Write("huge.png", png), Size{10, 10}).IsEmpty());
    Bytes bmp(54, 0);
    bmp[0] = 'B', bmp[1] = 'M', bmp[10] = 54, bmp[14] = 40, bmp[26] = 1, bmp[28] = 24;
    bmp[20] = bmp[24] = 1;  // 65536 by 65536
    EXPECT_TRUE(images::Load(Write("huge.bmp", bmp), Size{10, 10}).IsEmpty());
    EXPECT_TRUE(
        images::Load(Write("huge.jpg", WithClaimedSize(EncodeJpeg(Quarters(8, 8)), 65500, 65500)), Size{})
            .IsEmpty());
}

// ---- orientation

struct OrientationCase {
    int orientation;
    Color upperLeft, upperRight, lowerLeft;  // of the upright picture, stored as Quarters
};

class OrientationTest : public ImageTest, public testing::WithParamInterface<OrientationCase> {};

TEST_P(OrientationTest, PictureStandsUpright) {
    const OrientationCase& expected = GetParam();
    SetHook({expected.orientation, {}, {}});
    const std::string path = Write("a.jpg", EncodeJpeg(Quarters(320, 160)));
    const bool isSwapped = expected.orientation >= 5;
    const Size upright = isSwapped ? Size{160, 320} : Size{320, 160};
    EXPECT_EQ(images::Measure(path), upright);
    for (const Size wanted : {Size{}, Size{80, 80}}) {
        const Image image = images::Load(path, wanted);
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
        SetHook({orientation, {}, {}});
        EXPECT_EQ(images::Load(Write("a.jpg", EncodeJpeg(Quarters(32, 16))), Size{}).GetSize(),
                  (Size{32, 16}));
    }
}

TEST_F(ImageTest, WithoutTheHookPicturesStandAsStored) {
    EXPECT_EQ(images::Load(Write("a.jpg", EncodeJpeg(Quarters(32, 16))), Size{}).GetSize(), (Size{32, 16}));
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
        SetHook({.orientation = orientation, .storedSize = {}, .thumbnail = EncodeJpeg(thumbnail)});
    }
    static bool IsThumbnail(const Image& image) {
        return !image.IsEmpty() && Distance(image.PixelAt(image.GetSize().width / 2, 1), kBlue) < 10;
    }
    const std::string photo_ = Write("a.jpg", EncodeJpeg(Plain(1600, 1200, kRed)));
};

TEST_F(ThumbnailTest, IsTakenWhereItHasThePixels) {
    SetThumbnail(Plain(160, 120, kBlue));
    EXPECT_TRUE(IsThumbnail(images::Load(photo_, Size{160, 160}, Preview::IfEnough)));
    EXPECT_FALSE(IsThumbnail(images::Load(photo_, Size{170, 170}, Preview::IfEnough)));
    EXPECT_FALSE(IsThumbnail(images::Load(photo_, Size{}, Preview::IfEnough)));
    EXPECT_FALSE(IsThumbnail(images::Load(photo_, Size{20, 20}, Preview::Never)));
}

TEST_F(ThumbnailTest, IsTakenHoweverSmallWhenAlwaysWanted) {
    SetThumbnail(Plain(160, 120, kBlue));
    EXPECT_TRUE(IsThumbnail(images::Load(photo_, Size{1000, 1000}, Preview::Always)));
    EXPECT_TRUE(IsThumbnail(images::Load(photo_, Size{}, Preview::Always)));
}

TEST_F(ThumbnailTest, AbsentOrBrokenOnesGiveThePicture) {
    SetHook({});
    EXPECT_FALSE(IsThumbnail(images::Load(photo_, Size{100, 100}, Preview::Always)));
    SetHook({.orientation = 1, .storedSize = {}, .thumbnail = {0xFF, 0xD8, 1, 2, 3}});
    const Image image = images::Load(photo_, Size{100, 100}, Preview::Always);
    EXPECT_FALSE(image.IsEmpty());
    EXPECT_FALSE(IsThumbnail(image));
}

TEST_F(ThumbnailTest, BlackBarsAreCutAway) {
    const std::string wide = Write("wide.jpg", EncodeJpeg(Plain(1500, 1000, kRed)));
    QImage barred = Plain(160, 120, kBlack);
    QPainter(&barred).fillRect(0, 6, 160, 108, Qt::blue);
    SetThumbnail(barred);
    const Image image = images::Load(wide, Size{160, 160});
    EXPECT_EQ(image.GetSize(), (Size{160, 107}));
    EXPECT_TRUE(IsThumbnail(image));
}

TEST_F(ThumbnailTest, BarsAtTheSidesAreCutAway) {
    const std::string square = Write("square.jpg", EncodeJpeg(Plain(1000, 1000, kRed)));
    QImage barred = Plain(160, 120, kBlack);
    QPainter(&barred).fillRect(20, 0, 120, 120, Qt::blue);
    SetThumbnail(barred);
    EXPECT_EQ(images::Load(square, Size{120, 120}).GetSize(), (Size{120, 120}));
    EXPECT_TRUE(IsThumbnail(images::Load(square, Size{120, 120})));
}

TEST_F(ThumbnailTest, ADifferenceOfTwoPercentIsNoBar) {
    SetThumbnail(Plain(160, 118, kBlue));
    EXPECT_EQ(images::Load(photo_, Size{100, 100}).GetSize(), (Size{160, 118}));
    SetThumbnail(Plain(160, 112, kBlue));
    EXPECT_EQ(images::Load(photo_, Size{100, 100}).GetSize(), (Size{149, 112}));
}

TEST_F(ThumbnailTest, OneThatLiesAcrossThePictureIsNotBelieved) {
    SetThumbnail(Plain(120, 160, kBlue));
    EXPECT_FALSE(IsThumbnail(images::Load(photo_, Size{50, 50}, Preview::Always)));
}

TEST_F(ThumbnailTest, StandsUpright) {
    SetThumbnail(Plain(160, 120, kBlue), 6);
    const Image image = images::Load(photo_, Size{160, 160});
    EXPECT_TRUE(IsThumbnail(image));
    EXPECT_EQ(image.GetSize(), (Size{120, 160}));
}

// ---- the cache

TEST_F(ImageTest, TheSameWishIsDecodedOnce) {
    const std::string path = Save("a.png", Quarters(100, 80));
    const std::uint64_t before = Decodes();
    const Image first = images::Load(path, Size{50, 50});
    const Image second = images::Load(path, Size{50, 50});
    EXPECT_EQ(first.Get(), second.Get());
    EXPECT_EQ(Decodes(), before + 1);
    images::Load(path, Size{51, 50});
    images::Load(path, Size{50, 50}, Preview::Never);
    EXPECT_EQ(Decodes(), before + 3);
}

TEST_F(ImageTest, AChangedFileIsDecodedAgain) {
    const std::string path = Save("a.png", Quarters(100, 80));
    images::Load(path, Size{});
    const FileTime now = CurrentFileTime();
    Save("a.png", Quarters(40, 30));
    ASSERT_TRUE(files::SetTimes(path, now, FileTime{now.ticks + 10'000'000}));
    EXPECT_EQ(images::Load(path, Size{}).GetSize(), (Size{40, 30}));
}

TEST_F(ImageTest, AFileThatIsNoPictureIsNotTriedAgainUntilItChanges) {
    const std::string path = Write("a.jpg", {1, 2, 3});
    const std::uint64_t before = Decodes();
    images::Load(path, Size{10, 10});
    images::Load(path, Size{10, 10});
    EXPECT_EQ(Decodes(), before + 1);
    Save("a.jpg", Quarters(16, 16));
    EXPECT_FALSE(images::Load(path, Size{10, 10}).IsEmpty());
}

TEST_F(ImageTest, LoadCachedNeverDecodes) {
    const std::string path = Save("a.png", Quarters(100, 80));
    const std::uint64_t before = Decodes();
    EXPECT_TRUE(images::LoadCached(path, Size{50, 50}, true).IsEmpty());
    EXPECT_EQ(Decodes(), before);
    images::Load(path, Size{50, 50});
    EXPECT_FALSE(images::LoadCached(path, Size{50, 50}, false).IsEmpty());
    EXPECT_TRUE(images::LoadCached(path, Size{60, 60}, false).IsEmpty());
    EXPECT_TRUE(images::LoadCached(PathOf("absent"), Size{60, 60}, true).IsEmpty());
}

TEST_F(ImageTest, NearestIsTheSmallestThatIsLargeEnoughElseTheLargest) {
    const std::string path = Save("a.png", Noise(400, 400));
    for (const int size : {20, 200, 100}) images::Load(path, Size{size, size});
    EXPECT_EQ(images::LoadCached(path, Size{90, 90}, true).GetSize().width, 100);
    EXPECT_EQ(images::LoadCached(path, Size{100, 100}, true).GetSize().width, 100);
    EXPECT_EQ(images::LoadCached(path, Size{150, 150}, true).GetSize().width, 200);
    EXPECT_EQ(images::LoadCached(path, Size{300, 300}, true).GetSize().width, 200);
    const std::string other = Save("b.png", Noise(40, 40));
    EXPECT_TRUE(images::LoadCached(other, Size{10, 10}, true).IsEmpty());
}

TEST_F(ImageTest, TheLeastRecentlyUsedGoFirst) {
    std::vector<std::string> paths;
    for (int i = 0; i < 4; ++i) paths.push_back(Save(std::to_string(i) + ".png", Noise(100, 100)));
    images::SetCacheLimit(3 * 42'000);
    for (int i = 0; i < 3; ++i) images::Load(paths[static_cast<std::size_t>(i)], Size{});
    images::Load(paths[0], Size{});  // used again
    images::Load(paths[3], Size{});
    EXPECT_FALSE(images::LoadCached(paths[0], Size{}, false).IsEmpty());
    EXPECT_TRUE(images::LoadCached(paths[1], Size{}, false).IsEmpty());
    EXPECT_FALSE(images::LoadCached(paths[3], Size{}, false).IsEmpty());
    EXPECT_LE(images::GetCacheStatistics().bytes, images::GetCacheStatistics().limit);
}

TEST_F(ImageTest, APictureLargerThanTheCacheIsLoadedAndNotKept) {
    images::SetCacheLimit(1000);
    const std::string path = Save("a.png", Noise(100, 100));
    EXPECT_FALSE(images::Load(path, Size{}).IsEmpty());
    EXPECT_EQ(images::GetCacheStatistics().bytes, 0u);
}

TEST_F(ImageTest, AtTheStartTheLimitIs256Megabytes) {
    EXPECT_EQ(images::GetCacheStatistics().limit, std::size_t{268'435'456});
}

TEST_F(ImageTest, ThreadsThatWantTheSamePictureShareOneDecode) {
    const std::string path = Write("a.jpg", EncodeJpeg(Noise(2000, 1500)));
    const std::uint64_t before = Decodes();
    std::vector<std::thread> threads;
    std::vector<Image> got(4);
    for (Image& image : got)
        threads.emplace_back([&image, &path] { image = images::Load(path, Size{1000, 1000}); });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(Decodes(), before + 1);
    for (const Image& image : got) EXPECT_EQ(image.Get(), got[0].Get());
}

// ---- prefetching

TEST_F(ImageTest, AWishedPictureIsInTheCacheSoon) {
    std::vector<std::string> paths;
    for (int i = 0; i < 10; ++i) paths.push_back(Save(std::to_string(i) + ".png", Noise(50, 50)));
    const std::uint64_t before = Decodes();
    for (int round = 0; round < 3; ++round)
        for (const std::string& path : paths) images::Prefetch(path, Size{20, 20});
    images::WaitForPrefetch();
    EXPECT_EQ(Decodes(), before + 10);
    for (const std::string& path : paths)
        EXPECT_FALSE(images::LoadCached(path, Size{20, 20}, false).IsEmpty());
}

TEST_F(ImageTest, WishesThatHaveNotBegunCanBeForgotten) {
    const std::string path = Write("a.jpg", EncodeJpeg(Noise(1500, 1000)));
    const std::uint64_t before = Decodes();
    for (int i = 1; i <= 1000; ++i) images::Prefetch(path, Size{i, 1000});
    images::CancelPrefetch();
    images::WaitForPrefetch();
    EXPECT_LT(Decodes(), before + 1000);
}

TEST_F(ImageTest, WishesForWhatIsNotThereAreHarmless) {
    images::Prefetch(PathOf("absent"), Size{20, 20});
    images::Prefetch("", Size{-1, 20});
    images::WaitForPrefetch();
}

TEST_F(ImageTest, ManyThreadsLoadWishAndClearAtOnce) {
    std::vector<std::string> paths;
    for (int i = 0; i < 6; ++i)
        paths.push_back(Write(std::to_string(i) + ".jpg", EncodeJpeg(Noise(120 + i, 90))));
    SetHook({.orientation = 6, .storedSize = {}, .thumbnail = EncodeJpeg(Noise(32, 24))});
    images::SetCacheLimit(200'000);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&paths, t] {
            for (int i = 0; i < 60; ++i) {
                const std::string& path = paths[static_cast<std::size_t>(i * (t + 1)) % paths.size()];
                const Size wanted{20 + i % 3 * 20, 60};
                if (i % 5 == 0) images::Prefetch(path, wanted);
                if (i % 17 == 0) images::ClearCache();
                if (i % 23 == 0) images::CancelPrefetch();
                EXPECT_FALSE(
                    images::Load(path, wanted, i % 2 ? Preview::Never : Preview::IfEnough).IsEmpty());
                images::LoadCached(path, wanted, true);
            }
        });
    for (std::thread& thread : threads) thread.join();
}

// ---- saving

TEST_F(ImageTest, SavedPicturesComeBack) {
    const Image image = qt::MakeImage(Quarters(40, 30));
    ASSERT_TRUE(images::SavePng(image, PathOf("a.png")));
    ASSERT_TRUE(images::SaveJpeg(image, PathOf("a.jpg"), 95));
    EXPECT_EQ(images::Load(PathOf("a.png"), Size{}).Get()->Get(), Quarters(40, 30));
    EXPECT_LT(Distance(images::Load(PathOf("a.jpg"), Size{}).PixelAt(5, 5), kRed), 8);
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
    EXPECT_LT(Distance(images::Load(PathOf("a.jpg"), Size{}).PixelAt(8, 8), kWhite), 4);
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
    const Image image = images::Load(PathOf("a.png"), Size{});
    EXPECT_EQ(image.GetSize(), (Size{60, 40}));
    EXPECT_EQ(image.PixelAt(29, 0), kBlue);
    EXPECT_EQ(image.PixelAt(30, 0), kWhite);
}

}  // namespace
}  // namespace kalmora
