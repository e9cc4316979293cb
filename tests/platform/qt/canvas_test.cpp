#include "platform/canvas.h"

#include <gtest/gtest.h>

#include <QImage>
#include <climits>
#include <thread>

#include "platform/qt/pixels.h"
#include "support.h"

namespace kalmora {
namespace {

using namespace test;

const Font kFont{"Arial", 20};

std::unique_ptr<Surface> MakeCanvasSurface(int width, int height, double scale = 1) {
    auto surface = Surface::Create(Size{width, height}, scale);
    EXPECT_TRUE(surface);
    return surface;
}

Image ImageOf(const QImage& image) { return qt::MakeImage(image); }

// How many device pixels have exactly this colour.
int Count(const Surface& surface, Color color) {
    const Size size = surface.GetSize();
    int count = 0;
    for (int y = 0; y < size.height * surface.Scale(); ++y)
        for (int x = 0; x < size.width * surface.Scale(); ++x) count += surface.PixelAt(x, y) == color;
    return count;
}

// The rectangle of device pixels that are not white.
QRect Drawn(const Surface& surface) {
    const QImage& pixels = qt::PixelsOf(surface);
    QRect drawn;
    for (int y = 0; y < pixels.height(); ++y)
        for (int x = 0; x < pixels.width(); ++x)
            if ((pixels.pixel(x, y) & 0xFFFFFF) != 0xFFFFFF) drawn = drawn.united(QRect(x, y, 1, 1));
    return drawn;
}

TEST(Surface, IsRefusedWhenEmptyOrTooLarge) {
    EXPECT_FALSE(Surface::Create(Size{0, 10}, 1));
    EXPECT_FALSE(Surface::Create(Size{10, -1}, 1));
    EXPECT_FALSE(Surface::Create(Size{32768, 1}, 1));
    EXPECT_FALSE(Surface::Create(Size{16384, 1}, 2));
    EXPECT_FALSE(Surface::Create(Size{INT_MAX, INT_MAX}, 1));
    EXPECT_FALSE(Surface::Create(Size{10, 10}, 0));
    EXPECT_FALSE(Surface::Create(Size{10, 10}, -1));
    EXPECT_TRUE(Surface::Create(Size{32767, 1}, 1));
}

TEST(Surface, BeginsWhiteAndKeepsItsLogicalSizeAtEveryScale) {
    for (const double scale : {1.0, 1.1, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        const auto surface = MakeCanvasSurface(101, 53, scale);
        EXPECT_EQ(surface->GetSize(), (Size{101, 53})) << scale;
        EXPECT_EQ(surface->Draw()->GetSize(), (Size{101, 53})) << scale;
        EXPECT_EQ(surface->Scale(), scale);
        EXPECT_EQ(surface->PixelAt(0, 0), kWhite);
    }
}

TEST(Canvas, FillsExactlyTheRectangle) {
    const auto surface = MakeCanvasSurface(20, 20);
    surface->Draw()->FillRect(Rect{3, 4, 5, 6}, kRed);
    EXPECT_EQ(Count(*surface, kRed), 30);
    EXPECT_EQ(Drawn(*surface), QRect(3, 4, 5, 6));
}

TEST(Canvas, LetsTransparentColoursShine) {
    const auto surface = MakeCanvasSurface(4, 4);
    surface->Draw()->FillRect(Rect{0, 0, 4, 4}, Color{0, 0, 0, 128});
    EXPECT_NEAR(surface->PixelAt(1, 1).red, 127, 2);
}

TEST(Canvas, FramesARectangleInsideItsEdges) {
    const auto surface = MakeCanvasSurface(20, 20);
    surface->Draw()->Rectangle(Rect{2, 3, 10, 8}, kGreen, kBlue);
    EXPECT_EQ(Drawn(*surface), QRect(2, 3, 10, 8));
    EXPECT_EQ(Count(*surface, kGreen), 8 * 6);
    EXPECT_EQ(Count(*surface, kBlue), 80 - 48);
    EXPECT_EQ(surface->PixelAt(2, 3), kBlue);
    EXPECT_EQ(surface->PixelAt(11, 10), kBlue);
    EXPECT_EQ(surface->PixelAt(3, 4), kGreen);
}

TEST(Canvas, FramesTheSmallestRectangles) {
    for (int width = 1; width <= 3; ++width)
        for (int height = 1; height <= 3; ++height) {
            const auto surface = MakeCanvasSurface(8, 8);
            surface->Draw()->Rectangle(Rect{2, 2, width, height}, kGreen, kBlue);
            EXPECT_EQ(Drawn(*surface), QRect(2, 2, width, height));
            EXPECT_EQ(Count(*surface, kGreen), width == 3 && height == 3 ? 1 : 0);
        }
}

TEST(Canvas, FrameIsOneLogicalPixelWideAtScaleTwo) {
    const auto surface = MakeCanvasSurface(10, 10, 2);
    surface->Draw()->Rectangle(Rect{1, 1, 8, 8}, kGreen, kBlue);
    EXPECT_EQ(Count(*surface, kGreen), 12 * 12);
    EXPECT_EQ(Count(*surface, kBlue), 16 * 16 - 12 * 12);
}

TEST(Canvas, StraightLinesIncludeBothEnds) {
    const auto surface = MakeCanvasSurface(20, 20);
    surface->Draw()->Line(Point{12, 5}, Point{3, 5}, kRed);
    EXPECT_EQ(Drawn(*surface), QRect(3, 5, 10, 1));
    surface->Draw()->Line(Point{4, 8}, Point{4, 8}, kBlue);
    EXPECT_EQ(Count(*surface, kBlue), 1);
}

TEST(Canvas, SlantedLinesReachBothEnds) {
    const auto surface = MakeCanvasSurface(20, 20);
    surface->Draw()->Line(Point{2, 3}, Point{15, 12}, kRed);
    EXPECT_LT(surface->PixelAt(2, 3).green, 128);
    EXPECT_LT(surface->PixelAt(15, 12).green, 128);
    EXPECT_EQ(surface->PixelAt(15, 3), kWhite);
}

TEST(Canvas, WhatLiesOutsideIsClipped) {
    const auto surface = MakeCanvasSurface(10, 10);
    const Image image = ImageOf(Quarters(8, 8));
    const auto canvas = surface->Draw();
    for (const Rect& area :
         {Rect{-100, -100, 50, 50}, Rect{10, 0, 5, 5}, Rect{INT_MAX, INT_MAX, INT_MAX, INT_MAX},
          Rect{INT_MIN, INT_MIN, 100, 100}, Rect{2, 2, -5, 3}, Rect{2, 2, 0, 3}}) {
        canvas->FillRect(area, kRed);
        canvas->Rectangle(area, kRed, kRed);
        canvas->DrawImage(area, image);
        canvas->Blit(area, *surface);
        canvas->TextBlock(area, "text", kFont, kRed);
    }
    canvas->Text(Point{INT_MAX, 0}, "text", kFont, kRed);
    canvas->Text(Point{0, INT_MIN}, "text", kFont, kRed);
    canvas->Line(Point{INT_MIN, -5}, Point{INT_MAX, -5}, kRed);
    canvas->Line(Point{INT_MIN, -30}, Point{INT_MAX, -5}, kRed);
    EXPECT_TRUE(Drawn(*surface).isNull());
}

TEST(Canvas, WhatReachesFarBeyondTheEdgesIsDrawnWhereItIsSeen) {
    const auto surface = MakeCanvasSurface(10, 10);
    surface->Draw()->FillRect(Rect{INT_MIN / 2, INT_MIN / 2, INT_MAX, INT_MAX}, kRed);
    EXPECT_EQ(Count(*surface, kRed), 100);
    surface->Draw()->Line(Point{INT_MIN, 4}, Point{INT_MAX, 4}, kBlue);
    EXPECT_EQ(Count(*surface, kBlue), 10);
    surface->Draw()->Line(Point{-2000000, -2000000}, Point{2000000, 2000000}, kGreen);
    EXPECT_GT(surface->PixelAt(5, 5).green, 128);
}

TEST(Canvas, ManyThreadsDrawOnSurfacesOfTheirOwn) {
    const Image image = ImageOf(Noise(200, 150));
    std::vector<std::unique_ptr<Surface>> surfaces;
    for (int i = 0; i < 4; ++i) surfaces.push_back(MakeCanvasSurface(160, 120, i % 2 + 1));
    std::vector<std::thread> threads;
    for (const auto& surface : surfaces)
        threads.emplace_back([&surface, &image] {
            for (int round = 0; round < 20; ++round) {
                const auto canvas = surface->Draw();
                canvas->DrawImage(Rect{0, 0, 160, 120}, image);
                canvas->TextBlock(Rect{5, 5, 150, 110}, "今日は晴れ。Walked along the river", kFont, kRed);
                canvas->Text(Point{10, 90}, "13", Font{"MSP ゴシック", 18 + round % 4}, kBlack);
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(qt::PixelsOf(*surfaces[0]), qt::PixelsOf(*surfaces[2]));
    EXPECT_EQ(qt::PixelsOf(*surfaces[1]), qt::PixelsOf(*surfaces[3]));
}

// ---- pictures

TEST(CanvasImage, IsStretchedOverTheWholeArea) {
    const auto surface = MakeCanvasSurface(100, 100);
    surface->Draw()->DrawImage(Rect{10, 20, 80, 60}, ImageOf(Quarters(16, 16)));
    EXPECT_EQ(Drawn(*surface).left(), 10);
    EXPECT_EQ(Drawn(*surface).top(), 20);
    EXPECT_EQ(surface->PixelAt(20, 30), kRed);
    EXPECT_EQ(surface->PixelAt(80, 30), kGreen);
    EXPECT_EQ(surface->PixelAt(20, 70), kBlue);
}

TEST(CanvasImage, ReductionAveragesAllPixels) {
    QImage stripes(1024, 64, QImage::Format_RGB32);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 1024; ++x) stripes.setPixel(x, y, x % 8 == 0 ? 0xFFFFFFFF : 0xFF000000);
    const auto surface = MakeCanvasSurface(128, 8);
    surface->Draw()->DrawImage(Rect{0, 0, 128, 8}, ImageOf(stripes));
    for (int x = 2; x < 126; ++x) EXPECT_NEAR(surface->PixelAt(x, 4).red, 32, 6) << x;
}

TEST(CanvasImage, GoesPixelForPixelAtItsOwnSize) {
    const QImage noise = Noise(40, 30);
    for (const double scale : {1.0, 2.0}) {
        const auto surface = MakeCanvasSurface(40, 30, scale);
        surface->Draw()->DrawImage(Rect{0, 0, static_cast<int>(40 / scale), static_cast<int>(30 / scale)},
                                   ImageOf(noise));
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                ASSERT_EQ(surface->PixelAt(x, y), qt::ColorAt(noise, x, y)) << x << ' ' << y << ' ' << scale;
    }
}

TEST(CanvasImage, TransparentPixelsShowWhatIsBelow) {
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(qRgba(255, 0, 0, 0));
    image.setPixelColor(1, 1, QColor(255, 0, 0, 255));
    image.setPixelColor(2, 1, QColor(0, 0, 0, 128));
    const auto surface = MakeCanvasSurface(4, 4);
    surface->Draw()->DrawImage(Rect{0, 0, 4, 4}, ImageOf(image));
    EXPECT_EQ(surface->PixelAt(0, 0), kWhite);
    EXPECT_EQ(surface->PixelAt(1, 1), kRed);
    EXPECT_NEAR(surface->PixelAt(2, 1).red, 127, 2);
}

TEST(CanvasImage, PartlyOutsideShowsTheRightPart) {
    const auto surface = MakeCanvasSurface(10, 10);
    surface->Draw()->DrawImage(Rect{-10, -10, 20, 20}, ImageOf(Quarters(20, 20)));
    EXPECT_EQ(Count(*surface, kWhite), 100) << "only the lower right quarter is seen";
    surface->Draw()->DrawImage(Rect{-90000, 0, 90010, 10}, ImageOf(Quarters(20, 20)));
    EXPECT_EQ(surface->PixelAt(5, 2), kGreen);
}

TEST(CanvasImage, AnEmptyPictureDrawsNothing) {
    const auto surface = MakeCanvasSurface(10, 10);
    surface->Draw()->DrawImage(Rect{0, 0, 10, 10}, Image());
    EXPECT_TRUE(Drawn(*surface).isNull());
}

TEST(CanvasBlit, IsPixelForPixelWhereScalesAgree) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        const auto source = MakeCanvasSurface(32, 24, scale);
        source->Draw()->DrawImage(Rect{0, 0, 32, 24}, ImageOf(Noise(64, 48)));
        const auto target = MakeCanvasSurface(32, 24, scale);
        target->Draw()->Blit(Rect{0, 0, 32, 24}, *source);
        EXPECT_EQ(qt::PixelsOf(*target), qt::PixelsOf(*source)) << scale;
    }
}

TEST(CanvasBlit, TakesThePartThatBeginsAtThePoint) {
    const auto source = MakeCanvasSurface(20, 20, 2);
    source->Draw()->DrawImage(Rect{0, 0, 20, 20}, ImageOf(Noise(40, 40)));
    const auto target = MakeCanvasSurface(20, 20, 2);
    target->Draw()->Blit(Rect{4, 6, 5, 7}, *source, Point{10, 11});
    EXPECT_EQ(qt::PixelsOf(*target).copy(8, 12, 10, 14), qt::PixelsOf(*source).copy(20, 22, 10, 14));
    EXPECT_EQ(target->PixelAt(7, 12), kWhite);
    EXPECT_EQ(target->PixelAt(18, 12), kWhite);
}

TEST(CanvasImage, GoesPixelForPixelAtFractionsToo) {
    const auto surface = MakeCanvasSurface(20, 20, 1.5);
    const QImage noise = Noise(10, 13);  // 4.5 to 15 and 7.5 to 21 device pixels, rounded
    surface->Draw()->DrawImage(Rect{3, 5, 7, 9}, ImageOf(noise));
    EXPECT_EQ(qt::PixelsOf(*surface).copy(5, 8, 10, 13), noise);
    EXPECT_EQ(Drawn(*surface), QRect(5, 8, 10, 13));
}

TEST(CanvasBlit, NeighbouringPartsMeetWithoutASeamAtFractions) {
    for (const double scale : {1.25, 1.5, 1.75}) {
        const auto source = MakeCanvasSurface(31, 29, scale);
        source->Draw()->DrawImage(Rect{0, 0, 31, 29}, ImageOf(Noise(62, 58)));
        const auto target = MakeCanvasSurface(31, 29, scale);
        for (int y = 0; y < 29; y += 3)
            for (int x = 0; x < 31; x += 5) target->Draw()->Blit(Rect{x, y, 5, 3}, *source, Point{x, y});
        EXPECT_EQ(qt::PixelsOf(*target), qt::PixelsOf(*source)) << scale;
    }
}

TEST(CanvasBlit, StopsWhereTheSurfaceEnds) {
    const auto source = MakeCanvasSurface(6, 6);
    source->Draw()->FillRect(Rect{0, 0, 6, 6}, kRed);
    const auto target = MakeCanvasSurface(20, 20);
    target->Draw()->Blit(Rect{2, 2, 15, 15}, *source, Point{1, 1});
    EXPECT_EQ(Drawn(*target), QRect(2, 2, 5, 5));
}

// ---- text

TEST(CanvasText, StaysInsideItsLineHeight) {
    for (const char* face : {"MSP ゴシック", "Arial", "IPAGothic", "DejaVu Sans", "no such face"})
        for (const int height : {8, 12, 20, 24, 48}) {
            const auto surface = MakeCanvasSurface(400, 200);
            surface->Draw()->Text(Point{50, 60}, "Agjy13|今日", Font{face, height}, kBlack);
            const QRect drawn = Drawn(*surface);
            EXPECT_GE(drawn.top(), 60 - 1) << face << height;
            EXPECT_LE(drawn.bottom(), 60 + height) << face << height;
            EXPECT_GT(drawn.height(), height / 2) << face << height;
        }
}

TEST(CanvasText, IsAsWideAsItMeasures) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        const auto surface = MakeCanvasSurface(600, 60, scale);
        surface->Draw()->Text(Point{10, 10}, "2008年11月 Thursday", kFont, kBlack);
        const Size size = MeasureText("2008年11月 Thursday", kFont);
        EXPECT_EQ(size.height, 20);
        EXPECT_NEAR((Drawn(*surface).right() + 1) / scale, 10 + size.width, 4) << scale;
    }
}

TEST(CanvasText, IsSharpAtScaleTwo) {
    const auto surface = MakeCanvasSurface(100, 40, 2);
    surface->Draw()->Text(Point{4, 4}, "13 木曜日", Font{"Arial", 24}, kBlack);
    // Doubled pixels would be alike in every block of two by two.
    int different = 0;
    for (int y = 0; y < 80; y += 2)
        for (int x = 0; x < 200; x += 2) {
            const Color corner = surface->PixelAt(x, y);
            different += corner != surface->PixelAt(x + 1, y) || corner != surface->PixelAt(x, y + 1);
        }
    EXPECT_GT(different, 50);
}

TEST(CanvasText, LineEndsAndControlCharactersDoNotBreakTheLine) {
    EXPECT_EQ(MeasureText("a\nb\r\nc\td", kFont), MeasureText("a b c d", kFont));
    EXPECT_EQ(MeasureText(std::string_view("a\0b\x7f", 4), kFont), MeasureText("ab", kFont));
    EXPECT_EQ(MeasureText("", kFont).width, 0);
}

TEST(CanvasText, AnEndlessLineIsCutWhereNoScreenReaches) {
    const std::string endless(64u << 20, 'x');
    EXPECT_EQ(MeasureText(endless, kFont), MeasureText(endless.substr(0, 1u << 20), kFont));
    EXPECT_GT(MeasureText(endless, kFont).width, 100'000);
    const auto surface = MakeCanvasSurface(100, 30);
    surface->Draw()->Text(Point{0, 0}, endless, kFont, kBlack);
    EXPECT_GT(Drawn(*surface).right(), 90);
}

TEST(CanvasText, IllFormedBytesAreShownAsReplacements) {
    EXPECT_EQ(MeasureText("a\xFF", kFont), MeasureText("a\xEF\xBF\xBD", kFont));
}

TEST(CanvasTextBlock, StaysInsideItsArea) {
    const auto surface = MakeCanvasSurface(200, 200);
    std::string text;
    for (int i = 0; i < 100; ++i) text += "A walk along the river 今日は晴れ。\n";
    surface->Draw()->TextBlock(Rect{20, 30, 120, 90}, text, kFont, kBlack);
    EXPECT_TRUE(QRect(20, 30, 120, 90).contains(Drawn(*surface)));
    EXPECT_GT(Drawn(*surface).height(), 60);
}

TEST(CanvasTextBlock, IsClippedWhereEvenOneLineIsTooHigh) {
    const auto surface = MakeCanvasSurface(100, 100);
    surface->Draw()->TextBlock(Rect{10, 10, 80, 7}, "Text", kFont, kBlack);
    EXPECT_TRUE(QRect(10, 10, 80, 7).contains(Drawn(*surface)));
}

TEST(CanvasTextBlock, LeavesTheCornerFree) {
    const auto surface = MakeCanvasSurface(200, 200);
    const std::string text = "Wide words W W W W W W W W W W W W W W W W W W W W W W W W";
    surface->Draw()->TextBlock(Rect{10, 10, 180, 180}, text, kFont, kBlack, Size{60, 25});
    for (int y = 10; y < 35; ++y)
        for (int x = 0; x < 69; ++x) EXPECT_NE(surface->PixelAt(x, y), kBlack) << x << "," << y;
    EXPECT_LT(Drawn(*surface).top(), 30) << "begins beside the corner";
    EXPECT_LT(Drawn(*surface).left(), 20) << "goes on below it";
}

TEST(CanvasTextBlock, BeginsBelowACornerThatLeavesNoRoomForAWord) {
    const auto surface = MakeCanvasSurface(200, 200);
    surface->Draw()->TextBlock(Rect{10, 10, 100, 100}, "Words", kFont, kBlack, Size{60, 15});
    EXPECT_GE(Drawn(*surface).top(), 30);
    EXPECT_LT(Drawn(*surface).left(), 20);
    const auto low = MakeCanvasSurface(200, 200);
    low->Draw()->TextBlock(Rect{10, 10, 100, 30}, "Words", kFont, kBlack, Size{60, 15});
    EXPECT_TRUE(Drawn(*low).isEmpty()) << "no line is left below";
}

// ---- shortened texts

TEST(ElideText, WhatFitsStaysWhole) {
    const int width = MeasureText("2008年11月", kFont).width;
    EXPECT_EQ(ElideText("2008年11月", kFont, width), "2008年11月");
}

TEST(ElideText, WhatDoesNotFitEndsInAnEllipsis) {
    for (int width = 30; width < MeasureText("2008年11月", kFont).width; ++width) {
        const std::string shown = ElideText("2008年11月", kFont, width);
        EXPECT_TRUE(shown.ends_with("...")) << shown;
        EXPECT_LE(MeasureText(shown, kFont).width, width) << shown;
    }
    EXPECT_EQ(ElideText("2008", kFont, 3), "");
}

// ---- round corners

TEST(CanvasRoundedRectangle, FillsItsMiddleAndLeavesItsCorners) {
    const auto surface = MakeCanvasSurface(60, 40);
    const Color before = surface->PixelAt(10, 10);
    constexpr Color kFill{220, 220, 255};
    surface->Draw()->RoundedRectangle(Rect{10, 10, 40, 20}, 8, kFill, kBlack);
    EXPECT_EQ(surface->PixelAt(30, 20), kFill);
    EXPECT_EQ(surface->PixelAt(30, 10), kBlack) << "the frame is inside the area";
    EXPECT_EQ(surface->PixelAt(30, 29), kBlack);
    for (const auto& [x, y] : {std::pair{10, 10}, {49, 10}, {10, 29}, {49, 29}, {30, 9}, {30, 30}})
        EXPECT_EQ(surface->PixelAt(x, y), before) << x << "," << y;
}

TEST(CanvasRoundedRectangle, SenselessOnesDoNoHarm) {
    const auto surface = MakeCanvasSurface(60, 40);
    const auto canvas = surface->Draw();
    canvas->RoundedRectangle(Rect{0, 0, 0, 0}, 8, kBlack, kBlack);
    canvas->RoundedRectangle(Rect{5, 5, 1, 1}, 8, kBlack, kBlack);
    canvas->RoundedRectangle(Rect{-2000000000, -2000000000, INT_MAX, INT_MAX}, 8, kBlack, kBlack);
    canvas->RoundedRectangle(Rect{5, 5, 20, 20}, -8, kBlack, kBlack);
    canvas->RoundedRectangle(Rect{5, 5, 20, 20}, INT_MAX, kBlack, kBlack);
}

// ---- faces

TEST(Faces, AnInstalledOneIsTakenAsItIs) { EXPECT_EQ(InstalledFace("DejaVu Sans"), "DejaVu Sans"); }

TEST(Faces, OneThatIsNotInstalledFallsToOneWithJapaneseGlyphs) {
    const std::string standIn = InstalledFace("no such face");
    EXPECT_FALSE(standIn.empty());
    EXPECT_NE(standIn, "no such face");
    for (const char* face : {"MSP ゴシック", "ＭＳＰ ゴシック", "MS UI Gothic", "", "\xFF\xFE"})
        EXPECT_EQ(InstalledFace(face), standIn) << face;
}

TEST(Faces, ManyThreadsAskAtOnce) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([i] {
            for (int round = 0; round < 50; ++round) {
                MeasureText("text 今日", Font{"face " + std::to_string(round % 5), 10 + round % 7 + i});
                InstalledFace("MSP ゴシック");
            }
        });
    for (std::thread& thread : threads) thread.join();
}

TEST(Faces, SenselessHeightsAreStillDrawn) {
    EXPECT_GT(MeasureText("text", Font{"Arial", 0}).width, 0);
    EXPECT_GT(MeasureText("text", Font{"Arial", -20}).width, 0);
    EXPECT_GT(MeasureText("text", Font{"Arial", INT_MAX}).width, 0);
}

}  // namespace
}  // namespace kalmora
