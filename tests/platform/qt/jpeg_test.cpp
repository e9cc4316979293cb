#include "platform/jpeg.h"

#include <gmock/gmock.h>

#include "media/picture_files.h"
#include "platform/qt/jpeg_decoder.h"

namespace kalmora::jpeg {
namespace {

const std::string kPicture = test::DecodableJpeg(64, 48);

Size SizeOf(const std::string& jpeg) {
    return qt::MeasureJpeg(MemorySource({reinterpret_cast<const std::uint8_t*>(jpeg.data()), jpeg.size()}));
}

TEST(JpegExamination, TellsStrayBytesFromDamage) {
    EXPECT_EQ(Examine(kPicture).health, Health::Sound);
    EXPECT_EQ(Examine(std::string(kPicture).insert(2, "stray")).health, Health::StrayBytes);
    EXPECT_EQ(Examine(std::string(kPicture).insert(2, "stray")).strayBeforeEnd, 0u);
    const Examination padded = Examine(std::string(kPicture).insert(kPicture.size() - 2, 50, '\0'));
    EXPECT_EQ(padded.health, Health::StrayBytes);
    EXPECT_LE(padded.strayBeforeEnd, 50u);
    EXPECT_GE(padded.strayBeforeEnd, 42u);
    EXPECT_EQ(Examine(std::string(kPicture).insert(kPicture.size() - 2, 50, '\xFF')).health, Health::Sound);
}

TEST(JpegExamination, WhatIsCutOrNoPictureIsDamaged) {
    for (std::size_t length = 0; length < kPicture.size(); length += 7)
        EXPECT_EQ(Examine(kPicture.substr(0, length)).health, Health::Damaged) << length;
    EXPECT_EQ(Examine(std::string(kPicture).erase(kPicture.size() - 20, 18)).health, Health::Damaged);
}

TEST(TurnByPixels, TakesTheBestQualityThatFits) {
    const std::string roomy = TurnByPixels(kPicture, 90, 1u << 20);
    EXPECT_EQ(SizeOf(roomy), (Size{48, 64}));
    EXPECT_EQ(SizeOf(TurnByPixels(kPicture, 180, 1u << 20)), (Size{64, 48}));
    const std::string tight = TurnByPixels(kPicture, 90, roomy.size() - 1);
    EXPECT_LT(tight.size(), roomy.size());
    EXPECT_EQ(TurnByPixels(kPicture, 90, 100), "");
    EXPECT_EQ(TurnByPixels("no picture", 90, 1000), "");
}

}  // namespace
}  // namespace kalmora::jpeg
