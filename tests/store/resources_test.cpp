#include "store/resources.h"

#include "store_fixture.h"

namespace kalmora {
namespace {

class ResourcesTest : public StoreTest {
protected:
    ResourcesTest() : installed(MakeFolder("usr share")) { State().settings.InstallFolder = installed; }
    const std::string installed;
};

TEST_F(ResourcesTest, TheHomeFolderComesBeforeTheInstalledOne) {
    const std::string shared = Put("usr share/Res/Month/01.png");
    EXPECT_EQ(FindResource("Res/Month/01.png"), shared);
    const std::string own = Put("Res/Month/01.png");
    EXPECT_EQ(FindResource("Res/Month/01.png"), own);
}

TEST_F(ResourcesTest, WhatStandsNowhereIsExpectedAtHome) {
    EXPECT_EQ(FindResource("back.jpg"), At("back.jpg"));
    State().settings.InstallFolder.clear();
    EXPECT_EQ(FindResource("back.jpg"), At("back.jpg"));
}

TEST_F(ResourcesTest, APathInTheHomeFolderIsLookedForInTheInstalledOneToo) {
    const std::string shared = Put("usr share/back.jpg");
    EXPECT_EQ(FindResource(At("back.jpg")), shared);
    const std::string own = Put("back.jpg");
    EXPECT_EQ(FindResource(At("back.jpg")), own);
}

TEST_F(ResourcesTest, AnotherAbsolutePathComesBackAsItIs) {
    Put("usr share/back.jpg");
    EXPECT_EQ(FindResource("/nowhere/back.jpg"), "/nowhere/back.jpg");
    EXPECT_EQ(FindResource(home + "2/back.jpg"), home + "2/back.jpg");
}

TEST_F(ResourcesTest, NamesOfTheOtherPlatformAreUnderstood) {
    EXPECT_EQ(FindResource("Res\\Week\\Sunday.png"), At("Res/Week/Sunday.png"));
}

}  // namespace
}  // namespace kalmora
