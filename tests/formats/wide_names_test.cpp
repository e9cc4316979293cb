#include "formats/wide_names.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>

namespace kalmora {
namespace {

TEST(WideName, ComesBackForAnyBytes) {
    std::mt19937 random(3);
    const std::string_view pieces[] = {"a",        "表", "😀", "\xFF", "\x80", "\xED\xA0\x80", "\xED\xB2\x80",
                                       "\xF0\x9F", "é"};
    for (int round = 0; round < 20'000; ++round) {
        std::string name;
        for (auto i = random() % 8; i > 0; --i) name += pieces[random() % std::size(pieces)];
        const std::string wide = ToWideName(name);
        ASSERT_EQ(FromWideName({reinterpret_cast<const std::uint8_t*>(wide.data()), wide.size()}), name);
    }
}

TEST(WideName, ReplacesLoneUnitsThatStandForNoByte) {
    const std::string wide = std::string(
        "\x00\xD8"
        "a\0"
        "\x00\xDC"
        "\x00\xDD"
        "\xFF\xDC",
        10);
    EXPECT_EQ(FromWideName({reinterpret_cast<const std::uint8_t*>(wide.data()), wide.size()}),
              "\uFFFDa\uFFFD\uFFFD\xFF");
}

}  // namespace
}  // namespace kalmora
