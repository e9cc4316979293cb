#include "rewrite/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/files.h"
#include "store/store_fixture.h"

namespace kalmora {
namespace {

class TempFolderTest : public StoreTest {};

TEST_F(TempFolderTest, TheSweepTakesScratchFilesAndNothingElse) {
    const std::string temp = MakeFolder("Temp");
    Put("Temp/$a.jpg");
    Put("Temp/$");
    Put("Temp/keep.bmp");
    Put("Temp/a$b");
    Put("Temp/$folder/$inside");
    Put("Temp/folder/$inside");
    Put("target");
    std::filesystem::create_symlink(At("target"), At("Temp/$link"));
    std::filesystem::create_symlink(At("Temp/folder"), At("Temp/$folder link"));

    EXPECT_EQ(SweepTempFolder(temp), 3);
    EXPECT_FALSE(files::Exists(At("Temp/$a.jpg")));
    EXPECT_FALSE(files::Exists(At("Temp/$")));
    EXPECT_FALSE(files::Exists(At("Temp/$link")));
    for (const char* name :
         {"target", "Temp/keep.bmp", "Temp/a$b", "Temp/$folder/$inside", "Temp/folder/$inside"})
        EXPECT_TRUE(files::Exists(At(name))) << name;
    EXPECT_EQ(SweepTempFolder(At("absent")), 0);
}

TEST_F(TempFolderTest, TheTempFolderIsMadeWhenMissingAndSweptWhenNot) {
    EXPECT_TRUE(PrepareTempFolder(At("Temp")));
    EXPECT_TRUE(files::IsFolder(At("Temp")));
    Put("Temp/$old");
    EXPECT_TRUE(PrepareTempFolder(At("Temp")));
    EXPECT_FALSE(files::Exists(At("Temp/$old")));
    Put("a file");
    EXPECT_FALSE(PrepareTempFolder(At("a file")));
}

}  // namespace
}  // namespace kalmora
