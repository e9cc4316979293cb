#include "app/window_place.h"

#include <gtest/gtest.h>

namespace kalmora {

void PrintTo(const Rect& rect, std::ostream* out) {
    *out << rect.x << ',' << rect.y << ' ' << rect.width << 'x' << rect.height;
}

namespace {

const std::vector<Rect> kScreens = {{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};

TEST(WindowPlace, RectangleOnAScreenStays) {
    EXPECT_EQ(UsableFrame({10, 10, 960, 710}, kScreens), (Rect{10, 10, 950, 700}));
    EXPECT_EQ(UsableFrame({2000, 100, 2900, 800}, kScreens), (Rect{2000, 100, 900, 700}));
    EXPECT_EQ(UsableFrame({-100, -20, 860, 680}, kScreens), (Rect{-100, -20, 960, 700})) << "partly";
    EXPECT_EQ(UsableFrame({1900, 900, 1910, 905}, kScreens), (Rect{1900, 900, 10, 5})) << "small";
    EXPECT_EQ(UsableFrame({0, 0, 4000, 3000}, kScreens), (Rect{0, 0, 4000, 3000})) << "large";
}

TEST(WindowPlace, RectangleUpsideDownTakesTheSizeOfTheDefault) {
    EXPECT_EQ(UsableFrame({900, 700, 100, 50}, kScreens), (Rect{900, 700, 950, 700}));
    EXPECT_EQ(UsableFrame({100, 700, 900, 50}, kScreens), (Rect{100, 700, 950, 700}));
}

TEST(WindowPlace, RectangleOffEveryScreenComesToTheFirst) {
    EXPECT_EQ(UsableFrame({4000, 4000, 4800, 4600}, kScreens), (Rect{10, 10, 800, 600}));
    EXPECT_EQ(UsableFrame({100, 2000, 900, 2600}, kScreens), (Rect{10, 10, 800, 600}));
    EXPECT_EQ(UsableFrame({3190, 100, 3990, 700}, kScreens), (Rect{10, 10, 800, 600})) << "all but a strip";
    EXPECT_EQ(UsableFrame({4000, 0, 9000, 5000}, kScreens), (Rect{10, 10, 1900, 1060}))
        << "no larger than it";
}

TEST(WindowPlace, WithoutScreensThePlaceStays) {
    EXPECT_EQ(UsableFrame({4000, 4000, 4800, 4600}, {}), (Rect{4000, 4000, 800, 600}));
}

}  // namespace
}  // namespace kalmora
