#include "media/classification.h"

#include <gtest/gtest.h>

namespace kalmora {
namespace {

TEST(CameraFileName, IsKnownByItsBeginning) {
    for (const char* name : {"/a/IMG_0001.JPG", "/a/IMG_", "/a/DSCF0001.JPG", "/a/DSCFx", "IMG_1.jpg",
                             "/a/P1234567.jpg", "/a/P0000000.", "P1234567.MOV"})
        EXPECT_TRUE(IsCameraFileName(name)) << name;
}

TEST(CameraFileName, IsNothingElse) {
    for (const char* name : {"/a/img_0001.jpg", "/a/dscf0001.jpg", "/a/DSC_0001.JPG", "/IMG_1/a.jpg",
                             "/a/xIMG_1.jpg", "/a/P123456.jpg", "/a/P12345678.jpg", "/a/P1234567jpg",
                             "/a/P1234567", "/a/p1234567.jpg", "/a/P12345a7.jpg", "/a/", ""})
        EXPECT_FALSE(IsCameraFileName(name)) << name;
}

}  // namespace
}  // namespace kalmora
