#include "formats/orientation.h"

#include <gtest/gtest.h>

namespace kalmora {
namespace {

TEST(Orientation, FourOfTheEightSwapTheSides) {
    for (int orientation = 1; orientation <= 8; ++orientation)
        EXPECT_EQ(SwapsSides(orientation), orientation >= 5) << orientation;
}

TEST(Orientation, OfAnyOtherValueIsNone) {
    for (const int orientation : {0, 9, -1, 65535}) {
        EXPECT_FALSE(TurnUpright(orientation).isMirrored);
        EXPECT_EQ(TurnUpright(orientation).degrees, 0);
    }
}

}  // namespace
}  // namespace kalmora
