#include "base/format.h"

#include <gtest/gtest.h>

namespace kalmora {
namespace {

TEST(Format, WritesItsValues) { EXPECT_EQ(Format("%04d/%02d %s", 2008, 1, "x"), "2008/01 x"); }

TEST(Format, CutsAtTwoHundredAndFiftyFiveBytes) {
    const std::string longText(300, 'a');
    EXPECT_EQ(Format("%s", longText.c_str()), std::string(255, 'a'));
}

}  // namespace
}  // namespace kalmora
